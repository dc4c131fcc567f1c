#pragma once

#include "scenario.h"

namespace ombrix::bench {

/// A receipt is billed, one line in five dearer than it was received.
extern const Scenario kInvoice;
/// What a vendor may still bill is read into the grid.
extern const Scenario kOpenReceipts;

}  // namespace ombrix::bench
