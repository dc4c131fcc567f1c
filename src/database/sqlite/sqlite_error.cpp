#include "database/sqlite/sqlite_error.h"

#include <sqlite3.h>

#include "ombrix/failure.h"

namespace ombrix::database {

void raise_sqlite(sqlite3* database, int code) {
  std::string message = database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code);
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      message += " (another connection is writing and did not end within the busy timeout)";
      break;
    case SQLITE_CANTOPEN:
      message += " (is the path right, and may it be read and written?)";
      break;
    default:
      break;
  }
  throw Failure(kDatabaseFailure, message);
}

}  // namespace ombrix::database
