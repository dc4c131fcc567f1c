#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <utility>

#include "ombrix/components.h"

#include "base/names.h"
#include "hosting/shipped.h"

namespace ombrix {

namespace {

struct Entry {
  std::uint64_t id;
  std::string name;
  Factory factory;
};

/// What clients registered, over what ships. The last entry of a name wins.
struct Registry {
  std::mutex mutex;
  std::map<std::string, std::vector<Entry>> entries;
  std::uint64_t last_id = 0;
};

Registry& registry() {
  // Never destroyed: a registration of the client's may outlive the statics of this library.
  static auto* registry = new Registry;
  return *registry;
}

}  // namespace

Registration::Registration(std::string_view name, Factory factory) : name_(lower_name(name)) {
  if (name_.empty() || !factory) raise_not_set();
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  id_ = ++all.last_id;
  all.entries[name_].push_back({id_, std::string(name), std::move(factory)});
}

Registration::Registration(Registration&& other) noexcept
    : name_(std::move(other.name_)), id_(std::exchange(other.id_, 0)) {}

Registration& Registration::operator=(Registration&& other) noexcept {
  std::swap(name_, other.name_);
  std::swap(id_, other.id_);
  return *this;
}

Registration::~Registration() {
  if (id_ == 0) return;
  // The factory may own objects of the client's, which are released outside the lock.
  std::vector<Entry> removed;
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  const auto found = all.entries.find(name_);
  std::vector<Entry>& entries = found->second;
  const auto own = std::stable_partition(entries.begin(), entries.end(),
                                         [this](const Entry& entry) { return entry.id != id_; });
  removed.assign(std::make_move_iterator(own), std::make_move_iterator(entries.end()));
  entries.erase(own, entries.end());
  if (entries.empty()) all.entries.erase(found);
}

ObjectRef create_object(std::string_view name) {
  Factory factory;
  {
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    const auto found = all.entries.find(lower_name(name));
    if (found != all.entries.end()) factory = found->second.back().factory;
  }
  ObjectRef object = factory ? factory() : make_shipped(name);
  if (!object) throw Failure(429, "Component can't create object: " + std::string(name));
  return object;
}

std::vector<std::string> creatable_names() {
  std::vector<std::string> names = shipped_names();
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  for (const auto& [key, entries] : all.entries) {
    const bool shipped = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
      return same_name(name, entries.back().name);
    });
    if (!shipped) names.push_back(entries.back().name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace ombrix
