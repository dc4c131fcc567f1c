#include "sweep/sweep.h"

#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <memory>
#include <optional>

#include "ombrix/components.h"
#include "ombrix/dialogue.h"
#include "ombrix/entry_points.h"

#include "database/connection_access.h"
#include "database/connection_text.h"
#include "database/session_pool.h"
#include "sweep/siblings.h"

namespace ombrix::testing {

namespace {

using enum Fault::Kind;

constexpr std::string_view kReason = "This call was made to fail.";
constexpr std::string_view kLost = "The session with the server is lost: ";

/// Keeps what it is told, and answers with a free number.
struct Box final : Dialogue {
  std::string shown;
  int number = 11;
  void message(std::string_view text, std::string_view) override { shown += text; }
  std::string input(std::string_view, std::string_view, std::string_view) override {
    return std::to_string(++number);
  }
};

/// A database with the first documents of the company, which all subjects share: making it is dear.
struct Stage {
  explicit Stage(const std::string& database) : books(database) { books.spoil(); }
  ~Stage() { set_dialogue(nullptr); }

  Books books;
  Witness witness{(given_documents(books), books)};
};

/// Who makes a call fail: the fault hook itself, or the server, which ends the session just before.
enum class By : bool { hook, server };

/// What a call is whatever its values are.
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

bool is_member(const Call& call) {
  return call.kind == Call::Kind::assign || call.kind == Call::Kind::fetch;
}
bool frames_transaction(const Call& call) {
  return call.kind == Call::Kind::begin || call.kind == Call::Kind::commit;
}
bool may_write(const Call& call) {
  return writes_row(call.kind) || call.text.find("Returning") != std::string::npos;
}
/// "OmbrixSystem.General" of "OmbrixSystem.General.GetFldValue".
std::string sibling_of(const Call& call) {
  return call.text.substr(0, call.text.rfind('.'));
}

/// Whether the call belongs to the posting of tax, whose trap is silent whichever method runs it:
/// from the look for the authorities up to the first thing that a tax line has no part in.
bool posts_tax(const Cut& cut) {
  for (std::size_t place = cut.place + 1; place-- > 0;) {
    const Call& call = cut.journal[place];
    if (call.text.starts_with("select TaxAuthorityCode")) return true;
    if (call.road == Call::Road::sibling && !call.text.starts_with("OmbrixAccounts.GeneralLedger"))
      return false;
    if (call.text.starts_with("Select Document_Next_No")) return false;
  }
  return false;
}

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
  /// None when nobody noticed.
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
    if (fault.kind != none) noticed_ = place;
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
  Sweeper(const Stage& stage, const Subject& subject) : stage_(stage), subject_(subject) {
    set_dialogue(box_);
    witness().restore(witness().changed(witness().look()));
  }

  std::size_t sweep() {
    for (const Run& run : subject_.runs) {
      for (const bool transaction : {false, true}) {
        if (transaction && subject_.alone) continue;
        run_ = run;
        transaction_ = transaction;
        run_clean();
        if (::testing::Test::HasFatalFailure()) return cases_;
        fail_each_call();
        EXPECT_EQ(difference(witness().look(), given()), "") << "in a table that nobody looked at";
      }
    }
    for (const Rule& rule : subject_.rules) EXPECT_TRUE(rule.used) << "at " << rule.part;
    return cases_;
  }

 private:
  const Witness& witness() const { return stage_.witness; }
  const Witness::State& given() const { return witness().given(); }
  const std::shared_ptr<Connection>& connection() const { return stage_.books.connection(); }
  Witness::State look() const { return witness().look(tables_); }
  bool on_server() const { return stage_.books.kind() == "PostgreSQL"; }
  std::size_t idle() const { return database::SessionPool::instance().idle(stage_.books.text()); }
  static std::string reason_of(Object& object) { return object.get("ErrDesc").to_text(); }

  bool ask(Object& object) {
    auto arguments = arguments_;
    return object.call(subject_.method(), arguments) == answer_;
  }
  bool call(Object& object) {
    const auto method = [&] { return ask(object); };
    return transaction_ ? all_or_nothing(*connection(), method) : method();
  }

  /// Once asked while it knew nothing, which leaves the reason that a silent trap keeps.
  ObjectRef instance() {
    const ObjectRef object = made(subject_.document);
    arguments_ = values_of(subject_.call);
    answer_ = arguments_.back();
    arguments_.pop_back();
    try {
      ask(*object);
    } catch (const Failure&) {
      // Some want a connection before they can say no.
    }
    fill(*object, subject_.document, stage_.books);
    set(*object, arguments_, subject_.all.settings);
    set(*object, arguments_, run_.settings);
    siblings_.begin();
    *box_ = Box();
    return object;
  }

  void run_clean() {
    SCOPED_TRACE(title() + ": nothing fails");
    ObjectRef object = instance();
    ASSERT_TRUE(call(*object)) << reason_of(*object);
    left_ = witness().look();
    tables_ = witness().changed(left_);
    witness().restore(tables_);

    object = instance();
    journal_.clear();
    before_.clear();
    // Asked before each call, the calls inside a sibling's included: what stands then is what must
    // stand when that call fails. Numbers that were moved on by then stay drawn.
    int depth = 0;
    connection()->observe([&](const Call& done) { depth -= done.kind == Call::Kind::invoke; });
    connection()->inject([&](const Call& coming) {
      const bool written = !transaction_ && !journal_.empty() && may_write(journal_.back());
      before_.push_back({written           ? look()
                         : before_.empty() ? given()
                                           : before_.back().state,
                         siblings_.moved_on(), reason_of(*object), depth});
      depth += coming.kind == Call::Kind::invoke;
      journal_.push_back(coming);
      return Fault();
    });
    EXPECT_TRUE(call(*object));
    connection()->inject({});
    connection()->observe({});
    ASSERT_FALSE(journal_.empty());
    reason_left_ = reason_of(*object);
    EXPECT_EQ(difference(look(), left_), "");
    witness().restore(tables_);
    most_idle_ = idle();
  }

  /// What a call is, whatever its values are, behind what: a method may make it in several places,
  /// and a sibling asks the same whoever calls it.
  std::string likeness(std::size_t place) const {
    std::string like = shape_of(journal_[place]);
    const int depth = before_[place].depth;
    for (int left = is_member(journal_[place]) ? 0 : 3; left > 0 && place-- > 0;) {
      if (before_[place].depth > depth || is_member(journal_[place])) continue;
      like += '\n' + shape_of(journal_[place]);
      left = before_[place].depth < depth ? 0 : left - 1;
    }
    return like;
  }

  /// Of like calls, by the next line or in a later run, the last of the first run is enough.
  void fail_each_call() {
    std::map<std::string, std::size_t> last;
    for (std::size_t place = 0; place < journal_.size(); ++place) last[likeness(place)] = place;
    for (const auto& [like, place] : last) {
      if (shown_[transaction_].insert(like).second) fail_each_way(place);
    }
  }

  void fail_each_way(std::size_t place) {
    const Call& call = journal_[place];
    // What goes on above the driver SQLite shows, and no transaction changes how a member is taken.
    if (is_member(call) && (transaction_ || on_server())) return;
    fail(place, raise, By::hook);
    if (call.kind == Call::Kind::invoke) fail(place, answer_false, By::hook);
    if (concerns_sibling(call.kind)) return;
    fail(place, lose_session, on_server() ? By::server : By::hook);
  }

  Cut cut_at(std::size_t place, Fault::Kind kind) const {
    const std::string refusal = Siblings::refusal(sibling_of(journal_[place]));
    return {.journal = journal_,
            .place = place,
            .kind = kind,
            .reason = kind == answer_false ? refusal : std::string(kReason),
            .reason_then = before_[place].reason,
            .reason_left = reason_left_,
            .left = left_,
            .given = given()};
  }

  struct Before {
    Witness::State state;
    Witness::Counters moved_on;
    std::string reason;
    int depth;  ///< of siblings that are being asked
  };
  /// How a run went in which something failed.
  struct Found {
    Outcome outcome;
    /// The first call that did not come back; none when nobody noticed.
    std::optional<std::size_t> noticed{};
  };

  /// All that can be told from outside about a run in which a call failed.
  void fail(std::size_t place, Fault::Kind kind, By by) {
    ++cases_;
    const Cut cut = cut_at(place, kind);
    SCOPED_TRACE(title(cut, by));
    ObjectRef object = instance();
    const std::size_t idle_before = idle();
    const bool dead = cut.loses(Call::Road::object);
    const Found found = run_failing(cut, by, *object);
    expect_outcome(cut, by, found);

    // One reference is the connection's own: an open recordset would hold another.
    EXPECT_EQ(database::ConnectionAccess::session(*connection()).use_count(), 1);
    EXPECT_EQ(connection()->State(), dead ? 0 : 1);
    EXPECT_FALSE(siblings_.any_lives());
    EXPECT_LE(idle(), most_idle_);
    EXPECT_GE(idle() + lost_at_most(cut, by), idle_before);

    if (dead) connection()->Open(stage_.books.text());
    EXPECT_FALSE(connection()->in_transaction());
    // Warming a session up again is dear, and the rollback has left nothing to go on with.
    if (kind != lose_session || !transaction_) go_on(*object, found.outcome.left);
    witness().restore(tables_);
    object.reset();
    EXPECT_EQ(DllCanUnloadNow(), OMBRIX_OK);
  }

  /// The instance is as good as before.
  void go_on(Object& object, const Witness::State& left) {
    const bool repeated = subject_.all.again.empty() && run_.again.empty();
    siblings_.begin();
    set(object, arguments_, subject_.all.again);
    set(object, arguments_, run_.again);
    EXPECT_TRUE(ask(object)) << reason_of(object);
    if (repeated && left.counters == given().counters) {
      EXPECT_EQ(difference(look(), left_), "");
    }
    EXPECT_LE(idle(), most_idle_);
  }

  Found run_failing(const Cut& cut, By by, Object& object) {
    const std::string process = by == By::server ? Witness::process_of(connection()) : "";
    Breach breach(*connection(), cut, [&] {
      if (cut.refused()) siblings_.refuse(sibling_of(cut.call()));
      if (by == By::hook) return Fault{cut.kind, kDatabaseFailure, std::string(kReason)};
      EXPECT_GT(cut.loses(Call::Road::text) ? witness().end_sessions_but(process)
                                            : witness().end_session(process),
                0U);
      return Fault();
    });
    Found found;
    try {
      found.outcome.answer = call(object);
      found.outcome.reason = reason_of(object);
    } catch (const Failure& failure) {
      found.outcome.raised = true;
      found.outcome.reason = failure.description();
    }
    EXPECT_TRUE(breach.reached());
    found.noticed = breach.noticed();
    found.outcome.shown = box_->shown;
    found.outcome.left = look();
    return found;
  }

  void expect_outcome(const Cut& cut, By by, const Found& found) const {
    // A session that the server ended is missed by the first call that has to go there.
    const Cut noticed = cut_at(found.noticed.value_or(cut.place), cut.kind);
    const Outcome unnoticed{.answer = true, .reason = reason_left_, .left = left_};
    Outcome expected = found.noticed ? this->expected(noticed) : unnoticed;
    // Only a session that died may leave a number claimed.
    if (noticed.loses(Call::Road::object) && !transaction_ &&
        found.outcome.left.counters == before_[noticed.place].state.counters) {
      expected.left.counters = found.outcome.left.counters;
    }
    EXPECT_EQ(found.outcome.answer, expected.answer);
    EXPECT_EQ(found.outcome.raised, expected.raised);
    EXPECT_EQ(difference(found.outcome.left, expected.left), "");
    expect_told(found.outcome.reason, expected.reason, by);
    expect_told(found.outcome.shown, expected.shown, by);
  }

  /// A server tells in its own words how a session was lost.
  void expect_told(const std::string& found, const std::string& expected, By by) const {
    const auto told = expected.find(kReason);
    if (by == By::hook || told == std::string::npos) {
      EXPECT_EQ(found, expected);
      return;
    }
    EXPECT_TRUE(found.starts_with(expected.substr(0, told) + std::string(kLost))) << found;
    const std::string password = database::ConnectionText(stage_.books.text())["password"];
    EXPECT_TRUE(password.empty() || found.find(password) == std::string::npos);
  }

  Outcome expected(const Cut& cut) const {
    const Before& before = before_[cut.place];
    Outcome outcome{.left = {before.state.tables, given().counters}};
    for (const auto& [series, number] : before.moved_on) outcome.left.counters[series] = number;
    if (frames_transaction(cut.call())) {
      outcome.rises(cut);
    } else {
      outcome.trapped(cut, posts_tax(cut) ? Trap::silent : subject_.trap);
      for (const Rule& rule : subject_.rules) rule.apply(cut, outcome);
    }
    if (transaction_ && !outcome.answer) outcome.left = given();
    return outcome;
  }

  /// Sessions that read through the text: the hook takes one, the server all that are at work, and
  /// no method holds more than two.
  static std::size_t lost_at_most(const Cut& cut, By by) {
    if (!cut.loses(Call::Road::text)) return 0;
    return by == By::server ? 2 : 1;
  }

  std::string title() const {
    return subject_.method() + ", " + std::string(run_.settings) +
           (transaction_ ? ", in a transaction" : "");
  }
  std::string title(const Cut& cut, By by) const {
    const char* const kinds[] = {"", "raises", "answers False", "loses the session"};
    return title() + ": call " + std::to_string(cut.place + 1) + " " +
           (by == By::server ? "finds the session ended"
                             : kinds[static_cast<std::size_t>(cut.kind)]) +
           ": " + cut.call().text;
  }

  const Stage& stage_;
  const Subject& subject_;
  const std::shared_ptr<Box> box_ = std::make_shared<Box>();
  Siblings siblings_;

  Run run_{};
  bool transaction_ = false;
  std::vector<Value> arguments_;
  Value answer_;
  std::vector<Call> journal_;
  std::vector<Before> before_;  ///< each call
  Witness::Tables tables_;      ///< those that the method changes
  Witness::State left_;         ///< behind the last one
  std::string reason_left_;
  std::size_t most_idle_ = 0;
  std::size_t cases_ = 0;
  /// The calls of this run and of earlier ones, alone and in a transaction.
  std::set<std::string> shown_[2];
};

class SweepTest : public ::testing::TestWithParam<std::tuple<std::string, std::size_t>> {
 protected:
  static void TearDownTestSuite() { stage_.reset(); }

  const Subject& subject() const { return subjects()[std::get<1>(GetParam())]; }
  const Stage& stage() const {
    const std::string& database = std::get<0>(GetParam());
    if (!stage_ || stage_->books.kind() != database) stage_ = std::make_unique<Stage>(database);
    return *stage_;
  }

 private:
  static std::unique_ptr<Stage> stage_;
};
std::unique_ptr<Stage> SweepTest::stage_;

INSTANTIATE_TEST_SUITE_P(Each, SweepTest,
                         ::testing::Combine(::testing::ValuesIn(databases()),
                                            ::testing::Range<std::size_t>(0, subjects().size())),
                         [](const auto& chosen) {
                           const Subject& subject = subjects()[std::get<1>(chosen.param)];
                           return subject.document + "_" + subject.method() + "_" +
                                  std::get<0>(chosen.param);
                         });

TEST_P(SweepTest, leaves_what_it_must_whichever_call_fails) {
  const std::size_t cases = Sweeper(stage(), subject()).sweep();
  std::cout << "[  sweep   ] " << cases << " cases\n";
}

/// A class that gets a method gets it swept. These three look at nothing but the instance.
TEST(SweepTableTest, has_a_row_for_each_method) {
  std::set<std::string> missing;
  for (const Shipped& each : shipped()) {
    if (each.role() != Shipped::Role::business_class) continue;
    for (const MemberInfo& member : each.make()->members()) {
      if (member.access != Access::call) continue;
      missing.insert(std::string(each.name()) + "." + std::string(member.name));
    }
  }
  for (const Subject& subject : subjects()) {
    const std::string class_name(made(subject.document)->class_name());
    missing.erase(class_name + "." + subject.method());
  }
  EXPECT_EQ(missing, (std::set<std::string>{"OmbrixPurchase.PurchaseInvoice.StringValidation",
                                            "OmbrixPurchase.VendorOB.Validation"}));
}

}  // namespace

void Outcome::trapped(const Cut& cut, Trap trap) {
  raised = false;
  shown.clear();
  const std::string number = std::to_string(kDatabaseFailure);
  const bool first = trap == Trap::first_reason && cut.reason_then.empty();
  const bool tells = first || trap == Trap::plain;
  reason = cut.refused() || tells ? cut.reason : cut.reason_then;
  if (cut.refused()) return;
  if (trap == Trap::numbered) reason = number + " : " + cut.reason;
  if (trap == Trap::numbered_close) reason = number + cut.reason;
  if (trap == Trap::message_box) shown = cut.reason;
}

void Outcome::rises(const Cut& cut) {
  raised = !cut.refused();
  reason = cut.reason;
}

}  // namespace ombrix::testing
