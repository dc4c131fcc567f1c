#include "components/components.h"
#include "components/row_component.h"
#include "database/statement.h"

namespace ombrix::components {

using database::sql;

namespace {

constexpr Stored kJournal[] = {
    {"CompanyPrefix", "Company_Prefix"},
    {"BranchPrefix", "Branch_Prefix"},
    {"DocumentPrefix", "Document_Prefix"},
    {"ItemCode", "Item_Code"},
    {"ItemName", "Item_Name"},
    {"UnitCode", "Unit_Code"},
    {"UnitName", "Unit_Name"},
    // As the line has it, non-zero means free of charge.
    {"FOC_Flag", "FOC_Flag", Type::any, number_unless_empty},
    // Base units in one unit of the line; the quantities behind it are in base units.
    {"UnitQty", "Unit_Qty", Type::number},
    {"InQty", "In_Qty", Type::number},
    {"InAmount", "In_Amount", Type::number},
    {"InPrice", "In_Price", Type::number},
    {"OutQty", "Out_Qty", Type::number},
    {"OutAmount", "Out_Amount", Type::number},
    {"OutPrice", "Out_Price", Type::number},
    {"DocumentNo", "Document_No"},
    {"DocumentDate", "Document_Date", Type::day},
    {"DocumentType", "Document_Type"},  // "IN" or "OUT"
    {"LocationID", "location_ID"},
    {"LocationName", "Location_Name"},
    {"LastUpdate", "Last_Update", Type::day},
    {"StockComments", "Stock_Comments"},
};

/// `OmbrixInventory.StockMovement`: the stock journal. Quantities and amounts of any sign are
/// taken. Refused is a blank company, branch, item or document.
class StockMovement final : public RowComponent {
 public:
  StockMovement() : RowComponent(kJournal) {}

  /// Writes the members as an entry of the journal. A caller may pass the base quantity; the entry
  /// holds the members.
  bool RecordMovement(std::optional<double> /*quantity*/) {
    if (!ready_with("Stock movement",
                    {"CompanyPrefix", "BranchPrefix", "ItemCode", "DocumentNo"})) {
      return false;
    }
    write_row(sql({"Select * From Stock_Movement"}));
    return true;
  }
};

constexpr auto kMembers = members_with<StockMovement>(
    kJournal, {MembersOf<StockMovement>::method<&StockMovement::RecordMovement>("StockMovement")});
constexpr Interface kInterface("OmbrixInventory.StockMovement", kMembers);

}  // namespace

Shipped stock_movement() {
  return component<StockMovement>(kInterface);
}

}  // namespace ombrix::components
