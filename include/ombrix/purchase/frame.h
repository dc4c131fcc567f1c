#pragma once

#include <memory>
#include <string_view>

#include "ombrix/worker.h"

namespace ombrix {
class InstanceCount;
enum class Trap : unsigned char;
}  // namespace ombrix

namespace ombrix::purchase {

/// What every business class repeats.
///
/// A method of work answers True only when all of it was done. On False `ErrDesc` holds the reason;
/// no method clears it, so it is read only after False. A failure leaves what was written so far:
/// a client that wants all or nothing uses `all_or_nothing`.
class Frame : public Worker<Access::set> {
 public:
  /// Copied into the `Last_Update` columns; the class takes no clock for it.
  Day LastUpdate;
  Flag ForeignCurrencyFlag;

 protected:
  /// What the connection field holds before the client sets it.
  enum class Connected : bool { never, unopened };

  explicit Frame(Connected initially);
  ~Frame();

  /// Runs a method's body; a failure in it becomes the method's answer, as the kind of trap says.
  template <class Body>
  auto trapped(Trap kind, Body&& body) -> decltype(body());
  void report(Trap kind, const Failure& failure);

 private:
  std::unique_ptr<InstanceCount> living_;
};

}  // namespace ombrix::purchase
