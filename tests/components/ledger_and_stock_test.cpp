#include "ombrix/components.h"

#include "support/failures.h"
#include "support/lines.h"

namespace ombrix::testing {
namespace {

using Members = std::initializer_list<std::pair<std::string_view, Value>>;

class ShippedComponentTest : public OnEachDatabase {
 protected:
  ObjectRef made(std::string_view name, Members members) const {
    ObjectRef object = create_object(name);
    object->set("AdoConnectionObject", books.connection());
    for (const auto& [member, value] : members) object->let(member, value);
    return object;
  }
  /// "" when the call is taken, else the reason.
  static std::string call(const ObjectRef& object, std::string_view method,
                          std::vector<Value> arguments = {}) {
    return object->call(method, arguments).to_flag() ? "" : object->get("ErrDesc").to_text();
  }
};
OMBRIX_ON_EACH_DATABASE(ShippedComponentTest);

TEST_P(ShippedComponentTest, the_ledger_knows_its_accounts) {
  books.execute(
      "Insert Into Chart_Of_Accounts (Account_No, Opening_Balance, Current_Balance)"
      " Values ('A', 10, Null), ('O''Hara', 0, 5)");
  const auto ledger = made("OmbrixAccounts.GeneralLedger", {{"DocumentNo", "D1"},
                                                            {"AccountNo", "O'Hara"},
                                                            {"GLComments", "it's 5' long"},
                                                            {"GLDebitAmount", -1.5},
                                                            {"ForeignCurrencyFlag", true},
                                                            {"GLDescription", Null{}}});
  EXPECT_EQ(call(ledger, "GLInsert"), "");
  EXPECT_EQ(call(ledger, "GLInsert"), "");
  ledger->let("AccountNo", "B");
  EXPECT_EQ(call(ledger, "GLInsert"),
            "Ledger line: account \"B\" is not in the chart of accounts.");
  ledger->let("DocumentNo", "");
  EXPECT_EQ(call(ledger, "GLInsert"), "Ledger line: DocumentNo is empty.");
  EXPECT_EQ(listing(books,
                    {"Account_No", "GL_Comments", "GL_Debit_Amount", "GL_Credit_Amount",
                     "Foreign_Currency_Flag", "GL_Description"},
                    "General_Ledger"),
            "O'Hara | it's 5' long | -1.5 | 0 | -1 | \nO'Hara | it's 5' long | -1.5 | 0 | -1 | ");

  EXPECT_EQ(call(ledger, "COAPosting", {"A", 2.25}), "");
  EXPECT_EQ(call(ledger, "COAPosting", {"O'Hara", -7}), "");
  EXPECT_EQ(call(ledger, "COAPosting", {" ", 1}), "Account balance: AccountNo is empty.");
  EXPECT_EQ(call(ledger, "COAPosting", {"B", 1}),
            "Account balance: account \"B\" is not in the chart of accounts.");
  EXPECT_EQ(listing(books, {"Opening_Balance", "Current_Balance"},
                    "Chart_Of_Accounts Order By Account_No"),
            "10 | 2.25\n0 | -2");
  const auto alone = create_object("OmbrixAccounts.GeneralLedger");
  EXPECT_EQ(call(alone, "GLInsert"), "Ledger line: no connection was given.");
}

TEST_P(ShippedComponentTest, location_stock_is_kept_for_each_place_and_unit) {
  const auto stock = made("OmbrixInventory.LocationStock", {{"CompanyPrefix", "AA"},
                                                            {"BranchPrefix", "BR"},
                                                            {"ItemCode", "AA1"},
                                                            {"LocationCode", Null{}},
                                                            {"LocationName", "Bob's"},
                                                            {"UnitName", "5' pipe"},
                                                            {"LocationQty", 4}});
  EXPECT_EQ(call(stock, "UpdateLocationStock", {0}), "");
  EXPECT_EQ(call(stock, "UpdateLocationStock", {1}), "");
  stock->let("LocationQty", 2.5);
  EXPECT_EQ(call(stock, "UpdateLocationStock", {1}), "");
  stock->let("LocationCode", "L1");
  EXPECT_EQ(call(stock, "UpdateLocationStock", {0}), "");
  stock->let("UnitName", "Box");
  EXPECT_EQ(call(stock, "UpdateLocationStock", {1}), "");
  EXPECT_EQ(call(stock, "UpdateLocationStock", {2}),
            "Location stock: direction 2 is neither 0 (in) nor 1 (out).");
  stock->let("ItemCode", "");
  EXPECT_EQ(call(stock, "UpdateLocationStock", {0}), "Location stock: ItemCode is empty.");
  EXPECT_EQ(listing(books, {"location_ID", "Unit_Name", "Location_Qty"},
                    "Location_Stock Order By location_ID, Location_Qty"),
            " | 5' pipe | -2.5\nL1 | Box | -2.5\nL1 | 5' pipe | 2.5");
}

TEST_P(ShippedComponentTest, journal_and_layers_take_any_amount_and_refuse_empty_keys) {
  const auto journal = made("OmbrixInventory.StockMovement", {{"CompanyPrefix", "AA"},
                                                              {"BranchPrefix", "BR"},
                                                              {"ItemCode", "AA1"},
                                                              {"DocumentNo", "D1"},
                                                              {"OutQty", -3},
                                                              {"OutPrice", 0.1}});
  EXPECT_EQ(call(journal, "StockMovement", {-3.0}), "");
  journal->let("FOC_Flag", true);
  EXPECT_EQ(call(journal, "StockMovement"), "");
  journal->let("DocumentNo", "");
  EXPECT_EQ(call(journal, "StockMovement"), "Stock movement: DocumentNo is empty.");
  EXPECT_EQ(listing(books, {"Out_Qty", "Out_Price", "FOC_Flag"}, "Stock_Movement Order By Row_Id"),
            "-3 | 0.1 | Null\n-3 | 0.1 | -1");

  const auto log = made("OmbrixInventory.PurchaseLog", {{"CompanyPrefix", "AA"},
                                                        {"BranchPrefix", "BR"},
                                                        {"PurchaseDocumentNo", "D1"},
                                                        {"TotalPurchaseQty", 0},
                                                        {"PurchaseItemAmount", -1}});
  EXPECT_EQ(call(log, "Create_PurchaseLog"), "Purchase log: ItemCode is empty.");
  log->let("ItemCode", "AA1");
  EXPECT_EQ(call(log, "Create_PurchaseLog"), "");
  EXPECT_EQ(
      listing(books,
              {"Item_Code", "Total_Purchase_Qty", "Sold_Qty", "Purchase_Item_Amount", "Proj_No"},
              "Purchase_Log"),
      "AA1 | 0 | 0 | -1 | Null");
}

TEST_P(ShippedComponentTest, an_item_tells_its_type) {
  books.execute(
      "Insert Into Item_Master (Item_Code, Item_Type) Values ('AA1', '3'), ('AA2', Null)");
  const ObjectRef inventory = create_object("OmbrixInventory.Inventory");
  inventory->let("ADOConnectionString", books.text());
  for (const auto& [code, type] : {std::pair("AA1", "3"), std::pair("AA2", "")}) {
    inventory->let("ItemCode", code);
    EXPECT_EQ(call(inventory, "Get_Item_Type"), "");
    EXPECT_EQ(inventory->get("ItemType").to_text(), type);
  }
  inventory->let("ItemCode", "AA9");
  EXPECT_EQ(call(inventory, "Get_Item_Type"), "Item type: item \"AA9\" is not on file.");
}

}  // namespace
}  // namespace ombrix::testing
