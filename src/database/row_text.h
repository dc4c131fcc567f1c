#pragma once

#include <span>
#include <string>
#include <string_view>

#include "database/cell.h"

namespace ombrix::database {

using Names = std::span<const std::string_view>;

/// The statements that write one row, with `$1`, `$2`, ... for the values, then the key, then the
/// guard. `filled` are columns that the database fills itself and whose values are wanted.
std::string insert_text(std::string_view table, Names values, Names filled);
std::string update_text(std::string_view table, Names values, Names key, Names guard);
std::string delete_text(std::string_view table, Names key, Names guard);

/// As a reader sees such a statement: the parameters in their places.
std::string joined_row_text(std::string_view text, const Parameters& parameters);

}  // namespace ombrix::database
