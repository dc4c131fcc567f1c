#pragma once

#include <memory>

#include "ombrix/connection.h"
#include "ombrix/recordset.h"

#include "database/instruments.h"
#include "database/session.h"
#include "database/statement.h"

namespace ombrix::database {

/// The library's own way to what a connection holds.
class ConnectionAccess {
 public:
  /// Raises failure 3704 when the connection is closed.
  static const std::shared_ptr<Session>& session(const Connection& connection);
  static const std::shared_ptr<Instruments>& instruments(const Connection& connection) {
    return connection.instruments_;
  }
};

/// A recordset on one of the library's own statements, through the client's connection.
Recordset open_recordset(const Statement& statement, const Connection& connection, OpenMode mode);

/// The same through a session of its own. The instruments of `watcher`, which may be null, see it.
Recordset open_fresh_recordset(const Statement& statement, const std::string& connection_text,
                               const Connection* watcher, OpenMode mode);

/// Runs a statement that returns nothing; answers how many rows it changed.
std::int64_t execute(const Statement& statement, const Connection& connection);

}  // namespace ombrix::database
