#include "invoices/purchase_invoice_columns.h"

namespace ombrix::purchase {

namespace {

using namespace rule;
using Invoice = PurchaseInvoice;

constexpr Column<Invoice> kKey[] = {
    {"Purchase_Inv_No", always<&Invoice::PurchaseInvNo>},
    {"Purchase_Inv_Identity", always<&Invoice::PurchaseInvIdentity>,
     into<&Invoice::PurchaseInvIdentity>},
    {"Company_Prefix", always<&Invoice::CompanyPrefix>, unless_blank<&Invoice::CompanyPrefix>},
    {"Branch_Prefix", always<&Invoice::BranchPrefix>, unless_blank<&Invoice::BranchPrefix>},
};

Written order_date(Invoice& invoice) {
  return invoice.PONo().empty() ? Value(Null()) : Value(invoice.PODate());
}
void receipts_if_null(Invoice& invoice, const Value& type) {
  invoice.InvoiceType = type.is_null() ? "GRN" : type.to_text();
}

constexpr Column<Invoice> kMaster[] = {
    {"Document_Prefix", always<&Invoice::DocumentPrefix>, unless_blank<&Invoice::DocumentPrefix>},
    {"Purchase_Inv_Date", always<&Invoice::PurchaseInvDate>, into<&Invoice::PurchaseInvDate>},
    {"Vendor_Code", always<&Invoice::VendorCode>, unless_blank<&Invoice::VendorCode>},
    {"Vendor_name", skip_if_blank<&Invoice::VendorName>, unless_blank<&Invoice::VendorName>},
    {"Vendor_Ref_Invoice_No", null_if_blank<&Invoice::VendorRefInvoiceNo>,
     unless_blank<&Invoice::VendorRefInvoiceNo>},
    {"Vendor_Ref_Invoice_Date", always<&Invoice::VendorRefInvoiceDate>,
     into<&Invoice::VendorRefInvoiceDate>},
    {"Vendor_Ref_Document_Prefix", null_if_empty<&Invoice::VendorRefDocumentPrefix>,
     unless_blank<&Invoice::VendorRefDocumentPrefix>},
    {"Purchase_Inv_Amount", always<&Invoice::PurchaseInvAmount>, into<&Invoice::PurchaseInvAmount>},
    {"Processed_Flag", always<&Invoice::ProcessedFlag>, into<&Invoice::ProcessedFlag>},
    {"Cancel_Flag", always<&Invoice::CancelFlag>, into<&Invoice::CancelFlag>},
    {"Allow_Cancel_Flag", always<&Invoice::AllowCancelFlag>, into<&Invoice::AllowCancelFlag>},
    {"fulfilled_Flag", always<&Invoice::FulFilledFlag>, into<&Invoice::FulFilledFlag>},
    {"Purchase_Inv_Comments", skip_if_blank<&Invoice::PurchaseInvComments>,
     unless_blank<&Invoice::PurchaseInvComments>},
    {"Foreign_Currency_Flag", always<&Invoice::ForeignCurrencyFlag>,
     into<&Invoice::ForeignCurrencyFlag>},
    {"Currency_Code", always<&Invoice::CurrencyCode>, unless_blank<&Invoice::CurrencyCode>},
    {"Currency_Symbol", trimmed<&Invoice::CurrencySymbol>, unless_blank<&Invoice::CurrencySymbol>},
    {"Purchase_Inv_FC_Amount", through_text<&Invoice::PurchaseInvFCAmount>,
     into<&Invoice::PurchaseInvFCAmount>},
    {"Purchase_Inv_SubTotal", through_text<&Invoice::PurchaseInvSubTotal>,
     into<&Invoice::PurchaseInvSubTotal>},
    {"Purchase_Inv_FC_SubTotal", through_text<&Invoice::PurchaseInvFCSubTotal>,
     into<&Invoice::PurchaseInvFCSubTotal>},
    {"Purchase_Inv_Disc_Percent", through_text<&Invoice::PurchaseInvDiscPercent>,
     into<&Invoice::PurchaseInvDiscPercent>},
    {"Purchase_Inv_Disc_Amount", through_text<&Invoice::PurchaseInvDiscAmount>,
     into<&Invoice::PurchaseInvDiscAmount>},
    {"Purchase_Inv_FC_Disc_Amount", through_text<&Invoice::PurchaseInvFCDiscAmount>,
     into<&Invoice::PurchaseInvFCDiscAmount>},
    {"Purchase_Variance", through_text<&Invoice::PurchaseVariance>,
     head<&Invoice::PurchaseVariance>},
    {"FC_Purchase_Variance", through_text<&Invoice::FCPurchaseVariance>,
     head<&Invoice::FCPurchaseVariance>},
    {"Year_End_Flag", always<&Invoice::YearEndFlag>, into<&Invoice::YearEndFlag>},
    {"Balance_Amount", always<&Invoice::PurchaseInvAmount>, head<&Invoice::BalanceAmount>},
    {"Balance_FCAmount", always<&Invoice::PurchaseInvFCAmount>, head<&Invoice::BalanceFCAmount>},
    {"Exchange_Rate", rate_or_one},
    {"Invoice_Type", always<&Invoice::InvoiceType>, receipts_if_null},
    {"PO_No", null_if_empty<&Invoice::PONo>, unless_empty<&Invoice::PONo>},
    {"PO_Date", order_date},
    {"Purchase_Type", always<&Invoice::Purchase_Type>, item_if_empty<&Invoice::Purchase_Type>},
    {"Last_Update", always<&Invoice::LastUpdate>},
};

/// An order that is billed itself stands whole in cell 2, that of a receipt in cell 28.
Written order_number(InvoiceLine& line) {
  const std::string& source = line.document.RefInvoiceType();
  const std::string number = line.text(source == "LPO" || source == "OPO" ? 2 : 28);
  if (trim(number).empty()) return std::nullopt;
  return Value(number);
}
/// Cell `kSecond` where cell `kFirst` is 0.
template <std::int32_t kFirst, std::int32_t kSecond>
Written cell_number_or(InvoiceLine& line) {
  const double first = line.number(kFirst);
  return first != 0 ? first : line.number(kSecond);
}
Written tax_class(InvoiceLine& line) {
  return line.number(35) != 0 ? "Taxable" : "Exempted";
}
/// The columns that name a receipt line; an order that is billed itself has none.
template <Written (*rule)(InvoiceLine&)>
Written of_receipt(InvoiceLine& line) {
  if (line.document.InvoiceType() != "GRN") return std::nullopt;
  return rule(line);
}
Written receipt_date(InvoiceLine& line) {
  const std::string date = line.text(23);
  return date.empty() ? Value(Null()) : Value(Value(date).to_date());
}
Written receipt_kind(InvoiceLine& line) {
  const std::string kind = line.text(29);
  return kind.empty() ? Value(Null()) : Value(kind);
}

constexpr Column<InvoiceLine> kDetail[] = {
    {"Purchase_Inv_No", of_document<&Invoice::PurchaseInvNo>},
    {"Vendor_Code", of_document<&Invoice::VendorCode>},
    {"Vendor_name", of_document<&Invoice::VendorName>},
    {"SL_No", serial},
    {"Order_No", order_number},
    {"Order_Date", cell_day_unless_blank<3>},
    {"Vendor_Ref_Document_No", cell_unless_blank<4>},
    {"Vendor_Ref_Document_Date", cell_day_unless_blank<5>},
    {"Item_Code", cell_item_code<6>},
    {"Vendor_Item_Code", cell_unless_blank<7>},
    {"Item_Name", cell_unless_blank<8>},
    {"Unit_Code", cell_head<9>},
    {"Unit_Name", cell_unit_name<10>},
    {"Period_Type", cell_period_type<10>},
    {"FOC_Flag", cell_number<30>},
    {"Unit_Qty", cell_number<11>},
    {"Purchase_Inv_Qty", cell_number<12>},
    {"grn_qty", cell_number_through_text<12>},
    {"Purchase_Inv_Unit_Price", cell_number<24>},
    {"Purchase_Inv_Item_Disc_Amount", cell_number<18>},
    {"Purchase_Inv_Item_FC_Disc_Amount", cell_number<15>},
    {"Purchase_Inv_Item_Amount", cell_number_or<32, 16>},
    {"Purchase_Inv_FC_Item_Amount", cell_number_or<34, 17>},
    {"PO_Disc_Amount", cell_number<31>},
    {"PO_FC_Disc_Amount", cell_number<33>},
    {"TaxType", tax_class},
    {"Proj_No", cell_trimmed<19>},
    {"GRN_SL_NO", of_receipt<cell_head<20>>},
    {"GRN_No", of_receipt<cell_trimmed<22>>},
    {"GRN_Date", of_receipt<receipt_date>},
    {"GRN_Flag", of_receipt<receipt_kind>},
    {"Purchase_Inv_Overall_FC_Disc_Amount", figure<&InvoiceLine::overall_fc_discount>},
    {"Purchase_Inv_Overall_Disc_Amount", figure<&InvoiceLine::overall_discount>},
    {"GRN_Item_Amount", cell_number<25>},
    {"GRN_FC_Item_Amount", cell_number<26>},
    {"GRN_Unit_Price", cell_number<27>},
    {"Last_Update", of_document<&Invoice::LastUpdate>},
};

}  // namespace

std::span<const Column<PurchaseInvoice>> invoice_key_columns() {
  return kKey;
}
std::span<const Column<PurchaseInvoice>> invoice_master_columns() {
  return kMaster;
}
std::span<const Column<InvoiceLine>> invoice_detail_columns() {
  return kDetail;
}

}  // namespace ombrix::purchase
