#include "base/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "ombrix/failure.h"

#include "base/text.h"

namespace ombrix {
namespace {

constexpr int kSignificant = 15;
constexpr double kPlainLimit = 1e15;

// All of them exact, so that one division by them rounds once and correctly.
constexpr std::array<double, 23> kTens = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                          1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::uint64_t kExactWhole = std::uint64_t{1} << 53;

std::uint64_t ten_to(int power) {
  return static_cast<std::uint64_t>(kTens[static_cast<std::size_t>(power)]);
}

/// The correctly rounded significant digits of a finite number that is not negative, not padded
/// with zeros; the exponent is that of the first digit.
class Decimal {
 public:
  Decimal(double magnitude, int significant) {
    // The shortest digits are found several times faster, and where fifteen can hold them, rounding
    // would give the same ones: an amount seldom needs more. Tiny numbers are too coarse for that.
    constexpr double kCoarse = 1e-300;
    take(std::to_chars(begin(), end(), magnitude, std::chars_format::scientific).ptr);
    if (count_ > kSignificant || magnitude < kCoarse) {
      take(std::to_chars(begin(), end(), magnitude, std::chars_format::scientific, significant - 1)
               .ptr);
    }
  }

  std::string_view digits() const { return {buffer_.data() + 1, static_cast<std::size_t>(count_)}; }
  int count() const { return count_; }
  int exponent() const { return exponent_; }

  std::uint64_t whole() const {
    std::uint64_t number = 0;
    std::from_chars(buffer_.data() + 1, buffer_.data() + 1 + count_, number);
    return number;
  }

 private:
  char* begin() { return buffer_.data(); }
  char* end() { return buffer_.data() + buffer_.size(); }

  void take(const char* written) {
    const char* mark = std::find(begin() + 1, end(), 'e');
    // Closing the gap of the point makes the digits one run, from the second place on.
    buffer_[1] = buffer_[0];
    count_ = std::max(1, static_cast<int>(mark - begin()) - 1);
    while (count_ > 1 && buffer_[static_cast<std::size_t>(count_)] == '0') --count_;
    std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, written, exponent_);
  }

  std::array<char, 32> buffer_;
  int count_ = 0;
  int exponent_ = 0;
};

void append_exponent(std::string& text, int exponent) {
  text += exponent < 0 ? "E-" : "E+";
  const int size = std::abs(exponent);
  if (size < 10) text += '0';
  std::array<char, 4> buffer;
  text.append(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), size).ptr);
}

void append_scientific(std::string& text, std::string_view digits, int exponent) {
  text += digits.front();
  if (digits.size() > 1) (text += '.').append(digits.substr(1));
  append_exponent(text, exponent);
}

void append_plain(std::string& text, std::string_view digits, int exponent) {
  if (exponent < 0) {
    text.append("0.").append(static_cast<std::size_t>(-exponent - 1), '0').append(digits);
    return;
  }
  const auto whole = static_cast<std::size_t>(exponent) + 1;
  text.append(digits.substr(0, whole));
  if (digits.size() > whole) {
    (text += '.').append(digits.substr(whole));
  } else {
    text.append(whole - digits.size(), '0');
  }
}

/// `whole` units of the last of `places` decimals.
double scaled_down(std::uint64_t whole, int places) {
  if (whole <= kExactWhole && static_cast<std::size_t>(places) < kTens.size()) {
    return static_cast<double>(whole) / kTens[static_cast<std::size_t>(places)];
  }
  std::string text = std::to_string(whole);
  append_exponent(text, -places);
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

double rounded(double magnitude, int places, int significant) {
  const Decimal decimal(magnitude, significant);
  const int kept = decimal.exponent() + 1 + places;
  if (kept < 0) return 0;
  // Large amounts still have decimals behind the fifteenth digit: what lies there is rounded on the
  // number itself, and a double is the same again from seventeen digits on.
  if (kept > kSignificant + 1) return magnitude;
  if (kept > significant) return rounded(magnitude, places, kept);
  const int dropped = decimal.count() - kept;
  if (dropped <= 0) return scaled_down(decimal.whole() * ten_to(-dropped), places);
  const std::uint64_t unit = ten_to(dropped);
  std::uint64_t whole = decimal.whole() / unit;
  const std::uint64_t doubled_rest = decimal.whole() % unit * 2;
  if (doubled_rest > unit || (doubled_rest == unit && whole % 2 == 1)) ++whole;
  return scaled_down(whole, places);
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

bool is_sign(std::string_view text, std::size_t at) {
  return at < text.size() && (text[at] == '+' || text[at] == '-');
}

std::size_t digit_run(std::string_view text, std::size_t at) {
  const std::size_t start = at;
  while (at < text.size() && is_digit(text[at])) ++at;
  return at - start;
}

/// 0 when the letter is not followed by digits: it then belongs to what stands behind the number.
std::size_t exponent_length(std::string_view text) {
  if (text.empty() || (text.front() != 'E' && text.front() != 'e')) return 0;
  const std::size_t lead = is_sign(text, 1) ? 2 : 1;
  const std::size_t digits = digit_run(text, lead);
  return digits == 0 ? 0 : lead + digits;
}

/// Length of the longest number at the head of the text, 0 when there is none.
std::size_t number_length(std::string_view text) {
  std::size_t at = is_sign(text, 0) ? 1 : 0;
  std::size_t digits = digit_run(text, at);
  at += digits;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = digit_run(text, at + 1);
    digits += fraction;
    at += 1 + fraction;
  }
  return digits == 0 ? 0 : at + exponent_length(text.substr(at));
}

/// The library reports too large and too small alike and gives no number with it, so the place of
/// the first digit that counts tells them apart.
double out_of_range_number(std::string_view text) {
  constexpr std::int64_t kFar = std::int64_t{1} << 48;
  const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
  const std::string_view mantissa = text.substr(0, mark);
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == std::string_view::npos) return 0;
  std::int64_t exponent = 0;
  if (mark < text.size()) {
    const std::size_t start = mark + (text[mark + 1] == '+' ? 2 : 1);
    const auto read = std::from_chars(text.data() + start, text.data() + text.size(), exponent);
    if (read.ec != std::errc()) exponent = text[start] == '-' ? -kFar : kFar;
  }
  const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
  const std::int64_t place = point - static_cast<std::int64_t>(first) + exponent;
  if (place <= 0) return 0;
  return std::copysign(std::numeric_limits<double>::infinity(), text.front() == '-' ? -1.0 : 1.0);
}

double read_number(std::string_view text) {
  if (text.front() == '+') text.remove_prefix(1);
  double number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec == std::errc::result_out_of_range) number = out_of_range_number(text);
  // A text "-0" must not bring a zero into the books that prints or divides differently.
  return number + 0.0;
}

/// The text without its thousands separators, "" when a comma stands where none may.
std::string without_separators(std::string_view text) {
  const std::size_t whole_end = std::min(text.find_first_of(".eE"), text.size());
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != ',') {
      plain += text[at];
    } else if (at == 0 || at + 1 >= whole_end || !is_digit(text[at - 1]) ||
               !is_digit(text[at + 1])) {
      return {};
    }
  }
  return plain;
}

}  // namespace

std::string general_text(double number) {
  if (!std::isfinite(number)) raise_overflow();
  const double magnitude = std::fabs(number);
  // Quantities and identities are whole as a rule, and whole numbers need no decimal work.
  if (magnitude < kPlainLimit && magnitude == std::trunc(magnitude)) {
    return std::to_string(static_cast<std::int64_t>(number));
  }
  const Decimal decimal(magnitude, kSignificant);
  const std::string_view digits = decimal.digits();
  const int exponent = decimal.exponent();
  const int decimals = decimal.count() - 1 - exponent;
  std::string text(number < 0 ? "-" : "");
  if (exponent < kSignificant && decimals <= kSignificant) {
    append_plain(text, digits, exponent);
  } else {
    append_scientific(text, digits, exponent);
  }
  return text;
}

double round_half_even(double number, double digits) {
  if (!std::isfinite(number) || !std::isfinite(digits)) raise_overflow();
  const double places = std::nearbyint(digits);
  if (places < 0) throw Failure(5, "Invalid procedure call or argument");
  // Adding zero turns a negative zero into the plain one, here and below.
  if (number == std::trunc(number)) return number + 0.0;
  // No double has a digit that counts behind so many places; the limit keeps the cast in range.
  constexpr double kMostPlaces = 400;
  const int capped = static_cast<int>(std::min(places, kMostPlaces));
  return std::copysign(rounded(std::fabs(number), capped, kSignificant), number) + 0.0;
}

std::optional<double> whole_number_text(std::string_view text) {
  const std::string_view inner = trim(text);
  if (is_plain_number(inner)) return read_number(inner);
  if (inner.find(',') == std::string_view::npos) return std::nullopt;
  const std::string plain = without_separators(inner);
  if (!is_plain_number(plain)) return std::nullopt;
  return read_number(plain);
}

double head_number(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const std::size_t length = number_length(text);
  if (length == 0) return 0;
  const double number = read_number(text.substr(0, length));
  if (std::isinf(number)) raise_overflow();
  return number;
}

double head_of(const Value& value) {
  return head_number(value.to_text());
}

bool is_plain_number(std::string_view text) {
  return !text.empty() && number_length(text) == text.size();
}

}  // namespace ombrix
