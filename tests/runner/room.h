#pragma once

#include <map>
#include <string>
#include <vector>

#include "runner/text.h"

namespace ombrix::scenarios {

/// Cells of a grid row, by column.
using Cells = std::map<int, std::string>;

/// An object that scenarios drive by its name: what they find set in it, and the property that
/// takes its grid.
struct Document {
  std::string name, class_name, grid;
  Line properties{};
};

/// A word of a file's own, and whether a scenario used it.
template <class T>
struct Defined {
  int line = 0;
  T meaning{};
  mutable bool used = false;
};
template <class T>
using Definitions = std::map<std::string, Defined<T>>;

/// What the head of a file defines, that of an included one too:
///
///     include FILE                         what another file's head defines
///     document NAME CLASS GRID-PROPERTY    the first one is at hand when a scenario begins
///     with Property=value ...              set in each new object of the last document
///     line NAME [LINE] 1=text 7=10         cells of a grid row, over those of another line
///     verb NAME: steps                     "$*" stands for what follows the verb
///     view NAME: TABLE columns [where ...] a listing by its name
///     given STEPS                          before each scenario
struct Room {
  std::vector<Document> documents;
  Definitions<Cells> lines;
  Definitions<std::string> verbs, views;
  std::vector<Statement> given;

  void define(const Text& text, bool included = false);
  /// Raises a mistake for a definition that nothing used.
  void check_used() const;
  /// Cells of "NAME 1=text ..." or of "1=text ...".
  Cells cells_of(const std::string& text, int line) const;
};

/// The statement's own line with its block behind it: for a statement that has no table.
Line joined(const Statement& statement);

}  // namespace ombrix::scenarios
