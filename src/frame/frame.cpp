#include "ombrix/purchase/frame.h"

#include "base/raw.h"
#include "base/text.h"
#include "database/connection_access.h"
#include "frame/sibling.h"
#include "frame/trap.h"
#include "hosting/dialogue.h"
#include "hosting/shipped.h"

namespace ombrix {

std::string detail::without_outer_blanks(const std::string& text) {
  return std::string(trim(text));
}

}  // namespace ombrix

namespace ombrix::purchase {

using database::ConnectionAccess;

Frame::Frame(Connected initially) : living_(std::make_unique<InstanceCount>()) {
  if (initially == Connected::unopened) {
    raw(AdoConnectionObject) = std::make_shared<Connection>();
  }
}

Frame::~Frame() = default;

bool Frame::refused(std::string_view reason) {
  raw(ErrDesc) = reason;
  return false;
}

bool Frame::refused_by(Sibling& sibling) {
  return refused(sibling.get("ErrDesc").text_or_empty());
}

void Frame::report(Trap kind, const Failure& failure) {
  const std::string& description = failure.description();
  switch (kind) {
    case Trap::plain:
    case Trap::skip_null:
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

Connection& Frame::connection() const {
  const auto& held = raw(AdoConnectionObject);
  if (!held) raise_not_set();
  return *held;
}

Recordset Frame::open(const database::Statement& statement, OpenMode mode) const {
  return database::open_recordset(statement, connection(), mode);
}

void Frame::execute(const database::Statement& statement) const {
  database::execute(statement, connection());
}

Recordset Frame::open_fresh(const database::Statement& statement, OpenMode mode,
                            const std::string& connection_text) const {
  return database::open_fresh_recordset(statement, connection_text, raw(AdoConnectionObject).get(),
                                        mode);
}

Sibling Frame::sibling(std::string_view name) const {
  const auto& held = raw(AdoConnectionObject);
  return {name, held ? ConnectionAccess::instruments(*held) : nullptr};
}

}  // namespace ombrix::purchase
