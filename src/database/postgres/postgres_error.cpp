#include "database/postgres/postgres_error.h"

#include <libpq-fe.h>
#include <string_view>

#include "ombrix/failure.h"

#include "base/text.h"

namespace ombrix::database {

namespace {

/// What a client should know beyond the server's own words, by SQLSTATE.
struct Remark {
  std::string_view state;
  std::string_view text;
};
constexpr Remark kRemarks[] = {
    {"25P02", " (a statement failed before; roll the transaction back)"},
    {"40001", " (roll the transaction back and try again)"},
    {"40P01", " (roll the transaction back and try again)"},
    {"55P03", " (another session holds the row longer than the busy timeout)"},
};

std::string_view remark_on(std::string_view state) {
  for (const Remark& remark : kRemarks) {
    if (remark.state == state) return remark.text;
  }
  return "";
}

std::string one_line(std::string_view text) {
  std::string line;
  for (const char c : text) line += c == '\n' || c == '\t' ? ' ' : c;
  return std::string(trim(line));
}

}  // namespace

void raise_postgres(pg_conn* connection, const pg_result* result) {
  if (PQstatus(connection) != CONNECTION_OK) {
    throw Failure(kDatabaseFailure,
                  "The session with the server is lost: " + one_line(PQerrorMessage(connection)));
  }
  const char* message = PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
  const char* state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
  if (message == nullptr) throw Failure(kDatabaseFailure, one_line(PQerrorMessage(connection)));
  throw Failure(kDatabaseFailure,
                std::string(message).append(remark_on(state != nullptr ? state : "")));
}

void raise_not_connected(pg_conn* connection, const std::string& password) {
  std::string message = one_line(PQerrorMessage(connection));
  if (!password.empty() && message.find(password) != std::string::npos) {
    message = "the server refused the session";
  }
  throw Failure(kDatabaseFailure, "Cannot open the database: " + message);
}

}  // namespace ombrix::database
