#include "ombrix/purchase/purchase_invoice.h"

#include <algorithm>

#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/discount_spread.h"
#include "frame/lookup.h"
#include "frame/numbering.h"
#include "frame/trap.h"
#include "invoices/purchase_invoice_columns.h"
#include "invoices/purchase_invoice_fills.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

namespace {

/// Walks the lines that are taken; a row without an item's code or name ends them.
template <class Take>
void for_each_taken(Grid& grid, Take take) {
  const std::int32_t rows = grid.Rows();
  for (std::int32_t row = 1; row < rows; ++row) {
    const GridLine line{grid, row};
    if (line.text(6).empty() && line.text(7).empty() && line.text(8).empty()) return;
    if (Value(line.text(1)).to_flag()) take(row);
  }
}

}  // namespace

PurchaseInvoice::PurchaseInvoice() : PostedDocument(Connected::unopened) {}

bool PurchaseInvoice::Validate_Purchase_Invoice() {
  return valid("Invalid Purchase Invoice Date.", PurchaseInvDate(),
               {{PurchaseInvAmount() < 0, "Invalid Purchase Invoice Amount."},
                {PurchaseInvSubTotal() < 0, "Invalid LPO Sub Total."}});
}

bool PurchaseInvoice::Create_Purchase_Invoice() {
  if (!Validate_Purchase_Invoice()) return false;
  return trapped(Trap::plain, [&] {
    return create_under_temporary_number(
        {raw(PurchaseInvIdentity), raw(PurchaseInvNo)},
        [&] { return Save_Purchase_Invoice_Master(); },
        [&] { return Save_Purchase_Invoice_Detail(); });
  });
}

bool PurchaseInvoice::Update_Purchase_Invoice() {
  if (!Validate_Purchase_Invoice()) return false;
  if (trim(PurchaseInvNo()).empty()) return refused("Invalid Purchase Invoice No");
  return Save_Purchase_Invoice_Master() && Save_Purchase_Invoice_Detail();
}

bool PurchaseInvoice::Save_Purchase_Invoice_Master() {
  return trapped(Trap::plain, [&] {
    auto master = open(sql({"Select * From Purchase_Invoice_Master Where Purchase_Inv_No=",
                            text(PurchaseInvNo())}),
                       Keyset);
    begin_save(master, invoice_key_columns(), *this, [&] {
      execute(sql(
          {"Delete from Purchase_Invoice_Detail Where Purchase_Inv_No=", text(PurchaseInvNo())}));
    });
    write_columns(invoice_master_columns(), *this, master);
    master.Update();
    return true;
  });
}

bool PurchaseInvoice::Save_Purchase_Invoice_Detail() {
  return trapped(Trap::plain, [&] {
    auto detail = open(sql({"Select * from Purchase_Invoice_Detail"}), Keyset);
    const auto grid = given(PInvoiceGridName());
    std::int32_t taken = 0;
    for_each_taken(*grid, [&](std::int32_t) { ++taken; });
    DiscountSpread discount(PurchaseInvDiscPercent(),
                            {PurchaseInvFCDiscAmount(), PurchaseInvDiscAmount()}, ExchangeRate(),
                            AmtDig());
    std::int32_t serial = 0;
    for_each_taken(*grid, [&](std::int32_t row) {
      InvoiceLine line{{*grid, row}, *this};
      detail.AddNew();
      line.serial = ++serial;
      discount.share(line, line.number(17), serial == taken);
      write_columns(invoice_detail_columns(), line, detail);
      detail.Update();
    });
    return true;
  });
}

bool PurchaseInvoice::Get_Purchase_Invoice() {
  if (PurchaseInvNo().empty()) return refused("Invalid Purchase Invoice Number");
  return trapped(Trap::plain, [&] {
    auto master = open_fresh(sql({"Select * from Purchase_Invoice_Master Where Purchase_Inv_No=",
                                  text(PurchaseInvNo())}),
                             Keyset, ConnectionString());
    if (master.RecordCount() < 1) return refused("Purchase Invoice Number  Does Not Exists.");
    read_columns_skipping_null(invoice_key_columns(), *this, master);
    read_columns_skipping_null(invoice_master_columns(), *this, master);
    read_order_date(master);
    read_exchange_rate(master);
    master.Close();  // its session serves the lines
    return SkipDetailLoad || Get_Purchase_Invoice_Detail();
  });
}

void PurchaseInvoice::read_order_date(Recordset& master) {
  const Value date = master("PO_Date");
  if (date.is_null() || master("PO_No").text_or_empty().empty()) return;
  PODate = date.to_date();
}

bool PurchaseInvoice::Get_Purchase_Invoice_Detail() {
  return trapped(Trap::plain, [&] {
    auto detail = open_fresh(sql({"Select * from Purchase_Invoice_Detail Where Purchase_Inv_No=",
                                  text(PurchaseInvNo()), " Order by SL_No"}),
                             StaticUnlocked, ConnectionString());
    const auto count = static_cast<std::int32_t>(detail.RecordCount());
    const auto grid = given(PInvoiceGridName());
    if (ProcessedFlag() || grid->Rows() < count) grid->Rows(count + 2);
    if (count < 1) return refused("Invalid Purchase Invoice No");
    for (std::int32_t row = 1; row <= count; ++row) {
      SourceLine line{{{*grid, row}, detail}, *this};
      fill_cells(invoice_fills(bills_receipts()), line);
      detail.MoveNext();
    }
    return true;
  });
}

std::string PurchaseInvoice::GetFldValue(const std::string& TblName, const std::string& fldName,
                                         std::optional<std::string> WhereFldName,
                                         std::optional<std::string> WhereFldValue,
                                         std::optional<bool> WhereFldNumYN,
                                         std::optional<std::string> SecondWhereFldName,
                                         std::optional<std::string> SecondWhereFldValue,
                                         std::optional<bool> SecdWhereFldNumYN) {
  const auto comparison = [&](const auto& name, const auto& value, const auto& is_number) {
    return Comparison{name.value_or(""), StringValidation(value.value_or(""), true),
                      is_number.value_or(false)};
  };
  return trapped(Trap::message_box, [&] {
    auto rows = open_fresh(
        field_lookup(TblName, fldName, comparison(WhereFldName, WhereFldValue, WhereFldNumYN),
                     comparison(SecondWhereFldName, SecondWhereFldValue, SecdWhereFldNumYN)),
        Static, ConnectionString());
    return first_value(rows, fldName);
  });
}

std::string PurchaseInvoice::StringValidation(const std::string& mString, bool mValidate) {
  std::string text = mString;
  std::replace(text.begin(), text.end(), mValidate ? '\'' : '~', mValidate ? '~' : '\'');
  return text;
}

}  // namespace ombrix::purchase
