#pragma once

#include "hosting/interface.h"

namespace ombrix::purchase {

/// The dispatch interface `_PurchaseReturn`.
const Interface& purchase_return_interface();

}  // namespace ombrix::purchase
