#include "ombrix/purchase/purchase_return.h"

#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/numbering.h"
#include "frame/sibling.h"
#include "frame/trap.h"
#include "returns/booked.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

bool PurchaseReturn::Process_Return() {
  SkipReturnDetailLoad = true;
  if (trim(PurchaseRtnNo()).empty()) return refused("Invalid Purchase Return");
  if (connection().State() != 1) return refused("Invalid Connection Object");
  if (!Get_Purchase_Rtn()) return false;
  SavedTaxAmount = TaxAmount();
  return trapped(Trap::plain, [&] {
    FinalNumber number(*this, {raw(PurchaseRtnIdentity), raw(PurchaseRtnNo)}, std::nullopt);
    if (renumbers() && !rename(number)) return false;
    Booked booked;
    if (!read_currency_symbol() || !book_lines(booked)) return false;
    PurchaseRtnAmount = booked.amount;
    PurchaseRtnFCAmount = booked.fc_amount;
    std::string payable_account;  // nothing is posted there, but it must be set
    if (!find_payable_account(true, payable_account) || !debit_accrual(booked) ||
        !post_variance(booked)) {
      return false;
    }
    if (Ref_Doc_Type() != "GRN" && booked.raises_memo && !Generate_Debit_Memo(raw(PurchaseRtnNo))) {
      return false;
    }
    const bool closed = number.close();
    SkipReturnDetailLoad = false;
    return closed;
  });
}

bool PurchaseReturn::rename(FinalNumber& number) {
  if (!number.draw()) return false;
  const std::string final_number = number.number();
  auto master = open(
      sql({"Select * from Purchase_Return_Master Where Purchase_Rtn_No=", text(PurchaseRtnNo())}),
      Keyset);
  const Value processed = master("Processed_Flag");
  if (!processed.is_null() && processed.to_flag()) return refused("Already Processed");
  master("Purchase_Rtn_No") = final_number;
  master("Purchase_Rtn_Identity") = PurchaseRtnIdentity();
  master("Processed_Flag") = true;
  master("Allow_Cancel_Flag") = false;
  master("Last_Update") = LastUpdate();
  master.Update();

  auto detail = open(
      sql({"Select * from Purchase_Return_Detail Where Purchase_Rtn_No=", text(PurchaseRtnNo())}),
      Static);
  if (detail.RecordCount() < 1) {
    return refused("Error while Processing, Invalid Temporary Purchase Return No.");
  }
  for (; !detail.IsEOF(); detail.MoveNext()) {
    detail("Purchase_Rtn_No") = final_number;
    detail("Last_Update") = LastUpdate();
    detail.Update();
  }
  number.take(final_number);
  return true;
}

bool PurchaseReturn::read_currency_symbol() {
  auto currency = open(
      sql({"Select * from Currency_Master Where Currency_Code=", text(CurrencyCode())}), Keyset);
  if (currency.RecordCount() < 1) return refused("Invalid Currency Code");
  CurrencySymbol = currency("Currency_Symbol").text();
  return true;
}

bool PurchaseReturn::book_lines(Booked& booked) {
  auto lines = open(
      sql({"Select * from Purchase_Return_Detail Where Purchase_Rtn_No=", text(PurchaseRtnNo())}),
      Static);
  for (; !lines.IsEOF(); lines.MoveNext()) {
    if (!book_line(lines, booked)) return false;
  }
  return true;
}

bool PurchaseReturn::book_line(Recordset& line, Booked& booked) {
  const LineAmounts amounts = amounts_of(line);
  booked.variance += amounts.variance;
  return take_out_of_stock(line, amounts.home) && read_preferences(booked) &&
         credit_inventory(line, amounts, booked) && PR_Tax_Posting();
}

PurchaseReturn::LineAmounts PurchaseReturn::amounts_of(Recordset& line) const {
  const auto figure = [&line](std::string_view name) { return line(name).number(); };
  const double foreign = figure("purchase_rtn_FC_item_amount");
  const double rate = ExchangeRate();
  const double source_rate = SourceExchangeRate();
  if (Ref_Doc_Type().empty() || source_rate == rate) {
    return {figure("purchase_rtn_item_amount"), foreign, 0};
  }
  const double quantity = figure("pur_rtn_qty");
  const double price = figure("Purchase_Rtn_Unit_Price");
  const double discount = quantity * figure("Purchase_Rtn_FC_Item_Discount_Amount") +
                          figure("Purchase_Rtn_Overall_FC_Disc_Amount") +
                          figure("Purchase_Rtn_Overall_Inv_FC_Disc_Amt");
  // Where the rate rose, the discount enters at the other rate and with the other sign.
  if (source_rate > rate) {
    const double home = quantity * (price * rate) - discount * rate;
    return {home, foreign, home - (quantity * (price * source_rate) - discount * source_rate)};
  }
  const double home = quantity * (price * rate) - discount * source_rate;
  return {home, foreign, (home - quantity * (price * source_rate)) - discount * rate};
}

bool PurchaseReturn::read_preferences(Booked& booked) {
  auto preferences = open(sql({"Select Inventory_Account_No, Pur_Accrual_Account_No , "
                               "FOC_Account_No,Pur_Variance_Account_No,Generate_Debit_Memo from "
                               "Default_Purchase_Preferences Where Branch_Prefix=",
                               text(BranchPrefix())}),
                          Keyset);
  if (preferences.IsEOF()) {
    return refused("Set the Default Purchase Accrual account in the Purchase Preferences");
  }
  const std::string accrual = preferences("Pur_Accrual_Account_No").text_or_empty();
  if (accrual.empty()) return true;
  booked.inventory_account = preferences("Inventory_Account_No").text();
  booked.accrual_account = accrual;
  booked.variance_account = preferences("Pur_Variance_Account_No").text_or_empty();
  booked.raises_memo = preferences("Generate_Debit_Memo").flag();
  return true;
}

}  // namespace ombrix::purchase
