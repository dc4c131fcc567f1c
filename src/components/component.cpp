#include "components/component.h"

#include "base/text.h"
#include "database/statement.h"

namespace ombrix::components {

bool Component::ready(std::string_view work, Keys keys) {
  if (!AdoConnectionObject()) return refused(std::string(work) + ": no connection was given.");
  for (const auto& [name, value] : keys) {
    if (!trim(value).empty()) continue;
    return refused(std::string(work) + ": " + std::string(name) + " is empty.");
  }
  return true;
}

bool Component::has_account(const std::string& account) const {
  return !open(database::sql({"Select Account_No From Chart_Of_Accounts Where Account_No=",
                              database::any_text(account)}),
               ForwardOnly)
              .IsEOF();
}

}  // namespace ombrix::components
