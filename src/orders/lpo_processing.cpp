#include "ombrix/purchase/lpo.h"

#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/numbering.h"
#include "frame/trap.h"
#include "stock/item_type.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

bool LPO::Process_LPO() {
  if (trim(LPONo()).empty()) return refused("Invalid Purchase Order No");
  if (renumbers() && !Get_LPO()) return false;
  return trapped(Trap::first_reason, [&] {
    FinalNumber number(*this, {raw(LPOIdentity), raw(LPONo)}, false);
    auto master =
        open(sql({"Select * from  LPO_Master  Where LPO_NO=", text(trim(LPONo()))}), Keyset);
    if (master.RecordCount() == 0) return refused("Invalid Purchase Order No");
    if (renumbers() && !rename(master, number)) return false;
    master.Close();
    raise_ordered_quantities();
    return number.close();
  });
}

bool LPO::rename(Recordset& master, FinalNumber& number) {
  if (!number.draw()) return false;
  const std::string final_number = number.number();
  master("LPO_Identity") = LPOIdentity();
  master("LPO_No") = final_number;
  master("Last_Update") = LastUpdate();
  master("Processed_Flag") = 1;
  master.Update();

  auto detail = open(sql({"Select * from LPO_Detail Where LPO_No=", text(LPONo())}), Static);
  if (detail.RecordCount() < 1) {
    return refused("Error while Processing, Invalid Temporary Purchase Order No.");
  }
  for (; !detail.IsEOF(); detail.MoveNext()) {
    detail("LPO_No") = final_number;
    detail("Last_Update") = LastUpdate();
    detail.Update();
  }
  number.take(std::string(trim(final_number)));
  return true;
}

void LPO::raise_ordered_quantities() {
  auto detail =
      open(sql({"Select * from  LPO_Detail  Where LPO_NO=", text(trim(LPONo()))}), Keyset);
  if (detail.RecordCount() == 0) return;
  for (; !detail.IsEOF(); detail.MoveNext()) {
    const std::string item_code = detail("Item_Code").text_or_empty();
    auto item = open(sql({"Select * from Item_Master Where Item_Code=", text(item_code)}), Keyset);
    if (item.RecordCount() == 0 || !is_stocked(item("item_type"))) continue;
    const Value in_line_units = product(detail("LPO_Qty"), detail("Unit_Qty"));
    item("Purchase_Order_Qty") =
        sum(item("Purchase_Order_Qty"), product(in_line_units, item("Base_Qty")));
    item.Update();
  }
}

}  // namespace ombrix::purchase
