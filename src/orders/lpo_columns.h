#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "ombrix/purchase/lpo.h"

#include "frame/cells.h"

namespace ombrix::purchase {

/// A grid row on its way to or from `LPO_Detail`.
struct LPOLine : GridLine {
  const LPO& document;
  std::int32_t serial = 0;                      ///< `SL_No`
  std::optional<double> overall_fc_discount{};  ///< shares of the overall discount
  std::optional<double> overall_discount{};
  std::string unit_name{};  ///< as read, for the period type that is shown behind it
};

/// The key columns of `LPO_Master`, written when the row is new.
std::span<const Column<LPO>> lpo_key_columns();
/// The others, written by every save.
std::span<const Column<LPO>> lpo_master_columns();
std::span<const Column<LPOLine>> lpo_detail_columns();

}  // namespace ombrix::purchase
