#include "cash/cash_purchase_columns.h"

namespace ombrix::purchase {

namespace {

using namespace rule;
using Cash = CashPurchase;

constexpr Column<Cash> kKey[] = {
    {"Cash_Pur_Inv_No", always<&Cash::CashPurInvNo>},
    {"Cash_Pur_Inv_Identity", always<&Cash::CashPurInvIdentity>, into<&Cash::CashPurInvIdentity>},
    {"Company_Prefix", always<&Cash::CompanyPrefix>, unless_blank<&Cash::CompanyPrefix>},
    {"Branch_Prefix", always<&Cash::BranchPrefix>, unless_blank<&Cash::BranchPrefix>},
};

/// A home amount, of the foreign one.
template <auto P>
Written at_rate(Cash& purchase) {
  return through_text<P>(purchase)->to_number() * purchase.ExchangeRate();
}
Written date_of_cheque(Cash& purchase) {
  return purchase.Payment_Type() == "Cheque" ? Value(purchase.ChequeDate()) : Value(Null());
}
void date_or_today(Cash& purchase, const Value& date) {
  purchase.ChequeDate = date.is_null() ? Date::now().midnight() : date.to_date();
}
/// Every save starts the document's life anew.
Written saved(Cash&) {
  return "Saved";
}
Written cleared(Cash&) {
  return false;
}

constexpr Column<Cash> kRest[] = {
    {"Document_Prefix", always<&Cash::DocumentPrefix>, unless_blank<&Cash::DocumentPrefix>},
    {"Cash_Pur_Inv_Date", always<&Cash::CashPurInvDate>, into<&Cash::CashPurInvDate>},
    {"Vendor_Code", always<&Cash::VendorCode>, unless_blank<&Cash::VendorCode>},
    {"Vendor_name", skip_if_blank<&Cash::VendorName>, unless_blank<&Cash::VendorName>},
    {"Vendor_Ref_Invoice_No", null_if_empty<&Cash::VendorRefInvoiceNo>,
     unless_blank<&Cash::VendorRefInvoiceNo>},
    {"Vendor_Ref_Invoice_Date", always<&Cash::VendorRefInvoiceDate>,
     into<&Cash::VendorRefInvoiceDate>},
    {"Vendor_Ref_Document_Prefix", skip_if_blank<&Cash::VendorRefDocumentPrefix>,
     unless_blank<&Cash::VendorRefDocumentPrefix>},
    {"Cash_Pur_Inv_Comments", null_if_empty<&Cash::CashPurInvComments>,
     unless_blank<&Cash::CashPurInvComments>},
    {"Foreign_Currency_Flag", always<&Cash::ForeignCurrencyFlag>, into<&Cash::ForeignCurrencyFlag>},
    {"Currency_Code", always<&Cash::CurrencyCode>, unless_blank<&Cash::CurrencyCode>},
    {"Currency_Symbol", trimmed<&Cash::CurrencySymbol>, unless_blank<&Cash::CurrencySymbol>},
    {"Cash_Pur_Inv_FC_Amount", through_text<&Cash::CashPurInvFCAmount>,
     into<&Cash::CashPurInvFCAmount>},
    {"Cash_Pur_Inv_Amount", at_rate<&Cash::CashPurInvFCAmount>, into<&Cash::CashPurInvAmount>},
    {"Cash_Pur_Inv__SubTotal", at_rate<&Cash::CashPurInvFCSubTotal>,
     into<&Cash::CashPurInvSubTotal>},
    {"Cash_Pur_Inv_FC_SubTotal", through_text<&Cash::CashPurInvFCSubTotal>,
     into<&Cash::CashPurInvFCSubTotal>},
    {"Cash_Pur_Inv_Disc_Percent", through_text<&Cash::CashPurInvDiscPercent>,
     into<&Cash::CashPurInvDiscPercent>},
    {"Cash_Pur_Inv_Disc_Amount", at_rate<&Cash::CashPurInvFCDiscAmount>,
     into<&Cash::CashPurInvDiscAmount>},
    {"Cash_Pur_Inv_FC_Disc_Amount", through_text<&Cash::CashPurInvFCDiscAmount>,
     into<&Cash::CashPurInvFCDiscAmount>},
    {"Balance_Amount", always<&Cash::CashPurInvAmount>},
    {"Balance_FCAmount", always<&Cash::CashPurInvFCAmount>},
    {"Purchase_Type", always<&Cash::Purchase_Type>, item_if_empty<&Cash::Purchase_Type>},
    {"Exchange_Rate", rate_or_one},
    {"Last_Update", always<&Cash::LastUpdate>},
    {"Payment_Type", always<&Cash::Payment_Type>, unless_blank<&Cash::Payment_Type>},
    {"CreditCard_No", always<&Cash::CreditCardNo>, or_empty<&Cash::CreditCardNo>},
    {"CreditCard_Name", always<&Cash::CreditCardName>, or_empty<&Cash::CreditCardName>},
    {"CreditCard_Code", always<&Cash::CreditCardCode>, or_empty<&Cash::CreditCardCode>},
    {"Cheque_Bank", always<&Cash::ChequeBank>, or_empty<&Cash::ChequeBank>},
    {"Cheque_Date", date_of_cheque, date_or_today},
    {"Cheque_No", always<&Cash::ChequeNo>, or_empty<&Cash::ChequeNo>},
    {"Cheque_Bank_AccountNo", always<&Cash::Cheque_Bank_AccountNo>,
     or_empty<&Cash::Cheque_Bank_AccountNo>},
    {"ChequeToPay", always<&Cash::ChequeToPay>, or_empty<&Cash::ChequeToPay>},
    {"fulfilled_Flag", cleared, into<&Cash::FulFilledFlag>},
    {"Status", saved},
    {"process_Flag", cleared, into<&Cash::ProcessFlag>},
    {"Cancel_Flag", cleared, into<&Cash::CancelFlag>},
    {"Allow_Cancel_Flag", cleared, into<&Cash::AllowCancelFlag>},
    {"Year_End_Flag", cleared, into<&Cash::YearEndFlag>},
    {"TaxCode", always<&Cash::TaxCode>, unless_null<&Cash::TaxCode>},
    {"TaxDescription", always<&Cash::TaxDescription>, unless_null<&Cash::TaxDescription>},
    {"CP_TaxRate", always<&Cash::TaxPercent>, unless_null<&Cash::TaxPercent>},
    {"CP_TaxAmount", always<&Cash::TaxAmount>, unless_null<&Cash::TaxAmount>},
};

using Line = CashPurchaseLine;

Written stored_code(Line& line) {
  if (line.trimmed(1).empty()) return std::nullopt;
  const Cash& purchase = line.document;
  const bool costing = purchase.Purchase_Type() == "Costing Expense";
  return Value(purchase.CompanyPrefix() + (costing ? purchase.BranchPrefix() : "") + line.text(1));
}
/// Home price before the discount on one unit.
Written unit_price(Line& line) {
  return quotient(line.number(13), line.number(7)) + line.number(11);
}
Written amount_at_rate(Line& line) {
  return cell_number_through_text<14>(line)->to_number() * line.document.ExchangeRate();
}
/// Cell `kCell` trimmed, while `kTests` are not blank; else the column is left alone.
template <std::int32_t kCell, std::int32_t... kTests>
Written cell_if(Line& line) {
  if ((line.trimmed(kTests).empty() || ...)) return std::nullopt;
  return Value(line.trimmed(kCell));
}

constexpr Column<Line> kLine[] = {
    {"Cash_Pur_Inv_No", of_document<&Cash::CashPurInvNo>},
    {"SL_No", serial},
    {"Item_Code", stored_code},
    {"Vendor_Item_Code", cell_text_unless_blank<2>},
    {"Item_Name", cell_text_unless_blank<3>},
    {"Unit_Code", cell_head<4>},
    {"Unit_Name", cell_unit_name<5>},
    {"Period_Type", cell_period_type<5>},
    {"FOC_Flag", cell_number<21>},
    {"Unit_Qty", cell_head<6>},
    {"Cash_Pur_Inv_Qty", cell_head<7>},
    {"Cash_Pur_Inv_Unit_Price", unit_price},
    {"Cash_Pur_Inv_Item_Disc_Percent", cell_head<10>},
    {"Cash_Pur_Inv_Item_Disc_Amount", cell_head<11>},
    {"Cash_Pur_Inv_Item_FC_Disc_Amount", cell_head<12>},
    {"Cash_Pur_Inv_Item_Amount", amount_at_rate},
    {"Cash_Pur_Inv_FC_Item_Amount", cell_number_through_text<14>},
    {"Proj_No", cell_if<18, 18, 19>},
    {"Account_No", cell_trimmed<17>},
    {"Location_Name", cell_if<16, 20>},
    {"location_ID", cell_if<20, 20>},
    {"Cash_Pur_Inv_Overall_FC_Disc_Amount", figure<&Line::overall_fc_discount>},
    {"Cash_Pur_Inv_Overall_Disc_Amount", figure<&Line::overall_discount>},
    {"TaxType", cell_trimmed<23>},
    {"Last_Update", of_document<&Cash::LastUpdate>},
};

}  // namespace

std::span<const Column<CashPurchase>> CashPurchaseColumns::key() {
  return kKey;
}
std::span<const Column<CashPurchase>> CashPurchaseColumns::rest() {
  return kRest;
}
std::span<const Column<CashPurchaseLine>> CashPurchaseColumns::line() {
  return kLine;
}

}  // namespace ombrix::purchase
