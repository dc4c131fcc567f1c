#include "runner/text.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

#include "base/text.h"

namespace ombrix::scenarios {

namespace {

/// Goes through a text and knows what stands between quotes.
class Quotes {
 public:
  explicit Quotes(std::string_view text) : text_(text) {}

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
  bool open() const { return open_; }

 private:
  std::string_view text_;
  bool open_ = false, escaped_ = false;
};

/// Where a line stands tells what it is; `block_indent` is that of the rows at hand.
void place_line(Text& text, std::size_t indent, const std::string& content,
                std::size_t& block_indent) {
  const int number = static_cast<int>(text.lines.size());
  const bool in_head = text.scenarios.empty();
  auto& body = in_head ? text.head : text.scenarios.back().body;
  const std::size_t margin = in_head ? 0 : 2;
  if (indent == 0 && content.find(':') == content.size() - 1) {
    text.scenarios.push_back({{number, content.substr(0, content.size() - 1)}, {}});
  } else if (indent == margin) {
    body.push_back({{number, content}, {}});
  } else if (indent < margin || body.empty()) {
    throw Finding{"stands at no margin of a scenario or of a statement: " + content, number};
  } else if (in_head || indent < kRowIndent || content.starts_with("; ") ||
             content.starts_with(": ")) {
    body.back() = {body.back().joined(), {}};
    body.back().head.append(content, number);
  } else if (auto& block = body.back().block; block.empty() || indent <= block_indent) {
    if (block.empty()) block_indent = indent;
    block.push_back({number, content});
  } else {
    block.back().append(content, number);
  }
}

}  // namespace

Line Statement::joined() const {
  Line line = head;
  for (const Line& more : block) line.append(more.text, more.last);
  return line;
}

std::string content_of(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw Finding{path + " cannot be read"};
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

Text read_text(const std::string& path) {
  std::istringstream file(content_of(path));
  Text text{path, {}, {}, {}};
  std::size_t block_indent = 0;
  for (std::string line; std::getline(file, line);) {
    text.lines.push_back(line);
    const std::string content = without_comment(line);
    if (!content.empty()) place_line(text, line.find_first_not_of(' '), content, block_indent);
  }
  return text;
}

std::string without_comment(std::string_view text) {
  Quotes quotes(text);
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (quotes.hold(place) || text[place] != '#') continue;
    const bool begins = place == 0 || text[place - 1] == ' ';
    const bool ends = place + 1 == text.size() || text[place + 1] == ' ';
    if (begins && ends) return trimmed(text.substr(0, place));
  }
  return trimmed(text);
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

std::vector<std::string> split(std::string_view text, std::string_view separator) {
  std::vector<std::string> parts;
  Quotes quotes(text);
  std::size_t begin = 0;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (quotes.hold(place) || text.substr(place, separator.size()) != separator) continue;
    parts.push_back(trimmed(text.substr(begin, place - begin)));
    begin = place + separator.size();
  }
  if (quotes.open()) throw Finding{"a quote is not closed: " + std::string(text)};
  parts.push_back(trimmed(text.substr(std::min(begin, text.size()))));
  return parts;
}

std::vector<std::string> words_of(std::string_view text) {
  auto words = split(text, " ");
  std::erase(words, "");
  return words;
}

std::pair<std::string, std::string> first_word(const std::string& text) {
  const auto words = words_of(text);
  if (words.empty()) throw Finding{"a word is missing: " + text};
  return {words[0], trimmed(text.substr(words[0].size()))};
}

std::string trimmed(std::string_view text) {
  return std::string(trim(text));
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (auto place = text.find(from); place != std::string::npos;
       place = text.find(from, place + to.size())) {
    text.replace(place, from.size(), to);
  }
  return text;
}

bool is_quoted(std::string_view text) {
  return text.size() >= 2 && text.front() == '\'' && text.back() == '\'';
}

std::string quoted(const std::string& text) {
  return "'" + replaced(text, "'", "''") + "'";
}

std::string unquoted(std::string_view text) {
  if (!is_quoted(text)) return std::string(text);
  return replaced(std::string(text.substr(1, text.size() - 2)), "''", "'");
}

std::string as_word(const std::string& text) {
  const bool plain = !text.empty() && text.find_first_of(" ',;|#?$:/") == std::string::npos;
  return plain ? text : quoted(text);
}

std::string as_cell(const std::string& text) {
  Quotes quotes(text);
  for (std::size_t place = 0; place < text.size(); ++place) quotes.hold(place);
  const bool plain = !text.empty() && text.find_first_of("|?;") == std::string::npos &&
                     text.front() != '\'' && !quotes.open() && text == trimmed(text) &&
                     text.find(" #") == std::string::npos;
  return plain ? text : quoted(text);
}

int number_of(const std::string& word) {
  int number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error == std::errc() && end == word.data() + word.size() && number >= 0) return number;
  throw Finding{"is no number: " + word};
}

std::pair<std::string, std::string> assignment(std::string_view word) {
  const auto equals = word.find('=');
  if (equals == std::string_view::npos || word.front() == '\'') return {"", std::string(word)};
  return {std::string(word.substr(0, equals)), std::string(word.substr(equals + 1))};
}

std::pair<std::string, std::string> required_assignment(const std::string& word) {
  auto parts = assignment(word);
  if (parts.first.empty()) throw Finding{"Name=value is expected: " + word};
  return parts;
}

}  // namespace ombrix::scenarios
