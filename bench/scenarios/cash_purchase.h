#pragma once

#include "scenario.h"

namespace ombrix::bench {

/// Goods are bought, stored and paid at once; half of the lines are taxed.
extern const Scenario kCash;
extern const Scenario kCheque;

}  // namespace ombrix::bench
