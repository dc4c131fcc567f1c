#pragma once

#include "hosting/shipped.h"

namespace ombrix::purchase {

Shipped grn();

}  // namespace ombrix::purchase
