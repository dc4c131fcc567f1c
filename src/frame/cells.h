#pragma once

#include <memory>

#include "ombrix/grid.h"

#include "base/raw.h"
#include "base/text.h"
#include "frame/columns.h"

namespace ombrix {

/// A row of the line grid, as the lists of detail columns see it.
struct GridLine {
  Grid& grid;
  std::int32_t row;

  std::string text(std::int32_t column) const { return grid.TextMatrix(row, column); }
  std::string trimmed(std::int32_t column) const { return std::string(trim(text(column))); }
  double number(std::int32_t column) const { return grid.ValueMatrix(row, column); }
  void put(std::int32_t column, std::string_view text) { grid.TextMatrix(row, column, text); }
};

/// A reference of the method's own: a grid of the client's may take itself away while it is asked.
/// Raises failure 91 when the client set none.
inline std::shared_ptr<Grid> given(const std::shared_ptr<Grid>& grid) {
  if (!grid) raise_not_set();
  return grid;
}

/// The rules by which a grid cell goes to a column.
namespace rule {

template <std::int32_t kCell, class Line>
Written cell_text(Line& line) {
  return line.text(kCell);
}
template <std::int32_t kCell, class Line>
Written cell_number(Line& line) {
  return line.number(kCell);
}
/// The number at the head of the cell.
template <std::int32_t kCell, class Line>
Written cell_head(Line& line) {
  return head_number(line.text(kCell));
}
template <std::int32_t kCell, class Line>
Written cell_trimmed(Line& line) {
  return line.trimmed(kCell);
}
/// A cell of a unit's name, or of the name and a period type with a "-" between: the name.
template <std::int32_t kCell, class Line>
Written cell_unit_name(Line& line) {
  const std::string cell = line.text(kCell);
  return cell.substr(0, cell.find('-'));
}
/// The period type of such a cell; without one the column is left alone.
template <std::int32_t kCell, class Line>
Written cell_period_type(Line& line) {
  const std::string cell = line.text(kCell);
  const auto dash = cell.find('-');
  if (dash == std::string::npos) return std::nullopt;
  return Value(cell.substr(dash + 1));
}
/// An item code as it is stored, behind the company prefix; a blank cell leaves the column alone.
template <std::int32_t kCell, class Line>
Written cell_item_code(Line& line) {
  const std::string code = line.trimmed(kCell);
  if (code.empty()) return std::nullopt;
  return Value(line.document.CompanyPrefix() + code);
}
template <class Line>
Written serial(Line& line) {
  return line.serial;
}
/// A property of the line's document.
template <auto P, class Line>
Written of_document(Line& line) {
  return raw(line.document.*P);
}
/// A figure that was worked out for the line; none leaves the column alone.
template <auto P, class Line>
Written figure(Line& line) {
  return line.*P;
}
/// Trimmed; a blank cell leaves the column alone.
template <std::int32_t kCell, class Line>
Written cell_unless_blank(Line& line) {
  std::string text = line.trimmed(kCell);
  if (text.empty()) return std::nullopt;
  return Value(std::move(text));
}
/// As it is; a blank cell leaves the column alone.
template <std::int32_t kCell, class Line>
Written cell_text_unless_blank(Line& line) {
  std::string text = line.text(kCell);
  if (trim(text).empty()) return std::nullopt;
  return Value(std::move(text));
}
/// The date that the cell tells; a blank cell leaves the column alone, any other text raises.
template <std::int32_t kCell, class Line>
Written cell_day_unless_blank(Line& line) {
  const std::string text = line.text(kCell);
  if (trim(text).empty()) return std::nullopt;
  return Value(Value(text).to_date());
}
/// To the 15 digits of its text form.
template <std::int32_t kCell, class Line>
Written cell_number_through_text(Line& line) {
  return head_number(general_text(line.number(kCell)));
}

}  // namespace rule

}  // namespace ombrix
