#include "ombrix/purchase/posted_document.h"

#include "base/names.h"
#include "base/number.h"
#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/trap.h"
#include "posting/ledger.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

bool PostedDocument::post_tax(const TaxPosting& how) {
  return trapped(Trap::silent, [&] { return post_tax_shares(how); });
}

bool PostedDocument::post_tax_shares(const TaxPosting& how) {
  const auto rounded = [&](double amount) {
    return how.digits ? round_half_even(amount, *how.digits) : amount;
  };
  auto authorities = open_fresh(
      sql({"select TaxAuthorityCode,TaxAuthorityName,TaxAuthorityRate from TaxCodeDetails"
           " where TaxCode=",
           text(TaxCode())}),
      Keyset, ConnectionString());
  double shared = 0;
  std::size_t taken = 0;
  for (; !authorities.IsEOF(); authorities.MoveNext()) {
    auto authority = open_fresh(sql({"select accountno,Description from TaxAuthorities where Code=",
                                     text(authorities("TaxAuthorityCode").text_or_empty())}),
                                Keyset, ConnectionString());
    if (authority.RecordCount() == 0 || TaxAmount() <= 0) continue;
    ++taken;
    const double rate = authorities("TaxAuthorityRate").number();
    const double share = rounded(rate * quotient(TaxAmount(), TaxPercent()));
    shared = rounded(shared + share);
    if (taken == authorities.RecordCount() && shared - TaxAmount() != share) {
      // What only the last digits of a Double tell apart is the same amount.
      const bool adds_up = general_text(shared) == general_text(TaxAmount());
      TaxAmount = adds_up ? 0 : rounded(shared - TaxAmount());
    }
    const std::string account = authority("AccountNo").text_or_empty();
    if (trim(account).empty()) {
      return refused("Invalid Account Number for Authority -'" +
                     authority("Description").text_or_empty() + "'");
    }
    if (!post_tax_share(how, account, share)) return false;
  }
  return true;
}

bool PostedDocument::post_tax_share(const TaxPosting& how, const std::string& account,
                                    double share) {
  Ledger ledger(*this);
  const auto& [number, date, comments] = how.heading;
  if (DocumentPrefix().empty()) {
    raw(DocumentPrefix) = first_of(without_first(number, 4), 3);
  }
  const bool credit = same_name(TaxType(), how.own_type) == (how.own_side == Side::credit);
  const LedgerLine line{"Purchase Tax for " + std::string(without_first(number, 7)) + " Dated " +
                            date.day_first_text(),
                        account, credit ? Side::credit : Side::debit, share, share};
  ledger.state(how.heading, line, false, Date::now().midnight());
  // Opposite to the other postings: here a credit raises the balance.
  return ledger.post(account, credit ? share : 0 - share);
}

}  // namespace ombrix::purchase
