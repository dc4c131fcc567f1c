#pragma once

#include "ombrix/grid.h"

#include "frame/columns.h"
#include "frame/text.h"

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
/// Trimmed; a blank cell leaves the column alone.
template <std::int32_t kCell>
struct CellUnlessBlank : Written<CellUnlessBlank<kCell>> {
  static std::optional<Value> value(const auto& line) {
    std::string text = line.trimmed(kCell);
    if (text.empty()) return std::nullopt;
    return Value(std::move(text));
  }
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
    line.put(kCell, general_text(head_number(value.to_text())));
  }
};

template <std::int32_t kCell>
inline constexpr CellText<kCell> cell_text{};
template <std::int32_t kCell>
inline constexpr CellNumber<kCell> cell_number{};
template <std::int32_t kCell>
inline constexpr CellUnlessBlank<kCell> cell_unless_blank{};
template <std::int32_t kCell>
inline constexpr ToCellUnlessEmpty<kCell> to_cell_unless_empty{};
template <std::int32_t kCell, std::size_t kPrefix>
inline constexpr ToCellLessPrefix<kCell, kPrefix> to_cell_less_prefix{};
template <std::int32_t kCell>
inline constexpr ToCellHead<kCell> to_cell_head{};

}  // namespace rule

}  // namespace ombrix
