#pragma once

#include <string>

#include "ombrix/property.h"

#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixAccounts.AccountPreferences`: the payable and the advance payment account of a branch,
/// read through `ConnectionString`.
class AccountPreferences {
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

const Interface& account_preferences_interface();

}  // namespace ombrix::components
