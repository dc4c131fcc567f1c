#pragma once

#include "hosting/interface.h"

namespace ombrix::purchase {

/// The interface table of `GRN`.
const Interface& grn_interface();

}  // namespace ombrix::purchase
