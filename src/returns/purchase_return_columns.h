#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "ombrix/purchase/purchase_return.h"

#include "frame/cells.h"

namespace ombrix::purchase {

/// A grid row on its way to or from `Purchase_Return_Detail`.
struct ReturnLine : GridLine {
  const PurchaseReturn& document;
  double serial = 0;  ///< `SL_No`
  /// As read, for what is shown behind them.
  double quantity = 0;
  Value unit_name{};
};

/// The key columns of `Purchase_Return_Master`, written when the row is new.
std::span<const Column<PurchaseReturn>> return_key_columns();
/// The others, written by every save.
std::span<const Column<PurchaseReturn>> return_master_columns();
/// What is read back, in an order of its own.
std::span<const Column<PurchaseReturn>> return_read_columns();
std::span<const Column<ReturnLine>> return_detail_columns();

}  // namespace ombrix::purchase
