#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "ombrix/components.h"

#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

class AccountPreferencesTest : public OnEachDatabase {
 protected:
  AccountPreferencesTest() {
    books.execute(
        "Insert Into Default_Account_Preferences (Company_Prefix, Branch_Prefix, AP_Account_No,"
        " Adv_Pmt_Account_No) Values ('AA', 'BR', 'AABR002100', 'AABR001400');"
        "Insert Into Default_Account_Preferences (Company_Prefix, Branch_Prefix, AP_Account_No)"
        " Values ('AA', 'B2', 'AAB2002100')");
    preferences->let("ConnectionString", books.text());
  }

  bool read(const Value& company, const Value& branch) {
    std::vector<Value> arguments{company, branch};
    return preferences->call("Get_Account_Preferences", arguments).to_flag();
  }
  std::string told(std::string_view member) { return preferences->get(member).to_text(); }

  ObjectRef preferences = create_object("OmbrixAccounts.AccountPreferences");
};
OMBRIX_ON_EACH_DATABASE(AccountPreferencesTest);

TEST_P(AccountPreferencesTest, tells_the_two_accounts_of_the_branch_it_is_called_with) {
  preferences->let("BranchPrefix", "B2");
  EXPECT_TRUE(read("AA", "BR"));
  EXPECT_EQ(told("APAccountNo"), "AABR002100");
  EXPECT_EQ(told("AdvPmtAccountNo"), "AABR001400");
  EXPECT_TRUE(read("AA", "B2"));
  EXPECT_EQ(told("APAccountNo"), "AAB2002100");
  EXPECT_EQ(told("AdvPmtAccountNo"), "");
}

TEST_P(AccountPreferencesTest, refuses_a_branch_without_preferences_and_keeps_no_other_ones) {
  EXPECT_TRUE(read("AA", "BR"));
  EXPECT_FALSE(read("BB", "BR"));
  EXPECT_EQ(told("APAccountNo") + told("AdvPmtAccountNo"), "");
  EXPECT_TRUE(contains(told("ErrDesc"), "company \"BB\", branch \"BR\""));
  EXPECT_FALSE(read(Null(), "BR"));
  EXPECT_TRUE(contains(told("ErrDesc"), "company \"\", branch \"BR\""));
  EXPECT_FALSE(read("AA", "B'R"));
}

}  // namespace
}  // namespace ombrix::testing
