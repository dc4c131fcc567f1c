#include "ombrix/components.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "support/lines.h"

namespace ombrix::testing {
namespace {

class ComponentsTest : public OnEachDatabase {};
OMBRIX_ON_EACH_DATABASE(ComponentsTest);

TEST_P(ComponentsTest, lose_no_movement_of_two_callers_at_once) {
  books.execute(
      "Insert Into Chart_Of_Accounts (Account_No) Values ('A');"
      "Insert Into Vendor_Master (Vendor_Code, Vendor_Balance, Vendor_Fc_Balance)"
      " Values ('V', 1000, 400)");
  const auto post = [&] {
    const ObjectRef payable = create_object("OmbrixAccounts.AccountsPayable");
    payable->set("AdoConnectionObject", books.another());
    for (const char* key : {"DocumentNo", "VendorCode", "AccountNo"}) {
      payable->let(key, std::string(1, key[0]));
    }
    payable->let("APLCreditAmount", 2);
    std::vector<Value> none;
    for (int i = 0; i < 50; ++i) {
      EXPECT_TRUE(payable->call("AP_Insert_Transaction", none).to_flag());
    }
  };
  std::thread other(post);
  post();
  other.join();
  EXPECT_EQ(listing(books, {"Vendor_Balance"}, "Vendor_Master"), "1200");
}

}  // namespace
}  // namespace ombrix::testing
