#include "receipts/grn_interface.h"

#include "ombrix/purchase/grn.h"

namespace ombrix::purchase {

namespace {

using Of = MembersOf<GRN>;

constexpr Member kMembers[] = {
    Of::property<&GRN::TaxCode>("TaxCode"),
    Of::property<&GRN::TaxAmount>("TaxAmount"),
    Of::property<&GRN::TaxPercent>("TaxPercent"),
    Of::property<&GRN::TaxDescription>("TaxDescription"),
    Of::property<&GRN::TaxType>("TaxType"),
    Of::property<&GRN::AmtDig>("AmtDig"),
    Of::property<&GRN::Purchase_Type>("Purchase_Type"),
    Of::property<&GRN::manualDocIdentity>("manualDocIdentity"),
    Of::property<&GRN::DocFlag>("DocFlag"),
    Of::property<&GRN::OnlineFlag>("OnlineFlag"),
    Of::property<&GRN::SyncFlag>("SyncFlag"),
    Of::property<&GRN::ExchangeRate>("ExchangeRate"),
    Of::property<&GRN::ConnectionString>("ConnectionString"),
    Of::property<&GRN::OrderDate>("OrderDate"),
    Of::property<&GRN::LocationID>("LocationID"),
    Of::property<&GRN::LocationName>("LocationName"),
    Of::property<&GRN::ErrDesc>("ErrDesc"),
    Of::property<&GRN::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&GRN::CompanyPrefix>("CompanyPrefix"),
    Of::property<&GRN::BranchPrefix>("BranchPrefix"),
    Of::property<&GRN::DocumentPrefix>("DocumentPrefix"),
    Of::property<&GRN::GRNNo>("GRNNo"),
    Of::property<&GRN::GRNDate>("GRNDate"),
    Of::property<&GRN::GRNIdentity>("GRNIdentity"),
    Of::property<&GRN::DirectGRNFlag>("DirectGRNFlag"),
    Of::property<&GRN::GRNComments>("GRNComments"),
    Of::property<&GRN::GRNRefDocumentNo>("GRNRefDocumentNo"),
    Of::property<&GRN::GRNRefDocumentPrefix>("GRNRefDocumentPrefix"),
    Of::property<&GRN::GRNInvoicedFlag>("GRNInvoicedFlag"),
    Of::property<&GRN::GRNAmount>("GRNAmount"),
    Of::property<&GRN::ProcessedFlag>("ProcessedFlag"),
    Of::property<&GRN::VendorCode>("VendorCode"),
    Of::property<&GRN::VendorName>("VendorName"),
    Of::property<&GRN::VendorRefDocumentNo>("VendorRefDocumentNo"),
    Of::property<&GRN::VendorRefDocumentDate>("VendorRefDocumentDate"),
    Of::property<&GRN::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&GRN::CurrencyCode>("CurrencyCode"),
    Of::property<&GRN::CurrencySymbol>("CurrencySymbol"),
    Of::property<&GRN::GRNFCAmount>("GRNFCAmount"),
    Of::property<&GRN::GRNSubTotal>("GRNSubTotal"),
    Of::property<&GRN::GRNFCSubTotal>("GRNFCSubTotal"),
    Of::property<&GRN::GRNDiscountAmount>("GRNDiscountAmount"),
    Of::property<&GRN::GRNFCDiscountAmount>("GRNFCDiscountAmount"),
    Of::property<&GRN::GRNCostingAmount>("GRNCostingAmount"),
    Of::property<&GRN::GRNFCCostingAmount>("GRNFCCostingAmount"),
    Of::property<&GRN::YearEndFlag>("YearEndFlag"),
    Of::property<&GRN::CancelFlag>("CancelFlag"),
    Of::property<&GRN::GridName>("GridName"),
    Of::property<&GRN::PurchaseLogPrefix>("PurchaseLogPrefix"),
    Of::property<&GRN::StockMovementPrefix>("StockMovementPrefix"),
    Of::property<&GRN::LastUpdate>("LastUpdate"),
    Of::method<&GRN::Create_GRN>("Create_GRN"),
    Of::method<&GRN::Update_GRN>("Update_GRN"),
    Of::method<&GRN::Get_GRN>("Get_GRN"),
    Of::method<&GRN::ProcessGRN>("ProcessGRN"),
    Of::method<&GRN::GRN_Tax_Posting>("GRN_Tax_Posting"),
    Of::property<&GRN::Database>("Database"),
    Of::method<&GRN::GL_Posting>("GL_Posting"),
    Of::method<&GRN::GRN_Posting>("GRN_Posting"),
};

constexpr Interface kInterface("OmbrixPurchase.GRN", kMembers);

}  // namespace

Shipped grn() {
  return business_class<GRN>(kInterface, database::Piece("Goods_Receive_Master Where GRN_No="));
}

}  // namespace ombrix::purchase
