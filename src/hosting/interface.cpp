#include "hosting/interface.h"

#include <algorithm>
#include <string>

#include "base/names.h"

namespace ombrix {

std::vector<MemberInfo> Interface::infos() const {
  std::vector<MemberInfo> infos;
  for (const Member& member : members_) {
    infos.push_back({static_cast<int>(infos.size()) + 1, member.name, member.access, member.type});
  }
  return infos;
}

const Member* Interface::find(std::string_view name) const {
  for (std::size_t slot = slot_of(name); slots_[slot] != 0; slot = (slot + 1) % kSlots) {
    const Member& member = members_[slots_[slot] - 1U];
    if (member.name == name || same_name(member.name, name)) return &member;
  }
  return nullptr;
}

const Member& Interface::offered(std::string_view name, Access access,
                                 std::span<Value> arguments) const {
  const Member* member = find(name);
  if (member == nullptr || !allows(member->access, access)) {
    throw Failure(438, "Object doesn't support this property or method: " +
                           std::string(class_name_) + "." + std::string(name));
  }
  const auto required = [](const Parameter& parameter) { return !parameter.optional; };
  if (arguments.size() > member->parameters.size()) {
    throw Failure(450, "Wrong number of arguments or invalid property assignment");
  }
  const auto& rest = member->parameters.subspan(arguments.size());
  if (std::any_of(rest.begin(), rest.end(), required)) throw Failure(449, "Argument not optional");
  return *member;
}

Value Interface::get(void* self, std::string_view member, std::span<Value> arguments) const {
  return offered(member, Access::get, arguments).get(self, arguments);
}

void Interface::let(void* self, std::string_view member, const Value& value,
                    std::span<Value> arguments) const {
  const Member& offer = offered(member, Access::let, arguments);
  try {
    offer.let(self, value, arguments);
  } catch (const Failure& failure) {
    if (failure.number() != 13) throw;
    throw Mismatch(std::string(offer.name) + " takes a " + std::string(offer.type));
  }
}

void Interface::set(void* self, std::string_view member, const ObjectRef& object) const {
  const Member& offer = offered(member, Access::set, {});
  try {
    offer.set(self, object);
  } catch (const Failure& failure) {
    if (failure.number() != 13) throw;
    throw Mismatch(std::string(offer.name) + " takes a " + std::string(offer.type));
  }
}

Value Interface::call(void* self, std::string_view member, std::span<Value> arguments) const {
  const Member& offer = offered(member, Access::call, arguments);
  try {
    return offer.call(self, arguments);
  } catch (const Mismatch& mismatch) {
    throw Mismatch(std::string(offer.name) + ": " + mismatch.hint());
  }
}

}  // namespace ombrix
