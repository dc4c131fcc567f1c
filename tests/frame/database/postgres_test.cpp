#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "ombrix/purchase/lpo.h"
#include "ombrix/recordset.h"
#include "ombrix/schema.h"

#include "frame/database/connection_access.h"
#include "support/books.h"
#include "support/failures.h"
#include "support/journal.h"

namespace ombrix::testing {
namespace {

using database::digits;
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

TEST_F(PostgresTest, says_what_is_wrong_and_never_the_password) {
  const std::string secret = "s3cr3t-w0rd";
  const std::string wrong = with(books().text(), "Password", secret);
  const struct {
    std::string text;
    std::string named;
  } cases[] = {
      {wrong, "password authentication failed"},
      {with(wrong, "Port", "1"), "port 1"},
      {with(wrong, "Host", "no.such.host.invalid"), "no.such.host.invalid"},
      {with(wrong, "Username", secret), "refused the session"},
      {books().text("Database2=x"), "a key is not known"},
      {with(books().text(), "Driver", "PostgreSQL;Port=1x"), "given twice"},
      {books().text("Busy Timeout=soon"), "Busy Timeout"},
      {with(books().text(), "Database", "no_such_books") + ";", "no_such_books"},
  };
  for (const auto& c : cases) {
    const Failure failure = raised([&] { Connection::open(c.text); });
    EXPECT_EQ(failure.number(), kDatabaseFailure);
    EXPECT_TRUE(contains(failure.description(), c.named)) << failure.description();
    EXPECT_FALSE(contains(failure.description(), secret)) << failure.description();
  }
}

TEST_F(PostgresTest, a_class_on_a_wrong_text_shows_no_password_to_anybody) {
  const std::string secret = "s3cr3t-w0rd";
  purchase::LPO order;
  order.AdoConnectionObject = client();
  order.ConnectionString = with(books().text(), "Password", secret);
  order.LPONo = "AABRPO1";
  const Journal journal(client());
  EXPECT_FALSE(order.Get_LPO());
  EXPECT_TRUE(contains(order.ErrDesc(), "password authentication failed")) << order.ErrDesc();
  EXPECT_FALSE(contains(order.ErrDesc(), secret));
  for (const Call& call : journal.calls()) EXPECT_FALSE(contains(call.text, secret)) << call.text;
}

TEST_F(PostgresTest, a_clients_session_that_the_server_ended_says_so) {
  given_order("A");
  client()->BeginTrans();
  write_comments(order("A", client()), "second");
  end_client();
  const Failure failure = raised([&] { order("A", client()); });
  EXPECT_EQ(failure.number(), kDatabaseFailure);
  EXPECT_TRUE(contains(failure.description(), "session with the server is lost"))
      << failure.description();
  EXPECT_EQ(client()->State(), 0);
  EXPECT_NE(raised_number([&] { client()->CommitTrans(); }), 0);
  EXPECT_EQ(comments("A"), "first");

  client()->Open(books().text());
  EXPECT_EQ(order("A", client()).read("LPO_Comments"), Value("first"));
}

TEST_F(PostgresTest, an_idle_session_that_was_ended_is_replaced_unnoticed_or_tells_so) {
  const Value before = text_session();
  EXPECT_EQ(text_session(), before);
  end_others();
  EXPECT_NE(text_session(), before);
  end_client();
  EXPECT_EQ(client()->State(), 0);
}

TEST_F(PostgresTest, a_text_write_to_a_row_of_the_clients_own_transaction_ends_with_a_reason) {
  given_order("A");
  client()->BeginTrans();
  write_comments(order("A", client()), "second");

  Recordset by_text;
  by_text.Open("Select * From LPO_Master Where LPO_No = 'A'", impatient(), Keyset);
  by_text("LPO_Comments") = "third";
  const auto begun = std::chrono::steady_clock::now();
  const std::string reason = raised_text([&] { by_text.Update(); });
  EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(3));
  EXPECT_TRUE(contains(reason, "lock timeout")) << reason;
  EXPECT_TRUE(contains(reason, "holds the row longer than the busy timeout")) << reason;

  client()->CommitTrans();
  EXPECT_EQ(comments("A"), "second");
}

TEST_F(PostgresTest, no_busy_timeout_is_endless) {
  given_order("A");
  client()->BeginTrans();
  write_comments(order("A", client()), "second");
  const auto other = Connection::open(books().text("Busy Timeout=0"));
  EXPECT_TRUE(
      contains(raised_text([&] { write_comments(order("A", other), "third"); }), "lock timeout"));
  client()->RollbackTrans();
}

TEST_F(PostgresTest, a_pessimistic_read_holds_its_rows_and_an_optimistic_one_detects) {
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
}

TEST_F(PostgresTest, a_transaction_survives_a_statement_that_is_refused) {
  client()->BeginTrans();
  given_order("A");
  const auto refusal = [&](const database::Statement& statement) {
    return raised_text([&] { database::execute(statement, *client()); });
  };
  EXPECT_TRUE(contains(refusal(sql({"Delete From LPO_Master Where LPO_No=", text("O'Brien")})),
                       "syntax error"));
  EXPECT_TRUE(contains(refusal(sql({"Delete From LPO_Master Where LPO_No=", text("x' Or '1'='1")})),
                       "refused"));
  EXPECT_NE(refusal(sql({"Delete From LPO_Master Where LPO_Identity=", digits("one")})), "");
  client()->CommitTrans();
  EXPECT_EQ(comments("A"), "first");
}

TEST_F(PostgresTest, a_transaction_refuses_everything_after_a_failed_statement_until_rollback) {
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

TEST_F(PostgresTest, a_transaction_cannot_be_committed_after_a_failed_statement) {
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

TEST_F(PostgresTest, doubles_are_exact_both_ways) {
  const struct {
    double value;
    const char* literal;
  } cases[] = {{0.1, "0.1"},
               {-1.7976931348623157e308, "-1.7976931348623157e308"},
               {123456789.123456789, "123456789.123456789"},
               {5e-324, "5e-324"},
               {1.0 / 3, "0.333333333333333314829616256247390992939472198486328125"}};
  for (const auto& c : cases) {
    books().execute("Delete From LPO_Master");
    books().execute(std::string("Insert Into LPO_Master (LPO_No, LPO_Total_Amount) Values ('L', ") +
                    c.literal + "::float8)");
    Recordset row = order("L", client());
    EXPECT_EQ(row("LPO_Total_Amount").value(), Value(c.value)) << c.literal;
    row("LPO_SubTotal") = c.value;
    row.Update();
    EXPECT_EQ(books().value(std::string("Select Count(*) As V From LPO_Master Where LPO_SubTotal ="
                                        " LPO_Total_Amount And LPO_SubTotal = ") +
                            c.literal + "::float8"),
              Value(1))
        << c.literal;
  }
}

TEST_F(PostgresTest,
       rows_come_in_the_byte_order_of_their_keys_whatever_the_language_of_the_database) {
  const std::string name = value(client(), "Select current_database() || '_fresh' As V").to_text();
  client()->Execute("Create Database " + name +
                    " Template template0 Encoding 'UTF8' Locale_Provider icu Icu_Locale 'en'"
                    " Locale 'C'");
  {
    const auto made = Connection::open(with(books().text() + ";", "Database", name));
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
  client()->Execute("Drop Database " + name + " With (Force)");
}

}  // namespace
}  // namespace ombrix::testing
