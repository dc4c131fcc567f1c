#include "frame/vendor_accounts.h"

#include "base/text.h"

namespace ombrix {

VendorAccounts::VendorAccounts(const Asker& asker)
    : asker_(asker), component_(asker.sibling("OmbrixAccounts.AccountPreferences")) {
  if (!asker.connection) raise_not_set();
  component_.set("ConnectionString", asker.connection->ConnectionString());
}

bool VendorAccounts::read(std::string& company, std::string& branch) {
  return component_.call("Get_Account_Preferences", {&company, &branch}) ||
         asker_.refused_by(component_);
}

bool VendorAccounts::has_payable(const std::string& account) const {
  return !trim(account).empty() || asker_.refused("Invalid Accounts Payable Account");
}

bool VendorAccounts::has_advance(const std::string& account) const {
  return !trim(account).empty() || asker_.refused("Invalid Advance Payment Account");
}

}  // namespace ombrix
