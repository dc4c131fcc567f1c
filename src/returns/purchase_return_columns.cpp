#include "returns/purchase_return_columns.h"

namespace ombrix::purchase {

namespace {

using namespace rule;
using Return = PurchaseReturn;

constexpr Column<Return> kKey[] = {
    {"Purchase_Rtn_No", always<&Return::PurchaseRtnNo>},
    {"Purchase_Rtn_Identity", always<&Return::PurchaseRtnIdentity>},
    {"Company_Prefix", always<&Return::CompanyPrefix>},
    {"Branch_Prefix", always<&Return::BranchPrefix>},
};

constexpr Column<Return> kMaster[] = {
    {"Document_Prefix", always<&Return::DocumentPrefix>},
    {"Purchase_Rtn_Date", always<&Return::PurchaseRtnDate>},
    {"Vendor_Code", always<&Return::VendorCode>},
    {"Vendor_name", skip_if_empty<&Return::VendorName>},
    {"Purchase_Rtn_Ref_No", null_if_empty<&Return::PurchaseRtnRefNo>},
    {"Purchase_Rtn_Comments", null_if_empty<&Return::PurchaseRtnComments>},
    {"Purchase_ref_Doc", always<&Return::Ref_Doc_Type>},
    {"Foreign_Currency_Flag", always<&Return::ForeignCurrencyFlag>},
    {"Currency_Code", always<&Return::CurrencyCode>},
    {"Currency_Symbol", always<&Return::CurrencySymbol>},
    {"Purchase_Rtn_Amount", always<&Return::PurchaseRtnAmount>},
    {"Purchase_Rtn_FC_Amount", always<&Return::PurchaseRtnFCAmount>},
    {"Purchase_Rtn_SubTotal", always<&Return::PurchaseRtnSubTotal>},
    {"Purchase_Rtn_FC_SubTotal", always<&Return::PurchaseRtnFCSubTotal>},
    {"Purchase_Rtn_Disc_Amount", always<&Return::PurchaseRtnDiscAmount>},
    {"Purchase_Rtn_FC_Disc_Amount", always<&Return::PurchaseRtnFCDiscAmount>},
    {"Year_End_Flag", always<&Return::YearEndFlag>},
    {"TaxCode", always<&Return::TaxCode>},
    {"TaxDescription", always<&Return::TaxDescription>},
    {"PR_TaxRate", always<&Return::TaxPercent>},
    {"PR_TaxAmount", always<&Return::TaxAmount>},
    {"Exchange_Rate", rate_or_one},
    {"Last_Update", always<&Return::LastUpdate>},
};

constexpr Column<Return> kRead[] = {
    {"Purchase_Rtn_Date", nullptr, into<&Return::PurchaseRtnDate>},
    {"Company_Prefix", nullptr, into<&Return::CompanyPrefix>},
    {"Branch_Prefix", nullptr, into<&Return::BranchPrefix>},
    {"Document_Prefix", nullptr, into<&Return::DocumentPrefix>},
    {"Purchase_Rtn_Identity", nullptr, head<&Return::PurchaseRtnIdentity>},
    {"Vendor_Code", nullptr, into<&Return::VendorCode>},
    {"Vendor_name", nullptr, into<&Return::VendorName>},
    {"Purchase_Rtn_Ref_No", nullptr, unless_null<&Return::PurchaseRtnRefNo>},
    {"Purchase_Rtn_Comments", nullptr, unless_empty<&Return::PurchaseRtnComments>},
    {"Processed_Flag", nullptr, into<&Return::ProcessedFlag>},
    {"Cancel_Flag", nullptr, into<&Return::CancelFlag>},
    {"Allow_Cancel_Flag", nullptr, into<&Return::AllowCancelFlag>},
    {"Foreign_Currency_Flag", nullptr, into<&Return::ForeignCurrencyFlag>},
    {"Currency_Code", nullptr, into<&Return::CurrencyCode>},
    {"Currency_Symbol", nullptr, into<&Return::CurrencySymbol>},
    {"Purchase_Rtn_Amount", nullptr, head<&Return::PurchaseRtnAmount>},
    {"Purchase_Rtn_FC_Amount", nullptr, head<&Return::PurchaseRtnFCAmount>},
    {"Purchase_Rtn_SubTotal", nullptr, head<&Return::PurchaseRtnSubTotal>},
    {"Purchase_Rtn_FC_SubTotal", nullptr, head<&Return::PurchaseRtnFCSubTotal>},
    {"Purchase_Rtn_Disc_Amount", nullptr, head<&Return::PurchaseRtnDiscAmount>},
    {"Purchase_Rtn_FC_Disc_Amount", nullptr, head<&Return::PurchaseRtnFCDiscAmount>},
    {"Year_End_Flag", nullptr, into<&Return::YearEndFlag>},
    {"Purchase_ref_Doc", nullptr, into<&Return::Ref_Doc_Type>},
};

Written stored_code(ReturnLine& line) {
  if (line.text(2).empty()) return std::nullopt;
  return Value(line.document.CompanyPrefix() + line.trimmed(2));
}
Written vendor_item_code(ReturnLine& line) {
  if (line.text(3).empty()) return std::nullopt;
  return Value(line.trimmed(3));
}
Written project(ReturnLine& line) {
  std::string project = line.text(19);
  if (project.empty()) return std::nullopt;
  return Value(std::move(project));
}
Written overall_discount(ReturnLine& line) {
  return product(line.number(11), line.document.ExchangeRate());
}

constexpr Column<ReturnLine> kDetail[] = {
    {"Purchase_Rtn_No", of_document<&Return::PurchaseRtnNo>},
    {"SL_No", serial},
    {"Item_Code", stored_code},
    {"Vendor_Item_Code", vendor_item_code},
    {"Item_Name", cell_trimmed<4>},
    {"Unit_Code", cell_head<5>},
    {"Unit_Name", cell_unit_name<6>},
    {"Period_Type", cell_period_type<6>},
    {"Unit_Qty", cell_head<7>},
    {"pur_rtn_qty", cell_number<8>},
    {"Purchase_Rtn_Unit_Price", cell_number<9>},
    {"Purchase_Rtn_Item_Discount_Amount", cell_number<15>},
    {"purchase_rtn_item_amount", cell_head<14>},
    {"purchase_rtn_FC_item_amount", cell_number<13>},
    {"Purchase_Rtn_FC_Item_Discount_Amount", cell_number<10>},
    {"Purchase_Rtn_Overall_FC_Disc_Amount", cell_number<11>},
    {"Purchase_Rtn_Overall_Disc_Amount", overall_discount},
    {"Proj_No", project},
    {"Location_Name", cell_text<16>},
    {"location_ID", cell_text<21>},
    {"Last_Update", of_document<&Return::LastUpdate>},
    {"Purchase_Rtn_Overall_Inv_FC_Disc_Amt", cell_head<12>},
    {"Purchase_Rtn_Overall_Inv_Disc_Amt", cell_head<26>},
};

void item_code(FilledReturn& line, std::int32_t cell, std::string_view field) {
  const Value code = line.field(field);
  if (!code.is_null()) line.put(cell, without_first(code.to_text(), 2));
}
void unit(FilledReturn& line, std::int32_t cell, std::string_view field) {
  if (!line.field(field).is_null()) fill::unit_and_period(line, cell, field);
}
void at_rate(FilledReturn& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, quotient(line.figure(field), line.document.ExchangeRate()));
}
void of_one(FilledReturn& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, quotient(line.figure(field), line.figure("pur_rtn_qty")));
}
void of_one_or_empty(FilledReturn& line, std::int32_t cell, std::string_view field) {
  line.field(field).is_null() ? line.put(cell, "") : of_one(line, cell, field);
}

constexpr Fill<FilledReturn> kCells[] = {
    {1, "-1", fill::literal},
    {2, "Item_Code", item_code},
    {3, "Vendor_Item_Code", fill::unless_null},
    {4, "Item_Name", fill::unless_null},
    {5, "Unit_Code", fill::unless_null},
    {6, "Unit_Name", unit},
    {7, "Unit_Qty", fill::as_text},
    {8, "pur_rtn_qty", fill::as_text},
    {24, "pur_rtn_qty", fill::as_text},
    {9, "Purchase_Rtn_Unit_Price", fill::as_text},
    {18, "Purchase_Rtn_Unit_Price", fill::as_text},
    {15, "Purchase_Rtn_Item_Discount_Amount", fill::as_text},
    {14, "purchase_rtn_item_amount", fill::as_text},
    {13, "purchase_rtn_FC_item_amount", fill::as_text},
    {10, "Purchase_Rtn_FC_Item_Discount_Amount", fill::as_text},
    {22, "Purchase_Rtn_Overall_FC_Disc_Amount", fill::as_text},
    {23, "Purchase_Rtn_Overall_FC_Disc_Amount", of_one},
    {11, "Purchase_Rtn_Overall_FC_Disc_Amount", at_rate},
    {16, "Location_Name", fill::unless_null},
    {21, "location_ID", fill::unless_null},
    {12, "Purchase_Rtn_Overall_Inv_FC_Disc_Amt", fill::or_empty},
    {25, "Purchase_Rtn_Overall_Inv_FC_Disc_Amt", of_one_or_empty},
    {26, "Purchase_Rtn_Overall_Inv_Disc_Amt", fill::or_empty},
};

}  // namespace

std::span<const Column<PurchaseReturn>> return_key_columns() {
  return kKey;
}
std::span<const Column<PurchaseReturn>> return_master_columns() {
  return kMaster;
}
std::span<const Column<PurchaseReturn>> return_read_columns() {
  return kRead;
}
std::span<const Column<ReturnLine>> return_detail_columns() {
  return kDetail;
}
std::span<const Fill<FilledReturn>> return_cells() {
  return kCells;
}

}  // namespace ombrix::purchase
