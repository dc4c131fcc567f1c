#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "runner/text.h"

namespace ombrix::scenarios {

/// Cells of a grid row, by column.
using Cells = std::map<int, std::string>;

/// An object that scenarios drive by its name: what they find set in it, and the property that
/// takes its grid.
struct Document {
  std::string name, class_name, grid;
  std::string properties{};
};

/// What the head of a file defines, that of an included one too:
///
///     include FILE                         what another file's head defines
///     document NAME CLASS GRID-PROPERTY    the first one is at hand when a scenario begins
///     with Property=value ...              set in each new object of the last document
///     line NAME [LINE] 1=text 7=10         cells of a grid row, over those of another line
///     verb NAME: steps                     "$*" stands for what follows the verb
///     view NAME: TABLE columns [where ...] a listing by its name
///     given STEPS                          before each scenario
class Room {
 public:
  explicit Room(const Text& text) { define(text, false); }

  const std::vector<Statement>& given() const { return given_; }
  /// The first one when it is not named.
  const Document& document(const std::string& name = "") const;
  bool has_documents() const { return !documents_.empty(); }
  /// What a "line", "verb" or "view" of that name stands for, which is used from now on; or null.
  const std::string* meaning(const std::string& kind, const std::string& name) const;
  /// Cells of "NAME 1=text ..." or of "1=text ...".
  Cells cells_of(const std::string& text) const;
  /// Raises a definition that nothing used.
  void check_used() const;

 private:
  struct Defined {
    int line;
    std::string meaning;
    mutable bool used;  ///< one that is included need not be
  };
  void define(const Text& text, bool included);
  void define(const std::string& word, const std::string& rest, int line, bool included);

  std::vector<Document> documents_;
  std::map<std::pair<std::string, std::string>, Defined> defined_;  ///< by kind and name
  std::vector<Statement> given_;
};

}  // namespace ombrix::scenarios
