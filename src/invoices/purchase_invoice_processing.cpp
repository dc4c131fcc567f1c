#include "ombrix/purchase/purchase_invoice.h"

#include "base/names.h"
#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/numbering.h"
#include "frame/trap.h"

namespace ombrix::purchase {

using database::digits;
using database::sql;
using database::text;

namespace {

constexpr int kOpen = 1;
constexpr std::string_view kNoNumber = "Invalid Purchase Invoice No";
constexpr std::string_view kNoLine =
    "Error while Processing, Invalid Temporary Purchase Invoice No.";

}  // namespace

bool PurchaseInvoice::Process_Invoice() {
  if (connection().State() != kOpen) return refused("Invalid Connection Object");
  if (trim(PurchaseInvNo()).empty()) return refused(kNoNumber);
  SkipDetailLoad = true;
  if (!Get_Purchase_Invoice()) return false;
  return trapped(Trap::plain, [&] {
    FinalNumber number(*this, {raw(PurchaseInvIdentity), raw(PurchaseInvNo)}, std::nullopt);
    if (renumbers() && !give_final_number(number)) return false;
    return post_lines() && post_discount() && post_payable() && number.close();
  });
}

bool PurchaseInvoice::give_final_number(FinalNumber& number) {
  if (!number.draw() || !Assign_Final_Invoice_No(number.number())) return false;
  return bills_receipts() ? Update_GRN_Invoiced_Flags() : Update_PO_Invoiced_Flag();
}

bool PurchaseInvoice::Assign_Final_Invoice_No(const std::string& number) {
  return trapped(Trap::plain, [&] {
    auto master = open(sql({"Select * from Purchase_Invoice_Master Where Purchase_Inv_No=",
                            text(PurchaseInvNo())}),
                       Static);
    if (master.RecordCount() < 1) return refused(kNoNumber);
    const Value processed = master("Processed_Flag");
    if (!processed.is_null() && processed.to_flag()) return refused("Already Processed");
    master("Purchase_Inv_No") = number;
    master("Purchase_Inv_Identity") = PurchaseInvIdentity();
    master("Processed_Flag") = 1;
    master("Last_Update") = LastUpdate();
    master.Update();

    auto detail = open(sql({"Select * from Purchase_Invoice_Detail Where Purchase_Inv_No=",
                            text(PurchaseInvNo())}),
                       Static);
    if (detail.RecordCount() < 1) return refused(kNoLine);
    for (; !detail.IsEOF(); detail.MoveNext()) {
      detail("Purchase_Inv_No") = number;
      detail("Last_Update") = LastUpdate();
      detail.Update();
    }
    raw(PurchaseInvNo) = number;
    return true;
  });
}

bool PurchaseInvoice::Update_PO_Invoiced_Flag() {
  return trapped(Trap::plain, [&] {
    const auto statement = [&] {
      if (RefInvoiceType() == "LPO") {
        return sql({"Select Invoiced_Flag from LPO_Master Where LPO_No=", text(PONo())});
      }
      if (InvoiceType() == "OPO") {
        return sql({"Select Invoiced_Flag from IPO_Master Where IPO_No=", text(PONo())});
      }
      return sql({""});  // of no known kind: the database refuses it
    };
    auto order = open(statement(), Static);
    if (order.RecordCount() < 1) return refused("Invalid Purchase Order No.");
    order("Invoiced_Flag") = 1;
    order.Update();
    return true;
  });
}

bool PurchaseInvoice::Update_GRN_Invoiced_Flags() {
  return trapped(Trap::plain, [&] {
    if (connection().State() != kOpen) return refused("Invalid Connection Object");
    if (trim(PurchaseInvNo()).empty()) return refused(kNoNumber);
    auto lines = open(sql({"Select * from Purchase_Invoice_Detail Where Purchase_Inv_No=",
                           text(PurchaseInvNo())}),
                      Static);
    if (lines.RecordCount() < 1) return refused(kNoNumber);
    for (; !lines.IsEOF(); lines.MoveNext()) {
      const auto field = [&](std::string_view name) { return lines.read(name).text_or_empty(); };
      const std::string number = field("GRN_No");
      const std::string serial = field("GRN_SL_NO");
      const bool marked = same_name(field("GRN_Flag"), "GRN") ? mark_goods_receipt(number, serial)
                                                              : mark_direct_receipt(number, serial);
      if (!marked) return false;
    }
    return true;
  });
}

/// The first line that is billed marks the receipt, whatever becomes of its other lines.
bool PurchaseInvoice::mark_goods_receipt(const std::string& number, const std::string& serial) {
  mark_receipt(
      open(sql({"Select * from Goods_Receive_Master Where GRN_No=", text(number)}), Static),
      "GRN_Invoiced_flag");
  return mark_receipt_line(open(sql({"Select * from Goods_Receive_Detail Where GRN_No=",
                                     text(number), " And SL_NO=", digits(serial)}),
                                Static));
}

bool PurchaseInvoice::mark_direct_receipt(const std::string& number, const std::string& serial) {
  mark_receipt(
      open(sql({"Select * from Direct_Goods_Receive_Master Where Direct_GRN_No=", text(number)}),
           Static),
      "Direct_GRN_Invoiced_Flag");
  return mark_receipt_line(
      open(sql({"Select * from Direct_Goods_Receive_Detail Where Direct_GRN_No=", text(number),
                " And SL_NO=", digits(serial)}),
           Static));
}

void PurchaseInvoice::mark_receipt(Recordset receipt, std::string_view flag) {
  if (receipt.RecordCount() == 0) return;
  receipt(flag) = 1;
  receipt("Last_Update") = LastUpdate();
  receipt.Update();
}

bool PurchaseInvoice::mark_receipt_line(Recordset line) {
  if (line.RecordCount() < 1) return refused(kNoLine);
  for (; !line.IsEOF(); line.MoveNext()) {
    line("Invoiced_Flag") = 1;
    line("Last_Update") = LastUpdate();
    line.Update();
  }
  return true;
}

}  // namespace ombrix::purchase
