#include "runner/table.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "ombrix/failure.h"

#include "runner/text.h"

namespace ombrix::scenarios {

namespace {

constexpr std::string_view kMidnight = " 00:00:00";

bool is_day(std::string_view text) {
  if (text.size() != 10) return false;
  for (std::size_t place = 0; place < text.size(); ++place) {
    const bool dash = place == 4 || place == 7;
    if (dash ? text[place] != '-' : text[place] < '0' || text[place] > '9') return false;
  }
  return true;
}

std::string today() {
  return Date::now().midnight().short_text();
}

/// A number that is written as the suite itself writes it; "007" and "1.0" are texts.
bool is_number(const std::string& word, double& number) {
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  return error == std::errc() && end == word.data() + word.size() &&
         Value(number).to_text() == word;
}

const std::string& cell_of(const Table& table, std::size_t row, std::size_t column) {
  static const std::string kNothing;
  return row < table.size() && column < table[row].size() ? table[row][column] : kNothing;
}

std::vector<std::size_t> widths_of(const Table& table, std::size_t columns) {
  std::vector<std::size_t> widths(columns);
  for (const Row& row : table) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], row[column].size() + 4);
    }
  }
  return widths;
}

}  // namespace

std::string shown(const Value& value) {
  if (value.is_empty()) return "none";
  if (value.is_null()) return "Null";
  if (value.is_object()) return value.to_object() ? "object" : "nothing";
  std::string text = value.to_text();
  const bool at_midnight = text.size() == 19 && text.ends_with(kMidnight);
  const std::string day = at_midnight ? text.substr(0, 10) : text;
  if (!is_day(day)) return text;
  return day == today() ? "today" : day;
}

Value value_of(const std::string& word) {
  if (is_quoted(word)) return unquoted(word);
  if (word == "Null") return Null();
  if (word == "none") return Empty();
  if (word == "True" || word == "False") return word == "True";
  if (word == "today") return Date::parse(today());
  if (is_day(word)) return Date::parse(word);
  double number = 0;
  if (is_number(word, number)) return number;
  return word;
}

bool matches(const std::string& expected, const std::string& seen) {
  if (expected == "*") return seen != "Null" && seen != "none";
  return expected == seen;
}

bool matches(const Table& expected, const Table& seen) {
  return std::equal(expected.begin(), expected.end(), seen.begin(), seen.end(),
                    [](const Row& left, const Row& right) {
                      return std::equal(
                          left.begin(), left.end(), right.begin(), right.end(),
                          [](const auto& one, const auto& other) { return matches(one, other); });
                    });
}

std::string side_by_side(const Table& expected, const Table& seen) {
  std::size_t columns = 0;
  for (const Table* table : {&expected, &seen}) {
    for (const Row& row : *table) columns = std::max(columns, row.size());
  }
  std::ostringstream text;
  for (std::size_t row = 0; row < std::max(expected.size(), seen.size()); ++row) {
    for (const Table* table : {&expected, &seen}) {
      const auto widths = widths_of(*table, columns);
      text << (table == &expected ? "    expected " : " || seen ");
      for (std::size_t column = 0; column < columns; ++column) {
        std::string cell = cell_of(*table, row, column);
        const bool same = matches(cell_of(expected, row, column), cell_of(seen, row, column)) &&
                          row < expected.size() && row < seen.size();
        cell = same ? "  " + cell : "> " + cell + " <";
        cell.resize(std::max(cell.size(), widths[column] + 1), ' ');
        text << cell;
      }
    }
    text << '\n';
  }
  return text.str();
}

}  // namespace ombrix::scenarios
