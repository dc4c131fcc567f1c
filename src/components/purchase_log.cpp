#include "components/components.h"
#include "components/row_component.h"
#include "database/statement.h"

namespace ombrix::components {

using database::sql;

namespace {

constexpr Stored kLayer[] = {
    {"BranchPrefix", "Branch_Prefix"},
    {"CompanyPrefix", "Company_Prefix"},
    {"DocumentPrefix", "Document_Prefix"},
    {"PurchaseDocumentNo", "Purchase_Document_No"},
    {"PurchaseDocumentPrefix", "Purchase_Document_Prefix"},
    {"PurchaseLogDate", "Purchase_Log_Date", Type::day},
    {"LastUpdate", "Last_Update", Type::day},
    {"ItemCode", "Item_Code"},
    {"ItemName", "Item_Name"},
    {"UnitCode", "Unit_Code"},
    {"UnitName", "Unit_Name"},
    // As the line has it, non-zero means free of charge.
    {"FOC_Flag", "FOC_Flag", Type::any, number_unless_empty},
    {"UnitQty", "Unit_Qty", Type::number},                     // base units in one unit of the line
    {"PurchaseQty", "Purchase_Qty", Type::number},             // line units
    {"TotalPurchaseQty", "Total_Purchase_Qty", Type::number},  // base units
    {"PurchaseUnitPrice", "Purchase_Unit_Price", Type::number},
    {"PurchaseItemAmount", "Purchase_Item_Amount", Type::number},
    {"ProjNo", "Proj_No", Type::text, null_if_empty},
};

/// `OmbrixInventory.PurchaseLog`: the purchase layers of an item, which a return consumes later.
/// Quantities and amounts of any sign are taken. Refused is a blank company, branch, item or
/// purchase document.
class PurchaseLog final : public RowComponent {
 public:
  PurchaseLog() : RowComponent(kLayer) {}

  /// Writes the members as a layer of which nothing is sold.
  bool Create_PurchaseLog() {
    if (!ready_with("Purchase log",
                    {"CompanyPrefix", "BranchPrefix", "ItemCode", "PurchaseDocumentNo"})) {
      return false;
    }
    write_row(sql({"Select * From Purchase_Log"}));
    return true;
  }
};

constexpr auto kMembers = members_with<PurchaseLog>(
    kLayer,
    {MembersOf<PurchaseLog>::method<&PurchaseLog::Create_PurchaseLog>("Create_PurchaseLog")});
constexpr Interface kInterface("OmbrixInventory.PurchaseLog", kMembers);

}  // namespace

Shipped purchase_log() {
  return component<PurchaseLog>(kInterface);
}

}  // namespace ombrix::components
