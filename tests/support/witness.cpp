#include "support/witness.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <sstream>
#include <string_view>
#include <thread>
#include <variant>

#include "ombrix/failure.h"
#include "ombrix/recordset.h"

#include "frame/database/connection_access.h"
#include "frame/text.h"

namespace ombrix::testing {

namespace {

constexpr std::string_view kCounters = "Document_Prefix";

std::size_t count_of(const std::shared_ptr<Connection>& connection, const std::string& select) {
  Recordset set;
  set.Open(select, connection, Static);
  return set.RecordCount();
}

/// The server's own wait looks only ten times a second, so we look ourselves. The call stands in
/// the list: in the condition a server may make it before it looks at the rest.
std::size_t end_sessions(const std::shared_ptr<Connection>& connection, const std::string& which) {
  const std::string sessions = " From pg_stat_activity Where " + which;
  const std::size_t ended = count_of(connection, "Select pg_terminate_backend(pid)" + sessions);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (count_of(connection, "Select pid" + sessions) > 0) {
    if (std::chrono::steady_clock::now() > end) throw Failure(5, "The server ends no session.");
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
  return ended;
}

/// As it stands in a statement; a number to its last digit.
std::string literal(const Value& value) {
  if (value.is_null()) return "Null";
  if (const auto* number = std::get_if<double>(&value.held())) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, *number).ptr};
  }
  std::string text;
  for (const char c : value.to_text()) text.append(c == '\'' ? 2 : 1, c);
  return value.is_text() ? "'" + text + "'" : text;
}

}  // namespace

Witness::Witness(const Books& books) : connection_(books.another()) {
  std::istringstream dump(books.dump());
  for (std::string line; std::getline(dump, line);) {
    if (!line.starts_with("= ") || line == "= Ombrix_Schema") continue;
    const std::string table = line.substr(2);
    filled_tables_ += filled_tables_.empty() ? "" : " Union All ";
    filled_tables_ += "Select '" + table + "' As Name Where Exists (Select 1 From " + table + ")";
  }
}

Witness::State Witness::look() const {
  State state;
  for (const std::string& table : filled_tables()) {
    (table == kCounters ? state.counters : state.rows) += rows_of(table);
  }
  return state;
}

std::string Witness::emptying() const {
  std::string statements;
  for (const std::string& table : filled_tables()) statements += "Delete From " + table + ";";
  return statements;
}

std::string Witness::process_of(const std::shared_ptr<Connection>& connection) {
  Recordset set;
  set.Open("Select pg_backend_pid() As Process", connection, Static);
  return set("Process").value().to_text();
}

std::size_t Witness::end_session(const std::string& process) const {
  return end_sessions(connection_, "pid = " + process);
}

std::size_t Witness::end_sessions_but(const std::string& process) const {
  return end_sessions(
      connection_,
      "datname = current_database() And pid Not In (pg_backend_pid(), " + process + ")");
}

std::vector<std::string> Witness::filled_tables() const {
  std::vector<std::string> tables;
  Recordset set;
  set.Open(filled_tables_, connection_, Static);
  for (; !set.IsEOF(); set.MoveNext()) tables.push_back(set("Name").value().to_text());
  std::sort(tables.begin(), tables.end());
  return tables;
}

std::vector<std::string> Witness::columns_of(const std::string& table) const {
  const auto known = database::ConnectionAccess::session(*connection_)->table(table);
  std::vector<std::string> names;
  for (const auto& column : known->columns) {
    if (!same_name(column.name, "Row_Id")) names.push_back(column.name);
  }
  return names;
}

std::string Witness::rows_of(const std::string& table) const {
  const auto columns = columns_of(table);
  Recordset set;
  set.Open("Select * from " + table, connection_, Static);
  std::string text = "= " + table + '\n';
  for (; !set.IsEOF(); set.MoveNext()) {
    for (const auto& column : columns) {
      const Value value = set(column);
      text += (value.is_null() ? "Null" : value.to_text()) + '|';
    }
    text += '\n';
  }
  return text;
}

std::string Witness::inserts() const {
  std::string statements;
  for (const std::string& table : filled_tables()) {
    const auto columns = columns_of(table);
    std::string names;
    for (const auto& column : columns) names += (names.empty() ? "" : ", ") + column;
    Recordset set;
    set.Open("Select * from " + table, connection_, Static);
    for (; !set.IsEOF(); set.MoveNext()) {
      std::string values;
      for (const auto& column : columns) {
        values += (values.empty() ? "" : ", ") + literal(set(column));
      }
      statements += "Insert Into " + table + " (" + names + ") Values (" + values + ");";
    }
  }
  return statements;
}

}  // namespace ombrix::testing
