#include "ombrix/date.h"

#include <chrono>
#include <cstdint>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

#include "support/failures.h"

namespace ombrix {
namespace {

using std::chrono::seconds;
using testing::raised_number;

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
  } cases[] = {{Date(), 0, "1899-12-30"},
               {Date(1899, 12, 29), -1, "1899-12-29"},
               {Date(1900, 3, 1), 61, "1900-03-01"},
               {Date(2000, 2, 29), 36585, "2000-02-29"},
               {Date(100, 1, 1), -657434, "0100-01-01"},
               {Date(9999, 12, 31), 2958465, "9999-12-31"}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.date.since_zero(), seconds(c.days * kDay)) << c.text;
    EXPECT_EQ(c.date.short_text(), c.text);
    EXPECT_EQ(Date::from_seconds(seconds(c.days * kDay)), c.date) << c.text;
  }
  EXPECT_FALSE(Date(1899, 12, 30, 0, 0, 1).is_zero());
}

TEST(Date, HasATextForEachUseAndKeepsItsDayBeforeTheZeroDate) {
  const Date evening(2024, 3, 5, 19, 8, 7);
  EXPECT_EQ(evening.short_text(), "2024-03-05");
  EXPECT_EQ(evening.stored_text(), "2024-03-05 19:08:07");
  EXPECT_EQ(evening.general_text(), "2024-03-05 19:08:07");
  EXPECT_EQ(evening.day_first_text(), "05/03/2024");
  EXPECT_EQ(evening.midnight().general_text(), "2024-03-05");
  EXPECT_EQ(evening.midnight().stored_text(), "2024-03-05 00:00:00");
  const Date before(1899, 12, 29, 18, 30);
  EXPECT_EQ(before.since_zero(), seconds(-kDay / 4 + 1800));
  EXPECT_EQ(before.stored_text(), "1899-12-29 18:30:00");
  EXPECT_EQ(before.midnight(), Date(1899, 12, 29));
}

TEST(Date, IsReadFromBothOrdersAndNothingElse) {
  const std::pair<std::string_view, Date> cases[] = {
      {"  2024-03-05 ", Date(2024, 3, 5)},
      {"05/03/2024", Date(2024, 3, 5)},
      {"2024-03-05 19:08", Date(2024, 3, 5, 19, 8)},
      {"05/03/2024 19:08:07", Date(2024, 3, 5, 19, 8, 7)},
      {"29/02/2000", Date(2000, 2, 29)}};
  for (const auto& [text, date] : cases) EXPECT_EQ(Date::parse(text), date) << text;
  for (const auto text : {" ", "45000", "2024-3-5", "2024/03/05", "05-03-2024", "2024-03-05x",
                          "2024-13-01", "2024-01-00", "2024-02-30", "1900-02-29", "31/04/2024",
                          "12/31/2024", "0099-12-31", "-024-01-01"}) {
    EXPECT_EQ(raised_number([&] { Date::parse(text); }), 13) << text;
  }
  for (const std::string time : {"T19:08", " 19", " 7:08", " 19:08:07.5", " 24:00", " 19:60",
                                 " 19:08:60", " -1:00", "  19:08"}) {
    EXPECT_EQ(raised_number([&] { Date::parse("2024-03-05" + time); }), 13) << time;
  }
}

TEST(Date, RefusesMomentsThatDoNotExist) {
  EXPECT_EQ(raised_number([] { Date(10000, 1, 1); }), 13);
  // A year, a month and a day that would come right when cut to fewer bits.
  EXPECT_EQ(raised_number([] { Date(67560, 1, 1); }), 13);
  EXPECT_EQ(raised_number([] { Date(2024, 257, 1); }), 13);
  EXPECT_EQ(raised_number([] { Date(2024, 1, 257); }), 13);
  EXPECT_EQ(raised_number([] { Date(2024, 1, 1, -1); }), 13);
  const seconds first = Date(100, 1, 1).since_zero();
  const seconds last = Date(9999, 12, 31, 23, 59, 59).since_zero();
  EXPECT_EQ(raised_number([&] { Date::from_seconds(last + seconds(1)); }), 6);
  EXPECT_EQ(raised_number([&] { Date::from_seconds(first - seconds(1)); }), 6);
}

TEST(Date, NowIsTheLocalClock) {
  const std::string before = local_clock();
  const std::string now = Date::now().stored_text();
  EXPECT_LE(before, now);
  EXPECT_LE(now, local_clock());
}

}  // namespace
}  // namespace ombrix
