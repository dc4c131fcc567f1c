#include "returns/return_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

class ReturnStockTest : public ReturnFixture {};
OMBRIX_ON_EACH_DATABASE(ReturnStockTest);

TEST_P(ReturnStockTest, stock_goes_out_of_items_of_type_0_only) {
  Script location, movement;
  const auto locations = scripted("OmbrixInventory.LocationStock", location);
  const auto movements = scripted("OmbrixInventory.StockMovement", movement);
  document.Ref_Doc_Type = "INV";
  document.ForeignCurrencyFlag = true;
  document.ExchangeRate = 3.75;
  document.SourceExchangeRate = 3.6;
  ASSERT_TRUE(process({returned({{6, "Box"}, {7, "12"}, {8, "2"}, {9, "500"}, {14, "3600"}}),
                       returned({{2, "2002"}}), returned({{2, "3003"}})}))
      << document.ErrDesc();
  EXPECT_EQ(list({"Item_Code", "Stock_In_Hand", "Stock_Amount", "Average_Cost"},
                 "Item_Master Order By Item_Code"),
            "AA1001 | 476 | 46250 | Null\nAA2002 | 500 | 50000 | Null\n"
            "AA3003 | 500 | 50000 | Null");
  EXPECT_EQ(location.told(),
            "new\nAdoConnectionObject=object\nBranchPrefix=BR\nCompanyPrefix=AA\nItemCode=AA1001\n"
            "ItemName=Paper\nLocationCode=L1\nLocationName=Main\nLocationQty=2\n"
            "LastUpdate=2024-03-05\nUnitName=Box\nUpdateLocationStock(1)");
  EXPECT_EQ(
      movement.told(),
      "new\nAdoConnectionObject=object\nCompanyPrefix=AA\nBranchPrefix=BR\nDocumentPrefix=SM\n"
      "ItemCode=AA1001\nItemName=Paper\nUnitCode=7\nUnitName=Box\nUnitQty=12\nOutQty=24\n"
      "OutAmount=3600\nOutPrice=150\nDocumentNo=AABRPR1\nDocumentDate=2024-03-01\n"
      "DocumentType=OUT\nLocationID=L1\nLocationName=Main\nLastUpdate=2024-03-05\n"
      "StockMovement(24)");
  EXPECT_EQ(list({"GL_Description"}, "General_Ledger Where Account_No='STOCK' Order By Row_Id"),
            "Inventory Account  : ItemCode - 1001\nInventory Account  : ItemCode - 2002\n"
            "Inventory Account  : ItemCode - 3003");
  movement.asked.clear();
  EXPECT_TRUE(process({returned({{8, "0"}})}));
  EXPECT_EQ(movement.told().find("OutPrice"), std::string::npos);
  for (Script* script : {&location, &movement}) {
    script->refused_call = script->calls + 1;
    EXPECT_FALSE(process({returned()}));
    EXPECT_EQ(document.ErrDesc(), "The component says no.");
  }
}

TEST_P(ReturnStockTest, layers_are_taken_in_the_order_of_the_costing_type) {
  struct {
    std::string costing;
    std::vector<Layer> layers;
    std::string unit;
    int quantity;
    std::string left, touched;
  } const cases[] = {{"FIFO", {{1, 6}, {2, 10}}, "Pcs", 8, "0\n8", "11\n12"},
                     {"AVEG", {{1, 6}, {2, 10}}, "Pcs", 8, "0\n8", "11\n12"},
                     {"LIFO", {{1, 6}, {2, 10}}, "Pcs", 8, "6\n2", "12"},
                     {"fifo", {{2, 10}, {1, 6}}, "Pcs", 5, "10\n1", "11"},
                     {" FIFO", {{1, 6}}, "Pcs", 5, "6", ""},
                     // Spent exactly, the next layer is touched and keeps its quantity.
                     {"FIFO", {{1, 6}, {2, 10}, {3, 4}}, "Pcs", 6, "0\n10\n4", "11\n12"},
                     {"FIFO", {{1, 10, 4}, {2, 10}}, "Pcs", 11, "0\n9", "11\n12"},
                     {"FIFO", {{1, 5, 5}, {2, 10}}, "Pcs", 3, "5\n7", "12"},
                     {"FIFO", {{1, 6}, {2, 3}}, "Pcs", 100, "0\n0", "11\n12"},
                     {"FIFO", {{1, 20}, {2, 10}}, "Box", 2, "0\n6", "11\n12"},
                     // A unit that the item does not have: as the line says.
                     {"FIFO", {{1, 20}}, "Tin", 2, "12", "11"},
                     // Of one day: in the order in which they were written, the last first.
                     {"FIFO", {{1, 6}, {1, 7}}, "Pcs", 2, "4\n7", "11"},
                     {"LIFO", {{1, 6}, {1, 7}}, "Pcs", 2, "6\n5", "11"},
                     {"FIFO", {}, "Pcs", 2, "", ""}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.costing + " " + each.left);
    books.execute("Delete From Purchase_Log; Update Item_Master Set Costing_Type='" + each.costing +
                  "'");
    given_layers(books, each.layers);
    given_layers(books, {{0, 99}}, "B2");
    // The line behind must not take over what the first one counts as.
    const std::string per_unit = each.unit == "Tin" ? "4" : "1";
    ASSERT_TRUE(
        process({returned({{6, each.unit}, {7, per_unit}, {8, std::to_string(each.quantity)}})}))
        << document.ErrDesc();
    EXPECT_EQ(list({"Total_Purchase_Qty"}, "Purchase_Log Where Branch_Prefix='BR' Order By Row_Id"),
              each.left);
    std::string days;
    for (const auto& row : books.rows("Select Purchase_Log_Date From Purchase_Log Where"
                                      " Last_Update='2024-03-05 00:00:00' Order By Row_Id",
                                      {"Purchase_Log_Date"})) {
      days += (days.empty() ? "" : "\n") + row[0].to_text().substr(8, 2);
    }
    EXPECT_EQ(days, each.touched);
  }
  EXPECT_EQ(list({"Total_Purchase_Qty", "Purchase_Item_Amount"}, "Purchase_Log"), "99 | 77");
}

}  // namespace
}  // namespace ombrix::testing
