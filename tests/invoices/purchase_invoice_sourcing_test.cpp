#include "invoices/purchase_invoice_fixture.h"

namespace ombrix::testing {
namespace {

class PurchaseInvoiceSourcingTest : public PurchaseInvoiceFixture {
 protected:
  void SetUp() override {
    PurchaseInvoiceFixture::SetUp();
    invoice.PInvoiceGridName = grid_of({});
  }
};
OMBRIX_ON_EACH_DATABASE(PurchaseInvoiceSourcingTest);

TEST_P(PurchaseInvoiceSourcingTest, open_receipt_lines_come_with_their_figures) {
  ASSERT_TRUE(invoice.Get_GRN_details()) << invoice.ErrDesc();
  ASSERT_EQ(grid().Rows(), 4);
  EXPECT_EQ(row_of(grid(), 1), (Cells{{1, "0"},           {2, "12"},
                                      {3, "2024-02-01"},  {4, "VD-1"},
                                      {5, "2024-02-02"},  {6, "1001"},
                                      {7, "V-1"},         {8, "Paper"},
                                      {9, "3"},           {10, "Box"},
                                      {11, "12"},         {12, "8"},
                                      {13, "30.25"},      {14, "0.454545454545455"},
                                      {15, "0.25"},       {16, "880"},
                                      {17, "240"},        {18, "0.5"},
                                      {19, "AABRPRJ9"},   {20, "1"},
                                      {21, "VD-1"},       {22, "AABRGRN1"},
                                      {23, "2024-02-03"}, {24, "110"},
                                      {25, "880"},        {26, "240"},
                                      {27, "110"},        {28, "AABRLPO12"},
                                      {29, "GRN"},        {30, "0"},
                                      {31, "10"},         {32, "914"},
                                      {33, "2.5"},        {34, "249.5"},
                                      {35, "5"}}));
  const auto cell = [&](std::int32_t row, std::int32_t column) {
    return grid().TextMatrix(row, column);
  };
  // Not taxed: the amounts less their shares; free of charge is marked.
  EXPECT_EQ(cell(2, 32) + " " + cell(2, 34) + " " + cell(2, 35) + " " + cell(2, 30), "98 89 0 1");
  // A direct receipt names no order, and a rate that is missing taxes nothing.
  EXPECT_EQ(
      row_of(grid(), 3),
      (Cells{{1, "0"},    {5, "2024-02-02"}, {6, "3003"},      {8, "Chair"},       {12, "2"},
             {13, "40"},  {14, "0"},         {15, "0"},        {16, "100"},        {17, "80"},
             {18, "0"},   {20, "3"},         {22, "AABRSDR5"}, {23, "2024-02-04"}, {24, "50"},
             {25, "100"}, {26, "80"},        {27, "50"},       {29, "Direct"},     {30, "0"},
             {31, "0"},   {32, "100"},       {33, "0"},        {34, "80"},         {35, "0"}}));
  const auto* memory = dynamic_cast<const MemoryGrid*>(&grid());
  ASSERT_EQ(memory->marks().size(), 3U);
  EXPECT_EQ(memory->marks()[1].value.to_number(), 1);
}

TEST_P(PurchaseInvoiceSourcingTest, fixed_assets_come_apart_and_closed_lines_do_not_come) {
  struct {
    std::string_view change, type;
    std::int32_t rows;  // 9: the grid keeps what it had
  } const cases[] = {{"Goods_Receive_Master Set Purchase_Type=''", "Item", 4},
                     {"Goods_Receive_Master Set Purchase_Type='Fixed Asset'", "Fixed Asset", 3},
                     {"Goods_Receive_Master Set Vendor_Code='AAV001'", "", 2},
                     {"Goods_Receive_Detail Set Invoiced_Flag=1 Where SL_No=1", "Fixed Asset", 2},
                     {"Goods_Receive_Master Set Processed_Flag=0", "Fixed Asset", 9},
                     {"Direct_Goods_Receive_Detail Set Invoiced_Flag=-1", "Item", 9}};
  for (const auto& each : cases) {
    books.execute("Update " + std::string(each.change));
    invoice.Purchase_Type = std::string(each.type);
    invoice.PInvoiceGridName = std::make_shared<MemoryGrid>(9, kColumns);
    EXPECT_TRUE(invoice.Get_GRN_details()) << invoice.ErrDesc();
    EXPECT_EQ(grid().Rows(), each.rows) << each.change;
  }
  invoice.VendorCode = "  ";
  EXPECT_FALSE(invoice.Get_GRN_details());
  EXPECT_EQ(invoice.ErrDesc(), "Invalid Vendor Code");
}

TEST_P(PurchaseInvoiceSourcingTest, what_a_receipt_lacks_ends_the_fill_or_leaves_the_cell) {
  struct {
    std::string_view table, change, reason;
    std::int32_t kept;  // the first cell that keeps its text; 0 for none
  } const cases[] = {
      {"Goods_Receive_Master", "Vendor_Ref_Document_Date=Null", "Invalid use of Null", 5},
      {"Goods_Receive_Detail", "grn_qty=0", "Division by zero", 13},
      {"Goods_Receive_Detail", "GRN_Unit_Price=0", "Division by zero", 14},
      {"Goods_Receive_Detail", "PO_Overall_Disc=Null", "Invalid use of Null", 31},
      {"Goods_Receive_Master", "GRN_Date=Null", "Invalid use of Null", 23},
      {"Goods_Receive_Master", "GRN_Ref_Document_No=' '", "", 2},
      {"Goods_Receive_Master", "Vendor_Ref_Document_No=''", "", 4},
      {"Goods_Receive_Detail", "Unit_Qty=Null", "", 11},
      {"Goods_Receive_Detail", "Proj_No=Null", "", 19},
      {"Goods_Receive_Detail", "TaxPercent=Null", "", 0}};
  for (const auto& each : cases) {
    const Books spoilt(GetParam());
    given_sources(spoilt);
    spoilt.execute("Update " + std::string(each.table) + " Set " + std::string(each.change));
    invoice.ConnectionString = spoilt.text();
    Cells old;
    for (std::int32_t column = 0; column < kColumns; ++column) old[column] = "old";
    invoice.PInvoiceGridName = grid_of({old});
    EXPECT_EQ(invoice.Get_GRN_details(), each.reason.empty()) << each.change;
    if (!each.reason.empty()) {
      EXPECT_EQ(invoice.ErrDesc(), each.reason) << each.change;
    }
    EXPECT_EQ(grid().TextMatrix(1, each.kept), "old") << each.change;
    EXPECT_EQ(grid().TextMatrix(1, 1), "0");
    EXPECT_EQ(grid().TextMatrix(1, 34) == "old", !each.reason.empty()) << each.change;
  }
}

TEST_P(PurchaseInvoiceSourcingTest, a_local_order_comes_whole) {
  invoice.RefInvoiceType = "LPO";
  invoice.PONo = "AABRLPO12";
  invoice.PurchaseInvFCAmount = 240;
  ASSERT_TRUE(invoice.Get_PO_details()) << invoice.ErrDesc();
  EXPECT_EQ(invoice.VendorCode() + "|" + invoice.VendorName() + "|" + invoice.CurrencyCode(),
            "AAV001| Orchard |USD");
  EXPECT_EQ((std::vector{invoice.PurchaseInvDiscPercent(), invoice.DiscountPercent(),
                         invoice.POTaxAmount(), invoice.PurchaseInvFCDiscAmount(),
                         invoice.PurchaseInvFCAmount()}),
            (std::vector<double>{10, 10, 12, 24, 240}));
  ASSERT_EQ(grid().Rows(), 3);
  EXPECT_EQ(row_of(grid(), 1), (Cells{{1, "-1"},
                                      {2, "AABRLPO12"},
                                      {6, "1001"},
                                      {7, "V-1"},
                                      {8, "Paper"},
                                      {9, "3"},
                                      {10, "Box-Month"},
                                      {11, "12"},
                                      {12, "8"},
                                      {13, "110"},
                                      {14, "0.454545454545455"},
                                      {15, "0.25"},
                                      {16, "880"},
                                      {17, "240"},
                                      {18, "0.5"},
                                      {19, "AABRPRJ9"},
                                      {20, "1"},
                                      {24, "110"},
                                      {25, "880"},
                                      {26, "240"},
                                      {27, "110"},
                                      {30, "0"},
                                      {31, "10"},
                                      {32, "870"},
                                      {33, "2.5"},
                                      {34, "237.5"},
                                      {35, "5"}}));
  EXPECT_EQ(grid().TextMatrix(2, 20) + grid().TextMatrix(2, 30) + grid().TextMatrix(2, 35), "21");

  // What the lines before left in the cells is emptied or stays, and no rate taxes nothing.
  books.execute("Update LPO_Master Set LPO_TaxRate=Null, LPO_FC_Discount_Amount=Null");
  books.execute("Update LPO_Detail Set Vendor_Item_Code='', Unit_Name=''");
  Cells old;
  for (std::int32_t column = 0; column < kColumns; ++column) old[column] = "old";
  invoice.PInvoiceGridName = grid_of({old, old});
  ASSERT_TRUE(invoice.Get_PO_details()) << invoice.ErrDesc();
  for (const std::int32_t emptied : {3, 4, 5, 21, 22, 23, 28, 29}) {
    EXPECT_EQ(grid().TextMatrix(1, emptied), "") << emptied;
  }
  EXPECT_EQ(grid().TextMatrix(1, 7) + grid().TextMatrix(1, 10), "oldold");
  EXPECT_EQ(grid().TextMatrix(1, 35) + grid().TextMatrix(2, 35), "0old");
  EXPECT_EQ(invoice.PurchaseInvFCDiscAmount(), 24);
}

TEST_P(PurchaseInvoiceSourcingTest, the_other_kind_of_order_brings_no_tax) {
  invoice.RefInvoiceType = "OPO";
  invoice.PONo = "AABRIPO4";
  invoice.PInvoiceGridName = grid_of({{{35, "old"}}});
  ASSERT_TRUE(invoice.Get_PO_details()) << invoice.ErrDesc();
  EXPECT_EQ(row_of(grid(), 1),
            (Cells{{1, "-1"},  {2, "AABRIPO4"}, {6, "3003"}, {10, "Each"}, {11, "1"},  {12, "2"},
                   {13, "50"}, {14, "10"},      {15, "4"},   {16, "100"},  {17, "80"}, {18, "5"},
                   {20, "1"},  {24, "50"},      {25, "100"}, {26, "80"},   {27, "50"}, {30, "0"},
                   {31, "0"},  {32, "100"},     {33, "0"},   {34, "80"},   {35, "old"}}));
  EXPECT_EQ(invoice.VendorCode(), "AAV002");
  EXPECT_EQ((std::vector{invoice.PurchaseInvDiscPercent(), invoice.DiscountPercent(),
                         invoice.POTaxAmount(), invoice.PurchaseInvFCDiscAmount()}),
            (std::vector<double>{3, 0, 0, 0}));
}

TEST_P(PurchaseInvoiceSourcingTest, an_order_that_cannot_be_read_is_told) {
  invoice.InvoiceType = "LPO";
  invoice.PONo = "  ";
  EXPECT_FALSE(invoice.Get_PO_details());
  EXPECT_EQ(invoice.ErrDesc(), "Invalid LPO No.");
  invoice.PONo = "AABRLPO12";
  for (const std::string other : {"", "GRN", "lpo"}) {
    invoice.RefInvoiceType = other;
    EXPECT_TRUE(invoice.Get_PO_details());
    EXPECT_EQ(grid().Rows(), 1);
  }
  EXPECT_EQ(invoice.CurrencyCode(), "AED");
  invoice.RefInvoiceType = "LPO";
  books.execute("Update LPO_Detail Set LPO_Unit_Price=0 Where SL_No=2");
  EXPECT_FALSE(invoice.Get_PO_details());
  EXPECT_EQ(invoice.ErrDesc(), "Division by zero");
  EXPECT_EQ(grid().TextMatrix(1, 35) + grid().TextMatrix(2, 13) + grid().TextMatrix(2, 15), "50");
  invoice.PONo = "AABRLPO99";
  invoice.VendorCode = "mine";
  EXPECT_TRUE(invoice.Get_PO_details());
  EXPECT_EQ(grid().Rows(), 1);
  EXPECT_EQ(invoice.VendorCode(), "mine");
}

TEST_P(PurchaseInvoiceSourcingTest, statements_and_their_roads_are_these) {
  const std::string receipts =
      "text (3,3,-1) Select * from GRNforInvoicing Where"
      " Vendor_Code='AAV001' and PurType";
  EXPECT_EQ(told([&] { return invoice.Get_GRN_details(); }), receipts + "<>'Fixed Asset'\n");
  invoice.Purchase_Type = "Fixed Asset";
  EXPECT_EQ(told([&] { return invoice.Get_GRN_details(); }), receipts + " ='Fixed Asset'\n");
  invoice.PONo = "P1";
  invoice.RefInvoiceType = "LPO";
  EXPECT_EQ(told([&] { return invoice.Get_PO_details(); }),
            "text (3,3,-1) Select * from LPO_Master Where LPO_No='P1'\n"
            "text (3,3,-1) Select * from LPO_Detail Where LPO_No='P1' Order By Sl_no\n");
  invoice.RefInvoiceType = "OPO";
  EXPECT_EQ(told([&] { return invoice.Get_PO_details(); }),
            "text (3,3,-1) Select * from IPO_Master Where IPO_No='P1'\n"
            "text (3,3,-1) Select * from IPO_Detail Where  IPO_No='P1' Order By Sl_no\n");
}

}  // namespace
}  // namespace ombrix::testing
