#pragma once

#include "scenario.h"

namespace ombrix::bench {

/// An order arrives as it was ordered, with half of its lines taxed.
extern const Scenario kReceipt;

}  // namespace ombrix::bench
