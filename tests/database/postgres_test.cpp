#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "ombrix/purchase/vendor.h"
#include "ombrix/recordset.h"
#include "ombrix/schema.h"

#include "database/connection_access.h"
#include "database/session_pool.h"
#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

using database::digits;
using database::SessionPool;
using database::sql;
using database::text;

/// The connection text with one value of it changed.
std::string with(std::string connection_text, const std::string& key, const std::string& value) {
  const auto start = connection_text.find(key + "=") + key.size() + 1;
  return connection_text.replace(start, connection_text.find(';', start) - start, value);
}

Value value(const std::shared_ptr<Connection>& connection, const std::string& select) {
  Recordset set;
  set.Open(select, connection, Static);
  return set("V");
}

class PostgresTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("OMBRIX_POSTGRES") == nullptr) {
      GTEST_SKIP() << "OMBRIX_POSTGRES names no server";
    }
    books_ = std::make_unique<Books>("PostgreSQL");
  }

  const Books& books() const { return *books_; }
  const std::shared_ptr<Connection>& client() const { return books_->connection(); }
  std::string impatient() const { return books_->text("Busy Timeout=200"); }

  void given_order(const std::string& number, const std::string& comments = "first") const {
    books_->execute("Insert Into LPO_Master (LPO_No, LPO_Comments) Values ('" + number + "', '" +
                    comments + "')");
  }
  std::string comments(const std::string& number) const {
    return books_->value("Select LPO_Comments As V From LPO_Master Where LPO_No = '" + number + "'")
        .text_or_empty();
  }
  /// Ends every session on the database but the client's.
  void end_others() const {
    client()->Execute(
        "Select pg_terminate_backend(pid, 5000) From pg_stat_activity"
        " Where datname = current_database() And pid <> pg_backend_pid()");
  }
  void end_client() const {
    const std::string pid = value(client(), "Select pg_backend_pid() As V").to_text();
    books_->another()->Execute("Select pg_terminate_backend(" + pid + ", 5000)");
  }
  /// The server's process behind the text session that is next in use.
  Value text_session() const { return books_->value("Select pg_backend_pid() As V"); }

 private:
  std::unique_ptr<Books> books_;
};

Recordset order(const std::string& number, const std::shared_ptr<Connection>& connection,
                OpenMode mode = Keyset) {
  Recordset set;
  set.Open("Select * From LPO_Master Where LPO_No = '" + number + "'", connection, mode);
  EXPECT_EQ(set.RecordCount(), 1U);
  return set;
}

void write_comments(Recordset set, const std::string& comments) {
  set("LPO_Comments") = comments;
  set.Update();
}

using PostgresConnecting = PostgresTest;

TEST_F(PostgresConnecting, says_what_is_wrong_and_never_the_password) {
  const std::string secret = "s3cr3t-w0rd";
  const std::string wrong = with(books().text(), "Password", secret);
  const std::pair<std::string, std::string> cases[] = {
      {wrong, "password authentication failed"},
      {with(wrong, "Port", "1"), "port 1"},
      {with(wrong, "Host", "no.such.host.invalid"), "no.such.host.invalid"},
      {with(wrong, "Username", secret), "refused the session"},
      {books().text("Database2=x"), "a key is not known"},
      {with(books().text(), "Driver", "PostgreSQL;Port=1x"), "given twice"},
      {books().text("Busy Timeout=soon"), "Busy Timeout"},
      {with(books().text(), "Database", "no_such_books") + ";", "no_such_books"},
  };
  for (const auto& [text, named] : cases) {
    const Failure failure = raised([&, &text = text] { Connection::open(text); });
    EXPECT_EQ(failure.number(), kDatabaseFailure);
    EXPECT_TRUE(contains(failure.description(), named)) << failure.description();
    EXPECT_FALSE(contains(failure.description(), secret)) << failure.description();
  }
}

using PostgresSessions = PostgresTest;

TEST_F(PostgresSessions, a_clients_session_that_the_server_ended_says_so) {
  given_order("A");
  client()->BeginTrans();
  write_comments(order("A", client()), "second");
  end_client();
  const std::string reason = raised_text([&] { order("A", client()); });
  EXPECT_TRUE(contains(reason, "session with the server is lost")) << reason;
  EXPECT_EQ(client()->State(), 0);
  EXPECT_EQ(comments("A"), "first");
  client()->Open(books().text());
  EXPECT_EQ(client()->State(), 1);
  // Also when nobody met the end yet.
  end_client();
  EXPECT_EQ(client()->State(), 0);
}

TEST_F(PostgresSessions, an_idle_text_session_that_was_ended_is_replaced_unnoticed) {
  const Value before = text_session();
  EXPECT_EQ(text_session(), before);
  end_others();
  EXPECT_NE(text_session(), before);
}

TEST_F(PostgresSessions, statements_are_prepared_and_sessions_opened_once) {
  purchase::Vendor vendor;
  vendor.AdoConnectionObject = client();
  vendor.ConnectionString = books().text();
  vendor.VendorCode = "AAV001";
  const auto run_one = [&] {
    EXPECT_FALSE(vendor.Exist_Vendor());
    EXPECT_TRUE(vendor.Adjusted()) << vendor.ErrDesc();
    write_comments(order("A", client()), "again");
  };
  const auto prepared = [&] {
    return value(client(), "Select Count(*) As V From pg_prepared_statements").to_number();
  };
  given_order("A");
  run_one();
  prepared();
  const double statements = prepared();
  const Value session = text_session();
  const std::size_t idle = SessionPool::instance().idle(books().text());
  run_one();
  EXPECT_EQ(prepared(), statements);
  EXPECT_EQ(text_session(), session);
  EXPECT_EQ(SessionPool::instance().idle(books().text()), idle);
}

using PostgresLocks = PostgresTest;

TEST_F(PostgresLocks, a_text_write_to_a_row_of_the_clients_own_transaction_ends_with_a_reason) {
  given_order("A");
  client()->BeginTrans();
  write_comments(order("A", client()), "second");

  // Nor is a timeout of 0 an endless one.
  for (const char* timeout : {"Busy Timeout=200", "Busy Timeout=0"}) {
    Recordset by_text;
    by_text.Open("Select * From LPO_Master Where LPO_No = 'A'", books().text(timeout), Keyset);
    by_text("LPO_Comments") = "third";
    const auto begun = std::chrono::steady_clock::now();
    const std::string reason = raised_text([&] { by_text.Update(); });
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(3));
    EXPECT_TRUE(contains(reason, "lock timeout")) << reason;
    EXPECT_TRUE(contains(reason, "holds the row longer than the busy timeout")) << reason;
  }
  client()->CommitTrans();
  EXPECT_EQ(comments("A"), "second");
}

TEST_F(PostgresLocks, a_pessimistic_read_holds_its_rows_and_an_optimistic_one_detects) {
  given_order("A");
  given_order("B");
  const auto other = Connection::open(impatient());
  client()->BeginTrans();
  Recordset held = order("A", client(), KeysetPessimistic);
  Recordset free = order("B", client(), Keyset);
  EXPECT_TRUE(
      contains(raised_text([&] { write_comments(order("A", other), "other's"); }), "lock timeout"));
  write_comments(order("B", other), "other's");

  held("LPO_Comments") = "own";
  held.Update();
  free("LPO_Comments") = "own";
  EXPECT_EQ(raised_text([&] { free.Update(); }), kConflict);
  client()->CommitTrans();
  EXPECT_EQ(comments("A"), "own");
  EXPECT_EQ(comments("B"), "other's");
  // Outside a transaction it holds nothing.
  held = order("A", client(), KeysetPessimistic);
  write_comments(order("A", other), "other's");
  held("LPO_Comments") = "own";
  EXPECT_EQ(raised_text([&] { held.Update(); }), kConflict);
}

using PostgresTransactions = PostgresTest;

TEST_F(PostgresTransactions, survive_a_statement_that_is_refused) {
  client()->BeginTrans();
  given_order("A");
  EXPECT_TRUE(contains(raised_text([&] {
                         open_recordset(
                             sql({"Select * From LPO_Master Where LPO_No=", text("O'Brien")}),
                             *client(), Keyset);
                       }),
                       "syntax error"));
  EXPECT_TRUE(contains(raised_text([&] {
                         database::execute(
                             sql({"Delete From LPO_Master Where LPO_No=", text("x' Or '1'='1")}),
                             *client());
                       }),
                       "refused"));
  EXPECT_NE(raised_number([&] {
              open_recordset(sql({"Select * From LPO_Master Where LPO_Identity=", digits("one")}),
                             *client(), Keyset);
            }),
            0);
  client()->CommitTrans();
  EXPECT_EQ(comments("A"), "first");
}

TEST_F(PostgresTransactions, refuse_everything_after_a_failed_statement_until_rollback) {
  given_order("A");
  client()->BeginTrans();
  write_comments(order("A", client()), "second");
  EXPECT_TRUE(contains(raised_text([&] { given_order("A"); }), "duplicate key"));
  const std::string reason = raised_text([&] { order("A", client()); });
  EXPECT_TRUE(contains(reason, "roll the transaction back")) << reason;
  EXPECT_TRUE(client()->in_transaction());
  client()->RollbackTrans();
  EXPECT_EQ(comments("A"), "first");
  given_order("B");
}

TEST_F(PostgresTransactions, cannot_be_committed_after_a_failed_statement) {
  client()->BeginTrans();
  given_order("A");
  EXPECT_NE(raised_number([&] { client()->Execute("Select 1 / 0"); }), 0);
  EXPECT_EQ(raised_text([&] { client()->CommitTrans(); }),
            "The transaction was rolled back, since a statement in it had failed.");
  EXPECT_FALSE(client()->in_transaction());
  EXPECT_EQ(comments("A"), "");
  EXPECT_NE(raised_number([&] {
              all_or_nothing(*client(), [&] {
                given_order("A");
                EXPECT_NE(raised_number([&] { given_order("A"); }), 0);
                return true;
              });
            }),
            0);
  EXPECT_EQ(comments("A"), "");
}

/// A database that sorts by the rules of a language, so that nothing comes right by accident.
class PostgresFresh : public PostgresTest {
 protected:
  void SetUp() override {
    PostgresTest::SetUp();
    if (IsSkipped()) return;
    name_ = value(client(), "Select current_database() || '_fresh' As V").to_text();
    client()->Execute("Create Database " + name_ +
                      " Template template0 Encoding 'UTF8' Locale_Provider icu Icu_Locale 'en'"
                      " Locale 'C'");
  }
  void TearDown() override {
    if (!name_.empty()) client()->Execute("Drop Database " + name_ + " With (Force)");
  }
  std::string fresh_text() const { return with(books().text() + ";", "Database", name_); }

 private:
  std::string name_;
};

TEST_F(PostgresFresh, rows_come_in_the_byte_order_of_their_keys) {
  const auto made = Connection::open(fresh_text());
  create_schema(*made);
  made->Execute(
      "Insert Into LPO_Detail (LPO_No, SL_No) Values ('b', 1), ('A', 10), ('A', 9), ('a', 1),"
      " ('_', 1), ('B', 1), ('A-', 1), ('AA', 1)");
  Recordset set;
  set.Open("Select * From LPO_Detail", made, Static);
  std::string keys;
  for (; !set.IsEOF(); set.MoveNext()) {
    keys += set("LPO_No").value().to_text() + set("SL_No").value().to_text() + " ";
  }
  EXPECT_EQ(keys, "A9 A10 A-1 AA1 B1 _1 a1 b1 ");
}

}  // namespace
}  // namespace ombrix::testing
