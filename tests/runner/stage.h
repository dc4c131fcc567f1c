#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runner/client.h"
#include "runner/room.h"
#include "runner/stand_in.h"
#include "runner/table.h"
#include "runner/watch.h"
#include "support/books.h"

namespace ombrix::scenarios {

/// What was seen is not what was expected.
struct Difference {
  int line;
  std::string what;
};

/// Puts what was seen into a file: in one of the lines `first` to `last` the text `from` becomes
/// `to`, or these lines become `lines`.
struct Edit {
  int first, last;
  std::string from, to{};
  std::vector<std::string> lines{};
};

/// How a file is played.
struct Play {
  std::string database;
  std::string company;    ///< the rows that every scenario begins with, as statements
  bool watches = true;    ///< a face without a watcher skips the lines that need one
  bool rewrites = false;  ///< differences become edits
  std::vector<Edit> edits{};
  int skipped = 0;  ///< lines that a watcher would have checked
};

/// A step of a scenario, and where its expectation comes from.
struct Step {
  std::string text;
  const Statement* statement;
  bool owns_block;  ///< the statement's block is this step's table
  const Line* row;  ///< of the table that the step was made for; null outside "each"
  int line() const { return row != nullptr ? row->number : statement->head.number; }
};

/// One scenario at work: its books, its objects, what they said.
class Stage {
 public:
  Stage(const Room& room, Play& play);

  /// Raises `Difference` or `Mistake`.
  void perform(const Scenario& scenario);

 private:
  struct Actor {
    Document document;
    Remote object{}, grid{};
  };
  using Words = std::vector<std::string>;

  void set_up(const Scenario& scenario);
  void perform(const Statement& statement);
  void perform_each(const Statement& statement);
  void perform_steps(const std::string& text, const Statement& statement, const Line* row);
  void perform(const Step& step);
  bool prepares(const Step& step, const std::string& word, const std::string& rest);
  bool expects(const Step& step, const std::string& word, const std::string& rest);

  // What changes the stage.
  void add_rows(const Step& step, const std::string& rest);
  void change_rows(const std::string& rest, int line);
  void delete_rows(const std::string& rest, int line);
  void execute(const std::string& statement);
  Actor& enter(const Document& document, bool with_properties);
  void use(const std::string& name, int line);
  void let(Actor& actor, const std::string& assignments, int line);
  void give_grid(Actor& actor, std::int32_t rows, std::int32_t columns);
  void give_lines(const std::string& rest, int line);
  void put(const std::string& rest, int line);
  void stand(const Words& words, int line);
  void act(const Step& step);
  std::string call(const std::string& text, int line);
  std::string answer_text(const Actor& actor, const Value& answer) const;

  // What is looked at.
  void see(const Step& step, const std::string& rest);
  void see_properties(const Step& step, const std::string& rest);
  void see_rows(const Step& step, std::string listing);
  void see_cells(const Step& step, const std::string& rest);
  Table grid_row(int row, const Cells* wanted);
  Table marks();
  void told(const Step& step, const std::string& rest);
  /// `only` is the one line, where it stands behind the word itself.
  void expect_lines(const Step& step, const std::optional<std::string>& only,
                    const std::vector<std::string>& seen);
  /// `expected` is the end of the step's text.
  void expect_table(const Step& step, const std::optional<std::string>& expected,
                    const Table& seen);
  void expect_text(const Step& step, const std::string& expected, const std::string& seen,
                   const std::string& context);
  void differ(const Step& step, Edit edit, const std::string& what);

  Actor& actor();
  std::string expanded(const std::string& text) const;
  static std::string condition(const Words& words, std::size_t from, int line);

  const Room& room_;
  Play& play_;
  testing::Books books_;
  Remote connection_;
  Watch watch_;
  Boxes boxes_;
  std::map<std::string, std::unique_ptr<StandIn>> stand_ins_;
  std::map<std::string, Actor> actors_;
  std::string at_hand_;
  std::vector<Value> left_;
  std::size_t boxes_seen_ = 0;
  int expectations_ = 0;
};

}  // namespace ombrix::scenarios
