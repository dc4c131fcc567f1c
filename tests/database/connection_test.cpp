#include "ombrix/connection.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "ombrix/recordset.h"

#include "base/names.h"
#include "base/text.h"
#include "database/connection_access.h"
#include "database/session_pool.h"
#include "support/books.h"
#include "support/failures.h"
#include "support/journal.h"

namespace ombrix::testing {
namespace {

using database::SessionPool;

TEST(ConnectionText, NamesWhatIsWrongAndNeverAValue) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "\"Driver\" is missing"},
      {"Database=secret", "\"Driver\" is missing"},
      {"Driver=", "\"Driver\" is missing"},
      {"Driver=secret;Database=x", "\"Driver\" must be SQLite"},
      {"secret", "no \"Key=Value\""},
      {"Driver=SQLite;secret;Database=x", "no \"Key=Value\""},
      {"=secret", "a key is missing"},
      {"Driver=SQLite;driver=secret", "given twice"},
      {"Driver=\"secret", "not closed"},
      {"Driver=\"SQLite\"secret;Database=x", "behind a quoted value"},
      {"Driver=SQLite;Password=sec;ret=x;Database=x", "a key is not known"},
      {"Driver=SQLite;Pwd=sec;ret=x;Database=x", "a key is not known"},
  };
  for (const auto& [text, named] : cases) {
    const Failure failure = raised([&, &text = text] { Connection::open(text); });
    EXPECT_EQ(failure.number(), kDatabaseFailure) << text;
    EXPECT_TRUE(contains(failure.description(), named)) << failure.description();
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
  void lose_at(Call::Kind kind) {
    connection().inject([kind](const Call& call) {
      return call.kind == kind ? Fault{Fault::Kind::lose_session, 0, "The line is dead."} : Fault();
    });
  }
};
OMBRIX_ON_EACH_DATABASE(ConnectionTest);

TEST_P(ConnectionTest, tells_its_state_and_opens_once) {
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
  EXPECT_EQ(connection.Execute(kAddOrder), 1);
}

TEST_P(ConnectionTest, answers_the_rows_of_the_last_statement) {
  books.spoil();
  EXPECT_EQ(connection().Execute("Insert Into LPO_Master (LPO_No) Values ('A'), ('B'), ('C')"), 3);
  EXPECT_EQ(connection().Execute("Select * From LPO_Master"), 0);
  EXPECT_EQ(connection().Execute("Update LPO_Master Set RFQ_No='r' Where LPO_No='none'"), 0);
  EXPECT_EQ(connection().Execute("Delete From LPO_Master; Create Table T (N integer)"), 0);
  EXPECT_EQ(connection().Execute("  "), 0);
  EXPECT_EQ(connection().Execute("Insert Into T Values (1); Insert Into T Values (2), (3);  "), 2);
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

TEST_P(ConnectionTest, all_or_nothing_raises_the_first_failure_when_the_session_is_lost) {
  lose_at(Call::Kind::execute);
  EXPECT_EQ(
      raised_text([&] { all_or_nothing(connection(), [&] { return add_order("A"), true; }); }),
      "The line is dead.");
  EXPECT_EQ(by_text().RecordCount(), 0U);
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

TEST_P(ConnectionTest, a_bounded_number_of_text_sessions_is_kept_until_the_last_client_goes) {
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
  std::vector<Recordset> many(30);
  for (Recordset& set : many) set = by_text();
  many.clear();
  EXPECT_GE(idle(), 2U);
  EXPECT_LE(idle(), 8U);
  another.reset();
  EXPECT_EQ(idle(), 0U);
  by_text();
  EXPECT_EQ(idle(), 0U);
}

TEST_P(ConnectionTest, keeps_no_session_that_is_lost_or_inside_a_transaction) {
  auto busy = SessionPool::instance().borrow(books.text());
  busy->driver().begin();
  auto lost = SessionPool::instance().borrow(books.text());
  lost->lose("gone");
  busy.reset();
  lost.reset();
  EXPECT_EQ(idle(), 0U);
  EXPECT_EQ(connection().Execute(kAddOrder), 1);
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

TEST_P(ConnectionTest, an_observer_sees_each_call_as_a_reader_would_write_it) {
  const Journal journal(books.connection());
  Recordset set;
  set.Open("Select * from LPO_Master Where RFQ_No='r'", books.connection(), {2, 3, -1});
  set.AddNew();
  set("LPO_No") = "O'Brien";
  set("LPO_Identity") = 7;
  set.Update();
  set("Vendor_Code") = Null();
  set.Update();
  connection().BeginTrans();
  database::execute(database::sql({"Update LPO_Master Set RFQ_No=", database::text("r"),
                                   " Where LPO_Identity=", database::number(7)}),
                    connection());
  connection().RollbackTrans();
  std::vector<std::string> texts;
  // Columns are written as the database spells them.
  for (const Call& call : journal.calls()) texts.push_back(lower_name(call.text));
  EXPECT_EQ(texts,
            (std::vector<std::string>{
                "select * from lpo_master where rfq_no='r'",
                "insert into lpo_master (lpo_no, lpo_identity) values ('o''brien', 7)",
                "update lpo_master set vendor_code=null where lpo_no='o''brien' and "
                "vendor_code is not distinct from null",
                "begin", "update lpo_master set rfq_no='r' where lpo_identity=7", "rollback"}));
  EXPECT_EQ(journal.calls()[0].cursor, 2);
  EXPECT_EQ(journal.calls()[0].lock, 3);
  EXPECT_EQ(journal.calls()[1].rows, 1);
  EXPECT_EQ(journal.calls()[1].road, Call::Road::object);
}

TEST_P(ConnectionTest, a_lost_session_stays_lost_and_says_so) {
  Recordset open = by_object();
  connection().BeginTrans();
  add_order("A");
  lose_at(Call::Kind::read);
  EXPECT_EQ(raised_text([&] { open.RecordCount(); }), "The line is dead.");
  connection().inject({});
  EXPECT_EQ(connection().State(), 0);
  const std::function<void()> uses[] = {
      [&] { open.RecordCount(); }, [&] { open.AddNew(), open.Update(); }, [&] { add_order("B"); },
      [&] { by_object(); }, [&] { connection().RollbackTrans(); }};
  for (const auto& use : uses) EXPECT_EQ(raised_text(use), "The line is dead.");
  // Its transaction went with it: another client can write, and this one after it opened again.
  EXPECT_EQ(books.another()->Execute(kAddOrder), 1);
  connection().Open(books.text());
  EXPECT_EQ(by_object().RecordCount(), 1U);
}

/// Three threads: two on one database, one on another, which may be of another kind.
TEST_P(ConnectionTest, threads_with_a_connection_each_do_not_disturb_each_other) {
  const Books beside(databases().back());
  const auto work = [](const Books& at, const std::string& prefix) {
    const std::string reason = raised_text([&] {
      const auto own = at.another();
      for (int i = 0; i < 50; ++i) {
        Recordset set;
        set.Open("Select * from LPO_Master", own);
        set.AddNew();
        set("LPO_No") = prefix + std::to_string(i);
        set.Update();
        Recordset seen;
        seen.Open("Select * from LPO_Master Where LPO_No='" + prefix + "0'",
                  own->ConnectionString());
        EXPECT_EQ(seen.RecordCount(), 1U);
      }
    });
    EXPECT_EQ(reason, "");
  };
  std::thread second([&] { work(books, "A"); }), third([&] { work(beside, "B"); });
  work(books, "C");
  second.join();
  third.join();
  EXPECT_EQ(by_object().RecordCount(), 100U);
  EXPECT_EQ(beside.value("Select Count(*) As V From LPO_Master").to_number(), 50);
}

}  // namespace
}  // namespace ombrix::testing
