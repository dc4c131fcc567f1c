#include "runner/room.h"

#include <filesystem>

namespace ombrix::scenarios {

namespace {

/// "NAME: meaning" of a verb or a view.
void define_text(Definitions<std::string>& target, const std::string& text, int line,
                 bool included) {
  const auto colon = text.find(": ");
  if (colon == std::string::npos) throw Mistake{line, "NAME: meaning is expected: " + text};
  target[text.substr(0, colon)] = {line, trimmed(text.substr(colon + 2)), included};
}

template <class T>
void check_used_in(const Definitions<T>& definitions) {
  for (const auto& [name, definition] : definitions) {
    if (!definition.used) throw Mistake{definition.line, "nothing uses " + name};
  }
}

}  // namespace

Line joined(const Statement& statement) {
  Line line = statement.head;
  for (const Line& more : statement.block) line.text += " " + more.text;
  return line;
}

void Room::define(const Text& text, bool included) {
  for (const Statement& statement : text.head) {
    const auto [number, whole] = joined(statement);
    const auto blank = whole.find(' ');
    const std::string word = whole.substr(0, blank);
    const std::string rest = blank == std::string::npos ? "" : trimmed(whole.substr(blank));
    const auto words = words_of(rest, number);
    if (word == "include" && words.size() == 1) {
      define(read_text(std::filesystem::path(text.path).parent_path() / words[0]), true);
    } else if (word == "document" && (words.size() == 2 || words.size() == 3)) {
      documents.push_back({words[0], words[1], words.size() == 3 ? words[2] : "", {}});
    } else if (word == "with" && !documents.empty()) {
      documents.back().properties = {number, rest};
    } else if (word == "line" && words.size() > 1) {
      const std::string cells = trimmed(rest.substr(words[0].size()));
      lines[words[0]] = {number, cells_of(cells, number), included};
    } else if (word == "verb") {
      define_text(verbs, rest, number, included);
    } else if (word == "view") {
      define_text(views, rest, number, included);
    } else if (word == "given") {
      given.push_back({{number, rest}, {}});
    } else {
      throw Mistake{number, "is no definition: " + whole};
    }
  }
}

void Room::check_used() const {
  check_used_in(lines);
  check_used_in(verbs);
  check_used_in(views);
}

Cells Room::cells_of(const std::string& text, int line) const {
  Cells cells;
  for (const std::string& word : words_of(text, line)) {
    const auto [column, value] = assignment(word);
    if (column.empty()) {
      const auto found = lines.find(word);
      if (found == lines.end()) throw Mistake{line, "is no line: " + word};
      found->second.used = true;
      cells = found->second.meaning;
    } else if (column.find_first_not_of("0123456789") != std::string::npos) {
      throw Mistake{line, "is no column of a grid: " + word};
    } else {
      cells[std::stoi(column)] = unquoted(value);
    }
  }
  return cells;
}

}  // namespace ombrix::scenarios
