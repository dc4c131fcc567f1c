#include <map>

#include "components/components.h"
#include "components/row_component.h"
#include "database/statement.h"

namespace ombrix::components {

using database::any_text;
using database::sql;

namespace {

constexpr Stored kEntry[] = {
    {"CompanyPrefix", "Company_Prefix"},
    {"BranchPrefix", "Branch_Prefix"},
    {"DocumentPrefix", "Document_Prefix"},
    {"ForeignCurrencyFlag", "Foreign_Currency_Flag", Type::flag},
    {"VendorCode", "Vendor_Code"},
    {"AccountNo", "Account_No"},
    {"DocumentNo", "Document_No"},
    {"APLDate", "APL_Date", Type::day},
    {"APLDescription", "APL_Description"},
    {"APLComments", "APL_Comments"},
    // In home currency; the two behind them in the document's.
    {"APLDebitAmount", "APL_Debit_Amount", Type::number},
    {"APLCreditAmount", "APL_Credit_Amount", Type::number},
    {"FCAPLDebitAmount", "FC_APL_Debit_Amount", Type::number},
    {"FCAPLCreditAmount", "FC_APL_Credit_Amount", Type::number},
    {"CurrencyCode", "Currency_Code"},
    {"CurrencySymbol", "Currency_Symbol"},
    {"LastUpdate", "Last_Update", Type::day},
    // The vendor's own reference.
    {"Refno", "Ref_No", Type::text, null_if_empty},
    {"RefDate", "Ref_Date", Type::day, null_if_zero},
};

double amount(Recordset& entries, std::string_view column) {
  const Value value = entries.read(column);
  return value.is_null() ? 0 : value.to_number();
}

/// `OmbrixAccounts.AccountsPayable`: the vendor sub-ledger, and with it the vendor's balances.
///
/// A credit raises `Vendor_Balance` and `Vendor_Fc_Balance` of the vendor, a debit lowers them;
/// what an instance was given stays set for its next call. Amounts may be zero or negative. A
/// refusal writes nothing and leaves its reason in `ErrDesc`; failures of the database rise.
class AccountsPayable final : public RowComponent {
 public:
  AccountsPayable() : RowComponent(kEntry) {}

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

bool AccountsPayable::move_balance(const std::string& vendor, const Owed& owed) const {
  return execute(sql({"Update Vendor_Master Set Vendor_Balance = Coalesce(Vendor_Balance, 0) + ",
                      database::number(owed.home),
                      ", Vendor_Fc_Balance = Coalesce(Vendor_Fc_Balance, 0) + ",
                      database::number(owed.foreign), " Where Vendor_Code=", any_text(vendor)})) >
         0;
}

bool AccountsPayable::AP_Insert_Transaction() {
  constexpr std::string_view kWork = "Payables entry";
  if (!ready_with(kWork, {"DocumentNo", "VendorCode", "AccountNo"})) return false;
  const auto unknown = [&](const std::string& what) {
    return refused(std::string(kWork) + " of document \"" + text("DocumentNo") + "\": " + what);
  };
  if (!has_account(text("AccountNo"))) {
    return unknown("account \"" + text("AccountNo") + "\" is not in the chart of accounts.");
  }
  // The balance first: it tells whether the vendor is there, and holds it until the client's
  // transaction ends.
  const Owed owed{number("APLCreditAmount") - number("APLDebitAmount"),
                  number("FCAPLCreditAmount") - number("FCAPLDebitAmount")};
  if (!move_balance(text("VendorCode"), owed)) {
    return unknown("there is no vendor \"" + text("VendorCode") + "\".");
  }
  write_row(sql({"Select * from Accounts_Payable_Ledger"}));
  return true;
}

bool AccountsPayable::APL_Delete() {
  if (!ready_with("Deletion of payables entries", {"DocumentNo"})) return false;
  // Deleted and told in one step: of two callers only one takes an entry's effect back.
  auto gone = open(
      sql({"Delete From Accounts_Payable_Ledger Where Document_No=", any_text(text("DocumentNo")),
           " Returning Vendor_Code, APL_Debit_Amount, APL_Credit_Amount,"
           " FC_APL_Debit_Amount, FC_APL_Credit_Amount"}),
      Keyset);
  // By vendor, so that two callers wait for each other in one order.
  std::map<std::string, Owed> by_vendor;
  for (; !gone.IsEOF(); gone.MoveNext()) {
    Owed& owed = by_vendor[gone("Vendor_Code").text_or_empty()];
    owed.home += amount(gone, "APL_Debit_Amount") - amount(gone, "APL_Credit_Amount");
    owed.foreign += amount(gone, "FC_APL_Debit_Amount") - amount(gone, "FC_APL_Credit_Amount");
  }
  for (const auto& [vendor, owed] : by_vendor) move_balance(vendor, owed);
  return true;
}

using Of = MembersOf<AccountsPayable>;
constexpr auto kMembers = members_with<AccountsPayable>(
    kEntry, {Of::method<&AccountsPayable::AP_Insert_Transaction>("AP_Insert_Transaction"),
             Of::method<&AccountsPayable::APL_Delete>("APL_Delete")});
constexpr Interface kInterface("OmbrixAccounts.AccountsPayable", kMembers);

}  // namespace

Shipped accounts_payable() {
  return component<AccountsPayable>(kInterface);
}

}  // namespace ombrix::components
