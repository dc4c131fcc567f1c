#include "cash/cash_purchase_interface.h"
#include "components/components.h"
#include "invoices/purchase_invoice_interface.h"
#include "orders/lpo_interface.h"
#include "receipts/grn_interface.h"
#include "returns/purchase_return_interface.h"
#include "vendor/vendor_interface.h"

namespace ombrix {

std::span<const Shipped> shipped() {
  static const Shipped kShipped[] = {
      purchase::lpo(),
      purchase::grn(),
      purchase::vendor(),
      purchase::vendor_ob(),
      purchase::purchase_invoice(),
      purchase::purchase_return(),
      purchase::cash_purchase(),
      components::account_preferences(),
      components::accounts_payable(),
      components::counter_transaction(),
      components::debit_credit_note(),
      components::general(),
      components::general_ledger(),
      components::inventory(),
      components::location_stock(),
      components::pdc(),
      components::purchase_log(),
      components::stock_movement(),
  };
  return kShipped;
}

}  // namespace ombrix
