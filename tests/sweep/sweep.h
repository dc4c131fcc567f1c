#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/instruments.h"
#include "ombrix/object.h"

#include "frame/trap.h"
#include "sweep/witness.h"

/// The sweep lets every call that a method makes, to the database or to a sibling, fail once, and
/// looks at what is left: the answer, the reason, rows, counters, sessions, siblings, and whether
/// the instance still works. `methods.txt` tells what differs from method to method.
namespace ombrix::testing {

/// A run of the method in which one call failed.
struct Cut {
  const std::vector<Call>& journal;  ///< of the run in which nothing failed
  std::size_t place;                 ///< of the failing call in it
  Fault::Kind kind;
  std::string reason;              ///< of the failure, or of the sibling that refused
  const std::string& reason_then;  ///< what `ErrDesc` held when the call came
  const std::string& reason_left;  ///< what it holds when nothing fails, as do the rows
  const Witness::State& left;
  const Witness::State& given;

  const Call& call() const { return journal[place]; }
  bool refused() const { return kind == Fault::Kind::answer_false; }
  bool loses(Call::Road road) const {
    return kind == Fault::Kind::lose_session && call().road == road;
  }
};

/// What a cut run leaves.
struct Outcome {
  bool answer = false;
  bool raised = false;   ///< the failure reaches the client
  std::string reason{};  ///< in `ErrDesc`, or of the failure that reaches the client
  std::string shown{};   ///< in a message box
  Witness::State left{};

  /// A failure that is raised meets this trap; a refusal is handed on in any case.
  void trapped(const Cut& cut, Trap trap);
  /// A failure that is raised meets none.
  void rises(const Cut& cut);
};

/// Where a cut run leaves something else.
struct Rule {
  std::string part;
  std::optional<Fault::Kind> kind;
  std::vector<std::string> effects;
  mutable bool used = false;

  void apply(const Cut& cut, Outcome& outcome) const;
};

/// What is set, in the words of scenarios: "LPONo=AABRPOTMP3 1=text".
struct Run {
  std::string settings{}, again{};
};

/// A method under the sweep; `methods.txt` tells what its parts mean.
struct Subject {
  std::string document, call;
  Run all{};  ///< what is set in each run
  std::vector<Run> runs{};
  Trap trap = Trap::plain;
  bool alone = false;
  std::vector<Rule> rules{};

  std::string method() const { return call.substr(0, call.find(' ')); }
};
const std::vector<Subject>& subjects();

/// The company with its first documents, which every method finds.
void given_documents(const Books& books);

/// An instance that knows nothing yet, and all that a client sets in it.
ObjectRef made(const std::string& document);
void fill(Object& object, const std::string& document, const Books& books);
void set(Object& object, std::vector<Value>& arguments, const std::string& settings);
/// The arguments of a call, and its answer behind them.
std::vector<Value> values_of(const std::string& call);

}  // namespace ombrix::testing
