#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "ombrix/purchase/vendor_ob.h"

#include "frame/fills.h"

namespace ombrix::purchase {

/// A grid row on its way to `Vendor_OB`.
struct OpeningLine : GridLine {
  const VendorOB& document;
  std::int32_t serial = 0;  ///< `SL_No`
};
/// A grid row that is filled from it.
struct FilledOpening : FilledLine {
  VendorOB& document;
};

/// A stored line on its way into a document.
struct OpeningBalance {
  const VendorOB& document;
  std::string ref_no{};
  Date ref_date{};
  double amount = 0;
  double fc_amount = 0;
  double exchange_rate = 0;
  std::string comments{};
  std::int32_t identity = 0;
  std::string number{};
};

std::span<const Column<OpeningLine>> opening_line_columns();
/// The cells of a line that is read.
std::span<const Fill<FilledOpening>> opening_cells();
/// `Purchase_Invoice_Master`.
std::span<const Column<OpeningBalance>> opening_invoice_columns();
/// `Payment_Master`.
std::span<const Column<OpeningBalance>> opening_payment_columns();

}  // namespace ombrix::purchase
