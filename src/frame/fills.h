#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "ombrix/recordset.h"

#include "frame/cells.h"

namespace ombrix {

/// A grid row that is filled from a row of the database.
struct FilledLine : GridLine {
  Recordset& source;

  Value field(std::string_view name) const { return source.read(name); }
  /// A Null raises.
  double figure(std::string_view name) const { return field(name).to_number(); }
  void put_number(std::int32_t column, double number) { put(column, general_text(number)); }
};

/// One cell of the grid and where its text comes from. Readers whose cells are worked out from
/// several fields, or from cells filled before, are lists of these in the order of filling.
template <class Line>
struct Fill {
  std::int32_t cell;
  std::string_view field;  ///< as the rule takes it
  void (*rule)(Line& line, std::int32_t cell, std::string_view field);
};

template <class Line>
void fill_cells(std::span<const Fill<Line>> fills, Line& line) {
  for (const Fill<Line>& fill : fills) fill.rule(line, fill.cell, fill.field);
}

/// The rules by which a field comes into a cell.
namespace fill {

/// A fixed text, in place of a field.
template <class Line>
void literal(Line& line, std::int32_t cell, std::string_view text) {
  line.put(cell, text);
}
/// A Null raises.
template <class Line>
void as_text(Line& line, std::int32_t cell, std::string_view field) {
  line.put(cell, line.field(field).to_text());
}
/// The day in its general text; a Null raises.
template <class Line>
void day(Line& line, std::int32_t cell, std::string_view field) {
  line.put(cell, line.field(field).to_date().general_text());
}
template <class Line>
void unless_null(Line& line, std::int32_t cell, std::string_view field) {
  const Value value = line.field(field);
  if (!value.is_null()) line.put(cell, value.to_text());
}
/// An empty text and a Null leave the cell.
template <class Line>
void unless_empty(Line& line, std::int32_t cell, std::string_view field) {
  const std::string text = line.field(field).text_or_empty();
  if (!text.empty()) line.put(cell, text);
}
/// A Null empties the cell.
template <class Line>
void or_empty(Line& line, std::int32_t cell, std::string_view field) {
  line.put(cell, line.field(field).text_or_empty());
}
/// The number at the head of the field's text, as text again; a Null raises.
template <class Line>
void head(Line& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, head_of(line.field(field)));
}
/// 1 for a line that bears tax, else 0.
template <class Line>
void taxable(Line& line, std::int32_t cell, std::string_view field) {
  line.put(cell, line.field(field).text_or_empty() == "Taxable" ? "1" : "0");
}
/// Without its first characters, the prefix; an empty text and a Null leave the cell.
template <std::size_t kPrefix, class Line>
void less_prefix(Line& line, std::int32_t cell, std::string_view field) {
  const std::string text = line.field(field).text_or_empty();
  if (!text.empty()) line.put(cell, without_first(text, kPrefix));
}
/// The unit's name, and the period type behind a "-" when there is one; a Null name raises.
template <class Line>
void unit_and_period(Line& line, std::int32_t cell, std::string_view field) {
  const std::string unit = line.field(field).to_text();
  const std::string period = line.field("Period_Type").text_or_empty();
  line.put(cell, period.empty() ? unit : unit + "-" + period);
}
/// The same; without a name the cell is left.
template <class Line>
void named_unit(Line& line, std::int32_t cell, std::string_view field) {
  if (!line.field(field).text_or_empty().empty()) unit_and_period(line, cell, field);
}
/// 1 or 0, and the same as the mark of the cell.
template <class Line>
void marked_flag(Line& line, std::int32_t cell, std::string_view field) {
  constexpr std::int32_t kBold = 13;
  const Value stored = line.field(field);
  const bool flag = !stored.is_null() && stored.to_flag();
  line.put(cell, flag ? "1" : "0");
  line.grid.Cell(kBold, line.row, cell, line.row, cell, flag);
}

}  // namespace fill

}  // namespace ombrix
