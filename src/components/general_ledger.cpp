#include "components/components.h"
#include "components/row_component.h"
#include "database/statement.h"

namespace ombrix::components {

using database::any_text;
using database::sql;

namespace {

constexpr Stored kJournal[] = {
    {"DocumentNo", "Document_No"},
    {"DocumentPrefix", "Document_Prefix"},
    {"GLDate", "GL_Date", Type::day},
    {"CurrencyCode", "Currency_Code"},
    {"CurrencySymbol", "Currency_Symbol"},
    {"GLDescription", "GL_Description"},
    {"GLComments", "GL_Comments"},
    {"AccountNo", "Account_No"},
    {"GLDebitAmount", "GL_Debit_Amount", Type::number},
    {"GLCreditAmount", "GL_Credit_Amount", Type::number},
    {"FCGLDebitAmount", "FC_GL_Debit_Amount", Type::number},
    {"FCGLCreditAmount", "FC_GL_Credit_Amount", Type::number},
    {"ForeignCurrencyFlag", "Foreign_Currency_Flag", Type::flag},
    {"LastUpdate", "Last_Update", Type::day},
};

/// `OmbrixAccounts.GeneralLedger`: the journal, and the balances on the chart of accounts. Members
/// stay set between calls, so that one instance may post many lines.
///
/// Amounts of any sign are taken. Refused is a line without document or account, and an account
/// that the chart does not have.
class GeneralLedger final : public RowComponent {
 public:
  GeneralLedger() : RowComponent(kJournal) {}

  /// Writes the members as a line of the journal. No balance moves.
  bool GLInsert() {
    constexpr std::string_view kWork = "Ledger line";
    if (!ready_with(kWork, {"DocumentNo", "AccountNo"})) return false;
    if (!has_account(text("AccountNo"))) return unknown(kWork, text("AccountNo"));
    write_row(sql({"Select * From General_Ledger"}));
    return true;
  }

  /// Adds the signed home amount to the account's current balance; its opening balance stays.
  bool COAPosting(std::string& account, double& amount) {
    constexpr std::string_view kWork = "Account balance";
    if (!ready(kWork, {{"AccountNo", account}})) return false;
    const auto moved = execute(
        sql({"Update Chart_Of_Accounts Set Current_Balance = Coalesce(Current_Balance, 0) + ",
             database::number(amount), " Where Account_No=", any_text(account)}));
    return moved > 0 || unknown(kWork, account);
  }

 private:
  bool unknown(std::string_view work, const std::string& account) {
    return refused(std::string(work) + ": account \"" + account +
                   "\" is not in the chart of accounts.");
  }
};

using Of = MembersOf<GeneralLedger>;
constexpr auto kMembers =
    members_with<GeneralLedger>(kJournal, {Of::method<&GeneralLedger::GLInsert>("GLInsert"),
                                           Of::method<&GeneralLedger::COAPosting>("COAPosting")});
constexpr Interface kInterface("OmbrixAccounts.GeneralLedger", kMembers);

}  // namespace

Shipped general_ledger() {
  return component<GeneralLedger>(kInterface);
}

}  // namespace ombrix::components
