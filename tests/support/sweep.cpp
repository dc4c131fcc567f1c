#include "support/sweep.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "ombrix/components.h"
#include "ombrix/entry_points.h"
#include "ombrix/recordset.h"

#include "frame/database/connection_access.h"
#include "frame/database/session_pool.h"
#include "frame/hosting/shipped.h"

namespace ombrix::testing {

namespace {

constexpr std::string_view kReason = "This call was made to fail.";
constexpr std::string_view kCounters = "Document_Prefix";

constexpr ProcessingRun kRuns[] = {
    {"online", true, false, false},   {"online, own number", true, false, true},
    {"offline", false, false, false}, {"offline, own number", false, false, true},
    {"sync", false, true, false},     {"sync, own number", false, true, true}};

/// All rows of a database, by a connection that lives as long as the database does: reading them
/// hundreds of times must be cheap. Keys that the database counts up itself are left out, as they
/// go on counting behind rows that were deleted or rolled back.
class Witness {
 public:
  explicit Witness(const Books& books) : connection_(books.another()) {
    std::istringstream dump(books.dump());
    for (std::string line; std::getline(dump, line);) {
      if (line.starts_with("= ") && line != "= Ombrix_Schema") tables_.push_back(line.substr(2));
    }
  }

  struct State {
    std::string rows, counters;
    friend bool operator==(const State&, const State&) = default;
  };
  State look() const {
    State state;
    for (const std::string& table : tables_) {
      (table == kCounters ? state.counters : state.rows) += rows_of(table);
    }
    return state;
  }
  std::string emptying() const {
    std::string statements;
    for (const std::string& table : tables_) statements += "Delete From " + table + ";";
    return statements;
  }

 private:
  std::string rows_of(const std::string& table) const {
    auto& session = *database::ConnectionAccess::session(*connection_);
    Recordset set;
    set.Open("Select * from " + table, connection_, Static);
    std::string text = set.IsEOF() ? "" : "= " + table + '\n';
    const auto known = session.table(table);
    for (; !set.IsEOF(); set.MoveNext()) {
      for (const auto& column : known->columns) {
        if (column.name == "Row_Id") continue;
        const Value value = set(column.name);
        text += (value.is_null() ? "Null" : value.to_text()) + '|';
      }
      text += '\n';
    }
    return text;
  }

  std::shared_ptr<Connection> connection_;
  std::vector<std::string> tables_;
};

/// Hands out the components that ship, and knows which of them still live.
class Siblings {
 public:
  Siblings() {
    for (const Shipped& each : shipped()) {
      if (each.role() != Shipped::Role::component) continue;
      registrations_.emplace_back(each.name(), [this, &each] {
        ObjectRef made = each.make();
        made_.push_back(made);
        return made;
      });
    }
  }
  bool any_lives() const {
    return std::any_of(made_.begin(), made_.end(), [](const auto& one) { return !one.expired(); });
  }

 private:
  std::vector<std::weak_ptr<Object>> made_;
  std::vector<Registration> registrations_;
};

class Sweeper {
 public:
  explicit Sweeper(const Sweep& sweep) : sweep_(sweep) {}

  std::size_t sweep_all() {
    for (const ProcessingRun& run : kRuns) {
      for (const bool transaction : {false, true}) {
        if (transaction && !sweep_.in_transaction) continue;
        run_ = run;
        transaction_ = transaction;
        run_clean();
        if (::testing::Test::HasFatalFailure()) return cases_;
        for (std::size_t place = 0; place < journal_.size(); ++place) fail_each_way(place);
      }
    }
    return cases_;
  }

 private:
  const std::shared_ptr<Connection>& connection() const { return books_.connection(); }
  std::size_t idle() const { return database::SessionPool::instance().idle(books_.text()); }

  Subject fresh_subject() {
    connection()->BeginTrans();
    connection()->Execute(witness_.emptying());
    connection()->CommitTrans();
    sweep_.given(books_);
    return sweep_.subject(books_, run_);
  }
  bool call(const Subject& subject) const {
    return transaction_ ? all_or_nothing(*connection(), subject.method) : subject.method();
  }

  void run_clean() {
    SCOPED_TRACE(sweep_.method + ", " + std::string(run_.name) + ": nothing fails");
    const Subject subject = fresh_subject();
    journal_.clear();
    before_.clear();
    // Asked before each call, the calls inside a sibling's included: what stands then is what must
    // stand when that call fails.
    connection()->inject([this](const Call& coming) {
      journal_.push_back(coming);
      before_.push_back(witness_.look());
      return Fault();
    });
    const bool answer = call(subject);
    connection()->inject({});
    ASSERT_TRUE(answer) << subject.reason();
    ASSERT_FALSE(journal_.empty());
    clean_ = witness_.look();
    most_idle_ = idle();
  }

  void fail_each_way(std::size_t place) {
    using enum Fault::Kind;
    fail(place, raise);
    const Call::Kind kind = journal_[place].kind;
    if (kind == Call::Kind::invoke) fail(place, answer_false);
    if (!concerns_sibling(kind)) fail(place, lose_session);
  }

  /// All that can be told from outside about a run in which a call failed.
  void fail(std::size_t place, Fault::Kind kind) {
    ++cases_;
    const Cut cut{journal_, place, kind, clean_.rows};
    SCOPED_TRACE(title(cut));
    Subject subject = fresh_subject();
    const std::size_t idle_before = idle();
    const bool dead = died(cut);
    const bool text_died = kind == Fault::Kind::lose_session && !dead;

    const Outcome expected = outcome(cut);
    const Outcome found = run_failing(cut, subject);
    const Witness::State left = witness_.look();
    EXPECT_EQ(found.answer, expected.answer);
    EXPECT_EQ(found.reason, expected.reason);
    EXPECT_EQ(left.rows, expected.rows);
    expect_counters(left.counters, cut, expected.answer);

    // One reference is the connection's own: an open recordset would hold another.
    EXPECT_EQ(database::ConnectionAccess::session(*connection()).use_count(), 1);
    EXPECT_EQ(connection()->State(), dead ? 0 : 1);
    EXPECT_FALSE(siblings_.any_lives());
    EXPECT_LE(idle(), most_idle_);
    EXPECT_GE(idle() + (text_died ? 1 : 0), idle_before);

    if (dead) connection()->Open(books_.text());
    EXPECT_FALSE(connection()->in_transaction());
    EXPECT_TRUE(subject.again ? subject.again() : subject.method()) << subject.reason();
    if (!subject.again && left.counters == before_.front().counters) {
      EXPECT_EQ(witness_.look().rows, clean_.rows);
    }
    EXPECT_LE(idle(), most_idle_);
    subject = {};
    EXPECT_EQ(DllCanUnloadNow(), OMBRIX_OK);
  }

  Outcome outcome(const Cut& cut) const {
    const bool unasked = cut.kind == Fault::Kind::answer_false;
    Outcome expected{false, unasked ? "" : std::string(kReason), before_[cut.place].rows};
    if (!frames_transaction(cut)) sweep_.differs(cut, expected);
    if (transaction_ && !expected.answer) expected.rows = before_.front().rows;
    return expected;
  }

  static bool frames_transaction(const Cut& cut) {
    return cut.call().kind == Call::Kind::begin || cut.call().kind == Call::Kind::commit;
  }

  /// The reason is the failure's own where the client's transaction fails to begin or to end.
  Outcome run_failing(const Cut& cut, const Subject& subject) {
    std::size_t asked = 0;
    connection()->inject([&](const Call& made) {
      if (asked++ != cut.place) return Fault();
      EXPECT_EQ(made.kind, cut.call().kind);
      return Fault{cut.kind, kDatabaseFailure, std::string(kReason)};
    });
    Outcome found;
    std::optional<std::string> raised;
    try {
      found.answer = call(subject);
    } catch (const Failure& failure) {
      raised = failure.description();
    }
    connection()->inject({});
    EXPECT_GT(asked, cut.place);
    EXPECT_EQ(raised.has_value(), raises(cut)) << raised.value_or("");
    found.reason = frames_transaction(cut) ? raised.value_or("") : subject.reason();
    return found;
  }

  static bool died(const Cut& cut) {
    return cut.kind == Fault::Kind::lose_session && cut.call().road == Call::Road::object;
  }
  /// A method turns its failures into an answer; those of the transaction's own calls reach the
  /// client.
  static bool raises(const Cut& cut) { return frames_transaction(cut); }

  /// A number that is not used stays free; only a session that died may leave it claimed.
  void expect_counters(const std::string& left, const Cut& cut, bool used) const {
    if (died(cut) && !transaction_ && left == before_[cut.place].counters) return;
    EXPECT_EQ(left, used ? clean_.counters : before_.front().counters);
  }

  std::string title(const Cut& cut) const {
    const char* const kinds[] = {"", "raises", "answers False", "loses the session"};
    return sweep_.method + ", " + std::string(run_.name) +
           (transaction_ ? ", in a transaction" : "") + ": call " + std::to_string(cut.place + 1) +
           " " + kinds[static_cast<std::size_t>(cut.kind)] + ": " + cut.call().text;
  }

  const Sweep& sweep_;
  const Books books_{sweep_.database};
  /// Its connection also keeps the idle sessions alive while the client's is lost and opened again.
  const Witness witness_{books_};
  Siblings siblings_;

  ProcessingRun run_{};
  bool transaction_ = false;
  std::vector<Call> journal_;
  std::vector<Witness::State> before_;  ///< each call
  Witness::State clean_;                ///< behind the last one
  std::size_t most_idle_ = 0;
  std::size_t cases_ = 0;
};

}  // namespace

void run(const Sweep& sweep) {
  const std::size_t cases = Sweeper(sweep).sweep_all();
  std::cout << "[  sweep   ] " << sweep.method << ": " << cases << " cases\n";
  ::testing::Test::RecordProperty("sweep_cases", std::to_string(cases));
}

}  // namespace ombrix::testing
