#pragma once

#include "ombrix/value.h"

#include "base/text.h"

namespace ombrix::purchase {

/// Types "0" and "3", blanks around them allowed, are the stocked ones.
inline bool is_stocked(const Value& item_type) {
  const std::string text = item_type.text_or_empty();
  const auto type = trim(text);
  return type == "0" || type == "3";
}

}  // namespace ombrix::purchase
