#include <algorithm>
#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "ombrix/components.h"
#include "ombrix/connection.h"
#include "ombrix/dialogue.h"
#include "ombrix/entry_points.h"
#include "ombrix/grid.h"
#include "ombrix/purchase/lpo.h"

#include "frame/hosting/dialogue.h"
#include "frame/hosting/hosted.h"
#include "frame/hosting/interface.h"
#include "frame/hosting/sibling.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

constexpr int kNoSuchName = 429;
constexpr int kNoSuchMember = 438;

/// A class with one member of each kind.
class Sample {
 public:
  TrimmedText Trimmed;
  Text Plain;
  Number Amount;
  Flag Marked;
  Day When;
  Property<std::string, Access::get> Told;
  Property<double, Access::let> Secret;
  Property<std::shared_ptr<Connection>, Access::set> Line;
  Reference<Grid> Lines;

  bool Swap(std::string& left, std::string& right) {
    std::swap(left, right);
    return true;
  }
  std::string Join(const std::string& first, std::optional<std::string> second,
                   std::optional<Value> third) {
    return first + "," + second.value_or("none") + "," +
           (third ? third->text_or_empty() : std::string("none"));
  }
  void Reset() { Plain = "reset"; }
};

template <Nulls nulls>
const Interface& sample_interface() {
  using Of = MembersOf<Sample, nulls>;
  static constexpr Member kMembers[] = {
      Of::template property<&Sample::Trimmed>("Trimmed"),
      Of::template property<&Sample::Plain>("Plain"),
      Of::template property<&Sample::Amount>("Amount"),
      Of::template property<&Sample::Marked>("Marked"),
      Of::template property<&Sample::When>("When"),
      Of::template property<&Sample::Told>("Told"),
      Of::template property<&Sample::Secret>("Secret"),
      Of::template property<&Sample::Line>("Line"),
      Of::template property<&Sample::Lines>("Lines"),
      Of::template method<&Sample::Swap>("Swap"),
      Of::template method<&Sample::Join>("Join"),
      Of::template method<&Sample::Reset>("Reset"),
  };
  static constexpr Interface kInterface("Test.Sample", kMembers);
  return kInterface;
}

class LateCalls : public ::testing::Test {
 protected:
  Value call(const std::string& member, std::vector<Value> arguments = {}) {
    return object->call(member, arguments);
  }
  int let_number(const std::string& member, const Value& value) {
    return raised_number([&] { object->let(member, value); });
  }

  ObjectRef object = std::make_shared<Hosted<Sample>>(sample_interface<Nulls::raise>());
  ObjectRef component = std::make_shared<Hosted<Sample>>(sample_interface<Nulls::read_as_empty>());
};

TEST_F(LateCalls, SetAsTheMembersOwnSetterDoes) {
  object->let("TRIMMED", "  a b  ");
  object->let("plain", "  a b  ");
  object->let("Amount", " 1,234.5 ");
  object->let("Marked", "true");
  object->let("When", "2024-02-29");
  EXPECT_EQ(object->get("trimmed"), Value("a b"));
  EXPECT_EQ(object->get("Plain"), Value("  a b  "));
  EXPECT_EQ(object->get("Amount"), Value(1234.5));
  EXPECT_EQ(object->get("Marked"), Value(true));
  EXPECT_EQ(object->get("When"), Value(Date(2024, 2, 29)));
  EXPECT_EQ(let_number("Amount", "many"), 13);
  EXPECT_EQ(let_number("Amount", "1e400"), 6);
  EXPECT_EQ(object->get("Amount"), Value(1234.5));
}

TEST_F(LateCalls, KeepToTheRightsOfAMember) {
  const auto line = std::make_shared<Connection>();
  const std::vector<std::function<void()>> refused = {
      [&] { object->get("Nothing"); },
      [&] { object->let("Told", "x"); },
      [&] { object->get("Secret"); },
      [&] { object->get("Line"); },
      [&] { object->let("Line", line); },
      [&] { object->set("Plain", line); },
      [&] { call("Plain"); },
      [&] { object->get("Swap"); },
      [&] { object->let("Lines", "grid"); },
  };
  for (const auto& each : refused) EXPECT_EQ(raised_number(each), kNoSuchMember);
  EXPECT_TRUE(contains(raised_text(refused[0]), "Test.Sample.Nothing"));
  object->let("Secret", 1);
  object->set("Line", line);
  EXPECT_EQ(object->get("Told"), Value(""));
}

TEST_F(LateCalls, TakeAnObjectOfTheRightKindOrNothing) {
  const auto grid = std::make_shared<MemoryGrid>(1, 1);
  object->set("Lines", grid);
  EXPECT_EQ(object->get("Lines").to_object(), grid);
  EXPECT_EQ(raised_number([&] { object->set("Line", grid); }), 13);
  object->set("Lines", nullptr);
  EXPECT_EQ(object->get("Lines").to_object(), nullptr);
}

TEST_F(LateCalls, CountTheirArguments) {
  EXPECT_EQ(call("Join", {"a"}), Value("a,none,none"));
  EXPECT_EQ(call("Join", {"a", "b"}), Value("a,b,none"));
  EXPECT_EQ(call("Join", {1, 2.5, Null()}), Value("1,2.5,"));
  EXPECT_EQ(raised_number([&] { call("Join"); }), 449);
  EXPECT_EQ(raised_number([&] { call("Join", {1, 2, 3, 4}); }), 450);
  EXPECT_EQ(raised_number([&] { call("Reset", {1}); }), 450);
  std::vector<Value> index{1};
  EXPECT_EQ(raised_number([&] { object->get("Plain", index); }), 450);
  EXPECT_EQ(call("RESET"), Value());
  EXPECT_EQ(object->get("Plain"), Value("reset"));
}

TEST_F(LateCalls, BringArgumentsByReferenceBack) {
  std::vector<Value> arguments{"left", 2};
  EXPECT_EQ(object->call("Swap", arguments), Value(true));
  EXPECT_EQ(arguments, (std::vector<Value>{"2", "left"}));
}

TEST_F(LateCalls, RaiseForANullInAClassAndReadItAsEmptyInAComponent) {
  for (const char* member : {"Plain", "Amount", "Marked", "When"}) {
    EXPECT_EQ(let_number(member, Null()), 94) << member;
    component->let(member, Null());
  }
  EXPECT_EQ(component->get("Plain"), Value(""));
  EXPECT_EQ(component->get("Amount"), Value(0.0));
  EXPECT_EQ(component->get("Marked"), Value(false));
  EXPECT_EQ(raised_number([&] { call("Join", {Null()}); }), 94);
  std::vector<Value> nulls{Null(), Null(), Null()};
  EXPECT_EQ(component->call("Join", nulls), Value(",,"));
}

/// A component of the client's that tells its name and notes what is done to it.
class Fake final : public Object {
 public:
  explicit Fake(std::string name, std::vector<std::string>* notes = nullptr)
      : name_(std::move(name)), notes_(notes) {}
  std::string_view class_name() const override { return name_; }
  Value get(std::string_view member, std::span<Value>) override { return note("get", member); }
  void let(std::string_view member, const Value& value, std::span<Value>) override {
    note("let", member);
    if (notes_ != nullptr && value.is_null()) notes_->push_back("Null");
  }
  void set(std::string_view member, const ObjectRef&) override { note("set", member); }
  Value call(std::string_view member, std::span<Value> arguments) override {
    for (Value& argument : arguments) argument = "changed";
    return note("call", member);
  }

 private:
  Value note(const std::string& what, std::string_view member) {
    if (notes_ != nullptr) notes_->push_back(what + " " + std::string(member));
    return true;
  }
  std::string name_;
  std::vector<std::string>* notes_;
};

Registration registered(const std::string& name, const std::string& as) {
  return Registration(name, [as] { return std::make_shared<Fake>(as); });
}
std::string made(const std::string& name) {
  return std::string(create_object(name)->class_name());
}
bool can_be_made(const std::string& name) {
  const auto names = creatable_names();
  return std::find(names.begin(), names.end(), name) != names.end();
}

TEST(Registry, MakesWhatShipsWithoutRegardToCase) {
  EXPECT_EQ(made("OmbrixPurchase.LPO"), "OmbrixPurchase.LPO");
  EXPECT_EQ(made("ombrixsystem.GENERAL"), "OmbrixSystem.General");
  EXPECT_NE(create_object("OmbrixPurchase.LPO"), create_object("OmbrixPurchase.LPO"));
  const auto names = creatable_names();
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  EXPECT_TRUE(can_be_made("OmbrixSystem.CounterTransaction"));
}

TEST(Registry, RaisesForANameThatMakesNothing) {
  for (const std::string name : {"", "OmbrixPurchase", "OmbrixPurchase.LPO ", "Test.Nothing"}) {
    const Failure failure = raised([&] { create_object(name); });
    EXPECT_EQ(failure.number(), kNoSuchName) << name;
    EXPECT_EQ(failure.description(), "Component can't create object: " + name);
  }
  EXPECT_NE(raised_number([] { registered("", "x"); }), 0);
  EXPECT_NE(raised_number([] { Registration("Test.Empty", Factory()); }), 0);
  const Registration nothing("Test.Nothing", [] { return ObjectRef(); });
  EXPECT_EQ(raised_number([] { create_object("Test.Nothing"); }), kNoSuchName);
}

TEST(Registry, PutsAClientsComponentInPlaceOfWhatShips) {
  {
    const Registration own = registered("OMBRIXSYSTEM.general", "own");
    EXPECT_EQ(made("OmbrixSystem.General"), "own");
    const auto names = creatable_names();
    EXPECT_EQ(std::count(names.begin(), names.end(), "OmbrixSystem.General"), 1);
  }
  EXPECT_EQ(made("OmbrixSystem.General"), "OmbrixSystem.General");
}

TEST(Registry, LetsNestedRegistrationsEndInAnyOrder) {
  auto first = std::make_unique<Registration>(registered("Test.A", "first"));
  auto second = std::make_unique<Registration>(registered("test.a", "second"));
  auto third = std::make_unique<Registration>(registered("Test.A", "third"));
  EXPECT_EQ(made("Test.A"), "third");
  second.reset();
  EXPECT_EQ(made("Test.A"), "third");
  third.reset();
  EXPECT_EQ(made("TEST.A"), "first");
  EXPECT_TRUE(can_be_made("Test.A"));
  first.reset();
  EXPECT_EQ(raised_number([] { made("Test.A"); }), kNoSuchName);
  EXPECT_FALSE(can_be_made("Test.A"));
}

TEST(Registry, MayBeUsedFromManyThreadsAndByAFactory) {
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&wrong, name = "Test.T" + std::to_string(i)] {
      for (int round = 0; round < 200; ++round) {
        const Registration inner = registered(name + ".Inner", name);
        const Registration outer(name, [&] { return create_object(name + ".Inner"); });
        if (made(name) != name) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST(SiblingTest, IsAskedMemberByMemberInTheOrderGiven) {
  std::vector<std::string> notes;
  const Registration own("Test.Ledger", [&] { return std::make_shared<Fake>("ledger", &notes); });
  Sibling ledger("test.LEDGER", nullptr);
  ledger.set({{"DocumentNo", "A"}, {"Line", std::make_shared<Connection>()}, {"Memo", Null()}});
  std::vector<Value> arguments{1};
  EXPECT_TRUE(ledger.call("GLInsert", arguments));
  EXPECT_EQ(arguments[0], Value("changed"));
  EXPECT_EQ(ledger.get("ErrDesc"), Value(true));
  EXPECT_EQ(notes, (std::vector<std::string>{"let DocumentNo", "set Line", "let Memo", "Null",
                                             "call GLInsert", "get ErrDesc"}));
  EXPECT_EQ(raised_number([] { Sibling("Test.None", nullptr); }), kNoSuchName);
}

TEST(SiblingTest, IsWatchedAndMadeToFailThroughTheConnection) {
  std::vector<std::string> notes, seen;
  const Registration own("Test.Ledger", [&] { return std::make_shared<Fake>("ledger", &notes); });
  const auto instruments = std::make_shared<database::Instruments>();
  instruments->observer = [&](const Call& call) { seen.push_back(call.text); };
  Sibling ledger("Test.Ledger", instruments);
  ledger.set("DocumentNo", "A");
  instruments->hook = [](const Call&) { return Fault{Fault::Kind::answer_false, 0, "no"}; };
  EXPECT_FALSE(ledger.call("GLInsert"));
  EXPECT_EQ(raised_text([&] { ledger.get("ErrDesc"); }), "no");
  instruments->hook = [](const Call&) { return Fault{Fault::Kind::lose_session, 7, "gone"}; };
  EXPECT_EQ(raised_number([&] { ledger.call("GLInsert"); }), 7);
  EXPECT_EQ(notes, (std::vector<std::string>{"let DocumentNo"}));
  EXPECT_EQ(seen, (std::vector<std::string>{"Test.Ledger", "Test.Ledger.DocumentNo"}));
}

TEST(EntryPoints, EnterAndRemoveTheClassesAndNothingElse) {
  EXPECT_EQ(DllUnregisterServer(), OMBRIX_OK);
  EXPECT_EQ(raised_number([] { create_object("OmbrixPurchase.LPO"); }), kNoSuchName);
  EXPECT_FALSE(can_be_made("OmbrixPurchase.LPO"));
  EXPECT_EQ(made("OmbrixSystem.General"), "OmbrixSystem.General");
  EXPECT_EQ(DllRegisterServer(), OMBRIX_OK);
  EXPECT_TRUE(can_be_made("OmbrixPurchase.LPO"));
}

TEST(EntryPoints, HandOutTheFactoryOfAClass) {
  const ombrix_class_factory* factory = nullptr;
  ASSERT_EQ(DllGetClassObject("ombrixpurchase.lpo", &factory), OMBRIX_OK);
  const auto object = reinterpret_cast<const ClassFactory*>(factory)->make();
  EXPECT_EQ(object->class_name(), "OmbrixPurchase.LPO");
  for (const char* name : {"OmbrixSystem.General", "OmbrixPurchase.Nothing", ""}) {
    EXPECT_EQ(DllGetClassObject(name, &factory), OMBRIX_CLASS_NOT_AVAILABLE) << name;
    EXPECT_EQ(factory, nullptr);
  }
  EXPECT_EQ(DllGetClassObject(nullptr, &factory), OMBRIX_POINTER);
  EXPECT_EQ(DllGetClassObject("OmbrixPurchase.LPO", nullptr), OMBRIX_POINTER);
}

TEST(EntryPoints, TellWhetherAnyInstanceOfAClassLives) {
  EXPECT_EQ(DllCanUnloadNow(), OMBRIX_OK);
  auto late = create_object("OmbrixPurchase.LPO");
  {
    const purchase::LPO typed;
    late.reset();
    EXPECT_EQ(DllCanUnloadNow(), OMBRIX_FALSE);
  }
  const auto component = create_object("OmbrixSystem.General");
  EXPECT_EQ(DllCanUnloadNow(), OMBRIX_OK);
}

TEST(DialogueTest, GoesThroughTheClientsBoxes) {
  class Box final : public Dialogue {
   public:
    void message(std::string_view text, std::string_view title) override {
      shown = std::string(title) + ": " + std::string(text);
    }
    std::string input(std::string_view prompt, std::string_view title,
                      std::string_view preset) override {
      return std::string(title) + ": " + std::string(prompt) + std::string(preset);
    }
    std::string shown;
  };
  const auto box = std::make_shared<Box>();
  set_dialogue(box);
  show_message("Done");
  EXPECT_EQ(box->shown, "OmbrixPurchase: Done");
  EXPECT_EQ(ask("Number?", "12"), "OmbrixPurchase: Number?12");
  set_dialogue(nullptr);
  EXPECT_EQ(box.use_count(), 1);
}

TEST(DialogueTest, WritesToStandardErrorAndAnswersNothingWithoutAClient) {
  ::testing::internal::CaptureStderr();
  show_message("No rows");
  EXPECT_EQ(ask("Number?", "12"), "");
  const std::string written = ::testing::internal::GetCapturedStderr();
  EXPECT_TRUE(contains(written, "OmbrixPurchase")) << written;
  EXPECT_TRUE(contains(written, "No rows")) << written;
}

}  // namespace
}  // namespace ombrix::testing
