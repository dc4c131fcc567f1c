#include "ombrix/value.h"

#include <chrono>
#include <cmath>
#include <limits>

#include "base/names.h"
#include "base/number.h"
#include "base/text.h"

namespace ombrix {
namespace {

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

using FractionalDays = std::chrono::duration<double, std::chrono::days::period>;

double finite(double number) {
  if (!std::isfinite(number)) raise_overflow();
  return number;
}

double number_of(const std::string& text) {
  const std::optional<double> number = whole_number_text(text);
  if (!number) raise_type_mismatch();
  return finite(*number);
}

bool flag_of(const std::string& text) {
  const std::string_view word = trim(text);
  if (same_name(word, "True")) return true;
  if (same_name(word, "False")) return false;
  return number_of(text) != 0;
}

double days_of(Date date) {
  return FractionalDays(date.since_zero()).count();
}

Date date_of(double days) {
  // Far beyond every date and far within the seconds' range; a NaN fails the comparison too.
  constexpr double kBeyondAnyDate = 1e7;
  if (!(std::fabs(days) < kBeyondAnyDate)) raise_overflow();
  return Date::from_seconds(std::chrono::round<std::chrono::seconds>(FractionalDays(days)));
}

}  // namespace

std::string Value::to_text() const {
  return std::visit(
      Overloaded{[](Empty) { return std::string(); }, [](Null) -> std::string { raise_null_use(); },
                 [](bool flag) { return std::string(flag ? "True" : "False"); },
                 [](std::int32_t number) { return std::to_string(number); },
                 [](double number) { return general_text(number); },
                 [](Date date) { return date.general_text(); },
                 [](const std::string& text) { return text; },
                 [](const ObjectRef&) -> std::string { raise_type_mismatch(); }},
      content_);
}

double Value::to_number() const {
  return std::visit(
      Overloaded{[](Empty) { return 0.0; }, [](Null) -> double { raise_null_use(); },
                 [](bool flag) { return flag ? -1.0 : 0.0; },
                 [](std::int32_t number) { return static_cast<double>(number); },
                 [](double number) { return number; }, [](Date date) { return days_of(date); },
                 [](const std::string& text) { return number_of(text); },
                 [](const ObjectRef&) -> double { raise_type_mismatch(); }},
      content_);
}

std::int32_t Value::to_long() const {
  using Limits = std::numeric_limits<std::int32_t>;
  const double whole = std::nearbyint(to_number());
  // Written so that a NaN is refused as well.
  if (!(whole >= Limits::min() && whole <= Limits::max())) raise_overflow();
  return static_cast<std::int32_t>(whole);
}

bool Value::to_flag() const {
  const auto* text = std::get_if<std::string>(&content_);
  return text != nullptr ? flag_of(*text) : to_number() != 0;
}

Date Value::to_date() const {
  if (const auto* date = std::get_if<Date>(&content_)) return *date;
  if (const auto* text = std::get_if<std::string>(&content_)) return Date::parse(*text);
  return date_of(to_number());
}

ObjectRef Value::to_object() const {
  const auto* object = std::get_if<ObjectRef>(&content_);
  if (object == nullptr) raise_type_mismatch();
  return *object;
}

Value sum(const Value& left, const Value& right) {
  if (left.is_null() || right.is_null()) return Null();
  return finite(left.to_number() + right.to_number());
}

Value product(const Value& left, const Value& right) {
  if (left.is_null() || right.is_null()) return Null();
  return finite(left.to_number() * right.to_number());
}

double quotient(double dividend, double divisor) {
  if (divisor == 0) raise_division_by_zero();
  return finite(dividend / divisor);
}

}  // namespace ombrix
