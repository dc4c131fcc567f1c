#include "scenarios/order.h"

#include <ombrix/grid.h>
#include <ombrix/purchase/lpo.h>
#include <utility>

#include "scenarios/company.h"

namespace ombrix::bench {

namespace {

constexpr const char* kSeries = "LPO";
constexpr int kLinesOfStanding = 10;

void seed_orders(Connection& books, int standing) {
  seed_items(books);
  seed_series(books, kSeries, standing);
  books.Execute(counting("Standing", standing) +
                "Insert Into LPO_Master (LPO_No, LPO_Identity, Company_Prefix, Branch_Prefix, "
                "Document_Prefix, LPO_Date, Vendor_Code, Vendor_name, Currency_Code, "
                "Last_Update, Processed_Flag) Select 'AA01LPO' || N, N, 'AA', '01', 'LPO', "
                "'2024-01-01 00:00:00', 'AAV' || (N % 500), 'A vendor', 'EUR', "
                "'2024-01-01 00:00:00', 1 From Standing");
  books.Execute(counting("Line", kLinesOfStanding) +
                "Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, Item_Name, Unit_Name, "
                "Unit_Qty, LPO_Qty, LPO_Unit_Price, LPO_Item_Amount, Account_No, TaxType, "
                "Last_Update) Select LPO_No, N, 'AA' || (1000 + N), 'An item of the company', "
                "'Carton', 12, 5, 9.5, 47.5, 'AA01GL5000', 'Taxable', '2024-01-01 00:00:00' "
                "From LPO_Master, Line");
}

/// Answers the amount of the line.
double fill_line(Grid& grid, std::int32_t row) {
  const int line = row - 1;
  const double quantity = 1 + line % 9;
  const double amount = quantity * 19;
  const std::pair<std::int32_t, Value> cells[] = {{1, item_of_line(line)},
                                                  {2, "HF-" + item_of_line(line)},
                                                  {3, "An item, line " + std::to_string(row)},
                                                  {4, "Carton"},
                                                  {5, "CTN"},
                                                  {6, 12.0},
                                                  {7, quantity},
                                                  {8, 20.0},
                                                  {9, 5.0},
                                                  {10, quantity},
                                                  {12, amount},
                                                  {15, "AA01GL5000"},
                                                  {16, "AA01PRJ07"},
                                                  {18, 0.0},
                                                  {20, line % 2 == 0 ? "1" : "0"}};
  for (const auto& [column, value] : cells) grid.TextMatrix(row, column, value.to_text());
  return amount;
}

void fill(purchase::LPO& order, const std::shared_ptr<Connection>& books, int lines) {
  order.ConnectionString = books->ConnectionString();
  order.AdoConnectionObject = books;
  order.CompanyPrefix = kCompany;
  order.BranchPrefix = kBranch;
  order.DocumentPrefix = kSeries;
  order.AmtDig = 2;
  order.OnlineFlag = true;
  order.LPODate = order.LPODueDate = order.LastUpdate = Date::parse(kDay);
  order.VendorCode = "AAV001";
  order.VendorName = "Harbour Foods";
  order.CurrencyCode = order.CurrencySymbol = "EUR";
  const auto grid = std::make_shared<MemoryGrid>(lines + 1, /*columns*/ 21);
  double subtotal = 0;
  for (std::int32_t row = 1; row <= lines; ++row) subtotal += fill_line(*grid, row);
  order.GridName = grid;
  order.LPODiscountPercent = 10;
  order.LPOFCDiscountAmount = subtotal / 10;
  order.LPOFCSubtotal = subtotal;
  order.LPOFCTotalAmount = subtotal - subtotal / 10;
}

Document order_document(const std::shared_ptr<Connection>& books, int lines) {
  const auto order = std::make_shared<purchase::LPO>();
  fill(*order, books, lines);
  return {.create = [order] { return order->Create_LPO(); },
          .process = [order] { return order->Process_LPO(); },
          .reason = [order] { return order->ErrDesc(); }};
}

}  // namespace

const Scenario kOrder{"order", seed_orders, order_document};

}  // namespace ombrix::bench
