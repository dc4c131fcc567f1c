#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "ombrix/object.h"
#include "ombrix/property.h"

#include "base/names.h"

namespace ombrix {

class Connection;
class Grid;

/// A parameter of a method, or the value of a property, as a reader is told of it.
struct Parameter {
  std::string_view type;
  bool by_reference = false;
  bool optional = false;
};

/// A member of a class as every face of the library sees it. `self` is the object that the table
/// was made for. A function that the member does not offer is null.
struct Member {
  std::string_view name;
  Access access = Access::none;
  std::string_view type{};  ///< of the property or the answer
  std::span<const Parameter> parameters = {};
  Value (*get)(void* self, std::span<Value> arguments) = nullptr;
  void (*let)(void* self, const Value& value, std::span<Value> arguments) = nullptr;
  void (*set)(void* self, const ObjectRef& object) = nullptr;
  Value (*call)(void* self, std::span<Value> arguments) = nullptr;
};

/// A "Type mismatch" in what the caller passed, with what the member takes.
class Mismatch final : public Failure {
 public:
  explicit Mismatch(std::string hint) : Failure(13, "Type mismatch"), hint_(std::move(hint)) {}
  const std::string& hint() const { return hint_; }

 private:
  std::string hint_;
};

/// The members of a class in dispatch order. Late calls of every kind go through here.
class Interface {
 public:
  /// Names are looked up in a table that is made with the interface, at compile time; two members
  /// of one name do not compile.
  consteval Interface(std::string_view class_name, std::span<const Member> members)
      : class_name_(class_name), members_(members) {
    for (std::size_t member = 0; member < members.size(); ++member) {
      std::size_t slot = slot_of(members[member].name);
      for (; slots_[slot] != 0; slot = (slot + 1) % kSlots) {
        if (same_name(members[slots_[slot] - 1U].name, members[member].name))
          throw "two of one name";
      }
      slots_[slot] = static_cast<std::uint8_t>(member + 1);
    }
  }

  std::string_view class_name() const { return class_name_; }
  std::span<const Member> members() const { return members_; }
  std::vector<MemberInfo> infos() const;
  /// Null when there is none of that name.
  const Member* find(std::string_view name) const;

  Value get(void* self, std::string_view member, std::span<Value> arguments) const;
  void let(void* self, std::string_view member, const Value& value,
           std::span<Value> arguments) const;
  void set(void* self, std::string_view member, const ObjectRef& object) const;
  Value call(void* self, std::string_view member, std::span<Value> arguments) const;

 private:
  static constexpr std::size_t kSlots = 256;

  static constexpr std::size_t slot_of(std::string_view name) {
    const std::uint32_t hash = hash_of_name(name);
    return (hash ^ (hash >> 16)) % kSlots;
  }

  const Member& offered(std::string_view name, Access access, std::span<Value> arguments) const;

  std::string_view class_name_;
  std::span<const Member> members_;
  std::array<std::uint8_t, kSlots> slots_{};  ///< place in `members_` from 1; 0 is free
};

/// Any object with the members of a grid serves as one; the second gives back the object that the
/// client handed over.
std::shared_ptr<Grid> as_grid(const ObjectRef& object);
ObjectRef object_of(const std::shared_ptr<Grid>& grid);

/// How a member takes a Null: a business class raises, a shipped component reads an empty value.
enum class Nulls : bool { raise, read_as_empty };

namespace detail {

inline const Value& admitted(const Value& value, Nulls nulls) {
  static const Value kEmpty;
  return nulls == Nulls::read_as_empty && value.is_null() ? kEmpty : value;
}

template <class T>
struct IsShared : std::false_type {};
template <class T>
struct IsShared<std::shared_ptr<T>> : std::true_type {
  using Object = T;
};
template <class T>
struct IsOptional : std::false_type {};
template <class T>
struct IsOptional<std::optional<T>> : std::true_type {
  using Wrapped = T;
};

template <class T>
constexpr std::string_view type_name() {
  if constexpr (std::is_same_v<T, std::string>) {
    return "String";
  } else if constexpr (std::is_same_v<T, double>) {
    return "Double";
  } else if constexpr (std::is_same_v<T, std::int32_t>) {
    return "Long";
  } else if constexpr (std::is_same_v<T, bool>) {
    return "Boolean";
  } else if constexpr (std::is_same_v<T, Date>) {
    return "Date";
  } else if constexpr (std::is_same_v<T, std::shared_ptr<Grid>>) {
    return "grid";
  } else if constexpr (std::is_same_v<T, std::shared_ptr<Connection>>) {
    return "connection";
  } else if constexpr (std::is_void_v<T>) {
    return "";
  } else {
    return "Variant";
  }
}

/// What a reader is told of a property, which may be declared wider than what it holds.
template <class Property>
constexpr std::string_view declared_type() {
  if constexpr (requires { Property::declared_type; }) {
    return Property::declared_type;
  } else {
    return type_name<typename Property::Type>();
  }
}

template <class T>
T from_value(const Value& value) {
  if constexpr (std::is_same_v<T, Value>) {
    return value;
  } else if constexpr (std::is_same_v<T, std::shared_ptr<Grid>>) {
    return as_grid(value.to_object());
  } else if constexpr (IsShared<T>::value) {
    const ObjectRef object = value.to_object();
    auto typed = std::dynamic_pointer_cast<typename IsShared<T>::Object>(object);
    if (object && !typed) raise_type_mismatch();
    return typed;
  } else {
    return value_to<T>(value);
  }
}

/// One parameter of a method: what it is passed, and what goes back to the caller. A plain
/// reference is an argument by reference; an optional one may be left out.
template <class P>
struct Argument {
  using T = std::remove_cvref_t<P>;
  static constexpr bool by_reference =
      std::is_lvalue_reference_v<P> && !std::is_const_v<std::remove_reference_t<P>>;
  static constexpr bool optional = IsOptional<T>::value;

  static constexpr Parameter parameter() {
    if constexpr (optional) {
      return {type_name<typename IsOptional<T>::Wrapped>(), by_reference, true};
    } else {
      return {type_name<T>(), by_reference, false};
    }
  }

  T value{};

  void take(std::span<Value> arguments, std::size_t place, Nulls nulls) {
    if (place >= arguments.size()) return;  // an optional one that was left out
    const Value& given = admitted(arguments[place], nulls);
    try {
      if constexpr (optional) {
        value = from_value<typename IsOptional<T>::Wrapped>(given);
      } else {
        value = from_value<T>(given);
      }
    } catch (const Failure& failure) {
      if (failure.number() != 13) throw;
      throw Mismatch("argument " + std::to_string(place + 1) + " takes a " +
                     std::string(parameter().type));
    }
  }
  void give_back(std::span<Value> arguments, std::size_t place) {
    if constexpr (by_reference && optional) {
      if (value) arguments[place] = Value(*std::move(value));
    } else if constexpr (by_reference) {
      arguments[place] = Value(std::move(value));
    }
  }
};

template <class Method>
struct MethodShape;
template <class C, class R, class... P>
struct MethodShape<R (C::*)(P...)> {
  using Answer = R;
  static constexpr std::array<Parameter, sizeof...(P)> parameters{Argument<P>::parameter()...};

  template <auto Method, Nulls nulls, class Self>
  static Value invoke(Self& self, std::span<Value> values) {
    return invoke<Method, nulls>(self, values, std::index_sequence_for<P...>());
  }

 private:
  template <auto Method, Nulls nulls, class Self, std::size_t... I>
  static Value invoke(Self& self, [[maybe_unused]] std::span<Value> values,
                      std::index_sequence<I...>) {
    std::tuple<Argument<P>...> arguments;
    (std::get<I>(arguments).take(values, I, nulls), ...);
    if constexpr (std::is_void_v<R>) {
      (self.*Method)(std::get<I>(arguments).value...);
      (std::get<I>(arguments).give_back(values, I), ...);
      return Value();
    } else {
      Value answer((self.*Method)(std::get<I>(arguments).value...));
      (std::get<I>(arguments).give_back(values, I), ...);
      return answer;
    }
  }
};
template <class C, class R, class... P>
struct MethodShape<R (C::*)(P...) const> : MethodShape<R (C::*)(P...)> {};

template <class>
struct PropertyOf;
template <class C, class P>
struct PropertyOf<P C::*> {
  using Type = P;
};

}  // namespace detail

/// Makes the rows of the interface table of `C`. What a row offers comes from the member itself.
template <class C, Nulls nulls = Nulls::raise>
struct MembersOf {
  template <auto P>
  static constexpr Member property(std::string_view name) {
    using Property = typename detail::PropertyOf<decltype(P)>::Type;
    using T = typename Property::Type;
    Member member{
        .name = name, .access = Property::access, .type = detail::declared_type<Property>()};
    if constexpr (allows(Property::access, Access::get)) {
      member.get = [](void* self, std::span<Value>) {
        const T& value = (of(self).*P)();
        if constexpr (std::is_same_v<T, std::shared_ptr<Grid>>) {
          return Value(object_of(value));
        } else {
          return Value(value);
        }
      };
    }
    if constexpr (allows(Property::access, Access::let)) {
      member.let = [](void* self, const Value& value, std::span<Value>) {
        of(self).*P = detail::from_value<T>(detail::admitted(value, nulls));
      };
    }
    if constexpr (allows(Property::access, Access::set)) {
      member.set = [](void* self, const ObjectRef& object) {
        of(self).*P = detail::from_value<T>(Value(object));
      };
    }
    return member;
  }

  template <auto M>
  static constexpr Member method(std::string_view name) {
    using Shape = detail::MethodShape<decltype(M)>;
    return {.name = name,
            .access = Access::call,
            .type = detail::type_name<typename Shape::Answer>(),
            .parameters = Shape::parameters,
            .call = [](void* self, std::span<Value> arguments) {
              return Shape::template invoke<M, nulls>(of(self), arguments);
            }};
  }

 private:
  static C& of(void* self) { return *static_cast<C*>(self); }
};

}  // namespace ombrix
