#include "ombrix/purchase/purchase_return.h"

#include "base/raw.h"
#include "database/statement.h"
#include "frame/lookup.h"
#include "frame/numbering.h"
#include "frame/sibling.h"
#include "frame/trap.h"
#include "returns/purchase_return_columns.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

PurchaseReturn::PurchaseReturn() : PostedDocument(Connected::unopened) {}

bool PurchaseReturn::Validate_Purchase_Rtn() {
  return valid("Invalid Purchase Return Date.", PurchaseRtnDate(),
               {{PurchaseRtnAmount() < 0, "Invalid Purchase Return Amount."},
                {PurchaseRtnSubTotal() < 0, "Invalid Purchase Return Sub Total."}});
}

bool PurchaseReturn::Create_Purchase_Rtn() {
  if (!Validate_Purchase_Rtn()) return false;
  return trapped(Trap::plain, [&] {
    return create_under_temporary_number(
        {raw(PurchaseRtnIdentity), raw(PurchaseRtnNo)}, [&] { return Save_Purchase_Rtn_Master(); },
        [&] { return Save_Purchase_Rtn_Detail(); });
  });
}

bool PurchaseReturn::Update_Purchase_Rtn() {
  if (!Validate_Purchase_Rtn()) return false;
  return trapped(Trap::plain,
                 [&] { return Save_Purchase_Rtn_Master() && Save_Purchase_Rtn_Detail(); });
}

bool PurchaseReturn::Save_Purchase_Rtn_Master() {
  return trapped(Trap::plain, [&] {
    auto master = open(
        sql({"Select * From Purchase_Return_Master Where Purchase_Rtn_No=", text(PurchaseRtnNo())}),
        Keyset);
    begin_save(master, return_key_columns(), *this, [&] {
      execute(sql(
          {"Delete from Purchase_Return_Detail Where Purchase_Rtn_No=", text(PurchaseRtnNo())}));
    });
    write_columns(return_master_columns(), *this, master);
    master.Update();
    return true;
  });
}

bool PurchaseReturn::Save_Purchase_Rtn_Detail() {
  return trapped(Trap::plain, [&] {
    const auto held = given(PurRetGridName());
    Grid& grid = *held;
    auto detail = open(sql({"Select * from Purchase_Return_Detail"}), Keyset);
    bool saved = false;
    const std::int32_t rows = grid.Rows();
    for (std::int32_t row = 1; row < rows; ++row) {
      ReturnLine line{{grid, row}, *this};
      if (line.text(2).empty() && line.text(3).empty()) break;
      saved = true;
      if (!Ref_Doc_Type().empty() && line.number(1) == 0) continue;
      line.serial = next_serial();
      detail.AddNew();
      write_columns(return_detail_columns(), line, detail);
      detail.Update();
    }
    return saved;
  });
}

double PurchaseReturn::next_serial() const {
  auto highest = open(sql({"Select max(SL_NO) as MaxNo from Purchase_Return_Detail"}), Static);
  const Value serial = highest("maxno");
  return serial.is_null() ? 1 : serial.to_number() + 1;
}

bool PurchaseReturn::Get_Purchase_Rtn() {
  return trapped(Trap::plain, [&] {
    if (PurchaseRtnNo().empty()) return refused("Invalid Purchase Return Number");
    auto master = open_fresh(
        sql({"Select * from Purchase_Return_Master Where Purchase_Rtn_No=", text(PurchaseRtnNo())}),
        Keyset, ConnectionString());
    if (master.RecordCount() < 1) return refused("Invalid Purchase Return Number");
    read_columns_skipping_null(return_read_columns(), *this, master);
    read_exchange_rate(master);
    return SkipReturnDetailLoad || Get_Purchase_Rtn_Detail();
  });
}

bool PurchaseReturn::Get_Purchase_Rtn_Detail() {
  return trapped(Trap::plain, [&] {
    auto detail = open_fresh(sql({"Select * from Purchase_Return_Detail Where Purchase_Rtn_No=",
                                  text(PurchaseRtnNo()), " Order By SL_No"}),
                             StaticUnlocked, ConnectionString());
    const auto count = static_cast<std::int32_t>(detail.RecordCount());
    if (count < 1) return true;
    const auto held = given(PurRetGridName());
    Grid& grid = *held;
    grid.Rows(count + 1);
    for (std::int32_t row = 1; row <= count; ++row) {
      FilledReturn line{{{grid, row}, detail}, *this};
      fill_cells(return_cells(), line);
      mark_item_type(line);
      detail.MoveNext();
    }
    return true;
  });
}

void PurchaseReturn::mark_item_type(FilledReturn& line) {
  constexpr std::int32_t kTextColour = 7;
  constexpr std::int32_t kSystemGreyText = -2147483631;
  auto item = sibling("OmbrixInventory.Inventory");
  item.set({{"ADOConnectionString", ConnectionString()},
            {"ItemCode", CompanyPrefix() + line.trimmed(2)}});
  if (!item.call("Get_Item_Type")) return;
  if (item.get("ItemType").text_or_empty() == "0") return;
  line.grid.Cell(kTextColour, line.row, 16, line.row, 16, kSystemGreyText);
}

std::string PurchaseReturn::GetFldValue(const std::string& TblName, const std::string& fldName,
                                        std::optional<std::string> WhereFldName,
                                        std::optional<std::string> WhereFldValue,
                                        std::optional<bool> WhereFldNumYN,
                                        std::optional<std::string> SecondWhereFldName,
                                        std::optional<std::string> SecondWhereFldValue,
                                        std::optional<bool> SecdWhereFldNumYN) {
  return trapped(Trap::message_box, [&] {
    const Comparison first{WhereFldName.value_or(""), WhereFldValue.value_or(""),
                           WhereFldNumYN.value_or(false)};
    const Comparison second{SecondWhereFldName.value_or(""), SecondWhereFldValue.value_or(""),
                            SecdWhereFldNumYN.value_or(false)};
    auto rows =
        open_fresh(field_lookup(TblName, fldName, first, second), Static, ConnectionString());
    return first_value(rows, fldName);
  });
}

}  // namespace ombrix::purchase
