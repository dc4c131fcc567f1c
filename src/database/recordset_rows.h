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

#include "database/instruments.h"
#include "database/session.h"

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
  using MakeQuery = std::function<database::Query(database::Session&)>;

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
  template <class Text, class Run>
  void watched(Call::Kind kind, Text text, Run run);

  void fetch();
  database::Rows fetch_rows();
  std::size_t place_of(std::string_view name);
  void require_row();
  /// What the current row holds, without the changes that are not written yet.
  database::Cell held(std::size_t place) const;
  void leave_row();
  void require_updatable() const;

  /// The write of the changed columns, as it was made before or anew.
  database::RowWrite& write_of(Call::Kind kind);
  std::string text_of(const database::RowWrite& write) const;
  void run(Call::Kind kind);
  database::Rows run_watched(database::RowWrite& write);
  database::Rows run_prepared(database::RowWrite& write);

  /// Values of columns of one row, in the order in which they were given: as a write binds them.
  struct Changes {
    std::vector<std::size_t> places;
    database::Parameters values;

    bool empty() const { return places.empty(); }
    void clear();
    void set(std::size_t place, database::Parameter value);
    const database::Cell* find(std::size_t place) const;
  };

  Source source_;
  database::Parameters parameters_;
  std::shared_ptr<database::ReadPlan> plan_;
  bool looked_ = false;
  database::Rows fetched_;
  std::size_t position_ = 0;
  std::size_t last_place_ = 0;  ///< columns are mostly named in their order
  Changes changes_;             ///< of the current row, not written yet
  Changes written_;             ///< since the row was fetched or begun
  bool begun_ = false;          ///< the current row came by `add_new`
  bool adding_ = false;         ///< and is not written yet
  bool deleted_ = false;
};

}  // namespace ombrix
