#pragma once

#include <span>
#include <string_view>

#include "ombrix/purchase/purchase_invoice.h"

#include "frame/fills.h"

namespace ombrix::purchase {

/// A grid row of the invoice that is filled from one of its own lines, from an open receipt line or
/// from a line of an order.
struct SourceLine : FilledLine {
  PurchaseInvoice& document;
  std::string_view order_kind{};  ///< "LPO" or "IPO", which the order's columns begin with
  double tax_rate = 0;            ///< of the order
};

using InvoiceFills = std::span<const Fill<SourceLine>>;

/// From `GRNforInvoicing`.
InvoiceFills receipt_fills();
/// From `LPO_Detail` or `IPO_Detail`: fields named from their first "_" on are those of the kind.
InvoiceFills order_fills();
/// The tax of an order's line, behind the others; only `LPO_Detail` has it.
InvoiceFills order_tax_fills();
/// From `Purchase_Invoice_Detail`, whichever way the line came in.
InvoiceFills invoice_fills(bool bills_receipts);

}  // namespace ombrix::purchase
