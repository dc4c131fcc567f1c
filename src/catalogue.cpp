#include "ombrix/purchase/cash_purchase.h"
#include "ombrix/purchase/grn.h"
#include "ombrix/purchase/lpo.h"
#include "ombrix/purchase/purchase_invoice.h"
#include "ombrix/purchase/purchase_return.h"
#include "ombrix/purchase/vendor.h"
#include "ombrix/purchase/vendor_ob.h"

#include "cash/cash_purchase_interface.h"
#include "components/components.h"
#include "hosting/hosted.h"
#include "hosting/shipped.h"
#include "invoices/purchase_invoice_interface.h"
#include "orders/lpo_interface.h"
#include "receipts/grn_interface.h"
#include "returns/purchase_return_interface.h"
#include "vendor/vendor_interface.h"

namespace ombrix {

namespace {

template <class C>
Shipped business_class(const Interface& interface) {
  return shipped_as<C>(Shipped::Role::business_class, interface);
}

}  // namespace

std::span<const Shipped> shipped() {
  static const Shipped kShipped[] = {
      business_class<purchase::LPO>(purchase::lpo_interface()),
      business_class<purchase::GRN>(purchase::grn_interface()),
      business_class<purchase::Vendor>(purchase::vendor_interface()),
      business_class<purchase::VendorOB>(purchase::vendor_ob_interface()),
      business_class<purchase::PurchaseInvoice>(purchase::purchase_invoice_interface()),
      business_class<purchase::PurchaseReturn>(purchase::purchase_return_interface()),
      business_class<purchase::CashPurchase>(purchase::cash_purchase_interface()),
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
