#include "ombrix/purchase/frame.h"

#include "base/raw.h"
#include "base/text.h"
#include "frame/trap.h"
#include "hosting/dialogue.h"
#include "hosting/shipped.h"

namespace ombrix {

std::string detail::without_outer_blanks(const std::string& text) {
  return std::string(trim(text));
}

}  // namespace ombrix

namespace ombrix::purchase {

Frame::Frame(Connected initially) : living_(std::make_unique<InstanceCount>()) {
  if (initially == Connected::unopened) {
    raw(AdoConnectionObject) = std::make_shared<Connection>();
  }
}

Frame::~Frame() = default;

void Frame::report(Trap kind, const Failure& failure) {
  const std::string& description = failure.description();
  switch (kind) {
    case Trap::plain:
      refused(description);
      break;
    case Trap::first_reason:
      if (ErrDesc().empty()) refused(description);
      break;
    case Trap::silent:
      break;
    case Trap::numbered:
      refused(std::to_string(failure.number()) + " : " + description);
      break;
    case Trap::numbered_close:
      refused(std::to_string(failure.number()) + description);
      break;
    case Trap::message_box:
      show_message(description);
      break;
  }
}

}  // namespace ombrix::purchase
