#pragma once

#include <charconv>
#include <libpq-fe.h>
#include <memory>
#include <string_view>

#include "ombrix/failure.h"

#include "database/driver.h"

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
inline constexpr Oid kOid = 26;
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
    case oid::kOid:
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

/// Adds a cell from the text in which the server sends it.
inline void add_text_form(Rows& rows, Oid type, std::string_view text) {
  if (type == oid::kBoolean) {
    rows.add(std::int64_t{text == "t" ? -1 : 0});
    return;
  }
  switch (kind_of(type)) {
    case Kind::integer:
      rows.add(parsed<std::int64_t>(text));
      break;
    case Kind::number:
      rows.add(parsed<double>(text));
      break;
    case Kind::text:
      rows.add(text);
      break;
  }
}

}  // namespace ombrix::database
