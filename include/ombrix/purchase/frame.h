#pragma once

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
class InstanceCount;
class Sibling;
enum class Trap : unsigned char;
}  // namespace ombrix

namespace ombrix::purchase {

/// A text whose getter is declared to answer a Variant, which holds it.
struct ReasonText : Property<std::string, Access::get> {
  static constexpr std::string_view declared_type = "Variant";
};

/// What every business class repeats: the client's connection, the reason of the last failure, and
/// the ways to the database and to the siblings.
///
/// A method of work answers True only when all of it was done. On False `ErrDesc` holds the reason;
/// no method clears it, so it is read only after False. A failure leaves what was written so far:
/// a client that wants all or nothing uses `all_or_nothing`.
class Frame {
 public:
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;

  /// The open connection that the client holds. The class neither opens nor closes it.
  Property<std::shared_ptr<Connection>, Access::set> AdoConnectionObject;
  /// The reason of the last failure.
  ReasonText ErrDesc;
  /// Copied into the `Last_Update` columns; the class takes no clock for it.
  Day LastUpdate;
  Flag ForeignCurrencyFlag;

 protected:
  /// What the connection field holds before the client sets it.
  enum class Connected : bool { never, unopened };

  explicit Frame(Connected initially);
  ~Frame();

  /// Sets `ErrDesc` and answers false.
  bool refused(std::string_view reason);
  bool refused_by(Sibling& sibling);

  /// Runs a method's body; a failure in it becomes the method's answer, as the kind of trap says.
  template <class Body>
  auto trapped(Trap kind, Body&& body) -> decltype(body());
  void report(Trap kind, const Failure& failure);

  /// Raises failure 91 when the client set none.
  Connection& connection() const;

  /// Through the client's connection.
  Recordset open(const database::Statement& statement, OpenMode mode) const;
  void execute(const database::Statement& statement) const;
  /// Through a session of its own on the text `connection_text`.
  Recordset open_fresh(const database::Statement& statement, OpenMode mode,
                       const std::string& connection_text) const;

  Sibling sibling(std::string_view name) const;
  class SeriesCounter;

 private:
  std::unique_ptr<InstanceCount> living_;
};

}  // namespace ombrix::purchase
