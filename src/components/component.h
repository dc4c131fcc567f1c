#pragma once

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "ombrix/worker.h"

#include "hosting/hosted.h"
#include "hosting/shipped.h"

namespace ombrix::components {

/// What the shipped components share that write through the caller's connection. Failures of the
/// database rise; what is refused answers False with a reason that says what and which.
class Component : public Worker<kGetSet> {
 protected:
  /// What a row cannot do without, by the names that the caller knows.
  using Keys = std::initializer_list<std::pair<std::string_view, std::string_view>>;
  /// False, refused, without a connection or with a blank key.
  bool ready(std::string_view work, Keys keys);
  bool has_account(const std::string& account) const;
};

/// A component reads a Null that it is given as an empty value.
template <class C>
using MembersOf = ombrix::MembersOf<C, Nulls::read_as_empty>;

/// What ships under the name of the interface.
template <class C>
Shipped component(const Interface& interface, Shipped::Numbers numbers = std::nullopt) {
  return shipped_as<C>(Shipped::Role::component, interface, std::move(numbers));
}

}  // namespace ombrix::components
