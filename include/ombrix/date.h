#pragma once

#include <chrono>
#include <compare>
#include <string>
#include <string_view>

namespace ombrix {

/// A date with a time of day, to the second, without a time zone. A Date never set is the zero
/// date, 30 December 1899. Years run from 100 to 9999.
class Date {
 public:
  constexpr Date() = default;

  /// Raises "Type mismatch" when the calendar or the clock has no such moment.
  Date(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, int second = 0);

  /// `seconds` since the zero date, negative before it; raises "Overflow" outside the years above.
  static Date from_seconds(std::chrono::seconds since_zero);

  /// Reads `YYYY-MM-DD` or `DD/MM/YYYY`, with or without ` HH:MM` or ` HH:MM:SS`, blanks around
  /// it allowed; raises "Type mismatch" for any other text.
  static Date parse(std::string_view text);

  /// The present local date and time.
  static Date now();

  constexpr std::chrono::seconds since_zero() const { return since_zero_; }
  constexpr bool is_zero() const { return since_zero_.count() == 0; }
  Date midnight() const;

  /// `YYYY-MM-DD`.
  std::string short_text() const;
  /// `YYYY-MM-DD HH:MM:SS`, the form in which the database keeps dates.
  std::string stored_text() const;
  /// The short form, followed by ` HH:MM:SS` when the time is not midnight.
  std::string general_text() const;
  /// `DD/MM/YYYY`.
  std::string day_first_text() const;

  friend constexpr auto operator<=>(Date, Date) = default;

 private:
  std::chrono::seconds since_zero_{0};
};

}  // namespace ombrix
