#include "ombrix/schema.h"

#include <string>

#include "frame/database/connection_access.h"
#include "frame/schema_text.h"

namespace ombrix {

namespace {

using database::Session;

bool schema_stands(Session& session) {
  if (!session.table("Ombrix_Schema")) return false;
  const auto version = session.prepared("Select Version From Ombrix_Schema Where Version = $1",
                                        {{database::Kind::integer, std::int64_t{kSchemaVersion}}});
  return version->fetch({{database::Kind::integer, std::int64_t{kSchemaVersion}}}).count > 0;
}

std::string schema_for(const database::Dialect& dialect) {
  constexpr std::string_view kGeneratedKey = " generated_key";
  std::string text(kSchemaText);
  for (auto place = text.find(kGeneratedKey); place != std::string::npos;
       place = text.find(kGeneratedKey, place)) {
    text.replace(place + 1, kGeneratedKey.size() - 1, dialect.generated_key);
  }
  return text;
}

bool make_schema(Session& session) {
  const database::Dialect& dialect = session.driver().dialect();
  if (!dialect.schema_lock.empty()) session.execute_text(std::string(dialect.schema_lock));
  // Another process may have made it while this one waited for its turn.
  if (!schema_stands(session)) session.execute_text(schema_for(dialect));
  return true;
}

}  // namespace

void create_schema(Connection& connection) {
  Session& session = *database::ConnectionAccess::session(connection);
  if (schema_stands(session)) return;
  if (connection.in_transaction()) {
    make_schema(session);
  } else {
    all_or_nothing(connection, [&] { return make_schema(session); });
  }
}

}  // namespace ombrix
