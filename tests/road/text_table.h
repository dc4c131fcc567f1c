#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/grid.h"

#include "frame/text.h"
#include "support/lines.h"

namespace ombrix::testing {

/// The cells of a table written as text: a line a row, "|" between cells, blanks around them and
/// empty lines left out.
inline std::vector<std::vector<std::string>> cells_of(const std::string& table) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    if (trim(line).empty()) continue;
    std::istringstream cells(line + " |");
    rows.emplace_back();
    for (std::string cell; std::getline(cells, cell, '|');) rows.back().emplace_back(trim(cell));
  }
  return rows;
}

/// A table as `listing` writes it, so that an expected one may stand in columns.
inline std::string as_listed(const std::string& table) {
  std::string text;
  for (const auto& row : cells_of(table)) {
    if (!text.empty()) text += "\n";
    for (std::size_t place = 0; place < row.size(); ++place) {
      text += (place == 0 ? "" : " | ") + row[place];
    }
  }
  return text;
}

/// A grid of the lines below a heading of column numbers.
inline std::shared_ptr<MemoryGrid> grid_from(const std::string& table) {
  const auto rows = cells_of(table);
  auto grid = std::make_shared<MemoryGrid>(static_cast<std::int32_t>(rows.size()), kColumns);
  for (std::size_t row = 1; row < rows.size(); ++row) {
    for (std::size_t place = 0; place < rows[row].size(); ++place) {
      grid->TextMatrix(static_cast<std::int32_t>(row), std::stoi(rows[0].at(place)),
                       rows[row][place]);
    }
  }
  return grid;
}

}  // namespace ombrix::testing
