#pragma once

#include <string>
#include <vector>

#include "ombrix/value.h"

namespace ombrix::scenarios {

using Row = std::vector<std::string>;
using Table = std::vector<Row>;

/// As scenarios tell a value: "none" for no value at all, "Null", "True", a day without its
/// midnight, "today".
std::string shown(const Value& value);

/// A word of a scenario as a value: unquoted numbers, Booleans, days, "Null" and "none" are what
/// they look like, all else is a text. "today" is the present day.
Value value_of(const std::string& word);

/// Whether rows are as expected; the cell "*" stands for any value but Null and none, the row "..."
/// for any rows and the cell "..." for any cells.
bool matches(const Table& expected, const Table& seen);

/// Both tables, row by row, with differing cells between "> <".
std::string side_by_side(const Table& expected, const Table& seen);

/// As a table stands in a file: behind " : ", or below a line.
std::string inline_text(const Table& table);
std::vector<std::string> block_text(const Table& table);

}  // namespace ombrix::scenarios
