#include <functional>
#include <set>

#include "ombrix/dialogue.h"

#include "invoices/purchase_invoice_columns.h"
#include "invoices/purchase_invoice_fixture.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

class PurchaseInvoiceTest : public PurchaseInvoiceFixture {};
OMBRIX_ON_EACH_DATABASE(PurchaseInvoiceTest);

TEST_P(PurchaseInvoiceTest, the_first_check_that_fails_is_the_reason) {
  const std::vector<std::pair<std::string, std::string>> checks = {
      {"CompanyPrefix", "Invalid Company Prefix."},
      {"DocumentPrefix", "Invalid Document Prefix."},
      {"BranchPrefix", "Invalid Branch Prefix."},
      {"PurchaseInvDate", "Invalid Purchase Invoice Date."},
      {"VendorCode", "Invalid Vendor Code."},
      {"PurchaseInvAmount", "Invalid Purchase Invoice Amount."},
      {"PurchaseInvSubTotal", "Invalid LPO Sub Total."},
      {"CurrencyCode", "Invalid Currency Code."}};
  const std::string before = books.dump();
  // From the last check to the first: each break hides those behind it.
  for (auto check = checks.rbegin(); check != checks.rend(); ++check) {
    const bool amount =
        check->first.starts_with("PurchaseInv") && check->first != "PurchaseInvDate";
    late.let(check->first, amount ? Value(-0.01) : Value());
    EXPECT_FALSE(invoice.Create_Purchase_Invoice());
    EXPECT_EQ(invoice.ErrDesc(), check->second);
    EXPECT_FALSE(invoice.Update_Purchase_Invoice());
    EXPECT_EQ(invoice.ErrDesc(), check->second);
  }
  purchase::PurchaseInvoice fresh;
  EXPECT_FALSE(fresh.Create_Purchase_Invoice());
  EXPECT_EQ(fresh.ErrDesc(), "Invalid Connection.");
  fresh.AdoConnectionObject = nullptr;
  EXPECT_THROW(fresh.Create_Purchase_Invoice(), Failure);
  fill(invoice, books, {billed()});
  invoice.PurchaseInvSubTotal = 0;
  invoice.PurchaseInvNo = " ";
  EXPECT_FALSE(invoice.Update_Purchase_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Invalid Purchase Invoice No");
  EXPECT_EQ(books.dump(), before);
}

/// A row of the master: what goes into the property, to the column, and into another instance.
struct MasterRow {
  std::string_view column, property, given, stored, loaded;
};
constexpr MasterRow kMaster[] = {
    {"Purchase_Inv_No", "PurchaseInvNo", "", "AABRPINTMP3", "AABRPINTMP3"},
    {"Purchase_Inv_Identity", "PurchaseInvIdentity", "", "3", "3"},
    {"Company_Prefix", "CompanyPrefix", "AA", "AA", "AA"},
    {"Branch_Prefix", "BranchPrefix", "BR", "BR", "BR"},
    {"Document_Prefix", "DocumentPrefix", "PIN", "PIN", "PIN"},
    {"Purchase_Inv_Date", "PurchaseInvDate", "2024-02-29", "2024-02-29 00:00:00", "2024-02-29"},
    {"Vendor_Code", "VendorCode", "AAV9", "AAV9", "AAV9"},
    {"Vendor_name", "VendorName", "O'Hara", "O'Hara", "O'Hara"},
    {"Vendor_Ref_Invoice_No", "VendorRefInvoiceNo", "VI/7", "VI/7", "VI/7"},
    {"Vendor_Ref_Invoice_Date", "VendorRefInvoiceDate", "2024-02-20", "2024-02-20 00:00:00",
     "2024-02-20"},
    {"Vendor_Ref_Document_Prefix", "VendorRefDocumentPrefix", "VP", "VP", "VP"},
    {"Purchase_Inv_Amount", "PurchaseInvAmount", "880.125", "880.125", "880.125"},
    {"Processed_Flag", "ProcessedFlag", "True", "-1", "True"},
    {"Cancel_Flag", "CancelFlag", "True", "-1", "True"},
    {"Allow_Cancel_Flag", "AllowCancelFlag", "True", "-1", "True"},
    {"fulfilled_Flag", "FulFilledFlag", "True", "-1", "True"},
    {"Purchase_Inv_Comments", "PurchaseInvComments", "ring first", "ring first", "ring first"},
    {"Foreign_Currency_Flag", "ForeignCurrencyFlag", "True", "-1", "True"},
    {"Currency_Code", "CurrencyCode", "USD", "USD", "USD"},
    {"Currency_Symbol", "CurrencySymbol", " $ ", "$", "$"},
    {"Purchase_Inv_FC_Amount", "PurchaseInvFCAmount", "240.5", "240.5", "240.5"},
    {"Purchase_Inv_SubTotal", "PurchaseInvSubTotal", "900", "900", "900"},
    {"Purchase_Inv_FC_SubTotal", "PurchaseInvFCSubTotal", "245", "245", "245"},
    {"Purchase_Inv_Disc_Percent", "PurchaseInvDiscPercent", "2.5", "2.5", "2.5"},
    {"Purchase_Inv_Disc_Amount", "PurchaseInvDiscAmount", "19.875", "19.875", "19.875"},
    {"Purchase_Inv_FC_Disc_Amount", "PurchaseInvFCDiscAmount", "4.5", "4.5", "4.5"},
    {"Purchase_Variance", "PurchaseVariance", "-3.25", "-3.25", "-3.25"},
    {"FC_Purchase_Variance", "FCPurchaseVariance", "1.25", "1.25", "1.25"},
    {"Year_End_Flag", "YearEndFlag", "True", "-1", "True"},
    {"Balance_Amount", "BalanceAmount", "1", "880.125", "880.125"},
    {"Balance_FCAmount", "BalanceFCAmount", "2", "240.5", "240.5"},
    {"Exchange_Rate", "ExchangeRate", "3.67", "3.67", "3.67"},
    {"Invoice_Type", "InvoiceType", "GRN", "GRN", "GRN"},
    {"PO_No", "PONo", " AABRLPO12", " AABRLPO12", " AABRLPO12"},
    {"PO_Date", "PODate", "2024-02-01", "2024-02-01 00:00:00", "2024-02-01"},
    {"Purchase_Type", "Purchase_Type", "Fixed Asset", "Fixed Asset", "Fixed Asset"},
    {"Last_Update", "LastUpdate", "2024-03-05", "2024-03-05 00:00:00", "1899-12-30"},
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
    {"Purchase_Inv_No", 0, "", "AABRPINTMP3", {{1, "1"}}},
    {"Vendor_Code", 0, "", "AAV9", {}},
    {"Vendor_name", 0, "", "O'Hara", {}},
    {"SL_No", 0, "", "1", {}},
    {"Order_No", 28, "AABRLPO12", "AABRLPO12", {{2, "12"}}},
    {"Order_Date", 3, "2024-02-01", "2024-02-01 00:00:00", {{3, "2024-02-01"}}},
    {"Vendor_Ref_Document_No", 4, " VD-1 ", "VD-1", {{4, "VD-1"}}},
    {"Vendor_Ref_Document_Date", 5, "02/02/2024", "2024-02-02 00:00:00", {{5, "2024-02-02"}}},
    {"Item_Code", 6, " 1001 ", "AA1001", {{6, "1001"}}},
    {"Vendor_Item_Code", 7, " V-1 ", "V-1", {{7, "V-1"}}},
    {"Item_Name", 8, " Paper ", "Paper", {{8, "Paper"}}},
    {"Unit_Code", 9, "12.5 kg", "12.5", {{9, "12.5"}}},
    {"Unit_Name", 10, "Box-Month-3", "Box", {}},
    {"Period_Type", 10, "Box-Month-3", "Month-3", {{10, "Box-Month-3"}}},
    {"FOC_Flag", 30, "1", "1", {{30, "1"}}},
    {"Unit_Qty", 11, "12", "12", {{11, "12"}}},
    {"Purchase_Inv_Qty", 12, "8", "8", {}},
    {"grn_qty", 12, "8", "8", {{12, "8"}}},
    {"Purchase_Inv_Unit_Price", 24, "113", "113", {}},
    {"Purchase_Inv_Item_Disc_Amount", 18, "0.5", "0.5", {{18, "0.5"}, {14, "0.454545454545455"}}},
    {"Purchase_Inv_Item_FC_Disc_Amount", 15, "0.25", "0.25", {{15, "0.25"}, {13, "30.25"}}},
    {"Purchase_Inv_Item_Amount", 32, "904", "904", {{24, "113"}}},
    {"Purchase_Inv_FC_Item_Amount", 34, "246", "246", {}},
    {"PO_Disc_Amount", 31, "10", "10", {{31, "10"}}},
    {"PO_FC_Disc_Amount", 33, "2.5", "2.5", {{33, "2.5"}}},
    {"TaxType", 35, "7", "Taxable", {{35, "5"}}},
    {"Proj_No", 19, " AABRPRJ9 ", "AABRPRJ9", {{19, "AABRPRJ9"}}},
    {"GRN_SL_NO", 20, "3rd", "3", {{20, "3"}}},
    {"GRN_No", 22, " AABRGRN1 ", "AABRGRN1", {{22, "AABRGRN1"}}},
    {"GRN_Date", 23, "2024-02-03", "2024-02-03 00:00:00", {{23, "2024-02-03"}}},
    {"GRN_Flag", 29, "GRN", "GRN", {{29, "GRN"}}},
    {"Purchase_Inv_Overall_FC_Disc_Amount", 17, "245", "4.5", {}},
    {"Purchase_Inv_Overall_Disc_Amount", 16, "900", "19.88", {}},
    {"GRN_Item_Amount", 25, "880", "880", {{25, "880"}, {16, "880"}, {32, "870"}}},
    {"GRN_FC_Item_Amount", 26, "240", "240", {{26, "240"}, {17, "240"}, {34, "237.5"}}},
    {"GRN_Unit_Price", 27, "110", "110", {{27, "110"}}},
    {"Last_Update", 0, "", "2024-03-05 00:00:00", {}},
};

TEST_P(PurchaseInvoiceTest, every_column_goes_its_way_to_the_database_and_back) {
  std::vector<std::string_view> names;
  for (const auto& column : purchase::invoice_key_columns()) names.push_back(column.name);
  for (const auto& column : purchase::invoice_master_columns()) names.push_back(column.name);
  for (const auto& column : purchase::invoice_detail_columns()) names.push_back(column.name);
  auto name = names.begin();
  ASSERT_EQ(names.size(), std::size(kMaster) + std::size(kDetail));
  for (const auto& row : kMaster) ASSERT_EQ(*name++, row.column);
  for (const auto& row : kDetail) ASSERT_EQ(*name++, row.column);

  auto given = grid_of({{{1, " true "}}});
  for (const auto& row : kMaster) {
    if (!row.given.empty()) late.let(row.property, row.given);
  }
  for (const auto& row : kDetail) given->TextMatrix(1, row.cell, row.given);
  invoice.PInvoiceGridName = given;
  ASSERT_TRUE(invoice.Create_Purchase_Invoice()) << invoice.ErrDesc();

  Hosted<purchase::PurchaseInvoice> other(purchase::purchase_invoice_interface());
  const auto loaded = grid_of({{}});
  other.held().ConnectionString = books.text();
  other.held().PInvoiceGridName = loaded;
  other.held().PurchaseInvNo = "AABRPINTMP3";
  ASSERT_TRUE(other.held().Get_Purchase_Invoice()) << other.held().ErrDesc();
  for (const auto& row : kMaster) {
    EXPECT_EQ(master({std::string(row.column)}), row.stored) << row.column;
    EXPECT_EQ(other.get(row.property, {}).to_text(), row.loaded) << row.property;
  }
  Cells expected;
  for (const auto& row : kDetail) {
    EXPECT_EQ(lines({std::string(row.column)}), row.stored) << row.column;
    expected.insert(row.loaded.begin(), row.loaded.end());
  }
  EXPECT_EQ(row_of(*loaded, 1), expected);
  ASSERT_EQ(loaded->marks().size(), 1U);
  const auto& mark = loaded->marks()[0];
  EXPECT_EQ((std::vector{mark.setting, mark.row, mark.column, mark.row2, mark.column2}),
            (std::vector{13, 1, 30, 1, 30}));
  EXPECT_EQ(mark.value.to_number(), 1);
}

TEST_P(PurchaseInvoiceTest, a_null_leaves_its_property_or_takes_its_default) {
  ASSERT_TRUE(invoice.Create_Purchase_Invoice()) << invoice.ErrDesc();
  const std::map<std::string_view, std::string_view> defaults = {
      {"Invoice_Type", "GRN"}, {"Purchase_Type", "Item"}, {"Exchange_Rate", "1"}};
  const std::string number = invoice.PurchaseInvNo();
  for (const auto& row : kMaster) {
    if (row.column == "Purchase_Inv_No") continue;
    books.execute("Update Purchase_Invoice_Master Set " + std::string(row.column) + "=Null");
    if (!row.given.empty()) late.let(row.property, row.given);
  }
  invoice.PurchaseInvIdentity = 99;
  ASSERT_TRUE(invoice.Get_Purchase_Invoice()) << invoice.ErrDesc();
  for (const auto& row : kMaster) {
    if (row.given.empty()) continue;
    const auto found = defaults.find(row.column);
    const std::string kept(row.property == "CurrencySymbol" ? "$" : row.given);
    EXPECT_EQ(late.get(row.property).to_text(), found == defaults.end() ? kept : found->second)
        << row.property;
  }
  EXPECT_EQ(invoice.PurchaseInvIdentity(), 99);
}

TEST_P(PurchaseInvoiceTest, a_blank_column_leaves_some_properties_and_overwrites_others) {
  ASSERT_TRUE(invoice.Create_Purchase_Invoice());
  books.execute(
      "Update Purchase_Invoice_Master Set Vendor_name='  ', Vendor_Ref_Invoice_No='  ',"
      " Vendor_Ref_Document_Prefix=' ', Purchase_Inv_Comments='  ', PO_No='',"
      " PO_Date='2001-02-03 00:00:00', Invoice_Type='', Purchase_Type='', Currency_Symbol='',"
      " Exchange_Rate=3.67");
  const std::vector<std::string> kept = {"VendorName", "VendorRefInvoiceNo",
                                         "VendorRefDocumentPrefix", "PurchaseInvComments", "PONo"};
  for (const auto& property : kept) late.let(property, "kept");
  ASSERT_TRUE(invoice.Get_Purchase_Invoice());
  for (const auto& property : kept) EXPECT_EQ(late.get(property), Value("kept")) << property;
  EXPECT_TRUE(invoice.PODate().is_zero());
  EXPECT_EQ(invoice.InvoiceType() + "|" + invoice.Purchase_Type() + "|" + invoice.CurrencySymbol(),
            "|Item|");
  EXPECT_EQ(invoice.ExchangeRate(), 1);
}

TEST_P(PurchaseInvoiceTest, a_line_of_an_order_is_read_by_its_own_rules) {
  invoice.InvoiceType = "PO";
  ASSERT_TRUE(create({billed({{15, "0.25"}, {18, "0.5"}, {32, "904"}, {31, "10"}, {3, ""}})}));
  books.execute("Update Purchase_Invoice_Detail Set grn_qty=1, TaxType=Null");
  invoice.PInvoiceGridName = grid_of({{}});
  ASSERT_TRUE(invoice.Get_Purchase_Invoice()) << invoice.ErrDesc();
  EXPECT_EQ(row_of(grid(), 1),
            (Cells{{1, "1"},     {2, "12"},   {6, "1001"}, {8, "Paper"},  {9, "3"},
                   {10, "Box"},  {11, "12"},  {12, "8"},   {13, "30.25"}, {14, "0.826446280991736"},
                   {15, "0.25"}, {16, "880"}, {17, "240"}, {18, "0.5"},   {22, "AABRLPO12"},
                   {24, "110"},  {25, "880"}, {26, "240"}, {27, "110"},   {30, "0"},
                   {35, "0"}}));
}

TEST_P(PurchaseInvoiceTest, a_null_or_a_zero_in_a_line_ends_the_reader_behind_the_cells_before) {
  const Cells full = {{4, "VD"}, {5, "2024-02-02"}, {7, "V"}};
  ASSERT_TRUE(create({billed(full)}));
  struct {
    std::string_view column, value, reason;
    std::int32_t last;
  } const cases[] = {{"Unit_Name", "Null", "Invalid use of Null", 9},
                     {"Vendor_Ref_Document_Date", "Null", "Invalid use of Null", 4},
                     {"grn_qty", "0", "Division by zero", 12},
                     {"GRN_Unit_Price", "0", "Division by zero", 13},
                     {"Proj_No", "Null", "Invalid use of Null", 18},
                     {"GRN_Flag", "Null", "Invalid use of Null", 23},
                     {"Vendor_Item_Code", "Null", "", 35},
                     {"FOC_Flag", "Null", "", 35},
                     {"Order_No", "Null", "", 35}};
  for (const auto& each : cases) {
    const std::string column(each.column);
    const Value kept = books.value("Select " + column + " As V From Purchase_Invoice_Detail");
    books.execute("Update Purchase_Invoice_Detail Set " + column + "=" + std::string(each.value));
    purchase::PurchaseInvoice reader;
    reader.ConnectionString = books.text();
    reader.PurchaseInvNo = invoice.PurchaseInvNo();
    reader.PInvoiceGridName = grid_of({{}});
    EXPECT_EQ(reader.Get_Purchase_Invoice(), each.reason.empty()) << column;
    EXPECT_EQ(reader.ErrDesc(), each.reason) << column;
    Cells filled = row_of(*reader.PInvoiceGridName(), 1);
    EXPECT_TRUE(filled.contains(each.last)) << column;
    if (each.last == 4) {
      EXPECT_FALSE(filled.contains(5));
    } else if (!each.reason.empty()) {
      EXPECT_FALSE(filled.contains(25)) << column;
    }
    books.execute("Update Purchase_Invoice_Detail Set " + column + "='" + shown(kept) + "'");
  }
}

TEST_P(PurchaseInvoiceTest, the_grid_is_sized_by_the_lines) {
  struct {
    bool processed;
    std::int32_t given, sized;
  } const cases[] = {{false, 9, 9}, {false, 3, 3}, {false, 1, 4}, {true, 9, 4}};
  ASSERT_TRUE(create({billed(), billed()}));
  for (const auto& each : cases) {
    books.execute(std::string("Update Purchase_Invoice_Master Set Processed_Flag=") +
                  (each.processed ? "1" : "0"));
    invoice.PInvoiceGridName = std::make_shared<MemoryGrid>(each.given, kColumns);
    EXPECT_TRUE(invoice.Get_Purchase_Invoice()) << invoice.ErrDesc();
    EXPECT_EQ(grid().Rows(), each.sized);
  }
  books.execute("Delete From Purchase_Invoice_Detail");
  EXPECT_FALSE(invoice.Get_Purchase_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Invalid Purchase Invoice No");
  EXPECT_EQ(grid().Rows(), 2);
  invoice.PurchaseInvNo = "AABRPIN9";
  EXPECT_FALSE(invoice.Get_Purchase_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Purchase Invoice Number  Does Not Exists.");
  invoice.PurchaseInvNo = "";
  EXPECT_FALSE(invoice.Get_Purchase_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Invalid Purchase Invoice Number");
}

struct Box final : Dialogue {
  void message(std::string_view text, std::string_view) override { shown.emplace_back(text); }
  std::string input(std::string_view, std::string_view, std::string_view) override { return ""; }
  std::vector<std::string> shown;
};

TEST_P(PurchaseInvoiceTest, a_quote_is_looked_up_as_a_tilde_and_a_failure_is_shown) {
  books.execute(
      "Insert Into Vendor_Master (Vendor_Code, Vendor_name, Vendor_City)"
      " Values ('V~1', 'Orchard', 'O~C')");
  const auto look = [&](const std::string& field, const std::string& second = "") {
    return invoice.GetFldValue("Vendor_Master", field, "Vendor_Code", "V'1", false,
                               second.empty() ? "" : "Vendor_City", second, false);
  };
  EXPECT_EQ(look("Vendor_name"), "Orchard");
  EXPECT_EQ(look("Vendor_name", "O'C"), "Orchard");
  EXPECT_EQ(look("Vendor_name", "OC"), "");
  EXPECT_EQ(look("Vendor_Fax"), "");
  EXPECT_EQ(invoice.StringValidation("a'~b", true) + invoice.StringValidation("a'~b", false),
            "a~~ba''b");

  const auto box = std::make_shared<Box>();
  set_dialogue(box);
  EXPECT_EQ(look("No_Such_Field"), "");
  set_dialogue(nullptr);
  EXPECT_EQ(box->shown.size(), 1U);
  EXPECT_EQ(invoice.ErrDesc(), "");
  Value arguments[] = {"TaxCodeMaster", "Tax_Rate", "Tax_Type", "Purchase", false};
  EXPECT_EQ(late.call("GetFldValue", arguments), Value("5"));
}

TEST_P(PurchaseInvoiceTest, outer_blanks_are_dropped_where_the_setter_says_so) {
  const std::set<std::string_view> trims = {"CompanyPrefix",      "BranchPrefix",
                                            "DocumentPrefix",     "VendorCode",
                                            "VendorName",         "CurrencyCode",
                                            "CurrencySymbol",     "PurchaseInvNo",
                                            "VendorRefInvoiceNo", "VendorRefDocumentPrefix",
                                            "PurchaseInvComments"};
  std::size_t trimmed = 0;
  for (const auto& member : late.members()) {
    if (member.type != "String" || !allows(member.access, Access::let)) continue;
    late.let(member.name, " a ");
    const bool trims_it = trims.contains(member.name);
    EXPECT_EQ(late.get(member.name), Value(trims_it ? "a" : " a ")) << member.name;
    trimmed += trims_it ? 1 : 0;
  }
  EXPECT_EQ(trimmed, trims.size());
}

}  // namespace
}  // namespace ombrix::testing
