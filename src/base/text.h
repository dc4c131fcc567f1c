#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ombrix {

/// Texts are UTF-8. Positions and lengths count characters (code points), not bytes.

/// Without the blanks (0x20 only) at both ends.
std::string_view trim(std::string_view text);

/// The text behind its first `count` characters; "" when it has no more than these.
std::string_view without_first(std::string_view text, std::size_t count);

/// The first `count` characters, or all of them when there are fewer.
std::string_view first_of(std::string_view text, std::size_t count);

std::size_t length_of(std::string_view text);

bool is_utf8(std::string_view text);

}  // namespace ombrix
