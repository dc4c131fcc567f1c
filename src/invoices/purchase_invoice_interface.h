#pragma once

#include "hosting/shipped.h"

namespace ombrix::purchase {

Shipped purchase_invoice();

}  // namespace ombrix::purchase
