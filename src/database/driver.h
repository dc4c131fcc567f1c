#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "database/cell.h"
#include "database/connection_text.h"
#include "database/rows.h"

namespace ombrix::database {

/// A column as a table declares it.
struct TableColumn {
  std::string name;
  Kind kind;
  Cell initial;  ///< the default that a new row gets, Null without one
};
struct Table {
  std::string name;
  std::vector<TableColumn> columns;
  std::vector<std::string> key;  ///< primary key, in order; empty for a view
};

/// A statement that a session keeps prepared. `$1`, `$2`, ... stand for its parameters.
class Prepared {
 public:
  virtual ~Prepared() = default;
  /// Names of the result's columns, known before the first run.
  virtual const std::vector<std::string>& columns() const = 0;
  virtual Rows fetch(const Parameters& parameters) = 0;
  /// Answers how many rows it changed.
  virtual std::int64_t run(const Parameters& parameters) = 0;
};

/// What a database says in its own words.
struct Dialect {
  std::string_view row_lock;       ///< behind a select whose rows are to be locked, or ""
  std::string_view key_order;      ///< behind a text column in an order, or ""
  std::string_view text_type;      ///< of a text column that sorts by its bytes
  std::string_view generated_key;  ///< type of a key that the database counts up itself
  std::string_view schema_lock;    ///< taken before the schema is made, or ""
};

/// One live session with a database. Everything above it is the same for every database; a driver
/// only translates. All members raise `Failure` with the database's own message.
class DriverSession {
 public:
  virtual ~DriverSession() = default;

  virtual const Dialect& dialect() const = 0;
  /// `parameters` tell the types of the values to come; their cells are not read.
  virtual std::unique_ptr<Prepared> prepare(const std::string& text,
                                            const Parameters& parameters) = 0;
  /// Raises what the database says against the text; executes nothing.
  virtual void check(const std::string& text) = 0;
  /// Runs one or more statements as they stand; answers the rows that the last of them changed.
  virtual std::int64_t execute(const std::string& text) = 0;
  /// No value when there is neither a table nor a view of that name.
  virtual std::optional<Table> table(std::string_view name) = 0;

  virtual void begin() = 0;
  virtual void commit() = 0;
  virtual void rollback() = 0;
  /// Goes up whenever work of a transaction was undone, whoever asked for it: by `rollback`, by a
  /// client's own text (to a savepoint too), by a failure.
  virtual std::int64_t rollbacks() const = 0;
  virtual bool in_transaction() const = 0;
  /// False when the session can serve no further call.
  virtual bool alive() const = 0;
};

/// Whether a database that is not there may be made.
enum class Missing : bool { refuse, create };

std::unique_ptr<DriverSession> open_driver_session(const ConnectionText& text, Missing missing);

/// What stands between the library and a session that was just opened, such as a recorder.
using DriverFilter =
    std::function<std::unique_ptr<DriverSession>(std::unique_ptr<DriverSession> session)>;
/// For every session that is opened from now on; an empty one removes it. For measuring: nobody
/// else may open a session meanwhile.
void set_driver_filter(DriverFilter filter);

}  // namespace ombrix::database
