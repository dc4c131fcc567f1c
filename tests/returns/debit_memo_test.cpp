#include <algorithm>

#include "ombrix/dialogue.h"

#include "returns/return_fixture.h"
#include "support/failures.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

/// A user with one answer.
class User final : public Dialogue {
 public:
  void message(std::string_view text, std::string_view) override { told.emplace_back(text); }
  std::string input(std::string_view prompt, std::string_view title,
                    std::string_view preset) override {
    told.push_back(std::string(prompt) + "|" + std::string(title) + "|" + std::string(preset));
    return answer;
  }
  std::string answer;
  std::vector<std::string> told;
};

class DebitMemoTest : public ReturnFixture {
 protected:
  void SetUp() override {
    ReturnFixture::SetUp();
    set_dialogue(user);
    books.execute("Update Default_Purchase_Preferences Set Generate_Debit_Memo=-1");
    document.PurchaseRtnAmount = 1000;
    document.PurchaseRtnFCAmount = 900;
    document.PurchaseRtnSubTotal = 1100;
    document.PurchaseRtnFCSubTotal = 800;
    document.PurchaseRtnDiscAmount = 100;
    document.PurchaseRtnFCDiscAmount = 70;
    document.CurrencySymbol = "Dh";
  }
  void TearDown() override { set_dialogue(nullptr); }

  std::string vouchers() const { return list({"Voucher_No", "process_Flag"}, "Voucher_Master"); }
  bool memo() {
    std::string number = document.PurchaseRtnNo();
    return document.Generate_Debit_Memo(number);
  }

  std::shared_ptr<User> user = std::make_shared<User>();
};
OMBRIX_ON_EACH_DATABASE(DebitMemoTest);

TEST_P(DebitMemoTest, the_voucher_is_written_from_the_saved_return_and_handed_over) {
  Script script;
  const auto replaced = scripted("OmbrixAccountsExt.DebitCreditNote", script);
  document.ForeignCurrencyFlag = true;
  document.ExchangeRate = 3.5;
  ASSERT_TRUE(process({returned()})) << document.ErrDesc();
  EXPECT_EQ(list({"Voucher_No",       "Voucher_Identity",
                  "Company_Prefix",   "Branch_Prefix",
                  "Document_Prefix",  "Voucher_Date",
                  "Voucher_Comments", "Foreign_Currency_Flag",
                  "Currency_Code",    "Currency_Symbol",
                  "process_Flag",     "Voucher_Amount",
                  "Voucher_FCAmount", "Balance_Amount",
                  "Balance_FCAmount", "Voucher_For",
                  "Exchange_Rate",    "Type",
                  "AccountNo",        "AccountName",
                  "amountDr",         "amountfcDr",
                  "amountCr",         "amountfcCr",
                  "Last_Update"},
                 "Voucher_Master"),
            "AABRDRMTMP1 | 1 | AA | BR | DRM | 2024-03-01 00:00:00 | too wet | -1 | AED | Dh | 0 |"
            " 1000 | 900 | 1000 | 900 | Vendor | 3.5 | Vendor | AAV001 | Orchard Traders | 1000 |"
            " 1000 | 0 | 0 | 2024-03-05 00:00:00");
  const std::string head = " | AABRDRMTMP1 | ";
  const std::string tail = " |    | -1 | AED | Dh | 2024-03-05 00:00:00";
  const std::string text = " | System Generated Debit Memo. | ";
  EXPECT_EQ(list({"SL_No", "Voucher_No", "Voucher_Type", "Account_No", "Account_Name",
                  "Voucher_Description", "Debit_Amount", "FC_Debit_Amount", "Credit_Amount",
                  "FC_Credit_Amount", "Proj_No", "Foreign_Currency_Flag", "Currency_Code",
                  "Currency_Symbol", "Last_Update"},
                 "Voucher_Detail Order By SL_No"),
            "1" + head + "Vendor | AAV001 | Orchard Traders" + text + "1000 | 1000 | 0 | 0" + tail +
                "\n2" + head + "General | ACCRUAL | Accrued purchases" + text +
                "0 | 0 | 1100 | 800" + tail + "\n3" + head + "General | DISCOUNT | Discounts" +
                text + "0 | 0 | 100 | 70" + tail);
  EXPECT_EQ(script.told(), "new\nAdoConnectionObject=object\nADOConnectionString=" + books.text() +
                               "\nVoucherNo=AABRDRMTMP1\nmanualDocIdentity=0\nDocFlag=False\n"
                               "LastUpdate=2024-03-05\nProcess_Voucher(AABRDRMTMP1)");
  EXPECT_EQ(counter("DRM"), "1 | 2");

  // What it refuses ends the run with all else done: the memo's counter moved, the return's did
  // not.
  const std::string before = counter();
  script.refused_call = 2;
  EXPECT_FALSE(process({returned()}));
  EXPECT_EQ(document.ErrDesc(), "The component says no.");
  EXPECT_EQ(vouchers(), "AABRDRMTMP1 | 0\nAABRDRMTMP2 | 0");
  EXPECT_EQ(counter("DRM"), "1 | 3");
  EXPECT_EQ(before.substr(0, 1) + counter().substr(0, 1), "22");
  EXPECT_TRUE(ledger().ends_with("ACCRUAL | 1000 | 0"));
}

TEST_P(DebitMemoTest, the_shipped_component_makes_it_final_and_posts_it_in_balance) {
  ASSERT_TRUE(process({returned()})) << document.ErrDesc();
  EXPECT_EQ(list({"Voucher_No", "Voucher_Identity", "process_Flag"}, "Voucher_Master"),
            "AABRDRM1 | 1 | 1");
  EXPECT_EQ(list({"Document_No", "Document_Prefix", "GL_Date", "GL_Description", "GL_Comments",
                  "Account_No", "GL_Debit_Amount", "GL_Credit_Amount", "FC_GL_Debit_Amount",
                  "FC_GL_Credit_Amount", "Foreign_Currency_Flag", "Last_Update"},
                 "General_Ledger Where Document_No='AABRDRM1' Order By Row_Id"),
            [] {
              std::string lines;
              for (const std::string figures :
                   {"PAYABLE | 1000 | 0 | 1000 | 0", "ACCRUAL | 0 | 1100 | 0 | 800",
                    "DISCOUNT | 0 | 100 | 0 | 70"}) {
                lines += (lines.empty() ? "" : "\n") +
                         ("AABRDRM1 | DRM | 2024-03-01 00:00:00 | System Generated Debit Memo. |"
                          " too wet | " +
                          figures + " | 0 | 2024-03-05 00:00:00");
              }
              return lines;
            }());
  EXPECT_EQ(balances(), "ACCRUAL | -100\nDISCOUNT | -100\nPAYABLE | 1000\nSTOCK | -1000");
  EXPECT_EQ(list({"Document_No", "Vendor_Code", "Account_No", "APL_Debit_Amount",
                  "APL_Credit_Amount", "FC_APL_Debit_Amount"},
                 "Accounts_Payable_Ledger"),
            "AABRDRM1 | AAV001 | PAYABLE | 1000 | 0 | 1000");
  EXPECT_EQ(list({"Vendor_Balance"}, "Vendor_Master"), "-1000");
  EXPECT_EQ(counter("DRM") + ", " + counter(), "2 | 2, 2 | 2");
}

TEST_P(DebitMemoTest, a_memo_of_a_discount_in_home_currency_only_has_two_lines) {
  document.PurchaseRtnFCDiscAmount = 0;
  ASSERT_TRUE(process({returned()})) << document.ErrDesc();
  EXPECT_EQ(list({"SL_No"}, "Voucher_Detail"), "1\n2");
  document.Ref_Doc_Type = "GRN";
  ASSERT_TRUE(process({returned()})) << document.ErrDesc();
  EXPECT_EQ(vouchers(), "AABRDRM1 | 1");
  document.PurchaseRtnNo = "none";
  EXPECT_FALSE(memo());  // nothing was written for the component to find
  EXPECT_EQ(document.ErrDesc(), "Voucher \"AABRDRMTMP2\" is not on file.");
}

TEST_P(DebitMemoTest, a_series_by_hand_asks_the_user) {
  ASSERT_TRUE(document.Create_Purchase_Rtn());
  books.execute("Update Document_Prefix Set Manual_Flag=-1 Where Document_Prefix='DRM'");
  books.execute("Insert Into Voucher_Master (Voucher_No) Values ('AABRDRM7')");
  const std::string before = books.dump();
  const std::pair<std::string, std::string> refused[] = {
      {"abc", "Please Enter Valid Numeric Debit Memo No "},
      {"", "Please Enter Valid Numeric Debit Memo No "},
      {"0", "Please Enter Valid Numeric Debit Memo No "},
      {"1e999", "Please Enter Valid Numeric Debit Memo No "},
      {"7.0", "Debit Memo No Already Exists "}};
  for (const auto& [answer, reason] : refused) {
    user->answer = answer;
    EXPECT_FALSE(memo());
    EXPECT_EQ(document.ErrDesc(), reason) << answer;
  }
  EXPECT_EQ(books.dump(), before);
  EXPECT_EQ(user->told.front(), "Please Enter Debit Memo No|OmbrixPurchase|0");
  user->answer = " 12 ";
  EXPECT_TRUE(memo());
  // The counter had no number to move on from; that is no reason to stop.
  EXPECT_EQ(document.ErrDesc(), "The counter was not moved on: no number was drawn.");
  EXPECT_EQ(vouchers(), "AABRDRM12 | 1\nAABRDRM7 | Null");
  EXPECT_EQ(list({"Voucher_No"}, "Voucher_Detail"), "AABRDRM12\nAABRDRM12\nAABRDRM12");
  EXPECT_EQ(counter("DRM"), "13 | 1");
  // A look-up that fails shows its reason and lets the number pass.
  user->answer = "9";
  books.connection()->inject([](const Call& call) {
    const bool looks = call.kind == Call::Kind::open &&
                       call.text == "Select * from Voucher_Master Where Voucher_No='AABRDRM9'";
    return looks ? Fault{Fault::Kind::raise, 5, "no look"} : Fault();
  });
  EXPECT_TRUE(memo());
  books.connection()->inject({});
  EXPECT_EQ(user->told.back(), "no look");
  EXPECT_EQ(counter("DRM"), "13 | 1");
}

TEST_P(DebitMemoTest, statements_and_their_roads_are_these) {
  ASSERT_TRUE(document.Create_Purchase_Rtn());
  books.execute("Update Document_Prefix Set Manual_Flag=-1 Where Document_Prefix='DRM'");
  user->answer = "12";
  const std::string line = "(1,3,-1) Select * from Voucher_Detail ";
  const auto preference = [](const std::string& account) {
    return "text (3,3,-1) Select " + account +
           " from Default_Purchase_Preferences Where Company_Prefix='AA' and Branch_Prefix='BR'";
  };
  const std::string name =
      "text (3,3,-1) Select Account_Name from Chart_Of_Accounts Where Account_No=";
  EXPECT_EQ(statements([&] { return memo(); }),
            (std::vector<std::string>{
                "(1,3,-1) Select Document_Next_No, Manual_Flag,Last_Update From Document_Prefix"
                " Where Document_Prefix='DRM' and Company_Prefix='AA' and Branch_Prefix='BR'",
                "(3,3,-1) Select * from Voucher_Master Where Voucher_No='AABRDRM12'",
                "(3,3,-1) Select * from Purchase_Return_Master Where Purchase_Rtn_No='AABRPRTMP1'",
                "(3,3,-1) Select * from Voucher_Master", line, preference("Pur_Accrual_Account_No"),
                name + "'ACCRUAL'", line, preference("Purchase_Disc_Account_No"),
                name + "'DISCOUNT'", line}));
}

TEST_P(DebitMemoTest, what_is_missing_ends_the_memo_behind_the_lines_before_it) {
  const std::string preferences = "Update Default_Purchase_Preferences Set ";
  struct {
    std::string spoiled, reason, lines, counter;
  } const cases[] = {
      {"Delete From Default_Account_Preferences",
       "No account preferences for company \"AA\", branch \"BR\".", "", "1 | 1"},
      {preferences + "Pur_Accrual_Account_No=' '", "Invalid Purchase Accural Account", "1",
       "1 | 1"},
      {preferences + "Purchase_Disc_Account_No=Null", "Invalid Default Discount Account", "1\n2",
       "1 | 1"},
      {preferences + "Company_Prefix='ZZ'", "Invalid Purchase Accural Account", "1", "1 | 1"},
      {"Update Purchase_Return_Master Set Purchase_Rtn_Amount=Null", "94 : Invalid use of Null", "",
       "1 | 1"},
      {"Delete From Chart_Of_Accounts Where Account_No='DISCOUNT'",
       "Ledger line: account \"DISCOUNT\" is not in the chart of accounts.", "1\n2\n3", "1 | 2"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.spoiled);
    const Books spoiled(GetParam());
    given_return_books(spoiled);
    purchase::PurchaseReturn other;
    fill(other, spoiled, {returned()});
    other.PurchaseRtnFCDiscAmount = 70;
    ASSERT_TRUE(other.Create_Purchase_Rtn());
    spoiled.execute(each.spoiled);
    std::string number = other.PurchaseRtnNo();
    EXPECT_FALSE(other.Generate_Debit_Memo(number));
    EXPECT_EQ(other.ErrDesc(), each.reason);
    EXPECT_EQ(listing(spoiled, {"SL_No"}, "Voucher_Detail Order By SL_No"), each.lines);
    EXPECT_EQ(listing(spoiled, {"Voucher_For"}, "Voucher_Master"), "Vendor");
    EXPECT_EQ(listing(spoiled, {"Document_Next_No", "Temporary_Next_No"},
                      "Document_Prefix Where Document_Prefix='DRM'"),
              each.counter);
  }
}

TEST_P(DebitMemoTest, a_line_tells_number_and_reason_without_a_mark_between) {
  const std::vector<Value> line{"V1", "General", "A",   "Name", "Debit", 2.5,
                                3.5,  false,     "USD", "$",    "P1",    4};
  auto arguments = line;
  EXPECT_EQ(late.call("Create_Voucher_Detail", arguments), Value(true));
  EXPECT_EQ(list({"SL_No", "Debit_Amount", "FC_Debit_Amount", "Credit_Amount", "Proj_No",
                  "Currency_Code"},
                 "Voucher_Detail"),
            "4 | 3.5 | 2.5 | 0 | P1 | AED");
  books.connection()->inject([](const Call&) { return Fault{Fault::Kind::raise, 5, "no line"}; });
  EXPECT_EQ(late.call("Create_Voucher_Detail", arguments), Value(false));
  EXPECT_EQ(document.ErrDesc(), "5no line");
  std::vector<Value> memo_arguments{"V1", 1, true};
  EXPECT_EQ(late.call("Process_DebitMemo", memo_arguments), Value(false));
  EXPECT_EQ(document.ErrDesc(), "5 : no line");
  books.connection()->inject({});
}

TEST_P(DebitMemoTest, rows_are_found_by_one_value_or_by_two) {
  struct {
    std::vector<Value> arguments;
    bool found;
  } const cases[] = {
      {{"Item_Master", "Item_Code", "AA1001"}, true},
      {{"Item_Master", "Item_Code", "AA1001", false}, true},
      {{"Item_Master", "Stock_In_Hand", "500", true, "Item_Type", "3", false}, true},
      {{"Item_Master", "Stock_In_Hand", "500", true, "Item_Type", "4", false}, false},
      {{"Item_Master", "Item_Type", "1", false, "Stock_In_Hand", "500", true}, true},
      {{"Item_Master", "Item_Code", "x' OR '1'='1"}, false},
      {{"No_Such_Table", "Item_Code", "AA1001"}, false}};
  for (const auto& each : cases) {
    auto arguments = each.arguments;
    EXPECT_EQ(late.call("ExistDocument", arguments), Value(each.found));
    EXPECT_EQ(arguments, each.arguments);
  }
  EXPECT_EQ(user->told.size(), 2U);
  EXPECT_EQ(document.ErrDesc(), "");
}

TEST_P(DebitMemoTest, a_voucher_that_cannot_be_processed_is_refused_and_stays) {
  const auto note = create_object("OmbrixAccountsExt.DebitCreditNote");
  const auto process_voucher = [&](const std::string& number) {
    std::vector<Value> arguments{number};
    EXPECT_EQ(note->call("Process_Voucher", arguments), Value(false));
    return note->get("ErrDesc").to_text();
  };
  EXPECT_TRUE(contains(process_voucher("AABRDRMTMP1"), "no connection"));
  note->set("AdoConnectionObject", books.connection());
  ASSERT_TRUE(process({returned()}));
  EXPECT_EQ(process_voucher("AABRDRM1"), "Voucher \"AABRDRM1\" is processed already.");
  EXPECT_EQ(process_voucher("AABRDRM2"), "Voucher \"AABRDRM2\" is not on file.");
  EXPECT_NE(process_voucher(" "), "");
  books.execute(
      "Update Voucher_Master Set process_Flag=0;"
      "Update Default_Account_Preferences Set AP_Account_No=Null");
  const std::string before = books.dump();
  EXPECT_EQ(process_voucher("AABRDRM1"), "Invalid Accounts Payable Account");
  EXPECT_EQ(books.dump(), before);
}

}  // namespace
}  // namespace ombrix::testing
