#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "runner/client.h"
#include "runner/room.h"
#include "runner/stand_in.h"
#include "runner/table.h"
#include "runner/watch.h"
#include "support/books.h"

namespace ombrix::scenarios {

/// Puts what was seen into a file: in the lines `first` to `last` the text `from` becomes `to`, or
/// these lines become `lines`.
struct Edit {
  int first, last;
  std::string from{}, to{};
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
  const Statement& statement;
  bool owns_block;  ///< the statement's block is this step's table
  const Line* row;  ///< of the table that the step was made for; null outside "each"

  const Line& line() const { return row != nullptr ? *row : statement.head; }
};

/// One scenario at work: its books, its objects, what they said.
class Stage {
 public:
  Stage(const Room& room, Play& play);

  /// Raises a `Finding` that tells its line.
  void perform(const Scenario& scenario);

 private:
  struct Actor {
    Document document;
    Remote object{}, grid{};
  };
  using Words = std::vector<std::string>;
  using Given = std::optional<std::string>;  ///< what stands behind " : "
  /// What a word does with the words behind it, "$Property" replaced.
  using Deed = std::function<void(Stage&, const std::string&)>;
  /// What a word looks at: its words, and what they are followed by, as it stands.
  using Look = std::function<void(Stage&, const Step&, const std::string&, const Given&)>;
  static const std::map<std::string, Deed>& deeds();
  static const std::map<std::string, Look>& looks();

  void set_up(const Scenario& scenario);
  void perform(const Statement& statement);
  void perform_steps(const std::string& text, const Statement& statement, const Line* row);
  void perform(const Step& step);
  void perform_word(const Step& step);

  // What changes the stage.
  void add_rows(const Step& step, const std::string& table, const Given& given);
  void change_rows(const std::string& rest);
  void delete_rows(const std::string& rest);
  void execute(const std::string& statement);
  void enter(const Document& document, bool with_properties);
  void make(const std::string& rest);
  void use(const std::string& name);
  void let(const std::string& assignments);
  void give_grid(std::int32_t rows, std::int32_t columns);
  void give_lines(const std::string& rest);
  void put(const std::string& rest);
  void stand(const std::string& rest);
  void act(const Step& step);
  std::string call(const std::string& text);

  // What is looked at.
  void see(const Step& step, const std::string& rest, const Given& given);
  void see_properties(const Step& step, const std::string& rest);
  void see_cells(const Step& step, const std::string& rest, const Given& given);
  void count(const Step& step, const std::string& rest, const Given& given);
  Table marks();

  /// What stands behind " : ", or below the line; cells keep their quotes.
  Table written(const Step& step, const Given& given) const;
  void expect_table(const Step& step, const Given& given, const Table& seen);
  /// `only` is the one line, where it stands behind the word itself.
  void expect_lines(const Step& step, const Given& only, const Table& seen);
  void expect_text(const Step& step, const std::string& expected, const std::string& seen,
                   const std::string& context);
  /// Raises, or notes that the file should say `to` for `from`, the end of the step's text; without
  /// one, the seen table below it.
  void expect(const Step& step, const Table& wanted, const Table& seen, const Given& from,
              const std::string& to);

  Actor& actor();
  std::string expanded(const std::string& text) const;

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
  int expectations_ = 0;
};

}  // namespace ombrix::scenarios
