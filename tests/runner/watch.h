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
  /// `other` is another session of the same database.
  Watch(const Remote& client, std::shared_ptr<Connection> other);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  /// Forgets what was seen so far.
  void begin();
  /// A row for each statement: "text (1,3,-1) Select ...", "(1,3,-1) Select ..." through the
  /// client's connection, "execute Delete ...", the present day as "today". What siblings ask the
  /// database is left out.
  const Table& statements() const { return statements_; }
  /// The same, with the methods of siblings in between: "OmbrixSystem.General.LastDate()".
  const Table& calls() const { return calls_; }

  /// Rows as the client's own session sees them, in the order of their key; through the other one
  /// when the client's is closed.
  Table rows(const std::string& select, const std::vector<std::string>& columns);

 private:
  void enter(const Call& call);
  void leave(const Call& call);
  void note(const std::string& line);

  std::shared_ptr<Connection> client_, other_;
  Table statements_, calls_;
  int unseen_ = 0;  ///< depth of what is not noted: siblings at work, a look at the rows
};

}  // namespace ombrix::scenarios
