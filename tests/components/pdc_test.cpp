#include <gtest/gtest.h>
#include <string>

#include "ombrix/components.h"
#include "ombrix/instruments.h"

#include "support/books.h"
#include "support/failures.h"
#include "support/lines.h"

namespace ombrix::testing {
namespace {

class PDCTest : public OnEachDatabase {
 protected:
  PDCTest() {
    books.execute(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
        " Document_Next_No) Values ('PDC', 'AA', 'BR', 21)");
  }

  /// An entry that is accepted.
  ObjectRef entry() const {
    const ObjectRef made = create_object("OmbrixBank.PDC");
    made->set("AdoConnectionObject", books.connection());
    made->let("CompanyPrefix", "AA");
    made->let("BranchPrefix", "BR");
    made->let("DocumentPrefix", "PDC");
    made->let("BAnkID", "BANK");
    made->let("SourceNo", "AABRCP7");
    return made;
  }
  std::string next() const { return listing(books, {"Document_Next_No"}, "Document_Prefix"); }
};
OMBRIX_ON_EACH_DATABASE(PDCTest);

bool create(const ObjectRef& entry) {
  return entry->call("Create_PDC").to_flag();
}

TEST_P(PDCTest, stores_every_member_in_its_column) {
  const struct {
    const char *member, *column;
    Value value;
    const char* stored;
  } members[] = {
      {"CompanyPrefix", "Company_Prefix", "AA", "AA"},
      {"BranchPrefix", "Branch_Prefix", "BR", "BR"},
      {"DocumentPrefix", "Document_Prefix", "PDC", "PDC"},
      {"TransactionType", "Transaction_Type", "Cash Purchase", "Cash Purchase"},
      {"BAnkID", "Bank_ID", "BANK", "BANK"},
      {"BankName", "Bank_Name", "First Bank", "First Bank"},
      {"ChequeNo", "Cheque_No", "1000", "1000"},
      {"ChequeAmount", "Cheque_Amount", -12.5, "-12.5"},
      {"Cleared", "Cleared", "No", "No"},
      {"CustomerID", "CustomerID", "AAV001", "AAV001"},
      {"CustomerName", "Customer_Name", "O'Brien", "O'Brien"},
      {"PDCDate", "PDC_Date", Date(2024, 3, 1), "2024-03-01 00:00:00"},
      {"PDCDueDate", "PDC_Due_Date", Date(2024, 4, 1), "2024-04-01 00:00:00"},
      {"CreditCardNo", "CreditCard_No", "4000", "4000"},
      {"CreditCardName", "CreditCard_Name", "A Buyer", "A Buyer"},
      {"CreditCardCode", "CreditCard_Code", Null(), ""},
      {"SourceNo", "Source_No", "AABRCP7", "AABRCP7"},
      {"SourcePrefix", "Source_Prefix", "CP", "CP"},
      {"Status", "Status", "In Transit", "In Transit"},
      {"CurrencyCode", "Currency_Code", "USD", "USD"},
      {"ForeignCurrencyFlag", "Foreign_Currency_Flag", true, "-1"},
      {"ChequeFCAmount", "Cheque_FC_Amount", 3.25, "3.25"},
      {"LastUpdate", "Last_Update", Date(2024, 3, 5), "2024-03-05 00:00:00"},
  };
  const ObjectRef made = entry();
  for (const auto& each : members) made->let(each.member, each.value);
  ASSERT_TRUE(create(made)) << made->get("ErrDesc").to_text();
  for (const auto& each : members) {
    EXPECT_EQ(listing(books, {each.column}, "PDC_Master"), each.stored) << each.column;
  }
  EXPECT_EQ(made->get("PDCNo").to_text(), "AABRPDC21");
  EXPECT_EQ(listing(books, {"PDC_No", "PDC_Identity"}, "PDC_Master"), "AABRPDC21 | 21");
}

TEST_P(PDCTest, numbers_follow_each_other_past_those_that_are_borne) {
  books.execute("Insert Into PDC_Master (PDC_No) Values ('AABRPDC22')");
  ASSERT_TRUE(create(entry()) && create(entry()));
  EXPECT_EQ(listing(books, {"PDC_No"}, "PDC_Master Order By PDC_No"),
            "AABRPDC21\nAABRPDC22\nAABRPDC23");
  EXPECT_EQ(next(), "24");
}

TEST_P(PDCTest, refuses_what_is_empty_and_gives_the_number_back) {
  const std::string before = books.dump();
  for (const char* key :
       {"CompanyPrefix", "BranchPrefix", "DocumentPrefix", "BAnkID", "SourceNo"}) {
    for (const Value& empty : {Value(" "), Value(Null())}) {
      const ObjectRef refused = entry();
      refused->let(key, empty);
      EXPECT_FALSE(create(refused)) << key;
      EXPECT_TRUE(contains(refused->get("ErrDesc").to_text(), key)) << key;
    }
  }
  const ObjectRef strange = entry();
  strange->let("DocumentPrefix", "XX");
  EXPECT_FALSE(create(strange));
  EXPECT_TRUE(contains(strange->get("ErrDesc").to_text(), "series \"XX\""));
  EXPECT_FALSE(create(create_object("OmbrixBank.PDC")));

  books.connection()->inject([](const Call& call) {
    const bool writes = contains(call.text, "PDC_Master");
    return writes ? Fault{Fault::Kind::raise, kDatabaseFailure, "The register is full."} : Fault();
  });
  EXPECT_EQ(raised_text([&] { create(entry()); }), "The register is full.");
  books.connection()->inject({});
  EXPECT_EQ(books.dump(), before);
}

}  // namespace
}  // namespace ombrix::testing
