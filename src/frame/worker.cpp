#include "ombrix/worker.h"

#include "base/raw.h"
#include "database/connection_access.h"
#include "frame/asker.h"

namespace ombrix {

using database::ConnectionAccess;

namespace {

Sibling made_for(const std::shared_ptr<Connection>& connection, std::string_view name) {
  return {name, connection ? ConnectionAccess::instruments(*connection) : nullptr};
}

}  // namespace

Sibling Asker::sibling(std::string_view name) const {
  return made_for(connection, name);
}

bool Asker::refused(std::string_view text) const {
  reason = text;
  return false;
}

bool Asker::refused_by(Sibling& sibling) const {
  return refused(sibling.get("ErrDesc").text_or_empty());
}

template <Access kConnection>
Asker Worker<kConnection>::asker() {
  return {raw(AdoConnectionObject), raw(ErrDesc)};
}

template <Access kConnection>
bool Worker<kConnection>::refused(std::string_view reason) {
  return asker().refused(reason);
}

template <Access kConnection>
bool Worker<kConnection>::refused_by(Sibling& sibling) {
  return asker().refused_by(sibling);
}

template <Access kConnection>
Connection& Worker<kConnection>::connection() const {
  const auto& given = raw(AdoConnectionObject);
  if (!given) raise_not_set();
  return *given;
}

template <Access kConnection>
Recordset Worker<kConnection>::open(const database::Statement& statement, OpenMode mode) const {
  return database::open_recordset(statement, connection(), mode);
}

template <Access kConnection>
std::int64_t Worker<kConnection>::execute(const database::Statement& statement) const {
  return database::execute(statement, connection());
}

template <Access kConnection>
Recordset Worker<kConnection>::open_fresh(const database::Statement& statement, OpenMode mode,
                                          const std::string& connection_text) const {
  return database::open_fresh_recordset(statement, connection_text, raw(AdoConnectionObject).get(),
                                        mode);
}

template <Access kConnection>
Sibling Worker<kConnection>::sibling(std::string_view name) const {
  return made_for(raw(AdoConnectionObject), name);
}

/// A business class does not give its connection back; a shipped component does.
template class Worker<Access::set>;
template class Worker<kGetSet>;

}  // namespace ombrix
