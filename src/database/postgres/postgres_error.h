#pragma once

#include <string>

struct pg_conn;
struct pg_result;

namespace ombrix::database {

/// Raises the server's own message for a result that is no success, or the client library's when
/// the session broke, with what a reader needs besides.
[[noreturn]] void raise_postgres(pg_conn* connection, const pg_result* result);

/// Raises why a session could not be opened. The message never holds the password.
[[noreturn]] void raise_not_connected(pg_conn* connection, const std::string& password);

}  // namespace ombrix::database
