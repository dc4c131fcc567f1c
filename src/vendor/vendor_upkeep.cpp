#include "ombrix/purchase/vendor.h"

#include "base/names.h"
#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/cells.h"
#include "frame/sibling.h"
#include "frame/trap.h"

namespace ombrix::purchase {

using database::date_value;
using database::day;
using database::name;
using database::sql;
using database::text;

namespace {

/// A column that holds vendors' codes.
struct CodeColumn {
  const char *table, *column;
};

constexpr CodeColumn kCodeColumns[] = {
    {"Vendor_Master", "Vendor_Code"},
    {"Vendor_OB", "Vendor_Code"},
    {"Accounts_Payable_Ledger", "Vendor_Code"},
    {"AP_Adjustment_Detail", "Vendor_Code"},
    {"AP_Adjustment_Master", "Vendor_Code"},
    {"PDC_Master", "CustomerID"},
    {"Payment_Master", "Payment_To_Code"},
    {"Goods_Receive_Master", "Vendor_Code"},
    {"LPO_Master", "Vendor_Code"},
    {"Purchase_Invoice_Master", "Vendor_Code"},
    {"Purchase_Return_Master", "Vendor_Code"},
};

bool is_credit(std::string_view type) {
  return same_name(type, "Credit");
}

}  // namespace

bool Vendor::names_vendor(const database::Statement& documents) const {
  return open_text(documents, Keyset).RecordCount() > 0;
}

bool Vendor::Check_Vendor_Usage() {
  return trapped(Trap::plain, [&] {
    const auto code = text(VendorCode());
    const bool used =
        names_vendor(sql({"Select * From LPO_Master where Vendor_Code=", code})) ||
        names_vendor(sql({"Select * From Goods_Receive_Master where Vendor_Code=", code})) ||
        names_vendor(sql({"Select * From Purchase_Invoice_Master where Vendor_Code=", code})) ||
        names_vendor(sql({"Select * From Purchase_Return_Master where Vendor_Code=", code})) ||
        names_vendor(sql({"Select * From Vendor_OB where Vendor_Code=", code}));
    auto vendor = open_text(sql({"Select * From Vendor_master where Vendor_Code=", code}), Keyset);
    if (vendor.RecordCount() > 0) {
      vendor("Allow_Delete_Flag") = !used;
      vendor.Update();
    }
    return true;
  });
}

bool Vendor::DeleteRecord() {
  return trapped(Trap::plain, [&] {
    if (!Check_Vendor_Usage()) return false;
    auto vendor = open_text(
        sql({"Select * From Vendor_master where Vendor_Code=", text(VendorCode())}), Keyset);
    if (vendor.RecordCount() == 0) return false;
    const Value allowed = vendor("Allow_Delete_Flag");
    if (allowed.is_null() || !allowed.to_flag()) {
      return refused("Cannot delete this Vendor Due to existing transactions");
    }
    vendor.Delete(1);
    return true;
  });
}

bool Vendor::Adjusted() {
  return trapped(Trap::plain, [&] {
    auto whole =
        is_credit(VendorOBType())
            ? open(sql({"Select * from Purchase_Invoice_Master Where Purchase_Inv_No=",
                        text(VendorOBDocumentNo()), " And Purchase_Inv_Amount=Balance_Amount"}),
                   Static)
            : open(sql({"Select * from Payment_Master where Payment_No=",
                        text(VendorOBDocumentNo()), " And Payment_Amount=Balance_Amount"}),
                   Static);
    return whole.RecordCount() == 0;
  });
}

bool Vendor::Delete_Previous_OB(std::string& strType, std::string& strRefNo) {
  return trapped(Trap::silent, [&] {
    const std::string document(trim(strRefNo));
    {
      auto payable = sibling("OmbrixAccounts.AccountsPayable");
      payable.set({{"AdoConnectionObject", raw(AdoConnectionObject)}, {"DocumentNo", document}});
      if (!payable.call("APL_Delete")) return refused_by(payable);
    }
    execute(
        is_credit(strType)
            ? sql({"Delete from Purchase_Invoice_Master Where Purchase_Inv_No=", text(document)})
            : sql({"Delete from Payment_Master Where Payment_No=", text(document)}));
    return true;
  });
}

bool Vendor::Change_Vendor_Code() {
  const auto held = given(GridName());
  Grid& grid = *held;
  const std::int32_t rows = grid.Rows();
  for (std::int32_t row = 1; row < rows; ++row) {
    const GridLine line{grid, row};
    if (line.text(1).empty()) break;
    const std::string code = line.text(3);
    std::string new_code = CompanyPrefix() + code;
    {
      auto bearer =
          open(sql({"SELECT Vendor_Code From Vendor_Master WHERE Vendor_Code = ", text(new_code)}),
               ForwardOnly);
      if (!bearer.IsBOF()) return refused("This " + code + " code already in use");
    }
    std::string old_code = CompanyPrefix() + line.text(2);
    if (!Change_Code(old_code, new_code)) return false;
  }
  return true;
}

bool Vendor::Change_Code(std::string& pOldCode, std::string& pNewCode) {
  for (const CodeColumn& holder : kCodeColumns) {
    std::string table = holder.table;
    std::string column = holder.column;
    if (!Execute_Change_Code(table, column, pNewCode, pOldCode)) return false;
  }
  return true;
}

bool Vendor::Execute_Change_Code(std::string& pTableName, std::string& pChangeColName,
                                 std::string& pNewValue, std::string& pWhere) {
  return trapped(Trap::plain, [&] {
    const Date today = Date::now();
    const auto table = name(pTableName);
    const auto column = name(pChangeColName);
    if (Database() == "MSACCESS") {
      execute(sql({"Update ", table, " Set ", column, " = ", text(pNewValue),
                   ", Last_Update=", date_value(today), "  Where  ", column, " =", text(pWhere)}));
    } else {
      execute(sql({"Update ", table, " Set ", column, " = ", text(pNewValue),
                   ",  Last_Update=", day(today), " Where  ", column, " =", text(pWhere)}));
    }
    return true;
  });
}

}  // namespace ombrix::purchase
