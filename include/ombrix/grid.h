#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/object.h"

namespace ombrix {

/// The line grid between client and class: row 0 is the heading, lines start in row 1. A client
/// implements it on its own grid control, or uses `MemoryGrid`. Access outside the grid raises
/// failure 9 "Subscript out of range".
class Grid : public Object {
 public:
  virtual std::int32_t Rows() const = 0;
  virtual void Rows(std::int32_t count) = 0;

  virtual std::string TextMatrix(std::int32_t row, std::int32_t column) const = 0;
  virtual void TextMatrix(std::int32_t row, std::int32_t column, std::string_view text) = 0;

  /// The cell as a number: blanks around it, a sign, thousands separators, a decimal point and an
  /// exponent are read; any other text is 0.
  virtual double ValueMatrix(std::int32_t row, std::int32_t column) const;

  /// Sets an attribute of a range of cells: readers set 13, bold, and 7, the colour of the text.
  virtual void Cell(std::int32_t setting, std::int32_t row, std::int32_t column, std::int32_t row2,
                    std::int32_t column2, const Value& value) = 0;

  std::string_view class_name() const override { return "Grid"; }
  Value get(std::string_view member, std::span<Value> arguments) override;
  void let(std::string_view member, const Value& value, std::span<Value> arguments) override;
  void set(std::string_view member, const ObjectRef& object) override;
  Value call(std::string_view member, std::span<Value> arguments) override;
  std::vector<MemberInfo> members() const override;
};

/// A grid in memory.
class MemoryGrid final : public Grid {
 public:
  struct Mark {
    std::int32_t setting, row, column, row2, column2;
    Value value;
  };

  /// `rows` includes the heading row. Negative sizes raise "Subscript out of range".
  MemoryGrid(std::int32_t rows, std::int32_t columns);

  std::int32_t Rows() const override;
  /// Cells of rows that stay keep their texts; new ones are empty.
  void Rows(std::int32_t count) override;
  std::int32_t Cols() const { return columns_; }

  std::string TextMatrix(std::int32_t row, std::int32_t column) const override;
  void TextMatrix(std::int32_t row, std::int32_t column, std::string_view text) override;
  void Cell(std::int32_t setting, std::int32_t row, std::int32_t column, std::int32_t row2,
            std::int32_t column2, const Value& value) override;

  /// Every setting of `Cell`, in the order in which they were made.
  const std::vector<Mark>& marks() const { return marks_; }

 private:
  std::size_t at(std::int32_t row, std::int32_t column) const;

  std::int32_t rows_;
  std::int32_t columns_;
  std::vector<std::string> cells_;
  std::vector<Mark> marks_;
};

}  // namespace ombrix
