#include <memory>

#include "ombrix/dialogue.h"

#include "cash/cash_purchase_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

class CashPurchasePostingTest : public CashPurchaseFixture {
 protected:
  std::string payables() const {
    return listing(books, {"Account_No", "APL_Credit_Amount", "FC_APL_Credit_Amount"},
                   "Accounts_Payable_Ledger Order By Row_Id");
  }
  std::string bank() const {
    return listing(books, {"PDC_No", "Bank_ID", "Cheque_Amount", "Cleared", "Status"},
                   "PDC_Master Order By PDC_Identity");
  }
};
OMBRIX_ON_EACH_DATABASE(CashPurchasePostingTest);

/// The boxes that a user would have seen.
class Boxes final : public Dialogue {
 public:
  void message(std::string_view text, std::string_view) override { shown.append(text); }
  std::string input(std::string_view, std::string_view, std::string_view) override { return ""; }
  std::string shown;
};

TEST_P(CashPurchasePostingTest, cash_credits_the_cash_account) {
  purchase.CashPurInvDiscPercent = 10;
  purchase.CashPurInvFCDiscAmount = 100;
  purchase.CashPurInvDiscAmount = 100;
  tax();
  ASSERT_TRUE(process({bought({{13, "1000"}, {14, "1000"}})})) << purchase.ErrDesc();
  EXPECT_EQ(journal(), "BUY | 900 | 0\nCASH | 0 | 1000\nTAX A | 66.67 | 0\nTAX B | 33.33 | 0");
  EXPECT_EQ(balances(), "BUY | 900\nCASH | -900\nTAX A | -66.67\nTAX B | -33.33");
  EXPECT_EQ(
      journal({"Document_No", "GL_Description", "GL_Comments", "FC_GL_Credit_Amount"}),
      "AABRCPI7 | Inventory Account : Item - 1001 - Ref.No:V-77- Ref.Date:2024-02-28 | by hand"
      " | 0\n"
      "AABRCPI7 | Cash Purchase Account | by hand | 1000\n"
      "AABRCPI7 | Purchase Tax for 7 Dated 01/03/2024 | by hand | 0\n"
      "AABRCPI7 | Purchase Tax for 7 Dated 01/03/2024 | by hand | 0");
  EXPECT_EQ(payables() + bank(), "");
}

TEST_P(CashPurchasePostingTest, the_type_of_payment_picks_the_road) {
  struct {
    std::string_view type, account, payables, bank, cheques;
  } const cases[] = {{" cash ", "CASH", "", "", "5\n1001\n1"},
                     {"CHEQUE", "PAYABLE", "PAYABLE | 400 | 400",
                      "AABRPDC21 | BANK | 400 | No | In Transit", "5\n1002\n1"},
                     {"credit card", "PAYABLE", "PAYABLE | 400 | 400",
                      "AABRPDC22 | CARDS | 400 | No | In Transit", "5\n1002\n1"},
                     {" Cheque", "PAYABLE", "PAYABLE | 400 | 400",
                      "AABRPDC23 | CARDS | 300 | Yes | Cleared", "5\n1002\n1"},
                     {"Barter", "", "", "", "5\n1002\n1"}};
  tax();
  purchase.TaxCode = "none";
  for (const auto& each : cases) {
    purchase.Payment_Type = std::string(each.type);
    ASSERT_TRUE(process({bought()})) << purchase.ErrDesc();
    const std::string account(each.account);
    EXPECT_EQ(journal(), "BUY | 300 | 0" + (account.empty() ? "" : "\n" + account + " | 0 | 400"));
    EXPECT_EQ(payables(), each.payables);
    EXPECT_EQ(bank(), each.bank);
    EXPECT_EQ(next_cheques(), each.cheques) << each.type;
    books.execute(
        "Delete From General_Ledger; Delete From Accounts_Payable_Ledger;"
        " Delete From PDC_Master");
  }
  EXPECT_EQ(balances(), "BUY | 1500\nCASH | -300\nPAYABLE | -900");
  EXPECT_EQ(counters("PDC"), "24 | 1");
}

TEST_P(CashPurchasePostingTest, an_offline_run_makes_no_entry_in_the_bank) {
  purchase.OnlineFlag = false;
  purchase.Payment_Type = "Cheque";
  ASSERT_TRUE(process({bought()})) << purchase.ErrDesc();
  EXPECT_EQ(payables(), "PAYABLE | 300 | 300");
  EXPECT_EQ(bank() + next_cheques(), "5\n1001\n1");
  purchase.SyncFlag = true;
  ASSERT_TRUE(process({bought()})) << purchase.ErrDesc();
  EXPECT_EQ(bank() + next_cheques(), "AABRPDC21 | BANK | 300 | No | In Transit5\n1002\n1");
}

TEST_P(CashPurchasePostingTest, lines_go_unrounded_and_sums_rounded) {
  const Cells odd{{13, "100.004"}, {14, "100.004"}};
  ASSERT_TRUE(process({bought(odd), bought(odd)})) << purchase.ErrDesc();
  EXPECT_EQ(journal(), "BUY | 100.004 | 0\nBUY | 100.004 | 0\nCASH | 0 | 200");
  EXPECT_EQ(purchase.CashPurInvAmount(), 200);
  EXPECT_EQ(purchase.CashPurInvFCAmount(), 200);
}

TEST_P(CashPurchasePostingTest, one_ledger_serves_all_lines_and_keeps_its_members) {
  Script ledger;
  const auto registered = scripted("OmbrixAccounts.GeneralLedger", ledger);
  purchase.ForeignCurrencyFlag = true;
  purchase.ExchangeRate = 1.5;
  purchase.CashPurInvComments = "";
  ASSERT_TRUE(process({bought({{21, "1"}}), bought({{1, ""}, {3, " Ink "}})}))
      << purchase.ErrDesc();
  const std::string credited =
      "GLDebitAmount=0\nFCGLDebitAmount=0\nGLCreditAmount=450\nFCGLCreditAmount=300\n";
  const std::string debited =
      "GLDebitAmount=450\nFCGLDebitAmount=300\nGLCreditAmount=0\nFCGLCreditAmount=0\n";
  EXPECT_EQ(
      ledger.told(),
      "new\nAdoConnectionObject=object\nGLDate=2024-03-01\nDocumentNo=AABRCPI7\nDocumentPrefix="
      "CPI\n"
      "CurrencyCode=AED\nCurrencySymbol=Dh\nForeignCurrencyFlag=True\nLastUpdate=2024-03-05\n"
      "AccountNo=BUY\nGLDescription=Inventory Account : Item - 1001 - Ref.No:V-77"
      "- Ref.Date:2024-02-28\n" +
          debited +
          "GLInsert()\nCOAPosting(BUY, 450)\n"
          "AccountNo=FREE\nGLDescription=Purchase FOC Account : Item - 1001\n" +
          credited +
          "GLInsert()\nCOAPosting(FREE, -450)\n"
          "AccountNo=BUY\nGLDescription=Inventory Account : Item - Ink - Ref.No:V-77"
          "- Ref.Date:2024-02-28\n" +
          debited +
          "GLInsert()\nCOAPosting(BUY, 450)\n"
          "new\nAdoConnectionObject=object\nDocumentNo=AABRCPI7\nDocumentPrefix=CPI\n"
          "GLDate=2024-03-01\nCurrencyCode=AED\nCurrencySymbol=Dh\n"
          "GLDescription=Cash Purchase Account\nGLComments=\nAccountNo=CASH\n"
          "GLCreditAmount=900\nFCGLCreditAmount=600\nGLDebitAmount=0\nFCGLDebitAmount=0\n"
          "ForeignCurrencyFlag=True\nLastUpdate=2024-03-05\nGLInsert()\nCOAPosting(CASH, -900)");

  ledger = {};
  purchase.CashPurInvComments = "kept";
  purchase.Purchase_Type = "Costing Expense";
  ASSERT_TRUE(process({bought({{2, "V-7"}})})) << purchase.ErrDesc();
  EXPECT_EQ(ledger.asked[9], "AccountNo=BUY");
  EXPECT_EQ(ledger.asked[10],
            "GLDescription=Inventory Account : Item - 1001 : V-7 - Ref.No:V-77"
            "- Ref.Date:2024-02-28");
  EXPECT_EQ(ledger.asked[15], "GLComments=kept");
  for (const int refused : {1, 2, 3, 4, 5, 6}) {
    ledger = {.refused_call = refused};
    EXPECT_FALSE(process({bought({{21, "1"}})}));
    EXPECT_EQ(purchase.ErrDesc(), ledger.reason);
    EXPECT_EQ(ledger.calls, refused);
  }
}

TEST_P(CashPurchasePostingTest, the_payable_sets_its_members_in_order) {
  Script payable, preferences;
  const auto first = scripted("OmbrixAccounts.AccountsPayable", payable);
  purchase.Payment_Type = "Credit Card";
  tax();
  ASSERT_TRUE(process({bought({{14, "200"}})})) << purchase.ErrDesc();
  EXPECT_EQ(payable.told(),
            "new\nAdoConnectionObject=object\nAccountNo=PAYABLE\nAPLDate=2024-03-01\n"
            "APLDescription=Accounts Payable : Vendor Code - V001\nAPLComments=by hand\n"
            "APLCreditAmount=300\nFCAPLCreditAmount=300\nAPLDebitAmount=0\nFCAPLDebitAmount=0\n"
            "DocumentNo=AABRCPI7\nDocumentPrefix=CPI\nCurrencyCode=AED\nCurrencySymbol=Dh\n"
            "VendorCode=AAV001\nLastUpdate=2024-03-05\nRefno=V-77\nRefDate=2024-02-28\n"
            "AP_Insert_Transaction()");
  EXPECT_EQ(listing(books, {"GL_Description"}, "General_Ledger Where Account_No='PAYABLE'"),
            "Accounts Payable : Vendor Code - V001");
  const auto second = scripted("OmbrixAccounts.AccountPreferences", preferences);
  EXPECT_FALSE(process({bought()}));
  EXPECT_EQ(purchase.ErrDesc(), "Invalid Accounts Payable Account");
  EXPECT_EQ(preferences.told(), "new\nConnectionString=" + purchase.ConnectionString() +
                                    "\nGet_Account_Preferences(AA, BR)");
}

TEST_P(CashPurchasePostingTest, the_bank_is_told_by_the_type_of_payment) {
  Script bank;
  const auto registered = scripted("OmbrixBank.PDC", bank);
  ASSERT_TRUE(purchase.Get_Default_Accounts());
  purchase.CashPurInvNo = "AABRCPI7";
  purchase.TaxAmount = 100;
  purchase.CashPurInvFCAmount = 80;
  purchase.ForeignCurrencyFlag = true;
  const std::string head =
      "new\nCompanyPrefix=AA\nBranchPrefix=BR\nDocumentPrefix=PDC\nAdoConnectionObject=object\n"
      "TransactionType=Cash Purchase\n";
  const std::string no_card = "CreditCardNo=\nCreditCardName=\nCreditCardCode=\n";
  const std::string card = "CreditCardNo=4000\nCreditCardName=A Buyer\nCreditCardCode=VC\n";
  const std::string vendor = "CustomerID=AAV001\nCustomerName=Orchard Traders\n";
  const std::string source = "SourceNo=AABRCPI7\nSourcePrefix=CPI\n";
  const std::string currency = "CurrencyCode=AED\nForeignCurrencyFlag=True\nChequeFCAmount=80\n";
  const std::string tail = "LastUpdate=2024-03-05\nCreate_PDC()";
  const struct {
    std::string type, told, cheques;
  } cases[] = {
      {"Cheque",
       head + "BAnkID=BANK\nBankName=First Bank\nChequeNo=1000\nChequeAmount=400\nCleared=No\n" +
           vendor + "PDCDate=2024-03-01\nPDCDueDate=2024-04-01\n" + no_card + source +
           "Status=In Transit\n" + currency + tail,
       "5\n1002\n1"},
      {"CREDIT card",
       head + "BAnkID=CARDS\nBankName=First Bank\nChequeNo=1000\nChequeAmount=400\nCleared=No\n" +
           vendor + "PDCDate=2024-04-01\nPDCDueDate=2024-04-01\n" + card + source +
           "Status=In Transit\n" + currency + tail,
       "5\n1002\n1"},
      {"Cheque ",
       head + "BAnkID=CARDS\nBankName=First Bank\nChequeNo=1000\nChequeAmount=300\n" + vendor +
           "PDCDate=2024-03-01\nPDCDueDate=2024-04-01\n" + no_card + source + "Status=Cleared\n" +
           currency + "Cleared=Yes\n" + tail,
       "5\n1002\n1"}};
  for (const auto& each : cases) {
    bank = {};
    purchase.Payment_Type = each.type;
    EXPECT_TRUE(purchase.Cheque_Process()) << purchase.ErrDesc();
    EXPECT_EQ(bank.told(), each.told);
    EXPECT_EQ(next_cheques(), each.cheques);
    bank = {.refused_call = 1};
    EXPECT_FALSE(purchase.Cheque_Process());
    EXPECT_EQ(purchase.ErrDesc(), bank.reason);
    EXPECT_EQ(next_cheques(), each.cheques);
  }
  std::string unknown = "NONE";
  EXPECT_TRUE(purchase.Incerase_Cheque_No(unknown));
  EXPECT_EQ(next_cheques(), "5\n1002\n1");
}

TEST_P(CashPurchasePostingTest, what_is_not_set_up_is_named) {
  const auto boxes = std::make_shared<Boxes>();
  set_dialogue(boxes);
  struct {
    std::string_view spoilt, payment, reason, posted;
  } const cases[] = {
      {"Update Default_Account_Preferences Set AP_Account_No=' '", "Cheque",
       "Invalid Accounts Payable Account", "BUY | 300 | 0"},
      {"Update Default_Account_Preferences Set Cash_Memo_Account_No=' '", "Cash",
       "Invalid Default Cash Purchase Account", "BUY | 300 | 0"},
      {"Update Default_Purchase_Preferences Set Cash_Purchase_Account_No=Null", "Cheque",
       "Invalid Default Inventoty Account. Set Default Accounts in the Purchase Preferences", ""},
      {"Delete From Default_Purchase_Preferences Where Company_Prefix='AA'", "Cash",
       "Set the Purchase default settings in the Purchase Preferences", ""},
      {"Delete From Default_Account_Preferences", "Cash", "Set the Default Account Preferences",
       ""}};
  for (const auto& each : cases) {
    EXPECT_EQ(boxes->shown, "");
    books.execute(each.spoilt);
    purchase.Payment_Type = std::string(each.payment);
    EXPECT_FALSE(process({bought()}));
    EXPECT_EQ(purchase.ErrDesc(), each.reason);
    EXPECT_EQ(journal(), each.posted);
    books.execute("Delete From General_Ledger");
  }
  EXPECT_EQ(boxes->shown, "Please Assign the Default Purchase Preferences Accounts");
  set_dialogue(nullptr);
  EXPECT_FALSE(purchase.Get_Default_Accounts());
}

}  // namespace
}  // namespace ombrix::testing
