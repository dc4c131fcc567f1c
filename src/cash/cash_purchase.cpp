#include "ombrix/purchase/cash_purchase.h"

#include <array>

#include "base/raw.h"
#include "cash/cash_purchase_columns.h"
#include "database/statement.h"
#include "frame/discount_spread.h"
#include "frame/numbering.h"
#include "frame/trap.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

namespace {

bool is_line(const Grid& grid, std::int32_t row) {
  return !grid.TextMatrix(row, 1).empty() || !grid.TextMatrix(row, 3).empty();
}

/// A blank row between them does not end the count, as it ends the save.
std::int32_t count_lines(const Grid& grid) {
  std::int32_t count = 0;
  const std::int32_t rows = grid.Rows();
  for (std::int32_t row = 1; row < rows; ++row) count += is_line(grid, row) ? 1 : 0;
  return count;
}

}  // namespace

CashPurchase::CashPurchase() : PostedDocument(Connected::unopened) {}

bool CashPurchase::Validate_Cash_Purchase() {
  return valid("Invalid Cash Purchase Date.", CashPurInvDate(),
               {{CashPurInvAmount() < 0, "Invalid Purchase Invoice Amount."},
                {CashPurInvFCSubTotal() < 0, "Invalid Purchase Invoice Sub Total."}});
}

bool CashPurchase::Create_Cash_Purchase_Invoice() {
  if (!Validate_Cash_Purchase()) return false;
  return trapped(Trap::plain, [&] {
    return create_under_temporary_number(
        {raw(CashPurInvIdentity), raw(CashPurInvNo)}, [&] { return Save_Cash_Purchase_Master(); },
        [&] { return Save_Cash_Purchase_Detail(); });
  });
}

bool CashPurchase::Update_Cash_Purchase_Invoice() {
  if (!Validate_Cash_Purchase()) return false;
  if (trim(CashPurInvNo()).empty()) return refused("Invalid Purchase Invoice No");
  return Save_Cash_Purchase_Master() && Save_Cash_Purchase_Detail();
}

bool CashPurchase::Save_Cash_Purchase_Master() {
  return trapped(Trap::plain, [&] {
    take_currency_symbol();
    auto master = open(
        sql({"Select * From Cash_Purchase_Master Where Cash_Pur_Inv_No=", text(CashPurInvNo())}),
        Keyset);
    begin_save(master, CashPurchaseColumns::key(), *this, [&] {
      execute(
          sql({"Delete from Cash_Purchase_Detail Where   Cash_Pur_Inv_No=", text(CashPurInvNo())}));
    });
    write_columns(CashPurchaseColumns::rest(), *this, master);
    master.Update();
    return true;
  });
}

void CashPurchase::take_currency_symbol() {
  auto currency = open(
      sql({"Select * from Currency_Master Where Currency_Code=", text(CurrencyCode())}), Keyset);
  if (currency.RecordCount() > 0) CurrencySymbol = currency("Currency_Symbol").text();
}

bool CashPurchase::Save_Cash_Purchase_Detail() {
  return trapped(Trap::plain, [&] {
    const auto grid = given(GridName());
    const std::int32_t lines = count_lines(*grid);
    auto detail = open(sql({"Select * from Cash_Purchase_Detail"}), Keyset);
    DiscountSpread discount(CashPurInvDiscPercent(),
                            {CashPurInvFCDiscAmount(), CashPurInvDiscAmount()}, ExchangeRate(),
                            AmtDig.number());
    const std::int32_t rows = grid->Rows();
    for (std::int32_t row = 1; row < rows && is_line(*grid, row); ++row) {
      CashPurchaseLine line{{*grid, row}, *this};
      line.serial = next_serial();
      detail.AddNew();
      discount.share(line, line.number(14), row == lines);
      write_columns(CashPurchaseColumns::line(), line, detail);
      detail.Update();
    }
    return true;
  });
}

std::int32_t CashPurchase::next_serial() const {
  auto highest = open(sql({"Select max(SL_NO) as MaxNo from Cash_Purchase_Detail"}), Static);
  const Value serial = highest("MaxNo");
  return serial.is_null() ? 1 : sum(serial, 1).to_long();
}

bool CashPurchase::Get_Direct_PInvoice() {
  if (CashPurInvNo().empty()) return refused("Invalid Cash Purchase Number");
  return trapped(Trap::plain, [&] {
    auto master = open_fresh(
        sql({"Select * from Cash_Purchase_Master Where Cash_Pur_Inv_No=", text(CashPurInvNo())}),
        Keyset, ConnectionString());
    if (master.RecordCount() < 1) return refused("Cash Purchase Number does Not Exists.");
    read_columns_skipping_null(CashPurchaseColumns::key(), *this, master);
    read_columns_skipping_null(CashPurchaseColumns::rest(), *this, master);
    read_exchange_rate(master);
    read_status(master);
    return SkipCashDetailLoad || Get_Cash_Purchase_Detail();
  });
}

void CashPurchase::read_status(Recordset& master) {
  const Value status = master("Status");
  const Value processed = master("process_Flag");
  if (!status.is_null()) {
    Status = status.to_text();
  } else {
    Status = !processed.is_null() && processed.to_flag() ? "Processed" : "Saved";
  }
}

bool CashPurchase::Get_Cash_Purchase_Detail() {
  return trapped(Trap::plain, [&] {
    auto detail = open_fresh(
        sql({"SELECT Cash_Purchase_Master.Purchase_Type, Cash_Purchase_Detail.*"
             " FROM Cash_Purchase_Master INNER JOIN Cash_Purchase_Detail"
             " ON Cash_Purchase_Master.Cash_Pur_Inv_No = Cash_Purchase_Detail.Cash_Pur_Inv_No"
             " Where Cash_Purchase_Detail.Cash_Pur_Inv_No=",
             text(CashPurInvNo()), " Order by Cash_Purchase_Detail.SL_No"}),
        StaticUnlocked, ConnectionString());
    const auto count = static_cast<std::int32_t>(detail.RecordCount());
    const auto grid = given(GridName());
    if (ProcessFlag() || grid->Rows() < count) grid->Rows(count + 2);
    if (count < 1) return refused("Invalid Purchase Invoice No.");
    for (std::int32_t row = 1; row <= count; ++row) {
      FilledLine line{{*grid, row}, detail};
      fill_cells(CashPurchaseColumns::cells(), line);
      mark_location(*grid, row);
      detail.MoveNext();
    }
    return true;
  });
}

void CashPurchase::mark_location(Grid& grid, std::int32_t row) const {
  constexpr std::int32_t kColour = 7, kLocation = 16;
  constexpr auto kGrey = static_cast<std::int32_t>(0x80000011U);  // the system's, for disabled text
  auto item = sibling("OmbrixInventory.Inventory");
  item.set({{"ADOConnectionString", ConnectionString()},
            {"ItemCode", CompanyPrefix() + GridLine{grid, row}.trimmed(1)}});
  if (!item.call("Get_Item_Type")) return;
  const bool other = item.get("ItemType").text_or_empty() != "0";
  grid.Cell(kColour, row, kLocation, row, kLocation, other ? kGrey : 0);
}

}  // namespace ombrix::purchase
