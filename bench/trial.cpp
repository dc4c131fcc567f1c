#include "trial.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <ombrix/recordset.h>
#include <set>
#include <stdexcept>

#include "database/connection_access.h"
#include "fewest.h"

namespace ombrix::bench {

namespace {

template <class Body>
double milliseconds(Body&& body) {
  const auto begin = std::chrono::steady_clock::now();
  body();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
      .count();
}

void require(Connection& books, const Document& document, const std::function<bool()>& method) {
  if (!all_or_nothing(books, method)) throw std::runtime_error(document.reason());
}

/// All rows of a table, in the order of their keys.
std::string rows_of(const std::string& table, const std::shared_ptr<Connection>& books) {
  const auto known = database::ConnectionAccess::session(*books)->table(table);
  Recordset set;
  set.Open("Select * From " + table, books, Static);
  std::string text;
  for (; !set.IsEOF(); set.MoveNext()) {
    for (const auto& column : known->columns) {
      text += set(column.name).text_or_empty() + '|';
    }
    text += '\n';
  }
  return text;
}

}  // namespace

Trial::Trial(Databases& databases, const Plan& plan) : plan_(plan), text_(databases.make()) {
  {
    const auto books = Connection::open(text_);
    plan.scenario->seed(*books, plan.standing);
    databases.settle(*books);
  }
  if (plan.replayed) {
    recorded_text_ = databases.copy(text_);
    replay_text_ = databases.copy(text_);
    record();
    player_ = open_replay(replay_text_, recording_);
  }
  books_ = Connection::open(text_);
  document_ = plan.scenario->document(books_, plan.lines);
}

void Trial::record() {
  Recorder recorder;
  const auto books = Connection::open(recorded_text_);
  const Document document = plan_.scenario->document(books, plan_.lines);
  for (int count = (plan_.rounds + 1) * plan_.documents; count > 0; --count) {
    recorder.begin_document();
    recorder.begin_part(&RecordedDocument::prepare);
    if (document.prepare) require(*books, document, document.prepare);
    recorder.begin_part(&RecordedDocument::create);
    require(*books, document, document.create);
    recorder.begin_part(&RecordedDocument::process);
    if (document.process) require(*books, document, document.process);
  }
  recording_ = recorder.take();
  fewest_ = fewest();
}

std::size_t Trial::fewest() const {
  const auto books = Connection::open(recorded_text_);
  std::map<std::string, std::vector<std::string>> keys;
  const auto key_of = [&](const std::string& table) -> const std::vector<std::string>& {
    const auto [found, is_new] = keys.try_emplace(table);
    if (is_new) found->second = database::ConnectionAccess::session(*books)->table(table)->key;
    return found->second;
  };
  return bench::fewest_statements(recording_, recording_.documents.back(), key_of);
}

void Trial::run_round() {
  // The first makes both sides warm. Who goes first changes, so that neither always follows.
  const bool counts = rounds_done_ > 0;
  const bool replay_first = player_ && ++rounds_done_ % 2 == 0;
  Times by_replay;
  if (replay_first) by_replay = work_replay();
  const Times by_library = work_library();
  if (player_ && !replay_first) by_replay = work_replay();
  if (!player_) ++rounds_done_;
  if (!counts) return;
  library_.push_back(by_library);
  if (player_) replay_.push_back(by_replay);
}

Times Trial::work_library() {
  Times times;
  for (int count = 0; count < plan_.documents; ++count) {
    if (document_.prepare) require(*books_, document_, document_.prepare);
    times.create += milliseconds([&] { require(*books_, document_, document_.create); });
    if (!document_.process) continue;
    times.process += milliseconds([&] { require(*books_, document_, document_.process); });
  }
  return {times.create / plan_.documents, times.process / plan_.documents};
}

Times Trial::work_replay() {
  Times times;
  for (int count = 0; count < plan_.documents; ++count) {
    const RecordedDocument& document = recording_.documents.at(next_++);
    player_->run(document.prepare);
    times.create += milliseconds([&] { player_->run(document.create); });
    if (!document_.process) continue;
    times.process += milliseconds([&] { player_->run(document.process); });
  }
  return {times.create / plan_.documents, times.process / plan_.documents};
}

void Trial::require_equal_rows() {
  std::set<std::string> tables;
  for_each_step(recording_, [&](const Step& step) {
    const Target target = target_of(recording_, step);
    if (target.verb != "Select" && !target.table.empty()) tables.insert(target.table);
  });
  const auto recorded = Connection::open(recorded_text_);
  const auto replayed = Connection::open(replay_text_);
  for (const std::string& table : tables) {
    if (rows_of(table, recorded) != rows_of(table, replayed)) {
      throw std::runtime_error("the replay leaves other rows in " + table);
    }
  }
}

}  // namespace ombrix::bench
