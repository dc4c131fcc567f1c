#pragma once

#include "ombrix/failure.h"
#include "ombrix/purchase/frame.h"

namespace ombrix {

/// What a method makes of a failure that is raised in it. In every kind the answer is False (or "",
/// or 0), and what the method holds is released.
enum class Trap : unsigned char {
  plain,           ///< `ErrDesc` becomes the description
  first_reason,    ///< as plain, but only when `ErrDesc` is empty
  silent,          ///< `ErrDesc` stays
  numbered,        ///< number, " : " and description
  numbered_close,  ///< number directly followed by the description
  message_box,     ///< the description is shown in a message box; `ErrDesc` stays
};

template <class Body>
auto purchase::Frame::trapped(Trap kind, Body&& body) -> decltype(body()) {
  try {
    return body();
  } catch (const Failure& failure) {
    report(kind, failure);
    return {};
  }
}

}  // namespace ombrix
