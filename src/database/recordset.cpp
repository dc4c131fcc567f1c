#include "ombrix/recordset.h"

#include <utility>

#include "database/connection_access.h"
#include "database/recordset_rows.h"
#include "database/session_pool.h"

namespace ombrix {

using database::ConnectionAccess;
using database::Instruments;
using database::Session;
using database::SessionPool;
using database::Statement;

Recordset::Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

Recordset::Rows& Recordset::rows() const {
  if (!rows_) throw Failure(3704, "Operation is not allowed when the object is closed.");
  return *rows_;
}

void Recordset::Open(std::string_view source, const std::shared_ptr<Connection>& connection,
                     OpenMode mode) {
  if (!connection) raise_not_set();
  if (rows_) throw Failure(3705, "Operation is not allowed when the object is open.");
  rows_ = std::make_unique<Rows>(Rows::Source{ConnectionAccess::session(*connection),
                                              ConnectionAccess::instruments(*connection),
                                              Call::Road::object, mode, std::string(source)},
                                 [&](Session&) { return database::Query{std::string(source)}; });
}

void Recordset::Open(std::string_view source, std::string_view connection_text, OpenMode mode) {
  if (rows_) throw Failure(3705, "Operation is not allowed when the object is open.");
  rows_ = std::make_unique<Rows>(
      Rows::Source{SessionPool::instance().borrow(std::string(connection_text)), nullptr,
                   Call::Road::text, mode, std::string(source)},
      [&](Session&) { return database::Query{std::string(source)}; });
}

void Recordset::Close() {
  rows_.reset();
}
int Recordset::State() const {
  return rows_ ? 1 : 0;
}
std::size_t Recordset::RecordCount() {
  return rows().count();
}
bool Recordset::IsEOF() {
  return rows().at_end();
}
bool Recordset::IsBOF() {
  return rows().count() == 0;
}
void Recordset::MoveNext() {
  rows().move_next();
}
Value Recordset::read(std::string_view name) {
  return rows().read(name);
}
void Recordset::write(std::string_view name, const Value& value) {
  rows().write(name, value);
}
void Recordset::AddNew() {
  rows().add_new();
}
void Recordset::Update() {
  rows().update();
}

void Recordset::Delete(int which) {
  if (which != 1) throw Failure(5, "Invalid procedure call or argument");
  rows().erase();
}

namespace database {

class StatementRows {
 public:
  static Recordset open(std::shared_ptr<Session> session, std::shared_ptr<Instruments> instruments,
                        Call::Road road, OpenMode mode, const Statement& statement) {
    const bool watched = instruments && !instruments->idle();
    Recordset recordset;
    recordset.rows_ = std::make_unique<Recordset::Rows>(
        Recordset::Rows::Source{std::move(session), std::move(instruments), road, mode,
                                watched ? statement.joined_text() : std::string()},
        [&](Session& on) {
          statement.verify(on);
          return Query{statement.prepared_text(), statement.parameters(), statement.key()};
        });
    return recordset;
  }
};

Recordset open_recordset(const Statement& statement, const Connection& connection, OpenMode mode) {
  return StatementRows::open(ConnectionAccess::session(connection),
                             ConnectionAccess::instruments(connection), Call::Road::object, mode,
                             statement);
}

Recordset open_fresh_recordset(const Statement& statement, const std::string& connection_text,
                               const Connection* watcher, OpenMode mode) {
  return StatementRows::open(SessionPool::instance().borrow(connection_text),
                             watcher ? ConnectionAccess::instruments(*watcher) : nullptr,
                             Call::Road::text, mode, statement);
}

}  // namespace database

}  // namespace ombrix
