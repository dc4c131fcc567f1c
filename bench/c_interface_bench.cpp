/// What a call by name costs, through C and through C++.

#include <benchmark/benchmark.h>
#include <string>

#include "ombrix/components.h"
#include "ombrix/object.h"
#include "ombrix/ombrix.h"

namespace {

/// An order that is held by a handle.
class Order {
 public:
  Order() { ombrix_create("OmbrixPurchase.LPO", &handle_); }
  ~Order() { ombrix_release(handle_); }
  Order(const Order&) = delete;
  Order& operator=(const Order&) = delete;

  ombrix_handle handle() const { return handle_; }

 private:
  ombrix_handle handle_ = 0;
};

ombrix_value text(const char* bytes) {
  ombrix_value value{};
  value.type = OMBRIX_TEXT;
  value.as.text = {bytes, OMBRIX_NUL_TERMINATED};
  return value;
}

ombrix_value number(double number) {
  ombrix_value value{};
  value.type = OMBRIX_DOUBLE;
  value.as.number = number;
  return value;
}

void let_through_c(benchmark::State& state, const char* member, const ombrix_value& value) {
  const Order order;
  for (auto _ : state) {
    if (ombrix_let(order.handle(), member, nullptr, 0, &value) != OMBRIX_OK) {
      state.SkipWithError(ombrix_failure_text());
    }
  }
}
BENCHMARK_CAPTURE(let_through_c, text, "VendorName", text("Orchard Traders"));
BENCHMARK_CAPTURE(let_through_c, long_text, "LPOComments",
                  text("To be delivered before noon, at the gate in Orchard Lane"));
BENCHMARK_CAPTURE(let_through_c, number, "LPOFCTotalAmount", number(1234.56));

void get_through_c(benchmark::State& state, const char* member, const ombrix_value& value) {
  const Order order;
  ombrix_let(order.handle(), member, nullptr, 0, &value);
  for (auto _ : state) {
    ombrix_value held;
    if (ombrix_get(order.handle(), member, nullptr, 0, &held) != OMBRIX_OK) {
      state.SkipWithError(ombrix_failure_text());
    }
    ombrix_clear(&held);
  }
}
BENCHMARK_CAPTURE(get_through_c, text, "VendorName", text("Orchard Traders"));
BENCHMARK_CAPTURE(get_through_c, number, "LPOFCTotalAmount", number(1234.56));

void let_through_cpp(benchmark::State& state, const char* member, const ombrix::Value& value) {
  const ombrix::ObjectRef order = ombrix::create_object("OmbrixPurchase.LPO");
  for (auto _ : state) order->let(member, value);
}
BENCHMARK_CAPTURE(let_through_cpp, text, "VendorName", "Orchard Traders");
BENCHMARK_CAPTURE(let_through_cpp, number, "LPOFCTotalAmount", 1234.56);

}  // namespace
