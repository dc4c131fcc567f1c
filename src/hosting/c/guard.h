#pragma once

#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "hosting/c/handles.h"
#include "hosting/c/values.h"
#include "hosting/interface.h"

namespace ombrix::c {

/// Keeps the calling thread's last failure; answers the status that goes with it.
ombrix_status remember(ombrix_status status, std::int32_t number, std::string text,
                       std::string hint = "") noexcept;
ombrix_status remember(const Failure& failure) noexcept;

/// Every entry of the C interface runs in here: nothing that is thrown leaves it.
template <class Body>
ombrix_status guarded(Body&& body) noexcept {
  try {
    body();
    return OMBRIX_OK;
  } catch (const Refusal& refusal) {
    return remember(refusal.status, 5, refusal.reason);
  } catch (const Mismatch& mismatch) {
    return remember(OMBRIX_FAILURE, mismatch.number(), mismatch.description(), mismatch.hint());
  } catch (const Failure& failure) {
    return remember(failure);
  } catch (const std::bad_alloc&) {
    return remember(OMBRIX_INTERNAL, 7, "Out of memory");
  } catch (const std::length_error&) {
    return remember(OMBRIX_INTERNAL, 7, "Out of memory");
  } catch (const std::exception& fault) {
    return remember(OMBRIX_INTERNAL, 51, fault.what());
  } catch (...) {
    return remember(OMBRIX_INTERNAL, 51, "Internal error");
  }
}

template <class T>
T& given(T* pointer) {
  if (pointer == nullptr) throw Refusal{OMBRIX_INVALID_ARGUMENT, "A pointer is null."};
  return *pointer;
}

/// The object of a handle; refuses one that is not held.
inline ObjectRef held(ombrix_handle handle) {
  ObjectRef object = Handles::instance().find(handle);
  if (!object) throw Refusal{OMBRIX_INVALID_HANDLE, "The handle is not held."};
  return object;
}

/// As `held`, for an entry that takes one kind of object.
template <class T>
std::shared_ptr<T> held_as(ombrix_handle handle) {
  auto typed = std::dynamic_pointer_cast<T>(held(handle));
  if (!typed) throw Refusal{OMBRIX_INVALID_HANDLE, "The handle is of another kind of object."};
  return typed;
}

inline void give(ombrix_handle* target, ObjectRef object) {
  *target = Handles::instance().add(std::move(object));
}

}  // namespace ombrix::c
