#include "ombrix/purchase/grn.h"

#include "base/number.h"
#include "base/raw.h"
#include "stock/stock_in.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

namespace {

Value amount_less_overall_discount(Recordset& line) {
  return sum(line("GRN_Item_Amount"), -head_of(line("PO_Overall_Disc")));
}

Value net_unit_price(Recordset& line) {
  const double overall = quotient(line("PO_Overall_Disc").number(), line("grn_qty").number());
  return sum(sum(line("GRN_Unit_Price"), -head_of(line("GRN_Item_Disc_Amount"))),
             -head_number(general_text(overall)));
}

}  // namespace

bool GRN::move_stock() {
  const StockIn stock(*this, heading(),
                      {.quantity = "grn_qty",
                       .log_series = raw(PurchaseLogPrefix),
                       .movement_series = raw(StockMovementPrefix),
                       .net_amount = amount_less_overall_discount,
                       // The average takes the line before the order's overall discount.
                       .cost = [](Recordset& line) { return head_of(line("GRN_Item_Amount")); },
                       .unit_price = net_unit_price,
                       .ordered = true});
  const auto set_members = [&](Sibling& location, Recordset& line) {
    location.set({{"CompanyPrefix", CompanyPrefix()},
                  {"BranchPrefix", BranchPrefix()},
                  {"ItemCode", line("Item_Code")},
                  {"ItemName", line("Item_Name")},
                  {"LocationCode", line("location_ID")}});
    // A line without a location's name keeps that of the line before.
    const Value name = line("Location_Name");
    if (!name.is_null()) location.set("LocationName", name);
    location.set("LastUpdate", LastUpdate());
    location.set("LocationQty", line("grn_qty").number());
    location.set("UnitName", line("Unit_Name"));
  };
  return stock.locate(
             sql({"Select B.GRN_NO, B.Location_ID, B.Location_Name,C.Base_Qty, B.Item_Code,"
                  " B.Item_Name, B.Unit_Qty, C.Item_Type, B.GRN_Qty, b.Unit_Name from "
                  "Goods_Receive_Detail B,Item_Master C Where B.Item_Code=C.Item_Code"
                  " and B.GRN_NO=",
                  text(GRNNo())}),
             set_members) &&
         stock.move(sql({"Select A.* , B.Base_Qty as BaseQty ,B.Item_Type"
                         " from Goods_Receive_Detail A, Item_Master B"
                         " Where A.Item_Code = B.Item_Code and GRN_No=",
                         text(GRNNo())})) &&
         stock.cost(sql({"Select A.* , B.Base_Qty as BaseQty, B.Item_Type as Item_type"
                         " from Goods_Receive_Detail A, Item_Master B"
                         " Where A.Item_Code = B.Item_Code and GRN_No=",
                         text(GRNNo()), " Order By Sl_No"})) &&
         stock.log(sql({"Select A.* , B.Base_Qty as BaseQty"
                        " from Goods_Receive_Detail A, Item_Master B"
                        " Where A.Item_Code = B.Item_Code and GRN_No=",
                        text(GRNNo())}));
}

}  // namespace ombrix::purchase
