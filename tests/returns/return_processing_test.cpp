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

TEST_P(ReturnProcessingTest, statements_and_their_roads_are_these) {
  ASSERT_TRUE(document.Create_Purchase_Rtn());
  document.DocFlag = true;
  document.manualDocIdentity = 9;
  const auto numbered = [](const std::string& table, const std::string& number) {
    return "Select * from Purchase_Return_" + table + " Where Purchase_Rtn_No='" + number + "'";
  };
  EXPECT_EQ(
      statements([&] { return document.Process_Return(); }),
      (std::vector<std::string>{
          "text (1,3,-1) " + numbered("Master", "AABRPRTMP1"),
          "(1,3,-1) " + numbered("Master", "AABRPRTMP1"),
          "(3,3,-1) " + numbered("Detail", "AABRPRTMP1"),
          "(1,3,-1) Select * from Currency_Master Where Currency_Code='AED'",
          "(3,3,-1) " + numbered("Detail", "AABRPR9"),
          "(1,3,-1) Select Unit_Qty From Item_Detail where Item_Detail.Item_Code ='AA1001' and"
          " Item_Detail.Unit_Name='Pcs'",
          "(1,3,-1) Select * from Purchase_Log where Item_Code='AA1001' and branch_Prefix='BR' "
          " And Total_Purchase_Qty - Sold_Qty > 0 Order by Purchase_Log_Date Asc",
          "(1,3,-1) Select * from Item_Master where Item_Code='AA1001'",
          "(1,3,-1) Select Inventory_Account_No, Pur_Accrual_Account_No ,"
          " FOC_Account_No,Pur_Variance_Account_No,Generate_Debit_Memo from"
          " Default_Purchase_Preferences Where Branch_Prefix='BR'",
          "text (1,3,-1) select TaxAuthorityCode,TaxAuthorityName,TaxAuthorityRate from"
          " TaxCodeDetails where TaxCode=''",
          "(1,3,-1) Select Document_Next_No, Last_Update From Document_Prefix Where"
          " Document_Prefix='PR' and Company_Prefix='AA' and Branch_Prefix='BR'"}));
  books.execute("Update Item_Master Set Costing_Type='LIFO'");
  document.manualDocIdentity = 10;
  ASSERT_TRUE(document.Create_Purchase_Rtn());
  EXPECT_EQ(statements([&] { return document.Process_Return(); }).at(6),
            "(1,3,-1) Select * from Purchase_Log where Item_Code='AA1001' and branch_Prefix='BR'"
            " And Total_Purchase_Qty - Sold_Qty > 0 Order by Purchase_Log_Date Desc");
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

}  // namespace
}  // namespace ombrix::testing
