#include "frame/database/recordset_rows.h"

#include <algorithm>
#include <iterator>

namespace ombrix {

using database::Cell;
using database::ColumnCell;
using database::Form;
using database::Parameters;

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

void expect_one_row(std::int64_t rows) {
  if (rows == 1) return;
  throw Failure(kDatabaseFailure,
                "Row cannot be located for updating. Some values may have been changed since it "
                "was last read.");
}

}  // namespace

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
        Query query = make_query(*source_.session);
        const bool locks =
            source_.mode.lock == kPessimistic && source_.session->driver().in_transaction();
        plan_ = source_.session->read_plan(query.text, query.parameters, locks);
        parameters_ = std::move(query.parameters);
        return 0;
      });
}

std::size_t Recordset::Rows::count() {
  fetch();
  return fetched_.count;
}

void Recordset::Rows::fetch() {
  if (looked_) return;
  watched(
      Call::Kind::read, [&] { return source_.joined; },
      [&] {
        source_.session->driver();
        fetched_ = plan_->statement->fetch(parameters_);
        return static_cast<std::int64_t>(fetched_.count);
      });
  looked_ = true;
}

void Recordset::Rows::move_next() {
  update();
  if (at_end()) raise_no_row();
  leave_row();
  ++position_;
}

Value Recordset::Rows::read(std::string_view name) {
  const std::size_t place = place_of(name);
  for (const auto& [changed, cell] : changes_) {
    if (changed == place) return database::to_value(cell);
  }
  return database::to_value(current()[place]);
}

void Recordset::Rows::write(std::string_view name, const Value& value) {
  require_updatable();
  const std::size_t place = place_of(name);
  const auto kind = plan_->kinds[place];
  if (!kind) raise_not_updatable();
  current();
  Cell cell = database::to_cell(value, *kind);
  const auto same = std::find_if(changes_.begin(), changes_.end(),
                                 [&](const auto& change) { return change.first == place; });
  if (same != changes_.end()) {
    same->second = std::move(cell);
  } else {
    changes_.emplace_back(place, std::move(cell));
  }
}

void Recordset::Rows::add_new() {
  require_updatable();
  update();
  leave_row();
  adding_ = true;
  row_ = initial_row();
}

void Recordset::Rows::update() {
  if (adding_) {
    insert();
  } else if (!changes_.empty()) {
    change();
  }
}

void Recordset::Rows::erase() {
  require_updatable();
  const Row& row = current();
  RowWrite write{.kind = Call::Kind::erase,
                 .text =
                     [this](const RowWrite& self, Form form) {
                       return database::delete_text(plan_->table->name, self.key, self.guard, form);
                     },
                 .values = {},
                 .key = key_of(row),
                 .guard = {},
                 .returning = {}};
  for (std::size_t place = 0; place < plan_->columns; ++place) {
    if (plan_->kinds[place] && !is_key(place)) write.guard.push_back(cell_at(place, row[place]));
  }
  run(write);
  leave_row();
  deleted_ = true;
}

void Recordset::Rows::insert() {
  RowWrite write{.kind = Call::Kind::insert,
                 .text =
                     [this](const RowWrite& self, Form form) {
                       return database::insert_text(plan_->table->name, self.values, self.returning,
                                                    form);
                     },
                 .values = written(),
                 .key = {},
                 .guard = {},
                 .returning = {}};
  // A key that the database counts up itself must be known, or the row could not be found again.
  for (const std::size_t place : plan_->key) {
    const bool given = std::any_of(changes_.begin(), changes_.end(),
                                   [&](const auto& change) { return change.first == place; });
    if (!given) write.returning.push_back(plan_->names[place]);
  }
  run(write);
  adding_ = false;
}

void Recordset::Rows::change() {
  const Row& row = current();
  RowWrite write{.kind = Call::Kind::update,
                 .text =
                     [this](const RowWrite& self, Form form) {
                       return database::update_text(plan_->table->name, self.values, self.key,
                                                    self.guard, form);
                     },
                 .values = written(),
                 .key = key_of(row),
                 .guard = {},
                 .returning = {}};
  for (const auto& [place, cell] : changes_) {
    if (!is_key(place)) write.guard.push_back(cell_at(place, row[place]));
  }
  run(write);
}

void Recordset::Rows::run(RowWrite& write) {
  database::Rows filled;
  watched(
      write.kind, [&] { return write.text(write, Form::joined); },
      [&] {
        const std::string text = write.text(write, Form::prepared);
        Parameters parameters;
        parameters.reserve(write.values.size() + write.key.size() + write.guard.size());
        for (Cells* cells : {&write.values, &write.key, &write.guard}) {
          for (ColumnCell& cell : *cells) parameters.push_back(std::move(cell.parameter));
        }
        const auto statement = source_.session->prepared(text, parameters);
        if (write.returning.empty()) {
          const std::int64_t rows = statement->run(parameters);
          expect_one_row(rows);
          return rows;
        }
        filled = statement->fetch(parameters);
        return static_cast<std::int64_t>(filled.count);
      });
  for (auto& [place, cell] : changes_) (*row_)[place] = std::move(cell);
  changes_.clear();
  for (std::size_t i = 0; i < write.returning.size(); ++i) {
    (*row_)[place_of(write.returning[i])] = filled.cells.at(i);
  }
}

std::size_t Recordset::Rows::place_of(std::string_view name) const {
  const auto found = plan_->places.find(name);
  if (found != plan_->places.end()) return found->second;
  throw Failure(3265,
                "Item cannot be found in the collection corresponding to the requested name or "
                "ordinal: " +
                    std::string(name));
}

Recordset::Rows::Row& Recordset::Rows::current() {
  if (row_) return *row_;
  if (deleted_ || at_end()) raise_no_row();
  const auto first =
      fetched_.cells.begin() + static_cast<std::ptrdiff_t>(position_ * plan_->columns);
  // A walk goes forward only, so nobody looks for these cells in their old place again.
  row_.emplace(std::make_move_iterator(first),
               std::make_move_iterator(first + static_cast<std::ptrdiff_t>(plan_->columns)));
  return *row_;
}

void Recordset::Rows::leave_row() {
  row_.reset();
  changes_.clear();
  adding_ = false;
  deleted_ = false;
}

void Recordset::Rows::require_updatable() const {
  const int lock = source_.mode.lock;
  if (!plan_->table || (lock != kOptimistic && lock != kPessimistic)) raise_not_updatable();
}

bool Recordset::Rows::is_key(std::size_t place) const {
  return std::find(plan_->key.begin(), plan_->key.end(), place) != plan_->key.end();
}

Recordset::Rows::Row Recordset::Rows::initial_row() const {
  Row row(plan_->columns);
  for (const auto& column : plan_->table->columns) {
    const auto found = plan_->places.find(column.name);
    if (found != plan_->places.end()) row[found->second] = column.initial;
  }
  return row;
}

ColumnCell Recordset::Rows::cell_at(std::size_t place, const Cell& cell) const {
  return {plan_->names[place], {*plan_->kinds[place], cell}};
}

Recordset::Rows::Cells Recordset::Rows::key_of(const Row& row) const {
  Cells key;
  key.reserve(plan_->key.size());
  for (const std::size_t place : plan_->key) key.push_back(cell_at(place, row[place]));
  return key;
}

Recordset::Rows::Cells Recordset::Rows::written() const {
  Cells values;
  values.reserve(changes_.size());
  for (const auto& [place, cell] : changes_) values.push_back(cell_at(place, cell));
  return values;
}

}  // namespace ombrix
