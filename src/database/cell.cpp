#include "database/cell.h"

#include <cmath>
#include <limits>

#include "base/number.h"

namespace ombrix::database {

namespace {

std::string text_cell(const Value& value) {
  if (const auto* date = std::get_if<Date>(&value.content())) return date->stored_text();
  std::string text = value.to_text();
  // One database would keep the text, another cut it short.
  if (text.find('\0') != std::string::npos) raise_type_mismatch();
  return text;
}

}  // namespace

Value to_value(const Cell& cell) {
  if (const auto* number = std::get_if<double>(&cell)) return *number;
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  if (const auto* integer = std::get_if<std::int64_t>(&cell)) {
    using Long = std::numeric_limits<std::int32_t>;
    if (*integer >= Long::min() && *integer <= Long::max()) {
      return static_cast<std::int32_t>(*integer);
    }
    return static_cast<double>(*integer);
  }
  return Null{};
}

Cell to_cell(const Value& value, Kind kind) {
  if (value.is_null()) return Null{};
  switch (kind) {
    case Kind::text:
      return text_cell(value);
    case Kind::number: {
      const double number = value.to_number();
      if (!std::isfinite(number)) raise_overflow();
      return number;
    }
    case Kind::integer:
      return std::int64_t{value.to_long()};
  }
  raise_type_mismatch();
}

std::string to_literal(const Cell& cell) {
  if (const auto* number = std::get_if<double>(&cell)) return general_text(*number);
  if (const auto* integer = std::get_if<std::int64_t>(&cell)) return std::to_string(*integer);
  if (const auto* text = std::get_if<std::string>(&cell)) {
    std::string quoted = "'";
    for (const char c : *text) quoted.append(c == '\'' ? 2 : 1, c);
    return quoted + "'";
  }
  return "Null";
}

}  // namespace ombrix::database
