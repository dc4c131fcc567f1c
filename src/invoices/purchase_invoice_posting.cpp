#include <cmath>

#include "ombrix/purchase/purchase_invoice.h"

#include "base/number.h"
#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/trap.h"
#include "posting/ledger.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

namespace {

double figure(Recordset& line, std::string_view name) {
  return line.read(name).to_number();
}
bool is_set(Recordset& line, std::string_view flag) {
  const Value value = line.read(flag);
  return !value.is_null() && value.to_flag();
}

}  // namespace

struct PurchaseInvoice::Amounts {
  double home;
  double foreign;
};

bool PurchaseInvoice::Account_Posting(std::string& pDesc, std::string& pAcNo, double& pInvAmt,
                                      double& pInvFCAmt, std::string& pType) {
  return trapped(Trap::plain, [&] {
    Ledger ledger(*this);
    if (!trim(VendorRefInvoiceNo()).empty()) {
      pDesc += "- Ref.No:" + VendorRefInvoiceNo() +
               "- Ref.Date:" + VendorRefInvoiceDate().general_text();
    }
    return ledger.post(heading(), {pDesc, pAcNo, pInvAmt, pInvFCAmt, pType, TaxAmount()});
  });
}

bool PurchaseInvoice::post(std::string description, std::string account, std::string side,
                           double amount, double fc_amount) {
  return Account_Posting(description, account, amount, fc_amount, side);
}

bool PurchaseInvoice::Get_Item_Accounts(Value&) {
  return trapped(Trap::numbered, [&] {
    auto preferences =
        open(sql({"Select Pur_Accrual_Account_No , FOC_Account_No,Pur_Variance_Account_No"
                  " from Default_Purchase_Preferences Where Branch_Prefix=",
                  text(BranchPrefix())}),
             Keyset);
    if (preferences.IsEOF()) {
      return refused("Set the Default Purchase Accrual account in the Purchase Preferences");
    }
    const std::string accrual = preferences.read("Pur_Accrual_Account_No").text_or_empty();
    if (accrual.empty()) return true;
    PurAccrualAccountNo = accrual;
    PurVarianceAccountNo = preferences.read("Pur_Variance_Account_No").text_or_empty();
    FOCAccountNo = preferences.read("FOC_Account_No").text_or_empty();
    return true;
  });
}

bool PurchaseInvoice::post_lines() {
  auto line = open(
      sql({"Select * from Purchase_Invoice_Detail Where Purchase_Inv_No=", text(PurchaseInvNo())}),
      Keyset);
  for (; !line.IsEOF(); line.MoveNext()) {
    if (!post_line(line)) return false;
  }
  return true;
}

bool PurchaseInvoice::post_line(Recordset& line) {
  const auto [home, foreign] = accrued(line);
  Value item_code = line.read("Item_Code");
  if (!Get_Item_Accounts(item_code)) return false;
  if (varies(line) && !post_variance(line)) return false;
  if (is_set(line, "FOC_Flag")) return true;
  return post("Purchase Accrual:" + std::string(without_first(item_code.text_or_empty(), 2)),
              PurAccrualAccountNo, "Debit", home, foreign);
}

/// What the line takes off the accrual. The client may have billed a line of a local order less its
/// share of the order's discount already; the share comes off all the same.
PurchaseInvoice::Amounts PurchaseInvoice::accrued(Recordset& line) const {
  const Amounts billed{figure(line, "Purchase_Inv_Item_Amount"),
                       figure(line, "Purchase_Inv_FC_Item_Amount")};
  if (line.read("TaxType").text_or_empty() == "Taxable") {
    const double tax = TaxPercent() / 100;
    return {billed.home + billed.home * tax, billed.foreign + billed.foreign * tax};
  }
  if (RefInvoiceType() != "LPO") return billed;
  return {billed.home - figure(line, "PO_Disc_Amount"),
          billed.foreign - figure(line, "PO_FC_Disc_Amount")};
}

/// The unit prices decide, whatever the amounts say.
bool PurchaseInvoice::varies(Recordset& line) const {
  if (RefInvoiceType() == "OPO") return false;
  const Value billed = line.read("Purchase_Inv_Unit_Price");
  const Value source = line.read("GRN_Unit_Price");
  return !billed.is_null() && !source.is_null() && billed.to_number() != source.to_number();
}

bool PurchaseInvoice::post_variance(Recordset& line) {
  if (PurVarianceAccountNo.empty()) return refused("Invalid Purchase Variance Account");
  const double billed = figure(line, "Purchase_Inv_Qty");
  const double received = figure(line, "grn_qty");
  const auto variance = [&](std::string_view amount, std::string_view source,
                            std::string_view share) {
    return round_half_even(
        billed * quotient(figure(line, amount), billed) -
            (billed * quotient(figure(line, source), received) - figure(line, share)),
        AmtDig());
  };
  PurchaseVariance = variance("Purchase_Inv_Item_Amount", "GRN_Item_Amount", "PO_Disc_Amount");
  FCPurchaseVariance =
      variance("Purchase_Inv_FC_Item_Amount", "GRN_FC_Item_Amount", "PO_FC_Disc_Amount");
  if (PurchaseVariance() == 0) return true;
  // The home figure decides the side of both; only a credit has its figures without a sign.
  const bool credit = PurchaseVariance() < 0;
  return post("Purchase Variance : " + std::string(without_first(PurVarianceAccountNo, 6)),
              PurVarianceAccountNo, credit ? "Credit" : "Debit", std::fabs(PurchaseVariance()),
              credit ? std::fabs(FCPurchaseVariance()) : FCPurchaseVariance());
}

bool PurchaseInvoice::post_discount() {
  if (PurchaseInvDiscAmount() <= 0) return true;
  auto preferences =
      open(sql({"Select Discount_Account_No from Default_Purchase_Preferences Where Branch_Prefix=",
                text(BranchPrefix())}),
           Keyset);
  if (preferences.IsEOF()) {
    return refused("Set the Default Purchase Discount account in the Purchase Preferences");
  }
  const std::string account = preferences.read("Discount_Account_No").text_or_empty();
  preferences.Close();
  if (account.empty()) {
    return refused("Set the Default Purchase discount account in the Purchase Preferences");
  }
  return post("Purchase Discount:", account, "Credit", PurchaseInvDiscAmount(),
              PurchaseInvFCDiscAmount());
}

bool PurchaseInvoice::post_payable() {
  std::string account;
  const Payable payable{.heading = heading(),
                        .reference = VendorRefInvoiceNo(),
                        .reference_date = VendorRefInvoiceDate(),
                        .vendor = VendorCode(),
                        .amount = PurchaseInvAmount(),
                        .fc_amount = PurchaseInvFCAmount(),
                        .tells_branch = true};
  if (!find_payable_account(true, account) || !enter_payable(payable, account)) return false;
  // The total itself goes by reference, and comes back negated.
  std::string description = payable_description();
  std::string side = "Credit";
  return Account_Posting(description, account, raw(PurchaseInvAmount), raw(PurchaseInvFCAmount),
                         side);
}

bool PurchaseInvoice::PI_Tax_Posting() {
  return post_tax({.heading = heading(), .own_type = "PI", .digits = AmtDig()});
}

}  // namespace ombrix::purchase
