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

/// What goes to a column; none leaves the column alone.
using Written = std::optional<Value>;

/// One column of a document's table: how it is written from `D` and how it is read into it. `D` is
/// a document for a master and a grid line for a detail.
///
/// A document's tables are lists of these, in the order in which the columns are written; saving
/// and reading are the two loops below.
template <class D>
struct Column {
  std::string_view name;
  Written (*write)(D& document) = nullptr;                  ///< null: not written
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

/// Brings a master to the row that a save writes: a new one with its key columns, or the one that
/// stands, whose lines `delete_lines` takes away.
template <class D>
void begin_save(Recordset& master, std::span<const Column<D>> key_columns, D& document,
                auto delete_lines) {
  if (!master.IsEOF()) {
    delete_lines();
    return;
  }
  master.AddNew();
  write_columns(key_columns, document, master);
}

/// The rules by which a property goes to a column and back. Each fits every document that has the
/// property.
namespace rule {

template <auto P, class D>
void convert_into(D& document, const Value& value) {
  auto& property = raw(document.*P);
  property = value_to<std::remove_reference_t<decltype(property)>>(value);
}

/// The property as it is.
template <auto P, class D>
Written always(D& document) {
  return raw(document.*P);
}
template <auto P, class D>
Written null_if_empty(D& document) {
  const std::string& text = raw(document.*P);
  return text.empty() ? Value(Null{}) : Value(text);
}
/// Of the whole text: blanks alone count as empty.
template <auto P, class D>
Written null_if_blank(D& document) {
  const std::string& text = raw(document.*P);
  return trim(text).empty() ? Value(Null{}) : Value(text);
}
/// Rounded to the decimals of the document.
template <auto P, class D>
Written rounded(D& document) {
  return round_half_even(raw(document.*P), document.AmtDig());
}

/// An empty text leaves the column alone.
template <auto P, class D>
Written skip_if_empty(D& document) {
  const std::string& text = raw(document.*P);
  if (text.empty()) return std::nullopt;
  return Value(text);
}
/// A blank text leaves the column alone.
template <auto P, class D>
Written skip_if_blank(D& document) {
  const std::string& text = raw(document.*P);
  if (trim(text).empty()) return std::nullopt;
  return Value(text);
}
template <auto P, class D>
Written trimmed(D& document) {
  return trim(raw(document.*P));
}
/// To the 15 digits of its text form.
template <auto P, class D>
Written through_text(D& document) {
  return head_number(general_text(raw(document.*P)));
}
/// The exchange rate, 1 in home currency.
template <class D>
Written rate_or_one(D& document) {
  return document.ForeignCurrencyFlag() ? document.ExchangeRate() : 1.0;
}

/// A value of any kind as a number; none at all is stored as a Null.
template <auto P, class D>
Written number_unless_empty(D& document) {
  const Value& given = raw(document.*P);
  return given.is_empty() || given.is_null() ? Value(Null{}) : Value(given.to_number());
}

/// Converted as it is; a Null raises.
template <auto P, class D>
void into(D& document, const Value& value) {
  convert_into<P>(document, value);
}
template <auto P, class D>
void unless_empty(D& document, const Value& value) {
  if (!value.text_or_empty().empty()) convert_into<P>(document, value);
}
/// A text of blanks, or none, leaves the property.
template <auto P, class D>
void unless_blank(D& document, const Value& value) {
  if (!trim(value.text_or_empty()).empty()) convert_into<P>(document, value);
}
template <auto P, class D>
void unless_null(D& document, const Value& value) {
  if (!value.is_null()) convert_into<P>(document, value);
}
/// The number at the head of the stored text; a Null raises.
template <auto P, class D>
void head(D& document, const Value& value) {
  raw(document.*P) = head_of(value);
}
/// A Null reads as "".
template <auto P, class D>
void or_empty(D& document, const Value& value) {
  raw(document.*P) = value.text_or_empty();
}
/// "Item" for an empty stored value, Null included.
template <auto P, class D>
void item_if_empty(D& document, const Value& value) {
  const std::string text = value.text_or_empty();
  raw(document.*P) = text.empty() ? "Item" : text;
}

}  // namespace rule

}  // namespace ombrix
