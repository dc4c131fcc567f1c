#include "ombrix/value.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/failures.h"

namespace ombrix {
namespace {

using testing::raised_number;

constexpr std::int32_t kLongMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLongMin = std::numeric_limits<std::int32_t>::min();
constexpr double kDoubleMax = std::numeric_limits<double>::max();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A value only carries the reference, so the test needs no component behind it.
ObjectRef some_object() {
  const auto owner = std::make_shared<std::int64_t>(0);
  return ObjectRef(owner, reinterpret_cast<Object*>(owner.get()));
}

const struct {
  Value value;
  const char* text;
  double number;
  std::int32_t whole;
  bool flag;
} kConversions[] = {
    {Empty(), "", 0, 0, false},
    {true, "True", -1, -1, true},
    {false, "False", 0, 0, false},
    {kLongMin, "-2147483648", -2147483648.0, kLongMin, true},
    {-0.25, "-0.25", -0.25, 0, true},
    {3.5, "3.5", 3.5, 4, true},
    {-2.5, "-2.5", -2.5, -2, true},
    {0.1 + 0.2, "0.3", 0.1 + 0.2, 0, true},
    {2147483647.25, "2147483647.25", 2147483647.25, kLongMax, true},
    {Date(), "1899-12-30", 0, 0, false},
    {Date(1900, 1, 1, 18, 0, 0), "1900-01-01 18:00:00", 2.75, 3, true},
    {Date(1899, 12, 29, 18, 0, 0), "1899-12-29 18:00:00", -0.25, 0, true},
    {" 1,234.5 ", " 1,234.5 ", 1234.5, 1234, true},
    {"0.0", "0.0", 0, 0, false},
    {"-1", "-1", -1, -1, true},
};

TEST(Value, ConvertsToTextAndNumbersAsTheSuiteDoes) {
  for (const auto& c : kConversions) {
    EXPECT_EQ(c.value.to_text(), c.text);
    EXPECT_EQ(c.value.to_number(), c.number) << c.text;
    EXPECT_EQ(c.value.to_long(), c.whole) << c.text;
    EXPECT_EQ(c.value.to_flag(), c.flag) << c.text;
  }
  EXPECT_TRUE(Value("  tRUE ").to_flag());
  EXPECT_FALSE(Value(" FALSE").to_flag());
}

TEST(Value, ConvertsToADate) {
  const std::pair<Value, Date> cases[] = {{Empty(), Date()},
                                          {Date(2024, 3, 5, 1, 2, 3), Date(2024, 3, 5, 1, 2, 3)},
                                          {"05/03/2024 19:08", Date(2024, 3, 5, 19, 8)},
                                          {45356, Date(2024, 3, 5)},
                                          {45356.75, Date(2024, 3, 5, 18)},
                                          {-0.25, Date(1899, 12, 29, 18)},
                                          {true, Date(1899, 12, 29)},
                                          {-657434, Date(100, 1, 1)}};
  for (const auto& [value, date] : cases) EXPECT_EQ(value.to_date(), date) << value.to_text();
}

TEST(Value, KeepsEverySecondOfADateThroughItsNumber) {
  for (int second = 0; second < 86400; second += 7) {
    const Date date =
        Date::from_seconds(Date(9999, 12, 31).since_zero() + std::chrono::seconds(second));
    ASSERT_EQ(Value(Value(date).to_number()).to_date(), date) << date.stored_text();
  }
}

TEST(Value, RefusesWhatIsNotOfTheTarget) {
  using To = std::function<void(const Value&)>;
  const To text = [](const Value& value) { value.to_text(); };
  const To number = [](const Value& value) { value.to_number(); };
  const To whole = [](const Value& value) { value.to_long(); };
  const To flag = [](const Value& value) { value.to_flag(); };
  const To date = [](const Value& value) { value.to_date(); };
  const struct {
    To to;
    int failure;
    std::vector<Value> values;
  } cases[] = {{whole, 6, {2147483647.5, -2147483649.0, "3000000000", kNaN}},
               {flag, 6, {"-1e400"}},
               {text, 6, {INFINITY}},
               {date, 6, {2958466.0, -657434.5, 1e300, kNaN}},
               {number, 13, {"", "abc", "12abc", "2024-03-05", "True"}},
               {whole, 13, {"", "abc", "12abc"}},
               {flag, 13, {"", "yes", "Tru", "True False", "-"}},
               {date, 13, {"", "45356", "2024-02-30"}}};
  for (const auto& c : cases) {
    for (const Value& value : c.values) {
      EXPECT_EQ(raised_number([&] { c.to(value); }), c.failure) << &c - cases;
    }
  }
  for (const To& to : {text, number, whole, flag, date}) {
    EXPECT_EQ(raised_number([&] { to(Null()); }), 94);
    EXPECT_EQ(raised_number([&] { to(some_object()); }), 13);
    EXPECT_EQ(raised_number([&] { to(ObjectRef()); }), 13);
  }
  EXPECT_EQ(Value(2147483647.4).to_long(), kLongMax);
  EXPECT_EQ(Value(-2147483648.5).to_long(), kLongMin);
  EXPECT_EQ(Value(Null()).text_or_empty(), "");
  EXPECT_EQ(Value(7).text_or_empty(), "7");
}

TEST(Arithmetic, CarriesNullOnAndConvertsTheRest) {
  EXPECT_EQ(sum(2, "1.5"), Value(3.5));
  EXPECT_EQ(sum(Empty(), 2), Value(2.0));
  EXPECT_EQ(product(true, 4), Value(-4.0));
  EXPECT_EQ(sum(Null(), 1), Value(Null()));
  EXPECT_EQ(sum("abc", Null()), Value(Null()));
  EXPECT_EQ(product(1, Null()), Value(Null()));
  EXPECT_EQ(raised_number([] { sum(1, "abc"); }), 13);
  EXPECT_EQ(raised_number([] { product(some_object(), 1); }), 13);
}

TEST(Arithmetic, RaisesWhereItWouldLeaveTheNumbers) {
  EXPECT_EQ(quotient(7, 2), 3.5);
  EXPECT_EQ(quotient(0, 2), 0);
  EXPECT_EQ(raised_number([] { sum(kDoubleMax, kDoubleMax); }), 6);
  EXPECT_EQ(raised_number([] { product(kDoubleMax, -2); }), 6);
  EXPECT_EQ(raised_number([] { quotient(kDoubleMax, 0.5); }), 6);
  for (const double zero : {0.0, -0.0}) {
    EXPECT_EQ(raised_number([&] { quotient(1, zero); }), 11);
    EXPECT_EQ(raised_number([&] { quotient(0, zero); }), 11);
  }
}

}  // namespace
}  // namespace ombrix
