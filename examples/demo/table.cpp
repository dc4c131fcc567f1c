#include "table.h"

#include <algorithm>

namespace demo {

namespace {

bool begins_character(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

/// In characters: the texts are UTF-8.
std::size_t width_of(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins_character));
}

std::string cut(const std::string& text, std::size_t widest) {
  if (width_of(text) <= widest) return text;
  std::size_t end = 0;
  for (std::size_t characters = 0; end < text.size(); ++end) {
    if (begins_character(text[end]) && ++characters > widest - 2) break;
  }
  return text.substr(0, end) + "..";
}

}  // namespace

std::vector<std::string> Table::headings() const {
  std::vector<std::string> headings;
  for (const Column& column : columns_) headings.push_back(column.heading);
  return headings;
}

void Table::print(std::ostream& out) const {
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    std::size_t width = width_of(columns_[i].heading);
    for (const auto& row : rows_)
      width = std::max(width, width_of(cut(row[i], columns_[i].widest)));
    widths.push_back(width);
  }
  const auto print_row = [&](const std::vector<std::string>& row) {
    std::string line = " ";
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string text = cut(row[i], columns_[i].widest);
      const std::string blanks(widths[i] - width_of(text), ' ');
      line += columns_[i].align == Align::left ? " " + text + blanks : " " + blanks + text;
      line += ' ';
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  };
  print_row(headings());
  out << "  ";
  for (std::size_t i = 0; i < widths.size(); ++i) {
    out << std::string(widths[i], '-') << (i + 1 < widths.size() ? "  " : "\n");
  }
  for (const auto& row : rows_) print_row(row);
  out << '\n';
}

}  // namespace demo
