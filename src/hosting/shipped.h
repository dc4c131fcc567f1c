#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/components.h"

#include "database/statement.h"
#include "hosting/hosted.h"

namespace ombrix {

/// What ships under a name: a business class of this library or a component that stands in for a
/// sibling of the suite.
class Shipped final : public ClassFactory {
 public:
  using Make = ObjectRef (*)(const Interface& interface);
  enum class Role : bool { component, business_class };

  /// The table and column in which the class stores final numbers, "LPO_Master Where LPO_No=": a
  /// counter passes over a number that stands in one of them.
  using Numbers = std::optional<database::Piece>;

  Shipped(Role role, const Interface& interface, Make maker, Numbers numbers = std::nullopt)
      : role_(role), interface_(interface), make_(maker), numbers_(std::move(numbers)) {}

  std::string_view name() const { return interface_.class_name(); }
  /// The entry points enter and remove business classes; components can always be made.
  Role role() const { return role_; }
  ObjectRef make() const override { return make_(interface_); }
  const Numbers& numbers() const { return numbers_; }

 private:
  Role role_;
  const Interface& interface_;
  Make make_;
  Numbers numbers_;
};

/// An object of class `C` for each name.
template <class C>
Shipped shipped_as(Shipped::Role role, const Interface& interface,
                   Shipped::Numbers numbers = std::nullopt) {
  const auto make = [](const Interface& members) -> ObjectRef {
    return std::make_shared<Hosted<C>>(members);
  };
  return {role, interface, make, std::move(numbers)};
}
template <class C>
Shipped business_class(const Interface& interface, Shipped::Numbers numbers = std::nullopt) {
  return shipped_as<C>(Shipped::Role::business_class, interface, std::move(numbers));
}

/// The one list of everything that ships.
std::span<const Shipped> shipped();

/// Null for a name that does not ship.
const Shipped* find_shipped(std::string_view name);
/// An empty reference for a name that does not ship, and for a class that was removed.
ObjectRef make_shipped(std::string_view name);
std::vector<std::string> shipped_names();

/// Whether the business classes can be made by name; they can from the start.
void enter_classes(bool entered);

/// Counts the living instances of business classes.
class InstanceCount {
 public:
  InstanceCount();
  ~InstanceCount();
  InstanceCount(const InstanceCount&) = delete;
  InstanceCount& operator=(const InstanceCount&) = delete;
  static std::int64_t living();
};

}  // namespace ombrix
