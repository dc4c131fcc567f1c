#include "support/books.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <unistd.h>

#include "ombrix/recordset.h"
#include "ombrix/schema.h"

#include "frame/database/connection_access.h"
#include "frame/schema_text.h"

namespace ombrix::testing {

namespace {

std::string fresh_folder() {
  static std::atomic<int> count{0};
  const auto folder =
      std::filesystem::temp_directory_path() /
      ("ombrix_test_" +
       std::to_string(std::hash<std::string>{}(
           ::testing::UnitTest::GetInstance()->current_test_info()->name())) +
       "_" + std::to_string(static_cast<long>(::getpid())) + "_" + std::to_string(++count));
  std::filesystem::create_directories(folder);
  return folder.string();
}

std::vector<std::string> tables() {
  constexpr std::string_view kCreate = "create table if not exists ";
  std::vector<std::string> names;
  for (auto place = kSchemaText.find(kCreate); place != std::string_view::npos;
       place = kSchemaText.find(kCreate, place)) {
    place += kCreate.size();
    names.emplace_back(kSchemaText.substr(place, kSchemaText.find(' ', place) - place));
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

std::vector<std::string> databases() {
  return {"SQLite"};
}

Books::Books(const std::string& database) : folder_(fresh_folder()) {
  text_ = "Driver=" + database + ";Database=" + folder_ + "/books.db;Synchronous=OFF";
  connection_ = Connection::open(text_);
  create_schema(*connection_);
}

Books::~Books() {
  connection_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
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
