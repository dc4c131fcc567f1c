#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>

#include "ombrix/recordset.h"
#include "ombrix/schema.h"

#include "database/connection_access.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

/// What is SQLite's own. Everything else about the database layer is tested on every database.
class SqliteTest : public ::testing::Test {
 protected:
  SqliteTest() {
    fs::create_directories(folder_);
    client_ = Connection::open(text());
    create_schema(*client_);
  }
  ~SqliteTest() override {
    client_.reset();
    fs::remove_all(folder_);
  }

  std::string text(const std::string& more = "") const { return text_of(file_, more); }
  static std::string text_of(const fs::path& file, const std::string& more = "") {
    return "Driver=SQLite;Database=" + file.string() + ";" + more;
  }
  fs::path beside(const std::string& name) const { return folder_ / name; }
  Connection& client() { return *client_; }

  static Value pragma(const std::shared_ptr<Connection>& connection, const std::string& name,
                      const std::string& column = "") {
    Recordset set;
    set.Open("Pragma " + name, connection, Static);
    return set(column.empty() ? name : column).value();
  }
  static Recordset rows(const std::string& text) {
    Recordset set;
    set.Open("Select * from LPO_Master", text);
    return set;
  }
  static void append(const std::string& text, const std::string& number) {
    Recordset set = rows(text);
    set.AddNew();
    set("LPO_No") = number;
    set.Update();
  }
  template <class Body>
  static milliseconds time_of(Body body) {
    const auto start = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
  }
  /// A recordset on the text, the same on a connection, and a write fail with this text.
  static void expect_refused(const std::string& text, const std::string& reason) {
    const std::string opened = raised_text([&] { Connection::open(text); });
    EXPECT_TRUE(contains(opened, reason)) << text << ": " << opened;
    const std::string read = raised_text([&] { rows(text); });
    EXPECT_TRUE(contains(read, reason)) << text << ": " << read;
  }

  fs::path folder_ = fs::temp_directory_path() / ("ombrix_sqlite_" + std::to_string(::getpid()));
  fs::path file_ = folder_ / "books.db";
  std::shared_ptr<Connection> client_;
};

TEST_F(SqliteTest, reads_its_text_without_regard_to_case_blanks_and_quotes) {
  const std::string file = file_.string();
  client().Execute("Insert Into LPO_Master (LPO_No) Values ('A')");
  for (const std::string& same :
       {" ; dRIVER = sqlite ;; DATABASE =  " + file + "  ;",
        "Driver=\"SQLite\";Database=\"" + file + "\" ;Busy Timeout=\"9\"",
        "busy timeout=0;synchronous=normal;Driver=SQLITE;Database=" + file}) {
    const auto connection = Connection::open(same);
    EXPECT_EQ(connection->Execute("Update LPO_Master Set RFQ_No='r'"), 1) << same;
    EXPECT_EQ(connection->ConnectionString(), same);
  }
}

TEST_F(SqliteTest, is_durable_with_a_write_ahead_log_unless_told_otherwise) {
  const struct {
    const char* more;
    int synchronous, busy_timeout;
  } cases[] = {{"", 2, 5000},
               {"Synchronous=full", 2, 5000},
               {"Synchronous=NORMAL;Busy Timeout=0", 1, 0},
               {"Synchronous=Off;Busy Timeout=1234", 0, 1234}};
  for (const auto& c : cases) {
    const auto connection = Connection::open(text(c.more));
    EXPECT_EQ(pragma(connection, "journal_mode"), Value("wal")) << c.more;
    EXPECT_EQ(pragma(connection, "synchronous"), Value(c.synchronous)) << c.more;
    EXPECT_EQ(pragma(connection, "busy_timeout", "timeout"), Value(c.busy_timeout)) << c.more;
  }
}

TEST_F(SqliteTest, refuses_what_its_text_cannot_mean) {
  const std::pair<std::string, std::string> cases[] = {
      {"Driver=SQLite", "\"Database\" is missing"},
      {text("Synchronous=\"FULL; Drop Table LPO_Master\""), "must be FULL, NORMAL or OFF"},
      {text("Synchronous=3"), "must be FULL, NORMAL or OFF"},
      {text("Busy Timeout=-1"), "whole number of milliseconds"},
      {text("Busy Timeout=99999999999"), "whole number of milliseconds"},
      {text("Server=here"), "the key \"server\" is not known"},
      {text_of(":memory:"), "must be the path of a file"},
      {text_of("file:" + file_.string()), "must be the path of a file"},
  };
  for (const auto& [text, reason] : cases) expect_refused(text, reason);
}

TEST_F(SqliteTest, says_what_is_wrong_with_a_file) {
  std::ofstream(beside("letter.txt")) << std::string(5000, 'a');
  expect_refused(text_of(beside("letter.txt")), "file is not a database");
  expect_refused(text_of(beside("missing/books.db")), "unable to open database file (is the path");
  expect_refused(text_of(file_.parent_path()), "unable to open database file (is the path");
  EXPECT_EQ(fs::file_size(beside("letter.txt")), 5000U);
  EXPECT_FALSE(fs::exists(beside("missing")));
}

TEST_F(SqliteTest, a_client_makes_a_missing_file_and_a_text_session_does_not) {
  const std::string fresh = text_of(beside("new.db"));
  EXPECT_TRUE(contains(raised_text([&] { rows(fresh); }), "unable to open database file"));
  EXPECT_FALSE(fs::exists(beside("new.db")));
  const auto connection = Connection::open(fresh);
  EXPECT_TRUE(contains(raised_text([&] { rows(fresh); }), "no such table: LPO_Master"));
  create_schema(*connection);
  EXPECT_EQ(rows(fresh).RecordCount(), 0U);
}

TEST_F(SqliteTest, a_writer_waits_for_another_and_no_longer_than_its_busy_timeout) {
  const auto blocker = Connection::open(text());
  std::string refusal;
  milliseconds waited{};
  blocker->BeginTrans();
  std::thread([&] {
    const auto own = Connection::open(text("Busy Timeout=200"));
    waited = time_of([&] { refusal = raised_text([&] { own->BeginTrans(); }); });
  }).join();
  EXPECT_TRUE(contains(refusal, "database is locked (another connection is writing")) << refusal;
  EXPECT_GE(waited, milliseconds(150));
  EXPECT_LT(waited, milliseconds(4000));

  std::thread waiting([&] { append(text(), "B"); });
  std::this_thread::sleep_for(milliseconds(50));
  blocker->Execute("Insert Into LPO_Master (LPO_No) Values ('A')");
  blocker->CommitTrans();
  waiting.join();
  EXPECT_EQ(rows(text()).RecordCount(), 2U);
}

TEST_F(SqliteTest, a_write_through_the_text_that_could_never_succeed_fails_at_once) {
  const std::string own = client().ConnectionString();
  client().Execute("Insert Into LPO_Master (LPO_No) Values ('A')");
  Recordset before = rows(own);
  before("RFQ_No") = "r";
  const auto elsewhere = Connection::open(text_of(beside("other.db")));
  create_schema(*elsewhere);
  client().BeginTrans();
  append(elsewhere->ConnectionString(), "A");
  const fs::path same_file = file_.parent_path() / "." / file_.filename();
  for (const std::string& to : {own, text(), text_of(same_file)}) {
    std::string refusal;
    const auto waited = time_of([&] { refusal = raised_text([&] { append(to, "B"); }); });
    EXPECT_TRUE(contains(refusal, "locked by a transaction of this thread's own connection"))
        << to << ": " << refusal;
    EXPECT_LT(waited, milliseconds(2000)) << to;
    EXPECT_EQ(rows(to).RecordCount(), 1U);
  }
  EXPECT_LT(time_of([&] { EXPECT_NE(raised_text([&] { before.Update(); }), ""); }),
            milliseconds(2000));
  client().CommitTrans();
  before.Update();
  append(own, "B");
  EXPECT_EQ(rows(own).RecordCount(), 2U);
}

TEST_F(SqliteTest, a_full_database_undoes_the_whole_transaction_and_says_so) {
  client().Execute("Pragma max_page_count=1");
  const std::string long_text(200000, 'x');
  client().Execute("Insert Into LPO_Master (LPO_No) Values ('A')");
  const auto fill = [&] {
    client().Execute("Insert Into LPO_Master (LPO_No) Values ('B')");
    client().Execute("Insert Into LPO_Master (LPO_No, RFQ_No) Values ('C', '" + long_text + "')");
  };
  EXPECT_TRUE(contains(raised_text([&] { all_or_nothing(client(), [&] { return fill(), true; }); }),
                       "database or disk is full"));
  // A method traps the failure, carries on and answers False: still nothing may stay.
  EXPECT_FALSE(all_or_nothing(client(), [&] {
    EXPECT_NE(raised_text(fill), "");
    EXPECT_NE(raised_text([&] { client().Execute("Delete From LPO_Master"); }), "");
    return false;
  }));
  // Nor when it answers True.
  EXPECT_NE(
      raised_text([&] { all_or_nothing(client(), [&] { return raised_number(fill) != 0; }); }), "");
  EXPECT_FALSE(client().in_transaction());
  EXPECT_EQ(rows(text()).RecordCount(), 1U);
  client().Execute("Insert Into LPO_Master (LPO_No) Values ('D')");
  EXPECT_EQ(rows(text()).RecordCount(), 2U);
}

}  // namespace
}  // namespace ombrix::testing
