#include "ombrix/purchase/grn.h"

#include "base/raw.h"
#include "database/statement.h"
#include "frame/numbering.h"
#include "frame/trap.h"

namespace ombrix::purchase {

using database::digits;
using database::sql;
using database::text;

bool GRN::ProcessGRN() {
  if (!Get_GRN()) return false;
  return trapped(Trap::plain, [&] {
    FinalNumber number(*this, {raw(GRNIdentity), raw(GRNNo)}, std::nullopt);
    auto master =
        open(sql({"Select * from Goods_Receive_Master Where GRN_No=", text(GRNNo())}), Static);
    if (master.RecordCount() < 1) {
      return refused("Error while Processing, Invalid Temporary Goods Receive No.");
    }
    if (renumbers()) {
      if (!rename(master, number)) return false;
    } else {
      GRNIdentity = master("GRN_Identity").number();
    }
    master.Close();
    if (renumbers() && !(Check_Order_Invoiced() && Update_Order_Received())) return false;
    if (OnlineFlag() || SyncFlag()) {
      if (enters_stock() && !move_stock()) return false;
      if (!GRN_Posting() || !GRN_Tax_Posting()) return false;
    }
    return number.close();
  });
}

bool GRN::rename(Recordset& master, FinalNumber& number) {
  if (!number.draw()) return false;
  const std::string final_number = number.number();
  Purchase_Type = master("Purchase_Type").text_or_empty();
  master("GRN_Invoiced_flag") = OrderInvoicedFlag();
  master("Processed_Flag") = 1;
  master("GRN_Identity") = GRNIdentity();
  master("GRN_No") = final_number;
  master("Last_Update") = LastUpdate();
  master.Update();

  auto detail =
      open(sql({"Select * from Goods_Receive_Detail Where GRN_No=", text(GRNNo())}), Static);
  for (; !detail.IsEOF(); detail.MoveNext()) {
    detail("Invoiced_Flag") = OrderInvoicedFlag();
    detail("GRN_No") = final_number;
    detail("Last_Update") = LastUpdate();
    detail.Update();
  }
  number.take(final_number);
  return true;
}

bool GRN::Check_Order_Invoiced() {
  auto order = open_order_state();
  if (order.RecordCount() < 1) return refused("Invalid Purchase Order No.");
  OrderInvoicedFlag = order("Invoiced_Flag").flag();
  return true;
}

Recordset GRN::open_order_state() const {
  if (on_lpo()) {
    return open(
        sql({"SELECT Invoiced_Flag FROM LPO_Master WHERE LPO_No=", text(GRNRefDocumentNo())}),
        Static);
  }
  if (GRNRefDocumentPrefix() == "OPO") {
    return open(
        sql({"SELECT Invoiced_Flag FROM IPO_Master WHERE IPO_No=", text(GRNRefDocumentNo())}),
        Static);
  }
  return open(sql({""}), Static);  // raises: there is no such kind of order
}

bool GRN::Update_Order_Received() {
  auto detail =
      open(sql({"Select  * from Goods_Receive_Detail Where GRN_No=", text(GRNNo())}), Static);
  for (; !detail.IsEOF(); detail.MoveNext()) {
    if (!book_on_order(detail)) {
      return refused("Error while Processing, Invalid Temporary Goods Receive No.");
    }
  }
  return true;
}

bool GRN::book_on_order(Recordset& line) {
  auto order = open_order(Static);
  if (order.RecordCount() < 1) return false;
  order("Processed_Flag") = 1;
  order("Last_Update") = LastUpdate();
  order.Update();
  order.Close();

  const std::string sl_no = line("POD_SL_NO").text_or_empty();
  auto ordered = on_lpo()
                     ? open(sql({"Select * from LPO_Detail Where LPO_No=", text(GRNRefDocumentNo()),
                                 " and SL_No=", digits(sl_no)}),
                            Static)
                     : open(sql({"Select * from IPO_Detail Where IPO_No=", text(GRNRefDocumentNo()),
                                 " and SL_No=", digits(sl_no)}),
                            Static);
  if (ordered.RecordCount() < 1) return false;
  ordered("Received_Qty") = sum(ordered("Received_Qty"), line("grn_qty"));
  ordered("Last_Update") = LastUpdate();
  ordered.Update();
  return true;
}

}  // namespace ombrix::purchase
