#include "database/session.h"

#include <utility>

#include "ombrix/failure.h"

#include "base/names.h"
#include "base/text.h"
#include "database/instruments.h"
#include "database/select_text.h"

namespace ombrix::database {

namespace {

/// Enough for every statement of the library; a client's own texts must not pile up.
constexpr std::size_t kMostPrepared = 512;

/// Statements of one text are different ones to a database when their values differ in type.
std::string cache_key(const std::string& text, const Parameters& parameters) {
  std::string key;
  key.reserve(text.size() + parameters.size() + 2);
  for (const Parameter& parameter : parameters) {
    key += "tni"[static_cast<std::size_t>(parameter.kind)];
  }
  return key.append(1, ' ').append(text);
}

std::vector<std::string> key_names(const Table& table, const SelectText& select) {
  std::vector<std::string> names;
  for (const std::string& name : table.key) names.push_back(select.alias + "." + name);
  return names;
}

/// The key as terms of an order.
std::vector<std::string> key_terms(const Table& table, const SelectText& select,
                                   const Dialect& dialect) {
  std::vector<std::string> terms = key_names(table, select);
  for (std::size_t part = 0; part < terms.size(); ++part) {
    for (const TableColumn& column : table.columns) {
      const bool text = column.kind == Kind::text && same_name(column.name, table.key[part]);
      if (text) terms[part] += dialect.key_order;
    }
  }
  return terms;
}

Table keyed_by(const Table& view, std::span<const std::string_view> key) {
  Table keyed = view;
  keyed.key.assign(key.begin(), key.end());
  return keyed;
}

void describe_columns(ReadPlan& plan, std::size_t visible) {
  plan.names = plan.statement->columns();
  for (std::size_t place = 0; place < visible; ++place) {
    // The first of two columns of one name is the one that a reader gets.
    plan.places.emplace(plan.names[place], place);
  }
}

/// Finds the columns of the table among the places, so that a row can be named and written.
void locate(ReadPlan& plan, const Table& table, std::size_t visible, bool key_is_hidden) {
  plan.kinds.assign(plan.names.size(), std::nullopt);
  plan.initial.assign(plan.names.size(), Null{});
  for (const TableColumn& column : table.columns) {
    const auto found = plan.places.find(column.name);
    if (found == plan.places.end()) continue;
    plan.kinds[found->second] = column.kind;
    plan.initial[found->second] = column.initial;
  }
  for (std::size_t part = 0; part < table.key.size(); ++part) {
    std::size_t place = visible + part;
    if (!key_is_hidden) place = plan.places.at(table.key[part]);
    plan.names[place] = table.key[part];
    for (const TableColumn& column : table.columns) {
      if (same_name(column.name, table.key[part])) plan.kinds[place] = column.kind;
    }
    plan.key.push_back(place);
  }
}

}  // namespace

Session::Session(std::unique_ptr<DriverSession> driver) : driver_(std::move(driver)) {}

Session::~Session() = default;

DriverSession& Session::driver() {
  if (!driver_) throw Failure(kDatabaseFailure, lost_reason_);
  return *driver_;
}

bool Session::usable() const {
  return driver_ != nullptr && driver_->alive();
}

void Session::lose(std::string reason) {
  forget();
  driver_.reset();
  lost_reason_ = std::move(reason);
}

void Session::forget() {
  plans_.clear();
  prepared_.clear();
  tables_.clear();
}

std::shared_ptr<Prepared> Session::prepared(const std::string& text, const Parameters& parameters) {
  DriverSession& driver = this->driver();
  std::string key = cache_key(text, parameters);
  const auto found = prepared_.find(key);
  if (found != prepared_.end()) return found->second;
  std::shared_ptr<Prepared> statement = driver.prepare(text, parameters);
  if (prepared_.size() >= kMostPrepared) forget();
  prepared_.emplace(std::move(key), statement);
  return statement;
}

std::shared_ptr<const Table> Session::table(std::string_view name) {
  const auto found = tables_.find(name);
  if (found != tables_.end()) return found->second;
  std::optional<Table> table = driver().table(name);
  // What is not there may be made at any time, by another session too.
  if (!table) return nullptr;
  auto shared = std::make_shared<const Table>(std::move(*table));
  tables_.emplace(std::string(name), shared);
  return shared;
}

std::shared_ptr<ReadPlan> Session::read_plan(const Query& query, bool lock_rows) {
  driver();
  std::string key = cache_key(query.text, query.parameters);
  if (lock_rows) key += '!';
  const auto found = plans_.find(key);
  if (found != plans_.end()) return found->second;
  auto plan = make_plan(query, lock_rows);
  if (plans_.size() >= kMostPrepared) forget();
  plans_.emplace(std::move(key), plan);
  return plan;
}

std::shared_ptr<ReadPlan> Session::make_plan(const Query& query, bool lock_rows) {
  const auto& [text, parameters, view_key] = query;
  // Not every database minds.
  if (trim(text).empty()) throw Failure(kDatabaseFailure, "The statement is empty.");
  auto plan = std::make_shared<ReadPlan>();
  auto select = analyse_select(text);
  const auto table = select ? this->table(select->table) : nullptr;
  const Dialect& dialect = driver().dialect();
  if (table == nullptr || table->key.empty()) {
    const bool keyed = table != nullptr && !view_key.empty();
    if (keyed) select->order_also(key_terms(keyed_by(*table, view_key), *select, dialect));
    plan->statement = driver().prepare(keyed ? select->text : text, parameters);
    describe_columns(*plan, plan->statement->columns().size());
    return plan;
  }
  const bool writable = !select->joined && !select->computed;
  const bool hides_key = writable && !select->all_columns;
  select->order_also(key_terms(*table, *select, dialect));
  if (hides_key) select->select_also(key_names(*table, *select));
  if (lock_rows) select->text += dialect.row_lock;
  plan->statement = driver().prepare(select->text, parameters);
  const std::size_t visible =
      plan->statement->columns().size() - (hides_key ? table->key.size() : 0);
  describe_columns(*plan, visible);
  if (writable) {
    locate(*plan, *table, visible, hides_key);
    plan->table = table;
  }
  return plan;
}

std::int64_t Session::execute_text(const std::string& text) {
  const std::string words = lower_name(text);
  const auto says = [&words](std::string_view word) {
    return words.find(word) != std::string::npos;
  };
  if (says("create") || says("alter") || says("drop")) forget();
  return driver().execute(text);
}

}  // namespace ombrix::database
