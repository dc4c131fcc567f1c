#include "runner/text.h"

#include <algorithm>
#include <fstream>

namespace ombrix::scenarios {

namespace {

/// Goes through a text and knows what stands between quotes.
class Quotes {
 public:
  Quotes(std::string_view text, int line) : text_(text), line_(line) {}

  /// Whether the character at `place` is quoted, or is a quote itself. Called for each in turn.
  bool hold(std::size_t place) {
    if (text_[place] != '\'') return open_;
    if (open_) {
      const bool doubled = place + 1 < text_.size() && text_[place + 1] == '\'';
      if (escaped_ || doubled) {
        escaped_ = !escaped_;
      } else {
        open_ = false;
      }
      return true;
    }
    constexpr std::string_view kBefore = " =(,/|?";
    open_ = place == 0 || kBefore.find(text_[place - 1]) != std::string_view::npos;
    return open_;
  }
  void close() const {
    if (open_) throw Mistake{line_, "a quote is not closed: " + std::string(text_)};
  }

 private:
  std::string_view text_;
  int line_;
  bool open_ = false, escaped_ = false;
};

std::string without_comment(std::string_view text, int line) {
  Quotes quotes(text, line);
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (quotes.hold(place) || text[place] != '#') continue;
    const bool begins = place == 0 || text[place - 1] == ' ';
    const bool ends = place + 1 == text.size() || text[place + 1] == ' ';
    if (begins && ends) return trimmed(text.substr(0, place));
  }
  return trimmed(text);
}

std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char each : text) result += each == '\'' ? std::string("''") : std::string(1, each);
  return result + "'";
}

}  // namespace

std::string trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return "";
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

Text read_text(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw Mistake{0, "cannot be read"};
  Text text{path, {}, {}, {}};
  std::size_t block_indent = 0;
  for (std::string line; std::getline(file, line);) {
    text.lines.push_back(line);
    const int number = static_cast<int>(text.lines.size());
    const std::string content = without_comment(line, number);
    if (content.empty()) continue;
    const std::size_t indent = line.find_first_not_of(' ');
    const bool in_head = text.scenarios.empty();
    auto& body = in_head ? text.head : text.scenarios.back().body;
    if (indent == 0 && content.find(':') == content.size() - 1) {
      text.scenarios.push_back({{number, content.substr(0, content.size() - 1)}, {}});
    } else if (indent == (in_head ? 0 : 2)) {
      body.push_back({{number, content}, {}});
    } else if ((content.starts_with("; ") || content.starts_with(": ")) && !body.empty()) {
      Statement& statement = body.back();
      for (const Line& more : statement.block) statement.head.text += " " + more.text;
      statement.block.clear();
      statement.head.text += " " + content;
    } else if (indent > (in_head ? 0 : 2) && !body.empty()) {
      auto& block = body.back().block;
      if (block.empty()) block_indent = indent;
      if (indent > block_indent) {
        block.back().text += " " + content;
      } else {
        block.push_back({number, content});
      }
    } else {
      throw Mistake{number, "stands at no margin of a scenario or of a statement: " + content};
    }
  }
  return text;
}

std::vector<std::string> wrapped(const std::string& line) {
  constexpr std::size_t kLimit = 100;
  std::vector<std::string> lines;
  std::string rest = line;
  const std::string indent(line.find_first_not_of(' ') + 4, ' ');
  while (rest.size() > kLimit) {
    // Where single blanks stand: a blank more would be lost when the pieces are joined.
    auto place = kLimit;
    while (place > indent.size() &&
           (rest[place] != ' ' || rest[place - 1] == ' ' || rest[place + 1] == ' ')) {
      --place;
    }
    if (place <= indent.size()) break;
    lines.push_back(rest.substr(0, place));
    rest = indent + rest.substr(place + 1);
  }
  lines.push_back(rest);
  return lines;
}

std::vector<std::string> split(std::string_view text, std::string_view separator, int line) {
  std::vector<std::string> parts;
  Quotes quotes(text, line);
  std::size_t begin = 0;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (quotes.hold(place) || text.substr(place, separator.size()) != separator) continue;
    parts.push_back(trimmed(text.substr(begin, place - begin)));
    begin = place + separator.size();
  }
  quotes.close();
  parts.push_back(trimmed(text.substr(std::min(begin, text.size()))));
  return parts;
}

std::vector<std::string> words_of(std::string_view text, int line) {
  auto words = split(text, " ", line);
  std::erase(words, "");
  return words;
}

bool is_quoted(std::string_view text) {
  return text.size() >= 2 && text.front() == '\'' && text.back() == '\'';
}

std::string unquoted(std::string_view text) {
  if (!is_quoted(text)) return std::string(text);
  std::string result;
  for (std::size_t place = 1; place + 1 < text.size(); ++place) {
    if (text[place] == '\'') ++place;
    result += text[place];
  }
  return result;
}

std::string as_word(const std::string& text) {
  const bool plain = !text.empty() && text.find_first_of(" ',;|#?$:/") == std::string::npos;
  return plain ? text : quoted(text);
}

std::string as_cell(const std::string& text) {
  const bool plain = !text.empty() && text.find_first_of("'|?$;") == std::string::npos &&
                     text.front() != ' ' && text.back() != ' ' &&
                     text.find(" #") == std::string::npos;
  return plain ? text : quoted(text);
}

std::pair<std::string, std::string> assignment(std::string_view word) {
  const auto equals = word.find('=');
  if (equals == std::string_view::npos || word.front() == '\'') return {"", std::string(word)};
  return {std::string(word.substr(0, equals)), std::string(word.substr(equals + 1))};
}

}  // namespace ombrix::scenarios
