#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/database/driver.h"
#include "frame/database/name_map.h"
#include "frame/database/statement.h"

namespace ombrix::database {

/// How the rows of a select are read, and how one of them is found again to be written.
struct ReadPlan {
  std::shared_ptr<Prepared> statement;
  std::size_t columns = 0;         ///< of a row as fetched
  NameMap<std::size_t> places;     ///< of the columns that a reader sees, by name
  std::vector<std::string> names;  ///< of the places
  /// The table whose rows can be written; none for a join and the like.
  std::shared_ptr<const Table> table;
  std::vector<std::size_t> key;            ///< places of the table's key columns
  std::vector<std::optional<Kind>> kinds;  ///< of the places that are columns of the table
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
  std::shared_ptr<const ReadPlan> read_plan(const std::string& text, const Parameters& parameters,
                                            bool lock_rows);
  /// No table or view of that name: null.
  std::shared_ptr<const Table> table(std::string_view name);

  /// Runs the client's own text, which may change the tables that plans were made for.
  std::int64_t execute_text(const std::string& text);

  /// Goes up with each rollback: who remembers work of a transaction can tell that it is undone.
  std::int64_t rollbacks() const { return rollbacks_; }
  void rollback();

 private:
  std::shared_ptr<ReadPlan> make_plan(const std::string& text, const Parameters& parameters,
                                      bool lock_rows);
  void forget();

  std::unique_ptr<DriverSession> driver_;
  std::string lost_reason_;
  std::int64_t rollbacks_ = 0;
  NameMap<std::shared_ptr<const Table>> tables_;
  std::unordered_map<std::string, std::shared_ptr<Prepared>> prepared_;
  std::unordered_map<std::string, std::shared_ptr<ReadPlan>> plans_;
};

}  // namespace ombrix::database
