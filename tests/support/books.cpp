#include "support/books.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>

#include "ombrix/recordset.h"
#include "ombrix/schema.h"

#include "base/names.h"
#include "base/text.h"
#include "database/connection_access.h"
#include "database/schema_text.h"

namespace ombrix::testing {

namespace {

/// Something that no other process and no other call in this one names its own.
std::string fresh_name() {
  static std::atomic<int> count{0};
  static const unsigned process = std::random_device()();
  return "ombrix_test_" + std::to_string(process) + "_" + std::to_string(++count);
}

/// The databases that this process made, gone when its tests end.
class Made {
 public:
  Made() : folder_(std::filesystem::temp_directory_path() / fresh_name()) {
    std::filesystem::create_directories(folder_);
  }
  void clear() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
    for (const std::string& name : on_server_) {
      server()->Execute("drop database if exists " + name + " with (force)");
    }
  }
  Made(const Made&) = delete;
  Made& operator=(const Made&) = delete;

  /// The text of an empty one with the schema.
  std::string take(const std::string& database) {
    auto& idle = idle_[database];
    if (idle.empty()) return make(database);
    std::string text = idle.back();
    idle.pop_back();
    return empty(text) ? text : make(database);
  }
  void give_back(const std::string& database, std::string text) {
    idle_[database].push_back(std::move(text));
  }

 private:
  static std::string server_text() { return std::getenv("OMBRIX_POSTGRES"); }
  static std::shared_ptr<Connection> server() {
    return Connection::open(server_text() + ";Database=postgres");
  }

  std::string make(const std::string& database) {
    const std::string name = fresh_name();
    std::string text =
        "Driver=SQLite;Database=" + (folder_ / name).string() + ".db" + ";Synchronous=OFF";
    if (database == "PostgreSQL") {
      server()->Execute("create database " + name);
      on_server_.push_back(name);
      text = server_text() + ";Database=" + name;
    }
    create_schema(*Connection::open(text));
    return text;
  }

  /// False when a test took a table away.
  static bool empty(const std::string& text);

  std::filesystem::path folder_;
  std::vector<std::string> on_server_;
  std::map<std::string, std::vector<std::string>> idle_;
};

Made& made() {
  static Made made;
  return made;
}

/// At exit it would be too late: the client library of a database ends before our statics do.
class ClearMade final : public ::testing::Environment {
 public:
  void TearDown() override { drop_databases(); }
};
[[maybe_unused]] const auto* const kClearMade = ::testing::AddGlobalTestEnvironment(new ClearMade);

/// Rows go, and keys that a database counts up itself start again, so that two dumps compare.
bool Made::empty(const std::string& text) {
  const auto connection = Connection::open(text);
  const bool on_server = text.find("PostgreSQL") != std::string::npos;
  database::Session& session = *database::ConnectionAccess::session(*connection);
  std::string statements = on_server ? "" : "delete from sqlite_sequence;";
  for (const std::string& name : Books::tables()) {
    const auto table = session.table(name);
    if (!table) return false;
    statements += "delete from " + name + ";";
    const bool counts = same_name(table->columns.front().name, "Row_Id");
    if (on_server && counts) {
      statements += "alter table " + name + " alter column Row_Id restart;";
    }
  }
  connection->BeginTrans();
  connection->Execute(statements);
  connection->CommitTrans();
  return true;
}

}  // namespace

void drop_databases() {
  made().clear();
}

std::vector<std::string> databases() {
  if (std::getenv("OMBRIX_POSTGRES") == nullptr) return {"SQLite"};
  return {"SQLite", "PostgreSQL"};
}

Books::Books(const std::string& database)
    : database_(database), text_(made().take(database)), connection_(Connection::open(text_)) {}

Books::~Books() {
  connection_.reset();
  if (!spoiled_) made().give_back(database_, text_);
}

std::string Books::text(std::string_view more) const {
  return more.empty() ? text_ : text_ + ";" + std::string(more);
}

std::vector<std::vector<Value>> Books::rows(std::string_view select,
                                            const std::vector<std::string>& columns) const {
  Recordset set;
  set.Open(select, text_, Static);
  std::vector<std::vector<Value>> rows;
  for (; !set.IsEOF(); set.MoveNext()) {
    std::vector<Value>& row = rows.emplace_back();
    for (const std::string& column : columns) row.push_back(set(column));
  }
  return rows;
}

Value Books::value(std::string_view select) const {
  const auto found = rows(select, {"V"});
  return found.empty() ? Value() : found[0][0];
}

const std::vector<std::string>& Books::tables() {
  static const std::vector<std::string> tables = [] {
    constexpr std::string_view kCreate = "create table if not exists ";
    std::vector<std::string> names;
    for (auto place = kSchemaText.find(kCreate); place != std::string_view::npos;
         place = kSchemaText.find(kCreate, place)) {
      place += kCreate.size();
      names.emplace_back(kSchemaText.substr(place, kSchemaText.find(' ', place) - place));
    }
    std::sort(names.begin(), names.end());
    std::erase(names, "Ombrix_Schema");
    return names;
  }();
  return tables;
}

std::string Books::dump() const {
  const auto connection = another();
  database::Session& session = *database::ConnectionAccess::session(*connection);
  std::string text;
  for (const std::string& name : tables()) {
    const auto table = session.table(name);
    Recordset set;
    set.Open("Select * from " + name, connection, Static);
    text += "= " + name + '\n';
    for (; !set.IsEOF(); set.MoveNext()) {
      for (const auto& column : table->columns) {
        const Value value = set(column.name);
        text += value.is_null() ? std::string("Null") : value.to_text();
        text += '|';
      }
      text += '\n';
    }
  }
  return text;
}

}  // namespace ombrix::testing
