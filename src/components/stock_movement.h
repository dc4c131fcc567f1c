#pragma once

#include <optional>

#include "components/component.h"
#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixInventory.StockMovement`: the stock journal. Quantities and amounts of any sign are
/// taken. Refused is a blank company, branch, item or document.
class StockMovement : public Component {
 public:
  Text CompanyPrefix;
  Text BranchPrefix;
  Text DocumentPrefix;
  Text ItemCode;
  Text ItemName;
  Text UnitCode;
  Text UnitName;
  /// As the line has it, non-zero means free of charge.
  Property<Value> FOC_Flag;
  /// Base units in one unit of the line.
  Number UnitQty;
  Number InQty;  ///< base units
  Number InAmount;
  Number InPrice;
  Number OutQty;  ///< base units
  Number OutAmount;
  Number OutPrice;
  Text DocumentNo;
  Day DocumentDate;
  /// "IN" or "OUT".
  Text DocumentType;
  Text LocationID;
  Text LocationName;
  Day LastUpdate;
  Text StockComments;

  /// Writes the members as an entry of the journal. A caller may pass the base quantity; the entry
  /// holds the members.
  bool RecordMovement(std::optional<double> quantity);
};

const Interface& stock_movement_interface();

}  // namespace ombrix::components
