#include "ombrix/purchase/vendor_ob.h"

#include "vendor/vendor_interface.h"

namespace ombrix::purchase {

namespace {

using Of = MembersOf<VendorOB>;

constexpr Member kMembers[] = {
    Of::property<&VendorOB::SyncFlag>("SyncFlag"),
    Of::property<&VendorOB::OBType>("OBType"),
    Of::property<&VendorOB::VendorName>("VendorName"),
    Of::property<&VendorOB::VendorCode>("VendorCode"),
    Of::property<&VendorOB::GridName>("GridName"),
    Of::property<&VendorOB::ConnectionString>("ConnectionString"),
    Of::property<&VendorOB::ErrDesc>("ErrDesc"),
    Of::property<&VendorOB::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&VendorOB::CompanyPrefix>("CompanyPrefix"),
    Of::property<&VendorOB::BranchPrefix>("BranchPrefix"),
    Of::property<&VendorOB::DocumentPrefix>("DocumentPrefix"),
    Of::property<&VendorOB::ProcessedFlag>("ProcessedFlag"),
    Of::property<&VendorOB::CurrencyCode>("CurrencyCode"),
    Of::property<&VendorOB::CurrencySymbol>("CurrencySymbol"),
    Of::property<&VendorOB::LastUpdate>("LastUpdate"),
    Of::property<&VendorOB::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::method<&VendorOB::Validation>("Validation"),
    Of::method<&VendorOB::Create_OB>("Create_OB"),
    Of::method<&VendorOB::Get_OB>("Get_OB"),
    Of::method<&VendorOB::Process_OB>("Process_OB"),
    Of::property<&VendorOB::Database>("Database"),
};

constexpr Interface kInterface("OmbrixPurchase.VendorOB", kMembers);

}  // namespace

Shipped vendor_ob() {
  return business_class<VendorOB>(kInterface, database::Piece("Payment_Master Where Payment_No="));
}

}  // namespace ombrix::purchase
