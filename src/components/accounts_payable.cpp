#include "components/accounts_payable.h"

#include <map>
#include <utility>

#include "components/chart_of_accounts.h"
#include "frame/columns.h"

namespace ombrix::components {

using database::number;
using database::sql;
using database::text;

namespace {

using namespace rule;
using AP = AccountsPayable;

struct ReferenceDate : Written<ReferenceDate> {
  static Value value(const AP& entry) {
    return entry.RefDate().is_zero() ? Value(Null{}) : Value(entry.RefDate());
  }
};

constexpr Column<const AP> kEntry[] = {
    {"Company_Prefix", always<&AP::CompanyPrefix>},
    {"Branch_Prefix", always<&AP::BranchPrefix>},
    {"Document_Prefix", always<&AP::DocumentPrefix>},
    {"Foreign_Currency_Flag", always<&AP::ForeignCurrencyFlag>},
    {"Vendor_Code", always<&AP::VendorCode>},
    {"Account_No", always<&AP::AccountNo>},
    {"Document_No", always<&AP::DocumentNo>},
    {"APL_Date", always<&AP::APLDate>},
    {"APL_Description", always<&AP::APLDescription>},
    {"APL_Comments", always<&AP::APLComments>},
    {"APL_Debit_Amount", always<&AP::APLDebitAmount>},
    {"APL_Credit_Amount", always<&AP::APLCreditAmount>},
    {"FC_APL_Debit_Amount", always<&AP::FCAPLDebitAmount>},
    {"FC_APL_Credit_Amount", always<&AP::FCAPLCreditAmount>},
    {"Currency_Code", always<&AP::CurrencyCode>},
    {"Currency_Symbol", always<&AP::CurrencySymbol>},
    {"Last_Update", always<&AP::LastUpdate>},
    {"Ref_No", null_if_empty<&AP::Refno>},
    {"Ref_Date", ReferenceDate()},
};

/// What is owed more, in home and in foreign currency.
struct Owed {
  double home = 0;
  double foreign = 0;
};

/// In one step, as others may move the same balance. False when the vendor is not known.
bool move_balance(const std::string& vendor, const Owed& owed, const Connection& connection) {
  return database::execute(
             sql({"Update Vendor_Master Set Vendor_Balance = Coalesce(Vendor_Balance, 0) + ",
                  number(owed.home), ", Vendor_Fc_Balance = Coalesce(Vendor_Fc_Balance, 0) + ",
                  number(owed.foreign), " Where Vendor_Code=", text(vendor)}),
             connection) > 0;
}

double amount(Recordset& entries, std::string_view column) {
  const Value value = entries.read(column);
  return value.is_null() ? 0 : value.to_number();
}

}  // namespace

bool AccountsPayable::complete() {
  if (!AdoConnectionObject()) return refuse("Invalid Connection.");
  if (trim(DocumentNo()).empty()) return refuse("A payables entry needs a document number.");
  const std::string entry = "The payables entry of document \"" + DocumentNo() + "\" ";
  if (trim(VendorCode()).empty()) return refuse(entry + "needs a vendor code.");
  if (trim(AccountNo()).empty()) return refuse(entry + "needs an account.");
  return has_account(AccountNo(), *AdoConnectionObject()) ||
         refuse(entry + "names an unknown account \"" + AccountNo() + "\".");
}

bool AccountsPayable::AP_Insert_Transaction() {
  if (!complete()) return false;
  const Connection& connection = *AdoConnectionObject();
  // The balance first: it tells whether the vendor is there, and then holds it until the client's
  // transaction ends.
  const Owed owed{APLCreditAmount() - APLDebitAmount(), FCAPLCreditAmount() - FCAPLDebitAmount()};
  if (!move_balance(VendorCode(), owed, connection)) {
    return refuse("The payables entry of document \"" + DocumentNo() +
                  "\" names an unknown vendor \"" + VendorCode() + "\".");
  }
  auto ledger = open(sql({"Select * from Accounts_Payable_Ledger"}), Dynamic);
  ledger.AddNew();
  write_columns<const AP>(kEntry, *this, ledger);
  ledger.Update();
  return true;
}

bool AccountsPayable::APL_Delete() {
  if (!AdoConnectionObject()) return refuse("Invalid Connection.");
  if (trim(DocumentNo()).empty()) {
    return refuse("Payables entries are deleted by document number, and there is none.");
  }
  // Deleted and told in one step: of two callers only one takes an entry's effect back. By vendor,
  // so that two of them wait for each other in one order.
  auto gone = database::open_recordset(
      sql({"Delete From Accounts_Payable_Ledger Where Document_No=", text(DocumentNo()),
           " Returning Vendor_Code, APL_Debit_Amount, APL_Credit_Amount, FC_APL_Debit_Amount,"
           " FC_APL_Credit_Amount"}),
      *AdoConnectionObject(), Keyset);
  std::map<std::string, Owed> by_vendor;
  for (; !gone.IsEOF(); gone.MoveNext()) {
    Owed& owed = by_vendor[gone("Vendor_Code").value().text_or_empty()];
    owed.home += amount(gone, "APL_Debit_Amount") - amount(gone, "APL_Credit_Amount");
    owed.foreign += amount(gone, "FC_APL_Debit_Amount") - amount(gone, "FC_APL_Credit_Amount");
  }
  for (const auto& [vendor, owed] : by_vendor) move_balance(vendor, owed, *AdoConnectionObject());
  return true;
}

namespace {

using Of = MembersOf<AccountsPayable, Nulls::read_as_empty>;

constexpr Member kMembers[] = {
    Of::property<&AP::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&AP::CompanyPrefix>("CompanyPrefix"),
    Of::property<&AP::BranchPrefix>("BranchPrefix"),
    Of::property<&AP::DocumentPrefix>("DocumentPrefix"),
    Of::property<&AP::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&AP::VendorCode>("VendorCode"),
    Of::property<&AP::AccountNo>("AccountNo"),
    Of::property<&AP::DocumentNo>("DocumentNo"),
    Of::property<&AP::APLDate>("APLDate"),
    Of::property<&AP::APLDescription>("APLDescription"),
    Of::property<&AP::APLComments>("APLComments"),
    Of::property<&AP::APLDebitAmount>("APLDebitAmount"),
    Of::property<&AP::APLCreditAmount>("APLCreditAmount"),
    Of::property<&AP::FCAPLDebitAmount>("FCAPLDebitAmount"),
    Of::property<&AP::FCAPLCreditAmount>("FCAPLCreditAmount"),
    Of::property<&AP::CurrencyCode>("CurrencyCode"),
    Of::property<&AP::CurrencySymbol>("CurrencySymbol"),
    Of::property<&AP::LastUpdate>("LastUpdate"),
    Of::property<&AP::Refno>("Refno"),
    Of::property<&AP::RefDate>("RefDate"),
    Of::property<&AP::ErrDesc>("ErrDesc"),
    Of::method<&AP::AP_Insert_Transaction>("AP_Insert_Transaction"),
    Of::method<&AP::APL_Delete>("APL_Delete"),
};

}  // namespace

const Interface& accounts_payable_interface() {
  static constexpr Interface kInterface("OmbrixAccounts.AccountsPayable", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
