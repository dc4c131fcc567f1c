#pragma once

#include "ombrix/connection.h"

namespace ombrix {

/// Makes every table, index and view that the library and the components shipped with it use, in
/// one transaction (or inside the client's own). Safe to repeat, and from several processes at
/// once.
void create_schema(Connection& connection);

}  // namespace ombrix
