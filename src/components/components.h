#pragma once

#include "hosting/shipped.h"

namespace ombrix::components {

/// The siblings that ship, in place of what a suite has of its own under the same names.
Shipped account_preferences();
Shipped accounts_payable();
Shipped counter_transaction();
Shipped debit_credit_note();
Shipped general();
Shipped general_ledger();
Shipped inventory();
Shipped location_stock();
Shipped pdc();
Shipped purchase_log();
Shipped stock_movement();

}  // namespace ombrix::components
