#include "scenarios/cash_purchase.h"

#include <ombrix/purchase/cash_purchase.h>

#include "scenarios/company.h"
#include "scenarios/standing.h"

namespace ombrix::bench {

namespace {

constexpr double kPrice = 19;

void seed(Connection& books, int standing) {
  seed_company(books);
  seed_cash_purchases(books, standing);
}

/// Answers the amount of the line.
double fill_line(Grid& grid, std::int32_t row) {
  const int line = row - 1;
  const double quantity = 1 + line % 9;
  const double amount = quantity * kPrice;
  put_cells(grid, row,
            {{1, item_of_line(line)},
             {2, "HF-" + item_of_line(line)},
             {3, "An item, line " + std::to_string(row)},
             {4, 1.0},
             {5, "Carton"},
             {6, double(kCarton)},
             {7, quantity},
             {8, kPrice},
             {9, kPrice},
             {13, amount},
             {14, amount},
             {16, "Main store"},
             {17, kStockAccount},
             {18, "AA01PRJ07"},
             {19, "07"},
             {20, "MAIN"},
             {21, 0.0},
             {23, line % 2 == 0 ? "Taxable" : "Exempted"}});
  return amount;
}

void fill(purchase::CashPurchase& purchase, const std::shared_ptr<Connection>& books,
          const char* payment) {
  set_up(purchase, books, "CPN");
  purchase.AmtDig = "2";
  purchase.CashPurInvDate = purchase.VendorRefInvoiceDate = Date::parse(kDay);
  purchase.VendorRefInvoiceNo = "HF-77120";
  purchase.Purchase_Type = "Item";
  purchase.PurchaseLogPrefix = "PLG";
  purchase.StockMovementPrefix = "STM";
  purchase.Payment_Type = payment;
  purchase.Cheque_Bank_AccountNo = "AA01GL1010";
  purchase.ChequeNo = "100451";
  purchase.ChequeDate = Date::parse(kDay);
  purchase.ChequeToPay = kVendorName;
  purchase.TaxCode = "PUR12";
  purchase.TaxPercent = kTaxPercent;
  purchase.TaxType = "CP";
}

Document document_paid_by(const char* payment, const std::shared_ptr<Connection>& books,
                          int lines) {
  const auto purchase = std::make_shared<purchase::CashPurchase>();
  fill(*purchase, books, payment);
  const auto grid = std::make_shared<MemoryGrid>(lines + 1, /*columns*/ 24);
  double amount = 0;
  for (std::int32_t row = 1; row <= lines; ++row) amount += fill_line(*grid, row);
  purchase->GridName = grid;
  return {.create = [=] { return purchase->Create_Cash_Purchase_Invoice(); },
          .process = [=] { return purchase->Process_Cash_Purchase(); },
          .reason = [=] { return purchase->ErrDesc(); },
          .prepare =
              [=] {
                purchase->CashPurInvFCSubTotal = purchase->CashPurInvFCAmount = amount;
                purchase->CashPurInvAmount = amount;
                purchase->TaxAmount = amount * kTaxPercent / 100;  // posting it took it off
                return true;
              }};
}

Document cash_document(const std::shared_ptr<Connection>& books, int lines) {
  return document_paid_by("Cash", books, lines);
}
Document cheque_document(const std::shared_ptr<Connection>& books, int lines) {
  return document_paid_by("Cheque", books, lines);
}

}  // namespace

const Scenario kCash{.name = "cash", .seed = seed, .document = cash_document};
const Scenario kCheque{.name = "cheque", .seed = seed, .document = cheque_document};

}  // namespace ombrix::bench
