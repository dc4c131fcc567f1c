#pragma once

#include <string>

#include "ombrix/connection.h"

namespace ombrix::components {

/// Whether the chart of accounts has the account. Failures of the database rise.
bool has_account(const std::string& account, const Connection& connection);

}  // namespace ombrix::components
