#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "ombrix/components.h"

#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

/// An entry that is accepted, on a document of the test's own.
ObjectRef entry_on(const std::shared_ptr<Connection>& connection, const std::string& document,
                   double debit, double credit, const std::string& vendor = "AAV001") {
  const ObjectRef payable = create_object("OmbrixAccounts.AccountsPayable");
  payable->set("AdoConnectionObject", connection);
  payable->let("VendorCode", vendor);
  payable->let("AccountNo", "AABR002100");
  payable->let("DocumentNo", document);
  payable->let("APLDebitAmount", debit);
  payable->let("APLCreditAmount", credit);
  payable->let("FCAPLDebitAmount", debit / 2);
  payable->let("FCAPLCreditAmount", credit / 2);
  return payable;
}

bool insert(const ObjectRef& payable) {
  return payable->call("AP_Insert_Transaction").to_flag();
}

class AccountsPayableTest : public OnEachDatabase {
 protected:
  AccountsPayableTest() {
    books.execute(
        "Insert Into Chart_Of_Accounts (Account_No) Values ('AABR002100');"
        "Insert Into Vendor_Master (Vendor_Code, Vendor_Balance, Vendor_Fc_Balance)"
        " Values ('AAV001', 1000, 400);"
        "Insert Into Vendor_Master (Vendor_Code, Vendor_Balance, Vendor_Fc_Balance)"
        " Values ('AAV002', Null, Null)");
  }

  ObjectRef entry(const std::string& document, double debit, double credit,
                  const std::string& vendor = "AAV001") {
    return entry_on(books.connection(), document, debit, credit, vendor);
  }
  bool take_back(const Value& document) {
    payable->set("AdoConnectionObject", books.connection());
    payable->let("DocumentNo", document);
    return payable->call("APL_Delete").to_flag();
  }
  /// "home foreign".
  std::string balances(const std::string& vendor = "AAV001") const {
    const auto row = books.rows(
        "Select Vendor_Balance, Vendor_Fc_Balance From Vendor_Master Where "
        "Vendor_Code='" +
            vendor + "'",
        {"Vendor_Balance", "Vendor_Fc_Balance"})[0];
    const auto shown = [](const Value& value) {
      return value.is_null() ? std::string("Null") : value.to_text();
    };
    return shown(row[0]) + " " + shown(row[1]);
  }
  double entries() const {
    return books.value("Select Count(*) As V From Accounts_Payable_Ledger").to_number();
  }

  ObjectRef payable = create_object("OmbrixAccounts.AccountsPayable");
};
OMBRIX_ON_EACH_DATABASE(AccountsPayableTest);

TEST_P(AccountsPayableTest, stores_every_member_in_its_column) {
  const struct {
    const char *member, *column;
    Value value;
    const char* stored;
  } members[] = {
      {"CompanyPrefix", "Company_Prefix", "AA", "AA"},
      {"BranchPrefix", "Branch_Prefix", "BR", "BR"},
      {"DocumentPrefix", "Document_Prefix", "INV", "INV"},
      {"ForeignCurrencyFlag", "Foreign_Currency_Flag", true, "-1"},
      {"VendorCode", "Vendor_Code", "AAV001", "AAV001"},
      {"AccountNo", "Account_No", "AABR002100", "AABR002100"},
      {"DocumentNo", "Document_No", "AABRINV7", "AABRINV7"},
      {"APLDate", "APL_Date", Date(2024, 3, 1), "2024-03-01 00:00:00"},
      {"APLDescription", "APL_Description", "O'Brien's invoice", "O'Brien's invoice"},
      {"APLComments", "APL_Comments", "on account", "on account"},
      {"APLDebitAmount", "APL_Debit_Amount", 1.25, "1.25"},
      {"APLCreditAmount", "APL_Credit_Amount", 101.5, "101.5"},
      {"FCAPLDebitAmount", "FC_APL_Debit_Amount", 0.5, "0.5"},
      {"FCAPLCreditAmount", "FC_APL_Credit_Amount", 40.25, "40.25"},
      {"CurrencyCode", "Currency_Code", "USD", "USD"},
      {"CurrencySymbol", "Currency_Symbol", Null(), ""},
      {"LastUpdate", "Last_Update", Date(2024, 3, 5, 8, 30), "2024-03-05 08:30:00"},
      {"Refno", "Ref_No", "V-77", "V-77"},
      {"RefDate", "Ref_Date", Date(2024, 2, 28), "2024-02-28 00:00:00"},
  };
  payable->set("AdoConnectionObject", books.connection());
  for (const auto& each : members) payable->let(each.member, each.value);
  ASSERT_TRUE(insert(payable)) << payable->get("ErrDesc").to_text();
  for (const auto& each : members) {
    EXPECT_EQ(
        books.value("Select " + std::string(each.column) + " As V From Accounts_Payable_Ledger")
            .to_text(),
        each.stored)
        << each.column;
  }
  EXPECT_EQ(balances(), "1100.25 439.75");
  ASSERT_TRUE(insert(entry("AABRINV8", 0, 1)));
  EXPECT_TRUE(books
                  .value("Select Ref_No As V From Accounts_Payable_Ledger Where "
                         "Document_No='AABRINV8'")
                  .is_null());
}

TEST_P(AccountsPayableTest, a_credit_raises_the_balances_and_a_debit_lowers_them) {
  const struct {
    double debit, credit;
    const char *vendor, *balances;
  } cases[] = {{0, 250.5, "AAV001", "1250.5 525.25"},
               {1300, 0, "AAV001", "-49.5 -124.75"},
               {0, 0, "AAV001", "-49.5 -124.75"},
               {0, -10, "AAV001", "-59.5 -129.75"},
               {0, 20, "AAV002", "20 10"}};
  for (const auto& c : cases) {
    EXPECT_TRUE(insert(entry("AABRINV1", c.debit, c.credit, c.vendor)));
    EXPECT_EQ(balances(c.vendor), c.balances) << c.debit << " " << c.credit;
  }
  EXPECT_EQ(entries(), 5);
}

TEST_P(AccountsPayableTest, takes_a_document_back_with_all_it_did) {
  ASSERT_TRUE(insert(entry("AABRINV1", 0, 300)) && insert(entry("AABRINV1", 40, 0)) &&
              insert(entry("AABRINV1", 0, 7, "AAV002")) && insert(entry("AABRINV2", 0, 5)));
  EXPECT_TRUE(take_back("AABRINV1"));
  EXPECT_EQ(entries(), 1);
  EXPECT_EQ(balances(), "1005 402.5");
  EXPECT_EQ(balances("AAV002"), "0 0");
  EXPECT_TRUE(take_back("AABRINV1"));
  EXPECT_EQ(balances(), "1005 402.5");
}

TEST_P(AccountsPayableTest, refuses_what_is_empty_or_unknown_and_writes_nothing) {
  const struct {
    const char* member;
    Value value;
    const char* named;
  } cases[] = {
      {"DocumentNo", "", "DocumentNo"},       {"DocumentNo", Null(), "DocumentNo"},
      {"VendorCode", " ", "VendorCode"},      {"AccountNo", "", "AccountNo"},
      {"AccountNo", "AABR9", "\"AABR9\""},    {"VendorCode", "AAV009", "\"AAV009\""},
      {"VendorCode", "aav001", "\"aav001\""}, {"VendorCode", "AAV'001", "\"AAV'001\""},
  };
  const std::string before = books.dump();
  for (const auto& c : cases) {
    const ObjectRef refused = entry("AABRINV1", 0, 10);
    refused->let(c.member, c.value);
    EXPECT_FALSE(insert(refused)) << c.named;
    EXPECT_TRUE(contains(refused->get("ErrDesc").to_text(), c.named)) << c.named;
  }
  EXPECT_FALSE(take_back(Null()));
  EXPECT_TRUE(contains(payable->get("ErrDesc").to_text(), "DocumentNo"));
  EXPECT_FALSE(insert(create_object("OmbrixAccounts.AccountsPayable")));
  EXPECT_EQ(books.dump(), before);
}

TEST_P(AccountsPayableTest, loses_no_movement_of_two_callers_at_once) {
  const auto post = [&](const std::string& document) {
    const auto connection = books.another();
    for (int i = 0; i < 50; ++i) EXPECT_TRUE(insert(entry_on(connection, document, 0, 2)));
  };
  std::thread other(post, "AABRINV1");
  post("AABRINV2");
  other.join();
  EXPECT_EQ(balances(), "1200 500");
}

}  // namespace
}  // namespace ombrix::testing
