#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/ombrix.h"

namespace ombrix::testing {

/// Words behind one another; two blanks stand around an empty one.
inline std::vector<std::string> words(std::string_view text) {
  std::vector<std::string> words(1);
  for (const char c : text) c == ' ' ? void(words.emplace_back()) : words.back().push_back(c);
  return words;
}

inline const std::vector<std::string> kMembers = words(
    "LPONo lponO LPODate VendorCode VendorName CompanyPrefix BranchPrefix DocumentPrefix"
    " CurrencyCode AmtDig DocFlag manualDocIdentity OnlineFlag SyncFlag LPOIdentity"
    " LPOFCDiscountAmount ErrDesc LastUpdate GridName AdoConnectionObject Create_LPO Update_LPO"
    " Get_LPO Process_LPO TextMatrix ValueMatrix Cell State Open Close Execute BeginTrans"
    " CommitTrans RollbackTrans GetFldValue Get_Last_Counter SkipChecking NextDocumentNo"
    " Increase_Counter Nothing  \xFF\xFE K\xC3\xBChl ADOConnectionString");

inline const std::vector<std::string> kClasses = words(
    "OmbrixPurchase.LPO ombrixpurchase.lpo OmbrixSystem.CounterTransaction OmbrixSystem.General"
    " Client.Part Nobody.Knows  \xC3");

inline constexpr const char* kTexts[] = {
    "",           "1",           "AA",     "-3.5e2",
    "'",          "BR",          "PO",     "True",
    "2024-03-01", "Select 1",    "x'; --", "AABRPOTMP1",
    "\xC3\x28",   "K\xC3\xBChl", "1001-x", "Delete From LPO_Detail"};

inline constexpr double kNumbers[] = {0,     1,    -1,  0.5,    7,        1e15,
                                      1e300, -0.0, 2.5, 1e-300, HUGE_VAL, NAN};

/// Small, so that no grid takes all memory; a row or column number may well be outside its grid.
inline constexpr std::int32_t kLongs[] = {
    0, 1, 2, 3, 7, 13, 20, 21, -1, 100, std::numeric_limits<std::int32_t>::min()};

inline constexpr std::int64_t kSeconds[] = {0,         3600,      3918240000, -1,
                                            INT64_MAX, INT64_MIN, 1LL << 40};

[[noreturn]] inline void fault(const char* what, long long detail) {
  std::fprintf(stderr, "fault: %s (%lld), last failure %d \"%s\"\n", what, detail,
               static_cast<int>(ombrix_failure_number()), ombrix_failure_text());
  std::abort();
}

inline ombrix_value text_value(const char* text) {
  ombrix_value value{};
  value.type = OMBRIX_TEXT;
  value.as.text = {text, OMBRIX_NUL_TERMINATED};
  return value;
}

/// Makes up whatever a client may hand in, and keeps what it gets until the end.
class FuzzValues {
 protected:
  explicit FuzzValues(std::uint64_t seed) : random_(seed) {}

  /// Answers whether it is OMBRIX_OK; ends the process when it is no documented status or tells no
  /// reason.
  bool check(ombrix_status status) {
    ++calls_;
    if (status == OMBRIX_OK) return true;
    ++refused_;
    if (status < OMBRIX_INTERNAL || status > OMBRIX_FAILURE) fault("undocumented status", status);
    // A fault of the library's own is one that this test is after; only a size that no container
    // can hold ends there.
    if (status == OMBRIX_INTERNAL && ombrix_failure_number() != 7) fault("internal error", status);
    if (ombrix_failure_number() == 0) fault("no number", status);
    if (*ombrix_failure_text() == '\0') fault("no text", status);
    return false;
  }

  std::uint64_t below(std::uint64_t count) { return random_() % count; }
  bool one_in(std::uint64_t count) { return below(count) == 0; }
  template <class T>
  const T& pick(const std::vector<T>& from) {
    return from[below(from.size())];
  }

  ombrix_handle any_handle() {
    if (!held_.empty() && !one_in(12)) return pick(held_);
    if (!stale_.empty() && one_in(2)) return pick(stale_);
    return one_in(2) ? 0 : one_in(2) ? below(100) : random_();
  }
  const char* any_member() { return one_in(200) ? nullptr : pick(kMembers).c_str(); }
  const char* any_class() { return one_in(50) ? nullptr : pick(kClasses).c_str(); }
  ombrix_value any_value() {
    ombrix_value value{};
    value.flags = one_in(2) ? OMBRIX_BY_REFERENCE : 0;
    value.type = static_cast<std::int32_t>(below(OMBRIX_OBJECT + 1));
    switch (value.type) {
      case OMBRIX_BOOLEAN:
      case OMBRIX_LONG:
        value.as.integer = kLongs[below(std::size(kLongs))];
        break;
      case OMBRIX_DOUBLE:
        value.as.number = kNumbers[below(std::size(kNumbers))];
        break;
      case OMBRIX_DATE:
        value.as.seconds = kSeconds[below(std::size(kSeconds))];
        break;
      case OMBRIX_TEXT:
        value.as.text.bytes =
            one_in(6) ? pick(connection_texts_).c_str() : kTexts[below(std::size(kTexts))];
        value.as.text.length = OMBRIX_NUL_TERMINATED;
        if (one_in(40)) value.as.text.bytes = nullptr;
        if (one_in(40)) value.as.text.length = one_in(2) ? 0 : -static_cast<int64_t>(below(9));
        break;
      case OMBRIX_OBJECT:
        value.as.object = any_handle();
        break;
      default:
        break;
    }
    if (one_in(60)) value.type = static_cast<std::int32_t>(random_());
    return value;
  }
  std::vector<ombrix_value> any_arguments() {
    std::vector<ombrix_value> arguments(one_in(40) ? below(40) : below(6));
    for (ombrix_value& value : arguments) value = any_value();
    return arguments;
  }
  void keep(ombrix_handle handle) {
    if (handle != 0) held_.push_back(handle);
  }
  /// Takes over the object of a value that the library filled, and ends the rest.
  void keep(ombrix_value& value) {
    const bool own_object = value.type == OMBRIX_OBJECT && (value.flags & OMBRIX_OWNED) != 0;
    if (own_object && one_in(2)) {
      keep(value.as.object);
      value = {};
    }
    ombrix_clear(&value);
  }

  std::mt19937_64 random_;
  std::vector<std::string> connection_texts_;
  std::vector<ombrix_handle> held_, stale_;
  std::uint64_t calls_ = 0, refused_ = 0;
};

}  // namespace ombrix::testing
