#include "returns/return_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

class ReturnProcessingTest : public ReturnFixture {
 protected:
  /// In foreign currency at 3.75, from a source at another rate.
  void rates(const std::string& source, double source_rate) {
    document.Ref_Doc_Type = source;
    document.ForeignCurrencyFlag = true;
    document.ExchangeRate = 3.75;
    document.SourceExchangeRate = source_rate;
  }
  void tax(double amount, double percent, const std::string& type = "PR") {
    document.TaxCode = "VAT";
    document.TaxAmount = amount;
    document.TaxPercent = percent;
    document.TaxType = type;
  }
};
OMBRIX_ON_EACH_DATABASE(ReturnProcessingTest);

TEST_P(ReturnProcessingTest, rates_and_source_decide_what_is_posted_where) {
  const Cells plain = returned({{14, "3777"}});
  const Cells discounted = returned({{14, "3777"}, {10, "2"}, {11, "5"}, {12, "3"}});
  const std::string whole = "ACCRUAL | 3750\nSTOCK | -3750\nVARIANCE | ";
  const std::string risen = "STOCK | 0 | 3600\nACCRUAL | 3600 | 0\nVARIANCE | 0 | 150";
  const std::string received = "STOCK | 0 | 3750\nACCRUAL | 3600 | 0\nVARIANCE | 150 | 0";
  const std::string stored = "STOCK | 0 | 3777\nACCRUAL | 3777 | 0";
  struct {
    std::string source;
    double source_rate;
    std::vector<Cells> lines;
    std::string ledger, balances;
  } const cases[] = {{"INV", 3.6, {plain}, risen, whole + "-150"},
                     {"CAP", 3.6, {plain}, risen, whole + "-150"},
                     {"GRN", 3.6, {plain}, risen, whole + "-150"},
                     {"REC", 3.6, {plain}, received, whole + "150"},
                     {"DRI", 3.6, {plain}, received, whole + "150"},
                     {"INV",
                      3.9,
                      {plain},
                      "STOCK | 0 | 3900\nACCRUAL | 3900 | 0\nVARIANCE | 150 | 0",
                      whole + "150"},
                     {"REC",
                      3.9,
                      {plain},
                      "STOCK | 0 | 3750\nACCRUAL | 3900 | 0\nVARIANCE | 0 | 150",
                      whole + "-150"},
                     {"INV",
                      3.5,
                      {discounted},
                      "STOCK | 0 | 3605\nACCRUAL | 3605 | 0\nVARIANCE | 0 | 47",
                      "ACCRUAL | 3652\nSTOCK | -3652\nVARIANCE | -47"},
                     {"INV",
                      4,
                      {discounted},
                      "STOCK | 0 | 3888\nACCRUAL | 3888 | 0\nVARIANCE | 243 | 0",
                      "ACCRUAL | 3645\nSTOCK | -3645\nVARIANCE | 243"},
                     {"INV",
                      0,
                      {discounted},
                      "STOCK | 0 | 105\nACCRUAL | 105 | 0\nVARIANCE | 0 | 3645",
                      whole + "-3645"},
                     {"INV", 3.75, {discounted}, stored, "ACCRUAL | 3777\nSTOCK | -3777"},
                     {"", 3.6, {discounted}, stored, "ACCRUAL | 3777\nSTOCK | -3777"},
                     {"INV",
                      3.6,
                      {plain, plain},
                      "STOCK | 0 | 3600\nSTOCK | 0 | 3450\nACCRUAL | 7200 | 0\nVARIANCE | 0 | 300",
                      "ACCRUAL | 7500\nSTOCK | -7500\nVARIANCE | -300"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.source + " " + std::to_string(each.source_rate));
    rates(each.source, each.source_rate);
    ASSERT_TRUE(process(each.lines)) << document.ErrDesc();
    EXPECT_EQ(ledger(), each.ledger);
    EXPECT_EQ(balances(), each.balances);
    books.execute("Delete From General_Ledger; Update Chart_Of_Accounts Set Current_Balance=0");
  }
}

TEST_P(ReturnProcessingTest, the_tax_is_posted_once_as_far_as_its_shares_add_up) {
  const std::vector<Cells> one = {returned()};
  const std::vector<Cells> two = {returned(), returned()};
  struct {
    std::vector<Cells> lines;
    Authorities authorities;
    double amount, percent;
    std::string type, ledger;
    double left;
  } const cases[] = {
      {one, {{"FED", 5}}, 50, 5, "pr", "TAX | 0 | 50", 0},
      {two, {{"FED", 5}}, 50, 5, "PR", "TAX | 0 | 50", 0},
      {one, {{"FED", 5}}, 50, 5, "GRN", "TAX | 50 | 0", 0},
      {one,
       {{"FED", 10}, {"CUS", 5}},
       100,
       15,
       "PR",
       "TAX | 0 | 66.6666666666667\nTOLL | 0 | 33.3333333333333",
       0},
      {two,
       {{"FED", 4}, {"CUS", 3}},
       50,
       5,
       "PR",
       "TAX | 0 | 40\nTOLL | 0 | 30\nTAX | 0 | 16\nTOLL | 0 | 12",
       8},
      {two, {{"FED", 2}, {"CUS", 1}}, 50, 5, "PR", "TAX | 0 | 20\nTOLL | 0 | 10", -20},
      // Without a row of its own an authority keeps the count from reaching the last.
      {two, {{"FED", 5}, {"GONE", 2}}, 50, 5, "PR", "TAX | 0 | 50\nTAX | 0 | 50", 50},
      {two, {{"FED", 5}}, 0, 0, "PR", "", 0}};
  for (const auto& each : cases) {
    books.execute("Delete From TaxCodeDetails; Delete From General_Ledger");
    given_tax(books, each.authorities);
    tax(each.amount, each.percent, each.type);
    ASSERT_TRUE(process(each.lines)) << document.ErrDesc();
    EXPECT_EQ(list({"Account_No", "GL_Debit_Amount", "GL_Credit_Amount"},
                   "General_Ledger Where Account_No Like 'T%' Order By Row_Id"),
              each.ledger);
    EXPECT_NEAR(document.TaxAmount(), each.left, 1e-9);
    EXPECT_EQ(
        list({"GL_Debit_Amount"}, "General_Ledger Where Account_No='ACCRUAL'"),
        std::to_string(static_cast<int>(each.lines.size()) * 1000 + static_cast<int>(each.amount)));
  }
}

TEST_P(ReturnProcessingTest, a_ledger_line_is_told_so) {
  Script script;
  const auto replaced = scripted("OmbrixAccounts.GeneralLedger", script);
  rates("INV", 3.6);
  tax(7, 5);  // without authorities: only the accrual sees it
  ASSERT_TRUE(process({returned()})) << document.ErrDesc();
  const std::string head =
      "new\nAdoConnectionObject=object\nDocumentNo=AABRPR1\nDocumentPrefix=PR\nGLDate=2024-03-01\n"
      "CurrencyCode=AED\nCurrencySymbol=Dh\n";
  const std::string tail = "ForeignCurrencyFlag=True\nLastUpdate=2024-03-05\nGLInsert()\n";
  EXPECT_EQ(script.told(),
            head +
                "GLDescription=Inventory Account  : ItemCode - 1001\nAccountNo=STOCK\n"
                "GLCreditAmount=3600\nGLDebitAmount=0\nForeignCurrencyFlag=True\n"
                "FCGLCreditAmount=1000\nFCGLDebitAmount=0\nLastUpdate=2024-03-05\nGLInsert()\n"
                "COAPosting(STOCK, -3750)\n" +
                head +
                "GLDescription=Purchase Accural : Vendor Code - V001\nGLComments=too wet\n"
                "AccountNo=ACCRUAL\nGLCreditAmount=0\nFCGLCreditAmount=0\nGLDebitAmount=3607\n"
                "FCGLDebitAmount=1007\n" +
                tail + "COAPosting(ACCRUAL, 3757)\n" + head +
                "GLDescription=Exchange Variance \nGLComments=too wet\nAccountNo=VARIANCE\n"
                "GLCreditAmount=150\nFCGLCreditAmount=0\nGLDebitAmount=0\nFCGLDebitAmount=0\n" +
                tail + "COAPosting(VARIANCE, -150)");

  // An empty accrual account takes none of the accounts, and no message says so.
  books.execute("Update Default_Purchase_Preferences Set Pur_Accrual_Account_No=''");
  script.asked.clear();
  EXPECT_TRUE(process({returned()}));
  EXPECT_NE(script.told().find("COAPosting(-3750)"), std::string::npos);
  for (const int refused : {1, 2, 3, 4, 5, 6}) {
    script.calls = 0;
    script.refused_call = refused;
    EXPECT_FALSE(process({returned()})) << refused;
    EXPECT_EQ(document.ErrDesc(), "The component says no.");
  }
}

TEST_P(ReturnProcessingTest, stock_goes_out_of_items_of_type_0_only) {
  Script location, movement;
  const auto locations = scripted("OmbrixInventory.LocationStock", location);
  const auto movements = scripted("OmbrixInventory.StockMovement", movement);
  rates("INV", 3.6);
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

TEST_P(ReturnProcessingTest, each_run_has_its_number_and_all_its_effects) {
  struct {
    bool online, sync, manual;
    double own;
    std::string number, counter;
  } const cases[] = {{true, true, false, 0, "AABRPR1", "2 | 2"},
                     {false, false, false, 0, "AABRPR2", "3 | 3"},
                     {false, true, false, 0, "AABRPRTMP3", "3 | 4"},
                     {false, true, true, 9, "AABRPRTMP4", "10 | 5"},
                     {true, false, true, 500, "AABRPR500", "501 | 6"},
                     {true, false, true, 400, "AABRPR400", "501 | 7"}};
  int ledger_lines = 0;
  for (const auto& each : cases) {
    document.OnlineFlag = each.online;
    document.SyncFlag = each.sync;
    document.DocFlag = each.manual;
    document.manualDocIdentity = each.own;
    document.PurchaseRtnAmount = 7;
    ASSERT_TRUE(create({returned(), returned()}));
    document.LastUpdate = Date(2024, 5, 6);
    ASSERT_TRUE(document.Process_Return()) << document.ErrDesc();
    document.LastUpdate = Date(2024, 3, 5);
    EXPECT_EQ(document.PurchaseRtnNo(), each.number);
    EXPECT_EQ(counter(), each.counter);
    const bool renamed = each.number.find("TMP") == std::string::npos;
    const std::string where = " Where Purchase_Rtn_No='" + each.number + "'";
    EXPECT_EQ(
        list({"Processed_Flag", "Allow_Cancel_Flag", "Last_Update", "Purchase_Rtn_Amount"},
             "Purchase_Return_Master" + where),
        renamed ? "-1 | 0 | 2024-05-06 00:00:00 | 7" : "Null | Null | 2024-03-05 00:00:00 | 7");
    const std::string line = renamed ? "2024-05-06 00:00:00" : "2024-03-05 00:00:00";
    EXPECT_EQ(list({"Last_Update"}, "Purchase_Return_Detail" + where), line + "\n" + line);
    EXPECT_EQ(document.PurchaseRtnAmount(), 2000);
    EXPECT_EQ(document.PurchaseRtnFCAmount(), 2000);
    ledger_lines += 3;
    EXPECT_EQ(books.rows("Select Row_Id From General_Ledger", {"Row_Id"}).size(),
              static_cast<std::size_t>(ledger_lines));
  }
}

TEST_P(ReturnProcessingTest, a_failure_names_its_reason_and_leaves_what_stands) {
  const std::string stock = "STOCK | 0 | 1000";
  struct {
    std::string spoiled, reason, ledger;
    bool renamed;
  } const cases[] = {
      {"Delete From Purchase_Return_Master", "Invalid Purchase Return Number", "", false},
      {"Delete From Document_Prefix Where Document_Prefix='PR'",
       "No counter for document series \"PR\" of company \"AA\", branch \"BR\".", "", false},
      {"Update Purchase_Return_Master Set Processed_Flag=-1", "Already Processed", "", false},
      {"Delete From Purchase_Return_Detail",
       "Error while Processing, Invalid Temporary Purchase Return No.", "", true},
      {"Delete From Currency_Master", "Invalid Currency Code", "", true},
      {"Update Item_Master Set Costing_Type=' '", "Invalid Costing Type", "", true},
      {"Delete From Default_Purchase_Preferences",
       "Set the Default Purchase Accrual account in the Purchase Preferences", "", true},
      {"Update Default_Purchase_Preferences Set Inventory_Account_No=Null", "Invalid use of Null",
       "", true},
      {"Update Default_Purchase_Preferences Set Generate_Debit_Memo=Null", "Invalid use of Null",
       "", true},
      {"Update Default_Account_Preferences Set AP_Account_No=' '",
       "Invalid Accounts Payable Account", stock, true}};
  const auto end = [&] {
    books.execute(
        "Delete From Purchase_Return_Master; Delete From Purchase_Return_Detail;"
        "Delete From General_Ledger; Delete From Document_Prefix;"
        "Delete From Currency_Master; Delete From Item_Master; Delete From Item_Detail;"
        "Delete From Default_Purchase_Preferences;"
        "Delete From Default_Account_Preferences; Delete From Chart_Of_Accounts;"
        "Delete From Vendor_Master; Delete From TaxAuthorities");
    given_return_books(books);
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.spoiled);
    ASSERT_TRUE(create({returned()})) << document.ErrDesc();
    books.execute(each.spoiled);
    EXPECT_FALSE(document.Process_Return());
    EXPECT_EQ(document.ErrDesc(), each.reason);
    EXPECT_EQ(ledger(), each.ledger);
    EXPECT_EQ(document.PurchaseRtnNo(),
              each.reason.starts_with("Error") || !each.renamed ? "AABRPRTMP1" : "AABRPR1");
    EXPECT_EQ(list({"Purchase_Rtn_No"}, "Purchase_Return_Master").ends_with("PR1"), each.renamed);
    EXPECT_EQ(list({"Document_Next_No"}, "Document_Prefix Where Document_Next_No<>1"), "");
    end();
  }
  document.PurchaseRtnNo = "  ";
  EXPECT_FALSE(document.Process_Return());
  EXPECT_EQ(document.ErrDesc(), "Invalid Purchase Return");
  document.PurchaseRtnNo = "x";
  document.AdoConnectionObject = std::make_shared<Connection>();
  EXPECT_FALSE(document.Process_Return());
  EXPECT_EQ(document.ErrDesc(), "Invalid Connection Object");
}

TEST_P(ReturnProcessingTest, a_tax_without_a_rate_fails_in_silence) {
  given_tax(books, {{"FED", 5}});
  tax(50, 0);
  EXPECT_FALSE(process({returned()}));
  EXPECT_EQ(document.ErrDesc(), "");
  EXPECT_EQ(ledger(), "STOCK | 0 | 1000");
  // The property is spent, and the run before left the grid out of the next read.
  EXPECT_EQ(document.TaxAmount(), 50);
  document.PurRetGridName = nullptr;
  EXPECT_TRUE(document.Get_Purchase_Rtn());
  tax(0, 0);
  EXPECT_TRUE(process({returned()})) << document.ErrDesc();
  const auto grid = grid_of({});
  document.PurRetGridName = grid;
  EXPECT_TRUE(document.Get_Purchase_Rtn());
  EXPECT_EQ(grid->Rows(), 2);
  EXPECT_FALSE(document.Process_Return());
  EXPECT_EQ(document.ErrDesc(), "Already Processed");
}

TEST_P(ReturnProcessingTest, a_sync_run_without_lines_posts_the_tax_to_no_account) {
  Script script;
  const auto replaced = scripted("OmbrixAccounts.GeneralLedger", script);
  ASSERT_TRUE(create({returned()}));
  books.execute("Delete From Purchase_Return_Detail");
  document.OnlineFlag = false;
  document.SyncFlag = true;
  tax(50, 5);
  EXPECT_TRUE(document.Process_Return()) << document.ErrDesc();
  EXPECT_TRUE(script.told().ends_with("GLInsert()\nCOAPosting(50)")) << script.told();
  EXPECT_EQ(script.calls, 2);
}

/// Layers of AA1001 before and after a return of pieces, by day.
TEST_P(ReturnProcessingTest, layers_are_taken_in_the_order_of_the_costing_type) {
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
