#include "ombrix/purchase/cash_purchase.h"

#include "base/number.h"
#include "base/raw.h"
#include "stock/stock_in.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

namespace {

Value negated(const Value& value) {
  return product(value, -1.0);
}

/// A field that is Null makes the price Null.
Value net_unit_price(Recordset& line) {
  const Value overall = line("Cash_Pur_Inv_Overall_Disc_Amount");
  const Value quantity = line("Cash_Pur_Inv_Qty");
  const bool none = overall.is_null() || quantity.is_null();
  const Value on_unit =
      none ? Value(Null()) : Value(quotient(overall.to_number(), quantity.to_number()));
  return sum(
      sum(line("Cash_Pur_Inv_Unit_Price"), negated(line("Cash_Pur_Inv_Item_Disc_Amount").value())),
      negated(on_unit));
}

}  // namespace

double CashPurchase::discount_on(Recordset& line) const {
  return head_of(line("Cash_Pur_Inv_Item_Amount")) * CashPurInvDiscPercent() / 100;
}

bool CashPurchase::move_stock() {
  const StockIn stock(*this, heading(),
                      {.quantity = "Cash_Pur_Inv_Qty",
                       .log_series = raw(PurchaseLogPrefix),
                       .movement_series = raw(StockMovementPrefix),
                       .net_amount =
                           [this](Recordset& line) {
                             return sum(line("Cash_Pur_Inv_Item_Amount"), -discount_on(line));
                           },
                       .cost =
                           [this](Recordset& line) {
                             return head_of(line("Cash_Pur_Inv_Item_Amount")) -
                                    head_number(general_text(discount_on(line)));
                           },
                       .unit_price = net_unit_price,
                       .ordered = false});
  const auto set_members = [&](Sibling& location, Recordset& line) {
    location.set({{"AdoConnectionObject", raw(AdoConnectionObject)},
                  {"CompanyPrefix", CompanyPrefix()},
                  {"BranchPrefix", BranchPrefix()},
                  {"ItemCode", line("Item_Code")},
                  {"ItemName", line("Item_Name")},
                  {"LocationCode", line("location_ID")},
                  {"LocationName", line("Location_Name")}});
    location.set("LocationQty", head_of(line("Cash_Pur_Inv_Qty")));
    location.set("LastUpdate", LastUpdate());
    location.set("UnitName", line("Unit_Name"));
  };
  return stock.locate(sql({"Select B.Cash_Pur_Inv_No, B.Location_ID, B.Location_Name,C.Base_Qty,"
                           " B.Item_Code, B.Item_Name,C.Item_Type, B.Unit_Qty, B.Cash_Pur_Inv_Qty,"
                           " b.Unit_Name from Cash_Purchase_Detail B,Item_Master C"
                           " Where  B.Item_Code=C.Item_Code and B.Cash_Pur_Inv_No=",
                           text(CashPurInvNo())}),
                      set_members) &&
         stock.cost(sql({"Select A.* , B.Base_Qty as BaseQty, B.Item_Type as Item_Type"
                         " from Cash_Purchase_Detail A, Item_Master B"
                         " Where A.Item_Code = B.Item_Code and Cash_Pur_Inv_No=",
                         text(CashPurInvNo()), " Order By Sl_No"})) &&
         stock.log(sql({"Select A.* , B.Base_Qty as BaseQty"
                        " from Cash_Purchase_Detail A, Item_Master B"
                        " Where A.Item_Code = B.Item_Code and Cash_Pur_Inv_No=",
                        text(CashPurInvNo())})) &&
         stock.move(sql({"Select A.* , B.Base_Qty as BaseQty ,Item_Type"
                         " from Cash_Purchase_Detail A, Item_Master B"
                         " Where A.Item_Code = B.Item_Code and Cash_Pur_Inv_No=",
                         text(CashPurInvNo())}));
}

}  // namespace ombrix::purchase
