#include "orders/lpo_columns.h"

namespace ombrix::purchase {

namespace {

using namespace rule;

constexpr Column<LPO> kKey[] = {
    {"LPO_No", always<&LPO::LPONo>},
    {"LPO_Identity", always<&LPO::LPOIdentity>, into<&LPO::LPOIdentity>},
    {"Company_Prefix", always<&LPO::CompanyPrefix>, into<&LPO::CompanyPrefix>},
    {"Branch_Prefix", always<&LPO::BranchPrefix>, into<&LPO::BranchPrefix>},
    {"Document_Prefix", always<&LPO::DocumentPrefix>, into<&LPO::DocumentPrefix>},
};

constexpr Column<LPO> kMaster[] = {
    {"LPO_Date", always<&LPO::LPODate>, into<&LPO::LPODate>},
    {"LPO_Due_Date", always<&LPO::LPODueDate>, into<&LPO::LPODueDate>},
    {"Vendor_Code", always<&LPO::VendorCode>, into<&LPO::VendorCode>},
    {"Vendor_name", always<&LPO::VendorName>, into<&LPO::VendorName>},
    {"LPO_Comments", null_if_empty<&LPO::LPOComments>, unless_empty<&LPO::LPOComments>},
    {"RFQ_No", null_if_empty<&LPO::RFQNo>, unless_empty<&LPO::RFQNo>},
    {"LPO_Discount_Percent", always<&LPO::LPODiscountPercent>, head<&LPO::LPODiscountPercent>},
    {"LPO_FC_Discount_Amount", always<&LPO::LPOFCDiscountAmount>, head<&LPO::LPOFCDiscountAmount>},
    {"LPO_Discount_Amount", rounded<&LPO::LPODiscountAmount>, head<&LPO::LPODiscountAmount>},
    {"LPO_FC_Subtotal", always<&LPO::LPOFCSubtotal>, head<&LPO::LPOFCSubtotal>},
    {"LPO_SubTotal", rounded<&LPO::LPOSubTotal>, head<&LPO::LPOSubTotal>},
    {"LPO_FC_Total_Amount", always<&LPO::LPOFCTotalAmount>, head<&LPO::LPOFCTotalAmount>},
    {"LPO_Total_Amount", rounded<&LPO::LPOTotalAmount>, into<&LPO::LPOTotalAmount>},
    {"Foreign_Currency_Flag", always<&LPO::ForeignCurrencyFlag>, into<&LPO::ForeignCurrencyFlag>},
    {"Currency_Code", always<&LPO::CurrencyCode>, into<&LPO::CurrencyCode>},
    {"Currency_Symbol", always<&LPO::CurrencySymbol>, into<&LPO::CurrencySymbol>},
    {"Last_Update", always<&LPO::LastUpdate>},
    {"Purchase_Type", always<&LPO::Purchase_Type>, item_if_empty<&LPO::Purchase_Type>},
    {"TaxCode", always<&LPO::TaxCode>, unless_null<&LPO::TaxCode>},
    {"TaxDescription", always<&LPO::TaxDescription>, unless_null<&LPO::TaxDescription>},
    {"LPO_TaxRate", always<&LPO::LPOTaxPercent>, unless_null<&LPO::LPOTaxPercent>},
    {"LPO_TaxAmount", always<&LPO::LPOTaxAmount>, unless_null<&LPO::LPOTaxAmount>},
    {"fulfilled_Flag", nullptr, into<&LPO::FulFilledFlag>},
    {"Allow_Cancel_Flag", nullptr, into<&LPO::AllowCancelFlag>},
    {"Cancel_Flag", nullptr, into<&LPO::CancelFlag>},
    {"Processed_Flag", nullptr, into<&LPO::ProcessedFlag>},
};

/// Cell 4 is the unit's name, or the name and a period type with a "-" between.
Written unit_name(LPOLine& line) {
  const std::string cell = line.text(4);
  if (trim(cell).empty()) return std::nullopt;
  return Value(cell.substr(0, cell.find('-')));
}
Written unit_quantity(LPOLine& line) {
  const double quantity = line.number(6);
  return quantity == 0 ? Value(1) : Value(quantity);
}
Written taxable(LPOLine& line) {
  const std::string mark = line.text(20);
  return mark == "True" || mark == "1" ? "Taxable" : "Exempted";
}
constexpr Column<LPOLine> kDetail[] = {
    {"LPO_No", of_document<&LPO::LPONo>},
    {"SL_No", serial},
    {"Item_Code", cell_item_code<1>},
    {"Vendor_Item_Code", cell_unless_blank<2>},
    {"Item_Name", cell_unless_blank<3>},
    {"Unit_Name", unit_name},
    {"Period_Type", cell_period_type<4>},
    {"FOC_Flag", cell_number<18>},
    {"Unit_Code", cell_unless_blank<5>},
    {"Unit_Qty", unit_quantity},
    {"LPO_Qty", cell_number<7>},
    {"LPO_Unit_Price", cell_number<8>},
    {"LPO_Item_Discount_Percent", cell_number<9>},
    {"LPO_Item_Discount_amount", cell_number<10>},
    {"LPO_Item_Amount", cell_number<12>},
    {"LPO_FCItem_Discount_Amount", cell_number<10>},
    {"LPO_FCItem_Amount", cell_number<12>},
    {"Account_No", cell_text<15>},
    {"Proj_No", cell_unless_blank<16>},
    {"LPO_Overall_FC_Disc", figure<&LPOLine::overall_fc_discount>},
    {"LPO_Overall_Disc", figure<&LPOLine::overall_discount>},
    {"TaxType", taxable},
    {"Last_Update", of_document<&LPO::LastUpdate>},
};

void free_of_charge(FilledLine& line, std::int32_t cell, std::string_view field) {
  constexpr std::int32_t kBold = 13;
  const Value flag = line.field(field);
  line.put(cell, !flag.is_null() && flag.to_number() != 0 ? "1" : "0");
  line.grid.Cell(kBold, line.row, 0, line.row, cell, flag);
}
/// Shown without company, branch and "GL" in cell 13.
void account(FilledLine& line, std::int32_t cell, std::string_view field) {
  const std::string text = line.field(field).to_text();
  line.put(cell, text);
  line.put(13, without_first(text, 6));
}
/// Shown without company, branch and "PRJ" in cell 14.
void project(FilledLine& line, std::int32_t cell, std::string_view field) {
  const std::string text = line.field(field).text_or_empty();
  if (text.empty()) return;
  line.put(cell, text);
  line.put(14, without_first(text, 7));
}

constexpr Fill<FilledLine> kCells[] = {
    {1, "Item_Code", fill::less_prefix<2>},
    {2, "Vendor_Item_Code", fill::unless_empty},
    {3, "Item_Name", fill::unless_empty},
    {4, "Unit_Name", fill::named_unit},
    {18, "FOC_Flag", free_of_charge},
    {5, "Unit_Code", fill::unless_empty},
    {6, "Unit_Qty", fill::head},
    {7, "LPO_Qty", fill::head},
    {8, "LPO_Unit_Price", fill::head},
    {9, "LPO_Item_Discount_Percent", fill::head},
    {10, "LPO_Item_Discount_amount", fill::head},
    {11, "LPO_Item_Amount", fill::head},
    {15, "Account_No", account},
    {16, "Proj_No", project},
    {20, "TaxType", fill::taxable},
};

}  // namespace

std::span<const Column<LPO>> lpo_key_columns() {
  return kKey;
}
std::span<const Column<LPO>> lpo_master_columns() {
  return kMaster;
}
std::span<const Column<LPOLine>> lpo_detail_columns() {
  return kDetail;
}
std::span<const Fill<FilledLine>> lpo_cells() {
  return kCells;
}

}  // namespace ombrix::purchase
