#pragma once

#include <span>

#include "ombrix/purchase/vendor.h"

#include "frame/columns.h"

namespace ombrix::purchase {

/// What identifies a vendor, written when the row is new.
std::span<const Column<Vendor>> vendor_key_columns();
/// The others as a creation writes them.
std::span<const Column<Vendor>> vendor_created_columns();
/// The same as an update writes them.
std::span<const Column<Vendor>> vendor_updated_columns();

}  // namespace ombrix::purchase
