#include <algorithm>
#include <ombrix/components.h>
#include <ombrix/recordset.h>

#include "chapters.h"

namespace demo {

namespace {

using ombrix::purchase::LPO;
using Align = Table::Align;

void describe(LPO& order) {
  const ombrix::Date today = ombrix::Date::now().midnight();
  order.LPODate = today;
  order.LPODueDate = ombrix::Date::from_seconds(today.since_zero() + std::chrono::hours(24 * 14));
  order.VendorCode = "AAV001";
  order.VendorName = "Harbour Foods";
  order.Purchase_Type = "Item";
  order.TaxCode = "PUR12";
  order.TaxDescription = "Purchase tax 12 %";
  order.LPOTaxPercent = 12;
  order.LPODiscountPercent = 2.5;
  order.AmtDig = 2;
}

void load(LPO& order, const Books& books, const std::string& number) {
  prepare(order, books, "LPO");
  order.LPONo = number;
  // Without a row of its own, so that a read makes room for the lines, however many there are.
  order.GridName = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 0, /*columns*/ 21);
  if (!order.Get_LPO()) throw BadInput("Get_LPO answers False: " + order.ErrDesc());
}

std::int32_t line_count(const ombrix::Grid& grid) {
  std::int32_t row = 1;
  while (row < grid.Rows() && !grid.TextMatrix(row, 3).empty()) ++row;
  return row - 1;
}

void print_lines(const ombrix::Grid& grid) {
  Table table({{"#", Align::right},
               {"Item"},
               {"Description", Align::left, 24},
               {"Unit", Align::left, 13},
               {"Qty", Align::right},
               {"Price", Align::right},
               {"Disc", Align::right},
               {"Amount", Align::right},
               {"Account"},
               {"Mark"}});
  const auto amount = [&](std::int32_t row, std::int32_t column) {
    return money(grid.ValueMatrix(row, column));
  };
  const std::int32_t lines = line_count(grid);
  for (std::int32_t row = 1; row <= lines; ++row) {
    const auto cell = [&](std::int32_t column) { return grid.TextMatrix(row, column); };
    const bool free = cell(18) == "1";
    table.add({std::to_string(row), cell(1), cell(3), cell(4), cell(7), amount(row, 8),
               amount(row, 10), amount(row, 11), cell(13),
               free ? "free" : (cell(20) == "1" ? "tax" : "")});
  }
  table.print(std::cout);
}

void print_order(const std::string& title, const LPO& order) {
  std::cout << '\n' << title << "\n\n";
  Table table({{"Order", Align::left},
               {"Date"},
               {"Vendor", Align::left, 20},
               {"Subtotal", Align::right},
               {"Discount", Align::right},
               {"Tax", Align::right},
               {"Total", Align::right},
               {"Cur"},
               {"Processed"}});
  table.add({order.LPONo(), order.LPODate().short_text(), order.VendorName(),
             money(order.LPOSubTotal()), money(order.LPODiscountAmount()),
             money(order.LPOTaxAmount()), money(order.LPOTotalAmount()), order.CurrencyCode(),
             order.ProcessedFlag() ? "yes" : "no"});
  table.print(std::cout);
  print_lines(*order.GridName());
}

/// What an item's record says, through the suite's own component for it.
std::string item_field(const Books& books, const std::string& code, const char* field) {
  const auto general = ombrix::create_object("OmbrixSystem.General");
  general->set("AdoConnectionObject", books);
  std::vector<ombrix::Value> arguments{"Item_Master", field, "Item_Code", code, false};
  return general->call("GetFldValue", arguments).to_text();
}

/// One row for each item of an order, with its ordered quantity as it stands now.
struct ItemRow {
  std::string code, description, type, ordered;
};
std::vector<ItemRow> items_of(const std::vector<OrderLine>& lines, const Books& books) {
  std::vector<ItemRow> rows;
  for (const OrderLine& line : lines) {
    const std::string code = "AA" + line.item;
    const auto same = [&](const ItemRow& row) { return row.code == code; };
    if (std::any_of(rows.begin(), rows.end(), same)) continue;
    rows.push_back({code, line.description, item_field(books, code, "Item_Type"),
                    item_field(books, code, "Purchase_Order_Qty")});
  }
  return rows;
}

void print_items(const std::vector<ItemRow>& before, const std::vector<ItemRow>& after) {
  std::cout << "Ordered quantities of the items, in base units (types 0 and 3 are stocked)\n\n";
  Table table({{"Item"},
               {"Description", Align::left, 40},
               {"Type"},
               {"Before", Align::right},
               {"After", Align::right}});
  for (std::size_t i = 0; i < before.size(); ++i) {
    const bool known = !before[i].type.empty();
    table.add({before[i].code, before[i].description, known ? before[i].type : "none",
               before[i].ordered, after[i].ordered});
  }
  table.print(std::cout);
}

/// A line without an account is refused, and nothing of the attempt stays.
void show_refusal(LPO& order, const Books& books) {
  const std::int32_t last = line_count(*order.GridName());
  order.GridName()->TextMatrix(last, 15, "");
  const bool answer = all_or_nothing(*books, [&] { return order.Update_LPO(); });
  LPO kept;
  load(kept, books, order.LPONo());
  std::cout << "A refused input: line " << last << " of " << order.LPONo()
            << " without its account\n\n";
  Table table({{"Method"}, {"Answer"}, {"ErrDesc"}, {"Lines kept", Align::right}});
  table.add({"Update_LPO", answer ? "True" : "False", order.ErrDesc(),
             std::to_string(line_count(*kept.GridName()))});
  table.print(std::cout);
}

}  // namespace

std::string order_goods(const Books& books, std::vector<OrderLine> lines) {
  print_chapter("Order");
  LPO order;
  prepare(order, books, "LPO");
  describe(order);
  fill(order, lines);
  run("Create_LPO", "saved under a temporary number", order, books,
      [&] { return order.Create_LPO(); });
  const std::string temporary = order.LPONo();

  lines.front().quantity += 2;
  order.LPOComments = "Line 1 raised by 2 by phone";
  fill(order, lines);
  run("Update_LPO", "line 1 raised by 2", order, books, [&] { return order.Update_LPO(); });
  const std::vector<ItemRow> before = items_of(lines, books);

  run("Process_LPO", "the final number", order, books, [&] { return order.Process_LPO(); });
  LPO processed;
  load(processed, books, order.LPONo());
  print_order("What was " + temporary + ", as Get_LPO reads it now", processed);
  print_items(before, items_of(lines, books));
  show_refusal(processed, books);
  return order.LPONo();
}

}  // namespace demo
