#include "ombrix/purchase/cash_purchase.h"

#include "base/raw.h"
#include "database/statement.h"
#include "frame/numbering.h"
#include "frame/trap.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

bool CashPurchase::Process_Cash_Purchase() {
  SkipCashDetailLoad = true;
  if (!Get_Direct_PInvoice()) return false;
  return trapped(Trap::plain, [&] {
    FinalNumber number(*this, {raw(CashPurInvIdentity), raw(CashPurInvNo)}, std::nullopt);
    if (renumbers() && !rename(number)) return false;
    if (!move_stock() || !Post_Cash_Purchase() || !CP_Tax_Posting() || !number.close()) {
      return false;
    }
    // Only a counter that moved on lets the grid be loaded again.
    if (renumbers() && !raw(DocFlag)) SkipCashDetailLoad = false;
    return true;
  });
}

bool CashPurchase::rename(FinalNumber& number) {
  constexpr std::string_view kNoTemporary =
      "Error while Processing, Invalid Temporary Direct Purchase Invoice No.";
  if (!number.draw()) return false;
  const std::string final_number = number.number();
  auto master =
      open(sql({"Select * from Cash_Purchase_Master Where Cash_Pur_Inv_No=", text(CashPurInvNo())}),
           Static);
  if (master.RecordCount() < 1) return refused(kNoTemporary);
  const bool in_cash = master("Payment_Type").text_or_empty() == "Cash";
  master("Status") = in_cash ? "Processed" : "In Transit";
  master("process_Flag") = 1;
  master("Cash_Pur_Inv_Identity") = CashPurInvIdentity();
  master("Cash_Pur_Inv_No") = final_number;
  master("Last_Update") = LastUpdate();
  master.Update();
  master.Close();

  auto detail =
      open(sql({"Select * from Cash_Purchase_Detail Where Cash_Pur_Inv_No=", text(CashPurInvNo())}),
           Static);
  if (detail.RecordCount() < 1) return refused(kNoTemporary);
  for (; !detail.IsEOF(); detail.MoveNext()) {
    detail("Cash_Pur_Inv_No") = final_number;
    detail("Last_Update") = LastUpdate();
    detail.Update();
  }
  number.take(final_number);
  return true;
}

}  // namespace ombrix::purchase
