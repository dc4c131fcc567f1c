#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ombrix {

/// Names of tables, columns, members and components are compared without regard to the case of
/// ASCII letters. The C library's folding follows the process's locale, and a name must not.

constexpr char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

constexpr bool same_name(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char one, char other) { return folded(one) == folded(other); });
}

constexpr std::uint32_t hash_of_name(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(folded(c))) * 16777619U;
  return hash;
}

std::string lower_name(std::string_view name);

/// A letter or underscore, then letters, digits or underscores (ASCII): what may stand in a
/// statement as the name of a table or a column when the name comes from a caller.
bool is_plain_name(std::string_view name);

struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const { return hash_of_name(name); }
};
struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const {
    return same_name(left, right);
  }
};
/// Looked up by name.
template <class T>
using NameMap = std::unordered_map<std::string, T, NameHash, NameEqual>;

}  // namespace ombrix
