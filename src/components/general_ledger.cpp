#include "components/general_ledger.h"

#include "frame/columns.h"

namespace ombrix::components {

using database::any_text;
using database::number;
using database::sql;

namespace {

using namespace rule;

constexpr Column<GeneralLedger> kJournal[] = {
    {"Document_No", always<&GeneralLedger::DocumentNo>},
    {"Document_Prefix", always<&GeneralLedger::DocumentPrefix>},
    {"GL_Date", always<&GeneralLedger::GLDate>},
    {"Currency_Code", always<&GeneralLedger::CurrencyCode>},
    {"Currency_Symbol", always<&GeneralLedger::CurrencySymbol>},
    {"GL_Description", always<&GeneralLedger::GLDescription>},
    {"GL_Comments", always<&GeneralLedger::GLComments>},
    {"Account_No", always<&GeneralLedger::AccountNo>},
    {"GL_Debit_Amount", always<&GeneralLedger::GLDebitAmount>},
    {"GL_Credit_Amount", always<&GeneralLedger::GLCreditAmount>},
    {"FC_GL_Debit_Amount", always<&GeneralLedger::FCGLDebitAmount>},
    {"FC_GL_Credit_Amount", always<&GeneralLedger::FCGLCreditAmount>},
    {"Foreign_Currency_Flag", always<&GeneralLedger::ForeignCurrencyFlag>},
    {"Last_Update", always<&GeneralLedger::LastUpdate>},
};

}  // namespace

bool GeneralLedger::GLInsert() {
  constexpr std::string_view kWork = "Ledger line";
  if (!ready(kWork, {{"DocumentNo", DocumentNo()}, {"AccountNo", AccountNo()}})) return false;
  if (!has_account(AccountNo())) return unknown(kWork, AccountNo());
  auto line = open(sql({"Select * From General_Ledger"}), Dynamic);
  line.AddNew();
  write_columns(kJournal, *this, line);
  line.Update();
  return true;
}

bool GeneralLedger::COAPosting(std::string& account, double& amount) {
  constexpr std::string_view kWork = "Account balance";
  if (!ready(kWork, {{"AccountNo", account}})) return false;
  const auto moved =
      execute(sql({"Update Chart_Of_Accounts Set Current_Balance = Coalesce(Current_Balance, 0) + ",
                   number(amount), " Where Account_No=", any_text(account)}));
  return moved > 0 || unknown(kWork, account);
}

bool GeneralLedger::unknown(std::string_view work, const std::string& account) {
  return refuse(std::string(work) + ": account \"" + account +
                "\" is not in the chart of accounts.");
}

namespace {

using Of = MembersOf<GeneralLedger, Nulls::read_as_empty>;

constexpr Member kMembers[] = {
    Of::property<&GeneralLedger::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&GeneralLedger::DocumentNo>("DocumentNo"),
    Of::property<&GeneralLedger::DocumentPrefix>("DocumentPrefix"),
    Of::property<&GeneralLedger::GLDate>("GLDate"),
    Of::property<&GeneralLedger::CurrencyCode>("CurrencyCode"),
    Of::property<&GeneralLedger::CurrencySymbol>("CurrencySymbol"),
    Of::property<&GeneralLedger::GLDescription>("GLDescription"),
    Of::property<&GeneralLedger::GLComments>("GLComments"),
    Of::property<&GeneralLedger::AccountNo>("AccountNo"),
    Of::property<&GeneralLedger::GLDebitAmount>("GLDebitAmount"),
    Of::property<&GeneralLedger::GLCreditAmount>("GLCreditAmount"),
    Of::property<&GeneralLedger::FCGLDebitAmount>("FCGLDebitAmount"),
    Of::property<&GeneralLedger::FCGLCreditAmount>("FCGLCreditAmount"),
    Of::property<&GeneralLedger::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&GeneralLedger::LastUpdate>("LastUpdate"),
    Of::property<&GeneralLedger::ErrDesc>("ErrDesc"),
    Of::method<&GeneralLedger::GLInsert>("GLInsert"),
    Of::method<&GeneralLedger::COAPosting>("COAPosting"),
};

}  // namespace

const Interface& general_ledger_interface() {
  static constexpr Interface kInterface("OmbrixAccounts.GeneralLedger", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
