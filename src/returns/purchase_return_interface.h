#pragma once

#include "hosting/shipped.h"

namespace ombrix::purchase {

Shipped purchase_return();

}  // namespace ombrix::purchase
