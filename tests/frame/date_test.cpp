#include "ombrix/date.h"

#include <chrono>
#include <cstdint>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "support/failures.h"

namespace ombrix {
namespace {

using std::chrono::seconds;

constexpr std::int64_t kDay = 86400;

std::string local_clock() {
  const std::time_t moment = std::time(nullptr);
  char text[32];
  const std::size_t size =
      std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&moment));
  return std::string(text, size);
}

TEST(Date, CountsDaysFromTheZeroDate) {
  const struct {
    Date date;
    std::int64_t days;
    std::string_view text;
  } cases[] = {
      {Date(), 0, "1899-12-30"},
      {Date(1900, 1, 1), 2, "1900-01-01"},
      {Date(1899, 12, 29), -1, "1899-12-29"},
      {Date(1900, 3, 1), 61, "1900-03-01"},
      {Date(1970, 1, 1), 25569, "1970-01-01"},
      {Date(2000, 2, 29), 36585, "2000-02-29"},
      {Date(2024, 12, 31), 45657, "2024-12-31"},
      {Date(100, 1, 1), -657434, "0100-01-01"},
      {Date(9999, 12, 31), 2958465, "9999-12-31"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.date.since_zero(), seconds(c.days * kDay)) << c.text;
    EXPECT_EQ(c.date.short_text(), c.text);
    EXPECT_EQ(Date::from_seconds(seconds(c.days * kDay)), c.date) << c.text;
  }
  EXPECT_TRUE(Date().is_zero());
  EXPECT_FALSE(Date(1899, 12, 30, 0, 0, 1).is_zero());
}

TEST(Date, HasATextForEachUse) {
  const Date evening(2024, 3, 5, 19, 8, 7);
  EXPECT_EQ(evening.short_text(), "2024-03-05");
  EXPECT_EQ(evening.stored_text(), "2024-03-05 19:08:07");
  EXPECT_EQ(evening.general_text(), "2024-03-05 19:08:07");
  EXPECT_EQ(evening.day_first_text(), "05/03/2024");
  EXPECT_EQ(evening.midnight(), Date(2024, 3, 5));
  EXPECT_EQ(evening.midnight().general_text(), "2024-03-05");
  EXPECT_EQ(evening.midnight().stored_text(), "2024-03-05 00:00:00");
}

TEST(Date, KeepsItsDayBeforeTheZeroDate) {
  const Date before(1899, 12, 29, 18, 30);
  EXPECT_EQ(before.since_zero(), seconds(-kDay / 4 + 1800));
  EXPECT_EQ(before.stored_text(), "1899-12-29 18:30:00");
  EXPECT_EQ(before.midnight(), Date(1899, 12, 29));
  EXPECT_LT(before, Date());
}

TEST(Date, IsReadFromBothOrdersWithAndWithoutATime) {
  const struct {
    std::string_view text;
    Date date;
  } cases[] = {
      {"2024-03-05", Date(2024, 3, 5)},
      {"05/03/2024", Date(2024, 3, 5)},
      {"  2024-03-05 ", Date(2024, 3, 5)},
      {"2024-03-05 19:08", Date(2024, 3, 5, 19, 8)},
      {"05/03/2024 19:08:07", Date(2024, 3, 5, 19, 8, 7)},
      {" 2024-03-05 23:59:59 ", Date(2024, 3, 5, 23, 59, 59)},
      {"0100-01-01", Date(100, 1, 1)},
      {"29/02/2000", Date(2000, 2, 29)},
  };
  for (const auto& c : cases) EXPECT_EQ(Date::parse(c.text), c.date) << c.text;
}

TEST(Date, RefusesAnyOtherText) {
  for (const auto text : {"",
                          " ",
                          "x",
                          "45000",
                          "2024-3-5",
                          "5/3/2024",
                          "2024/03/05",
                          "05-03-2024",
                          "2024-03-05T19:08",
                          "2024-03-05  19:08",
                          "2024-03-05 19",
                          "2024-03-05 7:08",
                          "2024-03-05 19:08:07.5",
                          "2024-03-05 24:00",
                          "2024-03-05 19:60",
                          "2024-03-05 19:08:60",
                          "2024-03-05x",
                          "2024-13-01",
                          "2024-00-10",
                          "2024-01-00",
                          "2024-02-30",
                          "1900-02-29",
                          "31/04/2024",
                          "12/31/2024",
                          "0099-12-31",
                          "-024-01-01",
                          "2024-03-05 -1:00"}) {
    EXPECT_EQ(testing::raised_number([&] { Date::parse(text); }), 13) << text;
  }
}

TEST(Date, RefusesMomentsThatDoNotExist) {
  EXPECT_EQ(testing::raised_number([] { Date(10000, 1, 1); }), 13);
  EXPECT_EQ(testing::raised_number([] { Date(67560, 1, 1); }), 13);
  EXPECT_EQ(testing::raised_number([] { Date(2024, 257, 1); }), 13);
  EXPECT_EQ(testing::raised_number([] { Date(2024, 1, 257); }), 13);
  EXPECT_EQ(testing::raised_number([] { Date(2024, 1, 1, -1); }), 13);
  EXPECT_EQ(testing::raised_number([] { Date(2024, 1, 1, 0, 0, 60); }), 13);
  const Date first(100, 1, 1);
  const Date last(9999, 12, 31, 23, 59, 59);
  EXPECT_EQ(Date::from_seconds(last.since_zero()), last);
  EXPECT_EQ(testing::raised_number([&] { Date::from_seconds(last.since_zero() + seconds(1)); }), 6);
  EXPECT_EQ(testing::raised_number([&] { Date::from_seconds(first.since_zero() - seconds(1)); }),
            6);
}

TEST(Date, NowIsTheLocalClock) {
  const std::string before = local_clock();
  const std::string now = Date::now().stored_text();
  const std::string after = local_clock();
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);
}

}  // namespace
}  // namespace ombrix
