#include "runner/room.h"

#include <filesystem>

namespace ombrix::scenarios {

void Room::define(const Text& text, bool included) {
  for (const Statement& statement : text.head) {
    const auto [word, rest] = first_word(statement.head.text);
    if (word == "include") {
      define(read_text(std::filesystem::path(text.path).parent_path() / rest), true);
    } else if (word == "given") {
      given_.push_back({{statement.head.number, rest}, {}});
    } else {
      define(word, rest, statement.head.number, included);
    }
  }
}

void Room::define(const std::string& word, const std::string& rest, int line, bool included) {
  const auto words = words_of(rest);
  const auto colon = rest.find(": ");
  if (word == "document" && (words.size() == 2 || words.size() == 3)) {
    documents_.push_back({words[0], words[1], words.size() == 3 ? words[2] : ""});
  } else if (word == "with" && !documents_.empty()) {
    documents_.back().properties = rest;
  } else if (word == "line" && words.size() > 1) {
    defined_[{word, words[0]}] = {line, first_word(rest).second, included};
  } else if ((word == "verb" || word == "view") && colon != std::string::npos) {
    defined_[{word, rest.substr(0, colon)}] = {line, trimmed(rest.substr(colon + 2)), included};
  } else {
    throw Finding{"is no definition: " + word + " " + rest, line};
  }
}

const Document& Room::document(const std::string& name) const {
  for (const Document& document : documents_) {
    if (name.empty() || document.name == name) return document;
  }
  throw Finding{"is no document: " + name};
}

const std::string* Room::meaning(const std::string& kind, const std::string& name) const {
  const auto found = defined_.find({kind, name});
  if (found == defined_.end()) return nullptr;
  found->second.used = true;
  return &found->second.meaning;
}

Cells Room::cells_of(const std::string& text) const {
  Cells cells;
  for (const std::string& word : words_of(text)) {
    const auto [column, value] = assignment(word);
    if (!column.empty()) {
      cells[number_of(column)] = unquoted(value);
    } else if (const std::string* line = meaning("line", word)) {
      cells = cells_of(*line);
    } else {
      throw Finding{"is no line: " + word};
    }
  }
  return cells;
}

void Room::check_used() const {
  for (const auto& [key, definition] : defined_) {
    if (!definition.used) throw Finding{"nothing uses " + key.second, definition.line};
  }
}

}  // namespace ombrix::scenarios
