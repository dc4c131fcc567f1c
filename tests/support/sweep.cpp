#include "support/sweep.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <set>

#include "ombrix/components.h"
#include "ombrix/entry_points.h"

#include "frame/database/connection_access.h"
#include "frame/database/connection_text.h"
#include "frame/database/session_pool.h"
#include "frame/hosting/shipped.h"
#include "support/failures.h"
#include "support/witness.h"

namespace ombrix::testing {

namespace {

constexpr std::string_view kReason = "This call was made to fail.";
constexpr std::string_view kLost = "The session with the server is lost: ";

constexpr ProcessingRun kRuns[] = {
    {"online", true, false, false},   {"online, own number", true, false, true},
    {"offline", false, false, false}, {"offline, own number", false, false, true},
    {"sync", false, true, false},     {"sync, own number", false, true, true}};

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

/// Who makes a call fail: the fault hook itself, or the server, which ends the session just before.
enum class By : bool { hook, server };

/// What a call is whatever its values are: documents differ in these from run to run.
std::string shape_of(const Call& call) {
  std::string shape = std::to_string(static_cast<int>(call.kind)) + ' ' +
                      std::to_string(static_cast<int>(call.road)) + ' ';
  bool quoted = false;
  for (const char c : call.text) {
    if (c == '\'') quoted = !quoted;
    if (!quoted && (c < '0' || c > '9')) shape += c;
  }
  return shape;
}

/// How a run went in which something failed.
struct Found {
  Outcome outcome;
  /// The first call that did not come back; none when nobody noticed.
  std::optional<std::size_t> noticed;
};

/// Watches a run, breaks one call of it, and sees which call was the first that did not come back.
class Breach {
 public:
  Breach(Connection& connection, const Cut& cut, std::function<Fault()> strike)
      : connection_(connection), cut_(cut), strike_(std::move(strike)) {
    connection.inject([this](const Call& call) { return before(call); });
    connection.observe([this](const Call& call) {
      if (!concerns_sibling(call.kind)) under_way_.reset();
    });
  }
  ~Breach() {
    connection_.inject({});
    connection_.observe({});
  }
  Breach(const Breach&) = delete;
  Breach& operator=(const Breach&) = delete;

  bool reached() const { return asked_ > cut_.place; }
  std::optional<std::size_t> noticed() const { return noticed_ ? noticed_ : under_way_; }

 private:
  Fault before(const Call& call) {
    // Another call comes, and the last one was never observed.
    if (!noticed_) noticed_ = under_way_;
    const std::size_t place = asked_++;
    if (!noticed_ && !concerns_sibling(call.kind)) under_way_ = place;
    if (place != cut_.place) return Fault();
    EXPECT_EQ(call.kind, cut_.call().kind);
    Fault fault = strike_();
    if (fault.kind != Fault::Kind::none) noticed_ = place;
    return fault;
  }

  Connection& connection_;
  const Cut& cut_;
  std::function<Fault()> strike_;
  std::size_t asked_ = 0;
  std::optional<std::size_t> under_way_, noticed_;
};

class Sweeper {
 public:
  explicit Sweeper(const Sweep& sweep) : sweep_(sweep) {}

  std::size_t sweep_all() {
    for (const ProcessingRun& run : kRuns) {
      if (!sweep_.in_runs && &run != kRuns) break;
      for (const bool transaction : {false, true}) {
        if (transaction && !sweep_.in_transaction) continue;
        run_ = run;
        transaction_ = transaction;
        run_clean();
        if (::testing::Test::HasFatalFailure()) return cases_;
        for (std::size_t place = 0; place < journal_.size(); ++place) fail_each_way(place);
        for (const Call& call : journal_) shown_[transaction_].insert(shape_of(call));
      }
    }
    return cases_;
  }

 private:
  const std::shared_ptr<Connection>& connection() const { return books_.connection(); }
  std::size_t idle() const { return database::SessionPool::instance().idle(books_.text()); }

  Subject fresh_subject() {
    connection()->BeginTrans();
    connection()->Execute(witness_.emptying() + given_);
    connection()->CommitTrans();
    if (given_.empty()) {
      sweep_.given(books_);
      given_ = witness_.inserts();
    }
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
    const Call& call = journal_[place];
    // What an earlier run showed of the same call is not repeated where nothing but the way it
    // fails is told apart: a member that a sibling does not take, a session that has to be opened
    // again. A server is slow at all this, and what goes on above the driver SQLite shows.
    const bool on_server = books_.kind() == "PostgreSQL";
    const bool shown = is_shown(call);
    if (shown && (on_server || comes_again(place))) return;
    const bool member = call.kind == Call::Kind::assign || call.kind == Call::Kind::fetch;
    if (member && (shown || transaction_ || on_server)) return;
    fail(place, raise, By::hook);
    if (call.kind == Call::Kind::invoke) fail(place, answer_false, By::hook);
    if (concerns_sibling(call.kind) || shown) return;
    fail(place, lose_session, on_server ? By::server : By::hook);
  }

  bool is_shown(const Call& call) const { return shown_[transaction_].contains(shape_of(call)); }
  bool comes_again(std::size_t place) const {
    const std::string shape = shape_of(journal_[place]);
    return std::any_of(journal_.begin() + static_cast<std::ptrdiff_t>(place) + 1, journal_.end(),
                       [&](const Call& later) { return shape_of(later) == shape; });
  }
  Cut cut_at(std::size_t place, Fault::Kind kind) const {
    return {journal_, place, kind, clean_.rows, before_.front().counters};
  }

  /// All that can be told from outside about a run in which a call failed.
  void fail(std::size_t place, Fault::Kind kind, By by) {
    ++cases_;
    const Cut cut = cut_at(place, kind);
    SCOPED_TRACE(title(cut, by));
    Subject subject = fresh_subject();
    const std::size_t idle_before = idle();
    const bool dead = died(cut);
    const Found found = run_failing(cut, by, subject);
    const Witness::State left = witness_.look();
    expect_outcome(cut, by, found, left);

    // One reference is the connection's own: an open recordset would hold another.
    EXPECT_EQ(database::ConnectionAccess::session(*connection()).use_count(), 1);
    EXPECT_EQ(connection()->State(), dead ? 0 : 1);
    EXPECT_FALSE(siblings_.any_lives());
    EXPECT_LE(idle(), most_idle_);
    EXPECT_GE(idle() + lost_at_most(cut, by), idle_before);

    if (dead) connection()->Open(books_.text());
    EXPECT_FALSE(connection()->in_transaction());
    if (!is_shown(cut.call())) go_on(subject, left);
    subject = {};
    EXPECT_EQ(DllCanUnloadNow(), OMBRIX_OK);
  }

  /// The instance is as good as before.
  void go_on(const Subject& subject, const Witness::State& left) const {
    EXPECT_TRUE(subject.again ? subject.again() : subject.method()) << subject.reason();
    if (!subject.again && left.counters == before_.front().counters) {
      EXPECT_EQ(witness_.look().rows, clean_.rows);
    }
    EXPECT_LE(idle(), most_idle_);
  }

  void expect_outcome(const Cut& cut, By by, const Found& found, const Witness::State& left) const {
    // A session that the server ended is missed by the first call that has to go there.
    const Cut noticed = cut_at(found.noticed.value_or(cut.place), cut.kind);
    const Outcome expected =
        found.noticed ? outcome(noticed) : Outcome{true, "", clean_.rows, clean_.counters};
    EXPECT_EQ(found.outcome.answer, expected.answer);
    EXPECT_EQ(left.rows, expected.rows);
    expect_counters(left.counters, noticed, expected);
    if (!found.noticed) return;
    const auto told = expected.reason.find(kReason);
    if (by == By::hook || told == std::string::npos) {
      EXPECT_EQ(found.outcome.reason, expected.reason);
      return;
    }
    const std::string head = expected.reason.substr(0, told) + std::string(kLost);
    EXPECT_TRUE(found.outcome.reason.starts_with(head)) << found.outcome.reason;
    const std::string password = database::ConnectionText(books_.text())["password"];
    EXPECT_TRUE(password.empty() || !contains(found.outcome.reason, password));
  }

  Outcome outcome(const Cut& cut) const {
    const bool unasked = cut.kind == Fault::Kind::answer_false;
    Outcome expected{false, unasked ? "" : std::string(kReason), before_[cut.place].rows};
    if (!frames_transaction(cut)) sweep_.differs(cut, expected);
    if (expected.counters.empty()) {
      expected.counters = expected.answer ? clean_.counters : kept_counters(cut);
    }
    if (transaction_ && !expected.answer) {
      expected.rows = before_.front().rows;
      expected.counters = before_.front().counters;
    }
    return expected;
  }

  static bool frames_transaction(const Cut& cut) {
    return cut.call().kind == Call::Kind::begin || cut.call().kind == Call::Kind::commit;
  }

  /// The reason is the failure's own where the client's transaction fails to begin or to end.
  Found run_failing(const Cut& cut, By by, const Subject& subject) {
    Breach breach(*connection(), cut, [this, cut, by, process = process_to_end(by)] {
      if (by == By::hook) return Fault{cut.kind, kDatabaseFailure, std::string(kReason)};
      const bool on_text = cut.call().road == Call::Road::text;
      EXPECT_GT(on_text ? witness_.end_sessions_but(process) : witness_.end_session(process), 0U);
      return Fault();
    });
    Found found;
    std::optional<std::string> raised;
    try {
      found.outcome.answer = call(subject);
    } catch (const Failure& failure) {
      raised = failure.description();
    }
    found.noticed = breach.noticed();
    EXPECT_TRUE(breach.reached());
    const Cut noticed = cut_at(found.noticed.value_or(cut.place), cut.kind);
    EXPECT_EQ(raised.has_value(), raises(noticed)) << raised.value_or("");
    found.outcome.reason = raised ? *raised : subject.reason();
    return found;
  }

  std::string process_to_end(By by) const {
    return by == By::server ? Witness::process_of(connection()) : std::string();
  }

  /// Sessions that read through the text: the hook takes one, the server all that are at work, and
  /// no method holds more than two.
  static std::size_t lost_at_most(const Cut& cut, By by) {
    if (cut.kind != Fault::Kind::lose_session || cut.call().road != Call::Road::text) return 0;
    return by == By::server ? 2 : 1;
  }
  static bool died(const Cut& cut) {
    return cut.kind == Fault::Kind::lose_session && cut.call().road == Call::Road::object;
  }
  /// A method turns its failures into an answer, unless it has no trap; those of the transaction's
  /// own calls reach the client.
  bool raises(const Cut& cut) const { return frames_transaction(cut) || outcome(cut).raised; }

  /// Those of documents that were finished before the call failed stay drawn.
  const std::string& kept_counters(const Cut& cut) const {
    for (std::size_t place = cut.place; place > 0 && !transaction_; --place) {
      if (contains(journal_[place - 1].text, "Increase_Counter")) return before_[place].counters;
    }
    return before_.front().counters;
  }

  /// A number that is not used stays free; only a session that died may leave it claimed.
  void expect_counters(const std::string& left, const Cut& cut, const Outcome& expected) const {
    if (died(cut) && !transaction_ && left == before_[cut.place].counters) return;
    EXPECT_EQ(left, expected.counters);
  }

  std::string title(const Cut& cut, By by) const {
    const char* const kinds[] = {"", "raises", "answers False", "loses the session"};
    return sweep_.method + ", " + std::string(run_.name) +
           (transaction_ ? ", in a transaction" : "") + ": call " + std::to_string(cut.place + 1) +
           " " +
           (by == By::server ? "finds the session ended"
                             : kinds[static_cast<std::size_t>(cut.kind)]) +
           ": " + cut.call().text;
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
  std::string given_;  ///< the rows that the method finds, as statements
  /// The shapes of the calls of earlier runs, alone and in a transaction.
  std::set<std::string> shown_[2];
};

}  // namespace

void silent_in_tax(const Cut& cut, Outcome& expected) {
  const auto tax = std::find_if(cut.journal.begin(), cut.journal.end(), [](const Call& call) {
    return call.text.starts_with("select TaxAuthorityCode");
  });
  const bool behind = cut.concerns("CounterTransaction") || cut.concerns("From Document_Prefix") ||
                      cut.concerns("Update Document_Prefix");
  const auto first = static_cast<std::size_t>(tax - cut.journal.begin());
  if (cut.place >= first && !behind) expected.reason.clear();
}

void run(const Sweep& sweep) {
  const std::size_t cases = Sweeper(sweep).sweep_all();
  std::cout << "[  sweep   ] " << sweep.method << ": " << cases << " cases\n";
  ::testing::Test::RecordProperty("sweep_cases", std::to_string(cases));
}

}  // namespace ombrix::testing
