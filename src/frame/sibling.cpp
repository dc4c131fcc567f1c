#include "frame/sibling.h"

#include <vector>

#include "ombrix/components.h"

namespace ombrix {

template <class Run>
bool Sibling::watched(Call::Kind kind, std::string_view member, Run run) {
  if (!instruments_ || instruments_->idle()) {
    run();
    return true;
  }
  Call call{.kind = kind, .road = Call::Road::sibling, .text = name_};
  if (!member.empty()) call.text.append(".").append(member);
  if (!instruments_->admit(call, nullptr)) return false;
  run();
  if (instruments_->observer) instruments_->observer(call);
  return true;
}

Sibling::Sibling(std::string_view name, std::shared_ptr<database::Instruments> instruments)
    : name_(name), instruments_(std::move(instruments)) {
  watched(Call::Kind::make, "", [&] { object_ = create_object(name_); });
}

void Sibling::set(std::string_view member, const Value& value) {
  watched(Call::Kind::assign, member, [&] {
    if (value.is_object()) {
      object_->set(member, value.to_object());
    } else {
      object_->let(member, value);
    }
  });
}

void Sibling::set(std::initializer_list<std::pair<std::string_view, Value>> members) {
  for (const auto& [member, value] : members) set(member, value);
}

Value Sibling::get(std::string_view member) {
  Value value;
  watched(Call::Kind::fetch, member, [&] { value = object_->get(member); });
  return value;
}

Value Sibling::ask(std::string_view method, std::span<Value> arguments) {
  Value answer;
  watched(Call::Kind::invoke, method, [&] { answer = object_->call(method, arguments); });
  return answer;
}

bool Sibling::call(std::string_view method, std::span<Value> arguments) {
  return ask(method, arguments).to_flag();
}

bool Sibling::call(std::string_view method, std::initializer_list<std::string*> texts) {
  std::vector<Value> arguments;
  for (const std::string* text : texts) arguments.emplace_back(*text);
  const bool answer = call(method, arguments);
  std::size_t place = 0;
  for (std::string* text : texts) *text = arguments[place++].to_text();
  return answer;
}

}  // namespace ombrix
