#pragma once

#include <cstdint>
#include <span>

#include "ombrix/purchase/cash_purchase.h"

#include "frame/fills.h"

namespace ombrix::purchase {

/// A grid row on its way to `Cash_Purchase_Detail`.
struct CashPurchaseLine : GridLine {
  const CashPurchase& document;
  std::int32_t serial = 0;         ///< `SL_No`
  double overall_fc_discount = 0;  ///< shares of the overall discount
  double overall_discount = 0;
};

/// The columns of `Cash_Purchase_Master` and `Cash_Purchase_Detail`, in the order of writing.
struct CashPurchaseColumns {
  static std::span<const Column<CashPurchase>> key();   ///< written when the row is new
  static std::span<const Column<CashPurchase>> rest();  ///< by every save
  static std::span<const Column<CashPurchaseLine>> line();
  /// The cells of a line that is read.
  static std::span<const Fill<FilledLine>> cells();
};

}  // namespace ombrix::purchase
