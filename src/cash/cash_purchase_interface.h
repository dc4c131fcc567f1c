#pragma once

#include "hosting/shipped.h"

namespace ombrix::purchase {

Shipped cash_purchase();

}  // namespace ombrix::purchase
