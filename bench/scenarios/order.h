#pragma once

#include "scenario.h"

namespace ombrix::bench {

extern const Scenario kOrder;

}  // namespace ombrix::bench
