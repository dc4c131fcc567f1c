#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/instruments.h"

#include "support/books.h"

namespace ombrix::testing {

/// How a document is processed, and where its number comes from.
struct ProcessingRun {
  std::string_view name;
  bool online, sync;
  bool manual;  ///< the number is the client's own
};

/// An instance at work; it lives as long as these calls do.
struct Subject {
  std::function<bool()> method;
  /// What the instance says after False.
  std::function<std::string()> reason;
  /// What the instance must be able to do afterwards, on the same database. Empty: `method` itself,
  /// which then must also leave the rows that it leaves when nothing fails.
  std::function<bool()> again{};
};

/// A run of the method in which one call failed.
struct Cut {
  const std::vector<Call>& journal;  ///< of the run in which nothing failed
  std::size_t place;                 ///< of the failing call in it
  Fault::Kind kind;
  const std::string& clean_rows;  ///< left when nothing fails
  const std::string& counters;    ///< as the method found them

  const Call& call() const { return journal[place]; }
  bool concerns(std::string_view part) const { return call().text.find(part) != std::string::npos; }
};

/// What a cut run must leave. The harness expects False, the failure's own description (nothing
/// from a sibling that was not asked) and the rows of the calls before.
struct Outcome {
  bool answer = false;
  std::string reason;
  std::string rows;  ///< of all tables but the counters; False in a transaction leaves none
  /// Only where the method keeps some numbers and gives others back; else the harness knows.
  std::string counters{};
  bool raised = false;  ///< the method has no trap there: the client gets the failure
};

struct Sweep {
  std::string method;
  std::string database;
  /// The rows that the method finds; equal each time.
  std::function<void(const Books&)> given;
  std::function<Subject(const Books&, const ProcessingRun&)> subject;
  /// False for a method that writes through the text: a transaction of the client's own stands in
  /// its way, and a rollback does not reach what it wrote.
  bool in_transaction = true;
  /// True for a method that processes: it knows the runs and a number of the client's own. For any
  /// other one run is enough.
  bool in_runs = false;
  /// Where the method's trap says otherwise, or it carries on: the test names the call.
  std::function<void(const Cut&, Outcome&)> differs = [](const Cut&, Outcome&) {};
};

/// For a method that posts the tax of a document: a failure that is raised there is swallowed
/// without a word.
void silent_in_tax(const Cut& cut, Outcome& expected);

/// Lets each call of the method fail in turn: in each run, with a number of the counter's and of
/// the client's own, alone and inside a client's transaction. Of like calls that one run has shown,
/// a later run shows the last. On a server, which is slow, a later run shows only calls that are
/// new, the members of siblings are left to the other database, and a session is lost by its
/// server's doing. Prints how many cases ran.
void run(const Sweep& sweep);

}  // namespace ombrix::testing
