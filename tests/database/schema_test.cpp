#include "ombrix/schema.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "database/connection_access.h"
#include "database/schema_text.h"
#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

/// The names behind `words` in the schema's text.
std::vector<std::string> names_behind(std::string_view words) {
  std::vector<std::string> names;
  for (auto place = kSchemaText.find(words); place != std::string_view::npos;
       place = kSchemaText.find(words, place)) {
    place += words.size();
    names.emplace_back(
        kSchemaText.substr(place, kSchemaText.find_first_of(" \n;(", place) - place));
  }
  return names;
}

class SchemaTest : public OnEachDatabase {
 protected:
  database::Session& session() { return *database::ConnectionAccess::session(*books.connection()); }
  Value version() { return books.value("Select max(Version) As V From Ombrix_Schema"); }
  /// As if it had never been made.
  void unmake() {
    books.spoil();
    for (const std::string& view : names_behind("create view ")) books.execute("Drop View " + view);
    for (const std::string& table : names_behind("create table if not exists ")) {
      books.execute("Drop Table " + table);
    }
  }
};
OMBRIX_ON_EACH_DATABASE(SchemaTest);

TEST_P(SchemaTest, gives_every_table_a_primary_key_and_a_lookup_for_generated_ones) {
  const auto tables = names_behind("create table if not exists ");
  ASSERT_GT(tables.size(), 30U);
  for (const std::string& name : tables) {
    const auto table = session().table(name);
    ASSERT_NE(table, nullptr) << name;
    EXPECT_FALSE(table->key.empty()) << name;
    for (const std::string& key : table->key) {
      const bool known = std::any_of(table->columns.begin(), table->columns.end(),
                                     [&](const auto& column) { return column.name == key; });
      EXPECT_TRUE(known) << name << "." << key;
    }
  }
}

TEST_P(SchemaTest, may_be_made_twice_on_books_in_use) {
  books.execute("Insert Into LPO_Master (LPO_No) Values ('A')");
  const std::string before = books.dump();
  create_schema(*books.connection());
  create_schema(*books.another());
  EXPECT_EQ(books.dump(), before);
  EXPECT_EQ(version(), Value(kSchemaVersion));
}

TEST_P(SchemaTest, is_made_by_several_threads_at_once) {
  for (int round = 0; round < 3; ++round) {
    unmake();
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back(
          [&] { failures += raised_number([&] { create_schema(*books.another()); }) != 0; });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(books.value("Select count(*) As V From Ombrix_Schema"), Value(1));
  }
}

TEST_P(SchemaTest, joins_the_transaction_of_the_client) {
  unmake();
  books.connection()->BeginTrans();
  create_schema(*books.connection());
  books.execute("Insert Into LPO_Master (LPO_No) Values ('A')");
  books.connection()->RollbackTrans();
  EXPECT_NE(raised_text([&] { version(); }), "");
  books.connection()->BeginTrans();
  create_schema(*books.connection());
  books.connection()->CommitTrans();
  EXPECT_EQ(version(), Value(kSchemaVersion));
}

}  // namespace
}  // namespace ombrix::testing
