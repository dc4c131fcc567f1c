#include "invoices/purchase_invoice_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

class PurchaseInvoicePostingTest : public PurchaseInvoiceFixture {};
OMBRIX_ON_EACH_DATABASE(PurchaseInvoicePostingTest);

/// A line billed dearer than it was received, at a unit price that tells so.
Cells dearer(const Cells& own = {}) {
  Cells cells = own;
  cells.merge(Cells{{24, "113"}, {32, "904"}, {34, "246"}});
  return billed(cells);
}

TEST_P(PurchaseInvoicePostingTest, each_kind_of_line_has_its_postings) {
  struct {
    std::string_view source;
    Cells cells;
    std::string_view posted;  // before the payable
  } const cases[] = {
      {"", billed(), "ACCRUAL | 880 | 0 | 240 | 0\n"},
      {"", dearer(), "VARIANCE | 24 | 0 | 6 | 0\nACCRUAL | 904 | 0 | 246 | 0\n"},
      {"", billed({{24, "99"}, {32, "790"}, {31, "10"}, {34, "250"}, {33, "4"}}),
       "VARIANCE | 0 | 80 | 0 | 14\nACCRUAL | 790 | 0 | 250 | 0\n"},
      {"", dearer({{34, "230"}}), "VARIANCE | 24 | 0 | -10 | 0\nACCRUAL | 904 | 0 | 230 | 0\n"},
      // Equal prices, or nothing left behind rounding: no variance, whatever the amounts say.
      {"", dearer({{24, "110"}}), "ACCRUAL | 904 | 0 | 246 | 0\n"},
      {"", dearer({{32, "880.004"}}), "ACCRUAL | 880.004 | 0 | 246 | 0\n"},
      {"", dearer({{30, "1"}}), "VARIANCE | 24 | 0 | 6 | 0\n"},
      {"OPO", dearer(), "ACCRUAL | 904 | 0 | 246 | 0\n"},
      {"LPO", billed({{32, "900"}, {31, "100"}, {33, "40"}}), "ACCRUAL | 800 | 0 | 200 | 0\n"},
      {"OPO", billed({{32, "900"}, {31, "100"}, {33, "40"}}), "ACCRUAL | 900 | 0 | 240 | 0\n"},
      {"LPO", billed({{35, "7"}, {31, "100"}}), "ACCRUAL | 924 | 0 | 252 | 0\n"},
      {"", billed({{35, "7"}, {31, "100"}}), "ACCRUAL | 924 | 0 | 252 | 0\n"}};
  for (const auto& each : cases) {
    fill(invoice, books, {});
    invoice.ProcessedFlag = false;
    invoice.TaxPercent = 5;
    invoice.RefInvoiceType = std::string(each.source);
    books.execute("Delete From General_Ledger");
    ASSERT_TRUE(process({each.cells})) << invoice.ErrDesc();
    std::string posted = postings();
    for (std::size_t at = posted.find("AABR00"); at != std::string::npos;
         at = posted.find("AABR00")) {
      posted.erase(at, 6);
    }
    EXPECT_EQ(posted, std::string(each.posted) + "PAYABLE | 0 | 880 | 0 | 240");
  }
}

TEST_P(PurchaseInvoicePostingTest, a_whole_run_is_described_and_moves_the_balances) {
  invoice.VendorRefInvoiceNo = "VI/7";
  invoice.VendorRefInvoiceDate = Date(2024, 2, 20);
  invoice.PurchaseInvComments = "ring first";
  invoice.PurchaseInvDiscAmount = 36;
  invoice.PurchaseInvFCDiscAmount = 10;
  invoice.TaxAmount = 50;
  ASSERT_TRUE(process({dearer()})) << invoice.ErrDesc();
  EXPECT_EQ(postings(),
            "AABR00VARIANCE | 74 | 0 | 56 | 0\nAABR00ACCRUAL | 954 | 0 | 296 | 0\n"
            "AABR00DISCOUNT | 0 | 86 | 0 | 60\nAABR00PAYABLE | 0 | 930 | 0 | 290");
  EXPECT_EQ(balances(),
            "AABR00ACCRUAL | 904\nAABR00DISCOUNT | -36\nAABR00PAYABLE | -880\n"
            "AABR00VARIANCE | 24");
  const std::string reference = "- Ref.No:VI/7- Ref.Date:2024-02-20 | AABRPIN7 | ring first";
  EXPECT_EQ(listing(books, {"GL_Description", "Document_No", "GL_Comments"},
                    "General_Ledger Order By Row_Id"),
            "Purchase Variance : VARIANCE" + reference + "\nPurchase Accrual:1001" + reference +
                "\nPurchase Discount:" + reference + "\nAccounts Payable : Vendor Code - V001" +
                reference);
  EXPECT_EQ(listing(books, {"Vendor_Balance", "Vendor_Fc_Balance"}, "Vendor_Master"), "880 | 240");
  EXPECT_EQ((std::vector{invoice.PurchaseInvAmount(), invoice.PurchaseInvFCAmount(),
                         invoice.PurchaseVariance(), invoice.FCPurchaseVariance()}),
            (std::vector<double>{-880, 240, 24, 6}));
  EXPECT_EQ(master({"Purchase_Inv_Amount", "Purchase_Variance", "FC_Purchase_Variance"}),
            "880 | 0 | 0");
}

TEST_P(PurchaseInvoicePostingTest, the_payable_sets_its_members_in_order) {
  Script preferences, payable, ledger;
  const auto first = scripted("OmbrixAccounts.AccountsPayable", payable);
  const auto second = scripted("OmbrixAccounts.GeneralLedger", ledger);
  invoice.VendorRefInvoiceNo = "VI/7";
  invoice.VendorRefInvoiceDate = Date(2024, 2, 20);
  invoice.PurchaseInvComments = "ring first";
  invoice.ForeignCurrencyFlag = true;
  ASSERT_TRUE(process({billed()})) << invoice.ErrDesc();
  EXPECT_EQ(payable.told(),
            "new\nAdoConnectionObject=object\nAccountNo=AABR00PAYABLE\nAPLDate=2024-03-01\n"
            "APLDescription=Accounts Payable : Vendor Code - V001\nAPLCreditAmount=880\n"
            "FCAPLCreditAmount=240\nAPLDebitAmount=0\nFCAPLDebitAmount=0\nDocumentNo=AABRPIN7\n"
            "DocumentPrefix=PIN\nCurrencyCode=AED\nCurrencySymbol=Dh\nVendorCode=AAV001\n"
            "LastUpdate=2024-03-05\nRefno=VI/7\nRefDate=2024-02-20\nAPLComments=ring first\n"
            "CompanyPrefix=AA\nBranchPrefix=BR\nAP_Insert_Transaction()");
  const std::string last = ledger.told();
  EXPECT_EQ(
      last.substr(last.rfind("new\n")),
      "new\nAdoConnectionObject=object\nDocumentNo=AABRPIN7\nDocumentPrefix=PIN\n"
      "GLDate=2024-03-01\nCurrencyCode=AED\nCurrencySymbol=Dh\n"
      "GLDescription=Accounts Payable : Vendor Code - V001- Ref.No:VI/7- Ref.Date:2024-02-20\n"
      "GLComments=ring first\nAccountNo=AABR00PAYABLE\nGLCreditAmount=880\n"
      "FCGLCreditAmount=240\nGLDebitAmount=0\nFCGLDebitAmount=0\nForeignCurrencyFlag=True\n"
      "LastUpdate=2024-03-05\nGLInsert()\nCOAPosting(AABR00PAYABLE, -880)");

  const auto third = scripted("OmbrixAccounts.AccountPreferences", preferences);
  fill(invoice, books, {});
  EXPECT_FALSE(process({billed()}));
  EXPECT_EQ(invoice.ErrDesc(), "Invalid Accounts Payable Account");
  EXPECT_EQ(preferences.told(), "new\nConnectionString=" + books.connection()->ConnectionString() +
                                    "\nBranchPrefix=BR\nGet_Account_Preferences(AA, BR)");
}

TEST_P(PurchaseInvoicePostingTest, a_component_that_refuses_ends_the_run) {
  struct {
    std::string_view name;
    int call;
    std::string_view posted;  // by the shipped ledger, or the calls of the scripted one
  } const cases[] = {{"OmbrixAccounts.GeneralLedger", 1, "1"},
                     {"OmbrixAccounts.GeneralLedger", 4, "4"},
                     {"OmbrixAccounts.AccountPreferences", 1, "1"},
                     {"OmbrixAccounts.AccountsPayable", 1, "1"}};
  for (const auto& each : cases) {
    fill(invoice, books, {});
    invoice.ProcessedFlag = false;
    Script script;
    script.refused_call = each.call;
    const auto registered = scripted(each.name, script);
    EXPECT_FALSE(process({billed()}));
    EXPECT_EQ(invoice.ErrDesc(), "The component says no.");
    EXPECT_EQ(std::to_string(script.calls), each.posted);
    EXPECT_EQ(listing(books, {"Document_Next_No"}, "Document_Prefix"), "7");
    books.execute("Delete From Purchase_Invoice_Master");
    books.execute("Delete From Purchase_Invoice_Detail");
  }
}

TEST_P(PurchaseInvoicePostingTest, each_missing_account_has_its_message) {
  struct {
    std::string_view change, reason;
  } const cases[] = {{"Update Default_Account_Preferences Set AP_Account_No='  '",
                      "Invalid Accounts Payable Account"},
                     {"Update Default_Purchase_Preferences Set Discount_Account_No=Null",
                      "Set the Default Purchase discount account in the Purchase Preferences"},
                     {"Update Default_Purchase_Preferences Set Pur_Variance_Account_No=Null",
                      "Invalid Purchase Variance Account"},
                     {"Delete From Default_Purchase_Preferences",
                      "Set the Default Purchase Accrual account in the Purchase Preferences"}};
  for (const auto& each : cases) {
    books.execute(each.change);
    fill(invoice, books, {});
    invoice.ProcessedFlag = false;
    invoice.PurchaseInvDiscAmount = 36;
    EXPECT_FALSE(process({dearer()}));
    EXPECT_EQ(invoice.ErrDesc(), each.reason);
    books.execute("Delete From Purchase_Invoice_Master");
    books.execute("Delete From Purchase_Invoice_Detail");
  }
  // Only a run that keeps its number gets to the discount without a line.
  invoice.OnlineFlag = false;
  invoice.SyncFlag = true;
  invoice.PurchaseInvDiscAmount = 36;
  EXPECT_FALSE(process({}));
  EXPECT_EQ(invoice.ErrDesc(),
            "Set the Default Purchase Discount account in the Purchase Preferences");
}

TEST_P(PurchaseInvoicePostingTest, a_quantity_of_nothing_ends_a_line_that_varies) {
  ASSERT_TRUE(create({dearer()}));
  books.execute("Update Purchase_Invoice_Detail Set grn_qty=0");
  EXPECT_FALSE(invoice.Process_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Division by zero");
  EXPECT_EQ(postings(), "");
}

TEST_P(PurchaseInvoicePostingTest, the_accounts_are_read_anew_and_kept_when_there_are_none) {
  Script ledger;
  const auto registered = scripted("OmbrixAccounts.GeneralLedger", ledger);
  const auto accrual = [&] {
    ledger.asked.clear();
    fill(invoice, books, {});
    invoice.ProcessedFlag = false;
    EXPECT_TRUE(process({billed()})) << invoice.ErrDesc();
    const auto at = ledger.told().find("COAPosting(");
    return ledger.told().substr(at, ledger.told().find(',') - at);
  };
  EXPECT_EQ(accrual(), "COAPosting(AABR00ACCRUAL");
  Value item = "AA1001";
  books.execute("Update Default_Purchase_Preferences Set Pur_Accrual_Account_No='OTHER'");
  EXPECT_TRUE(invoice.Get_Item_Accounts(item));
  for (const auto* none : {"''", "Null"}) {
    books.execute("Update Default_Purchase_Preferences Set Pur_Accrual_Account_No=" +
                  std::string(none));
    EXPECT_EQ(accrual(), "COAPosting(OTHER");
  }
  invoice.BranchPrefix = "B'";
  EXPECT_FALSE(invoice.Get_Item_Accounts(item));
  EXPECT_TRUE(invoice.ErrDesc().starts_with(std::to_string(kDatabaseFailure) + " : "))
      << invoice.ErrDesc();
}

TEST_P(PurchaseInvoicePostingTest, arguments_come_back_by_reference_to_a_late_caller_too) {
  invoice.VendorRefInvoiceNo = " VI ";
  invoice.VendorRefInvoiceDate = Date(2024, 2, 20, 10, 30, 0);
  invoice.PurchaseInvNo = "AABRPIN9";
  invoice.TaxAmount = 2;
  struct {
    std::string_view side, posted;
    double left;
  } const cases[] = {{"Credit", "TAX A | 0 | 12 | 0 | 6", -10},
                     {"credit", "TAX A | 12 | 0 | 6 | 0", 10}};
  for (const auto& each : cases) {
    books.execute("Delete From General_Ledger");
    Value arguments[] = {"text", "TAX A", 10.0, 4.0, each.side};
    EXPECT_EQ(late.call("Account_Posting", arguments), Value(true)) << invoice.ErrDesc();
    EXPECT_EQ(arguments[0], Value("text- Ref.No:VI- Ref.Date:2024-02-20 10:30:00"));
    EXPECT_EQ(arguments[2], Value(each.left));
    EXPECT_EQ(arguments[3], Value(4.0));
    EXPECT_EQ(postings(), each.posted);
  }
  EXPECT_EQ(balances(), "");
}

TEST_P(PurchaseInvoicePostingTest, tax_goes_to_the_authorities_on_the_side_of_its_type) {
  struct {
    std::string_view type, posted, balances;
  } const cases[] = {{"pi", "TAX A | 66.67 | 0 | 66.67 | 0\nTAX B | 33.33 | 0 | 33.33 | 0",
                      "TAX A | -66.67\nTAX B | -33.33"},
                     {"GRN", "TAX A | 0 | 66.67 | 0 | 66.67\nTAX B | 0 | 33.33 | 0 | 33.33",
                      "TAX A | 66.67\nTAX B | 33.33"}};
  invoice.PurchaseInvNo = "AABRPIN9";
  invoice.TaxCode = "VAT";
  invoice.TaxPercent = 15;
  for (const auto& each : cases) {
    books.execute("Delete From General_Ledger");
    books.execute("Update Chart_Of_Accounts Set Current_Balance=0");
    invoice.TaxType = std::string(each.type);
    invoice.TaxAmount = 100;
    ASSERT_TRUE(invoice.PI_Tax_Posting());
    EXPECT_EQ(postings(), each.posted);
    EXPECT_EQ(balances(), each.balances);
    EXPECT_EQ(invoice.TaxAmount(), 0);
  }
  EXPECT_EQ(
      listing(books, {"GL_Description", "Document_No"}, "General_Ledger Where Account_No='TAX A'"),
      "Purchase Tax for 9 Dated 01/03/2024 | AABRPIN9");
}

}  // namespace
}  // namespace ombrix::testing
