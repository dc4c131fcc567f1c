#pragma once

#include "hosting/interface.h"

namespace ombrix::purchase {

/// The interface table of `CashPurchase`.
const Interface& cash_purchase_interface();

}  // namespace ombrix::purchase
