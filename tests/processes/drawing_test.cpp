#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "ombrix/components.h"

#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

/// What two callers do to one series when their steps fall between one another.
class DrawingTest : public OnEachDatabase {
 protected:
  DrawingTest() {
    books.execute(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
        " Document_Next_No, Temporary_Next_No) Values ('PO', 'AA', 'BR', 1, 1)");
  }

  static ObjectRef drawn(const std::shared_ptr<Connection>& connection) {
    ObjectRef counter = create_object("OmbrixSystem.CounterTransaction");
    counter->let("CompanyPrefix", "AA");
    counter->let("BranchPrefix", "BR");
    counter->let("DocumentPrefix", "PO");
    std::vector<Value> arguments{connection};
    EXPECT_TRUE(counter->call("Get_Last_Counter", arguments).to_flag());
    return counter;
  }
  static double number(const ObjectRef& counter) {
    return counter->get("NextDocumentNo").to_number();
  }
  Value next() const { return books.value("Select Document_Next_No As V From Document_Prefix"); }

  const std::shared_ptr<Connection>& client = books.connection();
  std::shared_ptr<Connection> other = books.another();
};
OMBRIX_ON_EACH_DATABASE(DrawingTest);

TEST_P(DrawingTest, a_number_drawn_while_another_was_passed_over_is_not_given_back) {
  books.execute("Insert Into LPO_Master (LPO_No) Values ('AABRPO1')");
  ObjectRef second;
  client->inject([&](const Call& call) {
    if (!second && call.text.starts_with("Select 1 As Borne")) second = drawn(other);
    return Fault{};
  });
  ObjectRef first = drawn(client);
  client->inject({});
  EXPECT_EQ(number(second), 2);
  EXPECT_EQ(number(first), 3);
  first.reset();
  EXPECT_EQ(next().to_number(), 3);
}

TEST_P(DrawingTest, a_lost_session_gives_nothing_back_through_the_next_one) {
  client->BeginTrans();
  ObjectRef first = drawn(client);
  client->Close();
  client->Open(books.text());
  const ObjectRef second = drawn(other);
  EXPECT_EQ(number(second), number(first));
  first.reset();
  EXPECT_EQ(next().to_number(), 2);
}

TEST_P(DrawingTest, a_commit_that_rolled_back_gives_nothing_back) {
  if (GetParam() == "SQLite") GTEST_SKIP() << "a failed statement dooms no transaction here";
  client->BeginTrans();
  ObjectRef first = drawn(client);
  EXPECT_NE(raised_number([&] { client->Execute("Select 1 / 0"); }), 0);
  EXPECT_NE(raised_number([&] { client->CommitTrans(); }), 0);
  const ObjectRef second = drawn(other);
  EXPECT_EQ(number(second), number(first));
  first.reset();
  EXPECT_EQ(next().to_number(), 2);
}

}  // namespace
}  // namespace ombrix::testing
