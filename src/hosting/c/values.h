#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/ombrix.h"
#include "ombrix/value.h"

namespace ombrix::c {

/// Why an entry refuses what a client passed. Carried by a throw to the guard of the entry.
struct Refusal {
  ombrix_status status;
  const char* reason;
};

/// The text of a name or of a value; refuses null and what is not UTF-8.
std::string_view checked_text(const char* bytes, int64_t length = OMBRIX_NUL_TERMINATED);

/// Refuses a type that there is not, a null text and a stale handle.
Value from_c(const ombrix_value& value);

/// The text or the handle that the target gets is the client's to end. What the target held is not
/// looked at: a client may pass a value that was never initialised.
void write(ombrix_value& target, const Value& value);
/// Ends what the library put into the value.
void clear(ombrix_value& value);
/// Both.
void fill(ombrix_value& target, const Value& value);

/// Refuses too many arguments, and none where some are counted.
std::vector<Value> arguments_from(const ombrix_value* arguments, size_t count);

/// Arguments on their way to a callback. Their texts are those of `values`, which outlive this
/// object; their handles end with it. Neither is owned by the C value, so that a callback may
/// overwrite it by hand or with `ombrix_put_text` and its like.
class LentArguments {
 public:
  explicit LentArguments(std::span<const Value> values);
  ~LentArguments();
  LentArguments(const LentArguments&) = delete;
  LentArguments& operator=(const LentArguments&) = delete;

  ombrix_value* data() { return values_.data(); }
  size_t size() const { return values_.size(); }

 private:
  LentArguments() = default;

  std::vector<ombrix_value> values_;
  std::vector<ombrix_handle> handles_;
};

}  // namespace ombrix::c
