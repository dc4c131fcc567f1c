#include "scenarios/receipt.h"

#include <ombrix/purchase/grn.h>

#include "database/connection_access.h"
#include "scenarios/company.h"
#include "scenarios/standing.h"

namespace ombrix::bench {

namespace {

using database::number;
using database::sql;
using database::text;

constexpr double kPrice = 19;

double quantity_of(int line) {
  return 1 + line % 9;
}

void seed(Connection& books, int standing) {
  seed_company(books);
  seed_orders(books, standing);
  seed_receipts(books, standing);
}

void fill_line(Grid& grid, std::int32_t row) {
  const int line = row - 1;
  const bool taxed = line % 2 == 0;
  put_cells(grid, row,
            {{1, "1"},
             {2, item_of_line(line)},
             {3, "HF-" + item_of_line(line)},
             {4, "An item, line " + std::to_string(row)},
             {5, "Carton"},
             {6, "CTN"},
             {7, double(kCarton)},
             {8, quantity_of(line)},
             {9, quantity_of(line)},
             {16, "Main store"},
             {17, row},
             {18, kStockAccount},
             {19, "AA01PRJ07"},
             {20, "MAIN"},
             {21, 0.0},
             {22, quantity_of(line)},
             {23, quantity_of(line)},
             {24, taxed ? "Taxable" : "Exempted"},
             {25, taxed ? double(kTaxPercent) : 0.0}});
}

void fill(purchase::GRN& receipt, const std::shared_ptr<Connection>& books, int lines) {
  set_up(receipt, books, "GRN");
  receipt.AmtDig = 2;
  receipt.GRNDate = receipt.OrderDate = receipt.VendorRefDocumentDate = Date::parse(kDay);
  receipt.VendorRefDocumentNo = "HF-77120";
  receipt.GRNRefDocumentPrefix = "LPO";
  receipt.PurchaseLogPrefix = "PLG";
  receipt.StockMovementPrefix = "STM";
  receipt.TaxCode = "PUR12";
  receipt.TaxPercent = kTaxPercent;
  receipt.TaxType = "GRN";
  const auto grid = std::make_shared<MemoryGrid>(lines + 1, /*columns*/ 26);
  for (std::int32_t row = 1; row <= lines; ++row) fill_line(*grid, row);
  receipt.GridName = grid;
}

/// An order that nothing was received of.
void place_order(const std::string& order, int lines, const Connection& books) {
  database::execute(
      sql({"Insert Into LPO_Master (LPO_No, Company_Prefix, Branch_Prefix, Document_Prefix,"
           " LPO_Date, Vendor_Code, LPO_Discount_Percent, Currency_Code, Processed_Flag, "
           "Invoiced_Flag, Purchase_Type) Values (",
           text(order), ", 'AA', '01', 'LPO', ", text(kDay), ", ", text(kVendor),
           ", 5, 'EUR', 1, 0, 'Item')"}),
      books);
  database::execute(
      sql({"Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, Unit_Name, Unit_Qty, LPO_Qty,"
           " LPO_Item_Amount, LPO_FCItem_Amount, LPO_Item_Discount_amount,"
           " LPO_FCItem_Discount_Amount) With Recursive Line(N) As"
           " (Select 1 Union All Select N + 1 From Line Where N < ",
           number(lines), ") Select ", text(order),
           ", N, 'AA' || (1000 + (N - 1) % 200), 'Carton', 12, 1 + (N - 1) % 9,"
           " (1 + (N - 1) % 9) * 19, (1 + (N - 1) % 9) * 19, 0, 0 From Line"}),
      books);
}

Document receipt_document(const std::shared_ptr<Connection>& books, int lines) {
  const auto receipt = std::make_shared<purchase::GRN>();
  fill(*receipt, books, lines);
  double taxed = 0;
  for (int line = 0; line < lines; line += 2) taxed += quantity_of(line) * kPrice;
  return {.create = [receipt] { return receipt->Create_GRN(); },
          .process = [receipt] { return receipt->ProcessGRN(); },
          .reason = [receipt] { return receipt->ErrDesc(); },
          .prepare =
              [=, count = 0]() mutable {
                const std::string order = "AA01LPOB" + std::to_string(++count);
                place_order(order, lines, *books);
                receipt->GRNRefDocumentNo = order;
                receipt->TaxAmount = taxed * kTaxPercent / 100;  // posting it took it off
                return true;
              }};
}

}  // namespace

const Scenario kReceipt{.name = "receipt", .seed = seed, .document = receipt_document};

}  // namespace ombrix::bench
