#include "hosting/shipped.h"

#include <atomic>

#include "base/names.h"

namespace ombrix {

namespace {

std::atomic<bool> classes_entered{true};
std::atomic<std::int64_t> living_instances{0};

bool can_be_made(const Shipped& shipped) {
  return shipped.role() == Shipped::Role::component || classes_entered;
}

}  // namespace

const Shipped* find_shipped(std::string_view name) {
  for (const Shipped& each : shipped()) {
    if (same_name(each.name(), name)) return &each;
  }
  return nullptr;
}

ObjectRef make_shipped(std::string_view name) {
  const Shipped* found = find_shipped(name);
  return found != nullptr && can_be_made(*found) ? found->make() : nullptr;
}

std::vector<std::string> shipped_names() {
  std::vector<std::string> names;
  for (const Shipped& each : shipped()) {
    if (can_be_made(each)) names.emplace_back(each.name());
  }
  return names;
}

void enter_classes(bool entered) {
  classes_entered = entered;
}

InstanceCount::InstanceCount() {
  ++living_instances;
}
InstanceCount::~InstanceCount() {
  --living_instances;
}
std::int64_t InstanceCount::living() {
  return living_instances;
}

}  // namespace ombrix
