#include "invoices/purchase_invoice_interface.h"

#include "ombrix/purchase/purchase_invoice.h"

namespace ombrix::purchase {

namespace {

using Of = MembersOf<PurchaseInvoice>;

constexpr Member kMembers[] = {
    Of::property<&PurchaseInvoice::DiscountPercent>("DiscountPercent"),
    Of::property<&PurchaseInvoice::DiscountMaster>("DiscountMaster"),
    Of::property<&PurchaseInvoice::TaxCode>("TaxCode"),
    Of::property<&PurchaseInvoice::TaxAmount>("TaxAmount"),
    Of::property<&PurchaseInvoice::TaxPercent>("TaxPercent"),
    Of::property<&PurchaseInvoice::POTaxAmount>("POTaxAmount"),
    Of::property<&PurchaseInvoice::POTaxPercent>("POTaxPercent"),
    Of::property<&PurchaseInvoice::TaxDescription>("TaxDescription"),
    Of::property<&PurchaseInvoice::TaxType>("TaxType"),
    Of::property<&PurchaseInvoice::OnlineFlag>("OnlineFlag"),
    Of::property<&PurchaseInvoice::SyncFlag>("SyncFlag"),
    Of::property<&PurchaseInvoice::AmtDig>("AmtDig"),
    Of::property<&PurchaseInvoice::Purchase_Type>("Purchase_Type"),
    Of::property<&PurchaseInvoice::RefInvoiceType>("RefInvoiceType"),
    Of::property<&PurchaseInvoice::DocFlag>("DocFlag"),
    Of::property<&PurchaseInvoice::manualDocIdentity>("manualDocIdentity"),
    Of::property<&PurchaseInvoice::InvoiceType>("InvoiceType"),
    Of::property<&PurchaseInvoice::PONo>("PONo"),
    Of::property<&PurchaseInvoice::PODate>("PODate"),
    Of::property<&PurchaseInvoice::HomeCurrencyDigits>("HomeCurrencyDigits"),
    Of::property<&PurchaseInvoice::ExchangeRate>("ExchangeRate"),
    Of::property<&PurchaseInvoice::Database>("Database"),
    Of::property<&PurchaseInvoice::PInvoiceGridName>("PInvoiceGridName"),
    Of::property<&PurchaseInvoice::ConnectionString>("ConnectionString"),
    Of::property<&PurchaseInvoice::ErrDesc>("ErrDesc"),
    Of::property<&PurchaseInvoice::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&PurchaseInvoice::CompanyPrefix>("CompanyPrefix"),
    Of::property<&PurchaseInvoice::BranchPrefix>("BranchPrefix"),
    Of::property<&PurchaseInvoice::DocumentPrefix>("DocumentPrefix"),
    Of::property<&PurchaseInvoice::PurchaseInvNo>("PurchaseInvNo"),
    Of::property<&PurchaseInvoice::PurchaseInvIdentity>("PurchaseInvIdentity"),
    Of::property<&PurchaseInvoice::PurchaseInvDate>("PurchaseInvDate"),
    Of::property<&PurchaseInvoice::VendorCode>("VendorCode"),
    Of::property<&PurchaseInvoice::VendorName>("VendorName"),
    Of::property<&PurchaseInvoice::VendorRefInvoiceNo>("VendorRefInvoiceNo"),
    Of::property<&PurchaseInvoice::VendorRefInvoiceDate>("VendorRefInvoiceDate"),
    Of::property<&PurchaseInvoice::VendorRefDocumentPrefix>("VendorRefDocumentPrefix"),
    Of::property<&PurchaseInvoice::PurchaseInvAmount>("PurchaseInvAmount"),
    Of::property<&PurchaseInvoice::ProcessedFlag>("ProcessedFlag"),
    Of::property<&PurchaseInvoice::CancelFlag>("CancelFlag"),
    Of::property<&PurchaseInvoice::AllowCancelFlag>("AllowCancelFlag"),
    Of::property<&PurchaseInvoice::FulFilledFlag>("FulFilledFlag"),
    Of::property<&PurchaseInvoice::PurchaseInvComments>("PurchaseInvComments"),
    Of::property<&PurchaseInvoice::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&PurchaseInvoice::CurrencyCode>("CurrencyCode"),
    Of::property<&PurchaseInvoice::CurrencySymbol>("CurrencySymbol"),
    Of::property<&PurchaseInvoice::PurchaseInvFCAmount>("PurchaseInvFCAmount"),
    Of::property<&PurchaseInvoice::PurchaseInvSubTotal>("PurchaseInvSubTotal"),
    Of::property<&PurchaseInvoice::PurchaseInvFCSubTotal>("PurchaseInvFCSubTotal"),
    Of::property<&PurchaseInvoice::PurchaseInvDiscPercent>("PurchaseInvDiscPercent"),
    Of::property<&PurchaseInvoice::PurchaseInvDiscAmount>("PurchaseInvDiscAmount"),
    Of::property<&PurchaseInvoice::PurchaseInvFCDiscAmount>("PurchaseInvFCDiscAmount"),
    Of::property<&PurchaseInvoice::YearEndFlag>("YearEndFlag"),
    Of::property<&PurchaseInvoice::PurchaseVariance>("PurchaseVariance"),
    Of::property<&PurchaseInvoice::FCPurchaseVariance>("FCPurchaseVariance"),
    Of::property<&PurchaseInvoice::BalanceAmount>("BalanceAmount"),
    Of::property<&PurchaseInvoice::BalanceFCAmount>("BalanceFCAmount"),
    Of::property<&PurchaseInvoice::OBFlag>("OBFlag"),
    Of::property<&PurchaseInvoice::LastUpdate>("LastUpdate"),
    Of::method<&PurchaseInvoice::Create_Purchase_Invoice>("Create_Purchase_Invoice"),
    Of::method<&PurchaseInvoice::Get_Purchase_Invoice>("Get_Purchase_Invoice"),
    Of::method<&PurchaseInvoice::Get_GRN_details>("Get_GRN_details"),
    Of::method<&PurchaseInvoice::Update_Purchase_Invoice>("Update_Purchase_Invoice"),
    Of::method<&PurchaseInvoice::Process_Invoice>("Process_Invoice"),
    Of::method<&PurchaseInvoice::PI_Tax_Posting>("PI_Tax_Posting"),
    Of::method<&PurchaseInvoice::Get_PO_details>("Get_PO_details"),
    Of::method<&PurchaseInvoice::Account_Posting>("Account_Posting"),
    Of::method<&PurchaseInvoice::Get_Item_Accounts>("Get_Item_Accounts"),
    Of::method<&PurchaseInvoice::GetFldValue>("GetFldValue"),
    Of::method<&PurchaseInvoice::StringValidation>("StringValidation"),
};

constexpr Interface kInterface("OmbrixPurchase.PurchaseInvoice", kMembers);

}  // namespace

Shipped purchase_invoice() {
  return business_class<PurchaseInvoice>(
      kInterface, database::Piece("Purchase_Invoice_Master Where Purchase_Inv_No="));
}

}  // namespace ombrix::purchase
