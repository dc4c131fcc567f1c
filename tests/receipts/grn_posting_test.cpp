#include "receipts/grn_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

class GRNPostingTest : public GRNFixture {
 protected:
  void SetUp() override {
    GRNFixture::SetUp();
    receipt.TaxCode = "VAT";
    receipt.TaxPercent = 15;
  }
  /// "account debit credit", as the journal has them.
  std::string postings() const {
    return journal({"Account_No", "GL_Debit_Amount", "GL_Credit_Amount"});
  }
};
OMBRIX_ON_EACH_DATABASE(GRNPostingTest);

const Cells kTaxable{{24, "Taxable"}};
const Cells kFree{{21, "1"}};

TEST_P(GRNPostingTest, each_kind_of_line_has_its_credit) {
  books.execute("Update LPO_Master Set LPO_Discount_Percent=10");
  receipt.TaxAmount = 50;
  receipt.TaxCode = "none";
  ASSERT_TRUE(process({received(), received(kTaxable), received(kFree)})) << receipt.ErrDesc();
  EXPECT_EQ(journal({"Account_No", "GL_Debit_Amount", "GL_Credit_Amount", "GL_Description"}),
            "INVENTORY | 270 | 0 | Inventory Account : Item Code - 1001\n"
            "ACCRUAL | 0 | 270 | Purchase Accrual : Item Code - 1001\n"
            "INVENTORY | 270 | 0 | Inventory Account : Item Code - 1001\n"
            "ACCRUAL | 0 | 320 | Purchase Accrual : Item Code - 1001\n"
            "INVENTORY | 270 | 0 | Inventory Account : Item Code - 1001\n"
            "FREE | 0 | 320 | FOC Purchase Account : Item Code - 1001");
  EXPECT_EQ(balances(), "ACCRUAL | -590\nFREE | -320\nINVENTORY | 810");
}

TEST_P(GRNPostingTest, a_fixed_asset_is_named_as_one) {
  books.execute("Update LPO_Master Set Purchase_Type='Fixed Asset'");
  ASSERT_TRUE(process({received({{18, " ASSETS "}}), received({{2, ""}, {21, "1"}})}));
  EXPECT_EQ(journal({"Account_No", "GL_Description"}),
            "ASSETS | Fixed Asset Account : Asset ID - 1001\n"
            "ACCRUAL | Purchase Accrual : Fixed Asset ID - 1001\n"
            "INVENTORY | Fixed Asset Account : Asset ID - \n"
            "FREE | FOC Purchase Account : Fixed Asset ID - ");
}

TEST_P(GRNPostingTest, the_home_amount_comes_from_the_foreign_one) {
  receipt.ForeignCurrencyFlag = true;
  receipt.ExchangeRate = 3.672;
  books.execute("Update LPO_Master Set LPO_Discount_Percent=3");
  ASSERT_TRUE(receipt.Create_GRN());
  books.execute("Update Goods_Receive_Detail Set GRN_Item_Amount=1, GRN_FC_Item_Amount=33.33");
  ASSERT_TRUE(receipt.ProcessGRN()) << receipt.ErrDesc();
  // Round(122.38776) = 122.39, less Round(3.6717); 33.33 less Round(0.9999).
  EXPECT_EQ(journal({"GL_Debit_Amount", "FC_GL_Debit_Amount", "GL_Credit_Amount",
                     "FC_GL_Credit_Amount", "Foreign_Currency_Flag"}),
            "118.72 | 32.33 | 0 | 0 | -1\n0 | 0 | 118.72 | 32.33 | -1");
  EXPECT_EQ(balances(), "ACCRUAL | -118.72\nINVENTORY | 118.72");

  // The other kind of order has no discount of its own here.
  receipt.GRNRefDocumentNo = "AABRIPO1";
  receipt.GRNRefDocumentPrefix = "OPO";
  ASSERT_TRUE(process({received()})) << receipt.ErrDesc();
  EXPECT_EQ(journal({"FC_GL_Debit_Amount"}), "32.33\n0\n300\n0");
}

TEST_P(GRNPostingTest, a_line_sets_its_members_in_order) {
  Script ledger;
  const auto registered = scripted("OmbrixAccounts.GeneralLedger", ledger);
  receipt.ForeignCurrencyFlag = true;
  receipt.GRNNo = "AABRGRN9";
  std::string description = "text", account = "ACC", side = "Credit";
  double home = 12.5, foreign = 4;
  ASSERT_TRUE(receipt.GL_Posting(description, account, home, foreign, side));
  EXPECT_EQ(home, -12.5);
  const std::string head =
      "new\nAdoConnectionObject=object\nDocumentNo=AABRGRN9\nDocumentPrefix=GRN\n"
      "GLDate=2024-03-01\nCurrencyCode=AED\nCurrencySymbol=Dh\nGLDescription=text\n"
      "GLComments=left at the gate\nAccountNo=ACC\n";
  EXPECT_EQ(ledger.told(), head +
                               "GLCreditAmount=12.5\nFCGLCreditAmount=4\nGLDebitAmount=0\n"
                               "FCGLDebitAmount=0\nForeignCurrencyFlag=True\n"
                               "LastUpdate=2024-03-05\nGLInsert()\nCOAPosting(ACC, -12.5)");
  ledger = {.refused_call = 2};
  home = 12.5;
  side = "credit";  // anything but "Credit" is a debit
  EXPECT_FALSE(receipt.GL_Posting(description, account, home, foreign, side));
  EXPECT_EQ(receipt.ErrDesc(), ledger.reason);
  EXPECT_EQ(ledger.asked[11], "FCGLCreditAmount=0");
  EXPECT_EQ(ledger.asked[12], "GLDebitAmount=12.5");
  EXPECT_EQ(ledger.asked.back(), "COAPosting(ACC, 12.5)");
  ledger = {.refused_call = 1};
  side = "Credit";
  EXPECT_FALSE(receipt.GL_Posting(description, account, home, foreign, side));
  EXPECT_EQ(home, 12.5);
}

TEST_P(GRNPostingTest, accounts_that_are_not_set_are_named) {
  ASSERT_TRUE(receipt.Create_GRN());
  struct {
    std::string_view column, reason;
  } const cases[] = {
      {"Discount_Account_No", "Set the Default Discount Account in the Purchase Preferences"},
      {"FOC_Account_No", "Set the Default FOC Purchase Account in the Purchase Preferences"},
      {"Pur_Accrual_Account_No",
       "Set the Default Purchase Accrual account in the Purchase Preferences"}};
  for (const auto& each : cases) {
    books.execute("Update Default_Purchase_Preferences Set " + std::string(each.column) + "=Null");
    EXPECT_FALSE(receipt.GRN_Posting());
    EXPECT_EQ(receipt.ErrDesc(), each.reason);
  }
  EXPECT_EQ(postings(), "");
  books.execute("Update Goods_Receive_Detail Set Account_No=Null");
  books.execute("Delete From Default_Purchase_Preferences");
  EXPECT_FALSE(receipt.GRN_Posting());
  EXPECT_EQ(receipt.ErrDesc(),
            "Invalid Default Inventory Account. Set Default Accounts in the Purchase Preferences");
  // Without preferences the credit goes out without an account, and the ledger refuses it.
  books.execute("Update Goods_Receive_Detail Set Account_No='INVENTORY'");
  EXPECT_FALSE(receipt.GRN_Posting());
  EXPECT_EQ(receipt.ErrDesc(), "Ledger line: AccountNo is empty.");
  EXPECT_EQ(postings(), "INVENTORY | 300 | 0");
}

TEST_P(GRNPostingTest, authorities_share_the_tax_on_the_side_that_its_type_names) {
  receipt.ForeignCurrencyFlag = true;
  receipt.GRNNo = "AABRGRN912";
  struct {
    std::string_view type, journal, balances;
  } const cases[] = {
      {"grn", "TAX A | 66.67 | 0\nTAX B | 33.33 | 0", "TAX A | -66.67\nTAX B | -33.33"},
      {" GRN", "TAX A | 0 | 66.67\nTAX B | 0 | 33.33", "TAX A | 66.67\nTAX B | 33.33"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.type);
    books.execute("Delete From General_Ledger; Update Chart_Of_Accounts Set Current_Balance=0");
    receipt.TaxType = std::string(each.type);
    receipt.TaxAmount = 100;
    ASSERT_TRUE(receipt.GRN_Tax_Posting()) << receipt.ErrDesc();
    EXPECT_EQ(postings(), each.journal);
    EXPECT_EQ(balances(), each.balances);
    EXPECT_EQ(receipt.TaxAmount(), 0);
  }
  EXPECT_EQ(journal({"GL_Description", "Document_Prefix", "FC_GL_Credit_Amount",
                     "Foreign_Currency_Flag", "GL_Comments"}),
            "Purchase Tax for 912 Dated 01/03/2024 | GRN | 66.67 | 0 | left at the gate\n"
            "Purchase Tax for 912 Dated 01/03/2024 | GRN | 33.33 | 0 | left at the gate");
  EXPECT_EQ(count(books, "General_Ledger Where Last_Update='" +
                             Date::now().midnight().stored_text() + "'"),
            "2");
}

TEST_P(GRNPostingTest, what_the_tax_tables_lack) {
  receipt.GRNNo = "AABRABC9";
  receipt.DocumentPrefix = "";
  receipt.TaxAmount = 100;
  books.execute("Delete From TaxAuthorities Where Code='A'");
  ASSERT_TRUE(receipt.GRN_Tax_Posting());
  EXPECT_EQ(postings(), "TAX B | 0 | 33.33");
  EXPECT_EQ(receipt.TaxAmount(), 100);  // not every authority had its share
  EXPECT_EQ(receipt.DocumentPrefix(), "ABC");

  books.execute("Update TaxAuthorities Set accountno=' '");
  EXPECT_FALSE(receipt.GRN_Tax_Posting());
  EXPECT_EQ(receipt.ErrDesc(), "Invalid Account Number for Authority -'State'");
  receipt.TaxPercent = 0;
  EXPECT_FALSE(receipt.GRN_Tax_Posting());  // a division that fails without a word
  EXPECT_EQ(receipt.ErrDesc(), "Invalid Account Number for Authority -'State'");
  receipt.TaxAmount = 0;
  EXPECT_TRUE(receipt.GRN_Tax_Posting());
  receipt.TaxAmount = 100;
  receipt.TaxCode = "none";
  EXPECT_TRUE(receipt.GRN_Tax_Posting());
  EXPECT_EQ(postings(), "TAX B | 0 | 33.33");
}

TEST_P(GRNPostingTest, what_was_posted_before_a_refusal_stays) {
  Script ledger;
  const auto registered = scripted("OmbrixAccounts.GeneralLedger", ledger);
  receipt.TaxAmount = 100;
  for (const int refused : {5, 6, 9, 10}) {  // third line, its balance, first tax line, its balance
    ledger = {.refused_call = refused};
    EXPECT_FALSE(process({received(), received()}));
    EXPECT_EQ(ledger.calls, refused);
    EXPECT_EQ(receipt.ErrDesc(), ledger.reason);
    EXPECT_EQ(counters().substr(0, 1), "7");
    books.execute("Update Goods_Receive_Master Set GRN_No='x" + std::to_string(refused) +
                  "' Where GRN_No='AABRGRN7'");
    books.execute("Delete From Goods_Receive_Detail");
  }
}

}  // namespace
}  // namespace ombrix::testing
