#include <functional>

#include "orders/lpo_columns.h"
#include "orders/lpo_fixture.h"

namespace ombrix::testing {
namespace {

class LPOTest : public LPOFixture {};
OMBRIX_ON_EACH_DATABASE(LPOTest);

TEST_P(LPOTest, each_missing_input_has_its_message_and_the_first_one_counts) {
  const std::vector<std::pair<std::string, std::string>> checks = {
      {"CompanyPrefix", "Invalid Company Prefix."}, {"DocumentPrefix", "Invalid Document Prefix."},
      {"BranchPrefix", "Invalid Branch Prefix."},   {"LPODate", "Invalid LPO Date."},
      {"VendorCode", "Invalid Vendor Code."},       {"VendorName", "Invalid Vendor Name."},
      {"CurrencyCode", "Invalid Currency Code."}};
  const std::string before = books.dump();
  order.LPONo = "AABRPOTMP1";
  // From the last check to the first: each break hides those behind it.
  for (auto check = checks.rbegin(); check != checks.rend(); ++check) {
    late.let(check->first, Value());
    EXPECT_FALSE(order.Create_LPO());
    EXPECT_EQ(order.ErrDesc(), check->second);
    EXPECT_FALSE(order.Update_LPO());
    EXPECT_EQ(order.ErrDesc(), check->second);
  }
  order.AdoConnectionObject = std::make_shared<Connection>();
  EXPECT_FALSE(order.Create_LPO());
  EXPECT_EQ(order.ErrDesc(), "Invalid Connection.");
  EXPECT_EQ(books.dump(), before);
}

TEST_P(LPOTest, an_order_that_never_got_a_connection_is_refused_and_one_without_any_raises) {
  purchase::LPO fresh;
  EXPECT_FALSE(fresh.Create_LPO());
  EXPECT_EQ(fresh.ErrDesc(), "Invalid Connection.");
  // The validation stands outside the trap.
  fresh.AdoConnectionObject = nullptr;
  EXPECT_THROW(fresh.Create_LPO(), Failure);
  EXPECT_THROW(fresh.Update_LPO(), Failure);
}

/// A row of the master: what goes into the property, to the column, and into another instance.
struct MasterRow {
  std::string_view column, property, given, stored, loaded;
};
constexpr MasterRow kMaster[] = {
    {"LPO_No", "LPONo", "", "AABRPOTMP1", "AABRPOTMP1"},
    {"LPO_Identity", "LPOIdentity", "", "1", "1"},
    {"Company_Prefix", "CompanyPrefix", "AA", "AA", "AA"},
    {"Branch_Prefix", "BranchPrefix", "BR", "BR", "BR"},
    {"Document_Prefix", "DocumentPrefix", "PO", "PO", "PO"},
    {"LPO_Date", "LPODate", "2024-02-29", "2024-02-29 00:00:00", "2024-02-29"},
    {"LPO_Due_Date", "LPODueDate", "2024-04-01 17:30:05", "2024-04-01 17:30:05",
     "2024-04-01 17:30:05"},
    {"Vendor_Code", "VendorCode", "AA'V9", "AA'V9", "AA'V9"},
    {"Vendor_name", "VendorName", "O'Hara & \u00D6hne", "O'Hara & \u00D6hne", "O'Hara & \u00D6hne"},
    {"LPO_Comments", "LPOComments", "x' OR '1'='1", "x' OR '1'='1", "x' OR '1'='1"},
    {"RFQ_No", "RFQNo", "R'7", "R'7", "R'7"},
    {"LPO_Discount_Percent", "LPODiscountPercent", "10.5", "10.5", "10.5"},
    {"LPO_FC_Discount_Amount", "LPOFCDiscountAmount", "3.125", "3.125", "3.125"},
    {"LPO_Discount_Amount", "LPODiscountAmount", "901", "3.12", "3.12"},
    {"LPO_FC_Subtotal", "LPOFCSubtotal", "35.135", "35.135", "35.135"},
    {"LPO_SubTotal", "LPOSubTotal", "902", "35.14", "35.14"},
    {"LPO_FC_Total_Amount", "LPOFCTotalAmount", "32.0149", "32.0149", "32.0149"},
    {"LPO_Total_Amount", "LPOTotalAmount", "903", "32.01", "32.01"},
    {"Foreign_Currency_Flag", "ForeignCurrencyFlag", "True", "-1", "True"},
    {"Currency_Code", "CurrencyCode", "U'D", "U'D", "U'D"},
    {"Currency_Symbol", "CurrencySymbol", "$", "$", "$"},
    {"Last_Update", "LastUpdate", "2024-03-05", "2024-03-05 00:00:00", "1899-12-30"},
    {"Purchase_Type", "Purchase_Type", "Fixed 'Asset", "Fixed 'Asset", "Fixed 'Asset"},
    {"TaxCode", "TaxCode", "V'T", "V'T", "V'T"},
    {"TaxDescription", "TaxDescription", "Value 'added", "Value 'added", "Value 'added"},
    {"LPO_TaxRate", "LPOTaxPercent", "5", "5", "5"},
    {"LPO_TaxAmount", "LPOTaxAmount", "1.755", "1.755", "1.755"},
    {"fulfilled_Flag", "FulFilledFlag", "True", "Null", "False"},
    {"Allow_Cancel_Flag", "AllowCancelFlag", "True", "Null", "False"},
    {"Cancel_Flag", "CancelFlag", "True", "Null", "False"},
    {"Processed_Flag", "ProcessedFlag", "True", "Null", "False"},
};

/// A row of the detail: what goes into which cell, to the column, and into which cells of a fresh
/// grid.
struct DetailRow {
  std::string_view column;
  std::int32_t cell;
  std::string_view given, stored;
  Cells loaded;
};
const DetailRow kDetail[] = {
    {"LPO_No", 0, "", "AABRPOTMP1", {}},
    {"SL_No", 0, "", "1", {}},
    {"Item_Code", 1, " 1001 ", "AA1001", {{1, "1001"}}},
    {"Vendor_Item_Code", 2, " V-'1' ", "V-'1'", {{2, "V-'1'"}}},
    {"Item_Name", 3, " Paper ", "Paper", {{3, "Paper"}}},
    {"Unit_Name", 4, "Box -Month-3", "Box ", {}},
    {"Period_Type", 4, "Box -Month-3", "Month-3", {{4, "Box -Month-3"}}},
    {"FOC_Flag", 18, "1", "1", {{18, "1"}}},
    {"Unit_Code", 5, " BX ", "BX", {{5, "BX"}}},
    {"Unit_Qty", 6, " 12 ", "12", {{6, "12"}}},
    {"LPO_Qty", 7, "1,000.5", "1000.5", {{7, "1000.5"}}},
    {"LPO_Unit_Price", 8, "3.125", "3.125", {{8, "3.125"}}},
    {"LPO_Item_Discount_Percent", 9, "2.5", "2.5", {{9, "2.5"}}},
    {"LPO_Item_Discount_amount", 10, "0.25", "0.25", {{10, "0.25"}}},
    {"LPO_Item_Amount", 12, "34.75", "34.75", {{11, "34.75"}}},
    {"LPO_FCItem_Discount_Amount", 10, "0.25", "0.25", {}},
    {"LPO_FCItem_Amount", 12, "34.75", "34.75", {}},
    {"Account_No",
     15,
     " ABR00\u00E9110 ",
     " ABR00\u00E9110 ",
     {{15, " ABR00\u00E9110 "}, {13, "\u00E9110 "}}},
    {"Proj_No", 16, " AABR00\u00E97 ", "AABR00\u00E97", {{16, "AABR00\u00E97"}, {14, "7"}}},
    {"LPO_Overall_FC_Disc", 0, "", "3.12", {}},
    {"LPO_Overall_Disc", 0, "", "3.12", {}},
    {"TaxType", 20, "True", "Taxable", {{20, "1"}}},
    {"Last_Update", 0, "", "2024-03-05 00:00:00", {}},
};

std::vector<std::string_view> names_of(const auto& rows, auto name) {
  std::vector<std::string_view> names;
  for (const auto& row : rows) names.push_back(row.*name);
  return names;
}

TEST_P(LPOTest, every_column_goes_its_way_to_the_database_and_back) {
  auto names = names_of(purchase::lpo_key_columns(), &Column<purchase::LPO>::name);
  for (const auto& column : purchase::lpo_master_columns()) names.push_back(column.name);
  ASSERT_EQ(names, names_of(kMaster, &MasterRow::column));
  ASSERT_EQ(names_of(purchase::lpo_detail_columns(), &Column<purchase::LPOLine>::name),
            names_of(kDetail, &DetailRow::column));

  auto grid = grid_of({{}});
  for (const auto& row : kMaster) {
    if (!row.given.empty()) late.let(row.property, row.given);
  }
  for (const auto& row : kDetail) grid->TextMatrix(1, row.cell, row.given);
  order.GridName = grid;
  ASSERT_TRUE(order.Create_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.LPOTotalAmount(), 32.0149);  // the home amounts become unrounded copies

  Hosted other(purchase::lpo_interface());
  const auto loaded = grid_of({{}});
  other.held().ConnectionString = books.text();
  other.held().GridName = loaded;
  other.held().LPONo = "AABRPOTMP1";
  ASSERT_TRUE(other.held().Get_LPO()) << other.held().ErrDesc();
  for (const auto& row : kMaster) {
    EXPECT_EQ(master(row.column), row.stored) << row.column;
    EXPECT_EQ(other.get(row.property, {}).to_text(), row.loaded) << row.property;
  }
  Cells expected;
  for (const auto& row : kDetail) {
    EXPECT_EQ(detail(1, row.column), row.stored) << row.column;
    expected.insert(row.loaded.begin(), row.loaded.end());
  }
  for (std::int32_t column = 0; column < kColumns; ++column) {
    EXPECT_EQ(loaded->TextMatrix(1, column), expected[column]) << "cell " << column;
  }
}

TEST_P(LPOTest, flags_that_others_set_are_read_each_into_its_property) {
  ASSERT_TRUE(create({line()}));
  const std::vector<std::pair<std::string, std::string>> flags = {
      {"fulfilled_Flag", "FulFilledFlag"},
      {"Allow_Cancel_Flag", "AllowCancelFlag"},
      {"Cancel_Flag", "CancelFlag"},
      {"Processed_Flag", "ProcessedFlag"},
      {"Foreign_Currency_Flag", "ForeignCurrencyFlag"}};
  for (const auto& [set, ignored] : flags) {
    for (const auto& [column, property] : flags) {
      books.execute("Update LPO_Master Set " + column + "=" + (column == set ? "1" : "0"));
    }
    ASSERT_TRUE(order.Get_LPO()) << order.ErrDesc();
    for (const auto& [column, property] : flags) {
      EXPECT_EQ(late.get(property).to_flag(), column == set) << set << " " << property;
    }
  }
}

/// A text that the property takes and that no order here holds.
std::string_view another_value(std::string_view property) {
  if (property.ends_with("Date") || property == "LastUpdate") return "2001-02-03";
  return property.ends_with("Flag") ? "True" : "77";
}

TEST_P(LPOTest, a_null_leaves_its_property_and_the_reader_carries_on) {
  ASSERT_TRUE(create({line()}));
  for (const auto& row : kMaster) {
    if (row.column == "LPO_No") continue;
    books.execute("Update LPO_Master Set " + std::string(row.column) + "=Null");
    late.let(row.property, another_value(row.property));
  }
  ASSERT_TRUE(order.Get_LPO()) << order.ErrDesc();
  for (const auto& row : kMaster) {
    if (row.column == "LPO_No") continue;
    EXPECT_EQ(late.get(row.property).to_text(),
              row.column == "Purchase_Type" ? "Item" : another_value(row.property))
        << row.property;
  }
}

TEST_P(LPOTest, an_empty_text_leaves_some_properties_and_overwrites_others) {
  order.TaxCode = "VAT";
  ASSERT_TRUE(create({line()}));
  books.execute(
      "Update LPO_Master Set LPO_Comments='', RFQ_No='', TaxCode='', Vendor_name='',"
      " Purchase_Type=''");
  order.LPOComments = "kept";
  order.RFQNo = "kept";
  ASSERT_TRUE(order.Get_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.LPOComments(), "kept");
  EXPECT_EQ(order.RFQNo(), "kept");
  EXPECT_EQ(order.TaxCode(), "");
  EXPECT_EQ(order.VendorName(), "");
  EXPECT_EQ(order.Purchase_Type(), "Item");
}

TEST_P(LPOTest, a_null_in_a_line_ends_the_reader_or_leaves_the_cell) {
  std::map<std::string_view, Cells> outcomes = {
      {"Item_Code", {{1, "old"}}},   {"Vendor_Item_Code", {{2, "old"}}},
      {"Item_Name", {{3, "old"}}},   {"Unit_Name", {{4, "old"}}},
      {"Period_Type", {{4, "Box"}}}, {"Unit_Code", {{5, "old"}}},
      {"FOC_Flag", {{18, "0"}}},     {"Proj_No", {{16, "old"}, {14, "old"}}},
      {"TaxType", {{20, "0"}}}};
  for (const auto* ends_it : {"Unit_Qty", "LPO_Qty", "LPO_Unit_Price", "LPO_Item_Discount_Percent",
                              "LPO_Item_Discount_amount", "LPO_Item_Amount", "Account_No"})
    outcomes[ends_it] = {};
  const Cells full = {{2, "V"}, {4, "Box-Day"}, {5, "B"}, {16, "AABR0011"}, {18, "1"}, {20, "1"}};
  for (const auto& [column, kept] : outcomes) {
    SCOPED_TRACE(column);
    ASSERT_TRUE(create({line(full)}));
    books.execute("Update LPO_Detail Set " + std::string(column) + "=Null");
    const auto grid = grid_of({{}});
    for (std::int32_t cell = 0; cell < kColumns; ++cell) grid->TextMatrix(1, cell, "old");
    purchase::LPO reader;
    reader.ConnectionString = books.text();
    reader.GridName = grid;
    reader.LPONo = order.LPONo();
    EXPECT_EQ(reader.Get_LPO(), !kept.empty());
    EXPECT_EQ(reader.ErrDesc(), kept.empty() ? "Invalid use of Null" : "");
    for (const auto& [cell, text] : kept) EXPECT_EQ(grid->TextMatrix(1, cell), text);
    books.execute("Delete From LPO_Detail");
  }
}

TEST_P(LPOTest, a_rate_is_read_for_a_foreign_order_only) {
  struct {
    std::string_view foreign, rate;
    double read;
  } const cases[] = {
      {"-1", "3.67", 3.67}, {"0", "3.67", 1}, {"Null", "3.67", 1}, {"-1", "Null", 9}};
  ASSERT_TRUE(create({line()}));
  EXPECT_EQ(master("Exchange_Rate"), "Null");
  for (const auto& each : cases) {
    books.execute("Update LPO_Master Set Foreign_Currency_Flag=" + std::string(each.foreign) +
                  ", Exchange_Rate=" + std::string(each.rate));
    order.ExchangeRate = 9;
    ASSERT_TRUE(order.Get_LPO()) << order.ErrDesc();
    EXPECT_EQ(order.ExchangeRate(), each.read) << each.foreign << " " << each.rate;
  }
}

TEST_P(LPOTest, the_grid_is_sized_by_the_lines) {
  struct {
    bool processed;
    std::int32_t given, sized;
    bool answer;
  } const cases[] = {{false, 9, 9, true}, {false, 3, 3, true},  {false, 1, 4, true},
                     {true, 9, 4, true},  {false, 2, 2, false}, {true, 2, 4, true}};
  ASSERT_TRUE(create({line(), line()}));
  for (const auto& each : cases) {
    SCOPED_TRACE(each.given);
    books.execute(std::string("Update LPO_Master Set Processed_Flag=") +
                  (each.processed ? "1" : "0"));
    order.GridName = std::make_shared<MemoryGrid>(each.given, kColumns);
    EXPECT_EQ(order.Get_LPO(), each.answer);
    EXPECT_EQ(order.GridName()->Rows(), each.sized);
  }
}

TEST_P(LPOTest, each_line_gets_its_mark_from_the_stored_figure_and_column_12_is_left_alone) {
  ASSERT_TRUE(create({line({{18, "2"}}), line({{18, "0"}})}));
  const auto grid = grid_of({{{12, "mine"}}, {}});
  order.GridName = grid;
  ASSERT_TRUE(order.Get_LPO()) << order.ErrDesc();
  ASSERT_EQ(grid->marks().size(), 2U);
  for (std::int32_t row = 1; row <= 2; ++row) {
    const auto& mark = grid->marks()[static_cast<std::size_t>(row) - 1];
    EXPECT_EQ((std::vector{mark.setting, mark.row, mark.column, mark.row2, mark.column2}),
              (std::vector{13, row, 0, row, 18}));
    EXPECT_EQ(mark.value.to_number(), row == 1 ? 2 : 0);
    EXPECT_EQ(grid->TextMatrix(row, 18), row == 1 ? "1" : "0");
  }
  EXPECT_EQ(grid->TextMatrix(1, 11), "35");
  EXPECT_EQ(grid->TextMatrix(1, 12), "mine");
}

TEST_P(LPOTest, what_cannot_be_read_is_refused) {
  ASSERT_TRUE(create({line()}));
  struct {
    std::function<void(purchase::LPO&)> spoil;
    std::string_view reason;
  } const cases[] = {
      {[](auto& read) { read.GridName = nullptr; },
       "Object variable or With block variable not set"},
      {[](auto& read) { read.GridName = std::make_shared<MemoryGrid>(2, 18); },
       "Subscript out of range"},
      {[](auto& read) { read.LPONo = "AABRPOTMP9"; }, "Invalid LPO Number"},
      {[](auto& read) { read.LPONo = "x' OR '1'='1"; },
       "The statement was refused: a value would change what it does."},
      {[](auto& read) { read.LPONo = " "; }, "Invalid LPO Number"},
      {[](auto& read) { read.ConnectionString = ""; }, "Invalid Connection string Property."}};
  for (const auto& each : cases) {
    each.spoil(order);
    EXPECT_FALSE(order.Get_LPO());
    EXPECT_EQ(order.ErrDesc(), each.reason);
  }
}

TEST_P(LPOTest, outer_blanks_are_dropped_where_the_setter_says_so) {
  const std::vector<std::string> trims = {
      "CompanyPrefix", "BranchPrefix",   "DocumentPrefix", "VendorCode",  "VendorName",
      "CurrencyCode",  "CurrencySymbol", "LPONo",          "LPOComments", "RFQNo"};
  const std::vector<std::string> keeps = {"ConnectionString", "Database",       "Purchase_Type",
                                          "TaxCode",          "TaxDescription", "TaxTypeLPO"};
  for (const auto& property : trims) {
    late.let(property, "  a b ");
    EXPECT_EQ(late.get(property), Value("a b")) << property;
  }
  for (const auto& property : keeps) {
    late.let(property, "  a b ");
    EXPECT_EQ(late.get(property), Value("  a b ")) << property;
  }
}

}  // namespace
}  // namespace ombrix::testing
