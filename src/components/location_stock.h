#pragma once

#include "components/component.h"
#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixInventory.LocationStock`: the quantity of an item at a location, kept for each unit.
///
/// Stock without a location is kept under the empty one. Quantities of any sign are taken, and
/// stock may fall below zero. Refused is a blank company, branch or item.
class LocationStock : public Component {
 public:
  Text CompanyPrefix;
  Text BranchPrefix;
  Text ItemCode;
  Text ItemName;
  Text LocationCode;
  Text LocationName;
  /// In units of `UnitName`, not base units.
  Number LocationQty;
  Text UnitName;
  Day LastUpdate;

  /// `direction` 0 raises the quantity, 1 lowers it; any other is refused.
  bool UpdateLocationStock(const std::int32_t& direction);
};

const Interface& location_stock_interface();

}  // namespace ombrix::components
