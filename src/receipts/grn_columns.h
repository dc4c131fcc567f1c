#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "ombrix/purchase/grn.h"

#include "frame/cells.h"

namespace ombrix::purchase {

/// A grid row on its way to `Goods_Receive_Detail`. The amounts stay 0 when the order has no such
/// line.
struct GRNLine : GridLine {
  const GRN& document;
  std::int32_t serial = 0;  ///< `SL_No`
  double unit_price = 0;    ///< home currency, before the line discount
  double amount = 0;        ///< net of the line discount
  double fc_amount = 0;
  double discount = 0;
  double fc_discount = 0;
  std::optional<double> overall_discount{};  ///< shares of the order's; none: the column's default
  std::optional<double> overall_fc_discount{};
};

/// The columns of `Goods_Receive_Master` and `Goods_Receive_Detail`, in the order of writing.
struct GRNColumns {
  static std::span<const Column<GRN>> key();       ///< written when the row is new
  static std::span<const Column<GRN>> head();      ///< by every save, before the order is looked up
  static std::span<const Column<GRN>> rest();      ///< by every save, behind it
  static std::span<const Column<GRNLine>> line();  ///< before the order's line is looked up
  static std::span<const Column<GRNLine>> line_amounts();

 private:
  static void take_invoiced_state(GRN& receipt, const Value& flag);
};

}  // namespace ombrix::purchase
