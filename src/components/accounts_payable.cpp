#include "components/accounts_payable.h"

#include <map>

#include "frame/columns.h"

namespace ombrix::components {

using database::any_text;
using database::number;
using database::sql;

namespace {

using namespace rule;
using AP = AccountsPayable;

Written reference_date(AP& entry) {
  return entry.RefDate().is_zero() ? Value(Null{}) : Value(entry.RefDate());
}

constexpr Column<AP> kEntry[] = {
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
    {"Ref_Date", reference_date},
};

double amount(Recordset& entries, std::string_view column) {
  const Value value = entries.read(column);
  return value.is_null() ? 0 : value.to_number();
}

}  // namespace

bool AccountsPayable::move_balance(const std::string& vendor, const Owed& owed) const {
  return execute(sql({"Update Vendor_Master Set Vendor_Balance = Coalesce(Vendor_Balance, 0) + ",
                      number(owed.home), ", Vendor_Fc_Balance = Coalesce(Vendor_Fc_Balance, 0) + ",
                      number(owed.foreign), " Where Vendor_Code=", any_text(vendor)})) > 0;
}

bool AccountsPayable::AP_Insert_Transaction() {
  constexpr std::string_view kWork = "Payables entry";
  if (!ready(kWork, {{"DocumentNo", DocumentNo()},
                     {"VendorCode", VendorCode()},
                     {"AccountNo", AccountNo()}})) {
    return false;
  }
  const auto unknown = [&](const std::string& what) {
    return refuse(std::string(kWork) + " of document \"" + DocumentNo() + "\": " + what);
  };
  if (!has_account(AccountNo())) {
    return unknown("account \"" + AccountNo() + "\" is not in the chart of accounts.");
  }
  // The balance first: it tells whether the vendor is there, and holds it until the client's
  // transaction ends.
  const Owed owed{APLCreditAmount() - APLDebitAmount(), FCAPLCreditAmount() - FCAPLDebitAmount()};
  if (!move_balance(VendorCode(), owed)) {
    return unknown("there is no vendor \"" + VendorCode() + "\".");
  }
  auto ledger = open(sql({"Select * from Accounts_Payable_Ledger"}), Dynamic);
  ledger.AddNew();
  write_columns(kEntry, *this, ledger);
  ledger.Update();
  return true;
}

bool AccountsPayable::APL_Delete() {
  if (!ready("Deletion of payables entries", {{"DocumentNo", DocumentNo()}})) return false;
  // Deleted and told in one step: of two callers only one takes an entry's effect back.
  auto gone =
      open(sql({"Delete From Accounts_Payable_Ledger Where Document_No=", any_text(DocumentNo()),
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
