#include "ombrix/purchase/vendor.h"

#include <vector>

#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/sibling.h"
#include "frame/trap.h"
#include "vendor/vendor_columns.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

std::string AsFlagText::apply(const std::string& text) {
  return Value(Value(text).to_flag()).to_text();
}

Vendor::Vendor() : Frame(Connected::never) {
  AllowDeleteFlag = "False";
}

Recordset Vendor::open_text(const database::Statement& statement, OpenMode mode) const {
  return open_fresh(statement, mode, ConnectionString());
}

Recordset Vendor::open_either(const database::Statement& statement, OpenMode mode) const {
  return ConnectionString().empty() ? open(statement, mode) : open_text(statement, mode);
}

bool Vendor::Validate_Vendor() {
  if (VendorCode().empty()) return refused("Invalid Vendor Code.");
  if (VendorName().empty()) return refused("Invalid Vendor Name.");
  if (VendorCountry().empty()) return refused("Invalid Vendor Country.");
  if (VendorCurrencyCode().empty()) return refused("Invalid Vendor Currency.");
  if (CurrencyCode().empty()) return refused("Invalid Currency.");
  return true;
}

bool Vendor::Exist_Vendor() {
  if (VendorCode().empty()) return refused("Invalid Vendor Code. ");
  return trapped(Trap::plain, [&] {
    auto vendor = open_text(
        sql({"Select  * from Vendor_Master Where Vendor_Code=", text(VendorCode())}), Static);
    return vendor.RecordCount() > 0 || refused("Vendor Code does not exists");
  });
}

bool Vendor::Create_Vendor() {
  if (!Validate_Vendor()) return false;
  if (Exist_Vendor()) return refused("Vendor Code Already  Exists");
  return trapped(Trap::plain, [&] {
    auto vendor = open_text(
        sql({"Select * From Vendor_Master where Vendor_Code=", text(VendorCode())}), Keyset);
    if (vendor.IsEOF()) {
      vendor.AddNew();
      write_columns(vendor_key_columns(), *this, vendor);
    }
    write_columns(vendor_created_columns(), *this, vendor);
    vendor.Update();
    return true;
  });
}

bool Vendor::Update_Vendor() {
  if (!Validate_Vendor()) return false;
  return trapped(Trap::plain, [&] {
    auto vendor = open_text(
        sql({"Select * From Vendor_Master where Vendor_Code=", text(VendorCode())}), Keyset);
    if (vendor.RecordCount() < 1) return refused("Invalid Vendor");
    write_columns(vendor_updated_columns(), *this, vendor);
    vendor.Update();
    return true;
  });
}

bool Vendor::Get_Vendor(const std::string& Vendor_Code) {
  VendorCode = Vendor_Code;
  if (VendorCode().empty()) return refused("Invalid Vendor Code.");
  return trapped(Trap::plain, [&] {
    auto vendor = open_either(
        sql({"Select * from Vendor_Master where Vendor_Code=", text(VendorCode())}), Keyset);
    if (vendor.RecordCount() < 1) return refused("Invalid Vendor Code");
    read_columns(vendor_key_columns(), *this, vendor);
    read_columns(vendor_created_columns(), *this, vendor);
    return true;
  });
}

double Vendor::Get_Vendor_Discount(std::string& pVenID) {
  auto vendor =
      open_text(sql({"Select * from Vendor_Master Where Vendor_Code=", text(pVenID), " "}), Static);
  if (vendor.RecordCount() == 0) return 0;
  const Value discount = vendor("Vendor_Discount");
  return discount.is_null() ? 0 : discount.to_number();
}

bool Vendor::Get_Vendor_Balance(const std::string& Vendor_Code) {
  VendorCode = Vendor_Code;
  if (ConnectionString().empty()) return refused("Invalid Connection string Property.");
  if (VendorCode().empty()) return refused("Invalid Vendor Code.");
  return trapped(Trap::plain, [&] {
    auto vendor = open_text(
        sql({"Select * from Vendor_Master where Vendor_Code=", text(VendorCode())}), Keyset);
    if (vendor.RecordCount() != 1) return refused("Invalid Vendor Code.");
    const Value balance = vendor("Vendor_Balance");
    if (!balance.is_null()) VendorBalance = balance.to_number();
    return true;
  });
}

std::string Vendor::Get_AP_Account_Name() {
  return trapped(Trap::plain, [&]() -> std::string {
    auto general = sibling("OmbrixSystem.General");
    if (ConnectionString().empty()) {
      general.set("AdoConnectionObject", raw(AdoConnectionObject));
    } else {
      general.set("ADOConnectionString", ConnectionString());
    }
    std::vector<Value> account{"Chart_Of_Accounts", "Account_Name", "Account_No", APAccountNo(),
                               false};
    APAccountName = general.ask("GetFldValue", account).to_text();
    if (!trim(APAccountName()).empty()) return APAccountName();
    refused("Invalid Account");
    return "";
  });
}

}  // namespace ombrix::purchase
