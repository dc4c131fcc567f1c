#include "components/component.h"
#include "components/components.h"
#include "database/statement.h"

namespace ombrix::components {

using database::any_text;
using database::number;
using database::sql;

namespace {

/// `OmbrixInventory.LocationStock`: the quantity of an item at a location, kept for each unit.
///
/// Stock without a location is kept under the empty one. Quantities of any sign are taken, and
/// stock may fall below zero. Refused is a blank company, branch or item.
class LocationStock final : public Component {
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

bool LocationStock::UpdateLocationStock(const std::int32_t& direction) {
  constexpr std::string_view kWork = "Location stock";
  if (!ready(kWork, {{"CompanyPrefix", CompanyPrefix()},
                     {"BranchPrefix", BranchPrefix()},
                     {"ItemCode", ItemCode()}})) {
    return false;
  }
  if (direction != 0 && direction != 1) {
    return refused("Location stock: direction " + std::to_string(direction) +
                   " is neither 0 (in) nor 1 (out).");
  }
  const double change = direction == 0 ? LocationQty() : -LocationQty();
  execute(sql(
      {"Insert Into Location_Stock (Company_Prefix, Branch_Prefix, Item_Code, Item_Name,"
       " location_ID, Location_Name, Unit_Name, Location_Qty, Last_Update) Values (",
       any_text(CompanyPrefix()), ", ", any_text(BranchPrefix()), ", ", any_text(ItemCode()), ", ",
       any_text(ItemName()), ", ", any_text(LocationCode()), ", ", any_text(LocationName()), ", ",
       any_text(UnitName()), ", ", number(change), ", ", any_text(LastUpdate().stored_text()),
       ") On Conflict (Company_Prefix, Branch_Prefix, Item_Code, location_ID, Unit_Name)"
       " Do Update Set Location_Qty = Coalesce(Location_Stock.Location_Qty, 0) +"
       " excluded.Location_Qty, Last_Update = excluded.Last_Update, Item_Name ="
       " Coalesce(Nullif(excluded.Item_Name, ''), Location_Stock.Item_Name), Location_Name ="
       " Coalesce(Nullif(excluded.Location_Name, ''), Location_Stock.Location_Name)"}));
  return true;
}

using Of = MembersOf<LocationStock>;

constexpr Member kMembers[] = {
    Of::property<&LocationStock::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&LocationStock::CompanyPrefix>("CompanyPrefix"),
    Of::property<&LocationStock::BranchPrefix>("BranchPrefix"),
    Of::property<&LocationStock::ItemCode>("ItemCode"),
    Of::property<&LocationStock::ItemName>("ItemName"),
    Of::property<&LocationStock::LocationCode>("LocationCode"),
    Of::property<&LocationStock::LocationName>("LocationName"),
    Of::property<&LocationStock::LocationQty>("LocationQty"),
    Of::property<&LocationStock::UnitName>("UnitName"),
    Of::property<&LocationStock::LastUpdate>("LastUpdate"),
    Of::property<&LocationStock::ErrDesc>("ErrDesc"),
    Of::method<&LocationStock::UpdateLocationStock>("UpdateLocationStock"),
};

constexpr Interface kInterface("OmbrixInventory.LocationStock", kMembers);

}  // namespace

Shipped location_stock() {
  return component<LocationStock>(kInterface);
}

}  // namespace ombrix::components
