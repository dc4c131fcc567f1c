#include "ombrix/date.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#if !defined(__unix__) && !defined(__APPLE__)
#include <mutex>
#endif

#include "ombrix/failure.h"

#include "base/text.h"

namespace ombrix {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

constexpr year_month_day calendar_day(int year, unsigned month, unsigned day) {
  return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
}

constexpr sys_days kZeroDay = calendar_day(1899, 12, 30);
constexpr std::chrono::seconds kFirst = sys_days(calendar_day(kFirstYear, 1, 1)) - kZeroDay;
constexpr std::chrono::seconds kPast = sys_days(calendar_day(kLastYear + 1, 1, 1)) - kZeroDay;

year_month_day calendar_of(Date date) {
  return kZeroDay + std::chrono::floor<std::chrono::days>(date.since_zero());
}

bool is_below(int value, int limit) {
  return value >= 0 && value < limit;
}

/// In the pattern a '0' stands for any digit.
bool matches(std::string_view text, std::string_view pattern) {
  return std::equal(
      text.begin(), text.end(), pattern.begin(), pattern.end(),
      [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; });
}

int number_at(std::string_view text, std::size_t at, std::size_t width) {
  int number = 0;
  for (const char digit : text.substr(at, width)) number = number * 10 + (digit - '0');
  return number;
}

template <std::size_t Width>
void append_number(std::string& text, unsigned number) {
  std::array<char, Width> digits;
  for (std::size_t at = Width; at > 0; number /= 10) {
    digits[--at] = static_cast<char>('0' + number % 10);
  }
  text.append(digits.data(), Width);
}

void append_clock(std::string& text, Date date) {
  const std::chrono::hh_mm_ss clock(date.since_zero() - date.midnight().since_zero());
  append_number<2>(text += ' ', static_cast<unsigned>(clock.hours().count()));
  append_number<2>(text += ':', static_cast<unsigned>(clock.minutes().count()));
  append_number<2>(text += ':', static_cast<unsigned>(clock.seconds().count()));
}

unsigned year_number(year_month_day calendar) {
  return static_cast<unsigned>(static_cast<int>(calendar.year()));
}

// The standard call answers in storage that all threads share. POSIX has one that does not; other
// systems take turns, which holds as long as nobody else in the process makes the call.
bool local_time(std::time_t moment, std::tm& local) {
#if defined(__unix__) || defined(__APPLE__)
  return localtime_r(&moment, &local) != nullptr;
#else
  static std::mutex turn;
  const std::lock_guard<std::mutex> guard(turn);
  const std::tm* shared = std::localtime(&moment);
  if (shared == nullptr) return false;
  local = *shared;
  return true;
#endif
}

}  // namespace

Date::Date(int year, unsigned month, unsigned day, int hour, int minute, int second) {
  // The calendar types keep the low bits of what they are given, so the ranges come first.
  if (year < kFirstYear || year > kLastYear || month > 12 || day > 31) raise_type_mismatch();
  const year_month_day calendar = calendar_day(year, month, day);
  if (!calendar.ok()) raise_type_mismatch();
  if (!is_below(hour, 24) || !is_below(minute, 60) || !is_below(second, 60)) raise_type_mismatch();
  since_zero_ = sys_days(calendar) - kZeroDay + std::chrono::hours(hour) +
                std::chrono::minutes(minute) + std::chrono::seconds(second);
}

Date Date::from_seconds(std::chrono::seconds since_zero) {
  if (since_zero < kFirst || since_zero >= kPast) raise_overflow();
  Date date;
  date.since_zero_ = since_zero;
  return date;
}

Date Date::parse(std::string_view text) {
  const std::string_view inner = trim(text);
  const std::string_view day = inner.substr(0, 10);
  const std::string_view clock = inner.substr(day.size());
  const bool year_first = matches(day, "0000-00-00");
  if (!year_first && !matches(day, "00/00/0000")) raise_type_mismatch();
  const bool with_seconds = matches(clock, " 00:00:00");
  if (!clock.empty() && !with_seconds && !matches(clock, " 00:00")) raise_type_mismatch();
  return Date(number_at(day, year_first ? 0 : 6, 4),
              static_cast<unsigned>(number_at(day, year_first ? 5 : 3, 2)),
              static_cast<unsigned>(number_at(day, year_first ? 8 : 0, 2)),
              clock.empty() ? 0 : number_at(clock, 1, 2),
              clock.empty() ? 0 : number_at(clock, 4, 2),
              with_seconds ? number_at(clock, 7, 2) : 0);
}

Date Date::now() {
  std::tm local{};
  if (!local_time(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()), local)) {
    raise_overflow();
  }
  // A clock that shows leap seconds reaches 60, which no stored text may.
  return Date(local.tm_year + 1900, static_cast<unsigned>(local.tm_mon + 1),
              static_cast<unsigned>(local.tm_mday), local.tm_hour, local.tm_min,
              std::min(local.tm_sec, 59));
}

Date Date::midnight() const {
  Date date;
  date.since_zero_ = std::chrono::floor<std::chrono::days>(since_zero_);
  return date;
}

std::string Date::short_text() const {
  const year_month_day calendar = calendar_of(*this);
  std::string text;
  append_number<4>(text, year_number(calendar));
  append_number<2>(text += '-', static_cast<unsigned>(calendar.month()));
  append_number<2>(text += '-', static_cast<unsigned>(calendar.day()));
  return text;
}

std::string Date::stored_text() const {
  std::string text = short_text();
  append_clock(text, *this);
  return text;
}

std::string Date::general_text() const {
  return *this == midnight() ? short_text() : stored_text();
}

std::string Date::day_first_text() const {
  const year_month_day calendar = calendar_of(*this);
  std::string text;
  append_number<2>(text, static_cast<unsigned>(calendar.day()));
  append_number<2>(text += '/', static_cast<unsigned>(calendar.month()));
  append_number<4>(text += '/', year_number(calendar));
  return text;
}

}  // namespace ombrix
