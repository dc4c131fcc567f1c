#include <string>

#include "ombrix/property.h"

#include "base/raw.h"
#include "components/component.h"
#include "components/components.h"
#include "database/connection_access.h"

namespace ombrix::components {

using database::any_text;
using database::sql;

namespace {

/// `OmbrixAccounts.AccountPreferences`: the payable and the advance payment account of a branch,
/// read through `ConnectionString`.
class AccountPreferences final {
 public:
  Text ConnectionString;
  /// Held; the branch is the one that `Get_Account_Preferences` is given.
  Text CompanyPrefix;
  Text BranchPrefix;
  Property<std::string, Access::get> APAccountNo;
  Property<std::string, Access::get> AdvPmtAccountNo;
  Property<std::string, Access::get> ErrDesc;

  /// Reads the two accounts; one that was never chosen reads as "". False with a reason in
  /// `ErrDesc` for a branch without preferences, and then both are ""; failures of the database
  /// rise.
  bool Get_Account_Preferences(std::string& company, std::string& branch);
};

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

using Of = MembersOf<AccountPreferences>;

constexpr Member kMembers[] = {
    Of::property<&AccountPreferences::ConnectionString>("ConnectionString"),
    Of::property<&AccountPreferences::CompanyPrefix>("CompanyPrefix"),
    Of::property<&AccountPreferences::BranchPrefix>("BranchPrefix"),
    Of::property<&AccountPreferences::APAccountNo>("APAccountNo"),
    Of::property<&AccountPreferences::AdvPmtAccountNo>("AdvPmtAccountNo"),
    Of::property<&AccountPreferences::ErrDesc>("ErrDesc"),
    Of::method<&AccountPreferences::Get_Account_Preferences>("Get_Account_Preferences"),
};

constexpr Interface kInterface("OmbrixAccounts.AccountPreferences", kMembers);

}  // namespace

Shipped account_preferences() {
  return component<AccountPreferences>(kInterface);
}

}  // namespace ombrix::components
