#include "components/account_preferences.h"

#include "base/raw.h"
#include "database/connection_access.h"

namespace ombrix::components {

using database::any_text;
using database::sql;

bool AccountPreferences::Get_Account_Preferences(std::string& company, std::string& branch) {
  raw(APAccountNo).clear();
  raw(AdvPmtAccountNo).clear();
  auto preferences = database::open_fresh_recordset(
      sql({"Select AP_Account_No, Adv_Pmt_Account_No From Default_Account_Preferences"
           " Where Company_Prefix=",
           any_text(company), " and Branch_Prefix=", any_text(branch)}),
      ConnectionString(), nullptr, Static);
  if (preferences.RecordCount() == 0) {
    raw(ErrDesc) =
        "No account preferences for company \"" + company + "\", branch \"" + branch + "\".";
    return false;
  }
  raw(APAccountNo) = preferences("AP_Account_No").text_or_empty();
  raw(AdvPmtAccountNo) = preferences("Adv_Pmt_Account_No").text_or_empty();
  return true;
}

namespace {

using Of = MembersOf<AccountPreferences, Nulls::read_as_empty>;

constexpr Member kMembers[] = {
    Of::property<&AccountPreferences::ConnectionString>("ConnectionString"),
    Of::property<&AccountPreferences::CompanyPrefix>("CompanyPrefix"),
    Of::property<&AccountPreferences::BranchPrefix>("BranchPrefix"),
    Of::property<&AccountPreferences::APAccountNo>("APAccountNo"),
    Of::property<&AccountPreferences::AdvPmtAccountNo>("AdvPmtAccountNo"),
    Of::property<&AccountPreferences::ErrDesc>("ErrDesc"),
    Of::method<&AccountPreferences::Get_Account_Preferences>("Get_Account_Preferences"),
};

}  // namespace

const Interface& account_preferences_interface() {
  static constexpr Interface kInterface("OmbrixAccounts.AccountPreferences", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
