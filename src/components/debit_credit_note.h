#pragma once

#include <string>
#include <string_view>

#include "ombrix/recordset.h"

#include "components/component.h"
#include "frame/sibling.h"
#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixAccountsExt.DebitCreditNote`: turns a saved voucher into a final one and posts it.
///
/// A vendor's line goes to the sub-ledger and, on the payable account of the branch, to ledger and
/// chart, so that the ledger balances as the voucher does; every other line goes to its own
/// account. Counter, ledgers and preferences are asked by name.
class DebitCreditNote : public Component {
 public:
  /// Held; everything runs on `AdoConnectionObject`.
  Text ADOConnectionString;
  Text VoucherNo;
  /// With `DocFlag` the final number comes from here, and the counter of the series is moved behind
  /// it.
  Number manualDocIdentity;
  Flag DocFlag;
  Day LastUpdate;

  /// Gives the voucher `voucher_no` its final number, which is left in it, marks it processed and
  /// posts its lines. False with a reason in `ErrDesc`: an unknown or processed voucher, a branch
  /// without a payable account (nothing is changed then), or what a sibling refused. Failures of
  /// the database rise. Neither takes back what was written.
  bool Process_Voucher(std::string& voucher_no);

 private:
  Sibling sibling(std::string_view name) const;
  bool refused_by(Sibling& sibling) { return refuse(sibling.get("ErrDesc").text_or_empty()); }
  bool find_payable_account(Recordset& voucher, std::string& account);
  bool process(Recordset& voucher, std::string& voucher_no, const std::string& payable_account);
  void rename(Recordset& voucher, const std::string& identity, const std::string& number);
  bool post_lines(Recordset& voucher, const std::string& payable_account);
  bool post_to_vendor(Recordset& voucher, Recordset& line, const std::string& payable_account);
  bool post_to_account(Recordset& voucher, Recordset& line, const Value& account);
  void move_counter_behind(Recordset& voucher) const;
};

const Interface& debit_credit_note_interface();

}  // namespace ombrix::components
