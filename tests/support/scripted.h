#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/components.h"
#include "ombrix/object.h"

namespace ombrix::testing {

/// What a component that a test puts in a sibling's place was asked, and how it answers.
struct Script {
  /// "ItemCode=AA1001" for a member, "GLInsert()" for a call, in order; "new" for each instance.
  std::vector<std::string> asked{};
  /// The call, counted from 1 over all calls of all instances, that answers False; 0 for none.
  int refused_call = 0;
  std::string reason = "The component says no.";
  int calls = 0;

  /// Members that were set and calls that were made, without what tells the connection.
  std::string told() const {
    std::string text;
    for (const auto& line : asked) text += (text.empty() ? "" : "\n") + line;
    return text;
  }
};

inline std::string told(const Value& value) {
  if (value.is_null()) return "Null";
  if (value.is_object()) return "object";
  return value.to_text();
}

/// Reads back what was set; what never was reads as Empty.
class ScriptedSibling final : public Object {
 public:
  explicit ScriptedSibling(Script& script) : script_(script) { script_.asked.emplace_back("new"); }

  std::string_view class_name() const override { return "ScriptedSibling"; }
  Value get(std::string_view member, std::span<Value>) override {
    return member == "ErrDesc" ? Value(script_.reason) : held_[std::string(member)];
  }
  void let(std::string_view member, const Value& value, std::span<Value>) override {
    held_[std::string(member)] = value;
    script_.asked.push_back(std::string(member) + "=" + testing::told(value));
  }
  void set(std::string_view member, const ObjectRef&) override {
    script_.asked.push_back(std::string(member) + "=object");
  }
  Value call(std::string_view member, std::span<Value> arguments) override {
    std::string line = std::string(member) + "(";
    for (const Value& argument : arguments) {
      line += (line.back() == '(' ? "" : ", ") + testing::told(argument);
    }
    script_.asked.push_back(line + ")");
    return ++script_.calls != script_.refused_call;
  }

 private:
  Script& script_;
  std::map<std::string, Value> held_;
};

/// Stands under `name` while it lives.
inline Registration scripted(std::string_view name, Script& script) {
  return {std::string(name), [&script] { return std::make_shared<ScriptedSibling>(script); }};
}

}  // namespace ombrix::testing
