#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "ombrix/purchase/lpo.h"

#include "frame/fills.h"

namespace ombrix::purchase {

/// A grid row on its way to `LPO_Detail`.
struct LPOLine : GridLine {
  const LPO& document;
  std::int32_t serial = 0;                      ///< `SL_No`
  std::optional<double> overall_fc_discount{};  ///< shares of the overall discount
  std::optional<double> overall_discount{};
};

/// The key columns of `LPO_Master`, written when the row is new.
std::span<const Column<LPO>> lpo_key_columns();
/// The others, written by every save.
std::span<const Column<LPO>> lpo_master_columns();
std::span<const Column<LPOLine>> lpo_detail_columns();
/// The cells of a line that is read.
std::span<const Fill<FilledLine>> lpo_cells();

}  // namespace ombrix::purchase
