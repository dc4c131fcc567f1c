#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ombrix/value.h"

namespace ombrix {

/// The general text form of a number: at most 15 significant digits, no trailing zeros, plain
/// digits while 15 of them before or behind the point suffice, else `1E+15` or `1.5E-16`. Raises
/// "Overflow" for infinity and NaN.
std::string general_text(double number);

/// Round half to even at `digits` decimals, decided on the 15-digit decimal form of the number, so
/// that 2.345 at 2 gives 2.34 and 2.675 gives 2.68. `digits` below 0 raises failure 5 "Invalid
/// procedure call or argument"; its fraction is rounded to a whole number first.
double round_half_even(double number, double digits);

/// The whole text as a number: blanks around it, a sign, thousands separators (a comma with a
/// digit on both sides) in the whole part, a decimal point and an exponent are allowed. No value
/// for any other text; infinity beyond the range of a Double.
std::optional<double> whole_number_text(std::string_view text);

/// The number at the head of a text, behind leading blanks: sign, digits, point, exponent. What
/// follows is ignored; 0 when there is none. Raises "Overflow" beyond the range of a Double.
double head_number(std::string_view text);

/// The number at the head of a field's text; a Null raises.
double head_of(const Value& value);

/// True for what may stand in a statement where a number is expected: an optional sign, digits
/// with at most one point, an optional exponent; no blanks.
bool is_plain_number(std::string_view text);

}  // namespace ombrix
