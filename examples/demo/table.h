#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace demo {

/// A table for a terminal: columns as wide as their texts, at most as wide as told.
class Table {
 public:
  enum class Align : bool { left, right };
  struct Column {
    std::string heading;
    Align align = Align::left;
    std::size_t widest = 40;  ///< characters; longer texts are cut
  };

  explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

  /// One text for each column.
  void add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
  void print(std::ostream& out) const;

 private:
  std::vector<std::string> headings() const;

  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace demo
