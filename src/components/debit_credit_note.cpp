#include <array>
#include <string>
#include <string_view>

#include "ombrix/recordset.h"

#include "base/number.h"
#include "components/component.h"
#include "components/components.h"
#include "database/statement.h"
#include "frame/numbering.h"
#include "frame/vendor_accounts.h"

namespace ombrix::components {

using database::number;
using database::sql;
using database::text;

namespace {

/// `OmbrixAccountsExt.DebitCreditNote`: turns a saved voucher into a final one and posts it.
///
/// A vendor's line goes to the sub-ledger and, on the payable account of the branch, to ledger and
/// chart, so that the ledger balances as the voucher does; every other line goes to its own
/// account. Counter, ledgers and preferences are asked by name.
class DebitCreditNote final : public Component {
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
  bool find_payable_account(Recordset& voucher, std::string& account);
  bool process(Recordset& voucher, std::string& voucher_no, const std::string& payable_account);
  void rename(Recordset& voucher, const std::string& identity, const std::string& number);
  bool post_lines(Recordset& voucher, const std::string& payable_account);
  bool post_to_vendor(Recordset& voucher, Recordset& line, const std::string& payable_account);
  bool post_to_account(Recordset& voucher, Recordset& line, const Value& account);
  void move_counter_behind(Recordset& voucher) const;
};

std::string text_of(Recordset& row, std::string_view column) {
  return row(column).text_or_empty();
}

double amount_of(Recordset& row, std::string_view column) {
  const Value amount = row(column);
  return amount.is_null() ? 0 : amount.to_number();
}

bool DebitCreditNote::Process_Voucher(std::string& voucher_no) {
  if (!ready("Voucher", {{"VoucherNo", voucher_no}})) return false;
  auto voucher =
      open(sql({"Select * From Voucher_Master Where Voucher_No=", text(voucher_no)}), Keyset);
  if (voucher.IsEOF()) return refused("Voucher \"" + voucher_no + "\" is not on file.");
  if (amount_of(voucher, "process_Flag") != 0) {
    return refused("Voucher \"" + voucher_no + "\" is processed already.");
  }
  std::string payable_account;
  return find_payable_account(voucher, payable_account) &&
         process(voucher, voucher_no, payable_account);
}

bool DebitCreditNote::find_payable_account(Recordset& voucher, std::string& account) {
  VendorAccounts accounts(asker());
  std::string company = text_of(voucher, "Company_Prefix");
  std::string branch = text_of(voucher, "Branch_Prefix");
  if (!accounts.read(company, branch)) return false;
  account = accounts.payable();
  return accounts.has_payable(account);
}

bool DebitCreditNote::process(Recordset& voucher, std::string& voucher_no,
                              const std::string& payable_account) {
  const std::string company = text_of(voucher, "Company_Prefix");
  const std::string branch = text_of(voucher, "Branch_Prefix");
  const std::string series = text_of(voucher, "Document_Prefix");
  if (DocFlag()) {
    const std::string identity = general_text(manualDocIdentity());
    voucher_no = company + branch + series + identity;
    rename(voucher, identity, voucher_no);
    if (!post_lines(voucher, payable_account)) return false;
    move_counter_behind(voucher);
    return true;
  }
  SeriesCounter counter(asker(), {company, branch, series});
  if (!counter.draw()) return false;
  const std::string identity = counter.number_text();
  voucher_no = company + branch + series + identity;
  rename(voucher, identity, voucher_no);
  return post_lines(voucher, payable_account) && counter.move_on();
}

void DebitCreditNote::rename(Recordset& voucher, const std::string& identity,
                             const std::string& number) {
  auto lines = open(sql({"Select * From Voucher_Detail Where Voucher_No=",
                         text(text_of(voucher, "Voucher_No")), " Order By SL_No"}),
                    Keyset);
  for (; !lines.IsEOF(); lines.MoveNext()) {
    lines("Voucher_No") = number;
    lines("Last_Update") = LastUpdate();
    lines.Update();
  }
  voucher("Voucher_No") = number;
  voucher("Voucher_Identity") = identity;
  voucher("process_Flag") = 1;
  voucher("Last_Update") = LastUpdate();
  voucher.Update();
}

bool DebitCreditNote::post_lines(Recordset& voucher, const std::string& payable_account) {
  auto lines = open(sql({"Select * From Voucher_Detail Where Voucher_No=",
                         text(text_of(voucher, "Voucher_No")), " Order By SL_No"}),
                    Static);
  for (; !lines.IsEOF(); lines.MoveNext()) {
    const bool vendor = text_of(lines, "Voucher_Type") == "Vendor";
    if (vendor && !post_to_vendor(voucher, lines, payable_account)) return false;
    const Value account = vendor ? Value(payable_account) : lines("Account_No").value();
    if (!post_to_account(voucher, lines, account)) return false;
  }
  return true;
}

bool DebitCreditNote::post_to_vendor(Recordset& voucher, Recordset& line,
                                     const std::string& payable_account) {
  auto payables = sibling("OmbrixAccounts.AccountsPayable");
  payables.set({{"AdoConnectionObject", AdoConnectionObject()},
                {"CompanyPrefix", voucher("Company_Prefix")},
                {"BranchPrefix", voucher("Branch_Prefix")},
                {"DocumentPrefix", voucher("Document_Prefix")},
                {"ForeignCurrencyFlag", line("Foreign_Currency_Flag")},
                {"VendorCode", line("Account_No")},
                {"AccountNo", payable_account},
                {"DocumentNo", voucher("Voucher_No")},
                {"APLDate", voucher("Voucher_Date")},
                {"APLDescription", line("Voucher_Description")},
                {"APLComments", voucher("Voucher_Comments")},
                {"APLDebitAmount", line("Debit_Amount")},
                {"APLCreditAmount", line("Credit_Amount")},
                {"FCAPLDebitAmount", line("FC_Debit_Amount")},
                {"FCAPLCreditAmount", line("FC_Credit_Amount")},
                {"CurrencyCode", line("Currency_Code")},
                {"CurrencySymbol", line("Currency_Symbol")},
                {"LastUpdate", LastUpdate()}});
  return payables.call("AP_Insert_Transaction") || refused_by(payables);
}

bool DebitCreditNote::post_to_account(Recordset& voucher, Recordset& line, const Value& account) {
  auto ledger = sibling("OmbrixAccounts.GeneralLedger");
  ledger.set({{"AdoConnectionObject", AdoConnectionObject()},
              {"DocumentNo", voucher("Voucher_No")},
              {"DocumentPrefix", voucher("Document_Prefix")},
              {"GLDate", voucher("Voucher_Date")},
              {"CurrencyCode", line("Currency_Code")},
              {"CurrencySymbol", line("Currency_Symbol")},
              {"GLDescription", line("Voucher_Description")},
              {"GLComments", voucher("Voucher_Comments")},
              {"AccountNo", account},
              {"GLCreditAmount", line("Credit_Amount")},
              {"FCGLCreditAmount", line("FC_Credit_Amount")},
              {"GLDebitAmount", line("Debit_Amount")},
              {"FCGLDebitAmount", line("FC_Debit_Amount")},
              {"ForeignCurrencyFlag", line("Foreign_Currency_Flag")},
              {"LastUpdate", LastUpdate()}});
  if (!ledger.call("GLInsert")) return refused_by(ledger);
  std::array<Value, 2> movement{account,
                                amount_of(line, "Debit_Amount") - amount_of(line, "Credit_Amount")};
  return ledger.call("COAPosting", movement) || refused_by(ledger);
}

void DebitCreditNote::move_counter_behind(Recordset& voucher) const {
  execute(sql({"Update Document_Prefix Set Document_Next_No = ", number(manualDocIdentity() + 1),
               ", Last_Update = ", text(LastUpdate().stored_text()),
               " Where Document_Prefix=", text(text_of(voucher, "Document_Prefix")),
               " and Company_Prefix=", text(text_of(voucher, "Company_Prefix")),
               " and Branch_Prefix=", text(text_of(voucher, "Branch_Prefix")),
               " and Document_Next_No <= ", number(manualDocIdentity())}));
}

using Note = DebitCreditNote;
using Of = MembersOf<Note>;

constexpr Member kMembers[] = {
    Of::property<&Note::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&Note::ADOConnectionString>("ADOConnectionString"),
    Of::property<&Note::VoucherNo>("VoucherNo"),
    Of::property<&Note::manualDocIdentity>("manualDocIdentity"),
    Of::property<&Note::DocFlag>("DocFlag"),
    Of::property<&Note::LastUpdate>("LastUpdate"),
    Of::property<&Note::ErrDesc>("ErrDesc"),
    Of::method<&Note::Process_Voucher>("Process_Voucher"),
};

constexpr Interface kInterface("OmbrixAccountsExt.DebitCreditNote", kMembers);

}  // namespace

Shipped debit_credit_note() {
  return component<DebitCreditNote>(kInterface,
                                    database::Piece("Voucher_Master Where Voucher_No="));
}

}  // namespace ombrix::components
