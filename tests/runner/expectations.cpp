#include <algorithm>

#include "runner/stage.h"

namespace ombrix::scenarios {

namespace {

/// A literal of the database's language.
std::string literal(const std::string& word) {
  if (word == "Null") return "Null";
  const Value value = value_of(word);
  std::string text = is_quoted(word) ? unquoted(word) : word;
  if (const auto* day = std::get_if<Date>(&value.held())) text = day->stored_text();
  std::string quoted = "'";
  for (const char each : text) quoted += each == '\'' ? std::string("''") : std::string(1, each);
  return quoted + "'";
}

Table inline_table(const std::string& text, int line) {
  Table table;
  if (text == "none") return table;
  for (const std::string& row : split(text, ", ", line)) {
    Row& cells = table.emplace_back();
    for (const std::string& word : words_of(row, line)) cells.push_back(unquoted(word));
  }
  return table;
}

Table block_table(const std::vector<Line>& block) {
  Table table;
  if (block.size() == 1 && block[0].text == "none") return table;
  for (const Line& line : block) {
    Row& cells = table.emplace_back();
    for (const std::string& cell : split(line.text, "|", line.number)) {
      cells.push_back(unquoted(cell));
    }
  }
  return table;
}

std::string inline_text(const Table& table) {
  std::string text;
  for (const Row& row : table) {
    if (!text.empty()) text += ", ";
    for (std::size_t cell = 0; cell < row.size(); ++cell) {
      text += (cell == 0 ? "" : " ") + as_word(row[cell]);
    }
  }
  return table.empty() ? "none" : text;
}

std::vector<std::string> block_text(const Table& table) {
  constexpr std::size_t kIndent = 8;
  std::vector<std::size_t> widths;
  for (const Row& row : table) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t cell = 0; cell < row.size(); ++cell) {
      widths[cell] = std::max(widths[cell], as_cell(row[cell]).size());
    }
  }
  std::vector<std::string> lines;
  for (const Row& row : table) {
    std::string line(kIndent, ' ');
    for (std::size_t cell = 0; cell < row.size(); ++cell) {
      std::string text = as_cell(row[cell]);
      if (cell + 1 < row.size()) text.resize(widths[cell], ' ');
      line += (cell == 0 ? "" : " | ") + text;
    }
    lines.push_back(line);
  }
  return lines;
}

/// "... : expected" in its two parts; the second only where there is one.
std::optional<std::string> expected_part(std::string& rest, int line) {
  if (rest.starts_with(": ")) rest = " " + rest;
  const auto parts = split(rest, " : ", line);
  if (parts.size() < 2) return std::nullopt;
  rest = parts[0];
  return parts[1];
}

/// Whether `seen` is what `expected` tells; "..." stands for any words or lines.
bool told_as(const std::vector<std::string>& expected, std::size_t at,
             const std::vector<std::string>& seen, std::size_t place) {
  if (at == expected.size()) return place == seen.size();
  if (expected[at] == "...") {
    for (std::size_t next = place; next <= seen.size(); ++next) {
      if (told_as(expected, at + 1, seen, next)) return true;
    }
    return false;
  }
  return place < seen.size() && expected[at] == seen[place] &&
         told_as(expected, at + 1, seen, place + 1);
}

/// "*" stands for any text.
bool fits(std::string_view wanted, std::string_view seen) {
  const auto star = wanted.find('*');
  if (star == std::string_view::npos) return wanted == seen;
  if (!seen.starts_with(wanted.substr(0, star))) return false;
  for (auto next = star; next <= seen.size(); ++next) {
    if (fits(wanted.substr(star + 1), seen.substr(next))) return true;
  }
  return false;
}

Table as_column(const std::vector<std::string>& words) {
  Table table;
  for (const std::string& word : words) table.push_back({word});
  return table;
}

}  // namespace

bool Stage::expects(const Step& step, const std::string& word, const std::string& rest) {
  std::string text = rest;
  const auto expected = expected_part(text, step.line());
  text = expanded(text);
  if (word == "see") {
    see(step, rest);
  } else if (word == "count") {
    const auto words = words_of(text, step.line());
    if (words.empty()) throw Mistake{step.line(), "of which table?"};
    const std::string where = condition(words, 1, step.line());
    expect_table(step, expected,
                 watch_.rows("Select Count(*) As V From " + words[0] + where, {"V"}));
  } else if (word == "cells" || word == "row") {
    see_cells(step, rest);
  } else if (word == "size") {
    expect_text(step, rest, shown(actor().grid.get("Rows")), "size ");
  } else if (word == "marks") {
    expect_table(step, expected, marks());
  } else if (word == "left") {
    Table seen(1);
    for (const Value& value : left_) seen[0].push_back(shown(value));
    expect_table(step, rest, seen);
  } else if (word == "said") {
    const Table seen(boxes_.shown.begin() + static_cast<std::ptrdiff_t>(boxes_seen_),
                     boxes_.shown.end());
    boxes_seen_ = boxes_.shown.size();
    expect_table(step, rest, seen);
  } else if (word == "told" || word == "statements" || word == "calls") {
    if (!play_.watches) {
      ++play_.skipped;
      ++expectations_;  // of the text, if not of this face
    } else if (word == "told") {
      told(step, rest);
    } else {
      expect_lines(step, expected, word == "calls" ? watch_.calls() : watch_.statements());
    }
  } else {
    return false;
  }
  return true;
}

void Stage::see(const Step& step, const std::string& rest) {
  const auto words = words_of(rest, step.line());
  if (words.empty()) throw Mistake{step.line(), "see what?"};
  if (!assignment(words[0]).first.empty()) return see_properties(step, rest);
  const auto view = room_.views.find(words[0]);
  if (view == room_.views.end()) return see_rows(step, rest);
  view->second.used = true;
  see_rows(step, view->second.meaning + rest.substr(words[0].size()));
}

void Stage::see_properties(const Step& step, const std::string& rest) {
  for (const std::string& word : words_of(rest, step.line())) {
    const auto [member, expected] = assignment(word);
    if (member.empty()) throw Mistake{step.line(), "Property=value is expected: " + word};
    const std::string seen = shown(actor().object.get(member));
    expect_text(step, expected, as_word(seen), member + "=");
  }
}

void Stage::see_rows(const Step& step, std::string listing) {
  const int line = step.line();
  const auto expected = expected_part(listing, line);
  const auto words = words_of(expanded(listing), line);
  const auto where = std::find(words.begin(), words.end(), "where");
  const std::vector<std::string> columns(words.begin() + 1, where);
  if (columns.empty()) throw Mistake{line, "which columns of " + words[0] + "?"};
  std::string select;
  for (const std::string& column : columns) {
    select += (select.empty() ? "Select " : ", ") + column;
  }
  const auto from = static_cast<std::size_t>(where - words.begin());
  select += " From " + words[0] + condition(words, from, line);
  expect_table(step, expected, watch_.rows(select, columns));
}

/// "cells 1 3=text": these cells are so; "row 1 : 3=text": these, and all others are empty.
void Stage::see_cells(const Step& step, const std::string& rest) {
  const int line = step.line();
  std::string text = rest;
  const auto expected = expected_part(text, line);
  const auto words = words_of(expected ? text : expanded(rest), line);
  if (words.empty() || words[0].find_first_not_of("0123456789") != std::string::npos) {
    throw Mistake{line, "which row? " + rest};
  }
  const std::string cells = expected ? *expected : trimmed(rest.substr(words[0].size()));
  const int row = std::stoi(words[0]);
  const Cells wanted = room_.cells_of(cells == "none" ? "" : expanded(cells), line);
  std::string seen;
  for (const Row& cell : grid_row(row, expected ? nullptr : &wanted)) {
    seen += (seen.empty() ? "" : " ") + cell[0] + "=" + as_word(cell[1]);
  }
  std::string told;
  for (const auto& [column, content] : wanted) {
    told += (told.empty() ? "" : " ") + std::to_string(column) + "=" + as_word(content);
  }
  ++expectations_;
  if (told == seen) return;
  differ(step, {0, 0, cells, seen.empty() ? "none" : seen},
         side_by_side(as_column(words_of(told, line)), as_column(words_of(seen, line))));
}

/// "column, text" of the cells that are wanted, or of those that are not empty.
Table Stage::grid_row(int row, const Cells* wanted) {
  std::int32_t rows = 0, columns = 0;
  check(ombrix_grid_size(actor().grid.handle(), &rows, &columns));
  Table cells;
  for (std::int32_t column = 0; column < columns; ++column) {
    const std::string text = actor().grid.get("TextMatrix", {row, column}).to_text();
    if (wanted != nullptr ? wanted->contains(column) : !text.empty()) {
      cells.push_back({std::to_string(column), text});
    }
  }
  return cells;
}

Table Stage::marks() {
  Table table;
  std::size_t count = 0;
  check(ombrix_grid_mark_count(actor().grid.handle(), &count));
  for (std::size_t place = 0; place < count; ++place) {
    ombrix_mark mark;
    ombrix_value value{};
    check(ombrix_grid_mark(actor().grid.handle(), place, &mark, &value));
    Row& row = table.emplace_back();
    for (const auto part : {mark.setting, mark.row, mark.column, mark.row2, mark.column2}) {
      row.push_back(std::to_string(part));
    }
    row.push_back(shown(taken(value)));
  }
  return table;
}

void Stage::told(const Step& step, const std::string& rest) {
  const int line = step.line();
  auto expected = words_of(expanded(rest), line);
  const std::string component = expected[0];
  expected.erase(expected.begin());
  const auto& seen = stand_ins_.at(component)->told;
  ++expectations_;
  if (told_as(expected, 0, seen, 0)) return;
  std::string all;
  for (const std::string& word : seen) all += " " + word;
  differ(step, {0, 0, rest, component + all}, side_by_side(as_column(expected), as_column(seen)));
}

void Stage::expect_lines(const Step& step, const std::optional<std::string>& only,
                         const std::vector<std::string>& seen) {
  if (!only && !step.owns_block) throw Mistake{step.line(), "its lines are expected below it"};
  std::vector<std::string> expected;
  if (only) {
    expected.push_back(unquoted(expanded(*only)));
  } else {
    for (const Line& line : step.statement->block)
      expected.push_back(unquoted(expanded(line.text)));
  }
  ++expectations_;
  if (told_as(expected, 0, seen, 0)) return;
  Edit edit{0, 0, only.value_or(""), only && !seen.empty() ? seen[0] : "", {}};
  if (only) return differ(step, edit, side_by_side(as_column(expected), as_column(seen)));
  for (const std::string& line : seen) {
    edit.lines.push_back(std::string(8, ' ') + (line == trimmed(line) ? line : as_cell(line)));
  }
  differ(step, edit, side_by_side(as_column(expected), as_column(seen)));
}

void Stage::expect_table(const Step& step, const std::optional<std::string>& expected,
                         const Table& seen) {
  const int line = step.line();
  if (!expected && !step.owns_block) throw Mistake{line, "expects nothing: " + step.text};
  ++expectations_;
  if (expected) {
    const Table table = inline_table(expanded(*expected), line);
    if (matches(table, seen)) return;
    return differ(step, {0, 0, *expected, inline_text(seen)}, side_by_side(table, seen));
  }
  const Table table = block_table(step.statement->block);
  if (step.statement->block.empty()) throw Mistake{line, "no table stands below it"};
  if (matches(table, seen)) return;
  Edit edit{0, 0, "", "", block_text(seen)};
  if (edit.lines.empty()) edit.lines.push_back("        none");
  differ(step, edit, side_by_side(table, seen));
}

void Stage::expect_text(const Step& step, const std::string& expected, const std::string& seen,
                        const std::string& context) {
  ++expectations_;
  const std::string wanted = expanded(expected);
  if (wanted == seen || unquoted(wanted) == unquoted(seen)) return;
  if (seen != "Null" && seen != "none" && fits(wanted, seen)) return;
  differ(step, {0, 0, context + expected, context + seen},
         side_by_side({{context + wanted}}, {{context + seen}}));
}

/// Raises, or notes what the file should say.
void Stage::differ(const Step& step, Edit edit, const std::string& what) {
  if (!play_.rewrites) throw Difference{step.line(), step.text + "\n" + what};
  const int head = step.statement->head.number;
  const auto& block = step.statement->block;
  edit.first = step.row != nullptr ? step.row->number : head;
  edit.last = step.row != nullptr || block.empty() ? edit.first : block.back().number;
  // The step tells which of like expectations on a line is meant.
  if (step.row == nullptr && step.text.ends_with(edit.from)) {
    edit.to = step.text.substr(0, step.text.size() - edit.from.size()) + edit.to;
    edit.from = step.text;
  }
  if (!edit.lines.empty()) edit.first = block.empty() ? head + 1 : block.front().number;
  play_.edits.push_back(std::move(edit));
}

/// " Where a='x' And b is Null", from words behind "where"; "a<>x" is the contrary.
std::string Stage::condition(const Words& words, std::size_t from, int line) {
  std::string text;
  for (std::size_t place = from; place < words.size(); ++place) {
    if (words[place] == "where") continue;
    const auto unequal = words[place].find("<>");
    const bool equal = unequal == std::string::npos;
    const auto parts =
        equal ? assignment(words[place])
              : std::pair{words[place].substr(0, unequal), words[place].substr(unequal + 2)};
    if (parts.first.empty()) throw Mistake{line, "Column=value is expected: " + words[place]};
    text += text.empty() ? " Where " : " And ";
    if (parts.second == "Null") {
      text += parts.first + (equal ? " Is Null" : " Is Not Null");
    } else {
      text += parts.first + (equal ? "=" : "<>") + literal(parts.second);
    }
  }
  return text;
}

void Stage::add_rows(const Step& step, const std::string& rest) {
  std::string head = rest;
  const auto given = expected_part(head, step.line());
  if (!given && !step.owns_block) throw Mistake{step.line(), "which rows? " + rest};
  const auto words = words_of(head, step.line());
  std::string columns, rows;
  for (std::size_t place = 1; place < words.size(); ++place) {
    columns += (place == 1 ? "" : ", ") + words[place];
  }
  const auto texts = given ? split(*given, ", ", step.line()) : std::vector<std::string>();
  const auto& block = step.statement->block;
  for (std::size_t row = 0; row < (given ? texts.size() : block.size()); ++row) {
    rows += row == 0 ? "(" : ", (";
    const auto cells =
        given ? words_of(texts[row], step.line()) : split(block[row].text, "|", block[row].number);
    for (const std::string& cell : cells) {
      rows += (&cell == &cells.front() ? "" : ", ") + literal(cell);
    }
    rows += ")";
  }
  execute("Insert Into " + words.at(0) + " (" + columns + ") Values " + rows);
}

void Stage::change_rows(const std::string& rest, int line) {
  const auto words = words_of(rest, line);
  std::string set;
  std::size_t place = 1;
  for (; place < words.size() && words[place] != "where"; ++place) {
    const auto [column, value] = assignment(words[place]);
    if (column.empty()) throw Mistake{line, "Column=value is expected: " + words[place]};
    set += (set.empty() ? "" : ", ") + column + "=" + literal(value);
  }
  if (set.empty()) throw Mistake{line, "change TABLE Column=value is expected: " + rest};
  execute("Update " + words[0] + " Set " + set + condition(words, place, line));
}

void Stage::delete_rows(const std::string& rest, int line) {
  const auto words = words_of(rest, line);
  if (words.empty()) throw Mistake{line, "from which table?"};
  execute("Delete From " + words[0] + condition(words, 1, line));
}

}  // namespace ombrix::scenarios
