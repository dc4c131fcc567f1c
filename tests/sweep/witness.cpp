#include "sweep/witness.h"

#include <chrono>
#include <string_view>
#include <thread>

#include "ombrix/failure.h"
#include "ombrix/recordset.h"

#include "base/names.h"
#include "base/text.h"
#include "database/connection_access.h"

namespace ombrix::testing {

namespace {

constexpr std::string_view kCounters = "Document_Prefix";
const std::string kSelectCounters =
    "Select -1 As Place, Document_Prefix || ' ' || Branch_Prefix || '=' || Document_Next_No As Line"
    " From Document_Prefix Union All Select -1, Document_Prefix || ' ' || Branch_Prefix ||"
    " ' TMP=' || Temporary_Next_No From Document_Prefix Order By 1, 2";

std::string shown(const database::TableColumn& column) {
  // What the library takes from the clock must not tell two runs apart.
  const std::string text = same_name(column.name, "Last_Update")
                               ? "Case When Last_Update > '2025' Then 'now' Else Last_Update End"
                               : "Cast(" + column.name + " As text)";
  return " || '|' || Coalesce(" + text + ", 'Null')";
}

std::string kept(const std::string& table) {
  return "Given_" + table;
}

}  // namespace

Witness::Witness(const Books& books) : connection_(books.another()) {
  for (const std::string& table : Books::tables()) {
    connection_->Execute("Create Table " + kept(table) + " As Select * From " + table);
    const auto known = database::ConnectionAccess::session(*connection_)->table(table);
    std::string row;
    for (const auto& column : known->columns) {
      if (!same_name(column.name, "Row_Id")) row += shown(column);
    }
    selects_.push_back("Select " + std::to_string(selects_.size()) + " As Place, '" + table + "'" +
                       row + " As Line From " + table + " Union All ");
  }
  given_.tables.resize(selects_.size());
  given_ = look();
}

Witness::State Witness::look() const {
  Tables all;
  for (std::size_t place = 0; place < selects_.size(); ++place) all.insert(place);
  return look(all);
}

Witness::State Witness::look(const Tables& which) const {
  State state{given_.tables, {}};
  std::string select;
  for (const std::size_t place : which) {
    state.tables[place].clear();
    if (Books::tables()[place] != kCounters) select += selects_[place];
  }
  Recordset set;
  set.Open(select + kSelectCounters, connection_, Static);
  for (; !set.IsEOF(); set.MoveNext()) {
    const std::int32_t place = set("Place").value().to_long();
    const std::string line = set("Line").value().to_text();
    if (place >= 0) {
      state.tables[static_cast<std::size_t>(place)] += line + '\n';
    } else {
      const auto end = line.find('=');
      state.counters[line.substr(0, end)] = std::stod(line.substr(end + 1));
    }
  }
  return state;
}

Witness::Tables Witness::changed(const State& now) const {
  Tables places;
  for (std::size_t place = 0; place < now.tables.size(); ++place) {
    const bool counters = Books::tables()[place] == kCounters && now.counters != given_.counters;
    if (counters || now.tables[place] != given_.tables[place]) places.insert(place);
  }
  return places;
}

void Witness::restore(const Tables& which) const {
  std::string statements;
  for (const std::size_t place : which) {
    const std::string& table = Books::tables()[place];
    statements += "Delete From " + table + "; Insert Into " + table + " Select * From ";
    statements += kept(table) + ";";
  }
  if (statements.empty()) return;
  connection_->BeginTrans();
  connection_->Execute(statements);
  connection_->CommitTrans();
}

std::string Witness::process_of(const std::shared_ptr<Connection>& connection) {
  Recordset set;
  set.Open("Select pg_backend_pid() As Process", connection, Static);
  return set("Process").value().to_text();
}

/// The server's own wait looks only ten times a second, so we look ourselves. The call stands in
/// the list: in the condition a server may make it before it looks at the rest.
std::size_t Witness::end_sessions(Which which, const std::string& process) const {
  const std::string sessions =
      " From pg_stat_activity Where datname = current_database() And pid " +
      (which == Which::this_one ? "= " + process : "Not In (pg_backend_pid(), " + process + ")");
  const auto count = [&](const std::string& select) {
    Recordset set;
    set.Open(select + sessions, connection_, Static);
    return set.RecordCount();
  };
  const std::size_t ended = count("Select pg_terminate_backend(pid)");
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (count("Select pid") > 0) {
    if (std::chrono::steady_clock::now() > end) throw Failure(5, "The server ends no session.");
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
  return ended;
}

std::string difference(const Witness::State& found, const Witness::State& expected) {
  std::string text;
  for (std::size_t place = 0; place < found.tables.size(); ++place) {
    if (found.tables[place] == expected.tables[place]) continue;
    text += "found:\n" + found.tables[place] + "expected:\n" + expected.tables[place];
  }
  for (const auto* counters : {&found.counters, &expected.counters}) {
    const auto& others = counters == &found.counters ? expected.counters : found.counters;
    for (const auto& [series, number] : *counters) {
      const auto other = others.find(series);
      if (other != others.end() && other->second == number) continue;
      text += counters == &found.counters ? "found " : "expected ";
      text += series + " at " + std::to_string(number) + '\n';
    }
  }
  return text;
}

}  // namespace ombrix::testing
