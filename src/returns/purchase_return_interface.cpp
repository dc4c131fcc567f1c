#include "returns/purchase_return_interface.h"

#include "ombrix/purchase/purchase_return.h"

namespace ombrix::purchase {

namespace {

using Of = MembersOf<PurchaseReturn>;

constexpr Member kMembers[] = {
    Of::property<&PurchaseReturn::TaxCode>("TaxCode"),
    Of::property<&PurchaseReturn::TaxAmount>("TaxAmount"),
    Of::property<&PurchaseReturn::TaxPercent>("TaxPercent"),
    Of::property<&PurchaseReturn::TaxDescription>("TaxDescription"),
    Of::property<&PurchaseReturn::TaxType>("TaxType"),
    Of::property<&PurchaseReturn::OnlineFlag>("OnlineFlag"),
    Of::property<&PurchaseReturn::SyncFlag>("SyncFlag"),
    Of::property<&PurchaseReturn::SourceExchangeRate>("SourceExchangeRate"),
    Of::property<&PurchaseReturn::Ref_Doc_Type>("Ref_Doc_Type"),
    Of::property<&PurchaseReturn::Refno>("Refno"),
    Of::property<&PurchaseReturn::DocFlag>("DocFlag"),
    Of::property<&PurchaseReturn::manualDocIdentity>("manualDocIdentity"),
    Of::property<&PurchaseReturn::ExchangeRate>("ExchangeRate"),
    Of::property<&PurchaseReturn::Database>("Database"),
    Of::property<&PurchaseReturn::LocationID>("LocationID"),
    Of::property<&PurchaseReturn::LocationName>("LocationName"),
    Of::property<&PurchaseReturn::ConnectionString>("ConnectionString"),
    Of::property<&PurchaseReturn::ErrDesc>("ErrDesc"),
    Of::property<&PurchaseReturn::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&PurchaseReturn::CompanyPrefix>("CompanyPrefix"),
    Of::property<&PurchaseReturn::BranchPrefix>("BranchPrefix"),
    Of::property<&PurchaseReturn::DocumentPrefix>("DocumentPrefix"),
    Of::property<&PurchaseReturn::PurchaseRtnNo>("PurchaseRtnNo"),
    Of::property<&PurchaseReturn::PurchaseRtnIdentity>("PurchaseRtnIdentity"),
    Of::property<&PurchaseReturn::PurchaseRtnDate>("PurchaseRtnDate"),
    Of::property<&PurchaseReturn::VendorCode>("VendorCode"),
    Of::property<&PurchaseReturn::VendorName>("VendorName"),
    Of::property<&PurchaseReturn::PurchaseRtnRefNo>("PurchaseRtnRefNo"),
    Of::property<&PurchaseReturn::PurchaseRtnComments>("PurchaseRtnComments"),
    Of::property<&PurchaseReturn::ProcessedFlag>("ProcessedFlag"),
    Of::property<&PurchaseReturn::CancelFlag>("CancelFlag"),
    Of::property<&PurchaseReturn::AllowCancelFlag>("AllowCancelFlag"),
    Of::property<&PurchaseReturn::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&PurchaseReturn::CurrencyCode>("CurrencyCode"),
    Of::property<&PurchaseReturn::CurrencySymbol>("CurrencySymbol"),
    Of::property<&PurchaseReturn::PurchaseRtnAmount>("PurchaseRtnAmount"),
    Of::property<&PurchaseReturn::PurchaseRtnFCAmount>("PurchaseRtnFCAmount"),
    Of::property<&PurchaseReturn::PurchaseRtnSubTotal>("PurchaseRtnSubTotal"),
    Of::property<&PurchaseReturn::PurchaseRtnFCSubTotal>("PurchaseRtnFCSubTotal"),
    Of::property<&PurchaseReturn::PurchaseRtnDiscAmount>("PurchaseRtnDiscAmount"),
    Of::property<&PurchaseReturn::PurchaseRtnFCDiscAmount>("PurchaseRtnFCDiscAmount"),
    Of::property<&PurchaseReturn::PurchaseRtnOverDiscAmount>("PurchaseRtnOverDiscAmount"),
    Of::property<&PurchaseReturn::YearEndFlag>("YearEndFlag"),
    Of::property<&PurchaseReturn::PurRetGridName>("PurRetGridName"),
    Of::property<&PurchaseReturn::LastUpdate>("LastUpdate"),
    Of::method<&PurchaseReturn::Create_Purchase_Rtn>("Create_Purchase_Rtn"),
    Of::method<&PurchaseReturn::Get_Purchase_Rtn>("Get_Purchase_Rtn"),
    Of::method<&PurchaseReturn::Update_Purchase_Rtn>("Update_Purchase_Rtn"),
    Of::method<&PurchaseReturn::Process_Return>("Process_Return"),
    Of::method<&PurchaseReturn::PR_Tax_Posting>("PR_Tax_Posting"),
    Of::property<&PurchaseReturn::StockMovementPrefix>("StockMovementPrefix"),
    Of::method<&PurchaseReturn::Update_Source>("Update_Source"),
    Of::method<&PurchaseReturn::UpdateReturnSource>("UpdateReturnSource"),
    Of::method<&PurchaseReturn::Generate_Debit_Memo>("Generate_Debit_Memo"),
    Of::method<&PurchaseReturn::Create_Voucher_Master>("Create_Voucher_Master"),
    Of::method<&PurchaseReturn::Create_Voucher_Detail>("Create_Voucher_Detail"),
    Of::method<&PurchaseReturn::Process_DebitMemo>("Process_DebitMemo"),
    Of::method<&PurchaseReturn::ExistDocument>("ExistDocument"),
    Of::method<&PurchaseReturn::GetFldValue>("GetFldValue"),
};

constexpr Interface kInterface("OmbrixPurchase.PurchaseReturn", kMembers);

}  // namespace

Shipped purchase_return() {
  return business_class<PurchaseReturn>(
      kInterface, database::Piece("Purchase_Return_Master Where Purchase_Rtn_No="));
}

}  // namespace ombrix::purchase
