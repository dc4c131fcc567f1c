#include "orders/lpo_interface.h"

#include "ombrix/purchase/lpo.h"

namespace ombrix::purchase {

namespace {

using Of = MembersOf<LPO>;

constexpr Member kMembers[] = {
    Of::property<&LPO::TaxTypeLPO>("TaxTypeLPO"),
    Of::property<&LPO::TaxCode>("TaxCode"),
    Of::property<&LPO::TaxDescription>("TaxDescription"),
    Of::property<&LPO::LPOTaxAmount>("LPOTaxAmount"),
    Of::property<&LPO::LPOTaxPercent>("LPOTaxPercent"),
    Of::property<&LPO::AmtDig>("AmtDig"),
    Of::property<&LPO::manualDocIdentity>("manualDocIdentity"),
    Of::property<&LPO::DocFlag>("DocFlag"),
    Of::property<&LPO::Purchase_Type>("Purchase_Type"),
    Of::property<&LPO::OnlineFlag>("OnlineFlag"),
    Of::property<&LPO::SyncFlag>("SyncFlag"),
    Of::property<&LPO::ExchangeRate>("ExchangeRate"),
    Of::property<&LPO::Database>("Database"),
    Of::property<&LPO::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&LPO::ConnectionString>("ConnectionString"),
    Of::property<&LPO::ErrDesc>("ErrDesc"),
    Of::property<&LPO::CompanyPrefix>("CompanyPrefix"),
    Of::property<&LPO::BranchPrefix>("BranchPrefix"),
    Of::property<&LPO::DocumentPrefix>("DocumentPrefix"),
    Of::property<&LPO::LPONo>("LPONo"),
    Of::property<&LPO::LPOIdentity>("LPOIdentity"),
    Of::property<&LPO::LPODate>("LPODate"),
    Of::property<&LPO::VendorCode>("VendorCode"),
    Of::property<&LPO::VendorName>("VendorName"),
    Of::property<&LPO::LPOTotalAmount>("LPOTotalAmount"),
    Of::property<&LPO::LPODueDate>("LPODueDate"),
    Of::property<&LPO::LPOComments>("LPOComments"),
    Of::property<&LPO::CancelFlag>("CancelFlag"),
    Of::property<&LPO::RFQNo>("RFQNo"),
    Of::property<&LPO::FulFilledFlag>("FulFilledFlag"),
    Of::property<&LPO::AllowCancelFlag>("AllowCancelFlag"),
    Of::property<&LPO::LPODiscountPercent>("LPODiscountPercent"),
    Of::property<&LPO::LPODiscountAmount>("LPODiscountAmount"),
    Of::property<&LPO::LPOFCDiscountAmount>("LPOFCDiscountAmount"),
    Of::property<&LPO::LPOSubTotal>("LPOSubTotal"),
    Of::property<&LPO::LPOFCSubtotal>("LPOFCSubtotal"),
    Of::property<&LPO::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&LPO::CurrencyCode>("CurrencyCode"),
    Of::property<&LPO::CurrencySymbol>("CurrencySymbol"),
    Of::property<&LPO::LPOFCTotalAmount>("LPOFCTotalAmount"),
    Of::property<&LPO::ProcessedFlag>("ProcessedFlag"),
    Of::property<&LPO::YearEndFlag>("YearEndFlag"),
    Of::property<&LPO::GridName>("GridName"),
    Of::property<&LPO::LastUpdate>("LastUpdate"),
    Of::method<&LPO::Create_LPO>("Create_LPO"),
    Of::method<&LPO::Get_LPO>("Get_LPO"),
    Of::method<&LPO::Update_LPO>("Update_LPO"),
    Of::method<&LPO::Process_LPO>("Process_LPO"),
};

constexpr Interface kInterface("OmbrixPurchase.LPO", kMembers);

}  // namespace

Shipped lpo() {
  return business_class<LPO>(kInterface, database::Piece("LPO_Master Where LPO_No="));
}

}  // namespace ombrix::purchase
