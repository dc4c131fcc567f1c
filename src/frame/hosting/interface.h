#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "ombrix/object.h"
#include "ombrix/property.h"

namespace ombrix {

/// A member of a class as every face of the library sees it. `self` is the object that the table
/// was made for. A function that the member does not offer is null.
struct Member {
  std::string_view name;
  Access access = Access::none;
  std::size_t least_arguments = 0;
  std::size_t most_arguments = 0;
  Value (*get)(void* self, std::span<Value> arguments) = nullptr;
  void (*let)(void* self, const Value& value, std::span<Value> arguments) = nullptr;
  void (*set)(void* self, const ObjectRef& object) = nullptr;
  Value (*call)(void* self, std::span<Value> arguments) = nullptr;
};

/// The members of a class in dispatch order. Late calls of every kind go through here.
class Interface {
 public:
  constexpr Interface(std::string_view class_name, std::span<const Member> members)
      : class_name_(class_name), members_(members) {}

  std::string_view class_name() const { return class_name_; }
  std::span<const Member> members() const { return members_; }
  std::vector<MemberInfo> infos() const;

  Value get(void* self, std::string_view member, std::span<Value> arguments) const;
  void let(void* self, std::string_view member, const Value& value,
           std::span<Value> arguments) const;
  void set(void* self, std::string_view member, const ObjectRef& object) const;
  Value call(void* self, std::string_view member, std::span<Value> arguments) const;

 private:
  const Member& offered(std::string_view name, Access access, std::span<Value> arguments) const;

  std::string_view class_name_;
  std::span<const Member> members_;
};

namespace detail {

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
  using Held = T;
};

template <class T>
T from_value(const Value& value) {
  if constexpr (std::is_same_v<T, Value>) {
    return value;
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

  T held{};

  void take(std::span<Value> arguments, std::size_t place) {
    if constexpr (optional) {
      if (place < arguments.size())
        held = from_value<typename IsOptional<T>::Held>(arguments[place]);
    } else {
      held = from_value<T>(arguments[place]);
    }
  }
  void give_back(std::span<Value> arguments, std::size_t place) {
    if constexpr (by_reference) arguments[place] = Value(std::move(held));
  }
};

template <class Method>
struct MethodShape;
template <class C, class R, class... P>
struct MethodShape<R (C::*)(P...)> {
  static constexpr std::size_t most = sizeof...(P);
  static constexpr std::size_t least = (std::size_t{0} + ... + (Argument<P>::optional ? 0 : 1));

  template <auto Method, class Self>
  static Value invoke(Self& self, std::span<Value> values) {
    return invoke<Method>(self, values, std::index_sequence_for<P...>());
  }

 private:
  template <auto Method, class Self, std::size_t... I>
  static Value invoke(Self& self, [[maybe_unused]] std::span<Value> values,
                      std::index_sequence<I...>) {
    std::tuple<Argument<P>...> arguments;
    (std::get<I>(arguments).take(values, I), ...);
    if constexpr (std::is_void_v<R>) {
      (self.*Method)(std::get<I>(arguments).held...);
      (std::get<I>(arguments).give_back(values, I), ...);
      return Value();
    } else {
      Value answer((self.*Method)(std::get<I>(arguments).held...));
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

/// How a member takes a Null: a business class raises, a shipped component reads an empty value.
enum class Nulls : bool { raise, read_as_empty };

/// Makes the rows of the interface table of `C`. What a row offers comes from the member itself.
template <class C, Nulls nulls = Nulls::raise>
struct MembersOf {
  template <auto P>
  static constexpr Member property(std::string_view name) {
    using Property = typename detail::PropertyOf<decltype(P)>::Type;
    using T = typename Property::Type;
    Member member{.name = name, .access = Property::access};
    if constexpr (allows(Property::access, Access::get)) {
      member.get = [](void* self, std::span<Value>) { return Value((of(self).*P)()); };
    }
    if constexpr (allows(Property::access, Access::let)) {
      member.let = [](void* self, const Value& value, std::span<Value>) {
        of(self).*P = detail::from_value<T>(admitted(value));
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
            .least_arguments = Shape::least,
            .most_arguments = Shape::most,
            .call = [](void* self, std::span<Value> arguments) {
              return Shape::template invoke<M>(of(self), arguments);
            }};
  }

  /// A value that the object only tells.
  template <auto Getter>
  static constexpr Member reading(std::string_view name) {
    return {.name = name, .access = Access::get, .get = [](void* self, std::span<Value>) {
              return Value((of(self).*Getter)());
            }};
  }

 private:
  static C& of(void* self) { return *static_cast<C*>(self); }

  static Value admitted(const Value& value) {
    return nulls == Nulls::read_as_empty && value.is_null() ? Value() : value;
  }
};

}  // namespace ombrix
