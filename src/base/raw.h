#pragma once

#include "ombrix/property.h"

namespace ombrix {

struct RawAccess {
  template <class T, Access kAccess, class Setter>
  static T& of(Property<T, kAccess, Setter>& property) {
    return property.value_;
  }
  template <class T, Access kAccess, class Setter>
  static const T& of(const Property<T, kAccess, Setter>& property) {
    return property.value_;
  }
};

/// What a property holds, past its setter and its rights: for the library's own methods.
template <class P>
auto& raw(P& property) {
  return RawAccess::of(property);
}

}  // namespace ombrix
