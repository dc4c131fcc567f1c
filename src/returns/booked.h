#pragma once

#include <string>

#include "ombrix/purchase/purchase_return.h"

namespace ombrix::purchase {

struct PurchaseReturn::Booked {
  double amount = 0;
  double fc_amount = 0;
  /// Of the lines so far: each inventory line takes off all of it.
  double variance = 0;
  std::string inventory_account{};
  std::string accrual_account{};
  std::string variance_account{};
  bool raises_memo = false;
};

struct PurchaseReturn::LineAmounts {
  double home;
  double foreign;
  double variance;
};

}  // namespace ombrix::purchase
