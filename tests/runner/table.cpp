#include "runner/table.h"

#include <algorithm>
#include <charconv>

#include "runner/text.h"

namespace ombrix::scenarios {

namespace {

bool is_day(std::string_view text) {
  return text.size() == 10 && text[4] == '-' && text[7] == '-' &&
         std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }) == 8;
}

std::string today() {
  return Date::now().short_text();
}

/// A number that is written as the suite itself writes it; "007" and "1.0" are texts.
bool is_number(const std::string& word, double& number) {
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  return error == std::errc() && end == word.data() + word.size() &&
         Value(number).to_text() == word;
}

bool matches(const std::string& expected, const std::string& seen) {
  return expected == "*" ? seen != "Null" && seen != "none" : expected == seen;
}

bool is_any(const std::string& cell) {
  return cell == "...";
}

bool is_any(const Row& row) {
  return row.size() == 1 && is_any(row[0]);
}

bool matches(const Row& expected, const Row& seen);

template <class Parts>
bool match(const Parts& expected, std::size_t at, const Parts& seen, std::size_t place) {
  if (at == expected.size()) return place == seen.size();
  const bool here = place < seen.size();
  if (is_any(expected[at])) {
    return match(expected, at + 1, seen, place) || (here && match(expected, at, seen, place + 1));
  }
  return here && matches(expected[at], seen[place]) && match(expected, at + 1, seen, place + 1);
}

bool matches(const Row& expected, const Row& seen) {
  return match(expected, 0, seen, 0);
}

/// The cells of `table`, those between "> <" that are not as in `other`, up to its size too.
Table marked(const Table& table, const Table& other) {
  Table result(std::max(table.size(), other.size()));
  for (std::size_t row = 0; row < result.size(); ++row) {
    const Row mine = row < table.size() ? table[row] : Row();
    const Row its = row < other.size() ? other[row] : Row();
    for (std::size_t cell = 0; cell < std::max(mine.size(), its.size()); ++cell) {
      const bool both = cell < mine.size() && cell < its.size();
      const bool same = both && (matches(mine[cell], its[cell]) || matches(its[cell], mine[cell]));
      const std::string text = cell < mine.size() ? mine[cell] : "";
      result[row].push_back(same ? "  " + text + "  " : "> " + text + " <");
    }
  }
  return result;
}

std::vector<std::string> aligned(const Table& table, std::string_view separator) {
  std::vector<std::size_t> widths;
  for (const Row& row : table) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t cell = 0; cell < row.size(); ++cell) {
      widths[cell] = std::max(widths[cell], row[cell].size());
    }
  }
  std::vector<std::string> lines;
  for (const Row& row : table) {
    std::string& line = lines.emplace_back();
    for (std::size_t cell = 0; cell < row.size(); ++cell) {
      if (cell > 0) line += separator;
      line += row[cell] + std::string(widths[cell] - row[cell].size(), ' ');
    }
  }
  return lines;
}

/// Many words are easier to compare below each other.
Table upright(const Table& table) {
  Table result;
  for (const Row& row : table) {
    for (const std::string& cell : row) result.push_back({cell});
  }
  return result;
}

}  // namespace

std::string shown(const Value& value) {
  if (value.is_empty()) return "none";
  if (value.is_null()) return "Null";
  if (value.is_object()) return value.to_object() ? "object" : "nothing";
  std::string text = value.to_text();
  const bool at_midnight = text.size() == 19 && text.ends_with(" 00:00:00");
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

bool matches(const Table& expected, const Table& seen) {
  return match(expected, 0, seen, 0);
}

std::string side_by_side(const Table& expected, const Table& seen) {
  if (expected.size() == 1 && seen.size() == 1 && seen[0].size() > 8) {
    return side_by_side(upright(expected), upright(seen));
  }
  const auto left = aligned(marked(expected, seen), " ");
  const auto right = aligned(marked(seen, expected), " ");
  std::string text;
  for (std::size_t row = 0; row < left.size(); ++row) {
    text += "    expected " + left[row] + " || seen " + right[row] + '\n';
  }
  return text;
}

std::string inline_text(const Table& table) {
  if (table.empty()) return "none";
  std::string text;
  for (const Row& row : table) {
    if (&row != &table.front()) text += ", ";
    for (const std::string& cell : row) {
      text += (&cell == &row.front() ? "" : " ") + as_word(cell);
    }
  }
  return text;
}

std::vector<std::string> block_text(const Table& table) {
  Table cells = table;
  for (Row& row : cells) {
    for (std::string& cell : row) cell = as_cell(cell);
  }
  std::vector<std::string> lines;
  for (const std::string& line : aligned(cells, " | ")) {
    lines.push_back(std::string(kRowIndent, ' ') + trimmed(line));
  }
  if (lines.empty()) lines.push_back(std::string(kRowIndent, ' ') + "none");
  return lines;
}

}  // namespace ombrix::scenarios
