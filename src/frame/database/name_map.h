#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "frame/text.h"

namespace ombrix::database {

struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : name) {
      const auto byte = static_cast<unsigned char>(c);
      hash = (hash ^ (byte >= 'A' && byte <= 'Z' ? byte + 32U : byte)) * 1099511628211U;
    }
    return static_cast<std::size_t>(hash);
  }
};

struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const {
    return same_name(left, right);
  }
};

/// Looked up by name without regard to case.
template <class T>
using NameMap = std::unordered_map<std::string, T, NameHash, NameEqual>;

}  // namespace ombrix::database
