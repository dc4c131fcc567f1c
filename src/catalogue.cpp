#include "ombrix/purchase/cash_purchase.h"
#include "ombrix/purchase/grn.h"
#include "ombrix/purchase/lpo.h"
#include "ombrix/purchase/purchase_invoice.h"
#include "ombrix/purchase/purchase_return.h"
#include "ombrix/purchase/vendor.h"
#include "ombrix/purchase/vendor_ob.h"

#include "cash/cash_purchase_interface.h"
#include "components/account_preferences.h"
#include "components/accounts_payable.h"
#include "components/counter_transaction.h"
#include "components/debit_credit_note.h"
#include "components/general.h"
#include "components/general_ledger.h"
#include "components/inventory.h"
#include "components/location_stock.h"
#include "components/pdc.h"
#include "components/purchase_log.h"
#include "components/stock_movement.h"
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
ObjectRef make(const Interface& interface) {
  return std::make_shared<Hosted<C>>(interface);
}

template <class C>
Shipped business_class(const Interface& interface) {
  return {Shipped::Role::business_class, interface, &make<C>};
}
template <class C>
Shipped component(const Interface& interface) {
  return {Shipped::Role::component, interface, &make<C>};
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
      component<components::AccountPreferences>(components::account_preferences_interface()),
      component<components::AccountsPayable>(components::accounts_payable_interface()),
      component<components::CounterTransaction>(components::counter_transaction_interface()),
      component<components::DebitCreditNote>(components::debit_credit_note_interface()),
      component<components::General>(components::general_interface()),
      component<components::GeneralLedger>(components::general_ledger_interface()),
      component<components::Inventory>(components::inventory_interface()),
      component<components::LocationStock>(components::location_stock_interface()),
      component<components::PDC>(components::pdc_interface()),
      component<components::PurchaseLog>(components::purchase_log_interface()),
      component<components::StockMovement>(components::stock_movement_interface()),
  };
  return kShipped;
}

}  // namespace ombrix
