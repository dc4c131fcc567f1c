#include "hosting/c/handles.h"

#include <utility>

namespace ombrix::c {

namespace {

constexpr unsigned kTurnShift = 32;

}  // namespace

Handles& Handles::instance() {
  // Never destroyed: a client may release its last handle while the process ends.
  static auto* handles = new Handles;
  return *handles;
}

ombrix_handle Handles::add(ObjectRef object) {
  if (!object) return 0;
  const std::lock_guard lock(mutex_);
  if (free_.empty()) {
    // Room for the way back is made first, so that a release can never fail.
    if (free_.capacity() == slots_.size()) free_.reserve(2 * slots_.size() + 1);
    slots_.emplace_back();
    free_.push_back(static_cast<std::uint32_t>(slots_.size() - 1));
  }
  const std::uint32_t place = free_.back();
  free_.pop_back();
  slots_[place].object = std::move(object);
  return (ombrix_handle{slots_[place].turn} << kTurnShift) | (place + ombrix_handle{1});
}

Handles::Slot* Handles::slot_of(ombrix_handle handle) {
  const auto place = static_cast<std::uint32_t>(handle) - std::uint32_t{1};
  if (place >= slots_.size()) return nullptr;
  Slot& slot = slots_[place];
  return slot.object && slot.turn == handle >> kTurnShift ? &slot : nullptr;
}

ObjectRef Handles::find(ombrix_handle handle) const {
  const std::lock_guard lock(mutex_);
  const Slot* slot = const_cast<Handles*>(this)->slot_of(handle);
  return slot != nullptr ? slot->object : nullptr;
}

bool Handles::remove(ombrix_handle handle) {
  // The object may end here and call back into the library, so it goes outside the lock.
  ObjectRef removed;
  const std::lock_guard lock(mutex_);
  Slot* slot = slot_of(handle);
  if (slot == nullptr) return false;
  removed = std::move(slot->object);
  slot->object = nullptr;
  if (++slot->turn == 0) slot->turn = 1;
  free_.push_back(static_cast<std::uint32_t>(slot - slots_.data()));
  return true;
}

std::size_t Handles::held() const {
  const std::lock_guard lock(mutex_);
  return slots_.size() - free_.size();
}

}  // namespace ombrix::c
