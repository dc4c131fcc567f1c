#pragma once

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "database/cell.h"

namespace ombrix::database {

class Session;

/// One piece of a statement: a literal, which can only be a compile-time text, or a value marked by
/// what it stands for. No value can become a literal.
class Piece {
 public:
  // NOLINTNEXTLINE(google-explicit-constructor): a literal stands in a statement as it is written.
  consteval Piece(const char* literal) : kind_(Kind::literal), literal_(literal) {}

 private:
  friend class Statement;
  template <class... Parts>
  friend Piece text(const Parts&... parts);
  friend Piece any_text(std::string_view value);
  friend Piece number(double value);
  friend Piece digits(std::string_view value);
  friend Piece name(std::string_view value);
  friend Piece date_value(const Date& date);
  friend Piece day(const Date& date);
  friend consteval Piece flag(const char* column);

  enum class Kind : unsigned char {
    literal,
    flag,
    text,
    any_text,
    date,
    day,
    number,
    digits,
    name
  };
  consteval Piece(Kind kind, const char* literal) : kind_(kind), literal_(literal) {}
  Piece(Kind kind, std::string value) : kind_(kind), value_(std::move(value)) {}

  Kind kind_;
  std::string_view literal_;
  std::optional<std::string> value_;
  double number_ = 0;
};

/// A text between quotes, made of its parts.
template <class... Parts>
Piece text(const Parts&... parts) {
  std::string joined;
  (joined.append(std::string_view(parts)), ...);
  return {Piece::Kind::text, std::move(joined)};
}
/// A text of any content, for statements that are the library's own alone: a quote in it is doubled
/// for a reader.
Piece any_text(std::string_view value);
/// A number.
Piece number(double value);
/// A text that must be a plain number; blanks around it are seen by a reader alone.
Piece digits(std::string_view value);
/// The plain name of a table or column, from a caller.
Piece name(std::string_view value);
/// `DateValue('...')`: the day of a date, without its time.
Piece date_value(const Date& date);
/// The same day between quotes, for a date column.
Piece day(const Date& date);
/// A flag column as a condition of its own, true when it holds neither 0 nor Null. A reader sees
/// the bare column; some databases want to be told what a flag is.
consteval Piece flag(const char* column) {
  return {Piece::Kind::flag, column};
}

/// The name of a column, which can only be a compile-time text.
struct KeyColumn {
  // NOLINTNEXTLINE(google-explicit-constructor): as for a piece.
  consteval KeyColumn(const char* column) : name(column) {}
  std::string_view name;
};

/// A statement, as literals and values kept apart. Nothing else in the library makes one for the
/// database, so that no value ever changes what a statement does.
class Statement {
 public:
  Statement(std::initializer_list<Piece> pieces) : pieces_(pieces) {}

  /// For a view, which has no key of its own: the columns that name a row, by which its rows come.
  Statement keyed_by(std::initializer_list<KeyColumn> columns) &&;
  std::span<const std::string_view> key() const { return key_; }
  /// More pieces behind the others.
  void append(std::initializer_list<Piece> pieces);

  /// With `$1`, `$2`, ... where the values stand.
  std::string prepared_text() const;
  Parameters parameters() const;
  /// As a reader sees it, the values in their places.
  std::string joined_text() const;

  /// Raises when a value would not stay a value in the joined text (a quote in a text, a digits
  /// value that is no plain number, a name that is none): the failure that the database itself
  /// gives for the joined text, or a refusal where the joined text happens to be valid. Nothing is
  /// executed.
  void verify(Session& session) const;

 private:
  std::vector<Piece> pieces_;
  std::vector<std::string_view> key_;
};

inline Statement sql(std::initializer_list<Piece> pieces) {
  return pieces;
}

}  // namespace ombrix::database
