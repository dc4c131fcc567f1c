#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ombrix/components.h"
#include "ombrix/connection.h"
#include "ombrix/entry_points.h"
#include "ombrix/grid.h"
#include "ombrix/purchase/lpo.h"

#include "support/failures.h"

namespace ombrix::testing {
namespace {

constexpr int kNoSuchName = 429;
constexpr int kNoSuchMember = 438;

/// A class refuses a Null, a component of the suite reads it as empty.
TEST(LateCalls, KeepToTheRightsOfAMemberAndItsArguments) {
  const ObjectRef order = create_object("OmbrixPurchase.LPO");
  const ObjectRef counter = create_object("OmbrixSystem.CounterTransaction");
  const auto line = std::make_shared<Connection>();
  std::vector<Value> none, index{1}, nulls{line, Null()}, many{1, 2, 3};
  const std::pair<int, std::function<void()>> refused[] = {
      {kNoSuchMember, [&] { order->get("Nothing"); }},
      {kNoSuchMember, [&] { order->get("AdoConnectionObject"); }},
      {kNoSuchMember, [&] { order->let("AdoConnectionObject", line); }},
      {kNoSuchMember, [&] { order->set("LPONo", line); }},
      {kNoSuchMember, [&] { order->call("LPONo", none); }},
      {kNoSuchMember, [&] { order->get("Create_LPO"); }},
      {13, [&] { order->set("AdoConnectionObject", std::make_shared<MemoryGrid>(1, 1)); }},
      {13, [&] { order->let("AmtDig", "many"); }},
      {6, [&] { order->let("AmtDig", "1e400"); }},
      {94, [&] { order->let("VendorName", Null()); }},
      {449, [&] { counter->call("Get_Last_Counter", none); }},
      {450, [&] { counter->call("Get_Last_Counter", many); }},
      {450, [&] { order->call("Create_LPO", index); }},
      {450, [&] { order->get("LPONo", index); }}};
  for (const auto& [number, call] : refused) {
    EXPECT_EQ(raised_number(call), number) << raised_text(call);
  }
  EXPECT_TRUE(contains(raised_text(refused[0].second), "OmbrixPurchase.LPO.Nothing"));
  counter->let("CompanyPrefix", Null());
  EXPECT_EQ(counter->get("CompanyPrefix"), Value(""));
}

/// A component of the client's that tells its name.
class Fake final : public Object {
 public:
  explicit Fake(std::string name) : name_(std::move(name)) {}
  std::string_view class_name() const override { return name_; }
  Value get(std::string_view, std::span<Value>) override { return {}; }
  void let(std::string_view, const Value&, std::span<Value>) override {}
  void set(std::string_view, const ObjectRef&) override {}
  Value call(std::string_view, std::span<Value>) override { return {}; }

 private:
  std::string name_;
};

Registration registered(const std::string& name, const std::string& as) {
  return Registration(name, [as] { return std::make_shared<Fake>(as); });
}
std::string made(const std::string& name) {
  return std::string(create_object(name)->class_name());
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

TEST(Registry, LetsNestedRegistrationsOfANameEndInAnyOrder) {
  auto first = std::make_unique<Registration>(registered("ombrixsystem.GENERAL", "first"));
  auto second = std::make_unique<Registration>(registered("OmbrixSystem.General", "second"));
  auto third = std::make_unique<Registration>(registered("OMBRIXSYSTEM.General", "third"));
  EXPECT_EQ(made("OmbrixSystem.General"), "third");
  const auto names = creatable_names();
  EXPECT_EQ(std::count(names.begin(), names.end(), "OmbrixSystem.General"), 1);
  second.reset();
  EXPECT_EQ(made("OmbrixSystem.General"), "third");
  third.reset();
  EXPECT_EQ(made("ombrixsystem.general"), "first");
  first.reset();
  EXPECT_EQ(made("ombrixsystem.general"), "OmbrixSystem.General");
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

}  // namespace
}  // namespace ombrix::testing
