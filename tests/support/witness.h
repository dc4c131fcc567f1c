#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "ombrix/connection.h"

#include "support/books.h"

namespace ombrix::testing {

/// Looks at a database from outside, by a connection that lives as long as the database does:
/// reading it hundreds of times must be cheap.
class Witness {
 public:
  explicit Witness(const Books& books);

  /// All committed rows. Keys that the database counts up itself are left out, as they go on
  /// counting behind rows that were deleted or rolled back.
  struct State {
    std::string rows, counters;
    friend bool operator==(const State&, const State&) = default;
  };
  State look() const;
  /// Statements that delete every row, and those that write the rows of now again.
  std::string emptying() const;
  std::string inserts() const;

  /// The server's own process behind a connection.
  static std::string process_of(const std::shared_ptr<Connection>& connection);
  /// Each waits until the server has ended the sessions, and answers how many they were.
  std::size_t end_session(const std::string& process) const;
  /// All others on this database, this witness's own left out.
  std::size_t end_sessions_but(const std::string& process) const;

 private:
  std::vector<std::string> filled_tables() const;
  std::string rows_of(const std::string& table) const;
  /// Those that are not counted up by the database.
  std::vector<std::string> columns_of(const std::string& table) const;

  std::shared_ptr<Connection> connection_;
  std::string filled_tables_;  ///< the statement that names them
};

}  // namespace ombrix::testing
