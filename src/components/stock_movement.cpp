#include "components/stock_movement.h"

#include "frame/columns.h"

namespace ombrix::components {

using database::sql;

namespace {

using namespace rule;

constexpr Column<StockMovement> kJournal[] = {
    {"Company_Prefix", always<&StockMovement::CompanyPrefix>},
    {"Branch_Prefix", always<&StockMovement::BranchPrefix>},
    {"Document_Prefix", always<&StockMovement::DocumentPrefix>},
    {"Item_Code", always<&StockMovement::ItemCode>},
    {"Item_Name", always<&StockMovement::ItemName>},
    {"Unit_Code", always<&StockMovement::UnitCode>},
    {"Unit_Name", always<&StockMovement::UnitName>},
    {"FOC_Flag", number_unless_empty<&StockMovement::FOC_Flag>},
    {"Unit_Qty", always<&StockMovement::UnitQty>},
    {"In_Qty", always<&StockMovement::InQty>},
    {"In_Amount", always<&StockMovement::InAmount>},
    {"In_Price", always<&StockMovement::InPrice>},
    {"Out_Qty", always<&StockMovement::OutQty>},
    {"Out_Amount", always<&StockMovement::OutAmount>},
    {"Out_Price", always<&StockMovement::OutPrice>},
    {"Document_No", always<&StockMovement::DocumentNo>},
    {"Document_Date", always<&StockMovement::DocumentDate>},
    {"Document_Type", always<&StockMovement::DocumentType>},
    {"location_ID", always<&StockMovement::LocationID>},
    {"Location_Name", always<&StockMovement::LocationName>},
    {"Last_Update", always<&StockMovement::LastUpdate>},
    {"Stock_Comments", always<&StockMovement::StockComments>},
};

}  // namespace

bool StockMovement::RecordMovement(std::optional<double> /*quantity*/) {
  if (!ready("Stock movement", {{"CompanyPrefix", CompanyPrefix()},
                                {"BranchPrefix", BranchPrefix()},
                                {"ItemCode", ItemCode()},
                                {"DocumentNo", DocumentNo()}})) {
    return false;
  }
  auto entry = open(sql({"Select * From Stock_Movement"}), Dynamic);
  entry.AddNew();
  write_columns(kJournal, *this, entry);
  entry.Update();
  return true;
}

namespace {

using Of = MembersOf<StockMovement, Nulls::read_as_empty>;

constexpr Member kMembers[] = {
    Of::property<&StockMovement::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&StockMovement::CompanyPrefix>("CompanyPrefix"),
    Of::property<&StockMovement::BranchPrefix>("BranchPrefix"),
    Of::property<&StockMovement::DocumentPrefix>("DocumentPrefix"),
    Of::property<&StockMovement::ItemCode>("ItemCode"),
    Of::property<&StockMovement::ItemName>("ItemName"),
    Of::property<&StockMovement::UnitCode>("UnitCode"),
    Of::property<&StockMovement::UnitName>("UnitName"),
    Of::property<&StockMovement::FOC_Flag>("FOC_Flag"),
    Of::property<&StockMovement::UnitQty>("UnitQty"),
    Of::property<&StockMovement::InQty>("InQty"),
    Of::property<&StockMovement::InAmount>("InAmount"),
    Of::property<&StockMovement::InPrice>("InPrice"),
    Of::property<&StockMovement::OutQty>("OutQty"),
    Of::property<&StockMovement::OutAmount>("OutAmount"),
    Of::property<&StockMovement::OutPrice>("OutPrice"),
    Of::property<&StockMovement::DocumentNo>("DocumentNo"),
    Of::property<&StockMovement::DocumentDate>("DocumentDate"),
    Of::property<&StockMovement::DocumentType>("DocumentType"),
    Of::property<&StockMovement::LocationID>("LocationID"),
    Of::property<&StockMovement::LocationName>("LocationName"),
    Of::property<&StockMovement::LastUpdate>("LastUpdate"),
    Of::property<&StockMovement::StockComments>("StockComments"),
    Of::property<&StockMovement::ErrDesc>("ErrDesc"),
    Of::method<&StockMovement::RecordMovement>("StockMovement"),
};

}  // namespace

const Interface& stock_movement_interface() {
  static constexpr Interface kInterface("OmbrixInventory.StockMovement", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
