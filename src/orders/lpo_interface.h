#pragma once

#include "hosting/shipped.h"

namespace ombrix::purchase {

Shipped lpo();

}  // namespace ombrix::purchase
