#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "ombrix/connection.h"

#include "support/books.h"

namespace ombrix::testing {

/// Looks at a database from outside, by a connection that lives as long as the database does:
/// reading it thousands of times must be cheap.
class Witness {
 public:
  /// The rows of now are those that `restore` puts back.
  explicit Witness(const Books& books);

  /// The next number of each series: "LPO BR", and "LPO BR TMP" for temporary ones.
  using Counters = std::map<std::string, double>;
  /// All committed rows. Left out are keys that the database counts up itself, as they go on
  /// counting behind rows that were deleted or rolled back, and the days of this year's clock.
  struct State {
    std::vector<std::string> tables;  ///< the rows of each, sorted
    Counters counters;
    friend bool operator==(const State&, const State&) = default;
  };
  /// Places of tables.
  using Tables = std::set<std::size_t>;
  State look() const;
  /// Reads these alone, which is quick; the others count as they were given.
  State look(const Tables& which) const;
  /// Those that do not stand as they were given.
  Tables changed(const State& now) const;
  void restore(const Tables& which) const;
  const State& given() const { return given_; }

  /// The server's own process behind a connection.
  static std::string process_of(const std::shared_ptr<Connection>& connection);
  /// Waits until the server has ended the session, or all others on this database but this
  /// witness's own, and answers how many they were.
  enum class Which : bool { this_one, others };
  std::size_t end_sessions(Which which, const std::string& process) const;

 private:
  std::shared_ptr<Connection> connection_;
  std::vector<std::string> selects_;  ///< of each: its rows as text, behind its place
  State given_;
};

/// What was found otherwise than expected, "" when nothing was.
std::string difference(const Witness::State& found, const Witness::State& expected);

}  // namespace ombrix::testing
