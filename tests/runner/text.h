#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ombrix::scenarios {

/// What is wrong with a scenario, or what was seen in place of what it expects. Who raises it
/// leaves the line to those who know it.
struct Finding {
  std::string what;
  int line = 0;
};

/// Lines of a file that are one: without indentation and comments.
struct Line {
  int number = 0;
  std::string text;
  int last = number;

  void append(std::string_view more, int at) {
    text.append(" ").append(more);
    last = at;
  }
};

/// A line of a scenario with the rows below it.
struct Statement {
  Line head;
  std::vector<Line> block;

  int last() const { return block.empty() ? head.last : block.back().last; }
  /// The rows as more of the line, for a statement that takes no table.
  Line joined() const;
};

struct Scenario {
  Line name;
  std::vector<Statement> body;
};

/// A file: what stands before the first scenario, and the scenarios. A name stands at the margin,
/// its statements 2 blanks in, rows 8 blanks in; a row's own continuation is deeper still. What is
/// less deep goes on with the statement, as does what begins with ";" or ":", and takes the lines
/// between with it. "# " begins a comment.
struct Text {
  std::string path;
  std::vector<std::string> lines;  ///< as they stand
  std::vector<Statement> head;
  std::vector<Scenario> scenarios;
};
constexpr std::size_t kRowIndent = 8;

Text read_text(const std::string& path);
std::string content_of(const std::string& path);
std::string without_comment(std::string_view text);

/// Parts of a text; a separator between quotes separates nothing. A quote opens at the beginning of
/// a word, or behind one of "=(,/"; inside, two quotes stand for one.
std::vector<std::string> split(std::string_view text, std::string_view separator);
/// Parts between blanks, quotes kept.
std::vector<std::string> words_of(std::string_view text);
/// The first word, and what follows it.
std::pair<std::string, std::string> first_word(const std::string& text);

/// A line of a file in pieces that keep its limit, to be read back as one.
std::vector<std::string> wrapped(const std::string& line);

std::string trimmed(std::string_view text);
std::string replaced(std::string text, std::string_view from, std::string_view to);
bool is_quoted(std::string_view text);
std::string quoted(const std::string& text);
/// What stands between the quotes, if there are any.
std::string unquoted(std::string_view text);
/// As a word that reads back as this text: quoted where it must be.
std::string as_word(const std::string& text);
/// The same for a cell of a table, which may hold blanks.
std::string as_cell(const std::string& text);
/// Digits alone.
int number_of(const std::string& word);

/// "Column=value" in its parts; the second stays quoted. Without "=", the first is empty.
std::pair<std::string, std::string> assignment(std::string_view word);
/// The same of a word that must be one.
std::pair<std::string, std::string> required_assignment(const std::string& word);

}  // namespace ombrix::scenarios
