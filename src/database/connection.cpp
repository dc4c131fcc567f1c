#include "ombrix/connection.h"

#include <utility>

#include "database/connection_access.h"
#include "database/session_pool.h"

namespace ombrix {

using database::ConnectionAccess;
using database::Session;
using database::SessionPool;

namespace {

/// One of the three calls that frame a transaction.
template <class Run>
void transact(const Connection& connection, Call::Kind kind, const char* text, Run run) {
  Session& session = *ConnectionAccess::session(connection);
  database::watched(
      ConnectionAccess::instruments(connection).get(), session,
      [&] { return Call{.kind = kind, .road = Call::Road::object, .text = text}; },
      [&] {
        run(session);
        return 0;
      });
}

}  // namespace

Connection::Connection() : instruments_(std::make_shared<database::Instruments>()) {}

Connection::~Connection() {
  Close();
}

std::shared_ptr<Connection> Connection::open(std::string_view connection_text) {
  auto connection = std::make_shared<Connection>();
  connection->Open(connection_text);
  return connection;
}

void Connection::Open(std::string_view connection_text) {
  if (State() == 1) throw Failure(3705, "Operation is not allowed when the object is open.");
  Close();
  auto session = std::make_shared<Session>(database::open_driver_session(
      database::ConnectionText(connection_text), database::Missing::create));
  text_ = connection_text;
  session_ = std::move(session);
  SessionPool::instance().client_opened(text_);
}

void Connection::Close() {
  if (!session_) return;
  // Recordsets that are still open share the session and must find it closed.
  session_->lose("Operation is not allowed when the object is closed.");
  session_.reset();
  SessionPool::instance().client_closed(text_);
}

std::int32_t Connection::State() const {
  return session_ && session_->usable() ? 1 : 0;
}

std::int64_t Connection::Execute(std::string_view statements) {
  const std::string text(statements);
  Session& session = *ConnectionAccess::session(*this);
  std::int64_t rows = 0;
  database::watched(
      instruments_.get(), session,
      [&] {
        return Call{
            .kind = Call::Kind::execute, .road = Call::Road::object, .text = text, .options = -1};
      },
      [&] { return rows = session.execute_text(text); });
  return rows;
}

void Connection::BeginTrans() {
  if (in_transaction()) throw Failure(kDatabaseFailure, "A transaction is already open.");
  transact(*this, Call::Kind::begin, "Begin", [](Session& session) { session.driver().begin(); });
}

void Connection::CommitTrans() {
  if (!in_transaction()) throw Failure(kDatabaseFailure, "No transaction is open.");
  transact(*this, Call::Kind::commit, "Commit",
           [](Session& session) { session.driver().commit(); });
}

void Connection::RollbackTrans() {
  if (!in_transaction()) throw Failure(kDatabaseFailure, "No transaction is open.");
  transact(*this, Call::Kind::rollback, "Rollback",
           [](Session& session) { session.driver().rollback(); });
}

bool Connection::in_transaction() const {
  return ConnectionAccess::session(*this)->driver().in_transaction();
}

void Connection::observe(Observer observer) {
  instruments_->observer = std::move(observer);
}

void Connection::inject(FaultHook hook) {
  instruments_->hook = std::move(hook);
}

const std::shared_ptr<Session>& ConnectionAccess::session(const Connection& connection) {
  if (!connection.session_) {
    throw Failure(3704, "Operation is not allowed when the object is closed.");
  }
  return connection.session_;
}

std::int64_t database::execute(const Statement& statement, const Connection& connection) {
  Session& session = *ConnectionAccess::session(connection);
  std::int64_t rows = 0;
  watched(
      ConnectionAccess::instruments(connection).get(), session,
      [&] {
        return Call{.kind = Call::Kind::execute,
                    .road = Call::Road::object,
                    .text = statement.joined_text(),
                    .options = -1};
      },
      [&] {
        statement.verify(session);
        const Parameters parameters = statement.parameters();
        return rows = session.prepared(statement.prepared_text(), parameters)->run(parameters);
      });
  return rows;
}

}  // namespace ombrix
