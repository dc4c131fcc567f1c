#include "ombrix/purchase/lpo.h"

#include "base/raw.h"
#include "database/statement.h"
#include "frame/discount_spread.h"
#include "frame/numbering.h"
#include "frame/trap.h"
#include "orders/lpo_columns.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

namespace {

/// Rows with an item of the company's or the vendor's; a blank row between them does not end it.
std::int32_t count_lines(const Grid& grid) {
  std::int32_t count = 0;
  const std::int32_t rows = grid.Rows();
  for (std::int32_t row = 1; row < rows; ++row) {
    if (!grid.TextMatrix(row, 1).empty() || !grid.TextMatrix(row, 2).empty()) ++count;
  }
  return count;
}

}  // namespace

LPO::LPO() : Document(Connected::unopened) {}

bool LPO::Validate_LPO() {
  return valid("Invalid LPO Date.", LPODate(), {{VendorName().empty(), "Invalid Vendor Name."}});
}

bool LPO::Create_LPO() {
  if (!Validate_LPO()) return false;
  return trapped(Trap::plain, [&] {
    return create_under_temporary_number(
        {raw(LPOIdentity), raw(LPONo)}, [&] { return Save_LPO_Master(); },
        [&] { return Save_LPO_Detail() || refused("Invalid Details"); });
  });
}

bool LPO::Update_LPO() {
  if (!Validate_LPO()) return false;
  return trapped(Trap::plain, [&] {
    if (LPONo().empty()) return refused("Invalid LPO No.");
    return Save_LPO_Master() && Save_LPO_Detail();
  });
}

bool LPO::Save_LPO_Master() {
  return trapped(Trap::plain, [&] {
    auto master = open(sql({"Select * From LPO_Master Where LPO_No=", text(LPONo())}), Keyset);
    begin_save(master, lpo_key_columns(), *this, [&] {
      execute(sql({"Delete From LPO_Detail Where LPO_No=", text(LPONo())}));
    });
    LPODiscountAmount = LPOFCDiscountAmount;
    LPOSubTotal = LPOFCSubtotal;
    LPOTotalAmount = LPOFCTotalAmount;
    write_columns(lpo_master_columns(), *this, master);
    master.Update();
    return true;
  });
}

bool LPO::Save_LPO_Detail() {
  return trapped(Trap::plain, [&] {
    const auto held = given(GridName());
    Grid& grid = *held;
    const std::int32_t lines = count_lines(grid);
    auto detail = open(sql({"Select * from LPO_Detail"}), Dynamic);
    DiscountSpread discount(LPODiscountPercent(), {LPOFCDiscountAmount(), LPODiscountAmount()}, 1,
                            AmtDig());
    std::int32_t serial = 0;
    const std::int32_t rows = grid.Rows();
    for (std::int32_t row = 1; row < rows; ++row) {
      LPOLine line{{grid, row}, *this};
      if (line.text(1).empty() && line.text(3).empty()) break;
      if (line.text(15).empty()) return refused("Invalid Account No");
      if (line.number(7) <= 0) continue;
      detail.AddNew();
      line.serial = ++serial;
      discount.share(line, line.number(12), row == lines);
      write_columns(lpo_detail_columns(), line, detail);
      detail.Update();
    }
    return serial > 0;
  });
}

bool LPO::Get_LPO() {
  return trapped(Trap::plain, [&] {
    if (ConnectionString().empty()) return refused("Invalid Connection string Property.");
    if (LPONo().empty()) return refused("Invalid LPO Number");
    auto master = open_fresh(sql({"Select * from LPO_Master Where LPO_No=", text(LPONo())}), Keyset,
                             ConnectionString());
    if (master.RecordCount() < 1) return refused("Invalid LPO Number");
    read_columns_skipping_null(lpo_key_columns(), *this, master);
    read_columns_skipping_null(lpo_master_columns(), *this, master);
    read_exchange_rate(master);
    return Get_LPO_Detail();
  });
}

bool LPO::Get_LPO_Detail() {
  return trapped(Trap::plain, [&] {
    auto detail = open_fresh(
        sql({"Select * from LPO_Detail Where LPO_No=", text(LPONo()), " Order By SL_No"}), Keyset,
        ConnectionString());
    const auto count = static_cast<std::int32_t>(detail.RecordCount());
    const auto held = given(GridName());
    Grid& grid = *held;
    if (ProcessedFlag() || grid.Rows() < count) grid.Rows(count + 2);
    for (std::int32_t row = 1; row <= count; ++row) {
      FilledLine line{{grid, row}, detail};
      fill_cells(lpo_cells(), line);
      detail.MoveNext();
    }
    return true;
  });
}

}  // namespace ombrix::purchase
