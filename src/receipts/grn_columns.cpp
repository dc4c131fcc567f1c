#include "receipts/grn_columns.h"

namespace ombrix::purchase {

using namespace rule;

namespace {

Written total(GRN& receipt) {
  return receipt.GRNSubTotal() - receipt.GRNDiscountAmount();
}
Written fc_total(GRN& receipt) {
  return receipt.GRNFCSubTotal() - receipt.GRNFCDiscountAmount();
}

void trimmed_symbol(GRN& receipt, const Value& symbol) {
  receipt.CurrencySymbol = symbol.to_text();
}

Written tax_rate(GRNLine& line) {
  return line.trimmed(24) == "Taxable" ? head_number(line.text(25)) : 0.0;
}

constexpr Column<GRN> kKey[] = {
    {"GRN_No", always<&GRN::GRNNo>},
    {"GRN_Identity", always<&GRN::GRNIdentity>, into<&GRN::GRNIdentity>},
    {"Company_Prefix", always<&GRN::CompanyPrefix>, into<&GRN::CompanyPrefix>},
    {"Branch_Prefix", always<&GRN::BranchPrefix>, into<&GRN::BranchPrefix>},
    {"Document_Prefix", always<&GRN::DocumentPrefix>, into<&GRN::DocumentPrefix>},
};

constexpr Column<GRN> kHead[] = {
    {"GRN_Date", always<&GRN::GRNDate>, into<&GRN::GRNDate>},
    {"GRN_Comments", null_if_blank<&GRN::GRNComments>, unless_empty<&GRN::GRNComments>},
    {"GRN_Ref_Document_No", always<&GRN::GRNRefDocumentNo>, unless_empty<&GRN::GRNRefDocumentNo>},
    {"GRN_Ref_Document_Prefix", always<&GRN::GRNRefDocumentPrefix>,
     unless_empty<&GRN::GRNRefDocumentPrefix>},
    {"GRN_Order_Date", always<&GRN::OrderDate>, into<&GRN::OrderDate>},
};

constexpr Column<GRNLine> kLine[] = {
    {"GRN_No", of_document<&GRN::GRNNo>},
    {"SL_No", serial},
    {"Item_Code", cell_item_code<2>},
    {"Vendor_Item_Code", cell_unless_blank<3>},
    {"Item_Name", cell_unless_blank<4>},
    {"Unit_Name", cell_unit_name<5>},
    {"Period_Type", cell_period_type<5>},
    {"FOC_Flag", cell_number<21>},
    {"Unit_Code", cell_unless_blank<6>},
    {"Unit_Qty", cell_number<7>},
    {"grn_qty", cell_number<9>},
    {"Proj_No", cell_unless_blank<19>},
    {"POD_SL_NO", cell_trimmed<17>},
    {"Account_No", cell_trimmed<18>},
    {"Location_Name", cell_unless_blank<16>},
    {"location_ID", cell_unless_blank<20>},
};

constexpr Column<GRNLine> kLineAmounts[] = {
    {"PO_Overall_FC_Disc", figure<&GRNLine::overall_fc_discount>},
    {"PO_Overall_Disc", figure<&GRNLine::overall_discount>},
    {"TaxType", cell_trimmed<24>},
    {"TaxPercent", tax_rate},
    {"GRN_Unit_Price", figure<&GRNLine::unit_price>},
    {"GRN_Item_Amount", figure<&GRNLine::amount>},
    {"GRN_FC_Item_Amount", figure<&GRNLine::fc_amount>},
    {"GRN_Item_Disc_Amount", figure<&GRNLine::discount>},
    {"GRN_FC_Item_Disc_Amount", figure<&GRNLine::fc_discount>},
    {"Last_Update", of_document<&GRN::LastUpdate>},
};

}  // namespace

std::span<const Column<GRN>> GRNColumns::key() {
  return kKey;
}
std::span<const Column<GRN>> GRNColumns::head() {
  return kHead;
}
void GRNColumns::take_invoiced_state(GRN& receipt, const Value& flag) {
  receipt.GRNInvoicedFlag = flag.to_flag();
  receipt.OrderInvoicedFlag = flag.to_flag();
}

std::span<const Column<GRN>> GRNColumns::rest() {
  static constexpr Column<GRN> kRest[] = {
      {"GRN_Invoiced_flag", always<&GRN::OrderInvoicedFlag>, take_invoiced_state},
      {"Processed_Flag", nullptr, into<&GRN::ProcessedFlag>},
      {"Cancel_Flag", nullptr, into<&GRN::CancelFlag>},
      {"Vendor_Code", always<&GRN::VendorCode>, into<&GRN::VendorCode>},
      {"Vendor_name", always<&GRN::VendorName>, into<&GRN::VendorName>},
      {"Vendor_Ref_Document_No", null_if_empty<&GRN::VendorRefDocumentNo>,
       unless_empty<&GRN::VendorRefDocumentNo>},
      {"Vendor_Ref_Document_Date", always<&GRN::VendorRefDocumentDate>,
       unless_empty<&GRN::VendorRefDocumentDate>},
      {"Foreign_Currency_Flag", always<&GRN::ForeignCurrencyFlag>, into<&GRN::ForeignCurrencyFlag>},
      {"Exchange_Rate", rate_or_one},
      {"Currency_Code", always<&GRN::CurrencyCode>, into<&GRN::CurrencyCode>},
      {"Currency_Symbol", always<&GRN::CurrencySymbol>, trimmed_symbol},
      {"GRN_SubTotal", always<&GRN::GRNSubTotal>, into<&GRN::GRNSubTotal>},
      {"GRN_FC_SubTotal", always<&GRN::GRNFCSubTotal>, into<&GRN::GRNFCSubTotal>},
      {"GRN_Discount_Amount", always<&GRN::GRNDiscountAmount>, into<&GRN::GRNDiscountAmount>},
      {"GRN_FC_Discount_Amount", always<&GRN::GRNFCDiscountAmount>,
       into<&GRN::GRNFCDiscountAmount>},
      {"GRN_Total_Amount", total, into<&GRN::GRNAmount>},
      {"GRN_FC_Total_Amount", fc_total},
      {"Grn_Costing_Amount", nullptr, into<&GRN::GRNCostingAmount>},
      {"GRN_FC_Costing_Amount", nullptr, into<&GRN::GRNFCCostingAmount>},
      {"Year_End_Flag", nullptr, into<&GRN::YearEndFlag>},
      {"Purchase_Type", always<&GRN::Purchase_Type>},
      {"Last_Update", always<&GRN::LastUpdate>},
  };
  return kRest;
}
std::span<const Column<GRNLine>> GRNColumns::line() {
  return kLine;
}
std::span<const Column<GRNLine>> GRNColumns::line_amounts() {
  return kLineAmounts;
}

}  // namespace ombrix::purchase
