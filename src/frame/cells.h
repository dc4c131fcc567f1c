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

/// The rules by which a grid cell goes to a column and back.
namespace rule {

template <std::int32_t kCell>
struct CellText : Written<CellText<kCell>> {
  static Value value(const auto& line) { return line.text(kCell); }
};
template <std::int32_t kCell>
struct CellNumber : Written<CellNumber<kCell>> {
  static Value value(const auto& line) { return line.number(kCell); }
};
/// The number at the head of the cell.
template <std::int32_t kCell>
struct CellHead : Written<CellHead<kCell>> {
  static Value value(const auto& line) { return head_number(line.text(kCell)); }
};
template <std::int32_t kCell>
struct CellTrimmed : Written<CellTrimmed<kCell>> {
  static Value value(const auto& line) { return line.trimmed(kCell); }
};
/// A cell of a unit's name, or of the name and a period type with a "-" between: the name.
template <std::int32_t kCell>
struct CellUnitName : Written<CellUnitName<kCell>> {
  static Value value(const auto& line) {
    const std::string cell = line.text(kCell);
    return cell.substr(0, cell.find('-'));
  }
};
/// The period type of such a cell; without one the column is left alone.
template <std::int32_t kCell>
struct CellPeriodType : Written<CellPeriodType<kCell>> {
  static std::optional<Value> value(const auto& line) {
    const std::string cell = line.text(kCell);
    const auto dash = cell.find('-');
    if (dash == std::string::npos) return std::nullopt;
    return Value(cell.substr(dash + 1));
  }
};
/// An item code as it is stored, behind the company prefix; a blank cell leaves the column alone.
template <std::int32_t kCell>
struct CellItemCode : Written<CellItemCode<kCell>> {
  static std::optional<Value> value(const auto& line) {
    const std::string code = line.trimmed(kCell);
    if (code.empty()) return std::nullopt;
    return Value(line.document.CompanyPrefix() + code);
  }
};
struct Serial : Written<Serial> {
  static Value value(const auto& line) { return line.serial; }
};
/// A property of the line's document.
template <auto P>
struct OfDocument : Written<OfDocument<P>> {
  static Value value(const auto& line) { return raw(line.document.*P); }
};
/// A figure that was worked out for the line; none leaves the column alone.
template <auto P>
struct Figure : Written<Figure<P>> {
  static std::optional<Value> value(const auto& line) {
    const auto& figure = line.*P;
    if constexpr (requires { figure.has_value(); }) {
      if (!figure.has_value()) return std::nullopt;
      return Value(*figure);
    } else {
      return Value(figure);
    }
  }
};
/// Trimmed; a blank cell leaves the column alone.
template <std::int32_t kCell>
struct CellUnlessBlank : Written<CellUnlessBlank<kCell>> {
  static std::optional<Value> value(const auto& line) {
    std::string text = line.trimmed(kCell);
    if (text.empty()) return std::nullopt;
    return Value(std::move(text));
  }
};
/// As it is; a blank cell leaves the column alone.
template <std::int32_t kCell>
struct CellTextUnlessBlank : Written<CellTextUnlessBlank<kCell>> {
  static std::optional<Value> value(const auto& line) {
    std::string text = line.text(kCell);
    if (trim(text).empty()) return std::nullopt;
    return Value(std::move(text));
  }
};
/// The date that the cell tells; a blank cell leaves the column alone, any other text raises.
template <std::int32_t kCell>
struct CellDayUnlessBlank : Written<CellDayUnlessBlank<kCell>> {
  static std::optional<Value> value(const auto& line) {
    const std::string text = line.text(kCell);
    if (trim(text).empty()) return std::nullopt;
    return Value(Value(text).to_date());
  }
};
/// To the 15 digits of its text form.
template <std::int32_t kCell>
struct CellNumberThroughText : Written<CellNumberThroughText<kCell>> {
  static Value value(const auto& line) { return head_number(general_text(line.number(kCell))); }
};

/// As text into one cell or several; a Null raises.
template <std::int32_t... kCells>
struct ToCells : Reading<ToCells<kCells...>> {
  static void take(auto& line, const Value& value) {
    const std::string text = value.to_text();
    (line.put(kCells, text), ...);
  }
};
template <std::int32_t kCell>
struct ToCellUnlessNull : Reading<ToCellUnlessNull<kCell>> {
  static void take(auto& line, const Value& value) {
    if (!value.is_null()) line.put(kCell, value.to_text());
  }
};
/// A Null empties the cell.
template <std::int32_t kCell>
struct ToCellOrEmpty : Reading<ToCellOrEmpty<kCell>> {
  static void take(auto& line, const Value& value) { line.put(kCell, value.text_or_empty()); }
};
template <std::int32_t kCell>
struct ToCellUnlessEmpty : Reading<ToCellUnlessEmpty<kCell>> {
  static void take(auto& line, const Value& value) {
    const std::string text = value.text_or_empty();
    if (!text.empty()) line.put(kCell, text);
  }
};
/// Without the prefix of its first characters.
template <std::int32_t kCell, std::size_t kPrefix>
struct ToCellLessPrefix : Reading<ToCellLessPrefix<kCell, kPrefix>> {
  static void take(auto& line, const Value& value) {
    const std::string text = value.text_or_empty();
    if (!text.empty()) line.put(kCell, without_first(text, kPrefix));
  }
};
/// The number at the head of the stored text, as text again; a Null raises.
template <std::int32_t kCell>
struct ToCellHead : Reading<ToCellHead<kCell>> {
  static void take(auto& line, const Value& value) {
    line.put(kCell, general_text(head_of(value)));
  }
};

template <std::int32_t kCell>
inline constexpr CellText<kCell> cell_text{};
template <std::int32_t kCell>
inline constexpr CellNumber<kCell> cell_number{};
template <std::int32_t kCell>
inline constexpr CellHead<kCell> cell_head{};
template <std::int32_t kCell>
inline constexpr CellTrimmed<kCell> cell_trimmed{};
template <std::int32_t kCell>
inline constexpr CellUnitName<kCell> cell_unit_name{};
template <std::int32_t kCell>
inline constexpr CellPeriodType<kCell> cell_period_type{};
template <std::int32_t kCell>
inline constexpr CellUnlessBlank<kCell> cell_unless_blank{};
template <std::int32_t kCell>
inline constexpr CellTextUnlessBlank<kCell> cell_text_unless_blank{};
template <std::int32_t kCell>
inline constexpr CellDayUnlessBlank<kCell> cell_day_unless_blank{};
template <std::int32_t kCell>
inline constexpr CellNumberThroughText<kCell> cell_number_through_text{};
template <std::int32_t kCell>
inline constexpr CellItemCode<kCell> cell_item_code{};
inline constexpr Serial serial{};
template <auto P>
inline constexpr OfDocument<P> of_document{};
template <auto P>
inline constexpr Figure<P> figure{};
template <std::int32_t... kCells>
inline constexpr ToCells<kCells...> to_cells{};
template <std::int32_t kCell>
inline constexpr ToCellUnlessNull<kCell> to_cell_unless_null{};
template <std::int32_t kCell>
inline constexpr ToCellOrEmpty<kCell> to_cell_or_empty{};
template <std::int32_t kCell>
inline constexpr ToCellUnlessEmpty<kCell> to_cell_unless_empty{};
template <std::int32_t kCell, std::size_t kPrefix>
inline constexpr ToCellLessPrefix<kCell, kPrefix> to_cell_less_prefix{};
template <std::int32_t kCell>
inline constexpr ToCellHead<kCell> to_cell_head{};

}  // namespace rule

}  // namespace ombrix
