#include "orders/lpo_fixture.h"

namespace ombrix::testing {
namespace {

class LPOSavingTest : public LPOFixture {};
OMBRIX_ON_EACH_DATABASE(LPOSavingTest);

TEST_P(LPOSavingTest, statements_their_roads_and_what_the_counter_is_asked_are_these) {
  Script script;
  const auto counter = scripted_counter(script);
  EXPECT_EQ(told([&] { return order.Create_LPO(); }),
            (std::vector<std::string>{
                "object (1,3,-1) Select * From LPO_Master Where LPO_No='AABRPOTMP7'",
                "object (2,3,-1) Select * from LPO_Detail"}));
  EXPECT_EQ(script.told(),
            "new\nCompanyPrefix=AA\nBranchPrefix=BR\nDocumentPrefix=PO\n"
            "Get_Last_Counter(object, True)\nIncrease_Counter(True)");
  EXPECT_EQ(order.LPOIdentity(), 7);
  EXPECT_EQ(told([&] { return order.Update_LPO(); }),
            (std::vector<std::string>{
                "object (1,3,-1) Select * From LPO_Master Where LPO_No='AABRPOTMP7'",
                "execute Delete From LPO_Detail Where LPO_No='AABRPOTMP7'",
                "object (2,3,-1) Select * from LPO_Detail"}));
  EXPECT_EQ(
      told([&] { return order.Get_LPO(); }),
      (std::vector<std::string>{
          "text (1,3,-1) Select * from LPO_Master Where LPO_No='AABRPOTMP7'",
          "text (1,3,-1) Select * from LPO_Detail Where LPO_No='AABRPOTMP7' Order By SL_No"}));
}

TEST_P(LPOSavingTest, a_counter_that_refuses_ends_the_creation_with_its_reason) {
  Script script{.refused_call = 1};
  const auto counter = scripted_counter(script);
  const std::string before = books.dump();
  EXPECT_FALSE(order.Create_LPO());
  EXPECT_EQ(order.ErrDesc(), "The component says no.");
  EXPECT_EQ(books.dump(), before);
  script.refused_call = 3;
  script.reason = "The counter stands still.";
  EXPECT_FALSE(order.Create_LPO());
  EXPECT_EQ(order.ErrDesc(), "The counter stands still.");
  EXPECT_EQ(detail(1, "Item_Code"), "AA1001");
}

TEST_P(LPOSavingTest, the_line_in_the_counted_row_takes_the_rest_of_the_discount_or_nobody_does) {
  order.LPOFCDiscountAmount = 10;
  order.LPODiscountPercent = 10;
  ASSERT_TRUE(create({line({{12, "33.33"}}), line({{12, "33.33"}}), line({{12, "33.34"}})}));
  EXPECT_EQ(details("LPO_Overall_FC_Disc"), "3.33 3.33 3.34");
  EXPECT_EQ(details("LPO_Overall_Disc"), "3.33 3.33 3.34");
  // A line without a quantity is passed over and leaves no gap.
  ASSERT_TRUE(
      create({line({{12, "30"}}), line({{7, "0"}}), line({{7, "-1"}}), line({{12, "50"}})}));
  EXPECT_EQ(details("LPO_Overall_Disc"), "3 7");
  EXPECT_EQ(details("SL_No"), "1 2");
  // The second row counts neither by cell 1 nor by cell 2, and is saved all the same.
  ASSERT_TRUE(create({line({{12, "30"}}), line({{1, ""}, {12, "20"}}), line({{12, "50"}})}));
  EXPECT_EQ(details("LPO_Overall_Disc"), "3 7 5");
  ASSERT_TRUE(create({line({{12, "30"}}), line({{12, "50"}}), line({{7, "0"}})}));
  EXPECT_EQ(details("LPO_Overall_Disc"), "3 5");
  // Cells 1 and 3 empty end the walk, but cell 2 has counted.
  ASSERT_TRUE(create({line({{12, "30"}}), line({{1, ""}, {2, "V"}, {3, ""}}), line()}));
  EXPECT_EQ(details("LPO_Overall_Disc"), "3");
  EXPECT_EQ(details("SL_No"), "1");
  order.LPOFCDiscountAmount = -1;
  ASSERT_TRUE(create({line()}));
  EXPECT_EQ(details("LPO_Overall_FC_Disc") + details("LPO_Overall_Disc"), "00");
}

TEST_P(LPOSavingTest, an_order_without_a_saved_line_is_refused_and_the_counter_stays) {
  for (const auto& lines : {grid_of({}), grid_of({line({{7, "0"}})}), grid_of({{}, line()})}) {
    order.GridName = lines;
    EXPECT_FALSE(order.Create_LPO());
    EXPECT_EQ(order.ErrDesc(), "Invalid Details");
    EXPECT_EQ(master("LPO_No"), "AABRPOTMP1");
    EXPECT_EQ(details("SL_No"), "");
    EXPECT_EQ(counter("Temporary_Next_No"), "1");
  }
  ASSERT_TRUE(create({line()}));
  EXPECT_EQ(order.LPONo(), "AABRPOTMP1");
  order.GridName = grid_of({line({{7, "0"}})});
  EXPECT_FALSE(order.Update_LPO());
  EXPECT_EQ(order.ErrDesc(), "Invalid Details");  // of the creation: an update sets none here
  EXPECT_EQ(details("SL_No"), "");
}

TEST_P(LPOSavingTest, a_line_without_an_account_ends_the_save_behind_the_lines_before_it) {
  EXPECT_FALSE(create({line(), line({{7, "0"}, {15, ""}}), line()}));
  EXPECT_EQ(order.ErrDesc(), "Invalid Details");
  EXPECT_EQ(details("SL_No"), "1");
  EXPECT_EQ(counter("Temporary_Next_No"), "1");
  EXPECT_FALSE(order.Update_LPO());
  EXPECT_EQ(order.ErrDesc(), "Invalid Account No");
  EXPECT_EQ(details("SL_No"), "1");
}

TEST_P(LPOSavingTest, single_cells_are_stored_so) {
  struct {
    std::int32_t cell;
    std::string_view text, column, stored;
  } const cases[] = {
      {4, "Box-Day-2", "Unit_Name", "Box"},  {4, "Box-Day-2", "Period_Type", "Day-2"},
      {4, " Box ", "Unit_Name", " Box "},    {4, "Box", "Period_Type", "Null"},
      {4, "Box-", "Period_Type", ""},        {4, "-Day", "Unit_Name", ""},
      {4, "  ", "Unit_Name", "Null"},        {6, "0", "Unit_Qty", "1"},
      {6, "dozen", "Unit_Qty", "1"},         {6, "0.5", "Unit_Qty", "0.5"},
      {20, "True", "TaxType", "Taxable"},    {20, "1", "TaxType", "Taxable"},
      {20, "true", "TaxType", "Exempted"},   {20, " 1", "TaxType", "Exempted"},
      {20, "", "TaxType", "Exempted"},       {18, "x", "FOC_Flag", "0"},
      {18, "-1", "FOC_Flag", "-1"},          {1, "  ", "Item_Code", "Null"},
      {2, "  ", "Vendor_Item_Code", "Null"}, {5, "", "Unit_Code", "Null"},
      {16, " ", "Proj_No", "Null"},          {12, "12 pcs", "LPO_Item_Amount", "0"},
      {8, "1e400", "LPO_Unit_Price", "0"},   {15, " ", "Account_No", " "}};
  for (const auto& each : cases) {
    ASSERT_TRUE(create({line({{each.cell, std::string(each.text)}})})) << order.ErrDesc();
    EXPECT_EQ(detail(1, each.column), each.stored) << each.cell << " '" << each.text << "'";
  }
}

TEST_P(LPOSavingTest, empty_comments_are_stored_as_null_and_other_empty_texts_as_they_are) {
  ASSERT_TRUE(create({line()}));
  EXPECT_EQ(master("LPO_Comments") + master("RFQ_No"), "NullNull");
  EXPECT_EQ(master("TaxCode") + master("Purchase_Type") + master("Currency_Symbol"), "");
}

TEST_P(LPOSavingTest, an_update_replaces_the_lines_and_keeps_number_and_identity) {
  ASSERT_TRUE(create({line({{3, "a"}}), line({{3, "b"}})}));
  order.LPOIdentity = 99;
  order.CompanyPrefix = "ZZ";
  order.VendorName = "Another";
  order.GridName = grid_of({line({{3, "c"}})});
  ASSERT_TRUE(order.Update_LPO()) << order.ErrDesc();
  EXPECT_EQ(master("LPO_Identity") + master("Company_Prefix"), "1AA");
  EXPECT_EQ(master("Vendor_name"), "Another");
  EXPECT_EQ(details("Item_Name"), "c");
  EXPECT_EQ(detail(1, "Item_Code"), "ZZ1001");
  EXPECT_EQ(counter("Temporary_Next_No"), "2");
}

TEST_P(LPOSavingTest, an_update_needs_a_number_and_makes_the_order_that_is_not_there) {
  EXPECT_FALSE(order.Update_LPO());
  EXPECT_EQ(order.ErrDesc(), "Invalid LPO No.");
  order.LPONo = "AABRPO55";
  order.LPOIdentity = 55;
  EXPECT_TRUE(order.Update_LPO());
  EXPECT_EQ(master("LPO_Identity"), "55");
  EXPECT_EQ(order.ErrDesc(), "Invalid LPO No.");  // no success clears it
}

TEST_P(LPOSavingTest, a_grid_that_is_missing_or_too_narrow_is_refused) {
  for (const auto& [grid, reason] : std::vector<std::pair<std::shared_ptr<Grid>, std::string>>{
           {nullptr, "Object variable or With block variable not set"},
           {std::make_shared<MemoryGrid>(2, 2), "Subscript out of range"}}) {
    order.GridName = grid;
    EXPECT_FALSE(order.Create_LPO());
    EXPECT_EQ(order.ErrDesc(), "Invalid Details");
    EXPECT_EQ(counter("Temporary_Next_No"), "1");
    EXPECT_FALSE(order.Update_LPO());
    EXPECT_EQ(order.ErrDesc(), reason);
  }
}

TEST_P(LPOSavingTest, a_quote_is_refused_where_a_value_is_joined) {
  ASSERT_TRUE(order.Create_LPO());
  const std::string before = books.dump();
  for (const std::string_view property : {"CompanyPrefix", "BranchPrefix", "DocumentPrefix"}) {
    const Value good = late.get(property);
    for (const std::string_view bad : {"A'", "x' OR '1'='1"}) {
      late.let(property, bad);
      EXPECT_FALSE(order.Create_LPO()) << property << " " << bad;
      EXPECT_NE(order.ErrDesc(), "") << property << " " << bad;
    }
    late.let(property, good);
  }
  for (const std::string_view bad : {"A'", "x' OR '1'='1", "x'; Delete From LPO_Master; --"}) {
    order.LPONo = std::string(bad);
    EXPECT_FALSE(order.Update_LPO()) << bad;
  }
  EXPECT_EQ(books.dump(), before);
}

}  // namespace
}  // namespace ombrix::testing
