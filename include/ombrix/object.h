#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "ombrix/value.h"

namespace ombrix {

/// What a member allows. Values combine: `Access::get | Access::let`.
enum class Access : unsigned char { none = 0, get = 1, let = 2, set = 4, call = 8 };

constexpr Access operator|(Access left, Access right) {
  return static_cast<Access>(static_cast<unsigned char>(left) | static_cast<unsigned char>(right));
}
constexpr bool allows(Access access, Access wanted) {
  return (static_cast<unsigned char>(access) & static_cast<unsigned char>(wanted)) != 0;
}

struct MemberInfo {
  int number;             ///< place in dispatch order, from 1
  std::string_view name;  ///< lives as long as the object, as does the type
  Access access;
  std::string_view type{};  ///< of the property or the answer: "String", "Double", ...
};

/// An object whose members are reached by their names at run time: a component of the suite, a
/// business class, a connection, a grid. Names are matched without regard to case.
///
/// A member that the object lacks, or that does not allow what is asked, raises failure 438; too
/// many arguments raise 450, a missing one 449.
class Object : public std::enable_shared_from_this<Object> {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;

  /// The name under which objects of this kind are made, or a telling one.
  virtual std::string_view class_name() const = 0;

  /// `arguments` are the indices of a member that has them, such as a cell's row and column.
  virtual Value get(std::string_view member, std::span<Value> arguments = {}) = 0;
  virtual void let(std::string_view member, const Value& value,
                   std::span<Value> arguments = {}) = 0;
  /// Sets a member that holds an object; an empty reference is "Nothing".
  virtual void set(std::string_view member, const ObjectRef& object) = 0;
  /// An argument that the member takes by reference holds, after the call, what was left in it.
  virtual Value call(std::string_view member, std::span<Value> arguments = {}) = 0;

  /// All members in dispatch order; empty when the object does not tell.
  virtual std::vector<MemberInfo> members() const { return {}; }
};

}  // namespace ombrix
