#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/connection.h"
#include "ombrix/value.h"

namespace ombrix::testing {

/// The databases that every test which touches one runs on: SQLite, and PostgreSQL when
/// OMBRIX_POSTGRES names a server (the head of a connection text, without a database).
std::vector<std::string> databases();
/// Ends the databases that this process made; GoogleTest's own programs do it by themselves.
void drop_databases();

/// A database with the schema and no rows. Making one is dear, so it is emptied and used again by a
/// later test; a test that changes the schema calls `spoil`.
class Books {
 public:
  /// `database` is one of `databases()`.
  explicit Books(const std::string& database);
  ~Books();
  Books(const Books&) = delete;
  Books& operator=(const Books&) = delete;

  /// The connection text, with `more` keys behind it ("Busy Timeout=100").
  std::string text(std::string_view more = "") const;
  /// The client's connection, open.
  const std::shared_ptr<Connection>& connection() const { return connection_; }
  /// One more connection to the same database.
  std::shared_ptr<Connection> another() const { return Connection::open(text_); }

  const std::string& kind() const { return database_; }
  /// No later test gets this database.
  void spoil() { spoiled_ = true; }

  void execute(std::string_view statements) const { connection_->Execute(statements); }
  /// All rows of a select, read through a connection of its own.
  std::vector<std::vector<Value>> rows(std::string_view select,
                                       const std::vector<std::string>& columns) const;
  /// The one value of a select whose column is named `V`, Empty when there is no row.
  Value value(std::string_view select) const;
  /// The names of all tables, sorted, but the one that holds the schema's version.
  static const std::vector<std::string>& tables();
  /// Every row of every table as text, tables by name, rows in key order; committed work only.
  std::string dump() const;

 private:
  std::string database_;
  std::string text_;
  bool spoiled_ = false;
  std::shared_ptr<Connection> connection_;
};

/// A test that runs on each of `databases()`.
class OnEachDatabase : public ::testing::TestWithParam<std::string> {
 protected:
  Books books{GetParam()};
};
#define OMBRIX_ON_EACH_DATABASE(Suite)                                                     \
  INSTANTIATE_TEST_SUITE_P(On, Suite, ::testing::ValuesIn(::ombrix::testing::databases()), \
                           [](const auto& chosen) { return chosen.param; })

}  // namespace ombrix::testing
