#include <string>

#include "ombrix/property.h"

#include "base/raw.h"
#include "components/component.h"
#include "components/components.h"
#include "database/connection_access.h"

namespace ombrix::components {

using database::any_text;
using database::sql;

namespace {

/// `OmbrixInventory.Inventory`: facts of an item for display, read through a session of its own.
class Inventory final {
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

bool Inventory::Get_Item_Type() {
  raw(ItemType).clear();
  auto item = database::open_fresh_recordset(
      sql({"Select Item_Type From Item_Master Where Item_Code=", any_text(ItemCode())}),
      ADOConnectionString(), nullptr, ForwardOnly);
  if (item.IsEOF()) {
    raw(ErrDesc) = "Item type: item \"" + ItemCode() + "\" is not on file.";
    return false;
  }
  raw(ItemType) = item("Item_Type").text_or_empty();
  return true;
}

using Of = MembersOf<Inventory>;

constexpr Member kMembers[] = {
    Of::property<&Inventory::ADOConnectionString>("ADOConnectionString"),
    Of::property<&Inventory::ItemCode>("ItemCode"),
    Of::property<&Inventory::ItemType>("ItemType"),
    Of::property<&Inventory::ErrDesc>("ErrDesc"),
    Of::method<&Inventory::Get_Item_Type>("Get_Item_Type"),
};

constexpr Interface kInterface("OmbrixInventory.Inventory", kMembers);

}  // namespace

Shipped inventory() {
  return component<Inventory>(kInterface);
}

}  // namespace ombrix::components
