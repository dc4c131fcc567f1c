#include "invoices/purchase_invoice_fixture.h"

namespace ombrix::testing {
namespace {

class PurchaseInvoiceSavingTest : public PurchaseInvoiceFixture {};
OMBRIX_ON_EACH_DATABASE(PurchaseInvoiceSavingTest);

TEST_P(PurchaseInvoiceSavingTest, statements_and_their_roads_are_these) {
  const std::string seek =
      "object (1,3,-1) Select * From Purchase_Invoice_Master"
      " Where Purchase_Inv_No='AABRPINTMP4'\n";
  const std::string append = "object (1,3,-1) Select * from Purchase_Invoice_Detail\n";
  ASSERT_TRUE(invoice.Create_Purchase_Invoice());
  invoice.InvoiceType = "PO";
  const std::string created = told([&] { return invoice.Create_Purchase_Invoice(); });
  EXPECT_TRUE(created.ends_with(seek + append)) << created;
  EXPECT_EQ(told([&] { return invoice.Update_Purchase_Invoice(); }),
            seek +
                "object Delete from Purchase_Invoice_Detail Where Purchase_Inv_No='AABRPINTMP4'\n" +
                append);
  books.execute("Update Purchase_Invoice_Detail Set TaxType='Taxable'");
  EXPECT_EQ(told([&] { return invoice.Get_Purchase_Invoice(); }),
            "text (1,3,-1) Select * from Purchase_Invoice_Master"
            " Where Purchase_Inv_No='AABRPINTMP4'\n"
            "text (3,-1,-1) Select * from Purchase_Invoice_Detail"
            " Where Purchase_Inv_No='AABRPINTMP4' Order by SL_No\n"
            "text (3,3,-1) Select Tax_Rate from TaxCodeMaster Where Tax_Type='Purchase'\n");
}

TEST_P(PurchaseInvoiceSavingTest, single_cells_are_stored_so) {
  struct {
    std::int32_t cell;
    std::string_view text, column, stored;
  } const cases[] = {{28, " AABRLPO9", "Order_No", " AABRLPO9"},
                     {28, "  ", "Order_No", "Null"},
                     {3, " ", "Order_Date", "Null"},
                     {4, " ", "Vendor_Ref_Document_No", "Null"},
                     {5, " ", "Vendor_Ref_Document_Date", "Null"},
                     {6, " ", "Item_Code", "Null"},
                     {7, " ", "Vendor_Item_Code", "Null"},
                     {9, "BX", "Unit_Code", "0"},
                     {10, "", "Unit_Name", ""},
                     {10, " Box", "Unit_Name", " Box"},
                     {10, "Box", "Period_Type", "Null"},
                     {10, "Box-", "Period_Type", ""},
                     {11, "a dozen", "Unit_Qty", "0"},
                     {12, "0.1234567890123456", "grn_qty", "0.123456789012346"},
                     {19, " ", "Proj_No", ""},
                     {22, " ", "GRN_No", ""},
                     {23, "", "GRN_Date", "Null"},
                     {29, "", "GRN_Flag", "Null"},
                     {29, " ", "GRN_Flag", " "},
                     {20, "", "GRN_SL_NO", "0"},
                     {32, "0", "Purchase_Inv_Item_Amount", "880"},
                     {34, "", "Purchase_Inv_FC_Item_Amount", "240"},
                     {35, "-0.5", "TaxType", "Taxable"},
                     {35, "", "TaxType", "Exempted"}};
  for (const auto& each : cases) {
    ASSERT_TRUE(create({billed({{each.cell, std::string(each.text)}})})) << invoice.ErrDesc();
    EXPECT_EQ(lines({std::string(each.column)}), each.stored) << each.cell << " " << each.text;
  }
}

TEST_P(PurchaseInvoiceSavingTest, the_kind_of_source_decides_the_order_and_the_receipt_columns) {
  struct {
    std::string_view reference, type, stored;
  } const cases[] = {{"LPO", "LPO", " 7  | Null | Null | Null | Null"},
                     {"OPO", "GRN", " 7  | 1 | AABRGRN1 | 2024-02-03 00:00:00 | GRN"},
                     {"", "GRN", "AABRLPO12 | 1 | AABRGRN1 | 2024-02-03 00:00:00 | GRN"},
                     {"GRN", "OPO", "AABRLPO12 | Null | Null | Null | Null"}};
  for (const auto& each : cases) {
    invoice.RefInvoiceType = std::string(each.reference);
    invoice.InvoiceType = std::string(each.type);
    ASSERT_TRUE(create({billed({{2, " 7 "}})})) << invoice.ErrDesc();
    EXPECT_EQ(lines({"Order_No", "GRN_SL_NO", "GRN_No", "GRN_Date", "GRN_Flag"}), each.stored);
  }
}

TEST_P(PurchaseInvoiceSavingTest, taken_rows_are_counted_until_a_row_without_an_item) {
  ASSERT_TRUE(create({billed({{8, "a"}}),
                      billed({{1, "0"}}),
                      billed({{1, "-1"}, {8, "b"}}),
                      {{1, "True"}, {7, "V"}, {9, "c"}},
                      {{1, "1"}, {12, "5"}},
                      billed()}))
      << invoice.ErrDesc();
  EXPECT_EQ(lines({"SL_No", "Item_Name"}), "1 | a\n2 | b\n3 | Null");
  ASSERT_TRUE(create({billed({{1, "False"}})}));
  EXPECT_EQ(lines({"SL_No"}), "");
  EXPECT_EQ(counters(), "7 | 5");
}

TEST_P(PurchaseInvoiceSavingTest, a_selection_that_is_no_boolean_ends_the_save_before_any_line) {
  for (const std::string text : {"yes", "", " "}) {
    EXPECT_FALSE(create({billed(), billed({{1, text}})}));
    EXPECT_EQ(invoice.ErrDesc(), "Type mismatch");
    EXPECT_EQ(master({"Purchase_Inv_No"}) + lines({"SL_No"}), "AABRPINTMP3");
  }
  EXPECT_FALSE(create({billed(), billed({{3, "soon"}})}));
  EXPECT_EQ(invoice.ErrDesc(), "Type mismatch");
  EXPECT_EQ(lines({"SL_No"}), "1");
  EXPECT_EQ(counters(), "7 | 3");
}

TEST_P(PurchaseInvoiceSavingTest, the_last_taken_line_takes_the_rest_of_the_discount) {
  const std::vector<std::string> shares = {"Purchase_Inv_Overall_FC_Disc_Amount",
                                           "Purchase_Inv_Overall_Disc_Amount"};
  invoice.PurchaseInvDiscPercent = 10;
  invoice.PurchaseInvFCDiscAmount = 10;
  invoice.PurchaseInvDiscAmount = 36.7;
  invoice.ExchangeRate = 3.67;
  ASSERT_TRUE(create({billed({{17, "33.33"}}), billed({{17, "33.35"}}),
                      billed({{1, "0"}, {17, "50"}}), billed({{17, "33.33"}})}));
  // 12.23211 and 12.23945 at home; half to even is 3.33 and 3.34 (3.335) abroad.
  EXPECT_EQ(lines(shares), "3.33 | 12.23\n3.34 | 12.24\n3.33 | 12.23");
  ASSERT_TRUE(create({billed()}));
  EXPECT_EQ(lines(shares), "10 | 36.7");
  invoice.PurchaseInvFCDiscAmount = 0;
  ASSERT_TRUE(create({billed()}));
  EXPECT_EQ(lines(shares), "Null | Null");
}

TEST_P(PurchaseInvoiceSavingTest, an_update_replaces_the_lines_and_leaves_what_is_blank) {
  invoice.VendorName = "Orchard";
  invoice.PurchaseInvComments = "first";
  invoice.VendorRefInvoiceNo = "VI";
  ASSERT_TRUE(create({billed(), billed({{6, "2002"}})}));
  books.execute("Update Purchase_Invoice_Master Set Balance_Amount=1, Balance_FCAmount=1");
  invoice.VendorName = "";
  invoice.PurchaseInvComments = "  ";
  invoice.VendorRefInvoiceNo = "";
  invoice.ExchangeRate = 3.67;
  invoice.PurchaseInvIdentity = 99;
  invoice.CompanyPrefix = "ZZ";
  invoice.PONo = "";
  invoice.PODate = Date(2024, 2, 1);
  invoice.PInvoiceGridName = grid_of({billed({{6, "3003"}})});
  ASSERT_TRUE(invoice.Update_Purchase_Invoice()) << invoice.ErrDesc();
  EXPECT_EQ(master({"Vendor_name", "Purchase_Inv_Comments", "Vendor_Ref_Invoice_No"}),
            "Orchard | first | Null");
  EXPECT_EQ(master({"Purchase_Inv_Identity", "Company_Prefix", "Balance_Amount", "Balance_FCAmount",
                    "Exchange_Rate", "PO_No", "PO_Date"}),
            "3 | AA | 880 | 240 | 1 | Null | Null");
  EXPECT_EQ(lines({"SL_No", "Item_Code"}), "1 | ZZ3003");
  EXPECT_EQ(counters(), "7 | 4");
}

TEST_P(PurchaseInvoiceSavingTest, a_quote_is_stored_as_a_value_and_refused_in_a_statement) {
  invoice.VendorCode = "x' OR '1'='1";
  ASSERT_TRUE(invoice.Create_Purchase_Invoice()) << invoice.ErrDesc();
  EXPECT_EQ(master({"Vendor_Code"}), "x' OR '1'='1");
  const std::string before = books.dump();
  EXPECT_FALSE(invoice.Get_GRN_details());
  for (const auto* property : {"PurchaseInvNo", "CompanyPrefix"}) {
    fill(invoice, books, {billed()});
    late.let(property, "x' OR '1'='1");
    EXPECT_FALSE(property == std::string("PurchaseInvNo") ? invoice.Update_Purchase_Invoice()
                                                          : invoice.Create_Purchase_Invoice());
  }
  EXPECT_EQ(books.dump(), before);
}

}  // namespace
}  // namespace ombrix::testing
