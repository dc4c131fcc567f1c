#include "database/statement.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "ombrix/failure.h"

#include "base/names.h"
#include "base/number.h"
#include "base/text.h"
#include "database/session.h"

namespace ombrix::database {

namespace {

/// Whole numbers go as integers, so that a server can look them up in an integer index as well as
/// in one of doubles.
Parameter number_parameter(double value) {
  constexpr double kExact = 9007199254740992.0;
  if (std::trunc(value) == value && std::fabs(value) <= kExact) {
    return {Kind::integer, static_cast<std::int64_t>(value)};
  }
  return {Kind::number, value};
}

void append_quoted(std::string& text, std::string_view value) {
  text += '\'';
  for (const char c : value) text.append(c == '\'' ? 2 : 1, c);
  text += '\'';
}

double digits_value(const std::string& digits) {
  const auto value = whole_number_text(digits);
  if (!value || !std::isfinite(*value)) raise_overflow();
  return *value;
}

}  // namespace

Piece number(double value) {
  Piece piece(Piece::Kind::number, general_text(value));
  piece.number_ = value;
  return piece;
}

Piece any_text(std::string_view value) {
  return {Piece::Kind::any_text, std::string(value)};
}

Piece digits(std::string_view value) {
  return {Piece::Kind::digits, std::string(value)};
}

Piece date_value(const Date& date) {
  return {Piece::Kind::date, date.short_text()};
}

Piece day(const Date& date) {
  return {Piece::Kind::day, date.short_text()};
}

Piece name(std::string_view value) {
  return {Piece::Kind::name, std::string(value)};
}

Statement Statement::keyed_by(std::initializer_list<KeyColumn> columns) && {
  for (const KeyColumn& column : columns) key_.push_back(column.name);
  return std::move(*this);
}

void Statement::append(std::initializer_list<Piece> pieces) {
  pieces_.insert(pieces_.end(), pieces);
}

std::string Statement::prepared_text() const {
  std::string text;
  text.reserve(128);
  int place = 0;
  for (const Piece& piece : pieces_) {
    switch (piece.kind_) {
      case Piece::Kind::literal:
        text += piece.literal_;
        break;
      case Piece::Kind::name:
        text += *piece.value_;
        break;
      case Piece::Kind::flag:
        text.append(piece.literal_).append("<>0");
        break;
      case Piece::Kind::text:
      case Piece::Kind::any_text:
      case Piece::Kind::date:
      case Piece::Kind::day:
      case Piece::Kind::number:
      case Piece::Kind::digits: {
        char digits[8] = {'$'};
        const auto end = std::to_chars(digits + 1, digits + sizeof digits, ++place).ptr;
        text.append(digits, end);
        break;
      }
    }
  }
  return text;
}

Parameters Statement::parameters() const {
  Parameters parameters;
  parameters.reserve(pieces_.size() / 2);
  for (const Piece& piece : pieces_) {
    switch (piece.kind_) {
      case Piece::Kind::text:
      case Piece::Kind::any_text:
        parameters.push_back({Kind::text, *piece.value_});
        break;
      case Piece::Kind::date:
      case Piece::Kind::day:
        parameters.push_back({Kind::text, Date::parse(*piece.value_).stored_text()});
        break;
      case Piece::Kind::number:
        parameters.push_back(number_parameter(piece.number_));
        break;
      case Piece::Kind::digits:
        parameters.push_back(number_parameter(digits_value(*piece.value_)));
        break;
      case Piece::Kind::literal:
      case Piece::Kind::flag:
      case Piece::Kind::name:
        break;
    }
  }
  return parameters;
}

std::string Statement::joined_text() const {
  std::string text;
  for (const Piece& piece : pieces_) {
    switch (piece.kind_) {
      case Piece::Kind::literal:
      case Piece::Kind::flag:
        text += piece.literal_;
        break;
      case Piece::Kind::text:
      case Piece::Kind::day:
        text.append("'").append(*piece.value_).append("'");
        break;
      case Piece::Kind::any_text:
        append_quoted(text, *piece.value_);
        break;
      case Piece::Kind::date:
        text.append("DateValue('").append(*piece.value_).append("')");
        break;
      case Piece::Kind::number:
      case Piece::Kind::digits:
      case Piece::Kind::name:
        text += *piece.value_;
        break;
    }
  }
  return text;
}

void Statement::verify(Session& session) const {
  const bool sound = std::all_of(pieces_.begin(), pieces_.end(), [](const Piece& piece) {
    switch (piece.kind_) {
      case Piece::Kind::text:
        return piece.value_->find('\'') == std::string::npos &&
               piece.value_->find('\0') == std::string::npos;
      case Piece::Kind::any_text:
        return piece.value_->find('\0') == std::string::npos;
      case Piece::Kind::digits:
        return is_plain_number(trim(*piece.value_));
      case Piece::Kind::name:
        return is_plain_name(*piece.value_);
      case Piece::Kind::literal:
      case Piece::Kind::flag:
      case Piece::Kind::date:
      case Piece::Kind::day:
      case Piece::Kind::number:
        return true;
    }
    return false;
  });
  if (sound) return;
  session.driver().check(joined_text());
  throw Failure(kDatabaseFailure, "The statement was refused: a value would change what it does.");
}

}  // namespace ombrix::database
