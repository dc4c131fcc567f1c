#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "ombrix/value.h"

namespace ombrix::database {

/// What a database column holds and what is bound to a parameter. Flags travel as integers, dates
/// as text.
using Cell = std::variant<Null, std::int64_t, double, std::string>;

/// The type of a column or a parameter. Every database we support has just these three.
enum class Kind : unsigned char { text, number, integer };

struct Parameter {
  Kind kind;
  Cell cell;
};
using Parameters = std::vector<Parameter>;

Value to_value(const Cell& cell);

/// The value as a column of this kind takes it; raises "Type mismatch" or "Overflow" where it
/// cannot, so that a wrong value never reaches a database that would quietly keep it.
Cell to_cell(const Value& value, Kind kind);

/// For a reader: texts between single quotes, doubled inside.
std::string to_literal(const Cell& cell);

}  // namespace ombrix::database
