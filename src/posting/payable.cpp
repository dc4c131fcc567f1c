#include "ombrix/purchase/posted_document.h"

#include "base/raw.h"
#include "base/text.h"
#include "frame/vendor_accounts.h"

namespace ombrix::purchase {

bool PostedDocument::find_payable_account(bool tells_branch, std::string& account) {
  VendorAccounts accounts(asker());
  if (tells_branch) accounts.tell("BranchPrefix", BranchPrefix());
  if (!accounts.read(raw(CompanyPrefix), raw(BranchPrefix))) return false;
  account = accounts.payable();
  return accounts.has_payable(account);
}

bool PostedDocument::enter_payable(const Payable& payable, const std::string& account) {
  const auto& [number, date, comments] = payable.heading;
  auto ledger = sibling("OmbrixAccounts.AccountsPayable");
  ledger.set({{"AdoConnectionObject", raw(AdoConnectionObject)},
              {"AccountNo", account},
              {"APLDate", date},
              {"APLDescription", payable_description()}});
  if (!payable.tells_branch) ledger.set("APLComments", comments);
  ledger.set({{"APLCreditAmount", payable.amount},
              {"FCAPLCreditAmount", payable.fc_amount},
              {"APLDebitAmount", 0.0},
              {"FCAPLDebitAmount", 0.0},
              {"DocumentNo", number},
              {"DocumentPrefix", DocumentPrefix()},
              {"CurrencyCode", CurrencyCode()},
              {"CurrencySymbol", CurrencySymbol()},
              {"VendorCode", payable.vendor},
              {"LastUpdate", LastUpdate()},
              {"Refno", payable.reference},
              {"RefDate", payable.reference_date}});
  if (payable.tells_branch) {
    ledger.set({{"APLComments", comments},
                {"CompanyPrefix", CompanyPrefix()},
                {"BranchPrefix", BranchPrefix()}});
  }
  return ledger.call("AP_Insert_Transaction") || refused_by(ledger);
}

std::string PostedDocument::payable_description() const {
  return "Accounts Payable : Vendor Code - " + std::string(without_first(trim(VendorCode()), 2));
}

}  // namespace ombrix::purchase
