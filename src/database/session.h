#pragma once

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ombrix/instruments.h"

#include "base/names.h"
#include "database/driver.h"
#include "database/statement.h"

namespace ombrix::database {

/// The statement that writes one row, by the columns that it changes. Its parameters are the values
/// of these, then the key, then the guard.
struct RowWrite {
  Call::Kind kind;
  std::vector<std::size_t> values;  ///< places of the columns that are written
  std::vector<std::size_t> guard;   ///< of those that must still hold what was read
  std::vector<std::size_t> filled;  ///< of those that the database fills itself
  std::string text;
  std::shared_ptr<Prepared> statement;
};

/// How the rows of a select are read, and how one of them is found again to be written.
struct ReadPlan {
  std::shared_ptr<Prepared> statement;
  NameMap<std::size_t> places;     ///< of the columns that a reader sees, by name
  std::vector<std::string> names;  ///< of the columns of a row as fetched
  /// The table whose rows can be written; none for a join and the like.
  std::shared_ptr<const Table> table;
  std::vector<std::size_t> key;            ///< places of the table's key columns
  std::vector<std::optional<Kind>> kinds;  ///< of the places that are columns of the table
  std::vector<Cell> initial;               ///< a row that was begun and not yet written
  /// The writes that were made so far. Rows of one document are written alike, so there are few.
  std::deque<RowWrite> writes;

  bool is_key(std::size_t place) const {
    return std::find(key.begin(), key.end(), place) != key.end();
  }
};

/// A select as it is prepared.
struct Query {
  std::string text;
  Parameters parameters{};
  /// The columns that name a row of a view, which has no key of its own; else empty.
  std::span<const std::string_view> key{};
};

/// A live session with a database, and what is prepared on it. Statements are prepared once.
class Session {
 public:
  explicit Session(std::unique_ptr<DriverSession> driver);
  ~Session();

  /// Raises when the session was lost or closed.
  DriverSession& driver();
  bool usable() const;
  /// Nothing can be done on it from now on.
  void lose(std::string reason);

  std::shared_ptr<Prepared> prepared(const std::string& text, const Parameters& parameters);
  /// `lock_rows`: the rows are to be locked as they are read, where the database offers it.
  std::shared_ptr<ReadPlan> read_plan(const Query& query, bool lock_rows);
  /// No table or view of that name: null.
  std::shared_ptr<const Table> table(std::string_view name);

  /// Runs the client's own text, which may change the tables that plans were made for.
  std::int64_t execute_text(const std::string& text);

  /// Another session may have changed the tables that plans were made for.
  void forget();

  /// Goes up with each rollback: who remembers work of a transaction can tell that it is undone.
  std::int64_t rollbacks() { return driver().rollbacks(); }

 private:
  std::shared_ptr<ReadPlan> make_plan(const Query& query, bool lock_rows);

  std::unique_ptr<DriverSession> driver_;
  std::string lost_reason_;
  NameMap<std::shared_ptr<const Table>> tables_;
  std::unordered_map<std::string, std::shared_ptr<Prepared>> prepared_;
  std::unordered_map<std::string, std::shared_ptr<ReadPlan>> plans_;
};

}  // namespace ombrix::database
