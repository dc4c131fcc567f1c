#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <ombrix/components.h>
#include <ombrix/recordset.h>
#include <optional>
#include <span>

#include "books.h"
#include "order_lines.h"
#include "table.h"

namespace demo {

namespace {

using ombrix::all_or_nothing;
using ombrix::Connection;
using ombrix::purchase::LPO;
using Align = Table::Align;

constexpr const char* kUsage =
    "usage: demo [--database FILE | --postgres] [LINES.csv]\n"
    "Takes a purchase order from a file of lines to its final number.\n"
    "A FILE that is not there is made; one that is there must be a purchase database.\n"
    "With --postgres OMBRIX_POSTGRES names the server: \"Driver=PostgreSQL;Host=...\".\n";

const std::string kExamples = OMBRIX_EXAMPLES;
const std::string kDatabase = OMBRIX_DEMO_DATABASE;

struct Arguments {
  std::string database;  ///< "" for the demo's own
  bool postgres = false;
  std::string lines = kExamples + "/order.csv";
};

/// No value for what is no right use.
std::optional<Arguments> parse(std::span<char*> words) {
  Arguments arguments;
  bool lines_given = false;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string word = words[i];
    if (word == "--postgres" && arguments.database.empty()) {
      arguments.postgres = true;
    } else if (word == "--database" && !arguments.postgres && i + 1 < words.size() &&
               *words[i + 1] != '\0') {
      arguments.database = words[++i];
    } else if (!word.starts_with('-') && !word.empty() && !lines_given) {
      arguments.lines = word;
      lines_given = true;
    } else {
      return std::nullopt;
    }
  }
  return arguments;
}

std::string shown(const std::string& path) {
  std::error_code error;
  const auto near = std::filesystem::proximate(path, error);
  return error ? path : near.string();
}

/// Ready for the books: connection, series, and where lines can be read to.
void prepare(LPO& order, const std::shared_ptr<Connection>& books) {
  order.ConnectionString = books->ConnectionString();
  order.AdoConnectionObject = books;
  order.CompanyPrefix = "AA";
  order.BranchPrefix = "01";
  order.DocumentPrefix = "LPO";
  order.LastUpdate = ombrix::Date::now();
  order.OnlineFlag = true;
  order.AmtDig = 2;
  // Without a row of its own, so that a read makes room for the lines, however many there are.
  order.GridName = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 0, /*columns*/ 21);
}

void describe(LPO& order) {
  const ombrix::Date today = ombrix::Date::now().midnight();
  order.LPODate = today;
  order.LPODueDate = ombrix::Date::from_seconds(today.since_zero() + std::chrono::hours(24 * 14));
  order.VendorCode = "AAV001";
  order.VendorName = "Harbour Foods";
  order.CurrencyCode = "EUR";
  order.CurrencySymbol = "EUR";
  order.Purchase_Type = "Item";
  order.TaxCode = "PUR12";
  order.TaxDescription = "Purchase tax 12 %";
  order.LPOTaxPercent = 12;
  order.LPODiscountPercent = 2.5;
}

[[noreturn]] void raise_refusal(const std::string& method, const LPO& order) {
  throw BadInput(method + " answers False: " + order.ErrDesc());
}

/// Runs one method, all or nothing, and says what came of it.
template <class Method>
void run(const char* name, const char* what, const LPO& order, Connection& books, Method method) {
  if (!all_or_nothing(books, method)) raise_refusal(name, order);
  std::cout << "  " << name << " answers True: " << order.LPONo() << ", " << what << '\n';
}

void load(LPO& order, const std::shared_ptr<Connection>& books, const std::string& number) {
  prepare(order, books);
  order.LPONo = number;
  if (!order.Get_LPO()) raise_refusal("Get_LPO", order);
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
std::string item_field(const std::shared_ptr<Connection>& books, const std::string& code,
                       const char* field) {
  const auto general = ombrix::create_object("OmbrixSystem.General");
  general->set("AdoConnectionObject", books);
  std::vector<ombrix::Value> arguments{"Item_Master", field, "Item_Code", code, false};
  return general->call("GetFldValue", arguments).to_text();
}

/// One row for each item of an order, with its ordered quantity as it stands now.
struct ItemRow {
  std::string code, description, type, ordered;
};
std::vector<ItemRow> items_of(const std::vector<OrderLine>& lines,
                              const std::shared_ptr<Connection>& books) {
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

/// Where the counter of the series stands: the next temporary and the next final number.
struct Counter {
  std::string temporary, final;
};
Counter counter_of(const std::shared_ptr<Connection>& books) {
  ombrix::Recordset series;
  series.Open(
      "Select * From Document_Prefix Where Company_Prefix='AA' and Branch_Prefix='01' and "
      "Document_Prefix='LPO'",
      books, ombrix::StaticUnlocked);
  if (series.RecordCount() == 0) return {"none", "none"};
  return {series("Temporary_Next_No").value().to_text(),
          series("Document_Next_No").value().to_text()};
}

void print_counter(const Counter& at_first, const Counter& created, const Counter& processed) {
  std::cout << "The counter of series LPO: the next number\n\n";
  Table table({{"Kind"},
               {"At first", Align::right},
               {"Created", Align::right},
               {"Processed", Align::right}});
  table.add({"temporary", at_first.temporary, created.temporary, processed.temporary});
  table.add({"final", at_first.final, created.final, processed.final});
  table.print(std::cout);
}

/// A line without an account is refused, and nothing of the attempt stays.
void show_refusal(LPO& order, const std::shared_ptr<Connection>& books) {
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

std::shared_ptr<Connection> books_of(const Arguments& arguments) {
  const std::string company = kExamples + "/company.sql";
  std::cout << "The order in " << shown(arguments.lines) << ", on ";
  if (arguments.postgres) {
    const char* server = std::getenv("OMBRIX_POSTGRES");
    if (server == nullptr) throw BadInput("OMBRIX_POSTGRES names no server");
    std::cout << "PostgreSQL\n\n";
    return open_books_on(server, company);
  }
  const bool own = arguments.database.empty();
  if (own) clear_books(kDatabase);
  const std::string database = own ? kDatabase : arguments.database;
  std::cout << shown(database) << "\n\n";
  return open_books(database, company);
}

void demonstrate(const Arguments& arguments) {
  std::vector<OrderLine> lines = read_order(arguments.lines);
  const auto books = books_of(arguments);
  LPO order;
  prepare(order, books);
  describe(order);
  fill(order, lines);
  const Counter at_first = counter_of(books);
  run("Create_LPO", "saved", order, *books, [&] { return order.Create_LPO(); });
  const Counter created = counter_of(books);

  lines.front().quantity += 2;
  order.LPOComments = "Line 1 raised by 2 by phone";
  fill(order, lines);
  run("Update_LPO", "line 1 raised by 2", order, *books, [&] { return order.Update_LPO(); });

  LPO saved;
  load(saved, books, order.LPONo());
  print_order("Before processing, as Get_LPO reads it", saved);
  const std::vector<ItemRow> before = items_of(lines, books);

  run("Process_LPO", "the final number", order, *books, [&] { return order.Process_LPO(); });
  LPO processed;
  load(processed, books, order.LPONo());
  print_order("After processing", processed);
  print_items(before, items_of(lines, books));
  print_counter(at_first, created, counter_of(books));
  show_refusal(processed, books);
}

}  // namespace

}  // namespace demo

int main(int count, char** words) {
  if (count == 2 && std::strcmp(words[1], "--help") == 0) {
    std::cout << demo::kUsage;
    return 0;
  }
  const auto arguments = demo::parse({words, static_cast<std::size_t>(count)});
  if (!arguments) {
    std::cerr << demo::kUsage;
    return 2;
  }
  try {
    demo::demonstrate(*arguments);
    if (!std::cout.flush()) throw demo::BadInput("the output cannot be written");
  } catch (const std::exception& failure) {
    std::cout.flush();
    std::cerr << "demo: " << failure.what() << '\n';
    return 1;
  }
  return 0;
}
