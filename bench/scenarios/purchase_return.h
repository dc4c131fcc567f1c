#pragma once

#include "scenario.h"

namespace ombrix::bench {

/// Goods go back, each line a layer of its item's; the tax goes back too, and a memo is raised.
extern const Scenario kReturn;
/// One line that takes up a tenth of the layers that its item has, behind many spent ones.
extern const Scenario kLayers;

}  // namespace ombrix::bench
