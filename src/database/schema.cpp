#include "ombrix/schema.h"

#include <string>

#include "database/connection_access.h"
#include "database/schema_text.h"

namespace ombrix {

namespace {

using database::Session;

bool schema_stands(Session& session) {
  if (!session.table("Ombrix_Schema")) return false;
  const auto version = session.prepared("Select Version From Ombrix_Schema Where Version = $1",
                                        {{database::Kind::integer, std::int64_t{kSchemaVersion}}});
  return version->fetch({{database::Kind::integer, std::int64_t{kSchemaVersion}}}).count() > 0;
}

void replace_each(std::string& text, std::string_view word, std::string_view by) {
  for (auto place = text.find(word); place != std::string::npos;
       place = text.find(word, place + by.size())) {
    text.replace(place, word.size(), by);
  }
}

std::string spaced(std::string_view word, std::string_view behind) {
  return std::string(" ").append(word).append(behind);
}

/// The schema is written once; a driver says some types in its own words.
std::string schema_for(const database::Dialect& dialect) {
  std::string text(kSchemaText);
  replace_each(text, " text,", spaced(dialect.text_type, ","));
  replace_each(text, " text not null", spaced(dialect.text_type, " not null"));
  replace_each(text, " generated_key,", spaced(dialect.generated_key, ","));
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
