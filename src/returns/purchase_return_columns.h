#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "ombrix/purchase/purchase_return.h"

#include "frame/fills.h"

namespace ombrix::purchase {

/// A grid row on its way to `Purchase_Return_Detail`.
struct ReturnLine : GridLine {
  const PurchaseReturn& document;
  double serial = 0;  ///< `SL_No`
};
/// A grid row that is filled from it.
struct FilledReturn : FilledLine {
  const PurchaseReturn& document;
};

/// The key columns of `Purchase_Return_Master`, written when the row is new.
std::span<const Column<PurchaseReturn>> return_key_columns();
/// The others, written by every save.
std::span<const Column<PurchaseReturn>> return_master_columns();
/// What is read back, in an order of its own.
std::span<const Column<PurchaseReturn>> return_read_columns();
std::span<const Column<ReturnLine>> return_detail_columns();
/// The cells of a line that is read.
std::span<const Fill<FilledReturn>> return_cells();

}  // namespace ombrix::purchase
