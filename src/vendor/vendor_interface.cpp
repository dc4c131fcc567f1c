#include "vendor/vendor_interface.h"

#include "ombrix/purchase/vendor.h"

namespace ombrix::purchase {

namespace {

using Of = MembersOf<Vendor>;

constexpr Member kMembers[] = {
    Of::property<&Vendor::ConnectionString>("ConnectionString"),
    Of::property<&Vendor::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&Vendor::ErrDesc>("ErrDesc"),
    Of::property<&Vendor::VendorCode>("VendorCode"),
    Of::property<&Vendor::VendorName>("VendorName"),
    Of::property<&Vendor::VendorAddress>("VendorAddress"),
    Of::property<&Vendor::VendorCity>("VendorCity"),
    Of::property<&Vendor::VendorState>("VendorState"),
    Of::property<&Vendor::VendorPostal>("VendorPostal"),
    Of::property<&Vendor::VendorCountry>("VendorCountry"),
    Of::property<&Vendor::CountryID>("CountryID"),
    Of::property<&Vendor::VendorPhone>("VendorPhone"),
    Of::property<&Vendor::VendorFax>("VendorFax"),
    Of::property<&Vendor::VendorEmail>("VendorEmail"),
    Of::property<&Vendor::VendorContactName>("VendorContactName"),
    Of::property<&Vendor::VendorContactPhone>("VendorContactPhone"),
    Of::property<&Vendor::VendorPaymentType>("VendorPaymentType"),
    Of::property<&Vendor::VendorPaymentTerms>("VendorPaymentTerms"),
    Of::property<&Vendor::PaymentTermsID>("PaymentTermsID"),
    Of::property<&Vendor::VendorBalance>("VendorBalance"),
    Of::property<&Vendor::VendorFCBalance>("VendorFCBalance"),
    Of::property<&Vendor::VendorCurrencyCode>("VendorCurrencyCode"),
    Of::property<&Vendor::CurrencyCode>("CurrencyCode"),
    Of::property<&Vendor::CurrencyName>("CurrencyName"),
    Of::property<&Vendor::CurrencySymbol>("CurrencySymbol"),
    Of::property<&Vendor::VendorCreditLimit>("VendorCreditLimit"),
    Of::property<&Vendor::VendorDiscount>("VendorDiscount"),
    Of::property<&Vendor::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&Vendor::VendorInActiveFlag>("VendorInActiveFlag"),
    Of::property<&Vendor::VendorComments>("VendorComments"),
    Of::property<&Vendor::APAccountNo>("APAccountNo"),
    Of::property<&Vendor::AllowDeleteFlag>("AllowDeleteFlag"),
    Of::property<&Vendor::APAccountName>("APAccountName"),
    Of::property<&Vendor::CompanyPrefix>("CompanyPrefix"),
    Of::property<&Vendor::BranchPrefix>("BranchPrefix"),
    Of::property<&Vendor::DocumentPrefix>("DocumentPrefix"),
    Of::property<&Vendor::VendorOBLedgerNo>("VendorOBLedgerNo"),
    Of::property<&Vendor::VendorOBAmount>("VendorOBAmount"),
    Of::property<&Vendor::LastUpdate>("LastUpdate"),
    Of::method<&Vendor::Create_Vendor>("Create_Vendor"),
    Of::method<&Vendor::Update_Vendor>("Update_Vendor"),
    Of::method<&Vendor::Get_Vendor_Discount>("Get_Vendor_Discount"),
    Of::method<&Vendor::Get_Vendor>("Get_Vendor"),
    Of::method<&Vendor::Get_Vendor_Balance>("Get_Vendor_Balance"),
    Of::method<&Vendor::Exist_Vendor>("Exist_Vendor"),
    Of::method<&Vendor::DeleteRecord>("DeleteRecord"),
    Of::method<&Vendor::Get_AP_Account_Name>("Get_AP_Account_Name"),
    Of::property<&Vendor::VendorOBType>("VendorOBType"),
    Of::property<&Vendor::VendorOBDocumentNo>("VendorOBDocumentNo"),
    Of::method<&Vendor::Adjusted>("Adjusted"),
    Of::method<&Vendor::Delete_Previous_OB>("Delete_Previous_OB"),
    Of::method<&Vendor::Change_Vendor_Code>("Change_Vendor_Code"),
    Of::method<&Vendor::Change_Code>("Change_Code"),
    Of::method<&Vendor::Execute_Change_Code>("Execute_Change_Code"),
    Of::property<&Vendor::Database>("Database"),
    Of::property<&Vendor::GridName>("GridName"),
};

constexpr Interface kInterface("OmbrixPurchase.Vendor", kMembers);

}  // namespace

Shipped vendor() {
  return business_class<Vendor>(kInterface);
}

}  // namespace ombrix::purchase
