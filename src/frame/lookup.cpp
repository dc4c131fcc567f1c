#include "frame/lookup.h"

#include "base/text.h"

namespace ombrix {

using database::name;
using database::Piece;
using database::sql;
using database::Statement;

namespace {

Piece compared(const Comparison& comparison) {
  return comparison.is_number ? database::digits(comparison.value)
                              : database::text(comparison.value);
}

}  // namespace

Statement field_lookup(const std::string& table, const std::string& field, const Comparison& first,
                       const Comparison& second) {
  if (trim(first.name).empty()) return sql({"Select ", name(field), " from ", name(table)});
  if (second.name.empty()) {
    return sql({"Select ", name(field), " from ", name(table), " Where ", name(first.name), "=",
                compared(first)});
  }
  return sql({"Select ", name(field), " from ", name(table), " Where ", name(first.name), "=",
              compared(first), " and ", name(second.name), "=", compared(second)});
}

std::string first_value(Recordset& rows, const std::string& field) {
  if (rows.RecordCount() == 0) return "";
  return rows(field).text_or_empty();
}

}  // namespace ombrix
