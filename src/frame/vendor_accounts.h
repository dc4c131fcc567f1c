#pragma once

#include <string>
#include <string_view>

#include "frame/asker.h"

namespace ombrix {

/// The accounts on which a branch keeps its vendors, as the preferences of the suite have them.
class VendorAccounts {
 public:
  explicit VendorAccounts(const Asker& asker);

  /// For a component that wants to know the branch beforehand.
  void tell(std::string_view member, const std::string& value) { component_.set(member, value); }
  /// Company and branch come back as the component leaves them. False with its reason.
  bool read(std::string& company, std::string& branch);
  std::string payable() { return component_.get("APAccountNo").text_or_empty(); }
  std::string advance() { return component_.get("AdvPmtAccountNo").text_or_empty(); }
  /// False with a reason when the account was never chosen.
  bool has_payable(const std::string& account) const;
  bool has_advance(const std::string& account) const;

 private:
  Asker asker_;
  Sibling component_;
};

}  // namespace ombrix
