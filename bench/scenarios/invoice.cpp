#include "scenarios/invoice.h"

#include <ombrix/purchase/purchase_invoice.h>

#include "database/connection_access.h"
#include "scenarios/company.h"
#include "scenarios/standing.h"

namespace ombrix::bench {

namespace {

using database::number;
using database::sql;
using database::text;

constexpr double kReceivedAt = 19;
constexpr double kDiscountPercent = 2;
constexpr std::int32_t kReceiptColumn = 22;

void seed(Connection& books, int standing) {
  seed_company(books);
  seed_receipts(books, standing);
  seed_invoices(books, standing);
}

/// A receipt that nothing was billed of.
void receive(const std::string& receipt, const char* vendor, int lines, const Connection& books) {
  database::execute(
      sql({"Insert Into Goods_Receive_Master (GRN_No, GRN_Identity, Company_Prefix, Branch_Prefix,"
           " Document_Prefix, GRN_Date, GRN_Ref_Document_No, GRN_Order_Date, GRN_Invoiced_flag,"
           " Processed_Flag, Vendor_Code, Vendor_Ref_Document_Date, Currency_Code, Purchase_Type)"
           " Values (",
           text(receipt), ", 0, 'AA', '01', 'GRN', ", text(kDay), ", 'AA01LPO7', ", text(kDay),
           ", 0, 1, ", text(vendor), ", ", text(kDay), ", 'EUR', 'Item')"}),
      books);
  database::execute(
      sql({"Insert Into Goods_Receive_Detail (GRN_No, SL_No, Item_Code, Item_Name, Unit_Name,"
           " Unit_Qty, grn_qty, POD_SL_NO, Account_No, location_ID, TaxType, TaxPercent,"
           " GRN_Unit_Price, GRN_Item_Amount, GRN_FC_Item_Amount, GRN_Item_Disc_Amount,"
           " GRN_FC_Item_Disc_Amount, Invoiced_Flag) With Recursive Line(N) As"
           " (Select 1 Union All Select N + 1 From Line Where N < ",
           number(lines), ") Select ", text(receipt),
           ", N, 'AA' || (1000 + (N - 1) % 200), 'An item of the company', 'Carton', 12,"
           " 1 + (N - 1) % 9, N, 'AA01GL5000', 'MAIN', 'Taxable', 12, 19, (1 + (N - 1) % 9) * 19,"
           " (1 + (N - 1) % 9) * 19, 0, 0, 0 From Line"}),
      books);
}

/// Answers the amount billed.
double fill_line(Grid& grid, std::int32_t row) {
  const int line = row - 1;
  const double quantity = 1 + line % 9;
  const double price = line % 5 == 0 ? kReceivedAt + 1 : kReceivedAt;
  const double received = quantity * kReceivedAt;
  const double billed = quantity * price;
  put_cells(grid, row,
            {{1, "True"},
             {2, "7"},
             {3, kDay},
             {4, "HF-77120"},
             {5, kDay},
             {6, item_of_line(line)},
             {7, "HF-" + item_of_line(line)},
             {8, "An item, line " + std::to_string(row)},
             {9, 1.0},
             {10, "Carton"},
             {11, double(kCarton)},
             {12, quantity},
             {16, billed},
             {17, billed},
             {19, "AA01PRJ07"},
             {20, row},
             {23, kDay},
             {24, price},
             {25, received},
             {26, received},
             {27, kReceivedAt},
             {28, "AA01LPO7"},
             {29, "GRN"},
             {32, billed},
             {34, billed},
             {35, line % 2 == 0 ? double(kTaxPercent) : 0.0}});
  return billed;
}

void fill(purchase::PurchaseInvoice& invoice, const std::shared_ptr<Connection>& books,
          const std::shared_ptr<Grid>& grid) {
  set_up(invoice, books, "PIN");
  invoice.AmtDig = 2;
  invoice.PurchaseInvDate = invoice.VendorRefInvoiceDate = Date::parse(kDay);
  invoice.VendorRefInvoiceNo = "HF-77120";
  invoice.Purchase_Type = "Item";
  invoice.InvoiceType = "GRN";
  invoice.TaxPercent = kTaxPercent;
  invoice.PInvoiceGridName = grid;
}

void total(purchase::PurchaseInvoice& invoice, double subtotal) {
  const double discount = subtotal * kDiscountPercent / 100;
  invoice.PurchaseInvSubTotal = invoice.PurchaseInvFCSubTotal = subtotal;
  invoice.PurchaseInvDiscPercent = kDiscountPercent;
  invoice.PurchaseInvDiscAmount = invoice.PurchaseInvFCDiscAmount = discount;
  invoice.PurchaseInvAmount = invoice.PurchaseInvFCAmount = subtotal - discount;
}

Document invoice_document(const std::shared_ptr<Connection>& books, int lines) {
  const auto invoice = std::make_shared<purchase::PurchaseInvoice>();
  const auto grid = std::make_shared<MemoryGrid>(lines + 1, /*columns*/ 36);
  double subtotal = 0;
  for (std::int32_t row = 1; row <= lines; ++row) subtotal += fill_line(*grid, row);
  fill(*invoice, books, grid);
  return {.create = [=] { return invoice->Create_Purchase_Invoice(); },
          .process = [=] { return invoice->Process_Invoice(); },
          .reason = [=] { return invoice->ErrDesc(); },
          .prepare =
              [=, count = 0]() mutable {
                const std::string receipt = "AA01GRNB" + std::to_string(++count);
                receive(receipt, kVendor, lines, *books);
                for (std::int32_t row = 1; row <= lines; ++row) {
                  grid->TextMatrix(row, kReceiptColumn, receipt);
                }
                total(*invoice, subtotal);  // posting it turned its sign
                return true;
              }};
}

/// Vendors of whom nothing else is open, as a receipt in twenty is.
struct Waiting {
  const char* vendor;
  int lines;
};
constexpr Waiting kWaiting[] = {{"AAV7", 10}, {"AAV8", 1000}};

void seed_open_receipts(Connection& books, int standing) {
  seed_company(books);
  seed_receipts(books, standing);
  constexpr int kLinesOfReceipt = 10;
  for (const Waiting& waiting : kWaiting) {
    for (int receipt = 0; receipt < waiting.lines / kLinesOfReceipt; ++receipt) {
      receive("AA01GRN" + std::string(waiting.vendor) + std::to_string(receipt), waiting.vendor,
              kLinesOfReceipt, books);
    }
  }
}

Document open_receipts_document(const std::shared_ptr<Connection>& books, int lines) {
  const auto invoice = std::make_shared<purchase::PurchaseInvoice>();
  const auto grid = std::make_shared<MemoryGrid>(1, /*columns*/ 36);
  fill(*invoice, books, grid);
  for (const Waiting& waiting : kWaiting) {
    if (waiting.lines == lines) invoice->VendorCode = waiting.vendor;
  }
  return {.create = [=] { return invoice->Get_GRN_details() && grid->Rows() == lines + 1; },
          .process = {},
          .reason = [=] { return "open lines were not read " + invoice->ErrDesc(); }};
}

}  // namespace

const Scenario kInvoice{.name = "invoice", .seed = seed, .document = invoice_document};
const Scenario kOpenReceipts{.name = "open-receipts",
                             .seed = seed_open_receipts,
                             .document = open_receipts_document,
                             .unit = "open lines",
                             .many_in_large_books = true};

}  // namespace ombrix::bench
