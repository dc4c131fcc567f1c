#include "ombrix/purchase/vendor_ob.h"

#include "database/statement.h"
#include "frame/trap.h"
#include "vendor/vendor_ob_columns.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

VendorOB::VendorOB() : Frame(Connected::never) {}

bool VendorOB::Validation() {
  if (VendorCode().empty()) return refused("Invalid Vendor");
  if (connection().State() == 0) return refused("Invalid Connection.");
  if (OBType().empty()) return refused("Invalid Opening Balance Type");
  const auto held = given(GridName());
  Grid& grid = *held;
  if (grid.TextMatrix(1, 1).empty()) return refused("Invalid Reference No.");
  if (grid.TextMatrix(1, 2).empty()) return refused("Invalid Reference Date");
  if (grid.ValueMatrix(1, 3) <= 0) return refused("Invalid Amount");
  const std::int32_t rows = grid.Rows();
  for (std::int32_t row = 1; row < rows; ++row) {
    if (grid.TextMatrix(row, 1).empty() || grid.TextMatrix(row, 2).empty()) break;
    if (grid.ValueMatrix(row, 3) <= 0) return refused("Invalid Amount");
  }
  return true;
}

bool VendorOB::Create_OB() {
  if (!Validation()) return false;
  return trapped(Trap::plain, [&] {
    auto currency = open(
        sql({"Select * from Currency_Master Where Currency_Code=", text(CurrencyCode())}), Keyset);
    if (currency.RecordCount() > 0) {
      CurrencySymbol = currency("Currency_Symbol").text();
    }
    currency.Close();
    execute(sql({"Delete From Vendor_OB Where Vendor_Code=", text(VendorCode()),
                 " And OBType = ", text(OBType()), " and branch_prefix=", text(BranchPrefix())}));
    auto stored = open(sql({"Select * from Vendor_OB"}), Dynamic);
    const auto held = given(GridName());
    OpeningLine line{{*held, 0}, *this};
    const std::int32_t rows = held->Rows();
    for (line.row = 1; line.row < rows; ++line.row) {
      if (line.text(1).empty() || line.text(2).empty()) break;
      if (line.number(3) <= 0) continue;
      stored.AddNew();
      ++line.serial;
      write_columns(opening_line_columns(), line, stored);
      stored.Update();
    }
    return true;
  });
}

bool VendorOB::Get_OB() {
  if (VendorCode().empty()) return refused("Invalid Vendor");
  if (ConnectionString().empty()) return refused("Invalid Connection String");
  if (OBType().empty()) return refused("Invalid Opening Balance Type");
  return trapped(Trap::plain, [&] {
    auto stored = open_fresh(sql({"Select * from Vendor_OB Where Vendor_Code=", text(VendorCode()),
                                  " And OBType = ", text(OBType()),
                                  " and branch_prefix=", text(BranchPrefix()), " order by SL_No"}),
                             Keyset, ConnectionString());
    const auto count = static_cast<std::int32_t>(stored.RecordCount());
    if (count == 0) return false;
    const auto held = given(GridName());
    FilledOpening line{{{*held, 0}, stored}, *this};
    for (line.row = 1; line.row <= count; ++line.row) {
      if (line.row == held->Rows()) held->Rows(line.row + 1);
      fill_cells(opening_cells(), line);
      stored.MoveNext();
    }
    return true;
  });
}

}  // namespace ombrix::purchase
