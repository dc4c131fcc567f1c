#include "components/debit_credit_note.h"

#include <array>

#include "base/number.h"

namespace ombrix::components {

using database::ConnectionAccess;
using database::number;
using database::sql;
using database::text;

namespace {

std::string text_of(Recordset& row, std::string_view column) {
  return row(column).text_or_empty();
}

double amount_of(Recordset& row, std::string_view column) {
  const Value amount = row(column);
  return amount.is_null() ? 0 : amount.to_number();
}

}  // namespace

Sibling DebitCreditNote::sibling(std::string_view name) const {
  return {name, ConnectionAccess::instruments(*AdoConnectionObject())};
}

bool DebitCreditNote::Process_Voucher(std::string& voucher_no) {
  if (!ready("Voucher", {{"VoucherNo", voucher_no}})) return false;
  auto voucher =
      open(sql({"Select * From Voucher_Master Where Voucher_No=", text(voucher_no)}), Keyset);
  if (voucher.IsEOF()) return refuse("Voucher \"" + voucher_no + "\" is not on file.");
  if (amount_of(voucher, "process_Flag") != 0) {
    return refuse("Voucher \"" + voucher_no + "\" is processed already.");
  }
  std::string payable_account;
  return find_payable_account(voucher, payable_account) &&
         process(voucher, voucher_no, payable_account);
}

bool DebitCreditNote::find_payable_account(Recordset& voucher, std::string& account) {
  auto preferences = sibling("OmbrixAccounts.AccountPreferences");
  preferences.set("ConnectionString", AdoConnectionObject()->ConnectionString());
  std::array<Value, 2> keys{voucher("Company_Prefix"), voucher("Branch_Prefix")};
  if (!preferences.call("Get_Account_Preferences", keys)) return refused_by(preferences);
  account = preferences.get("APAccountNo").text_or_empty();
  return !trim(account).empty() || refuse("Invalid Accounts Payable Account");
}

bool DebitCreditNote::process(Recordset& voucher, std::string& voucher_no,
                              const std::string& payable_account) {
  const std::string series = text_of(voucher, "Company_Prefix") +
                             text_of(voucher, "Branch_Prefix") +
                             text_of(voucher, "Document_Prefix");
  if (DocFlag()) {
    const std::string identity = general_text(manualDocIdentity());
    voucher_no = series + identity;
    rename(voucher, identity, voucher_no);
    if (!post_lines(voucher, payable_account)) return false;
    move_counter_behind(voucher);
    return true;
  }
  auto counter = sibling("OmbrixSystem.CounterTransaction");
  counter.set({{"CompanyPrefix", voucher("Company_Prefix")},
               {"BranchPrefix", voucher("Branch_Prefix")},
               {"DocumentPrefix", voucher("Document_Prefix")}});
  std::array<Value, 1> connection{AdoConnectionObject()};
  if (!counter.call("Get_Last_Counter", connection)) return refused_by(counter);
  const std::string identity = counter.get("NextDocumentNo").to_text();
  voucher_no = series + identity;
  rename(voucher, identity, voucher_no);
  return post_lines(voucher, payable_account) &&
         (counter.call("Increase_Counter") || refused_by(counter));
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

namespace {

using Note = DebitCreditNote;
using Of = MembersOf<Note, Nulls::read_as_empty>;

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

}  // namespace

const Interface& debit_credit_note_interface() {
  static constexpr Interface kInterface("OmbrixAccountsExt.DebitCreditNote", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
