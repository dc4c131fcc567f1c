#pragma once

#include "components/component.h"
#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixInventory.PurchaseLog`: the purchase layers of an item, which a return consumes later.
/// Quantities and amounts of any sign are taken. Refused is a blank company, branch, item or
/// purchase document.
class PurchaseLog : public Component {
 public:
  Text BranchPrefix;
  Text CompanyPrefix;
  Text DocumentPrefix;
  Text PurchaseDocumentNo;
  Text PurchaseDocumentPrefix;
  Day PurchaseLogDate;
  Day LastUpdate;
  Text ItemCode;
  Text ItemName;
  Text UnitCode;
  Text UnitName;
  /// As the line has it, non-zero means free of charge.
  Property<Value> FOC_Flag;
  /// Base units in one unit of the line.
  Number UnitQty;
  Number PurchaseQty;       ///< line units
  Number TotalPurchaseQty;  ///< base units
  Number PurchaseUnitPrice;
  Number PurchaseItemAmount;
  Text ProjNo;

  /// Writes the members as a layer of which nothing is sold.
  bool Create_PurchaseLog();
};

const Interface& purchase_log_interface();

}  // namespace ombrix::components
