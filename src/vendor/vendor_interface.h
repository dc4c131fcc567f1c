#pragma once

#include "hosting/interface.h"

namespace ombrix::purchase {

const Interface& vendor_interface();
const Interface& vendor_ob_interface();

}  // namespace ombrix::purchase
