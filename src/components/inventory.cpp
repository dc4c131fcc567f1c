#include "components/inventory.h"

#include "base/raw.h"
#include "database/connection_access.h"

namespace ombrix::components {

using database::any_text;
using database::sql;

bool Inventory::Get_Item_Type() {
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

namespace {

using Of = MembersOf<Inventory, Nulls::read_as_empty>;

constexpr Member kMembers[] = {
    Of::property<&Inventory::ADOConnectionString>("ADOConnectionString"),
    Of::property<&Inventory::ItemCode>("ItemCode"),
    Of::property<&Inventory::ItemType>("ItemType"),
    Of::property<&Inventory::ErrDesc>("ErrDesc"),
    Of::method<&Inventory::Get_Item_Type>("Get_Item_Type"),
};

}  // namespace

const Interface& inventory_interface() {
  static constexpr Interface kInterface("OmbrixInventory.Inventory", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
