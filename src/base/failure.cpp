#include "ombrix/failure.h"

namespace ombrix {

// The texts are compared by traps and shown to clients, so each has this one home.

void raise_overflow() {
  throw Failure(6, "Overflow");
}

void raise_out_of_range() {
  throw Failure(9, "Subscript out of range");
}

void raise_division_by_zero() {
  throw Failure(11, "Division by zero");
}

void raise_type_mismatch() {
  throw Failure(13, "Type mismatch");
}

void raise_not_set() {
  throw Failure(91, "Object variable or With block variable not set");
}

void raise_null_use() {
  throw Failure(94, "Invalid use of Null");
}

}  // namespace ombrix
