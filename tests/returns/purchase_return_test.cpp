#include "returns/return_fixture.h"

namespace ombrix::testing {
namespace {

class PurchaseReturnTest : public ReturnFixture {};
OMBRIX_ON_EACH_DATABASE(PurchaseReturnTest);

TEST_P(PurchaseReturnTest, the_first_check_that_fails_is_the_reason) {
  struct {
    std::string property;
    Value broken;
    std::string reason;
  } const checks[] = {{"CompanyPrefix", "", "Invalid Company Prefix."},
                      {"DocumentPrefix", "", "Invalid Document Prefix."},
                      {"BranchPrefix", "", "Invalid Branch Prefix."},
                      {"PurchaseRtnDate", 0, "Invalid Purchase Return Date."},
                      {"VendorCode", " ", "Invalid Vendor Code."},
                      {"PurchaseRtnAmount", -0.01, "Invalid Purchase Return Amount."},
                      {"PurchaseRtnSubTotal", -0.01, "Invalid Purchase Return Sub Total."},
                      {"CurrencyCode", "", "Invalid Currency Code."}};
  // From the last check to the first: each break hides those behind it.
  for (std::size_t check = std::size(checks); check-- > 0;) {
    late.let(checks[check].property, checks[check].broken);
    EXPECT_FALSE(document.Create_Purchase_Rtn() || document.Update_Purchase_Rtn());
    EXPECT_EQ(document.ErrDesc(), checks[check].reason);
  }
  EXPECT_FALSE(purchase::PurchaseReturn().Create_Purchase_Rtn());
  document.AdoConnectionObject = nullptr;
  EXPECT_THROW(document.Create_Purchase_Rtn(), Failure);  // stands outside the trap
}

/// What goes into a property or a cell, to its column, and into another instance.
struct Row {
  std::string column, place, given, stored, loaded;
};

TEST_P(PurchaseReturnTest, every_master_column_goes_its_way_to_the_database_and_back) {
  const Row rows[] = {
      {"Purchase_Rtn_No", "PurchaseRtnNo", "x", "AABRPRTMP1", "AABRPRTMP1"},
      {"Purchase_Rtn_Identity", "PurchaseRtnIdentity", "9", "1", "1"},
      {"Company_Prefix", "CompanyPrefix", "AA", "AA", "AA"},
      {"Branch_Prefix", "BranchPrefix", "BR", "BR", "BR"},
      {"Document_Prefix", "DocumentPrefix", "PR", "PR", "PR"},
      {"Purchase_Rtn_Date", "PurchaseRtnDate", "2024-02-29", "2024-02-29 00:00:00", "2024-02-29"},
      {"Vendor_Code", "VendorCode", "AAV9", "AAV9", "AAV9"},
      {"Vendor_name", "VendorName", "O'Hara", "O'Hara", "O'Hara"},
      {"Purchase_Rtn_Ref_No", "PurchaseRtnRefNo", "R/7", "R/7", "R/7"},
      {"Purchase_Rtn_Comments", "PurchaseRtnComments", " wet ", "wet", "wet"},
      {"Purchase_ref_Doc", "Ref_Doc_Type", "INV ", "INV ", "INV "},
      {"Foreign_Currency_Flag", "ForeignCurrencyFlag", "True", "-1", "True"},
      {"Currency_Code", "CurrencyCode", "USD", "USD", "USD"},
      {"Currency_Symbol", "CurrencySymbol", "$", "$", "$"},
      {"Purchase_Rtn_Amount", "PurchaseRtnAmount", "1.005", "1.005", "1.005"},
      {"Purchase_Rtn_FC_Amount", "PurchaseRtnFCAmount", "2.5", "2.5", "2.5"},
      {"Purchase_Rtn_SubTotal", "PurchaseRtnSubTotal", "3.5", "3.5", "3.5"},
      {"Purchase_Rtn_FC_SubTotal", "PurchaseRtnFCSubTotal", "4.5", "4.5", "4.5"},
      {"Purchase_Rtn_Disc_Amount", "PurchaseRtnDiscAmount", "5.5", "5.5", "5.5"},
      {"Purchase_Rtn_FC_Disc_Amount", "PurchaseRtnFCDiscAmount", "6.5", "6.5", "6.5"},
      {"Year_End_Flag", "YearEndFlag", "True", "-1", "True"},
      {"TaxCode", "TaxCode", "VAT", "VAT", ""},
      {"TaxDescription", "TaxDescription", "Value", "Value", ""},
      {"PR_TaxRate", "TaxPercent", "5", "5", "0"},
      {"PR_TaxAmount", "TaxAmount", "7.5", "7.5", "0"},
      {"Exchange_Rate", "ExchangeRate", "3.67", "3.67", "3.67"},
      {"Last_Update", "LastUpdate", "2024-03-05", "2024-03-05 00:00:00", "1899-12-30"},
      {"Processed_Flag", "ProcessedFlag", "True", "Null", "False"},
      {"Allow_Cancel_Flag", "AllowCancelFlag", "True", "Null", "False"},
      {"Cancel_Flag", "CancelFlag", "True", "Null", "False"}};
  for (const Row& row : rows) late.let(row.place, row.given);
  // The selection of the one line counts, as the return has a source.
  ASSERT_TRUE(document.Create_Purchase_Rtn()) << document.ErrDesc();
  Hosted other(purchase::purchase_return_interface());
  other.held().ConnectionString = books.text();
  other.held().PurchaseRtnNo = "AABRPRTMP1";
  other.held().PurRetGridName = grid_of({});
  ASSERT_TRUE(other.held().Get_Purchase_Rtn()) << other.held().ErrDesc();
  for (const Row& row : rows) {
    EXPECT_EQ(list({row.column}, "Purchase_Return_Master"), row.stored) << row.column;
    EXPECT_EQ(other.get(row.place, {}).to_text(), row.loaded) << row.place;
  }

  // What others set is read each into its property; a Null leaves the property as it was.
  books.execute(
      "Update Purchase_Return_Master Set Processed_Flag=-1, Cancel_Flag=0, Allow_Cancel_Flag=Null,"
      " Vendor_name=Null, Purchase_Rtn_Date=Null, Purchase_Rtn_Comments='',"
      " Foreign_Currency_Flag=0, Purchase_Rtn_Amount=Null");
  document.ProcessedFlag = false;
  ASSERT_TRUE(document.Get_Purchase_Rtn()) << document.ErrDesc();
  EXPECT_TRUE(document.ProcessedFlag() && document.AllowCancelFlag() && !document.CancelFlag());
  EXPECT_EQ(document.VendorName() + document.PurchaseRtnComments(), "O'Harawet");
  EXPECT_EQ(document.PurchaseRtnAmount(), 1.005);
  EXPECT_EQ(document.ExchangeRate(), 1);
}

TEST_P(PurchaseReturnTest, empty_texts_and_a_home_rate_are_stored_by_their_rules) {
  document.VendorName = "";
  document.PurchaseRtnComments = "";
  document.ExchangeRate = 3.5;
  ASSERT_TRUE(create({returned({{11, "30"}})}));
  EXPECT_EQ(list({"Vendor_name", "Purchase_Rtn_Ref_No", "Purchase_Rtn_Comments", "Purchase_ref_Doc",
                  "Exchange_Rate"},
                 "Purchase_Return_Master"),
            "Null | Null | Null |  | 1");
  EXPECT_EQ(list({"Purchase_Rtn_Overall_Disc_Amount"}, "Purchase_Return_Detail"), "105");
  document.VendorName = "Kept";
  ASSERT_TRUE(document.Update_Purchase_Rtn());
  document.VendorName = "";
  ASSERT_TRUE(document.Update_Purchase_Rtn());
  EXPECT_EQ(list({"Vendor_name"}, "Purchase_Return_Master"), "Kept");
}

TEST_P(PurchaseReturnTest, every_detail_column_goes_its_way_to_the_database_and_back) {
  const Row rows[] = {{"Purchase_Rtn_No", "", "", "AABRPRTMP1", ""},
                      {"SL_No", "", "", "1", ""},
                      {"Item_Code", "2", " 1001 ", "AA1001", "1001"},
                      {"Vendor_Item_Code", "3", " V-1 ", "V-1", "V-1"},
                      {"Item_Name", "4", " Paper ", "Paper", "Paper"},
                      {"Unit_Code", "5", "7 x", "7", "7"},
                      {"Unit_Name", "6", "BOX-12-3", "BOX", "BOX-12-3"},
                      {"Period_Type", "6", "BOX-12-3", "12-3", "BOX-12-3"},
                      {"Unit_Qty", "7", "12 pcs", "12", "12"},
                      {"pur_rtn_qty", "8", "1,004", "1004", "1004"},
                      {"Purchase_Rtn_Unit_Price", "9", "2.125", "2.125", "2.125"},
                      {"Purchase_Rtn_Item_Discount_Amount", "15", "1,500", "1500", "1500"},
                      {"purchase_rtn_item_amount", "14", "9,005", "9", "9"},
                      {"purchase_rtn_FC_item_amount", "13", "8,005", "8005", "8005"},
                      {"Purchase_Rtn_FC_Item_Discount_Amount", "10", "0.25", "0.25", "0.25"},
                      {"Purchase_Rtn_Overall_FC_Disc_Amount", "11", "502", "502", "251"},
                      {"Purchase_Rtn_Overall_Disc_Amount", "", "", "1004", ""},
                      {"Proj_No", "19", " P1 ", " P1 ", ""},
                      {"Location_Name", "16", " Main ", " Main ", " Main "},
                      {"location_ID", "21", " L1 ", " L1 ", " L1 "},
                      {"Last_Update", "", "", "2024-03-05 00:00:00", ""},
                      {"Purchase_Rtn_Overall_Inv_FC_Disc_Amt", "12", "2008", "2008", "2008"},
                      {"Purchase_Rtn_Overall_Inv_Disc_Amt", "26", "3,5", "3", "3"}};
  Cells cells;
  Cells expected = {{1, "-1"}, {18, "2.125"}, {22, "502"}, {23, "0.5"}, {24, "1004"}, {25, "2"}};
  for (const Row& row : rows) {
    if (row.place.empty()) continue;
    cells[std::stoi(row.place)] = row.given;
    expected[std::stoi(row.place)] = row.loaded;
  }
  document.ExchangeRate = 2;
  document.ForeignCurrencyFlag = true;
  ASSERT_TRUE(create({cells})) << document.ErrDesc();
  const auto loaded = grid_of({{}});
  document.PurRetGridName = loaded;
  ASSERT_TRUE(document.Get_Purchase_Rtn()) << document.ErrDesc();
  for (const Row& row : rows) {
    EXPECT_EQ(list({row.column}, "Purchase_Return_Detail"), row.stored) << row.column;
  }
  for (std::int32_t cell = 0; cell < kColumns; ++cell) {
    EXPECT_EQ(loaded->TextMatrix(1, cell), expected[cell]) << "cell " << cell;
  }
}

TEST_P(PurchaseReturnTest, a_null_leaves_a_cell_or_empties_it_or_ends_the_load) {
  const std::vector<std::pair<std::string, Cells>> outcomes = {
      {"Item_Code", {{2, "old"}}},
      {"Vendor_Item_Code", {{3, "old"}}},
      {"Item_Name", {{4, "old"}}},
      {"Unit_Code", {{5, "old"}}},
      {"Unit_Name", {{6, "old"}}},
      {"Period_Type", {{6, "Pcs"}}},
      {"Location_Name", {{16, "old"}}},
      {"location_ID", {{21, "old"}}},
      {"Purchase_Rtn_Overall_Inv_FC_Disc_Amt", {{12, ""}, {25, ""}}},
      {"Purchase_Rtn_Overall_Inv_Disc_Amt", {{26, ""}}},
      {"Unit_Qty", {}},
      {"pur_rtn_qty", {}},
      {"purchase_rtn_item_amount", {}},
      {"Purchase_Rtn_Overall_FC_Disc_Amount", {}}};
  for (const auto& [column, cells] : outcomes) {
    ASSERT_TRUE(create({returned({{3, "V"}, {6, "Pcs-Day"}})}));
    books.execute("Update Purchase_Return_Detail Set " + column + "=Null");
    const auto grid = grid_of({{}});
    for (std::int32_t cell = 0; cell < kColumns; ++cell) grid->TextMatrix(1, cell, "old");
    document.PurRetGridName = grid;
    EXPECT_EQ(document.Get_Purchase_Rtn(), !cells.empty()) << column;
    for (const auto& [cell, text] : cells) EXPECT_EQ(grid->TextMatrix(1, cell), text) << column;
    books.execute("Delete From Purchase_Return_Detail");
  }
  EXPECT_EQ(document.ErrDesc(), "Invalid use of Null");
  ASSERT_TRUE(create({returned({{8, "0"}})}));
  EXPECT_FALSE(document.Get_Purchase_Rtn());
  EXPECT_EQ(document.ErrDesc(), "Division by zero");
}

TEST_P(PurchaseReturnTest, what_is_read_are_the_lines_or_the_reason) {
  ASSERT_TRUE(create({returned({{2, "2002"}}), returned(), returned({{2, "404"}})}));
  const auto grid = grid_of({{}, {}, {}, {}, {}});
  document.PurRetGridName = grid;
  ASSERT_TRUE(document.Get_Purchase_Rtn()) << document.ErrDesc();
  EXPECT_EQ(grid->Rows(), 4);
  // Type 1 is greyed; type 0 and an unknown item are not.
  ASSERT_EQ(grid->marks().size(), 1U);
  const auto& mark = grid->marks()[0];
  EXPECT_EQ((std::vector{mark.setting, mark.row, mark.column, mark.row2, mark.column2}),
            (std::vector{7, 1, 16, 1, 16}));
  EXPECT_EQ(mark.value, Value(-2147483631));

  books.execute("Delete From Purchase_Return_Detail");
  EXPECT_TRUE(document.Get_Purchase_Rtn());
  EXPECT_EQ(grid->Rows(), 4);
  for (const std::string_view number : {"", "AABRPRTMP9"}) {
    document.PurchaseRtnNo = std::string(number);
    EXPECT_FALSE(document.Get_Purchase_Rtn());
    EXPECT_EQ(document.ErrDesc(), "Invalid Purchase Return Number");
  }
}

TEST_P(PurchaseReturnTest, statements_and_their_roads_are_these) {
  const std::string number = " Where Purchase_Rtn_No='AABRPRTMP1'";
  const std::string master = "(1,3,-1) Select * From Purchase_Return_Master" + number;
  const std::string detail = "(1,3,-1) Select * from Purchase_Return_Detail";
  const std::string serial = "(3,3,-1) Select max(SL_NO) as MaxNo from Purchase_Return_Detail";
  EXPECT_EQ(statements([&] { return document.Create_Purchase_Rtn(); }),
            (std::vector{master, detail, serial}));
  EXPECT_EQ(statements([&] { return document.Update_Purchase_Rtn(); }),
            (std::vector{master, "(0,0,-1) Delete from Purchase_Return_Detail" + number, detail,
                         serial}));
  EXPECT_EQ(statements([&] { return document.Get_Purchase_Rtn(); }),
            (std::vector{"text (1,3,-1) Select * from Purchase_Return_Master" + number,
                         "text (3,-1,-1) Select * from Purchase_Return_Detail" + number +
                             " Order By SL_No"}));
}

TEST_P(PurchaseReturnTest, serials_run_through_all_returns_and_a_blank_row_ends_the_lines) {
  ASSERT_TRUE(create({returned(), returned({{2, ""}, {3, "V9"}}), {{4, "no code"}}, returned()}));
  ASSERT_TRUE(create({returned()}));
  const std::string lines = "Purchase_Return_Detail Order By SL_No";
  EXPECT_EQ(list({"Purchase_Rtn_No", "SL_No", "Item_Code"}, lines),
            "AABRPRTMP1 | 1 | AA1001\nAABRPRTMP1 | 2 | Null\nAABRPRTMP2 | 3 | AA1001");
  document.PurchaseRtnIdentity = 99;
  for (const std::string number : {"AABRPRTMP1", "AABRPR77"}) {
    document.PurchaseRtnNo = number;
    ASSERT_TRUE(document.Update_Purchase_Rtn());
  }
  EXPECT_EQ(list({"Purchase_Rtn_No", "SL_No"}, lines),
            "AABRPRTMP2 | 3\nAABRPRTMP1 | 4\nAABRPR77 | 5");
  EXPECT_EQ(list({"Purchase_Rtn_No", "Purchase_Rtn_Identity"},
                 "Purchase_Return_Master Order By Purchase_Rtn_Identity"),
            "AABRPRTMP1 | 1\nAABRPRTMP2 | 2\nAABRPR77 | 99");
}

TEST_P(PurchaseReturnTest, rows_are_taken_by_their_selection_only_with_a_source) {
  struct {
    std::string source;
    std::vector<Cells> lines;
    bool answer;
    std::string names;
  } const cases[] = {
      {"INV", {returned({{1, "0"}, {4, "a"}}), returned({{1, "1"}, {4, "b"}})}, true, "b"},
      {"", {returned({{1, "0"}, {4, "a"}}), returned({{1, ""}, {4, "b"}})}, true, "a\nb"},
      {"INV", {returned({{1, ""}})}, true, ""},
      {"", {{}, returned()}, false, ""},
      {"", {}, false, ""}};
  for (const auto& each : cases) {
    document.Ref_Doc_Type = each.source;
    const std::string before = counter();
    EXPECT_EQ(create(each.lines), each.answer);
    EXPECT_EQ(document.ErrDesc(), "");
    EXPECT_EQ(list({"Item_Name"}, "Purchase_Return_Detail Order By SL_No"), each.names);
    EXPECT_EQ(counter() == before, !each.answer);
    EXPECT_EQ(list({"Company_Prefix"}, "Purchase_Return_Master"), "AA");
    books.execute("Delete From Purchase_Return_Detail; Delete From Purchase_Return_Master");
  }
}

TEST_P(PurchaseReturnTest, one_field_is_looked_up_through_the_text) {
  std::vector<Value> arguments{"Item_Master", "Stock_In_Hand", "Item_Code", "AA1001", false};
  EXPECT_EQ(late.call("GetFldValue", arguments), Value("500"));
  EXPECT_EQ(document.GetFldValue("Item_Master", "Item_Code", "Stock_In_Hand", "500", true,
                                 "Item_Type", "3", false),
            "AA3003");
  EXPECT_EQ(document.GetFldValue("Item_Master", "Average_Cost"), "");  // Null
  EXPECT_EQ(document.GetFldValue("Item_Master", "Item_Type", "Item_Code", "?"), "");
  document.ConnectionString = "";
  EXPECT_EQ(document.GetFldValue("Item_Master", "Item_Type"), "");
  EXPECT_EQ(document.ErrDesc(), "");
}

}  // namespace
}  // namespace ombrix::testing
