#include "scenarios/order.h"

#include <ombrix/grid.h>
#include <ombrix/purchase/lpo.h>

#include "scenarios/company.h"
#include "scenarios/standing.h"

namespace ombrix::bench {

namespace {

void seed(Connection& books, int standing) {
  seed_company(books);
  seed_orders(books, standing);
}

/// Answers the amount of the line.
double fill_line(Grid& grid, std::int32_t row) {
  const int line = row - 1;
  const double quantity = 1 + line % 9;
  const double amount = quantity * 19;
  put_cells(grid, row,
            {{1, item_of_line(line)},
             {2, "HF-" + item_of_line(line)},
             {3, "An item, line " + std::to_string(row)},
             {4, "Carton"},
             {5, "CTN"},
             {6, double(kCarton)},
             {7, quantity},
             {8, 20.0},
             {9, 5.0},
             {10, quantity},
             {12, amount},
             {15, kStockAccount},
             {16, "AA01PRJ07"},
             {18, 0.0},
             {20, line % 2 == 0 ? "1" : "0"}});
  return amount;
}

void fill(purchase::LPO& order, const std::shared_ptr<Connection>& books, int lines) {
  set_up(order, books, "LPO");
  order.AmtDig = 2;
  order.LPODate = order.LPODueDate = Date::parse(kDay);
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

const Scenario kOrder{.name = "order", .seed = seed, .document = order_document};

}  // namespace ombrix::bench
