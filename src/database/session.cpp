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

std::vector<std::string> key_terms(const Table& table, const std::string& alias,
                                   std::string_view text_ending) {
  std::vector<std::string> terms;
  for (const std::string& name : table.key) {
    std::string term = alias + "." + name;
    for (const TableColumn& column : table.columns) {
      if (column.kind == Kind::text && same_name(column.name, name)) term += text_ending;
    }
    terms.push_back(std::move(term));
  }
  return terms;
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

/// A view has no key of its own. This one, of the lines that may be billed, is read as the receipts
/// have them.
constexpr std::string_view kOpenLines = "GRNforInvoicing";

Table in_receipt_order(const Table& view) {
  Table ordered = view;
  ordered.key = {"GRN_No", "SL_No"};
  return ordered;
}

}  // namespace

bool Instruments::admit(const Call& call, Session* session) const {
  if (!hook) return true;
  const Fault fault = hook(call);
  if (fault.kind == Fault::Kind::none) return true;
  const std::string reason =
      fault.description.empty() ? std::string("The call was made to fail.") : fault.description;
  if (fault.kind == Fault::Kind::answer_false && call.kind == Call::Kind::invoke) return false;
  if (fault.kind == Fault::Kind::lose_session && session != nullptr) session->lose(reason);
  throw Failure(fault.number == 0 ? kDatabaseFailure : fault.number, reason);
}

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

std::shared_ptr<ReadPlan> Session::read_plan(const std::string& text, const Parameters& parameters,
                                             bool lock_rows) {
  driver();
  std::string key = cache_key(text, parameters);
  if (lock_rows) key += '!';
  const auto found = plans_.find(key);
  if (found != plans_.end()) return found->second;
  auto plan = make_plan(text, parameters, lock_rows);
  if (plans_.size() >= kMostPrepared) forget();
  plans_.emplace(std::move(key), plan);
  return plan;
}

std::shared_ptr<ReadPlan> Session::make_plan(const std::string& text, const Parameters& parameters,
                                             bool lock_rows) {
  // Not every database minds.
  if (trim(text).empty()) throw Failure(kDatabaseFailure, "The statement is empty.");
  auto plan = std::make_shared<ReadPlan>();
  auto select = analyse_select(text);
  const auto table = select ? this->table(select->table) : nullptr;
  const Dialect& dialect = driver().dialect();
  if (table == nullptr || table->key.empty()) {
    const bool open_lines = table != nullptr && same_name(select->table, kOpenLines);
    if (open_lines) {
      select->order_also(key_terms(in_receipt_order(*table), select->alias, dialect.key_order));
    }
    plan->statement = driver().prepare(open_lines ? select->text : text, parameters);
    describe_columns(*plan, plan->statement->columns().size());
    return plan;
  }
  const bool writable = !select->joined && !select->computed;
  const bool hides_key = writable && !select->all_columns;
  select->order_also(key_terms(*table, select->alias, dialect.key_order));
  if (hides_key) select->select_also(key_terms(*table, select->alias, ""));
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
  if (says("rollback")) ++rollbacks_;
  return driver().execute(text);
}

void Session::commit() {
  try {
    driver().commit();
  } catch (const Failure&) {
    if (driver_ && !driver_->in_transaction()) ++rollbacks_;
    throw;
  }
}

void Session::rollback() {
  ++rollbacks_;
  driver().rollback();
}

}  // namespace ombrix::database
