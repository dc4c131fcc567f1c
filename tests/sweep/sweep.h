#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ombrix/instruments.h"
#include "ombrix/object.h"

#include "frame/trap.h"
#include "sweep/witness.h"

/// The sweep lets every call that a method makes, to the database or to a sibling, fail once, and
/// looks at what is left: the answer, the reason, rows, counters, sessions, siblings, and whether
/// the instance still works. `methods.txt` tells what differs from method to method.
namespace ombrix::testing {

/// What stands when a call comes, or when nothing fails behind the last one.
struct Standing {
  Witness::State state;
  std::string reason{};          ///< in `ErrDesc`
  Witness::Counters moved_on{};  ///< by then
  int depth = 0;                 ///< of siblings that are being asked
};

/// A run of a method in which one call failed.
struct Cut {
  const std::vector<Call>& journal;  ///< of the run in which nothing failed
  std::size_t place;                 ///< of the failing call in it
  Fault::Kind kind;
  std::string reason;  ///< of the failure, or of the sibling that refused
  const Standing &before, &left;
  const Witness::State& given;

  const Call& call() const { return journal[place]; }
  bool refused() const { return kind == Fault::Kind::answer_false; }
  bool loses(Call::Road road) const {
    return kind == Fault::Kind::lose_session && call().road == road;
  }
};

/// What it leaves.
struct Outcome {
  Witness::State state;
  bool answer = false;
  bool raised = false;   ///< the failure reaches the client
  std::string reason{};  ///< in `ErrDesc`, or of the failure that reaches the client
  std::string shown{};   ///< in a message box

  /// A failure that is raised meets this trap, or none; a refusal is handed on in any case.
  void meets(std::optional<Trap> trap, const Cut& cut);
};

/// Where it leaves something else.
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

/// A method under the sweep, as a line of `methods.txt` tells it.
struct Subject {
  std::string document, call;
  Run all{};  ///< over which each run sets its own
  std::vector<Run> runs{};
  std::vector<Rule> rules{};
  bool alone = false;

  std::string method() const { return call.substr(0, call.find(' ')); }
};
const std::vector<Subject>& subjects();

/// An instance of a document's class.
class Instance {
 public:
  /// It knows nothing yet.
  explicit Instance(const std::string& document);

  /// Sets all that a client sets.
  void fill(const Books& books);
  /// A number in place of a property is an argument of later calls, from 1.
  void set(const std::string& settings);
  /// Whether "Get_Vendor_Discount AAV002 -> 7.5" answers so; True unless told.
  bool ask(const std::string& call);
  std::string reason() const { return object_->get("ErrDesc").to_text(); }
  std::string class_name() const { return std::string(object_->class_name()); }

 private:
  std::string document_;
  ObjectRef object_;
  std::map<std::size_t, Value> arguments_;  ///< in place of those that a call tells
};

/// The company with its first documents, which every method finds.
void given_documents(const Books& books);

}  // namespace ombrix::testing
