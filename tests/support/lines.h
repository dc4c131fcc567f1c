#pragma once

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ombrix/grid.h"
#include "ombrix/value.h"

#include "support/books.h"

namespace ombrix::testing {

/// A grid row, its cells by column.
using Cells = std::map<std::int32_t, std::string>;

/// Wide enough for every document.
constexpr std::int32_t kColumns = 36;

inline std::shared_ptr<MemoryGrid> grid_of(std::initializer_list<Cells> lines) {
  auto grid = std::make_shared<MemoryGrid>(static_cast<std::int32_t>(lines.size()) + 1, kColumns);
  std::int32_t row = 0;
  for (const Cells& cells : lines) {
    ++row;
    for (const auto& [column, text] : cells) grid->TextMatrix(row, column, text);
  }
  return grid;
}

/// "none" stands for no value at all, which is not a Null.
inline std::string shown(const Value& value) {
  if (value.is_empty()) return "none";
  return value.is_null() ? "Null" : value.to_text();
}

/// The columns of the rows that `from` selects, a line for each row: "a | b". `from` is what stands
/// behind "From".
inline std::string listing(const Books& books, const std::vector<std::string>& columns,
                           const std::string& from) {
  std::string select;
  for (const auto& column : columns) select += (select.empty() ? "Select " : ", ") + column;
  std::string text;
  for (const auto& row : books.rows(select + " From " + from, columns)) {
    if (!text.empty()) text += "\n";
    for (std::size_t place = 0; place < row.size(); ++place) {
      text += (place == 0 ? "" : " | ") + shown(row[place]);
    }
  }
  return text;
}

/// How many rows `from` selects.
inline std::string count(const Books& books, const std::string& from) {
  return shown(books.value("Select Count(*) As V From " + from));
}

}  // namespace ombrix::testing
