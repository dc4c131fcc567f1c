#pragma once

#include <memory>
#include <utility>

#include "hosting/interface.h"

namespace ombrix {

/// An object of class `C` whose members are reached by name.
template <class C>
class Hosted final : public Object {
 public:
  explicit Hosted(const Interface& interface) : interface_(interface) {}

  C& typed() { return typed_; }

  std::string_view class_name() const override { return interface_.class_name(); }
  Value get(std::string_view member, std::span<Value> arguments) override {
    return interface_.get(&typed_, member, arguments);
  }
  void let(std::string_view member, const Value& value, std::span<Value> arguments) override {
    interface_.let(&typed_, member, value, arguments);
  }
  void set(std::string_view member, const ObjectRef& object) override {
    interface_.set(&typed_, member, object);
  }
  Value call(std::string_view member, std::span<Value> arguments) override {
    return interface_.call(&typed_, member, arguments);
  }
  std::vector<MemberInfo> members() const override { return interface_.infos(); }

 private:
  const Interface& interface_;
  C typed_;
};

}  // namespace ombrix
