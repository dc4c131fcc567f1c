#include "hosting/c/guard.h"

namespace {

struct LastFailure {
  std::int32_t number = 0;
  std::string text;
  std::string hint;
};

LastFailure& last_failure() {
  thread_local LastFailure failure;
  return failure;
}

}  // namespace

namespace ombrix::c {

ombrix_status remember(ombrix_status status, std::int32_t number, std::string text,
                       std::string hint) noexcept {
  last_failure() = {number, std::move(text), std::move(hint)};
  return status;
}

ombrix_status remember(const Failure& failure) noexcept {
  const ombrix_status status = failure.number() == 438 ? OMBRIX_NO_MEMBER : OMBRIX_FAILURE;
  return remember(status, failure.number(), failure.description());
}

}  // namespace ombrix::c

int32_t ombrix_failure_number(void) {
  return last_failure().number;
}
const char* ombrix_failure_text(void) {
  return last_failure().text.c_str();
}
const char* ombrix_failure_hint(void) {
  return last_failure().hint.c_str();
}

ombrix_status ombrix_raise(int32_t number, const char* description) {
  return ombrix::c::guarded([&] {
    const std::string text(ombrix::c::checked_text(description));
    ombrix::c::remember(OMBRIX_FAILURE, number, text);
  });
}
