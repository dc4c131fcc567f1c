#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ombrix::scenarios {

/// What is wrong with a scenario file, and where; no verdict on the library.
struct Mistake {
  int line;
  std::string what;
};

struct Line {
  int number = 0;
  std::string text;  ///< without its indentation and its comment
};

/// A line of a scenario with the deeper ones below it.
struct Statement {
  Line head;
  std::vector<Line> block;
};

struct Scenario {
  Line name;
  std::vector<Statement> body;
};

/// A file: what stands before the first scenario, and the scenarios. A name stands at the margin,
/// its statements 2 blanks in, the block of a statement deeper still. A deeper line that begins
/// with ";" or ":" goes on with the statement itself, as do those between. "# " begins a comment.
struct Text {
  std::string path;
  std::vector<std::string> lines;  ///< as they stand
  std::vector<Statement> head;
  std::vector<Scenario> scenarios;
};

Text read_text(const std::string& path);

/// Parts of a text; a separator between quotes separates nothing. A quote opens at the beginning of
/// a word, or behind one of "=(,/"; inside, two quotes stand for one.
std::vector<std::string> split(std::string_view text, std::string_view separator, int line);
/// Parts between blanks, quotes kept.
std::vector<std::string> words_of(std::string_view text, int line);

/// A line of a file in pieces that keep its limit, to be read back as one.
std::vector<std::string> wrapped(const std::string& line);

std::string trimmed(std::string_view text);
bool is_quoted(std::string_view text);
/// What stands between the quotes, if there are any.
std::string unquoted(std::string_view text);
/// As a word that reads back as this text: quoted where it must be.
std::string as_word(const std::string& text);
/// The same for a cell of a table, which may hold blanks.
std::string as_cell(const std::string& text);

/// "Column=value" in its parts; the second stays quoted. Without "=", the first is empty.
std::pair<std::string, std::string> assignment(std::string_view word);

}  // namespace ombrix::scenarios
