#pragma once

#include "hosting/shipped.h"

namespace ombrix::purchase {

Shipped vendor();
Shipped vendor_ob();

}  // namespace ombrix::purchase
