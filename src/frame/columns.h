#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "ombrix/property.h"
#include "ombrix/recordset.h"

#include "base/null_use.h"
#include "base/number.h"
#include "base/raw.h"
#include "base/text.h"

namespace ombrix {

/// One column of a document's table: how it is written from `D` and how it is read into it. `D` is
/// a document for a master and a grid line for a detail.
///
/// `write` answers the value that goes to the column, or none to leave the column alone.
///
/// A document's tables are lists of these, in the order in which the columns are written; saving
/// and reading are the two loops below.
template <class D>
struct Column {
  std::string_view name;
  std::optional<Value> (*write)(D& document) = nullptr;     ///< null: not written
  void (*read)(D& document, const Value& value) = nullptr;  ///< null: not read
};

template <class D>
void write_columns(std::span<const Column<D>> columns, D& document, Recordset& row) {
  for (const Column<D>& column : columns) {
    if (column.write == nullptr) continue;
    if (const auto value = column.write(document)) row.write(column.name, *value);
  }
}

template <class D, std::size_t N>
void write_columns(const Column<D> (&columns)[N], D& document, Recordset& row) {
  write_columns(std::span<const Column<D>>(columns), document, row);
}

template <class D>
void read_columns(std::span<const Column<D>> columns, D& document, Recordset& row) {
  for (const Column<D>& column : columns) {
    if (column.read != nullptr) column.read(document, row.read(column.name));
  }
}

/// As `read_columns`, but behind an invalid use of Null it carries on with the next column.
template <class D>
void read_columns_skipping_null(std::span<const Column<D>> columns, D& document, Recordset& row) {
  for (const Column<D>& column : columns) {
    try {
      if (column.read != nullptr) column.read(document, row.read(column.name));
    } catch (const Failure& failure) {
      if (!is_null_use(failure)) throw;
    }
  }
}

template <class D>
using WriteFunction = std::optional<Value> (*)(D&);
template <class D>
using ReadFunction = void (*)(D&, const Value&);

/// The rules by which a property goes to a column and back. Each fits every document that has the
/// property: it turns into the function for the class at hand.
namespace rule {

template <class Rule>
struct Written {
  template <class D>
  constexpr operator WriteFunction<D>() const {
    return [](D& document) -> std::optional<Value> { return Rule::value(document); };
  }
};
template <class Rule>
struct Reading {
  template <class D>
  constexpr operator ReadFunction<D>() const {
    return [](D& document, const Value& value) { Rule::take(document, value); };
  }
};

template <auto P, class D>
void convert_into(D& document, const Value& value) {
  auto& property = raw(document.*P);
  property = value_to<std::remove_reference_t<decltype(property)>>(value);
}

/// The property as it is.
template <auto P>
struct Always : Written<Always<P>> {
  static Value value(const auto& document) { return raw(document.*P); }
};
template <auto P>
struct NullIfEmpty : Written<NullIfEmpty<P>> {
  static Value value(const auto& document) {
    const std::string& text = raw(document.*P);
    return text.empty() ? Value(Null{}) : Value(text);
  }
};
/// Of the whole text: blanks alone count as empty.
template <auto P>
struct NullIfBlank : Written<NullIfBlank<P>> {
  static Value value(const auto& document) {
    const std::string& text = raw(document.*P);
    return trim(text).empty() ? Value(Null{}) : Value(text);
  }
};
/// Rounded to the decimals of the document.
template <auto P>
struct Rounded : Written<Rounded<P>> {
  static Value value(const auto& document) {
    return round_half_even(raw(document.*P), document.AmtDig());
  }
};

/// An empty text leaves the column alone.
template <auto P>
struct SkipIfEmpty : Written<SkipIfEmpty<P>> {
  static std::optional<Value> value(const auto& document) {
    const std::string& text = raw(document.*P);
    if (text.empty()) return std::nullopt;
    return Value(text);
  }
};
/// A blank text leaves the column alone.
template <auto P>
struct SkipIfBlank : Written<SkipIfBlank<P>> {
  static std::optional<Value> value(const auto& document) {
    const std::string& text = raw(document.*P);
    if (trim(text).empty()) return std::nullopt;
    return Value(text);
  }
};
template <auto P>
struct Trimmed : Written<Trimmed<P>> {
  static Value value(const auto& document) { return trim(raw(document.*P)); }
};
/// To the 15 digits of its text form.
template <auto P>
struct ThroughText : Written<ThroughText<P>> {
  static Value value(const auto& document) { return head_number(general_text(raw(document.*P))); }
};
/// The exchange rate, 1 in home currency.
struct RateOrOne : Written<RateOrOne> {
  static Value value(const auto& document) {
    return document.ForeignCurrencyFlag() ? document.ExchangeRate() : 1.0;
  }
};

/// A value of any kind as a number; none at all is stored as a Null.
template <auto P>
struct NumberUnlessEmpty : Written<NumberUnlessEmpty<P>> {
  static Value value(const auto& document) {
    const Value& given = raw(document.*P);
    return given.is_empty() || given.is_null() ? Value(Null{}) : Value(given.to_number());
  }
};

/// Converted as it is; a Null raises.
template <auto P>
struct Into : Reading<Into<P>> {
  static void take(auto& document, const Value& value) { convert_into<P>(document, value); }
};
template <auto P>
struct UnlessEmpty : Reading<UnlessEmpty<P>> {
  static void take(auto& document, const Value& value) {
    if (!value.text_or_empty().empty()) convert_into<P>(document, value);
  }
};
/// A text of blanks, or none, leaves the property.
template <auto P>
struct UnlessBlank : Reading<UnlessBlank<P>> {
  static void take(auto& document, const Value& value) {
    if (!trim(value.text_or_empty()).empty()) convert_into<P>(document, value);
  }
};
template <auto P>
struct UnlessNull : Reading<UnlessNull<P>> {
  static void take(auto& document, const Value& value) {
    if (!value.is_null()) convert_into<P>(document, value);
  }
};
/// The number at the head of the stored text; a Null raises.
template <auto P>
struct Head : Reading<Head<P>> {
  static void take(auto& document, const Value& value) { raw(document.*P) = head_of(value); }
};
/// A Null reads as "".
template <auto P>
struct OrEmpty : Reading<OrEmpty<P>> {
  static void take(auto& document, const Value& value) { raw(document.*P) = value.text_or_empty(); }
};
/// "Item" for an empty stored value, Null included.
template <auto P>
struct ItemIfEmpty : Reading<ItemIfEmpty<P>> {
  static void take(auto& document, const Value& value) {
    const std::string text = value.text_or_empty();
    raw(document.*P) = text.empty() ? "Item" : text;
  }
};

template <auto P>
inline constexpr Always<P> always{};
template <auto P>
inline constexpr NullIfEmpty<P> null_if_empty{};
template <auto P>
inline constexpr NullIfBlank<P> null_if_blank{};
template <auto P>
inline constexpr Rounded<P> rounded{};
template <auto P>
inline constexpr SkipIfEmpty<P> skip_if_empty{};
template <auto P>
inline constexpr SkipIfBlank<P> skip_if_blank{};
template <auto P>
inline constexpr Trimmed<P> trimmed{};
template <auto P>
inline constexpr ThroughText<P> through_text{};
inline constexpr RateOrOne rate_or_one{};
template <auto P>
inline constexpr NumberUnlessEmpty<P> number_unless_empty{};
template <auto P>
inline constexpr Into<P> into{};
template <auto P>
inline constexpr UnlessEmpty<P> unless_empty{};
template <auto P>
inline constexpr UnlessBlank<P> unless_blank{};
template <auto P>
inline constexpr UnlessNull<P> unless_null{};
template <auto P>
inline constexpr Head<P> head{};
template <auto P>
inline constexpr OrEmpty<P> or_empty{};
template <auto P>
inline constexpr ItemIfEmpty<P> item_if_empty{};

}  // namespace rule

}  // namespace ombrix
