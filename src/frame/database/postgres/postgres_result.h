#pragma once

#include <libpq-fe.h>

#include <charconv>
#include <memory>
#include <string_view>

#include "frame/database/driver.h"
#include "ombrix/failure.h"

namespace ombrix::database {

struct ClearResult {
  void operator()(PGresult* result) const { PQclear(result); }
};
using PostgresResult = std::unique_ptr<PGresult, ClearResult>;

/// Types of the server, as its catalogue numbers them.
namespace oid {
inline constexpr Oid kBoolean = 16;
inline constexpr Oid kInt8 = 20;
inline constexpr Oid kInt2 = 21;
inline constexpr Oid kInt4 = 23;
inline constexpr Oid kText = 25;
inline constexpr Oid kFloat4 = 700;
inline constexpr Oid kFloat8 = 701;
inline constexpr Oid kNumeric = 1700;
}  // namespace oid

constexpr Oid oid_of(Kind kind) {
  switch (kind) {
    case Kind::text:
      return oid::kText;
    case Kind::number:
      return oid::kFloat8;
    case Kind::integer:
      return oid::kInt8;
  }
  return oid::kText;
}

constexpr Kind kind_of(Oid type) {
  switch (type) {
    case oid::kInt2:
    case oid::kInt4:
    case oid::kInt8:
    case oid::kBoolean:
      return Kind::integer;
    case oid::kFloat4:
    case oid::kFloat8:
    case oid::kNumeric:
      return Kind::number;
    default:
      return Kind::text;
  }
}

template <class Number>
Number parsed(std::string_view text) {
  Number number{};
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

inline Cell cell_from(Oid type, std::string_view text) {
  if (type == oid::kBoolean) return std::int64_t{text == "t" ? -1 : 0};
  switch (kind_of(type)) {
    case Kind::integer:
      return parsed<std::int64_t>(text);
    case Kind::number:
      return parsed<double>(text);
    case Kind::text:
      break;
  }
  return std::string(text);
}

}  // namespace ombrix::database
