#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "ombrix/date.h"
#include "ombrix/failure.h"

namespace ombrix {

class Object;
/// A shared reference to a component, a connection or a grid; an empty one is "Nothing".
using ObjectRef = std::shared_ptr<Object>;

struct Empty {
  friend constexpr bool operator==(Empty, Empty) { return true; }
};
struct Null {
  friend constexpr bool operator==(Null, Null) { return true; }
};

/// What a property, a database field or an argument holds when its type is known only at run time.
///
/// The readers below convert as the suite does everywhere: Null raises "Invalid use of Null", Empty
/// reads as "", 0, False or the zero date, a Boolean counts -1 or 0, and a text that is no number,
/// Boolean or date raises "Type mismatch".
class Value {
 public:
  using Content =
      std::variant<Empty, Null, bool, std::int32_t, double, Date, std::string, ObjectRef>;

  Value() = default;
  Value(Empty) {}
  Value(Null null) : content_(null) {}
  Value(bool flag) : content_(flag) {}
  Value(std::int32_t number) : content_(number) {}
  Value(double number) : content_(number) {}
  Value(Date date) : content_(date) {}
  Value(std::string text) : content_(std::move(text)) {}
  Value(std::string_view text) : content_(std::string(text)) {}
  Value(const char* text) : content_(std::string(text)) {}
  template <class T, class = std::enable_if_t<std::is_convertible_v<T*, Object*>>>
  Value(std::shared_ptr<T> object) : content_(ObjectRef(std::move(object))) {}

  bool is_null() const { return std::holds_alternative<Null>(content_); }
  bool is_empty() const { return std::holds_alternative<Empty>(content_); }
  bool is_text() const { return std::holds_alternative<std::string>(content_); }
  bool is_object() const { return std::holds_alternative<ObjectRef>(content_); }
  const Content& content() const { return content_; }

  /// A number takes its general form, a Boolean reads "True" or "False".
  std::string to_text() const;
  /// Raises "Overflow" for a number text beyond the range of a Double.
  double to_number() const;
  /// Rounds half to even; raises "Overflow" outside 32 bits.
  std::int32_t to_long() const;
  bool to_flag() const;
  /// A number counts days from the zero date.
  Date to_date() const;
  /// Raises "Type mismatch" for anything but an object.
  ObjectRef to_object() const;

  /// As `to_text`, but a Null reads as "": for descriptions and joined texts.
  std::string text_or_empty() const { return is_null() ? std::string() : to_text(); }

  /// Same kind and same content; no conversion takes place.
  friend bool operator==(const Value&, const Value&) = default;

 private:
  Content content_;
};

/// The conversion that goes with a C++ type, for code that is generic over properties.
template <class T>
T value_to(const Value& value);
template <>
inline std::string value_to(const Value& value) {
  return value.to_text();
}
template <>
inline double value_to(const Value& value) {
  return value.to_number();
}
template <>
inline std::int32_t value_to(const Value& value) {
  return value.to_long();
}
template <>
inline bool value_to(const Value& value) {
  return value.to_flag();
}
template <>
inline Date value_to(const Value& value) {
  return value.to_date();
}

/// Arithmetic on fields: the result is Null when an operand is; raises "Overflow" beyond a Double.
Value sum(const Value& left, const Value& right);
Value product(const Value& left, const Value& right);

/// `dividend / divisor`; raises "Division by zero" or "Overflow", never gives infinity or NaN.
double quotient(double dividend, double divisor);

}  // namespace ombrix
