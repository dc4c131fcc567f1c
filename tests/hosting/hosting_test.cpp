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

#include "hosting/interface.h"
#include "support/books.h"
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
  const auto grid = std::make_shared<MemoryGrid>(2, 2);
  std::vector<Value> none, index{1}, nulls{line, Null()}, many{1, 2, 3};
  std::vector<Value> cell{0, 0}, outside{0, 2}, words{0, "b"};
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
      {450, [&] { order->get("LPONo", index); }},
      {449, [&] { grid->get("TextMatrix", index); }},
      {450, [&] { grid->get("TextMatrix", many); }},
      {9, [&] { grid->get("TextMatrix", outside); }},
      {13, [&] { grid->get("TextMatrix", words); }},
      {94, [&] { grid->let("TextMatrix", Null(), cell); }},
      {kNoSuchMember, [&] { grid->let("ValueMatrix", 1, cell); }},
      {kNoSuchMember, [&] { grid->get("Cell", none); }},
      {kNoSuchMember, [&] { grid->call("Rows", none); }},
      {kNoSuchMember, [&] { grid->set("Rows", grid); }}};
  for (const auto& [number, call] : refused) {
    EXPECT_EQ(raised_number(call), number) << raised_text(call);
  }
  EXPECT_TRUE(contains(raised_text(refused[0].second), "OmbrixPurchase.LPO.Nothing"));
  counter->let("CompanyPrefix", Null());
  EXPECT_EQ(counter->get("CompanyPrefix"), Value(""));
}

/// An object of the client's own: a member is what the test makes of it.
class Part final : public Object {
 public:
  /// Answers a get or a call; an assignment passes its value behind the arguments.
  using Body = std::function<Value(std::string_view member, std::span<Value> arguments)>;
  explicit Part(std::string name, Body body = {})
      : name_(std::move(name)), body_(std::move(body)) {}

  std::string_view class_name() const override { return name_; }
  Value get(std::string_view member, std::span<Value> arguments) override {
    return body_(member, arguments);
  }
  void let(std::string_view member, const Value& value, std::span<Value> arguments) override {
    std::vector<Value> all(arguments.begin(), arguments.end());
    all.push_back(value);
    body_(member, all);
  }
  void set(std::string_view, const ObjectRef&) override {}
  Value call(std::string_view member, std::span<Value> arguments) override {
    return body_(member, arguments);
  }

 private:
  std::string name_;
  Body body_;
};

Registration registered(const std::string& name, const std::string& as) {
  return Registration(name, [as] { return std::make_shared<Part>(as); });
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

TEST(LateGrid, ReachesItsCellsByTheMembersOfTheClientsObject) {
  std::string asked;
  int lacking = 0;
  const auto control =
      std::make_shared<Part>("Screen", [&](std::string_view member, std::span<Value> arguments) {
        asked.append(member);
        for (const Value& argument : arguments) asked.append(" ").append(argument.to_text());
        asked += ";";
        if (lacking != 0 && member == "ValueMatrix") throw Failure(lacking, "not today");
        return member == "TextMatrix" ? Value("12.5") : Value(7);
      });
  const auto grid = as_grid(control);
  EXPECT_EQ(object_of(grid), control);
  EXPECT_EQ(grid->Rows(), 7);
  grid->Rows(5);
  grid->TextMatrix(1, 2, "box");
  EXPECT_EQ(grid->TextMatrix(1, 2), "12.5");
  EXPECT_EQ(grid->ValueMatrix(1, 2), 7);
  grid->Cell(13, 1, 0, 2, 18, true);
  EXPECT_EQ(asked,
            "Rows;Rows 5;TextMatrix 1 2 box;TextMatrix 1 2;ValueMatrix 1 2;Cell 13 1 0 2 18 True;");
  lacking = 438;
  EXPECT_EQ(grid->ValueMatrix(1, 2), 12.5);
  lacking = 9;
  EXPECT_EQ(raised_number([&] { grid->ValueMatrix(1, 2); }), 9);
  EXPECT_EQ(as_grid(nullptr), nullptr);
  EXPECT_EQ(raised_number([] { as_grid(create_object("OmbrixSystem.General")); }), 13);
}

/// What an order lends to others may be taken from it, or replaced, while it is being saved.
class LentTest : public OnEachDatabase {
 protected:
  LentTest() {
    for (const auto& [member, text] : {std::pair{"CompanyPrefix", "AA"},
                                       {"BranchPrefix", "BR"},
                                       {"DocumentPrefix", "PO"},
                                       {"VendorCode", "V"},
                                       {"VendorName", "Mills"},
                                       {"CurrencyCode", "AED"},
                                       {"LPODate", "2024-03-01"}}) {
      order->let(member, text);
    }
    order->set("AdoConnectionObject", books.connection());
  }
  /// A grid of one line.
  static Value cell_of(std::string_view member, std::span<Value> cell) {
    if (member == "Rows") return 2;
    const int column = cell[1].to_long();
    return column == 1 ? "1001" : column == 15 ? "AABR001100" : "10";
  }
  bool create() { return order->call("Create_LPO", {}).to_flag(); }
  static double orders(const Books& books) {
    return books.value("Select Count(*) As V From LPO_Master").to_number();
  }

  ObjectRef order = create_object("OmbrixPurchase.LPO");
};
OMBRIX_ON_EACH_DATABASE(LentTest);

TEST_P(LentTest, a_grid_that_leaves_lives_to_the_end_of_the_method) {
  books.execute(
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix)"
      " Values ('PO', 'AA', 'BR')");
  auto grid = std::make_shared<Part>("Screen", [&](auto member, auto cell) {
    if (member != "Rows") order->set("GridName", nullptr);
    return cell_of(member, cell);
  });
  const std::weak_ptr<Part> left = grid;
  order->set("GridName", std::move(grid));
  EXPECT_TRUE(create()) << order->get("ErrDesc").to_text();
  EXPECT_TRUE(left.expired());
  EXPECT_EQ(orders(books), 1);
}

TEST_P(LentTest, a_counter_may_put_another_connection_in_place) {
  const Books other(GetParam());
  const Registration counter("OmbrixSystem.CounterTransaction", [&] {
    return std::make_shared<Part>("Counter", [&](auto, auto arguments) {
      if (arguments.size() == 2) arguments[0] = Value(ObjectRef(other.connection()));
      return Value(true);
    });
  });
  order->set("GridName", std::make_shared<Part>("Screen", cell_of));
  EXPECT_TRUE(create()) << order->get("ErrDesc").to_text();
  EXPECT_EQ(orders(books), 0);
  EXPECT_EQ(orders(other), 1);
}

}  // namespace
}  // namespace ombrix::testing
