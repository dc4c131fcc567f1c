#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/cell.h"

namespace ombrix::database {

/// All rows of a result, row after row. Texts stand behind one another in one buffer: most cells of
/// a row are never looked at, and should cost next to nothing.
class Rows {
 public:
  explicit Rows(std::size_t columns = 0) : columns_(columns) {}

  void reserve(std::size_t rows) { cells_.reserve(rows * columns_); }

  std::size_t columns() const { return columns_; }
  std::size_t count() const { return columns_ == 0 ? 0 : cells_.size() / columns_; }

  void add(Null) { cells_.push_back({Stored::null, 0, {}}); }
  void add(std::int64_t integer) { cells_.push_back({Stored::integer, 0, {.integer = integer}}); }
  void add(double number) { cells_.push_back({Stored::number, 0, {.number = number}}); }
  void add(std::string_view text) {
    cells_.push_back(
        {Stored::text, static_cast<std::uint32_t>(text.size()), {.start = texts_.size()}});
    texts_ += text;
  }

  Cell cell(std::size_t row, std::size_t column) const {
    const Slot& slot = cells_[row * columns_ + column];
    switch (slot.stored) {
      case Stored::integer:
        return slot.integer;
      case Stored::number:
        return slot.number;
      case Stored::text:
        return std::string(texts_, slot.start, slot.size);
      case Stored::null:
        break;
    }
    return Null{};
  }

 private:
  enum class Stored : std::uint8_t { null, integer, number, text };
  struct Slot {
    Stored stored;
    std::uint32_t size;
    union {
      std::int64_t integer;
      double number;
      std::size_t start;
    };
  };

  std::size_t columns_;
  std::vector<Slot> cells_;
  std::string texts_;
};

}  // namespace ombrix::database
