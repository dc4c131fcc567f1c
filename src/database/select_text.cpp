#include "database/select_text.h"

#include <algorithm>
#include <array>

#include "base/names.h"

namespace ombrix::database {

namespace {

struct Word {
  std::string_view text;
  std::size_t place;
};

bool in_word(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '.' || c == '*' || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

/// The words and commas outside quotes, and each parenthesis; quoted texts are words of their own.
std::vector<Word> words_of(std::string_view text) {
  std::vector<Word> words;
  for (std::size_t place = 0; place < text.size();) {
    const char c = text[place];
    std::size_t end = place + 1;
    if (c == '\'' || c == '"') {
      end = std::min(text.find(c, end), text.size() - 1) + 1;
    } else if (in_word(c)) {
      while (end < text.size() && in_word(text[end])) ++end;
    }
    if (c != ' ' && c != '\t' && c != '\n' && c != '\r') {
      words.push_back({text.substr(place, end - place), place});
    }
    place = end;
  }
  return words;
}

/// A column under its own name, with or without its table's.
bool is_column(std::string_view word) {
  if (const auto dot = word.find('.'); dot != std::string_view::npos) {
    return is_plain_name(word.substr(0, dot)) && is_plain_name(word.substr(dot + 1));
  }
  return word.starts_with('"') || is_plain_name(word);
}

bool beyond_rows(const Word& word) {
  static constexpr std::array<std::string_view, 11> kWords = {
      "group", "having", "union",  "intersect", "except", "distinct",
      "limit", "offset", "window", "values",    ";"};
  return std::any_of(kWords.begin(), kWords.end(),
                     [&](std::string_view other) { return same_name(word.text, other); });
}

class Reader {
 public:
  explicit Reader(std::string_view text) : words_(words_of(text)) { result_.text = text; }

  std::optional<SelectText> read() {
    if (words_.empty() || !is(0, "select")) return std::nullopt;
    if (std::any_of(words_.begin(), words_.end(), beyond_rows)) return std::nullopt;
    const std::size_t from = find("from", 1);
    if (from == words_.size()) return std::nullopt;
    for (std::size_t word = 1; word < from; ++word) {
      if (words_[word].text == "(") return std::nullopt;
    }
    result_.from = words_[from].place;
    if (!read_tables(from + 1)) return std::nullopt;
    read_list(from);
    read_order(from);
    return std::move(result_);
  }

 private:
  bool is(std::size_t word, std::string_view text) const {
    return word < words_.size() && same_name(words_[word].text, text);
  }

  std::size_t find(std::string_view text, std::size_t word) const {
    while (word < words_.size() && !is(word, text)) ++word;
    return word;
  }

  bool read_tables(std::size_t word) {
    if (word >= words_.size() || !is_plain_name(words_[word].text)) return false;
    result_.table = words_[word++].text;
    result_.alias = result_.table;
    if (is(word, "as")) ++word;
    const bool ends = word >= words_.size() || is(word, "where") || is(word, "order") ||
                      is(word, ",") || is(word, "for");
    if (!ends) {
      if (!is_plain_name(words_[word].text)) return false;
      result_.alias = words_[word++].text;
    }
    result_.joined = is(word, ",");
    // Any other word here begins a join in a form that the library does not use.
    return word >= words_.size() || result_.joined || is(word, "where") || is(word, "order");
  }

  void read_list(std::size_t from) {
    for (std::size_t word = 1; word < from; word += 2) {
      const bool alone = word + 1 == from || is(word + 1, ",");
      const bool all = is(word, "*") || is(word, result_.alias + ".*");
      if (!alone || !(all || is_column(words_[word].text))) {
        result_.computed = true;
        return;
      }
      if (all) result_.all_columns = true;
    }
  }

  void read_order(std::size_t from) {
    const std::size_t order = find("order", from);
    result_.ordered = is(order + 1, "by");
    result_.descending = result_.ordered && same_name(words_.back().text, "desc");
  }

  std::vector<Word> words_;
  SelectText result_;
};

std::string listed(const std::vector<std::string>& items, std::string_view ending) {
  std::string text;
  for (const std::string& item : items) {
    if (!text.empty()) text += ", ";
    text.append(item).append(ending);
  }
  return text;
}

}  // namespace

void SelectText::select_also(const std::vector<std::string>& columns) {
  text.insert(from, ", " + listed(columns, "") + " ");
}

void SelectText::order_also(const std::vector<std::string>& terms) {
  text.append(ordered ? ", " : " Order By ").append(listed(terms, descending ? " Desc" : ""));
}

std::optional<SelectText> analyse_select(std::string_view text) {
  return Reader(text).read();
}

}  // namespace ombrix::database
