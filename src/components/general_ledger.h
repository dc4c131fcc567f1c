#pragma once

#include "components/component.h"
#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixAccounts.GeneralLedger`: the journal, and the balances on the chart of accounts. Members
/// stay set between calls, so that one instance may post many lines.
///
/// Amounts of any sign are taken. Refused is a line without document or account, and an account
/// that the chart does not have.
class GeneralLedger : public Component {
 public:
  Text DocumentNo;
  Text DocumentPrefix;
  Day GLDate;
  Text CurrencyCode;
  Text CurrencySymbol;
  Text GLDescription;
  Text GLComments;
  Text AccountNo;
  Number GLDebitAmount;
  Number GLCreditAmount;
  Number FCGLDebitAmount;
  Number FCGLCreditAmount;
  Flag ForeignCurrencyFlag;
  Day LastUpdate;

  /// Writes the members as a line of the journal. No balance moves.
  bool GLInsert();
  /// Adds the signed home amount to the account's current balance; its opening balance stays.
  bool COAPosting(std::string& account, double& amount);

 private:
  bool unknown(std::string_view work, const std::string& account);
};

const Interface& general_ledger_interface();

}  // namespace ombrix::components
