#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ombrix/connection.h"

#include "runner/client.h"
#include "runner/table.h"

namespace ombrix::scenarios {

/// What the C interface does not tell: the statements behind a call, and rows of tables.
class Watch {
 public:
  explicit Watch(const Remote& books);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  /// Forgets what was seen so far.
  void begin();
  /// A line for each statement: "text (1,3,-1) Select ...", "(1,3,-1) Select ..." through the
  /// client's connection, "execute Delete ...", the present day as "today". What siblings ask the
  /// database is left out.
  const std::vector<std::string>& statements() const { return statements_; }
  /// The same, with the methods of siblings in between: "OmbrixSystem.General.LastDate()".
  const std::vector<std::string>& calls() const { return calls_; }

  /// Rows as the client's own session sees them, in the order of their key; through another session
  /// when the client's is closed.
  Table rows(const std::string& select, const std::vector<std::string>& columns) const;

 private:
  void enter(const Call& call);
  void leave(const Call& call);
  void note(std::string line);

  std::shared_ptr<Connection> books_;
  std::vector<std::string> statements_, calls_;
  int inside_siblings_ = 0;
};

}  // namespace ombrix::scenarios
