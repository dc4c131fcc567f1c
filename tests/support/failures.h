#pragma once

#include <cstdint>
#include <string>

#include "ombrix/failure.h"

namespace ombrix::testing {

/// The failure that `body` raises; one with number 0 and an empty description when it raises none.
template <class Body>
Failure raised(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure;
  }
  return Failure(0, "");
}

template <class Body>
std::int32_t raised_number(Body&& body) {
  return raised(body).number();
}
template <class Body>
std::string raised_text(Body&& body) {
  return raised(body).description();
}

inline bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

inline constexpr const char* kConflict =
    "Row cannot be located for updating. Some values may have been changed since it was last read.";
inline constexpr std::int32_t kNoRow = 3021;
inline constexpr std::int32_t kNotUpdatable = 3251;
inline constexpr std::int32_t kNoField = 3265;
inline constexpr std::int32_t kClosed = 3704;
inline constexpr std::int32_t kOpen = 3705;

}  // namespace ombrix::testing
