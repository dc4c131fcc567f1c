#pragma once

#include <mutex>
#include <vector>

#include "ombrix/object.h"
#include "ombrix/ombrix.h"

namespace ombrix::c {

/// The objects that C clients hold, by handle. A handle is a slot and the slot's turn, so that a
/// released one is told from the next one in its slot. Safe from any thread.
class Handles {
 public:
  static Handles& instance();

  ombrix_handle add(ObjectRef object);
  /// An empty reference for a handle that is not held.
  ObjectRef find(ombrix_handle handle) const;
  bool remove(ombrix_handle handle);
  std::size_t held() const;

 private:
  struct Slot {
    ObjectRef object;
    std::uint32_t turn = 1;
  };
  /// Null when the handle is not held.
  Slot* slot_of(ombrix_handle handle);

  mutable std::mutex mutex_;
  std::vector<Slot> slots_;
  std::vector<std::uint32_t> free_;
};

}  // namespace ombrix::c
