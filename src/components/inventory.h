#pragma once

#include <string>

#include "ombrix/property.h"

#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixInventory.Inventory`: facts of an item for display, read through a session of its own.
class Inventory {
 public:
  Text ADOConnectionString;
  /// With the company prefix.
  Text ItemCode;
  /// Valid after `Get_Item_Type`.
  Property<std::string, Access::get> ItemType;
  Property<std::string, Access::get> ErrDesc;

  /// False with a reason for an item that is not on file.
  bool Get_Item_Type();
};

const Interface& inventory_interface();

}  // namespace ombrix::components
