#include <algorithm>
#include <functional>

#include "runner/stage.h"

namespace ombrix::scenarios {

namespace {

/// A literal of the database's language.
std::string literal(const std::string& word) {
  if (word == "Null") return word;
  const Value value = value_of(word);
  const auto* day = std::get_if<Date>(&value.content());
  return quoted(day != nullptr ? day->stored_text() : unquoted(word));
}

/// "a, b" of what `part` makes of each.
template <class Items, class Part = std::identity>
std::string listed(const Items& items, Part part = {}, const std::string& separator = ", ") {
  std::string text;
  for (const auto& item : items) text += (text.empty() ? "" : separator) + part(item);
  return text;
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

/// "TABLE words where conditions" in its parts; without words, "where" may be left out.
struct Listing {
  explicit Listing(const std::string& text, bool has_words = true) {
    const auto all = words_of(text);
    if (all.empty() || all[0] == "where") throw Finding{"a table is expected: " + text};
    table = all[0];
    const auto first = all.begin() + 1;
    const auto end = has_words ? std::find(first, all.end(), "where") : first;
    words.assign(first, end);
    if (has_words && words.empty()) throw Finding{"which columns of " + table + "?"};
    for (auto word = end; word != all.end(); ++word) {
      if (*word != "where") where += (where.empty() ? " Where " : " And ") + condition(*word);
    }
  }

  std::string table, where;
  std::vector<std::string> words;

 private:
  /// "a='x'", "b is Null"; "a<>x" is the contrary.
  static std::string condition(const std::string& word) {
    const auto unequal = word.find("<>");
    const bool equal = unequal == std::string::npos;
    std::pair<std::string, std::string> parts = assignment(word);
    if (!equal) parts = {word.substr(0, unequal), word.substr(unequal + 2)};
    const auto& [column, value] = parts;
    if (value == "Null") return column + (equal ? " Is Null" : " Is Not Null");
    return column + (equal ? "=" : "<>") + literal(value);
  }
};

/// "column=text" of each.
Row as_words(const Cells& cells) {
  Row words;
  for (const auto& [column, text] : cells) {
    words.push_back(std::to_string(column) + "=" + as_word(text));
  }
  return words;
}

}  // namespace

const std::map<std::string, Stage::Look>& Stage::looks() {
  const auto watched = [](const Look& look) {
    return [look](Stage& stage, const Step& step, const std::string& rest, const Given& given) {
      if (stage.play_.watches) return look(stage, step, rest, given);
      ++stage.play_.skipped;
      ++stage.expectations_;  // of the text, if not of this face
    };
  };
  static const std::map<std::string, Look> kLooks{
      {"add", &Stage::add_rows},
      {"see", &Stage::see},
      {"count", &Stage::count},
      {"cells", &Stage::see_cells},
      {"row", &Stage::see_cells},
      {"size",
       [](auto& stage, auto& step, auto& rest, auto&) {
         stage.expect_table(step, rest, {{shown(stage.actor().grid.get("Rows"))}});
       }},
      {"marks", [](auto& stage, auto& step, auto&,
                   auto& given) { stage.expect_table(step, given, stage.marks()); }},
      {"left",
       [](auto& stage, auto& step, auto& rest, auto&) {
         Row seen;
         for (const Value& value : stage.left_) seen.push_back(shown(value));
         stage.expect_table(step, rest, {seen});
       }},
      {"said",
       [](auto& stage, auto& step, auto& rest, auto&) {
         stage.expect_table(step, rest, std::exchange(stage.boxes_.shown, {}));
       }},
      {"told", watched([](auto& stage, auto& step, auto& rest, auto&) {
         const auto [component, words] = first_word(rest);
         const Row& told = stage.stand_ins_.at(component)->told;
         stage.expect(step, {words_of(stage.expanded(words))}, {told}, words,
                      listed(told, std::identity(), " "));
       })},
      {"statements", watched([](auto& stage, auto& step, auto&, auto& given) {
         stage.expect_lines(step, given, stage.watch_.statements());
       })},
      {"calls", watched([](auto& stage, auto& step, auto&, auto& given) {
         stage.expect_lines(step, given, stage.watch_.calls());
       })}};
  return kLooks;
}

void Stage::see(const Step& step, const std::string& rest, const Given& given) {
  const auto [word, behind] = first_word(rest);
  if (!assignment(word).first.empty()) return see_properties(step, rest);
  const std::string* view = room_.meaning("view", word);
  const Listing listing(expanded(view != nullptr ? *view + " " + behind : rest));
  expect_table(
      step, given,
      watch_.rows("Select " + listed(listing.words) + " From " + listing.table + listing.where,
                  listing.words));
}

void Stage::count(const Step& step, const std::string& rest, const Given& given) {
  const Listing listing(expanded(rest), false);
  expect_table(step, given,
               watch_.rows("Select Count(*) As V From " + listing.table + listing.where, {"V"}));
}

void Stage::see_properties(const Step& step, const std::string& rest) {
  for (const std::string& word : words_of(rest)) {
    const auto [member, expected] = required_assignment(word);
    const std::string seen = shown(actor().object.get(member));
    expect_text(step, expected, as_word(seen), member + "=");
  }
}

/// "cells 1 3=text": these cells are so; "row 1 : 3=text": these, and all others are empty.
void Stage::see_cells(const Step& step, const std::string& rest, const Given& given) {
  const auto [row, behind] = first_word(rest);
  const std::string told = given ? *given : behind;
  const Cells wanted = room_.cells_of(told == "none" ? "" : expanded(told));
  std::int32_t rows = 0, columns = 0;
  check(ombrix_grid_size(actor().grid.handle(), &rows, &columns));
  Cells seen;
  for (std::int32_t column = 0; column < columns; ++column) {
    const auto text = actor().grid.get("TextMatrix", {number_of(row), column}).to_text();
    if (given ? !text.empty() : wanted.contains(column)) seen[column] = text;
  }
  const std::string to = seen.empty() ? "none" : listed(as_words(seen), std::identity(), " ");
  expect(step, {as_words(wanted)}, {as_words(seen)}, told, to);
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

Table Stage::written(const Step& step, const Given& given) const {
  Table table;
  if (given) {
    if (*given == "none") return table;
    for (const std::string& row : split(expanded(*given), ", ")) table.push_back(words_of(row));
    return table;
  }
  const auto& block = step.statement.block;
  if (!step.owns_block || block.empty()) throw Finding{"expects nothing: " + step.text};
  if (block.size() == 1 && block[0].text == "none") return table;
  for (const Line& line : block) table.push_back(split(expanded(line.text), "|"));
  return table;
}

void Stage::expect_table(const Step& step, const Given& given, const Table& seen) {
  Table wanted = written(step, given);
  for (Row& row : wanted) std::transform(row.begin(), row.end(), row.begin(), unquoted);
  expect(step, wanted, seen, given, inline_text(seen));
}

void Stage::expect_lines(const Step& step, const Given& only, const Table& seen) {
  if (!only) return expect_table(step, only, seen);
  const std::string to = seen.empty() ? "" : seen[0][0];
  expect(step, {{unquoted(expanded(*only))}}, seen, only, to);
}

void Stage::expect_text(const Step& step, const std::string& expected, const std::string& seen,
                        const std::string& context) {
  const std::string wanted = expanded(expected);
  const bool same = unquoted(wanted) == unquoted(seen) ||
                    (seen != "Null" && seen != "none" && fits(wanted, seen));
  expect(step, {{context + (same ? seen : wanted)}}, {{context + seen}}, context + expected,
         context + seen);
}

void Stage::expect(const Step& step, const Table& wanted, const Table& seen, const Given& from,
                   const std::string& to) {
  ++expectations_;
  if (matches(wanted, seen)) return;
  if (!play_.rewrites) throw Finding{step.text + "\n" + side_by_side(wanted, seen)};
  Edit edit{step.line().number, step.row != nullptr ? step.row->last : step.statement.last()};
  if (!from) {
    edit.first = step.statement.block.front().number;
    for (const std::string& line : block_text(seen)) {
      edit.lines.push_back(replaced(line, "$", "$$"));
    }
  } else {
    edit.from = *from;
    edit.to = replaced(to, "$", "$$");
    // The step tells which of like expectations on a line is meant.
    if (step.row == nullptr && step.text.ends_with(edit.from)) {
      const auto before = step.text.substr(0, step.text.size() - edit.from.size());
      edit.to = before + (from->empty() ? " " : "") + edit.to;
      edit.from = step.text;
    }
  }
  play_.edits.push_back(std::move(edit));
}

void Stage::add_rows(const Step& step, const std::string& table, const Given& given) {
  const Listing listing(table);
  const auto values = [](const Row& row) { return "(" + listed(row, literal) + ")"; };
  execute("Insert Into " + listing.table + " (" + listed(listing.words) + ") Values " +
          listed(written(step, given), values));
}

void Stage::change_rows(const std::string& rest) {
  const Listing listing(rest);
  const auto set = [](const std::string& word) {
    const auto [column, value] = required_assignment(word);
    return column + "=" + literal(value);
  };
  execute("Update " + listing.table + " Set " + listed(listing.words, set) + listing.where);
}

void Stage::delete_rows(const std::string& rest) {
  const Listing listing(rest, false);
  execute("Delete From " + listing.table + listing.where);
}

}  // namespace ombrix::scenarios
