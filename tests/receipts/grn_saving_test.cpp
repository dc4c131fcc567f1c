#include "receipts/grn_fixture.h"
#include "support/failures.h"
#include "support/journal.h"

namespace ombrix::testing {
namespace {

class GRNSavingTest : public GRNFixture {};
OMBRIX_ON_EACH_DATABASE(GRNSavingTest);

TEST_P(GRNSavingTest, a_receipt_is_checked_before_anything_is_written) {
  purchase::GRN unconnected;
  EXPECT_EQ(raised_number([&] { unconnected.Create_GRN(); }), 91);

  struct {
    std::function<void()> spoil;
    std::string_view reason;
  } const cases[] = {
      {[&] { receipt.CurrencyCode = " "; }, "Invalid Currency Code."},
      {[&] { receipt.GRNAmount = -0.01; }, "Invalid GRN Amount."},
      {[&] { receipt.VendorCode = ""; }, "Invalid Vendor Code."},
      {[&] { receipt.GRNDate = Date(); }, "Invalid GRN Date."},
      {[&] { receipt.BranchPrefix = ""; }, "Invalid Branch Prefix."},
      {[&] { receipt.DocumentPrefix = ""; }, "Invalid Document Prefix."},
      {[&] { receipt.CompanyPrefix = ""; }, "Invalid Company Prefix."},
      {[&] { receipt.AdoConnectionObject = std::make_shared<Connection>(); },
       "Invalid Connection."},
  };
  // Each hides those before it: the checks come in the opposite order.
  for (const auto& each : cases) {
    each.spoil();
    EXPECT_FALSE(receipt.Create_GRN());
    EXPECT_EQ(receipt.ErrDesc(), each.reason);
  }
  EXPECT_EQ(counters(), "7 | 3");
}

TEST_P(GRNSavingTest, a_line_is_worth_what_the_order_says) {
  receipt.ForeignCurrencyFlag = true;
  receipt.ExchangeRate = 3.67;
  // 600 for 10 gives 60 each; 7 of line 2 at 25 each.
  ASSERT_TRUE(create({received({{9, "4"}, {22, "25"}, {23, "12.5"}}),
                      received({{1, "0"}, {2, "skipped"}}), received({{8, "0"}}),
                      received({{2, "2002"}, {9, "7"}, {17, "2"}, {24, " Taxable "}, {25, "5%"}}),
                      received({{2, ""}, {17, "3"}, {24, "Exempt"}, {25, "5"}})}))
      << receipt.ErrDesc();
  EXPECT_EQ(receipt.GRNNo(), "AABRGRNTMP3");
  EXPECT_EQ(receipt.GRNIdentity(), 3);
  EXPECT_EQ(lines({"SL_No", "Item_Code", "POD_SL_NO", "GRN_Unit_Price", "GRN_Item_Amount",
                   "GRN_FC_Item_Amount", "GRN_Item_Disc_Amount", "GRN_FC_Item_Disc_Amount",
                   "PO_Overall_Disc", "PO_Overall_FC_Disc"}),
            "1 | AA1001 | 1 | 293.6 | 880.8 | 240 | 73.4 | 20 | 10 | 5\n"
            "2 | AA2002 | 2 | 91.75 | 642.25 | 175 | 0 | 0 | 0 | 0\n"
            "3 | Null | 3 | 0 | 0 | 0 | 0 | 0 | 0 | 0");
  EXPECT_EQ(lines({"TaxType", "TaxPercent"}), " | 0\nTaxable | 5\nExempt | 0");
  EXPECT_EQ(
      master({"GRN_SubTotal", "GRN_FC_SubTotal", "GRN_Discount_Amount", "GRN_FC_Discount_Amount",
              "GRN_Total_Amount", "GRN_FC_Total_Amount", "Exchange_Rate"}),
      "1523.05 | 415 | 10 | 5 | 1513.05 | 410 | 3.67");
  EXPECT_EQ(counters(), "7 | 4");
}

TEST_P(GRNSavingTest, every_column_has_its_rule) {
  receipt.GRNComments = "  ";
  receipt.OrderDate = Date(2024, 2, 1);
  receipt.VendorRefDocumentDate = Date(2024, 2, 28);
  receipt.ExchangeRate = 9;
  receipt.GRNInvoicedFlag = true;
  ASSERT_TRUE(create({received({{3, " V-7 "}, {5, "BOX-12-x"}, {19, " P1 "}, {21, "1"}}),
                      received({{4, " "}, {5, ""}, {6, ""}, {16, " "}, {20, ""}})}))
      << receipt.ErrDesc();
  EXPECT_EQ(
      lines({"Vendor_Item_Code", "Item_Name", "Unit_Name", "Period_Type", "FOC_Flag", "Unit_Code",
             "Unit_Qty", "grn_qty", "Proj_No", "Account_No", "Location_Name", "location_ID",
             "Invoiced_Flag", "Return_Qty", "Last_Update"}),
      "V-7 | Paper | BOX | 12-x | 1 | BX | 2 | 5 | P1 | INVENTORY | Main store | L1 | Null | Null |"
      " 2024-03-05 00:00:00\n"
      "Null | Null |  | Null | 0 | Null | 2 | 5 | Null | INVENTORY | Null | Null | Null | Null |"
      " 2024-03-05 00:00:00");
  EXPECT_EQ(master({"GRN_Identity",
                    "Company_Prefix",
                    "Branch_Prefix",
                    "Document_Prefix",
                    "GRN_Date",
                    "GRN_Comments",
                    "GRN_Ref_Document_No",
                    "GRN_Ref_Document_Prefix",
                    "GRN_Order_Date",
                    "GRN_Invoiced_flag",
                    "Processed_Flag",
                    "Vendor_Code",
                    "Vendor_name",
                    "Vendor_Ref_Document_No",
                    "Vendor_Ref_Document_Date",
                    "Foreign_Currency_Flag",
                    "Exchange_Rate",
                    "Currency_Code",
                    "Currency_Symbol",
                    "Purchase_Type",
                    "Last_Update"}),
            "3 | AA | BR | GRN | 2024-03-01 00:00:00 | Null | AABRLPO1 | LPO | 2024-02-01 00:00:00"
            " | 0 | Null | AAV001 | Orchard Traders | Null | 2024-02-28 00:00:00 | 0 | 1 | AED | Dh"
            " | Item | 2024-03-05 00:00:00");
}

TEST_P(GRNSavingTest, the_order_gives_the_kind_of_purchase_and_is_marked) {
  books.execute(
      "Update LPO_Master Set Purchase_Type='Fixed Asset', Invoiced_Flag=-1;"
      "Update IPO_Master Set Purchase_Type=Null, Invoiced_Flag=-1");
  ASSERT_TRUE(receipt.Create_GRN()) << receipt.ErrDesc();
  EXPECT_EQ(receipt.Purchase_Type(), "Fixed Asset");
  EXPECT_EQ(listing(books, {"Invoiced_Flag"}, "LPO_Master"), "0");
  EXPECT_EQ(listing(books, {"Invoiced_Flag"}, "IPO_Master"), "-1");

  receipt.GRNRefDocumentNo = "AABRIPO1";
  receipt.GRNRefDocumentPrefix = "other";  // any prefix but LPO
  ASSERT_TRUE(receipt.Create_GRN()) << receipt.ErrDesc();
  EXPECT_EQ(receipt.Purchase_Type(), "Item");
  EXPECT_EQ(listing(books, {"Invoiced_Flag"}, "IPO_Master"), "0");
  EXPECT_EQ(lines({"GRN_FC_Item_Amount"}), "300");

  receipt.Purchase_Type = "Costing Expense";
  receipt.GRNRefDocumentNo = "none";
  ASSERT_TRUE(receipt.Create_GRN()) << receipt.ErrDesc();
  EXPECT_EQ(master({"Purchase_Type"}), "Costing Expense");
}

TEST_P(GRNSavingTest, a_save_again_replaces_the_lines_and_totals) {
  ASSERT_TRUE(create({received(), received({{17, "2"}})})) << receipt.ErrDesc();
  books.execute("Update Goods_Receive_Master Set Processed_Flag=1, Grn_Costing_Amount=5");
  receipt.GRNComments = "counted";
  receipt.DocumentPrefix = "OLD";  // of a new row only
  receipt.GridName = grid_of({received({{9, "1"}, {22, "10"}, {23, "10"}})});
  ASSERT_TRUE(receipt.Update_GRN()) << receipt.ErrDesc();
  EXPECT_EQ(lines({"SL_No", "grn_qty", "GRN_Item_Amount"}), "1 | 1 | 60");
  EXPECT_EQ(master({"Document_Prefix", "GRN_Comments", "Processed_Flag", "GRN_SubTotal",
                    "GRN_FC_SubTotal", "GRN_Discount_Amount", "GRN_FC_Discount_Amount",
                    "GRN_Total_Amount", "GRN_FC_Total_Amount", "Grn_Costing_Amount"}),
            "GRN | counted | 1 | 60 | 60 | 1 | 1 | 59 | 59 | 5");
  EXPECT_EQ(counters(), "7 | 4");
}

TEST_P(GRNSavingTest, what_stands_when_the_lines_fail) {
  ASSERT_FALSE(create({received({{1, "0"}}), received({{8, "-1"}})}));
  EXPECT_EQ(receipt.ErrDesc(), "");
  EXPECT_EQ(master({"GRN_No"}), "AABRGRNTMP3");

  books.execute("Update LPO_Detail Set LPO_Qty=0 Where SL_No=2");
  ASSERT_FALSE(create({received(), received({{17, "2"}})}));
  EXPECT_EQ(receipt.ErrDesc(), "Division by zero");
  EXPECT_EQ(lines({"SL_No"}), "1");
  EXPECT_EQ(counters(), "7 | 3");  // the next one finds the row of this one

  ASSERT_FALSE(create({received({{17, " "}})}));
  EXPECT_EQ(receipt.ErrDesc(), "Type mismatch");
  ASSERT_TRUE(create({received()})) << receipt.ErrDesc();
  EXPECT_EQ(lines({"SL_No"}), "1");
}

TEST_P(GRNSavingTest, reading_fills_the_properties_and_leaves_the_grid) {
  receipt.GRNNo = " ";
  EXPECT_FALSE(receipt.Get_GRN());
  receipt.GRNNo = "unknown";
  EXPECT_FALSE(receipt.Get_GRN());
  EXPECT_EQ(receipt.ErrDesc(), "Invalid GRN Number");

  receipt.VendorRefDocumentNo = "V/1";
  ASSERT_TRUE(receipt.Create_GRN()) << receipt.ErrDesc();
  books.execute(
      "Update Goods_Receive_Master Set GRN_Comments=Null, Vendor_name=Null, GRN_Invoiced_flag=-1,"
      " Processed_Flag=1, Cancel_Flag=-1, Year_End_Flag=-1, Grn_Costing_Amount=11,"
      " GRN_FC_Costing_Amount=12, Currency_Symbol=' $ ', Foreign_Currency_Flag=-1,"
      " Exchange_Rate=3.5, GRN_Total_Amount=77, Vendor_Ref_Document_Date=Null");
  purchase::GRN read;
  fill(read, books, {});
  read.GRNNo = receipt.GRNNo();
  read.GRNComments = "kept";
  read.VendorName = "kept";
  read.Purchase_Type = "kept";
  ASSERT_TRUE(read.Get_GRN()) << read.ErrDesc();
  EXPECT_EQ(read.GRNComments(), "kept");
  EXPECT_EQ(read.VendorName(), "kept");
  EXPECT_EQ(read.Purchase_Type(), "kept");
  EXPECT_EQ(read.GRNIdentity(), 3);
  EXPECT_EQ(read.VendorRefDocumentNo(), "V/1");
  EXPECT_TRUE(read.GRNInvoicedFlag() && read.ProcessedFlag() && read.CancelFlag() &&
              read.YearEndFlag() && read.ForeignCurrencyFlag());
  EXPECT_EQ(read.ExchangeRate(), 3.5);
  EXPECT_EQ(read.CurrencySymbol(), "$");
  EXPECT_EQ(read.GRNAmount(), 77);
  EXPECT_EQ(read.GRNSubTotal(), 300);
  EXPECT_EQ(read.GRNCostingAmount() + read.GRNFCCostingAmount(), 23);

  // What was read as invoiced is what a save stores, on the order too.
  read.GridName = grid_of({received()});
  read.GRNInvoicedFlag = false;
  ASSERT_TRUE(read.Update_GRN()) << read.ErrDesc();
  EXPECT_EQ(listing(books, {"Invoiced_Flag"}, "LPO_Master"), "-1");

  books.execute("Update Goods_Receive_Master Set Foreign_Currency_Flag=0");
  ASSERT_TRUE(read.Get_GRN()) << read.ErrDesc();
  EXPECT_EQ(read.ExchangeRate(), 1);
}

}  // namespace
}  // namespace ombrix::testing
