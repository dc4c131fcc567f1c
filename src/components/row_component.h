#pragma once

#include <span>
#include <vector>

#include "components/component.h"

namespace ombrix::components {

/// What goes to a column for what a member holds.
using Rule = Value (*)(const Value& value);
Value as_it_is(const Value& value);
Value null_if_empty(const Value& value);
Value number_unless_empty(const Value& value);
/// For a date: the zero date was never set.
Value null_if_zero(const Value& value);

/// The type of a member; what it is given is converted to it.
enum class Type : unsigned char { text, number, flag, day, any };

/// A member that is kept, and the column that it goes to.
struct Stored {
  std::string_view member;
  std::string_view column;
  Type type = Type::text;
  Rule rule = as_it_is;
  Access access = kGetLet;
};

/// A component whose members are the columns of the row that it writes: one table tells both.
class RowComponent : public Component {
 public:
  /// As a client reads and lets the member at `place`.
  const Value& kept(std::size_t place) const { return values_[place]; }
  void keep(std::size_t place, const Value& value);

 protected:
  explicit RowComponent(std::span<const Stored> members);

  const Value& member(std::string_view name) const { return values_[place_of(name)]; }
  std::string text(std::string_view name) const { return member(name).to_text(); }
  double number(std::string_view name) const { return member(name).to_number(); }
  void put(std::string_view name, Value value) { values_[place_of(name)] = std::move(value); }

  /// As `Component::ready`, by the names of members.
  bool ready_with(std::string_view work, std::initializer_list<std::string_view> keys);
  /// Adds the members as a row of the table that the statement selects from.
  void write_row(const database::Statement& table) const;

 private:
  std::size_t place_of(std::string_view name) const;

  std::span<const Stored> members_;
  std::vector<Value> values_;
};

namespace detail {

std::string_view constexpr name_of(Type type) {
  switch (type) {
    case Type::text:
      return "String";
    case Type::number:
      return "Double";
    case Type::flag:
      return "Boolean";
    case Type::day:
      return "Date";
    case Type::any:
      break;
  }
  return "Variant";
}

template <class C, std::size_t kPlace>
constexpr Member stored_member(const Stored& stored) {
  Member member{.name = stored.member, .access = stored.access, .type = name_of(stored.type)};
  member.get = [](void* self, std::span<Value>) { return static_cast<C*>(self)->kept(kPlace); };
  if (allows(stored.access, Access::let)) {
    member.let = [](void* self, const Value& value, std::span<Value>) {
      static_cast<C*>(self)->keep(kPlace, value);
    };
  }
  return member;
}

}  // namespace detail

/// The interface table of a row component: its connection, what it stores, its reason, its methods.
template <class C, std::size_t kStored, std::size_t kMethods>
constexpr auto members_with(const Stored (&stored)[kStored], const Member (&methods)[kMethods]) {
  using Of = MembersOf<C>;
  std::array<Member, kStored + kMethods + 2> members{};
  members[0] = Of::template property<&C::AdoConnectionObject>("AdoConnectionObject");
  [&]<std::size_t... kPlace>(std::index_sequence<kPlace...>) {
    ((members[kPlace + 1] = detail::stored_member<C, kPlace>(stored[kPlace])), ...);
  }
  (std::make_index_sequence<kStored>());
  members[kStored + 1] = Of::template property<&C::ErrDesc>("ErrDesc");
  for (std::size_t method = 0; method < kMethods; ++method) {
    members[kStored + 2 + method] = methods[method];
  }
  return members;
}

}  // namespace ombrix::components
