#include "ombrix/grid.h"

namespace ombrix {

namespace {

std::size_t size_of(std::int32_t rows, std::int32_t columns) {
  constexpr std::size_t kMostCells = 100'000'000;
  if (rows < 0 || columns < 0) raise_out_of_range();
  const std::size_t cells = static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns);
  if (cells > kMostCells) raise_out_of_range();
  return cells;
}

}  // namespace

MemoryGrid::MemoryGrid(std::int32_t rows, std::int32_t columns)
    : rows_(rows), columns_(columns), cells_(size_of(rows, columns)) {}

std::size_t MemoryGrid::at(std::int32_t row, std::int32_t column) const {
  if (row < 0 || row >= rows_ || column < 0 || column >= columns_) raise_out_of_range();
  return size_of(row, columns_) + static_cast<std::size_t>(column);
}

std::int32_t MemoryGrid::Rows() const {
  return rows_;
}

void MemoryGrid::Rows(std::int32_t count) {
  cells_.resize(size_of(count, columns_));
  rows_ = count;
}

std::string MemoryGrid::TextMatrix(std::int32_t row, std::int32_t column) const {
  return cells_[at(row, column)];
}

void MemoryGrid::TextMatrix(std::int32_t row, std::int32_t column, std::string_view text) {
  cells_[at(row, column)] = text;
}

void MemoryGrid::Cell(std::int32_t setting, std::int32_t row, std::int32_t column,
                      std::int32_t row2, std::int32_t column2, const Value& value) {
  at(row, column);
  at(row2, column2);
  marks_.push_back({setting, row, column, row2, column2, value});
}

}  // namespace ombrix
