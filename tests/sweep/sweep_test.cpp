#include "sweep/sweep.h"

#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include "ombrix/dialogue.h"
#include "ombrix/entry_points.h"

#include "database/connection_access.h"
#include "database/connection_text.h"
#include "database/session_pool.h"
#include "sweep/siblings.h"

namespace ombrix::testing {

namespace {

using enum Fault::Kind;

const std::string kReason = "This call was made to fail.";
const std::string kLost = "The session with the server is lost: ";

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

  Books books;
  Witness witness{(given_documents(books), books)};
};

bool is_member(const Call& call) {
  return call.kind == Call::Kind::assign || call.kind == Call::Kind::fetch;
}
bool may_write(const Call& call) {
  return writes_row(call.kind) || call.text.find("Returning") != std::string::npos;
}
/// "OmbrixSystem.General" of "OmbrixSystem.General.GetFldValue".
std::string sibling_of(const Call& call) {
  return call.text.substr(0, call.text.rfind('.'));
}

/// What a call is whatever its values are.
std::string shape_of(const Call& call) {
  std::string shape = std::to_string(static_cast<int>(call.kind)) +
                      (call.road == Call::Road::text ? " text " : " ");
  bool quoted = false;
  for (const char c : call.text) {
    if (c == '\'') quoted = !quoted;
    if (!quoted && (c < '0' || c > '9')) shape += c;
  }
  return shape;
}

/// Whether the call belongs to the posting of tax, whose trap is silent whichever method runs it:
/// from the look for the authorities up to the first thing that a tax line has no part in.
bool posts_tax(const Cut& cut) {
  for (std::size_t place = cut.place + 1; place-- > 0;) {
    const auto& [kind, road, text, cursor, lock, options, rows] = cut.journal[place];
    if (text.starts_with("select TaxAuthorityCode")) return true;
    const bool ledger = text.starts_with("OmbrixAccounts.GeneralLedger");
    if (road == Call::Road::sibling && !ledger) return false;
    if (text.starts_with("Select Document_Next_No")) return false;
  }
  return false;
}

/// One subject on one database.
class Sweeper {
 public:
  Sweeper(const Stage& stage, const Subject& subject) : stage_(stage), subject_(subject) {
    set_dialogue(box_);
    witness().restore(witness().changed(witness().look()));
  }
  ~Sweeper() { set_dialogue(nullptr); }
  Sweeper(const Sweeper&) = delete;
  Sweeper& operator=(const Sweeper&) = delete;

  /// Answers how many cases it showed.
  std::size_t sweep() {
    for (const Run& run : subject_.runs) {
      for (const bool transaction : {false, true}) {
        if (transaction && subject_.alone) continue;
        run_ = run;
        transaction_ = transaction;
        find_tables();
        run_clean();
        if (::testing::Test::HasFailure()) return cases_;
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
  Witness::State look() const { return witness().look(tables_); }
  Connection& connection() const { return *stage_.books.connection(); }
  bool on_server() const { return stage_.books.kind() == "PostgreSQL"; }
  std::size_t idle() const { return database::SessionPool::instance().idle(stage_.books.text()); }

  /// Once asked while it knew nothing, which leaves the reason that a silent trap keeps.
  Instance instance() {
    Instance instance(subject_.document);
    try {
      instance.ask(subject_.call);
    } catch (const Failure&) {
      // Some want a connection before they can say no.
    }
    instance.fill(stage_.books);
    instance.set(subject_.all.settings);
    instance.set(run_.settings);
    siblings_.begin();
    *box_ = Box();
    return instance;
  }
  bool call(Instance& instance) const {
    const auto method = [&] { return instance.ask(subject_.call); };
    return transaction_ ? all_or_nothing(connection(), method) : method();
  }
  void watch(FaultHook hook, Observer observer) const {
    connection().inject(std::move(hook));
    connection().observe(std::move(observer));
  }

  /// To look at all of them before each call would be slow.
  void find_tables() {
    SCOPED_TRACE(title() + ": nothing fails");
    Instance instance = this->instance();
    EXPECT_TRUE(call(instance)) << instance.reason();
    tables_ = witness().changed(witness().look());
    witness().restore(tables_);
  }

  /// What stands before each call, those inside a sibling's included, is what must stand when that
  /// call fails. Numbers that were moved on by then stay drawn.
  void run_clean() {
    SCOPED_TRACE(title() + ": nothing fails");
    Instance instance = this->instance();
    journal_.clear();
    before_.clear();
    Standing now{given()};
    const auto update = [&] {
      const bool written = !journal_.empty() && may_write(journal_.back());
      if (written && !transaction_) now.state = look();
      now.reason = instance.reason();
      now.moved_on = siblings_.moved_on();
    };
    watch(
        [&](const Call& coming) {
          update();
          before_.push_back(now);
          journal_.push_back(coming);
          now.depth += coming.kind == Call::Kind::invoke;
          return Fault();
        },
        [&](const Call& done) { now.depth -= done.kind == Call::Kind::invoke; });
    EXPECT_TRUE(call(instance));
    watch({}, {});
    EXPECT_FALSE(journal_.empty());
    now.state = look();
    now.reason = instance.reason();
    left_ = now;
    witness().restore(tables_);
    most_idle_ = idle();
  }

  /// A call and the three before it, whatever their values are: a method may make it in several
  /// places, while a sibling asks the same whoever calls it.
  std::string likeness(std::size_t place) const {
    std::string like = shape_of(journal_[place]);
    const int depth = before_[place].depth;
    for (int more = is_member(journal_[place]) ? 0 : 3; more > 0 && place-- > 0;) {
      if (before_[place].depth > depth || is_member(journal_[place])) continue;
      like += '\n' + shape_of(journal_[place]);
      more = before_[place].depth < depth ? 0 : more - 1;
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
    fail(place, raise);
    if (call.kind == Call::Kind::invoke) fail(place, answer_false);
    if (!concerns_sibling(call.kind)) fail(place, lose_session);
  }

  Cut cut_at(std::size_t place, Fault::Kind kind) const {
    const std::string refusal = Siblings::refusal(sibling_of(journal_[place]));
    return {journal_,       place, kind,   kind == answer_false ? refusal : kReason,
            before_[place], left_, given()};
  }
  /// A server ends a session itself, just before the call.
  bool ends_session(const Cut& cut) const { return on_server() && cut.kind == lose_session; }

  /// All that can be told from outside about a run in which a call failed.
  void fail(std::size_t place, Fault::Kind kind) {
    ++cases_;
    const Cut cut = cut_at(place, kind);
    SCOPED_TRACE(title(cut));
    std::optional<Instance> instance = this->instance();
    const std::size_t idle_before = idle();
    const bool dead = cut.loses(Call::Road::object);
    const Outcome outcome = run_failing(cut, *instance);

    // One reference is the connection's own: an open recordset would hold another.
    EXPECT_EQ(database::ConnectionAccess::session(connection()).use_count(), 1);
    EXPECT_EQ(connection().State(), dead ? 0 : 1);
    EXPECT_FALSE(siblings_.any_lives());
    EXPECT_LE(idle(), most_idle_);
    // The hook takes one session that reads through the text, a server all that are at work; no
    // method holds more than two.
    const std::size_t lost = ends_session(cut) ? 2 : 1;
    EXPECT_GE(idle() + (cut.loses(Call::Road::text) ? lost : 0), idle_before);

    if (dead) connection().Open(stage_.books.text());
    EXPECT_FALSE(connection().in_transaction());
    // Warming a session up again is dear, and a rollback has left nothing to go on with.
    if (kind != lose_session || !transaction_) go_on(*instance, outcome.state.counters);
    witness().restore(tables_);
    instance.reset();
    EXPECT_EQ(DllCanUnloadNow(), OMBRIX_OK);
  }

  /// The instance is as good as before.
  void go_on(Instance& instance, const Witness::Counters& counters) {
    const bool repeated = subject_.all.again.empty() && run_.again.empty();
    siblings_.begin();
    instance.set(subject_.all.again);
    instance.set(run_.again);
    EXPECT_TRUE(instance.ask(subject_.call)) << instance.reason();
    if (repeated && counters == given().counters) {
      EXPECT_EQ(difference(look(), left_.state), "");
    }
    EXPECT_LE(idle(), most_idle_);
  }

  Fault strike(const Cut& cut, const std::string& process) {
    if (cut.refused()) siblings_.refuse(sibling_of(cut.call()));
    if (!ends_session(cut)) return {cut.kind, kDatabaseFailure, kReason};
    using enum Witness::Which;
    const auto which = cut.loses(Call::Road::text) ? others : this_one;
    EXPECT_GT(witness().end_sessions(which, process), 0U);
    return {};
  }

  Outcome run_failing(const Cut& cut, Instance& instance) {
    const std::string process =
        ends_session(cut) ? Witness::process_of(stage_.books.connection()) : "";
    std::size_t asked = 0;
    // A session that the server ended is missed by the first call that has to go there: it is under
    // way when another call comes, or none does. Nobody may miss it.
    std::optional<std::size_t> under_way, noticed;
    watch(
        [&](const Call& call) {
          if (!noticed) noticed = under_way;
          const std::size_t place = asked++;
          if (!noticed && !concerns_sibling(call.kind)) under_way = place;
          if (place != cut.place) return Fault();
          EXPECT_EQ(call.kind, cut.call().kind);
          const Fault fault = strike(cut, process);
          if (fault.kind != none) noticed = place;
          return fault;
        },
        [&](const Call& call) {
          if (!concerns_sibling(call.kind)) under_way.reset();
        });
    Outcome found;
    try {
      found.answer = call(instance);
      found.reason = instance.reason();
    } catch (const Failure& failure) {
      found.raised = true;
      found.reason = failure.description();
    }
    watch({}, {});
    EXPECT_GT(asked, cut.place);
    found.shown = box_->shown;
    found.state = look();
    if (!noticed) noticed = under_way;
    expect(found, noticed ? expected(cut_at(*noticed, cut.kind), found) : unnoticed(), cut);
    return found;
  }

  Outcome unnoticed() const {
    return {.state = left_.state, .answer = true, .reason = left_.reason};
  }
  Outcome expected(const Cut& cut, const Outcome& found) const {
    Outcome outcome{{cut.before.state.tables, given().counters}};
    auto& counters = outcome.state.counters;
    for (const auto& [series, number] : cut.before.moved_on) counters[series] = number;
    // Only a session that died may leave a number claimed.
    const auto& claimed = cut.before.state.counters;
    if (cut.loses(Call::Road::object) && found.state.counters == claimed) counters = claimed;
    if (cut.call().kind == Call::Kind::begin || cut.call().kind == Call::Kind::commit) {
      outcome.meets(std::nullopt, cut);
    } else {
      outcome.meets(posts_tax(cut) ? Trap::silent : Trap::plain, cut);
      for (const Rule& rule : subject_.rules) rule.apply(cut, outcome);
    }
    if (transaction_ && !outcome.answer) outcome.state = given();
    return outcome;
  }

  void expect(const Outcome& found, const Outcome& expected, const Cut& cut) const {
    EXPECT_EQ(found.answer, expected.answer);
    EXPECT_EQ(found.raised, expected.raised);
    EXPECT_EQ(difference(found.state, expected.state), "");
    expect_told(found.reason, expected.reason, cut);
    expect_told(found.shown, expected.shown, cut);
  }

  /// A server tells in its own words how a session was lost.
  void expect_told(const std::string& found, const std::string& expected, const Cut& cut) const {
    const auto told = expected.find(kReason);
    if (!ends_session(cut) || told == std::string::npos) {
      EXPECT_EQ(found, expected);
      return;
    }
    EXPECT_TRUE(found.starts_with(expected.substr(0, told) + kLost)) << found;
    const std::string password = database::ConnectionText(stage_.books.text())["password"];
    EXPECT_TRUE(password.empty() || found.find(password) == std::string::npos);
  }

  std::string title() const {
    return subject_.method() + " " + run_.settings + (transaction_ ? ", in a transaction" : "");
  }
  std::string title(const Cut& cut) const {
    const char* const kinds[] = {"", "raises", "answers False", "loses the session"};
    return title() + ": call " + std::to_string(cut.place + 1) + " " +
           kinds[static_cast<std::size_t>(cut.kind)] + ": " + cut.call().text;
  }

  const Stage& stage_;
  const Subject& subject_;
  const std::shared_ptr<Box> box_ = std::make_shared<Box>();
  Siblings siblings_;

  Run run_{};
  bool transaction_ = false;
  Witness::Tables tables_;  ///< those that the method changes
  std::vector<Call> journal_;
  std::vector<Standing> before_;  ///< each call
  Standing left_;                 ///< behind the last one
  std::size_t most_idle_ = 0;
  std::size_t cases_ = 0;
  /// The calls of this run and of earlier ones, alone and in a transaction.
  std::set<std::string> shown_[2];
};

class SweepTest : public ::testing::TestWithParam<std::tuple<std::string, std::size_t>> {
 protected:
  static void TearDownTestSuite() { stage_.reset(); }

  static const Stage& stage_on(const std::string& database) {
    if (!stage_ || stage_->books.kind() != database) stage_ = std::make_unique<Stage>(database);
    return *stage_;
  }

 private:
  static inline std::unique_ptr<Stage> stage_;
};

std::string name_of(const ::testing::TestParamInfo<SweepTest::ParamType>& chosen) {
  const auto& [database, place] = chosen.param;
  return subjects()[place].document + "_" + subjects()[place].method() + "_" + database;
}
INSTANTIATE_TEST_SUITE_P(Each, SweepTest,
                         ::testing::Combine(::testing::ValuesIn(databases()),
                                            ::testing::Range<std::size_t>(0, subjects().size())),
                         name_of);

TEST_P(SweepTest, leaves_what_it_must_whichever_call_fails) {
  const auto& [database, place] = GetParam();
  const std::size_t cases = Sweeper(stage_on(database), subjects()[place]).sweep();
  std::cout << "[  sweep   ] " << cases << " cases\n";
}

/// A class that gets a method gets it swept; these two look at nothing but the instance.
TEST(SubjectsTest, are_all_methods) {
  std::set<std::string> missing;
  for (const Shipped& each : shipped()) {
    if (each.role() != Shipped::Role::business_class) continue;
    for (const MemberInfo& member : each.make()->members()) {
      if (member.access != Access::call) continue;
      missing.insert(std::string(each.name()) + "." + std::string(member.name));
    }
  }
  for (const Subject& subject : subjects()) {
    missing.erase(Instance(subject.document).class_name() + "." + subject.method());
  }
  EXPECT_EQ(missing, (std::set<std::string>{"OmbrixPurchase.PurchaseInvoice.StringValidation",
                                            "OmbrixPurchase.VendorOB.Validation"}));
}

}  // namespace

}  // namespace ombrix::testing
