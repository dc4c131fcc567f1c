#include "database/recordset_rows.h"

#include <algorithm>
#include <utility>

#include "database/row_text.h"

namespace ombrix {

using database::Cell;
using database::Parameter;
using database::RowWrite;

namespace {

constexpr int kPessimistic = 2;
constexpr int kOptimistic = 3;

[[noreturn]] void raise_no_row() {
  throw Failure(3021,
                "Either BOF or EOF is True, or the current record has been deleted. Requested "
                "operation requires a current record.");
}

[[noreturn]] void raise_not_updatable() {
  throw Failure(3251,
                "Current Recordset does not support updating. This may be a limitation of the "
                "database, or of the selected lock type.");
}

Value taken(Cell cell) {
  if (auto* text = std::get_if<std::string>(&cell)) return std::move(*text);
  return database::to_value(cell);
}

void expect_one_row(std::int64_t rows) {
  if (rows == 1) return;
  throw Failure(kDatabaseFailure,
                "Row cannot be located for updating. Some values may have been changed since it "
                "was last read.");
}

}  // namespace

void Recordset::Rows::Changes::clear() {
  places.clear();
  values.clear();
}

void Recordset::Rows::Changes::set(std::size_t place, Parameter value) {
  const auto same = std::find(places.begin(), places.end(), place);
  if (same != places.end()) {
    values[static_cast<std::size_t>(same - places.begin())] = std::move(value);
    return;
  }
  places.push_back(place);
  values.push_back(std::move(value));
}

const Cell* Recordset::Rows::Changes::find(std::size_t place) const {
  const auto found = std::find(places.begin(), places.end(), place);
  if (found == places.end()) return nullptr;
  return &values[static_cast<std::size_t>(found - places.begin())].cell;
}

template <class Text, class Run>
void Recordset::Rows::watched(Call::Kind kind, Text text, Run run) {
  database::watched(
      source_.instruments.get(), *source_.session,
      [&] {
        return Call{.kind = kind,
                    .road = source_.road,
                    .text = text(),
                    .cursor = source_.mode.cursor,
                    .lock = source_.mode.lock,
                    .options = source_.mode.options};
      },
      run);
}

Recordset::Rows::Rows(Source source, const MakeQuery& make_query) : source_(std::move(source)) {
  watched(
      Call::Kind::open, [&] { return source_.joined; },
      [&] {
        database::Query query = make_query(*source_.session);
        const bool locks =
            source_.mode.lock == kPessimistic && source_.session->driver().in_transaction();
        plan_ = source_.session->read_plan(query, locks);
        parameters_ = std::move(query.parameters);
        return 0;
      });
}

std::size_t Recordset::Rows::count() {
  fetch();
  return fetched_.count();
}

void Recordset::Rows::fetch() {
  if (looked_) return;
  watched(
      Call::Kind::read, [&] { return source_.joined; },
      [&] {
        source_.session->driver();
        fetched_ = fetch_rows();
        return static_cast<std::int64_t>(fetched_.count());
      });
  looked_ = true;
}

database::Rows Recordset::Rows::fetch_rows() {
  try {
    return plan_->statement->fetch(parameters_);
  } catch (const Failure&) {
    // The tables may have changed under the plan: the next to read makes a new one.
    source_.session->forget();
    throw;
  }
}

void Recordset::Rows::move_next() {
  update();
  if (at_end()) raise_no_row();
  leave_row();
  ++position_;
}

Value Recordset::Rows::read(std::string_view name) {
  const std::size_t place = place_of(name);
  if (const Cell* changed = changes_.find(place)) return database::to_value(*changed);
  require_row();
  return taken(held(place));
}

void Recordset::Rows::write(std::string_view name, const Value& value) {
  require_updatable();
  const std::size_t place = place_of(name);
  const auto kind = plan_->kinds[place];
  if (!kind) raise_not_updatable();
  require_row();
  changes_.set(place, {*kind, database::to_cell(value, *kind)});
}

void Recordset::Rows::add_new() {
  require_updatable();
  update();
  leave_row();
  adding_ = true;
  begun_ = true;
}

void Recordset::Rows::update() {
  if (adding_) {
    run(Call::Kind::insert);
    adding_ = false;
  } else if (!changes_.empty()) {
    run(Call::Kind::update);
  }
}

void Recordset::Rows::erase() {
  require_updatable();
  require_row();
  changes_.clear();
  run(Call::Kind::erase);
  leave_row();
  deleted_ = true;
}

void Recordset::Rows::run(Call::Kind kind) {
  RowWrite& write = write_of(kind);
  const database::Rows filled = run_watched(write);
  for (std::size_t i = 0; i < write.filled.size(); ++i) {
    const std::size_t place = write.filled[i];
    changes_.set(place, {*plan_->kinds[place], filled.cell(0, i)});
  }
  if (written_.empty()) {
    std::swap(written_, changes_);
    return;
  }
  for (std::size_t i = 0; i < changes_.places.size(); ++i) {
    written_.set(changes_.places[i], std::move(changes_.values[i]));
  }
  changes_.clear();
}

database::Rows Recordset::Rows::run_watched(RowWrite& write) {
  // The key and the guard stand behind the values while the write runs, and only then.
  struct Tail {
    Changes& changes;
    ~Tail() {
      const auto count = static_cast<std::ptrdiff_t>(changes.places.size());
      changes.values.erase(changes.values.begin() + count, changes.values.end());
    }
  } const tail{changes_};
  if (write.kind != Call::Kind::insert) {
    for (const auto* places : {&plan_->key, &write.guard}) {
      for (const std::size_t place : *places) {
        changes_.values.push_back({*plan_->kinds[place], held(place)});
      }
    }
  }
  database::Rows filled;
  watched(
      write.kind, [&] { return database::joined_row_text(write.text, changes_.values); },
      [&] {
        filled = run_prepared(write);
        return 1;
      });
  return filled;
}

database::Rows Recordset::Rows::run_prepared(RowWrite& write) {
  // The session must be asked each time: it may have been lost since the statement was prepared.
  source_.session->driver();
  const auto& parameters = changes_.values;
  if (!write.statement) write.statement = source_.session->prepared(write.text, parameters);
  if (!write.filled.empty()) return write.statement->fetch(parameters);
  expect_one_row(write.statement->run(parameters));
  return database::Rows();
}

RowWrite& Recordset::Rows::write_of(Call::Kind kind) {
  for (RowWrite& write : plan_->writes) {
    if (write.kind == kind && write.values == changes_.places) return write;
  }
  RowWrite write{kind, changes_.places, {}, {}, {}, nullptr};
  const auto writes = [&write](std::size_t place) {
    return std::find(write.values.begin(), write.values.end(), place) != write.values.end();
  };
  for (std::size_t place = 0; place < plan_->names.size(); ++place) {
    const bool is_key = plan_->is_key(place);
    const bool guards = kind == Call::Kind::erase ? plan_->kinds[place].has_value()
                                                  : kind == Call::Kind::update && writes(place);
    if (guards && !is_key) write.guard.push_back(place);
    // A key that the database counts up itself must be known, or the row could not be found again.
    if (kind == Call::Kind::insert && is_key && !writes(place)) write.filled.push_back(place);
  }
  write.text = text_of(write);
  return plan_->writes.emplace_back(std::move(write));
}

std::string Recordset::Rows::text_of(const RowWrite& write) const {
  const auto names = [this](const std::vector<std::size_t>& places) {
    std::vector<std::string_view> listed;
    for (const std::size_t place : places) listed.push_back(plan_->names[place]);
    return listed;
  };
  const std::string& table = plan_->table->name;
  if (write.kind == Call::Kind::insert) {
    return database::insert_text(table, names(write.values), names(write.filled));
  }
  if (write.kind == Call::Kind::update) {
    return database::update_text(table, names(write.values), names(plan_->key), names(write.guard));
  }
  return database::delete_text(table, names(plan_->key), names(write.guard));
}

std::size_t Recordset::Rows::place_of(std::string_view name) {
  // A few columns further on, because some are left alone. In a join two may bear one name.
  constexpr std::size_t kAhead = 6;
  const std::size_t end = plan_->table ? std::min(last_place_ + kAhead, plan_->places.size()) : 0;
  for (std::size_t place = last_place_; place < end; ++place) {
    if (plan_->names[place] == name) return last_place_ = place;
  }
  const auto found = plan_->places.find(name);
  if (found != plan_->places.end()) return last_place_ = found->second;
  throw Failure(3265,
                "Item cannot be found in the collection corresponding to the requested name or "
                "ordinal: " +
                    std::string(name));
}

void Recordset::Rows::require_row() {
  if (begun_) return;
  if (deleted_ || at_end()) raise_no_row();
}

Cell Recordset::Rows::held(std::size_t place) const {
  if (const Cell* written = written_.find(place)) return *written;
  return begun_ ? plan_->initial[place] : fetched_.cell(position_, place);
}

void Recordset::Rows::leave_row() {
  changes_.clear();
  written_.clear();
  last_place_ = 0;
  begun_ = false;
  adding_ = false;
  deleted_ = false;
}

void Recordset::Rows::require_updatable() const {
  const int lock = source_.mode.lock;
  if (!plan_->table || (lock != kOptimistic && lock != kPessimistic)) raise_not_updatable();
}

}  // namespace ombrix
