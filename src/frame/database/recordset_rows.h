#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ombrix/recordset.h"

#include "frame/database/instruments.h"
#include "frame/database/row_text.h"
#include "frame/database/session.h"

namespace ombrix {

/// An open recordset. Its rows are fetched when they are first looked at, all at once, so that a
/// walk never meets its own writes.
class Recordset::Rows {
 public:
  /// Where a recordset gets its rows, and who watches.
  struct Source {
    std::shared_ptr<database::Session> session;
    std::shared_ptr<database::Instruments> instruments;
    Call::Road road;
    OpenMode mode;
    std::string joined;  ///< for those who watch; may be empty when nobody does
  };
  struct Query {
    std::string text;
    database::Parameters parameters;
  };
  using MakeQuery = std::function<Query(database::Session&)>;

  /// `make_query` refuses a statement before it reaches the database.
  Rows(Source source, const MakeQuery& make_query);

  std::size_t count();
  bool at_end() { return position_ >= count(); }
  void move_next();
  Value read(std::string_view name);
  void write(std::string_view name, const Value& value);
  void add_new();
  void update();
  void erase();

 private:
  using Row = std::vector<database::Cell>;
  using Cells = std::vector<database::ColumnCell>;
  struct RowWrite {
    Call::Kind kind;
    std::function<std::string(const RowWrite&, database::Form)> text;
    Cells values, key, guard;
    std::vector<std::string> returning;
  };

  template <class Text, class Run>
  void watched(Call::Kind kind, Text text, Run run);

  void fetch();
  std::size_t place_of(std::string_view name) const;
  /// The row as the database gave it, or as it stands after a write.
  Row& current();
  void leave_row();
  void require_updatable() const;
  bool is_key(std::size_t place) const;
  Row initial_row() const;
  database::ColumnCell cell_at(std::size_t place, const database::Cell& cell) const;
  Cells key_of(const Row& row) const;
  Cells written() const;

  void insert();
  void change();
  void run(RowWrite& write);

  Source source_;
  database::Parameters parameters_;
  std::shared_ptr<const database::ReadPlan> plan_;
  bool looked_ = false;
  database::Rows fetched_;
  std::size_t position_ = 0;
  std::optional<Row> row_;  ///< the current row, once it is looked at or begun
  std::vector<std::pair<std::size_t, database::Cell>> changes_;
  bool adding_ = false;
  bool deleted_ = false;
};

}  // namespace ombrix
