#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ombrix/ombrix.h"
#include "ombrix/value.h"

namespace ombrix::scenarios {

/// An object of the library, driven by names through the C interface alone. Every member raises
/// the library's `Failure`.
class Remote {
 public:
  Remote() = default;
  explicit Remote(ombrix_handle handle) : handle_(handle) {}
  Remote(Remote&& other) noexcept : handle_(std::exchange(other.handle_, 0)) {}
  Remote& operator=(Remote&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Remote();

  static Remote create(const std::string& name);
  static Remote open(const std::string& connection_text);
  static Remote grid(std::int32_t rows, std::int32_t columns);

  ombrix_handle handle() const { return handle_; }
  /// As an argument.
  Value value() const;

  Value get(const std::string& member, const std::vector<Value>& indices = {}) const;
  void let(const std::string& member, const Value& value,
           const std::vector<Value>& indices = {}) const;
  /// An object, in the way that the member takes one.
  void refer(const std::string& member, const Remote& object) const;
  /// All arguments go by reference, and come back with what was left in them.
  Value call(const std::string& method, std::vector<Value>& arguments) const;

 private:
  ombrix_handle handle_ = 0;
};

/// What the library put into a value, which ends here.
Value taken(ombrix_value& value);

/// Raises what the last entry of the C interface tells, unless its status is good.
void check(ombrix_status status);

}  // namespace ombrix::scenarios
