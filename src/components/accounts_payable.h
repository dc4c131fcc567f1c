#pragma once

#include <string>

#include "components/component.h"
#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixAccounts.AccountsPayable`: the vendor sub-ledger, and with it the vendor's balances.
///
/// A credit raises `Vendor_Balance` and `Vendor_Fc_Balance` of the vendor, a debit lowers them;
/// what an instance was given stays set for its next call. Amounts may be zero or negative. A
/// refusal writes nothing and leaves its reason in `ErrDesc`; failures of the database rise.
class AccountsPayable final : public Component {
 public:
  Text CompanyPrefix;
  Text BranchPrefix;
  Text DocumentPrefix;
  Flag ForeignCurrencyFlag;
  Text VendorCode;
  Text AccountNo;
  Text DocumentNo;
  Day APLDate;
  Text APLDescription;
  Text APLComments;
  /// In home currency; the two behind it in the document's.
  Number APLDebitAmount;
  Number APLCreditAmount;
  Number FCAPLDebitAmount;
  Number FCAPLCreditAmount;
  Text CurrencyCode;
  Text CurrencySymbol;
  Day LastUpdate;
  /// The vendor's own reference; an empty one is stored as Null.
  Text Refno;
  Day RefDate;

  /// Adds one entry. Refused: no document number, vendor or account, an account that is not in the
  /// chart, a vendor that is not known.
  bool AP_Insert_Transaction();
  /// Takes all entries of `DocumentNo` back, and what they did to the vendors' balances. A document
  /// without entries is no failure.
  bool APL_Delete();

 private:
  /// What the vendor is owed more, in home and in foreign currency.
  struct Owed {
    double home = 0;
    double foreign = 0;
  };
  /// False when the vendor is not known.
  bool move_balance(const std::string& vendor, const Owed& owed) const;
};

const Interface& accounts_payable_interface();

}  // namespace ombrix::components
