#pragma once

#include <string_view>

namespace ombrix {

inline constexpr int kSchemaVersion = 1;

/// `schema/ombrix.sql`, built into the library.
extern const std::string_view kSchemaText;

}  // namespace ombrix
