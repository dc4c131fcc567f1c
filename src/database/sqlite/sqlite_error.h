#pragma once

#include <string>

struct sqlite3;

namespace ombrix::database {

/// Raises the database's own message for its last failure, with what a reader needs besides.
[[noreturn]] void raise_sqlite(sqlite3* database, int code);

}  // namespace ombrix::database
