#include "receipts/grn_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

class GRNStockTest : public GRNFixture {
 protected:
  std::string item(const std::string& code) const {
    return listing(books,
                   {"Stock_Amount", "Stock_In_Hand", "Average_Cost", "Landed_Cost",
                    "Prv_Average_Cost", "Prv_Landed_Cost", "Purchase_Order_Qty", "Last_Update"},
                   "Item_Master Where Item_Code='" + code + "'");
  }
  std::string prices() const {
    return listing(books, {"Item_Code", "Last_Purchase_Price", "Last_Update"},
                   "Vendor_Items Where Vendor_Code='AAV001' Order By Item_Code");
  }
};
OMBRIX_ON_EACH_DATABASE(GRNStockTest);

constexpr std::string_view kDay = "2024-03-05 00:00:00";

TEST_P(GRNStockTest, a_line_moves_quantity_amount_and_average) {
  ASSERT_TRUE(process({received({{22, "20"}, {19, "P1"}})})) << receipt.ErrDesc();
  EXPECT_EQ(item("AA1001"), "400 | 20 | 20 | 30 | 10 | 8 | 90 | " + std::string(kDay));
  EXPECT_EQ(prices(), "AA1001 | 30 | " + std::string(kDay) + "\nAA3003 | 9 | Null");
  EXPECT_EQ(listing(books, {"Last_Purchase_Price"}, "Vendor_Items Where Vendor_Code='AAV002'"),
            "9");
  EXPECT_EQ(listing(books,
                    {"Company_Prefix", "Branch_Prefix", "Item_Code", "Item_Name", "location_ID",
                     "Location_Name", "Unit_Name", "Location_Qty", "Last_Update"},
                    "Location_Stock"),
            "AA | BR | AA1001 | Paper | L1 | Main store | Box | 5 | " + std::string(kDay));
  // The overall discount, 20 / 10 * 5, comes off the journal and the layer, not off the average.
  EXPECT_EQ(listing(books,
                    {"Document_Prefix", "Item_Code", "Unit_Code", "FOC_Flag", "Unit_Qty", "In_Qty",
                     "In_Amount", "In_Price", "Out_Qty", "Document_No", "Document_Date",
                     "Document_Type", "location_ID", "Stock_Comments"},
                    "Stock_Movement"),
            "STM | AA1001 | BX | 0 | 2 | 10 | 290 | 29 | 0 | AABRGRN7 | 2024-03-01 00:00:00 | IN |"
            " L1 | left at the gate");
  EXPECT_EQ(
      listing(books,
              {"Document_Prefix", "Purchase_Document_No", "Purchase_Document_Prefix",
               "Purchase_Log_Date", "Item_Code", "Unit_Qty", "Purchase_Qty", "Total_Purchase_Qty",
               "Sold_Qty", "Purchase_Unit_Price", "Purchase_Item_Amount", "Proj_No"},
              "Purchase_Log"),
      "PLG | AABRGRN7 | GRN | 2024-03-01 00:00:00 | AA1001 | 2 | 5 | 10 | 0 | 58 | 290 | P1");
}

TEST_P(GRNStockTest, lines_of_one_item_follow_each_other) {
  ASSERT_TRUE(process({received({{7, "1"}}), received({{7, "12"}, {9, "1"}, {17, "2"}})}));
  // 100 + 300 over 15, then 400 + 25 over 27.
  EXPECT_EQ(listing(books, {"Stock_Amount", "Stock_In_Hand", "Prv_Average_Cost", "Landed_Cost"},
                    "Item_Master Where Item_Code='AA1001'"),
            "425 | 27 | 26.6666666666667 | 2.08333333333333");
  EXPECT_EQ(listing(books, {"Location_Qty"}, "Location_Stock"), "6");
}

TEST_P(GRNStockTest, what_is_free_or_short_averages_by_the_same_formula) {
  books.execute(
      "Update LPO_Detail Set LPO_FCItem_Amount=0 Where SL_No=2;"
      "Update Item_Master Set Stock_In_Hand=-4, Stock_Amount=-40, Purchase_Order_Qty=1"
      " Where Item_Code='AA2002'");
  ASSERT_TRUE(process({received({{17, "2"}, {21, "1"}}), received({{2, "2002"}, {9, "1"}})}))
      << receipt.ErrDesc();
  EXPECT_EQ(item("AA1001"), "100 | 20 | 5 | 0 | 10 | 8 | 90 | " + std::string(kDay));
  EXPECT_EQ(item("AA2002"), "20 | -2 | -10 | 30 | 0 | 0 | -1 | " + std::string(kDay));
  EXPECT_EQ(listing(books, {"FOC_Flag"}, "Purchase_Log Order By Row_Id"), "1\n0");
}

TEST_P(GRNStockTest, the_kind_of_item_decides_where_a_line_goes) {
  ASSERT_TRUE(process({received({{2, "3003"}}), received({{2, "2002"}, {16, ""}, {20, ""}}),
                       received({{2, "unknown"}}), received({{2, ""}})}))
      << receipt.ErrDesc();
  EXPECT_EQ(listing(books, {"Item_Code", "location_ID"}, "Location_Stock"), "AA2002 | ");
  EXPECT_EQ(listing(books, {"Item_Code"}, "Stock_Movement"), "AA2002");
  EXPECT_EQ(listing(books, {"Item_Code"}, "Purchase_Log Order By Row_Id"), "AA3003\nAA2002");
  EXPECT_EQ(item("AA3003"), "0 | 0 | 0 | 0 | Null | Null | 0 | Null");
  EXPECT_EQ(prices(), "AA1001 | 9 | Null\nAA3003 | 30 | " + std::string(kDay));
}

TEST_P(GRNStockTest, each_step_sets_its_members_in_order) {
  Script location, movement, log;
  const auto first = scripted("OmbrixInventory.LocationStock", location);
  const auto second = scripted("OmbrixInventory.StockMovement", movement);
  const auto third = scripted("OmbrixInventory.PurchaseLog", log);
  ASSERT_TRUE(process({received({{19, "P1"}}), received({{2, "2002"}, {16, ""}, {20, ""}})}))
      << receipt.ErrDesc();
  EXPECT_EQ(location.told(),
            "new\nAdoConnectionObject=object\n"
            "CompanyPrefix=AA\nBranchPrefix=BR\nItemCode=AA1001\nItemName=Paper\nLocationCode=L1\n"
            "LocationName=Main store\nLastUpdate=2024-03-05\nLocationQty=5\nUnitName=Box\n"
            "UpdateLocationStock(0)\n"
            "CompanyPrefix=AA\nBranchPrefix=BR\nItemCode=AA2002\nItemName=Paper\n"
            "LocationCode=Null\nLastUpdate=2024-03-05\nLocationQty=5\nUnitName=Box\n"
            "UpdateLocationStock(0)");
  const std::string movement_head =
      "new\nAdoConnectionObject=object\nCompanyPrefix=AA\nBranchPrefix=BR\nDocumentPrefix=STM\n";
  const std::string movement_line =
      "ItemCode=AA1001\nItemName=Paper\nUnitCode=BX\nUnitName=Box\nFOC_Flag=0\nUnitQty=2\n"
      "InQty=10\nInAmount=300\nInPrice=30\nDocumentNo=AABRGRN7\nDocumentDate=2024-03-01\n"
      "DocumentType=IN\nLocationID=L1\nLocationName=Main store\nLastUpdate=2024-03-05\n"
      "StockComments=left at the gate\nStockMovement()\n";
  EXPECT_EQ(movement.told().substr(0, movement_head.size() + movement_line.size()),
            movement_head + movement_line);
  EXPECT_EQ(log.told(),
            "new\nAdoConnectionObject=object\nBranchPrefix=BR\nCompanyPrefix=AA\n"
            "DocumentPrefix=PLG\nPurchaseDocumentNo=AABRGRN7\nPurchaseDocumentPrefix=GRN\n"
            "PurchaseLogDate=2024-03-01\nLastUpdate=2024-03-05\n"
            "ItemCode=AA1001\nItemName=Paper\nUnitCode=BX\nUnitName=Box\nFOC_Flag=0\nUnitQty=2\n"
            "PurchaseQty=5\nTotalPurchaseQty=10\nPurchaseUnitPrice=60\nPurchaseItemAmount=300\n"
            "ProjNo=P1\nCreate_PurchaseLog()\n"
            "ItemCode=AA2002\nItemName=Paper\nUnitCode=BX\nUnitName=Box\nFOC_Flag=0\nUnitQty=2\n"
            "PurchaseQty=5\nTotalPurchaseQty=10\nPurchaseUnitPrice=60\nPurchaseItemAmount=300\n"
            "Create_PurchaseLog()");
}

TEST_P(GRNStockTest, a_division_that_fails_leaves_what_was_done_before) {
  // Nothing of the second line is received, so it has no price; the first is in.
  ASSERT_FALSE(process({received(), received({{2, "2002"}, {9, "0"}})}));
  EXPECT_EQ(receipt.ErrDesc(), "Division by zero");
  EXPECT_EQ(listing(books, {"Item_Code", "Location_Qty"}, "Location_Stock Order By Item_Code"),
            "AA1001 | 5\nAA2002 | 0");
  EXPECT_EQ(listing(books, {"Item_Code"}, "Stock_Movement"), "AA1001");
  EXPECT_EQ(item("AA1001").substr(0, 8), "100 | 10");
  EXPECT_EQ(master({"GRN_No", "Processed_Flag"}), "AABRGRN7 | 1");
  EXPECT_EQ(counters(), "7 | 4");
}

}  // namespace
}  // namespace ombrix::testing
