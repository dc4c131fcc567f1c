#include "base/names.h"

namespace ombrix {

namespace {

bool begins_name(char c) {
  return c == '_' || (folded(c) >= 'a' && folded(c) <= 'z');
}

}  // namespace

std::string lower_name(std::string_view name) {
  std::string lowered(name);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), folded);
  return lowered;
}

bool is_plain_name(std::string_view name) {
  if (name.empty() || !begins_name(name.front())) return false;
  return std::all_of(name.begin(), name.end(),
                     [](char c) { return begins_name(c) || (c >= '0' && c <= '9'); });
}

}  // namespace ombrix
