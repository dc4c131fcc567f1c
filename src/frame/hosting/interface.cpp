#include "frame/hosting/interface.h"

#include <algorithm>
#include <string>

#include "frame/text.h"

namespace ombrix {

std::vector<MemberInfo> Interface::infos() const {
  std::vector<MemberInfo> infos;
  for (const Member& member : members_) {
    infos.push_back({static_cast<int>(infos.size()) + 1, member.name, member.access});
  }
  return infos;
}

const Member& Interface::offered(std::string_view name, Access access,
                                 std::span<Value> arguments) const {
  const auto member = std::find_if(members_.begin(), members_.end(), [&](const Member& candidate) {
    return same_name(candidate.name, name);
  });
  if (member == members_.end() || !allows(member->access, access)) {
    throw Failure(438, "Object doesn't support this property or method: " +
                           std::string(class_name_) + "." + std::string(name));
  }
  if (arguments.size() < member->least_arguments) throw Failure(449, "Argument not optional");
  if (arguments.size() > member->most_arguments) {
    throw Failure(450, "Wrong number of arguments or invalid property assignment");
  }
  return *member;
}

Value Interface::get(void* self, std::string_view member, std::span<Value> arguments) const {
  return offered(member, Access::get, arguments).get(self, arguments);
}

void Interface::let(void* self, std::string_view member, const Value& value,
                    std::span<Value> arguments) const {
  offered(member, Access::let, arguments).let(self, value, arguments);
}

void Interface::set(void* self, std::string_view member, const ObjectRef& object) const {
  offered(member, Access::set, {}).set(self, object);
}

Value Interface::call(void* self, std::string_view member, std::span<Value> arguments) const {
  return offered(member, Access::call, arguments).call(self, arguments);
}

}  // namespace ombrix
