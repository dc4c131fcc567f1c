#include "ombrix/connection.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "ombrix/recordset.h"

#include "frame/database/session_pool.h"
#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

using database::SessionPool;

TEST(ConnectionText, NamesWhatIsWrongAndNeverAValue) {
  const struct {
    std::string text;
    std::string named;
  } cases[] = {
      {"", "\"Driver\" is missing"},
      {"Driver=secret;Database=x", "\"Driver\" must be SQLite"},
      {"Driver=SQLite;secret;Database=x", "no \"Key=Value\""},
      {"=secret", "a key is missing"},
      {"Driver=SQLite;driver=secret", "given twice"},
      {"Driver=\"secret", "not closed"},
      {"Driver=\"SQLite\"secret;Database=x", "behind a quoted value"},
      {"Driver=SQLite;Pwd=sec;ret=x;Database=x", "a key is not known"},
  };
  for (const auto& c : cases) {
    const Failure failure = raised([&] { Connection::open(c.text); });
    EXPECT_EQ(failure.number(), kDatabaseFailure) << c.text;
    EXPECT_TRUE(contains(failure.description(), c.named)) << failure.description();
    EXPECT_FALSE(contains(failure.description(), "secret")) << failure.description();
    EXPECT_FALSE(contains(failure.description(), "\"ret\"")) << failure.description();
  }
}

class ConnectionTest : public OnEachDatabase {
 protected:
  static constexpr const char* kAddOrder = "Insert Into LPO_Master (LPO_No) Values ('A')";

  void add_order(const std::string& number) {
    books.execute("Insert Into LPO_Master (LPO_No) Values ('" + number + "')");
  }
  Recordset by_text() {
    Recordset set;
    set.Open("Select * from LPO_Master", books.text());
    return set;
  }
  Recordset by_object() {
    Recordset set;
    set.Open("Select * from LPO_Master", books.connection());
    return set;
  }
  std::size_t idle() { return SessionPool::instance().idle(books.text()); }
  Connection& connection() { return *books.connection(); }
};
OMBRIX_ON_EACH_DATABASE(ConnectionTest);

TEST_P(ConnectionTest, tells_its_state_opens_once_and_answers_the_rows_of_the_last_statement) {
  Connection connection;
  EXPECT_EQ(connection.State(), 0);
  EXPECT_EQ(connection.ConnectionString(), "");
  EXPECT_EQ(raised_number([&] { connection.Execute(kAddOrder); }), kClosed);
  EXPECT_EQ(raised_number([&] { connection.BeginTrans(); }), kClosed);
  connection.Open(books.text());
  EXPECT_EQ(connection.State(), 1);
  EXPECT_EQ(raised_number([&] { connection.Open(books.text()); }), kOpen);
  connection.Close();
  connection.Close();
  EXPECT_EQ(connection.State(), 0);
  connection.Open(books.text());
  EXPECT_EQ(connection.Execute("Insert Into LPO_Master (LPO_No) Values ('A'); Select 1;"
                               " Insert Into LPO_Master (LPO_No) Values ('B'), ('C'); "),
            2);
  EXPECT_EQ(connection.Execute("Select * From LPO_Master"), 0);
}

TEST_P(ConnectionTest, transactions_do_not_nest_and_end_once) {
  EXPECT_EQ(raised_text([&] { connection().CommitTrans(); }), "No transaction is open.");
  EXPECT_EQ(raised_text([&] { connection().RollbackTrans(); }), "No transaction is open.");
  connection().BeginTrans();
  EXPECT_TRUE(connection().in_transaction());
  EXPECT_EQ(raised_text([&] { connection().BeginTrans(); }), "A transaction is already open.");
  add_order("A");
  connection().RollbackTrans();
  EXPECT_FALSE(connection().in_transaction());
  EXPECT_EQ(by_object().RecordCount(), 0U);
}

TEST_P(ConnectionTest, all_or_nothing_commits_on_true_and_rolls_back_on_false_and_on_a_failure) {
  EXPECT_TRUE(all_or_nothing(connection(), [&] { return add_order("A"), true; }));
  EXPECT_FALSE(all_or_nothing(connection(), [&] { return add_order("B"), false; }));
  EXPECT_EQ(raised_number([&] {
              all_or_nothing(connection(), [&]() -> bool {
                add_order("C");
                raise_overflow();
              });
            }),
            6);
  EXPECT_FALSE(connection().in_transaction());
  EXPECT_EQ(books.rows("Select * from LPO_Master", {"LPO_No"}),
            (std::vector<std::vector<Value>>{{"A"}}));
}

TEST_P(ConnectionTest, closing_rolls_an_open_transaction_back) {
  Recordset open = by_object();
  connection().BeginTrans();
  add_order("A");
  EXPECT_EQ(open.RecordCount(), 1U);
  open.AddNew();
  connection().Close();
  EXPECT_EQ(raised_number([&] { open.Update(); }), kDatabaseFailure);
  // The recordset that is still there holds no lock of the dead session.
  const auto other = Connection::open(books.text());
  EXPECT_EQ(other->Execute(kAddOrder), 1);
}

TEST_P(ConnectionTest, a_text_session_sees_only_committed_work) {
  add_order("A");
  connection().BeginTrans();
  add_order("B");
  EXPECT_EQ(by_text().RecordCount(), 1U);
  EXPECT_EQ(by_object().RecordCount(), 2U);
  connection().CommitTrans();
  EXPECT_EQ(by_text().RecordCount(), 2U);
  Recordset row = by_text();
  row.Delete();
  EXPECT_EQ(by_object().RecordCount(), 1U);
}

TEST_P(ConnectionTest, a_text_session_is_kept_until_the_last_client_goes) {
  EXPECT_EQ(idle(), 0U);
  by_text();
  EXPECT_EQ(idle(), 1U);
  {
    Recordset first = by_text();
    EXPECT_EQ(idle(), 0U);
    Recordset second = by_text();
  }
  EXPECT_EQ(idle(), 2U);
  auto another = books.another();
  connection().Close();
  EXPECT_EQ(idle(), 2U);
  another.reset();
  EXPECT_EQ(idle(), 0U);
  by_text();
  EXPECT_EQ(idle(), 0U);
}

TEST_P(ConnectionTest, keeps_a_bounded_number_of_text_sessions) {
  std::vector<Recordset> many(30);
  for (Recordset& set : many) set.Open("Select * from LPO_Master", books.text());
  many.clear();
  EXPECT_GE(idle(), 2U);
  EXPECT_LE(idle(), 8U);
}

TEST_P(ConnectionTest, a_kept_session_outlives_a_change_of_the_tables) {
  books.spoil();
  books.execute("Create Table T (N integer primary key)");
  const auto columns = [&] {
    Recordset set;
    set.Open("Select * from T", books.text());
    set.RecordCount();
    set.AddNew();
    return raised_number([&] { set("M") = 1; }) == 0 ? 2 : 1;
  };
  EXPECT_EQ(columns(), 1);
  books.another()->Execute("Alter Table T Add Column M integer");
  // The call that meets the change may fail; the next must not.
  raised(columns);
  EXPECT_EQ(columns(), 2);
}

}  // namespace
}  // namespace ombrix::testing
