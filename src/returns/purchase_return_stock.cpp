#include <array>

#include "ombrix/purchase/purchase_return.h"

#include "base/names.h"
#include "base/number.h"
#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/sibling.h"
#include "frame/trap.h"

namespace ombrix::purchase {

using database::Piece;
using database::sql;
using database::text;

std::string PurchaseReturn::item_field(Sibling general, std::string_view field,
                                       const std::string& item) const {
  std::array<Value, 5> arguments{"Item_Master", field, "Item_Code", item, false};
  return general.ask("GetFldValue", arguments).text_or_empty();
}

bool PurchaseReturn::take_out_of_stock(Recordset& line, double amount) {
  const std::string item = line("Item_Code").text_or_empty();
  auto general = sibling("OmbrixSystem.General");
  general.set("AdoConnectionObject", raw(AdoConnectionObject));
  const Value type = head_number(item_field(std::move(general), "Item_Type", item));
  // A receipt stocks type 3 too; it does not come back this way.
  if (type.to_long() != 0) return true;
  return Consume_Purchase_Log(line) && Reduce_Item_Stock(item, ReturnBaseQty, amount) &&
         lower_location_stock(line) && enter_stock_movement(line);
}

bool PurchaseReturn::Consume_Purchase_Log(Recordset& line) {
  return trapped(Trap::plain, [&] {
    const std::string item = line("Item_Code").text_or_empty();
    auto general = sibling("OmbrixSystem.General");
    if (connection().ConnectionString().empty()) {
      general.set("ADOConnectionString", ConnectionString());
    } else {
      general.set("AdoConnectionObject", raw(AdoConnectionObject));
    }
    const std::string costing_type = item_field(std::move(general), "Costing_Type", item);
    if (trim(costing_type).empty()) return refused("Invalid Costing Type");
    auto unit =
        open(sql({"Select Unit_Qty From Item_Detail where Item_Detail.Item_Code =", text(item),
                  " and Item_Detail.Unit_Name=", text(line("Unit_Name").text_or_empty())}),
             Keyset);
    // A unit that the item does not have counts as the line itself says.
    const Value in_base = unit.RecordCount() > 0 ? unit("Unit_Qty") : line("Unit_Qty");
    ReturnBaseQty = product(line("pur_rtn_qty"), in_base).to_number();
    return take_off_layers(item, costing_type, ReturnBaseQty);
  });
}

bool PurchaseReturn::take_off_layers(const std::string& item, const std::string& costing_type,
                                     double quantity) {
  const bool newest_first = same_name(costing_type, "LIFO");
  if (!newest_first && !same_name(costing_type, "FIFO") && !same_name(costing_type, "AVEG")) {
    return true;
  }
  auto layers = open(
      sql({"Select * from Purchase_Log where Item_Code=", text(item),
           " and branch_Prefix=", text(BranchPrefix()),
           newest_first
               ? Piece(" And Total_Purchase_Qty - Sold_Qty > 0 Order by Purchase_Log_Date Desc")
               : Piece("  And Total_Purchase_Qty - Sold_Qty > 0 Order by Purchase_Log_Date Asc")}),
      Keyset);
  for (; !layers.IsEOF(); layers.MoveNext()) {
    // The whole layer counts: what was sold of it was never taken off its quantity.
    const double layer = layers("Total_Purchase_Qty").number();
    const bool spent = layer > quantity;
    layers("Total_Purchase_Qty") = spent ? layer - quantity : 0.0;
    layers("Last_Update") = LastUpdate();
    layers.Update();
    if (spent) break;
    quantity -= layer;
  }
  return true;
}

bool PurchaseReturn::Reduce_Item_Stock(const std::string& item_code, double quantity,
                                       double amount) {
  return trapped(Trap::plain, [&] {
    auto item = open(sql({"Select * from Item_Master where Item_Code=", text(item_code)}), Keyset);
    if (item.RecordCount() == 0) return true;
    item("Stock_In_Hand") = sum(item("Stock_In_Hand"), -quantity);
    item("Stock_Amount") = sum(item("Stock_Amount"), -amount);
    item.Update();
    return true;
  });
}

bool PurchaseReturn::lower_location_stock(Recordset& line) {
  auto stock = sibling("OmbrixInventory.LocationStock");
  stock.set({{"AdoConnectionObject", raw(AdoConnectionObject)},
             {"BranchPrefix", BranchPrefix()},
             {"CompanyPrefix", CompanyPrefix()},
             {"ItemCode", line("Item_Code")},
             {"ItemName", line("Item_Name")},
             {"LocationCode", line("location_ID")},
             {"LocationName", line("Location_Name")},
             {"LocationQty", line("pur_rtn_qty")},
             {"LastUpdate", LastUpdate()},
             {"UnitName", line("Unit_Name")}});
  constexpr std::int32_t kOut = 1;
  std::array<Value, 1> direction{kOut};
  return stock.call("UpdateLocationStock", direction) || refused_by(stock);
}

bool PurchaseReturn::enter_stock_movement(Recordset& line) {
  auto movement = sibling("OmbrixInventory.StockMovement");
  // As stored, also where the rates made another amount of the line.
  const Value amount = line("purchase_rtn_item_amount");
  movement.set({{"AdoConnectionObject", raw(AdoConnectionObject)},
                {"CompanyPrefix", CompanyPrefix()},
                {"BranchPrefix", BranchPrefix()},
                {"DocumentPrefix", StockMovementPrefix()},
                {"ItemCode", line("Item_Code")},
                {"ItemName", line("Item_Name")},
                {"UnitCode", line("Unit_Code")},
                {"UnitName", line("Unit_Name")},
                {"UnitQty", line("Unit_Qty")},
                {"OutQty", ReturnBaseQty},
                {"OutAmount", amount}});
  if (ReturnBaseQty != 0) movement.set("OutPrice", quotient(amount.to_number(), ReturnBaseQty));
  movement.set({{"DocumentNo", PurchaseRtnNo()},
                {"DocumentDate", PurchaseRtnDate()},
                {"DocumentType", "OUT"},
                {"LocationID", line("location_ID")},
                {"LocationName", line("Location_Name")},
                {"LastUpdate", LastUpdate()}});
  std::array<Value, 1> quantity{ReturnBaseQty};
  return movement.call("StockMovement", quantity) || refused_by(movement);
}

}  // namespace ombrix::purchase
