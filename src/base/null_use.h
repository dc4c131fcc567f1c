#pragma once

#include "ombrix/failure.h"

namespace ombrix {

/// Whether a failure is the one that a reader of columns may carry on behind.
inline bool is_null_use(const Failure& failure) {
  return failure.description() == "Invalid use of Null";
}

}  // namespace ombrix
