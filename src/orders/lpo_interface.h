#pragma once

#include "hosting/interface.h"

namespace ombrix::purchase {

/// The dispatch interface `_LPO`.
const Interface& lpo_interface();

}  // namespace ombrix::purchase
