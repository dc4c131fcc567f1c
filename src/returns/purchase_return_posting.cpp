#include <cmath>

#include "ombrix/purchase/purchase_return.h"

#include "base/text.h"
#include "posting/ledger.h"
#include "returns/booked.h"

namespace ombrix::purchase {

namespace {

/// Goods that were only received: their inventory lines keep the variance, and its own line stands
/// on the other side.
bool is_receipt(const std::string& source) {
  return source == "REC" || source == "DRI";
}

}  // namespace

bool PurchaseReturn::credit_inventory(Recordset& line, const LineAmounts& amounts, Booked& booked) {
  const double credit = is_receipt(Ref_Doc_Type()) ? amounts.home : amounts.home - booked.variance;
  const std::string item = line("Item_Code").text_or_empty();
  Ledger ledger(*this);
  ledger.set({{"DocumentNo", PurchaseRtnNo()},
              {"DocumentPrefix", DocumentPrefix()},
              {"GLDate", PurchaseRtnDate()},
              {"CurrencyCode", CurrencyCode()},
              {"CurrencySymbol", CurrencySymbol()},
              {"GLDescription",
               "Inventory Account  : ItemCode - " + std::string(without_first(trim(item), 2))},
              {"AccountNo", booked.inventory_account},
              {"GLCreditAmount", credit},
              {"GLDebitAmount", 0.0},
              {"ForeignCurrencyFlag", ForeignCurrencyFlag()},
              {"FCGLCreditAmount", amounts.foreign},
              {"FCGLDebitAmount", 0.0},
              {"LastUpdate", LastUpdate()}});
  booked.amount += amounts.home;
  booked.fc_amount += amounts.foreign;
  // The chart moves by the whole amount, whatever of the variance the journal leaves to its line.
  return ledger.post(booked.inventory_account, 0 - amounts.home);
}

bool PurchaseReturn::PR_Tax_Posting() {
  return post_tax({.heading = {PurchaseRtnNo(), PurchaseRtnDate(), PurchaseRtnComments()},
                   .own_type = "PR",
                   .own_side = Side::credit});
}

bool PurchaseReturn::debit_accrual(const Booked& booked) {
  const LedgerLine line{
      "Purchase Accural : Vendor Code - " + std::string(without_first(trim(VendorCode()), 2)),
      booked.accrual_account, Side::debit, (PurchaseRtnAmount() - booked.variance) + SavedTaxAmount,
      SavedTaxAmount + PurchaseRtnFCAmount()};
  Ledger ledger(*this);
  ledger.state({PurchaseRtnNo(), PurchaseRtnDate(), PurchaseRtnComments()}, line);
  return ledger.post(booked.accrual_account, PurchaseRtnAmount() + SavedTaxAmount);
}

bool PurchaseReturn::post_variance(const Booked& booked) {
  if (booked.variance == 0) return true;
  const bool debits = (booked.variance > 0) == is_receipt(Ref_Doc_Type());
  const double amount = std::fabs(booked.variance);
  Ledger ledger(*this);
  ledger.state({PurchaseRtnNo(), PurchaseRtnDate(), PurchaseRtnComments()},
               {"Exchange Variance ", booked.variance_account, debits ? Side::debit : Side::credit,
                amount, 0});
  return ledger.post(booked.variance_account, debits ? amount : -amount);
}

}  // namespace ombrix::purchase
