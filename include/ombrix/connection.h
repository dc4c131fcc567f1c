#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "ombrix/instruments.h"
#include "ombrix/object.h"

namespace ombrix {

namespace database {
class Session;
struct Instruments;
class ConnectionAccess;
}  // namespace database

/// A connection to the suite's database. The client owns it, and opens and closes it; the business
/// classes only hold a reference. One thread at a time may use it.
///
/// A connection text is `Key=Value` pairs joined by `;`, keys without regard to case; a value may
/// stand between double quotes. `Driver=SQLite` takes `Database=` (a path; the file is made when it
/// is not there), `Busy Timeout=` (how long a call waits for another writer, in milliseconds, 5000
/// unless told) and `Synchronous=` (FULL unless told, NORMAL or OFF).
class Connection final : public Object {
 public:
  /// An unopened connection; `State` answers 0.
  Connection();
  ~Connection() override;

  /// Raises a failure that names what is wrong with the text or the database; the failure never
  /// holds a password.
  static std::shared_ptr<Connection> open(std::string_view connection_text);

  /// As `open`; raises failure 3705 when this connection is open.
  void Open(std::string_view connection_text);
  /// An open transaction is rolled back. Closing a closed connection does nothing.
  void Close();

  /// 1 when open, 0 when closed or when the session was lost.
  std::int32_t State() const;
  /// The text it was opened with, "" before.
  const std::string& ConnectionString() const { return text_; }

  /// Runs the client's own statement or statements, as they stand, and answers how many rows the
  /// last of them changed. Every value in the text is the client's responsibility.
  std::int64_t Execute(std::string_view statements);

  /// Transactions do not nest: a second `BeginTrans` raises, as do the others without a first.
  /// On SQLite the write lock of the file is taken at once.
  /// On PostgreSQL, once a statement in a transaction failed, the server refuses all that follow
  /// until `RollbackTrans`; `CommitTrans` then rolls back and raises.
  void BeginTrans();
  void CommitTrans();
  void RollbackTrans();
  bool in_transaction() const;

  /// Sees every call that goes through this connection, through a text session that a class opens
  /// while it holds this connection, and to the siblings of such a class. Empty removes it.
  void observe(Observer observer);
  /// May fail any call that an observer would see: for testing a client's own error paths.
  void inject(FaultHook hook);

  std::string_view class_name() const override { return "Connection"; }
  Value get(std::string_view member, std::span<Value> arguments) override;
  void let(std::string_view member, const Value& value, std::span<Value> arguments) override;
  void set(std::string_view member, const ObjectRef& object) override;
  Value call(std::string_view member, std::span<Value> arguments) override;
  std::vector<MemberInfo> members() const override;

 private:
  friend class database::ConnectionAccess;

  std::string text_;
  std::shared_ptr<database::Session> session_;
  std::shared_ptr<database::Instruments> instruments_;
};

/// Runs `call` inside a transaction: committed when it answers true, rolled back when it answers
/// false or raises; the failure goes on to the caller.
///
/// A rollback does not undo what lies outside the transaction: the properties and the grid of an
/// object, and rows that a method writes through a connection text (`Create_Vendor` and its like).
/// Reads through a text see only committed work, so a document cannot be created and processed in
/// one transaction where its processing begins with such a read: create and process an order in
/// two.
///
/// On PostgreSQL, once a statement in `call` failed, the server refuses all that follow until the
/// rollback: a `call` that goes on behind a failure gets nothing done, and answering true raises.
template <class Body>
bool all_or_nothing(Connection& connection, Body&& body) {
  connection.BeginTrans();
  try {
    if (std::forward<Body>(body)()) {
      connection.CommitTrans();
      return true;
    }
  } catch (...) {
    try {
      connection.RollbackTrans();
    } catch (const Failure&) {
      // The first failure tells why; whatever ended the session undid the transaction.
    }
    throw;
  }
  try {
    connection.RollbackTrans();
  } catch (const Failure&) {
    // A session that was lost took its transaction with it: False is the whole answer.
    if (connection.State() == 1) throw;
  }
  return false;
}

}  // namespace ombrix
