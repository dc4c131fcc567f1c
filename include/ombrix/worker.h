#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ombrix/connection.h"
#include "ombrix/property.h"
#include "ombrix/recordset.h"

namespace ombrix {

namespace database {
class Statement;
}
class Sibling;
struct Asker;

/// A text whose getter is declared to answer a Variant, which holds it.
struct ReasonText : Property<std::string, Access::get> {
  static constexpr std::string_view declared_type = "Variant";
};

/// What works on a client's behalf: it holds the client's connection and tells why it refused.
/// `kConnection` is what a client may do with the connection that it gave.
template <Access kConnection>
class Worker {
 public:
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  /// The open connection that the client holds; it is neither opened nor closed here.
  Property<std::shared_ptr<Connection>, kConnection> AdoConnectionObject;
  /// The reason of the last refusal. Nothing clears it: it is read only after False.
  ReasonText ErrDesc;

 protected:
  Worker() = default;
  ~Worker() = default;

  /// Sets `ErrDesc` and answers false.
  bool refused(std::string_view reason);
  bool refused_by(Sibling& sibling);

  /// Raises failure 91 when the client set none.
  Connection& connection() const;

  /// Through the client's connection.
  Recordset open(const database::Statement& statement, OpenMode mode) const;
  /// Answers how many rows changed.
  std::int64_t execute(const database::Statement& statement) const;
  /// Through a session of its own on the text `connection_text`.
  Recordset open_fresh(const database::Statement& statement, OpenMode mode,
                       const std::string& connection_text) const;

  Sibling sibling(std::string_view name) const;
  /// For what asks a sibling on this worker's behalf.
  Asker asker();
};

}  // namespace ombrix
