#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "ombrix/purchase/purchase_invoice.h"

#include "frame/cells.h"

namespace ombrix::purchase {

/// A grid row on its way to `Purchase_Invoice_Detail`.
struct InvoiceLine : GridLine {
  const PurchaseInvoice& document;
  std::int32_t serial = 0;                      ///< `SL_No`
  std::optional<double> overall_fc_discount{};  ///< shares of the overall discount
  std::optional<double> overall_discount{};
};

/// The key columns of `Purchase_Invoice_Master`, written when the row is new.
std::span<const Column<PurchaseInvoice>> invoice_key_columns();
/// The others, written by every save.
std::span<const Column<PurchaseInvoice>> invoice_master_columns();
std::span<const Column<InvoiceLine>> invoice_detail_columns();

}  // namespace ombrix::purchase
