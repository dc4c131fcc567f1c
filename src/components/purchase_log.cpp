#include "components/purchase_log.h"

#include "frame/columns.h"

namespace ombrix::components {

using database::sql;

namespace {

using namespace rule;

constexpr Column<PurchaseLog> kLayer[] = {
    {"Branch_Prefix", always<&PurchaseLog::BranchPrefix>},
    {"Company_Prefix", always<&PurchaseLog::CompanyPrefix>},
    {"Document_Prefix", always<&PurchaseLog::DocumentPrefix>},
    {"Purchase_Document_No", always<&PurchaseLog::PurchaseDocumentNo>},
    {"Purchase_Document_Prefix", always<&PurchaseLog::PurchaseDocumentPrefix>},
    {"Purchase_Log_Date", always<&PurchaseLog::PurchaseLogDate>},
    {"Last_Update", always<&PurchaseLog::LastUpdate>},
    {"Item_Code", always<&PurchaseLog::ItemCode>},
    {"Item_Name", always<&PurchaseLog::ItemName>},
    {"Unit_Code", always<&PurchaseLog::UnitCode>},
    {"Unit_Name", always<&PurchaseLog::UnitName>},
    {"FOC_Flag", number_unless_empty<&PurchaseLog::FOC_Flag>},
    {"Unit_Qty", always<&PurchaseLog::UnitQty>},
    {"Purchase_Qty", always<&PurchaseLog::PurchaseQty>},
    {"Total_Purchase_Qty", always<&PurchaseLog::TotalPurchaseQty>},
    {"Purchase_Unit_Price", always<&PurchaseLog::PurchaseUnitPrice>},
    {"Purchase_Item_Amount", always<&PurchaseLog::PurchaseItemAmount>},
    {"Proj_No", null_if_empty<&PurchaseLog::ProjNo>},
};

}  // namespace

bool PurchaseLog::Create_PurchaseLog() {
  if (!ready("Purchase log", {{"CompanyPrefix", CompanyPrefix()},
                              {"BranchPrefix", BranchPrefix()},
                              {"ItemCode", ItemCode()},
                              {"PurchaseDocumentNo", PurchaseDocumentNo()}})) {
    return false;
  }
  auto layer = open(sql({"Select * From Purchase_Log"}), Dynamic);
  layer.AddNew();
  write_columns(kLayer, *this, layer);
  layer.Update();
  return true;
}

namespace {

using Of = MembersOf<PurchaseLog, Nulls::read_as_empty>;

constexpr Member kMembers[] = {
    Of::property<&PurchaseLog::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&PurchaseLog::BranchPrefix>("BranchPrefix"),
    Of::property<&PurchaseLog::CompanyPrefix>("CompanyPrefix"),
    Of::property<&PurchaseLog::DocumentPrefix>("DocumentPrefix"),
    Of::property<&PurchaseLog::PurchaseDocumentNo>("PurchaseDocumentNo"),
    Of::property<&PurchaseLog::PurchaseDocumentPrefix>("PurchaseDocumentPrefix"),
    Of::property<&PurchaseLog::PurchaseLogDate>("PurchaseLogDate"),
    Of::property<&PurchaseLog::LastUpdate>("LastUpdate"),
    Of::property<&PurchaseLog::ItemCode>("ItemCode"),
    Of::property<&PurchaseLog::ItemName>("ItemName"),
    Of::property<&PurchaseLog::UnitCode>("UnitCode"),
    Of::property<&PurchaseLog::UnitName>("UnitName"),
    Of::property<&PurchaseLog::FOC_Flag>("FOC_Flag"),
    Of::property<&PurchaseLog::UnitQty>("UnitQty"),
    Of::property<&PurchaseLog::PurchaseQty>("PurchaseQty"),
    Of::property<&PurchaseLog::TotalPurchaseQty>("TotalPurchaseQty"),
    Of::property<&PurchaseLog::PurchaseUnitPrice>("PurchaseUnitPrice"),
    Of::property<&PurchaseLog::PurchaseItemAmount>("PurchaseItemAmount"),
    Of::property<&PurchaseLog::ProjNo>("ProjNo"),
    Of::property<&PurchaseLog::ErrDesc>("ErrDesc"),
    Of::method<&PurchaseLog::Create_PurchaseLog>("Create_PurchaseLog"),
};

}  // namespace

const Interface& purchase_log_interface() {
  static constexpr Interface kInterface("OmbrixInventory.PurchaseLog", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
