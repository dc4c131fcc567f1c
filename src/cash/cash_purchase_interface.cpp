#include "cash/cash_purchase_interface.h"

#include "ombrix/purchase/cash_purchase.h"

namespace ombrix::purchase {

namespace {

using Of = MembersOf<CashPurchase>;

constexpr Member kMembers[] = {
    Of::property<&CashPurchase::TaxCode>("TaxCode"),
    Of::property<&CashPurchase::TaxAmount>("TaxAmount"),
    Of::property<&CashPurchase::TaxPercent>("TaxPercent"),
    Of::property<&CashPurchase::TaxDescription>("TaxDescription"),
    Of::property<&CashPurchase::TaxType>("TaxType"),
    Of::property<&CashPurchase::OnlineFlag>("OnlineFlag"),
    Of::property<&CashPurchase::SyncFlag>("SyncFlag"),
    Of::property<&CashPurchase::Status>("Status"),
    Of::property<&CashPurchase::AmtDig>("AmtDig"),
    Of::property<&CashPurchase::ChequeToPay>("ChequeToPay"),
    Of::property<&CashPurchase::Purchase_Type>("Purchase_Type"),
    Of::property<&CashPurchase::Cheque_Bank_AccountNo>("Cheque_Bank_AccountNo"),
    Of::property<&CashPurchase::Payment_Type>("Payment_Type"),
    Of::property<&CashPurchase::DocFlag>("DocFlag"),
    Of::property<&CashPurchase::manualDocIdentity>("manualDocIdentity"),
    Of::property<&CashPurchase::ExchangeRate>("ExchangeRate"),
    Of::property<&CashPurchase::PurchaseLogPrefix>("PurchaseLogPrefix"),
    Of::property<&CashPurchase::StockMovementPrefix>("StockMovementPrefix"),
    Of::property<&CashPurchase::GridName>("GridName"),
    Of::property<&CashPurchase::ConnectionString>("ConnectionString"),
    Of::property<&CashPurchase::ErrDesc>("ErrDesc"),
    Of::property<&CashPurchase::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&CashPurchase::CompanyPrefix>("CompanyPrefix"),
    Of::property<&CashPurchase::BranchPrefix>("BranchPrefix"),
    Of::property<&CashPurchase::DocumentPrefix>("DocumentPrefix"),
    Of::property<&CashPurchase::CashPurInvNo>("CashPurInvNo"),
    Of::property<&CashPurchase::CashPurInvIdentity>("CashPurInvIdentity"),
    Of::property<&CashPurchase::CashPurInvDate>("CashPurInvDate"),
    Of::property<&CashPurchase::VendorCode>("VendorCode"),
    Of::property<&CashPurchase::VendorName>("VendorName"),
    Of::property<&CashPurchase::VendorRefInvoiceNo>("VendorRefInvoiceNo"),
    Of::property<&CashPurchase::VendorRefInvoiceDate>("VendorRefInvoiceDate"),
    Of::property<&CashPurchase::VendorRefDocumentPrefix>("VendorRefDocumentPrefix"),
    Of::property<&CashPurchase::CashPurInvAmount>("CashPurInvAmount"),
    Of::property<&CashPurchase::ProcessFlag>("ProcessFlag"),
    Of::property<&CashPurchase::CancelFlag>("CancelFlag"),
    Of::property<&CashPurchase::AllowCancelFlag>("AllowCancelFlag"),
    Of::property<&CashPurchase::FulFilledFlag>("FulFilledFlag"),
    Of::property<&CashPurchase::CashPurInvComments>("CashPurInvComments"),
    Of::property<&CashPurchase::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&CashPurchase::CurrencyCode>("CurrencyCode"),
    Of::property<&CashPurchase::CurrencySymbol>("CurrencySymbol"),
    Of::property<&CashPurchase::CashPurInvFCAmount>("CashPurInvFCAmount"),
    Of::property<&CashPurchase::CashPurInvSubTotal>("CashPurInvSubTotal"),
    Of::property<&CashPurchase::CashPurInvFCSubTotal>("CashPurInvFCSubTotal"),
    Of::property<&CashPurchase::CashPurInvDiscPercent>("CashPurInvDiscPercent"),
    Of::property<&CashPurchase::CashPurInvDiscAmount>("CashPurInvDiscAmount"),
    Of::property<&CashPurchase::CashPurInvFCDiscAmount>("CashPurInvFCDiscAmount"),
    Of::property<&CashPurchase::YearEndFlag>("YearEndFlag"),
    Of::property<&CashPurchase::LocationID>("LocationID"),
    Of::property<&CashPurchase::LocationName>("LocationName"),
    Of::property<&CashPurchase::ChequeNo>("ChequeNo"),
    Of::property<&CashPurchase::ChequeBank>("ChequeBank"),
    Of::property<&CashPurchase::ChequeDate>("ChequeDate"),
    Of::property<&CashPurchase::CreditCardCode>("CreditCardCode"),
    Of::property<&CashPurchase::CreditCardName>("CreditCardName"),
    Of::property<&CashPurchase::CreditCardNo>("CreditCardNo"),
    Of::property<&CashPurchase::LastUpdate>("LastUpdate"),
    Of::method<&CashPurchase::Create_Cash_Purchase_Invoice>("Create_Cash_Purchase_Invoice"),
    Of::method<&CashPurchase::Update_Cash_Purchase_Invoice>("Update_Cash_Purchase_Invoice"),
    Of::method<&CashPurchase::Get_Direct_PInvoice>("Get_Direct_PInvoice"),
    Of::method<&CashPurchase::Process_Cash_Purchase>("Process_Cash_Purchase"),
    Of::method<&CashPurchase::CP_Tax_Posting>("CP_Tax_Posting"),
    Of::method<&CashPurchase::Get_Default_Accounts>("Get_Default_Accounts"),
    Of::method<&CashPurchase::Cheque_Process>("Cheque_Process"),
    Of::method<&CashPurchase::Incerase_Cheque_No>("Incerase_Cheque_No"),
};

constexpr Interface kInterface("OmbrixPurchase.CashPurchase", kMembers);

}  // namespace

Shipped cash_purchase() {
  return business_class<CashPurchase>(
      kInterface, database::Piece("Cash_Purchase_Master Where Cash_Pur_Inv_No="));
}

}  // namespace ombrix::purchase
