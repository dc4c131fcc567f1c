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

/// ASCII letters without regard to case, as names of tables, columns and members are compared.
bool same_name(std::string_view left, std::string_view right);
std::string lower_name(std::string_view name);

/// A letter or underscore, then letters, digits or underscores (ASCII): what may stand in a
/// statement as the name of a table or a column when the name comes from a caller.
bool is_plain_name(std::string_view name);

bool is_utf8(std::string_view text);

}  // namespace ombrix
