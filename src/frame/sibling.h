#pragma once

#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "ombrix/object.h"

#include "database/instruments.h"

namespace ombrix {

/// A component of the suite outside this library, made by its name and asked late: its members are
/// set one by one in the order given, and what is not set is not touched. Failures that it raises
/// go on to the caller. It is released with this object.
class Sibling {
 public:
  Sibling(std::string_view name, std::shared_ptr<database::Instruments> instruments);

  void set(std::string_view member, const Value& value);
  void set(std::initializer_list<std::pair<std::string_view, Value>> members);
  Value get(std::string_view member);
  /// An argument that the component changed holds the new value afterwards.
  Value ask(std::string_view method, std::span<Value> arguments = {});
  /// The same, for a method that answers True or False.
  bool call(std::string_view method, std::span<Value> arguments = {});
  /// With texts by reference, which hold afterwards what the component made of them.
  bool call(std::string_view method, std::initializer_list<std::string*> texts);

 private:
  /// False when the call is not to be made and answers False.
  template <class Run>
  bool watched(Call::Kind kind, std::string_view member, Run run);

  std::string name_;
  std::shared_ptr<database::Instruments> instruments_;
  ObjectRef object_;
};

}  // namespace ombrix
