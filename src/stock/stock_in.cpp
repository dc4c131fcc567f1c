#include "stock/stock_in.h"

#include "base/number.h"
#include "base/raw.h"
#include "stock/item_type.h"

namespace ombrix::purchase {

using database::sql;
using database::Statement;
using database::text;

double PostedDocument::StockIn::base_quantity(Recordset& line) const {
  return product(head_of(line("Unit_Qty")), head_of(line(terms_.quantity))).to_number();
}

bool PostedDocument::StockIn::locate(const Statement& lines, const SetMembers& set_members) const {
  auto line = document_.open(lines, KeysetPessimistic);
  auto stock = document_.sibling("OmbrixInventory.LocationStock");
  if (terms_.ordered) stock.set("AdoConnectionObject", raw(document_.AdoConnectionObject));
  for (; !line.IsEOF(); line.MoveNext()) {
    if (!is_stocked(line("Item_Type"))) continue;
    set_members(stock, line);
    Value in = 0;
    if (!stock.call("UpdateLocationStock", {&in, 1})) return document_.refused_by(stock);
  }
  return true;
}

bool PostedDocument::StockIn::move(const Statement& lines) const {
  auto line = document_.open(lines, KeysetPessimistic);
  auto journal = document_.sibling("OmbrixInventory.StockMovement");
  journal.set({{"AdoConnectionObject", raw(document_.AdoConnectionObject)},
               {"CompanyPrefix", document_.CompanyPrefix()},
               {"BranchPrefix", document_.BranchPrefix()},
               {"DocumentPrefix", terms_.movement_series}});
  if (!terms_.ordered) journal.set("LastUpdate", document_.LastUpdate());
  for (; !line.IsEOF(); line.MoveNext()) {
    if (!is_stocked(line("Item_Type"))) continue;
    journal.set({{"ItemCode", line("Item_Code")},
                 {"ItemName", line("Item_Name")},
                 {"UnitCode", line("Unit_Code")},
                 {"UnitName", line("Unit_Name")},
                 {"FOC_Flag", line("FOC_Flag")},
                 {"UnitQty", line("Unit_Qty")}});
    journal.set("InQty", base_quantity(line));
    journal.set("InAmount", terms_.net_amount(line));
    const double amount = journal.get("InAmount").to_number();
    journal.set({{"InPrice", quotient(amount, journal.get("InQty").to_number())},
                 {"DocumentNo", heading_.number},
                 {"DocumentDate", heading_.date},
                 {"DocumentType", "IN"},
                 {"LocationID", line("location_ID")},
                 {"LocationName", line("Location_Name")}});
    if (terms_.ordered) journal.set("LastUpdate", document_.LastUpdate());
    journal.set("StockComments", heading_.comments);
    if (!journal.call("StockMovement")) return document_.refused_by(journal);
  }
  return true;
}

bool PostedDocument::StockIn::cost(const Statement& lines) const {
  auto line = document_.open(lines, Static);
  for (; !line.IsEOF(); line.MoveNext()) {
    const double quantity = base_quantity(line);
    const double amount = terms_.cost(line);
    const std::string item_code = line("Item_Code").text_or_empty();
    cost_item(item_code, quantity, amount);
    price_of_vendor(item_code, quantity, amount);
  }
  return true;
}

void PostedDocument::StockIn::cost_item(const std::string& item_code, double quantity,
                                        double amount) const {
  auto item =
      document_.open(sql({"Select * from Item_Master Where Item_Code=", text(item_code)}), Keyset);
  if (item.RecordCount() == 0 || !is_stocked(item("Item_Type"))) return;
  const double stock_amount = item("Stock_Amount").number() + amount;
  const double stock_in_hand = item("Stock_In_Hand").number() + quantity;
  const double average = quotient(stock_amount, stock_in_hand);
  item("Stock_Amount") = stock_amount;
  item("Stock_In_Hand") = stock_in_hand;
  item("Prv_Average_Cost") = item("Average_Cost");
  item("Prv_Landed_Cost") = item("Landed_Cost");
  item("Average_Cost") = average;
  item("Landed_Cost") = quotient(amount, quantity);
  if (terms_.ordered) {
    item("Purchase_Order_Qty") = item("Purchase_Order_Qty").number() - quantity;
    item("Last_Update") = document_.LastUpdate();
  }
  item.Update();
}

void PostedDocument::StockIn::price_of_vendor(const std::string& item_code, double quantity,
                                              double amount) const {
  const auto of_vendor = [&]() -> Statement {
    if (terms_.ordered) {
      return sql({"Select Last_Purchase_Price,Last_Update from Vendor_Items Where Vendor_Code=",
                  text(document_.VendorCode()), " and Item_Code=", text(item_code)});
    }
    return sql({"Select Last_Purchase_Price from Vendor_Items Where Vendor_Code=",
                text(document_.VendorCode()), " and Item_Code=", text(item_code)});
  };
  auto price = document_.open(of_vendor(), Keyset);
  if (price.RecordCount() == 0) return;
  price("Last_Purchase_Price") = quotient(amount, quantity);
  if (terms_.ordered) price("Last_Update") = document_.LastUpdate();
  price.Update();
}

bool PostedDocument::StockIn::log(const Statement& lines) const {
  auto line = document_.open(lines, KeysetPessimistic);
  auto log = document_.sibling("OmbrixInventory.PurchaseLog");
  log.set({{"AdoConnectionObject", raw(document_.AdoConnectionObject)},
           {"BranchPrefix", document_.BranchPrefix()},
           {"CompanyPrefix", document_.CompanyPrefix()},
           {"DocumentPrefix", terms_.log_series},
           {"PurchaseDocumentNo", heading_.number},
           {"PurchaseDocumentPrefix", document_.DocumentPrefix()},
           {"PurchaseLogDate", heading_.date},
           {"LastUpdate", document_.LastUpdate()}});
  for (; !line.IsEOF(); line.MoveNext()) {
    log.set({{"ItemCode", line("Item_Code")},
             {"ItemName", line("Item_Name")},
             {"UnitCode", line("Unit_Code")},
             {"UnitName", line("Unit_Name")},
             {"FOC_Flag", line("FOC_Flag")},
             {"UnitQty", line("Unit_Qty")},
             {"PurchaseQty", line(terms_.quantity)}});
    log.set("TotalPurchaseQty", base_quantity(line));
    log.set("PurchaseUnitPrice", terms_.unit_price(line));
    log.set("PurchaseItemAmount", terms_.net_amount(line));
    // A line without a project keeps that of the line before.
    if (const Value project = line("Proj_No"); !project.is_null()) log.set("ProjNo", project);
    if (!log.call("Create_PurchaseLog")) return document_.refused_by(log);
  }
  return true;
}

}  // namespace ombrix::purchase
