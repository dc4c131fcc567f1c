#include "components/chart_of_accounts.h"

#include "frame/database/connection_access.h"

namespace ombrix::components {

using database::any_text;
using database::sql;

bool has_account(const std::string& account, const Connection& connection) {
  const auto found =
      sql({"Select Account_No From Chart_Of_Accounts Where Account_No=", any_text(account)});
  return database::open_recordset(found, connection, ForwardOnly).RecordCount() > 0;
}

}  // namespace ombrix::components
