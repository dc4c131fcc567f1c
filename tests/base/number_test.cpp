#include "base/number.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "support/failures.h"

namespace ombrix {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

template <class... Numbers>
std::string general_texts(Numbers... numbers) {
  std::string all;
  ((all += (all.empty() ? "" : " ") + general_text(static_cast<double>(numbers))), ...);
  return all;
}

TEST(GeneralText, IsPlainWhileFifteenDigitsSufficeAndScientificBeyond) {
  EXPECT_EQ(general_texts(-0.0, -1200, 1234567.891, 0.1 + 0.2, 1.0 / 3, 2.0 / 3),
            "0 -1200 1234567.891 0.3 0.333333333333333 0.666666666666667");
  EXPECT_EQ(general_texts(123456789012345, -999999999999999, 123456789012345.6, 1e-15, 0.012345),
            "123456789012345 -999999999999999 123456789012346 0.000000000000001 0.012345");
  // Rounding to fifteen digits carries into a digit more.
  EXPECT_EQ(general_texts(0.99999999999999989, 999999.99999999988, 999999999999999.9, -1e15),
            "1 1000000 1E+15 -1E+15");
  EXPECT_EQ(general_texts(1234567890123456, 1.5e-15, 1e-16, -0.0012345678901234567, 1e100),
            "1.23456789012346E+15 1.5E-15 1E-16 -1.23456789012346E-03 1E+100");
  EXPECT_EQ(general_texts(kLargest, kSmallest), "1.79769313486232E+308 4.94065645841247E-324");
  for (const double number : {kInfinity, -kInfinity, kNaN}) {
    EXPECT_EQ(testing::raised_number([&] { general_text(number); }), 6);
  }
}

// The digits are rounded first; in numbers so large or so long the fifteenth digit decides.
TEST(RoundHalfEven, IsDecidedOnTheDecimalForm) {
  const std::array<double, 3> cases[] = {{1.5, 0, 2},
                                         {2.5, 0, 2},
                                         {99.95, 1, 100},
                                         {0.1 + 0.2, 2, 0.3},
                                         {1e-300, 6, 0},
                                         {0.0050001, 2, 0.01},
                                         {1.0 / 3, 1e6, 1.0 / 3},
                                         {2.345, 30, 2.345},
                                         {1.25e-30, 31, 1.2e-30},
                                         {2.345, 1.5, 2.34},
                                         {2.345, 2.5, 2.34},
                                         {2.345, -0.5, 2},
                                         {2.3450000001, 2, 2.35},
                                         {2.34499999999999, 2, 2.34},
                                         {3.4999999999999996, 0, 4},
                                         {1234567.125, 2, 1234567.12},
                                         {1234567.135, 2, 1234567.14},
                                         {12345678901234.564, 2, 12345678901234.56},
                                         {1234567890123456.75, 0, 1234567890123457},
                                         {9007199254740991, 2, 9007199254740991}};
  for (const auto& [number, digits, result] : cases) {
    EXPECT_EQ(round_half_even(number, digits), result) << number << " at " << digits;
    EXPECT_EQ(round_half_even(-number, digits), -result) << -number << " at " << digits;
  }
}

TEST(RoundHalfEven, AgreesWithWholeNumberArithmeticOnEveryThousandth) {
  for (int thousandths = 0; thousandths < 30000; ++thousandths) {
    int hundredths = thousandths / 10;
    const int rest = thousandths % 10;
    if (rest > 5 || (rest == 5 && hundredths % 2 == 1)) ++hundredths;
    ASSERT_EQ(round_half_even(thousandths / 1000.0, 2), hundredths / 100.0) << thousandths;
    ASSERT_EQ(round_half_even(thousandths / -1000.0, 2), hundredths / -100.0) << thousandths;
  }
}

TEST(RoundHalfEven, RefusesDigitsBelowZeroAndWhatIsNoNumberAndGivesNoNegativeZero) {
  EXPECT_EQ(testing::raised_number([] { round_half_even(1.5, -1); }), 5);
  EXPECT_EQ(testing::raised_number([] { round_half_even(1, -0.6); }), 5);
  EXPECT_EQ(testing::raised_number([] { round_half_even(kInfinity, 2); }), 6);
  EXPECT_EQ(testing::raised_number([] { round_half_even(1.5, kNaN); }), 6);
  for (const double number : {-0.0, -0.001, -0.005, -1e-300}) {
    EXPECT_FALSE(std::signbit(round_half_even(number, 2))) << number;
  }
}

TEST(NumberText, IsReadWhole) {
  const std::pair<std::string_view, double> cases[] = {
      {"  -12.50 ", -12.5},  {"+3", 3},
      {".5", 0.5},           {"5.", 5},
      {"1e-2", 0.01},        {" -1,5 ", -15},
      {"1,234.25", 1234.25}, {"1,000E2", 100000},
      {"1e400", kInfinity},  {"-1e400", -kInfinity},
      {"1e-400", 0},         {"4.9e-324", kSmallest}};
  for (const auto& [text, number] : cases) EXPECT_EQ(whole_number_text(text), number) << text;
  for (const auto text :
       {"",     "   ", "-",   ".",   "1 2", "- 1", "--1",  "1.2.3", "1e",   "e5",    "12a",
        "0x10", "inf", "nan", "\t1", ",1",  "1,",  "1,,2", "-,1",   "1,.5", "1.5,0", "1e1,0"}) {
    EXPECT_EQ(whole_number_text(text), std::nullopt) << text;
  }
}

TEST(NumberText, TellsLargeFromSmallWhereTheExponentMisleads) {
  const std::string zeros(400, '0');
  const std::pair<std::string, double> cases[] = {{"1e99999999999999999999", kInfinity},
                                                  {"-1e-99999999999999999999", 0},
                                                  {"0e99999999999999999999", 0},
                                                  {"1" + zeros, kInfinity},
                                                  {"1" + zeros + "e-5", kInfinity},
                                                  {"1" + zeros + "e-400", 1},
                                                  {"0." + zeros + "1", 0},
                                                  {"0." + zeros + "1e5", 0},
                                                  {"0." + zeros + "1e401", 1}};
  for (const auto& [text, number] : cases) EXPECT_EQ(whole_number_text(text), number) << text;
}

TEST(HeadNumber, StopsWhereTheNumberDoes) {
  const std::pair<std::string_view, double> cases[] = {
      {"", 0},          {"   ", 0},  {"abc", 0},          {"12", 12},        {"  12abc", 12},
      {"-3.5 7", -3.5}, {"+4%", 4},  {"1,234", 1},        {"1.2.3", 1.2},    {"1E2x", 100},
      {"1E", 1},        {"1E+", 1},  {"5e-x", 5},         {".5", 0.5},       {".", 0},
      {"-", 0},         {"- 5", 0},  {"-.e5", 0},         {"1e-400", 0},     {"inf", 0},
      {"&H10", 0},      {"0x1F", 0}, {"2.50 (net)", 2.5}, {"12'; drop", 12},
  };
  for (const auto& [text, number] : cases) EXPECT_EQ(head_number(text), number) << text;
  EXPECT_EQ(testing::raised_number([] { head_number("1e400 and more"); }), 6);
  EXPECT_EQ(testing::raised_number([] { head_number("-1e400"); }), 6);
}

TEST(PlainNumber, IsAllThatMayStandInAStatement) {
  for (const auto text : {"0", "12", "-12", "+1.5", ".5", "5.", "1e5", "1.5E-16", "-1E+15"}) {
    EXPECT_TRUE(is_plain_number(text)) << text;
  }
  for (const auto text : {"", "-", ".", " 1", "1 ", "1,000", "1 or 1=1", "1;", "--1", "1--", "1e",
                          "0x1", "1.2.3", "a", "inf", "nan", "1'"}) {
    EXPECT_FALSE(is_plain_number(text)) << text;
  }
  EXPECT_FALSE(is_plain_number(std::string_view("1\0", 2)));
}

}  // namespace
}  // namespace ombrix
