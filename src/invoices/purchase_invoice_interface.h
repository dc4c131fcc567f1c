#pragma once

#include "hosting/interface.h"

namespace ombrix::purchase {

/// The dispatch interface `_PurchaseInvoice`.
const Interface& purchase_invoice_interface();

}  // namespace ombrix::purchase
