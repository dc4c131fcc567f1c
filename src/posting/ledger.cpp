#include "posting/ledger.h"

#include <array>

#include "base/raw.h"

namespace ombrix::purchase {

PostedDocument::Ledger::Ledger(PostedDocument& document)
    : document_(document), component_(document.sibling("OmbrixAccounts.GeneralLedger")) {
  component_.set("AdoConnectionObject", raw(document.AdoConnectionObject));
}

void PostedDocument::Ledger::state(const Heading& heading, const LedgerLine& line) {
  state(heading, line, document_.ForeignCurrencyFlag(), document_.LastUpdate());
}

void PostedDocument::Ledger::state(const Heading& heading, const LedgerLine& line, bool foreign,
                                   const Date& last_update) {
  const bool credit = line.side == Side::credit;
  component_.set({
      {"DocumentNo", heading.number},
      {"DocumentPrefix", document_.DocumentPrefix()},
      {"GLDate", heading.date},
      {"CurrencyCode", document_.CurrencyCode()},
      {"CurrencySymbol", document_.CurrencySymbol()},
      {"GLDescription", line.description},
      {"GLComments", heading.comments},
      {"AccountNo", line.account},
      {"GLCreditAmount", credit ? line.amount : 0.0},
      {"FCGLCreditAmount", credit ? line.fc_amount : 0.0},
      {"GLDebitAmount", credit ? 0.0 : line.amount},
      {"FCGLDebitAmount", credit ? 0.0 : line.fc_amount},
      {"ForeignCurrencyFlag", foreign},
      {"LastUpdate", last_update},
  });
}

bool PostedDocument::Ledger::post(const Heading& heading, const Entry& entry) {
  const bool credit = entry.type == "Credit";
  state(heading, {entry.description, entry.account, credit ? Side::credit : Side::debit,
                  entry.amount + entry.on_top, entry.fc_amount + entry.on_top});
  if (!insert()) return false;
  if (credit) entry.amount = 0 - entry.amount;  // of 0 too, which would get a sign
  return move(entry.account, entry.amount);
}

bool PostedDocument::Ledger::insert() {
  return component_.call("GLInsert") || document_.refused_by(component_);
}

bool PostedDocument::Ledger::move(std::string& account, double& amount) {
  std::array<Value, 2> arguments{account, amount};
  const bool moved = component_.call("COAPosting", arguments);
  account = arguments[0].to_text();
  amount = arguments[1].to_number();
  return moved || document_.refused_by(component_);
}

}  // namespace ombrix::purchase
