#pragma once

#include <memory>
#include <string>
#include <utility>

#include "ombrix/date.h"
#include "ombrix/object.h"

namespace ombrix {

struct RawAccess;
namespace detail {
std::string without_outer_blanks(const std::string& text);
}  // namespace detail

inline constexpr Access kGetLet = Access::get | Access::let;
inline constexpr Access kGetSet = Access::get | Access::set;

/// A setter that stores what it is given.
struct AsGiven {
  template <class T>
  static const T& apply(const T& value) {
    return value;
  }
};
/// A setter that drops the outer blanks of a text.
struct Trims {
  static std::string apply(const std::string& text) { return detail::without_outer_blanks(text); }
};

/// A property of a business class: assigned with `=`, read with `()` or by conversion. What its
/// interface does not allow does not compile.
template <class T, Access kAccess = kGetLet, class Setter = AsGiven>
class Property {
 public:
  using Type = T;
  static constexpr Access access = kAccess;
  static constexpr bool readable = allows(kAccess, Access::get);
  static constexpr bool writable = allows(kAccess, Access::let | Access::set);

  Property() = default;
  Property(const Property&) = delete;

  Property& operator=(const T& value) requires writable {
    value_ = Setter::apply(value);
    return *this;
  }
  Property& operator=(const Property& other) requires(readable&& writable) {
    return *this = other();
  }

  const T& operator()() const requires readable { return value_; }
  operator const T&() const requires readable { return value_; }

 private:
  friend struct RawAccess;
  T value_{};
};

using Text = Property<std::string>;
using TrimmedText = Property<std::string, kGetLet, Trims>;
using Number = Property<double>;
using Flag = Property<bool>;
using Day = Property<Date>;
template <class T>
using Reference = Property<std::shared_ptr<T>, kGetSet>;

}  // namespace ombrix
