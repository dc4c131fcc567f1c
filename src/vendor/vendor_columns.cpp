#include "vendor/vendor_columns.h"

#include <array>

namespace ombrix::purchase {

namespace {

using namespace rule;
using V = Vendor;
using Write = Written (*)(Vendor&);

Written terms_or_zero(V& vendor) {
  const std::string& terms = vendor.VendorPaymentTerms();
  return terms.empty() ? Value(0) : Value(terms);
}

constexpr Column<V> kKey[] = {
    {"Vendor_Code", always<&V::VendorCode>, unless_empty<&V::VendorCode>},
    {"Company_Prefix", always<&V::CompanyPrefix>},
};

/// Creation and update differ in these three.
constexpr auto vendor_columns(Write payment_terms, Write currency_code, Write currency_symbol) {
  return std::to_array<Column<V>>({
      {"Vendor_name", always<&V::VendorName>, unless_empty<&V::VendorName>},
      {"Vendor_Address", null_if_empty<&V::VendorAddress>, unless_empty<&V::VendorAddress>},
      {"Vendor_City", null_if_empty<&V::VendorCity>, unless_empty<&V::VendorCity>},
      {"Vendor_State", null_if_empty<&V::VendorState>, unless_empty<&V::VendorState>},
      {"Vendor_Postal", null_if_empty<&V::VendorPostal>, unless_empty<&V::VendorPostal>},
      {"Vendor_Country", always<&V::VendorCountry>, unless_empty<&V::VendorCountry>},
      {"Country_ID", always<&V::CountryID>, unless_null<&V::CountryID>},
      {"Vendor_Phone", null_if_empty<&V::VendorPhone>, unless_empty<&V::VendorPhone>},
      {"Vendor_Fax", null_if_empty<&V::VendorFax>, unless_empty<&V::VendorFax>},
      {"Vendor_Email", null_if_empty<&V::VendorEmail>, unless_empty<&V::VendorEmail>},
      {"Vendor_Contact_Name", null_if_empty<&V::VendorContactName>,
       unless_empty<&V::VendorContactName>},
      {"Vendor_Contact_Phone", null_if_empty<&V::VendorContactPhone>,
       unless_empty<&V::VendorContactPhone>},
      {"Vendor_Payment_Type", null_if_empty<&V::VendorPaymentType>,
       unless_empty<&V::VendorPaymentType>},
      {"Vendor_Payment_Terms", payment_terms, unless_empty<&V::VendorPaymentTerms>},
      {"Payment_Terms_ID", always<&V::PaymentTermsID>, unless_null<&V::PaymentTermsID>},
      {"Vendor_Balance", nullptr, unless_null<&V::VendorBalance>},
      {"Vendor_Fc_Balance", nullptr, unless_null<&V::VendorFCBalance>},
      {"Vendor_Currency_Code", skip_if_empty<&V::VendorCurrencyCode>,
       unless_empty<&V::VendorCurrencyCode>},
      {"Currency_Code", currency_code, unless_empty<&V::CurrencyCode>},
      {"Currency_Name", skip_if_empty<&V::CurrencyName>, unless_empty<&V::CurrencyName>},
      {"Currency_Symbol", currency_symbol, unless_empty<&V::CurrencySymbol>},
      {"Vendor_Credit_limit", through_text<&V::VendorCreditLimit>,
       unless_null<&V::VendorCreditLimit>},
      {"Vendor_Discount", through_text<&V::VendorDiscount>, unless_null<&V::VendorDiscount>},
      {"Foreign_Currency_Flag", always<&V::ForeignCurrencyFlag>,
       unless_null<&V::ForeignCurrencyFlag>},
      {"Vendor_InActive_Flag", always<&V::VendorInActiveFlag>, unless_null<&V::VendorInActiveFlag>},
      {"Vendor_Comments", null_if_empty<&V::VendorComments>, unless_empty<&V::VendorComments>},
      {"AP_Account_No", skip_if_empty<&V::APAccountNo>},
      {"Last_Update", always<&V::LastUpdate>},
      {"Vendor_OB_Ledger_No", nullptr, unless_empty<&V::VendorOBLedgerNo>},
      {"Vendor_OB_Amount", nullptr, head<&V::VendorOBAmount>},
      {"Vendor_OB_Type", nullptr, unless_empty<&V::VendorOBType>},
      {"Vendor_OB_Document_No", nullptr, unless_empty<&V::VendorOBDocumentNo>},
  });
}

constexpr auto kCreated = vendor_columns(null_if_empty<&V::VendorPaymentTerms>,
                                         always<&V::CurrencyCode>, always<&V::CurrencySymbol>);
constexpr auto kUpdated = vendor_columns(terms_or_zero, skip_if_empty<&V::CurrencyCode>,
                                         skip_if_empty<&V::CurrencySymbol>);

}  // namespace

std::span<const Column<Vendor>> vendor_key_columns() {
  return kKey;
}
std::span<const Column<Vendor>> vendor_created_columns() {
  return kCreated;
}
std::span<const Column<Vendor>> vendor_updated_columns() {
  return kUpdated;
}

}  // namespace ombrix::purchase
