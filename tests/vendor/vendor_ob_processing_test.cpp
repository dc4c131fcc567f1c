#include <gtest/gtest.h>

#include "vendor/vendor_fixture.h"

namespace ombrix::testing {
namespace {

class VendorOBProcessingTest : public OnEachDatabase {
 protected:
  void SetUp() override {
    given_accounts(books);
    books.execute(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
        " Document_Next_No) Values ('INV', 'AA', 'BR', 7)");
  }
  /// 100 and 200, entered as `type`.
  void given_lines(const std::string& type = "Credit") {
    fill(balances, books,
         {owed("REF1", "100", "2023-12-31", "opening"), owed("REF2", "200", "2023-11-30")}, type);
    ASSERT_TRUE(balances.Create_OB()) << balances.ErrDesc();
    books.execute("Update Vendor_OB Set Balance_FCAmount=Balance_Amount / 4, Exchange_Rate=4");
  }
  std::string opening(const std::string& account) const {
    return listing(books, {"Opening_Balance", "Last_Update"},
                   "Chart_Of_Accounts Where Account_No='" + account + "'");
  }
  std::string numbers() const { return listing(books, {"OB_Inv_No", "Last_Update"}, "Vendor_OB"); }
  std::string vendor_balances() const {
    return listing(books, {"Vendor_Balance", "Vendor_Fc_Balance"}, "Vendor_Master");
  }

  purchase::VendorOB balances;
};
OMBRIX_ON_EACH_DATABASE(VendorOBProcessingTest);

TEST_P(VendorOBProcessingTest, a_credit_becomes_processed_invoices_and_payables_credits) {
  given_lines();
  balances.ForeignCurrencyFlag = true;
  ASSERT_TRUE(balances.Process_OB()) << balances.ErrDesc();
  EXPECT_EQ(
      listing(books,
              {"Company_Prefix",
               "Branch_Prefix",
               "Document_Prefix",
               "Purchase_Inv_No",
               "Purchase_Inv_Date",
               "Purchase_Inv_Identity",
               "Vendor_Ref_Invoice_No",
               "Vendor_Ref_Invoice_Date",
               "Vendor_Code",
               "Vendor_name",
               "Foreign_Currency_Flag",
               "Currency_Code",
               "Currency_Symbol",
               "Purchase_Inv_SubTotal",
               "Purchase_Inv_Amount",
               "Balance_Amount",
               "Purchase_Inv_FC_SubTotal",
               "Purchase_Inv_FC_Amount",
               "Balance_FCAmount",
               "Exchange_Rate",
               "Processed_Flag",
               "Purchase_Inv_Comments",
               "Last_Update"},
              "Purchase_Invoice_Master"),
      "AA | BR | INV | AABRINV7 | 2023-12-31 00:00:00 | 7 | REF1 | 2023-12-31 00:00:00 | AAV001 |"
      " Orchard Traders | 0 | USD | $ | 100 | 100 | 100 | 25 | 25 | 25 | 4 | 1 | REF1 : opening |"
      " 2024-03-05 00:00:00\n"
      "AA | BR | INV | AABRINV8 | 2023-11-30 00:00:00 | 8 | REF2 | 2023-11-30 00:00:00 | AAV001 |"
      " Orchard Traders | 0 | USD | $ | 200 | 200 | 200 | 50 | 50 | 50 | 4 | 1 | REF2 |"
      " 2024-03-05 00:00:00");
  EXPECT_EQ(count(books, "Purchase_Invoice_Detail") + count(books, "Payment_Master") +
                count(books, "General_Ledger"),
            "000");
  EXPECT_EQ(listing(books,
                    {"Document_No", "Account_No", "APL_Credit_Amount", "FC_APL_Credit_Amount",
                     "APL_Debit_Amount", "FC_APL_Debit_Amount", "Ref_No"},
                    "Accounts_Payable_Ledger Order By Document_No"),
            "AABRINV7 | PAYABLE | 100 | 25 | 0 | 0 | Null\n"
            "AABRINV8 | PAYABLE | 200 | 50 | 0 | 0 | Null");
  EXPECT_EQ(vendor_balances(), "1300 | 1075");
  EXPECT_EQ(numbers(), "AABRINV7 | 2024-03-05 00:00:00\nAABRINV8 | 2024-03-05 00:00:00");
  EXPECT_EQ(opening("PAYABLE"), "-350 | 2024-03-05 00:00:00");
  EXPECT_EQ(opening("ADVANCE"), "20 | Null");
  EXPECT_EQ(listing(books, {"Document_Next_No"}, "Document_Prefix"), "9");
  EXPECT_FALSE(balances.ForeignCurrencyFlag());
}

TEST_P(VendorOBProcessingTest, any_other_type_becomes_payments_and_payables_debits) {
  for (const char* type : {"Debit", "credit"}) {
    given_lines(type);
    books.execute("Update Vendor_OB Set Currency_Symbol=' $ ', Foreign_Currency_Flag=-1");
    ASSERT_TRUE(balances.Process_OB()) << balances.ErrDesc();
    EXPECT_EQ(balances.CurrencySymbol(), " $ ");
    balances.CurrencySymbol = "$";
  }
  EXPECT_EQ(
      listing(books,
              {"Company_Prefix",   "Branch_Prefix",    "Document_Prefix", "Payment_No",
               "Payment_Date",     "Payment_Identity", "Payment_To_Code", "Payment_To_Name",
               "Payment_To",       "Payment_Type",     "Payment_Status",  "Foreign_Currency_Flag",
               "Currency_Code",    "Currency_Symbol",  "Payment_Amount",  "Payment_FC_Amount",
               "Balance_Amount",   "Balance_FCAmount", "Exchange_Rate",   "Processed_Flag",
               "Payment_Comments", "Last_Update"},
              "Payment_Master Where Payment_No='AABRINV7'"),
      "AA | BR | INV | AABRINV7 | 2023-12-31 00:00:00 | 7 | AAV001 | Orchard Traders | Vendor |"
      " Cash | Processed | -1 | USD | $ | 100 | 25 | 100 | 25 | 4 | 1 | REF1 : opening |"
      " 2024-03-05 00:00:00");
  EXPECT_EQ(listing(books,
                    {"Document_No", "Account_No", "APL_Credit_Amount", "FC_APL_Credit_Amount",
                     "APL_Debit_Amount", "FC_APL_Debit_Amount", "Ref_No", "Ref_Date"},
                    "Accounts_Payable_Ledger Where Document_No='AABRINV8'"),
            "AABRINV8 | ADVANCE | 0 | 0 | 200 | 50 | REF2 | 2023-11-30 00:00:00");
  EXPECT_EQ(count(books, "Payment_Master"), "4");
  EXPECT_EQ(count(books, "Purchase_Invoice_Master"), "0");
  EXPECT_EQ(vendor_balances(), "400 | 850");
  EXPECT_EQ(opening("ADVANCE"), "620 | 2024-03-05 00:00:00");
  EXPECT_EQ(opening("PAYABLE"), "-50 | Null");
}

TEST_P(VendorOBProcessingTest, tells_the_payables_and_the_counter_in_order) {
  given_lines("Debit");
  books.execute("Delete From Vendor_OB Where SL_No=2");
  Script payable;
  {
    const auto payables = scripted("OmbrixAccounts.AccountsPayable", payable);
    ASSERT_TRUE(balances.Process_OB()) << balances.ErrDesc();
  }
  EXPECT_EQ(payable.told(),
            "new\nAdoConnectionObject=object\nCompanyPrefix=AA\nBranchPrefix=BR\n"
            "DocumentPrefix=INV\nForeignCurrencyFlag=False\nVendorCode=AAV001\n"
            "DocumentNo=AABRINV7\nAPLDate=2023-12-31\nAccountNo=ADVANCE\n"
            "APLDescription=Vendor Opening Balance Vendor Code-V001\n"
            "APLComments=REF1 : opening\nAPLCreditAmount=0\nFCAPLCreditAmount=0\n"
            "APLDebitAmount=100\nFCAPLDebitAmount=25\nCurrencyCode=USD\nCurrencySymbol=$\n"
            "LastUpdate=2024-03-05\nRefno=REF1\nRefDate=2023-12-31\nAP_Insert_Transaction()");

  Script counter, preferences;
  const auto counters = scripted("OmbrixSystem.CounterTransaction", counter);
  counter.refused_call = 1;
  EXPECT_FALSE(balances.Process_OB());
  EXPECT_EQ(balances.ErrDesc(), "The component says no.");
  EXPECT_EQ(counter.told(),
            "new\nCompanyPrefix=AA\nBranchPrefix=BR\nDocumentPrefix=INV\nSkipChecking=True\n"
            "Get_Last_Counter(object)");
  const auto branch = scripted("OmbrixAccounts.AccountPreferences", preferences);
  EXPECT_FALSE(balances.Process_OB());
  EXPECT_EQ(balances.ErrDesc(), "Invalid Accounts Payable Account");
  EXPECT_EQ(preferences.told(), "new\nConnectionString=" + books.text() +
                                    "\nBranchPrefix=BR\nCompanyPrefix=AA\n"
                                    "Get_Account_Preferences(AA, BR)");
}

TEST_P(VendorOBProcessingTest, opens_a_series_that_has_no_row) {
  given_lines();
  balances.DocumentPrefix = "OPN";
  ASSERT_TRUE(balances.Process_OB()) << balances.ErrDesc();
  EXPECT_EQ(listing(books, {"OB_Inv_No"}, "Vendor_OB"), "AABROPN1\nAABROPN2");
}

TEST_P(VendorOBProcessingTest, a_sync_run_leaves_the_chart_alone) {
  given_lines();
  balances.SyncFlag = true;
  ASSERT_TRUE(balances.Process_OB());
  EXPECT_EQ(opening("PAYABLE"), "-50 | Null");
  EXPECT_EQ(vendor_balances(), "1300 | 1075");
}

TEST_P(VendorOBProcessingTest, a_second_run_makes_second_documents) {
  given_lines();
  ASSERT_TRUE(balances.Process_OB() && balances.Process_OB()) << balances.ErrDesc();
  EXPECT_EQ(count(books, "Purchase_Invoice_Master"), "4");
  EXPECT_EQ(listing(books, {"OB_Inv_No"}, "Vendor_OB"), "AABRINV9\nAABRINV10");
  EXPECT_EQ(vendor_balances(), "1600 | 1150");
  EXPECT_EQ(opening("PAYABLE"), "-650 | 2024-03-05 00:00:00");
}

TEST_P(VendorOBProcessingTest, without_lines_the_chart_is_stamped_all_the_same) {
  fill(balances, books, {}, "Debit");
  EXPECT_TRUE(balances.Process_OB()) << balances.ErrDesc();
  EXPECT_EQ(opening("ADVANCE"), "20 | 2024-03-05 00:00:00");
  EXPECT_EQ(told_calls(books, [&] { balances.Process_OB(); }),
            (std::vector<std::string>{
                "object (1,3) Select * from Vendor_OB Where Vendor_Code='AAV001' And OBType ="
                " 'Debit' and branch_prefix='BR' order by SL_No",
                "object (3,3) Select * from Chart_Of_Accounts Where Account_No='ADVANCE'"}));
}

TEST_P(VendorOBProcessingTest, a_failure_on_the_second_line_keeps_the_first) {
  given_lines();
  books.execute("Update Vendor_OB Set Currency_Code=Null Where SL_No=2");
  EXPECT_FALSE(balances.Process_OB());
  EXPECT_EQ(balances.ErrDesc(), "Invalid use of Null");
  books.execute("Update Vendor_OB Set Currency_Code='USD'");
  Script payable;
  payable.refused_call = 2;
  {
    const auto payables = scripted("OmbrixAccounts.AccountsPayable", payable);
    EXPECT_FALSE(balances.Process_OB());
  }
  EXPECT_EQ(balances.ErrDesc(), "The component says no.");
  // The refused entry leaves its invoice, and its number behind that invoice free.
  EXPECT_EQ(listing(books, {"Purchase_Inv_No"}, "Purchase_Invoice_Master"),
            "AABRINV7\nAABRINV8\nAABRINV9");
  EXPECT_EQ(listing(books, {"OB_Inv_No"}, "Vendor_OB"), "AABRINV8\nNull");
  EXPECT_EQ(listing(books, {"Document_Next_No"}, "Document_Prefix"), "9");
  EXPECT_EQ(opening("PAYABLE"), "-50 | Null");
}

TEST_P(VendorOBProcessingTest, what_is_missing_is_told_in_one_order) {
  purchase::VendorOB blank;
  const auto refused = [&](const std::string& message) {
    EXPECT_FALSE(blank.Process_OB());
    EXPECT_EQ(blank.ErrDesc(), message);
  };
  refused("Invalid Vendor");
  blank.VendorCode = "AAV001";
  refused("Invalid Opening Balance Type");
  blank.OBType = "Credit";
  EXPECT_EQ(raised_number([&] { blank.Process_OB(); }), 91);
  blank.AdoConnectionObject = std::make_shared<Connection>();
  refused("Invalid Connection.");
  blank.AdoConnectionObject = books.connection();
  refused("No account preferences for company \"\", branch \"\".");
  blank.CompanyPrefix = "AA";
  blank.BranchPrefix = "BR";
  books.execute("Update Default_Account_Preferences Set AP_Account_No=' '");
  refused("Invalid Accounts Payable Account");
  books.execute(
      "Update Default_Account_Preferences Set AP_Account_No='NONE',"
      " Adv_Pmt_Account_No=Null");
  refused("Invalid Advance Payment Account");
  books.execute("Update Default_Account_Preferences Set Adv_Pmt_Account_No='ADVANCE'");
  refused("Error while Processing vendor Opening balance.");
}

}  // namespace
}  // namespace ombrix::testing
