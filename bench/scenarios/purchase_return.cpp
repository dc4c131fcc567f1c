#include "scenarios/purchase_return.h"

#include <ombrix/purchase/purchase_return.h>

#include "database/connection_access.h"
#include "scenarios/company.h"
#include "scenarios/standing.h"

namespace ombrix::bench {

namespace {

using database::number;
using database::sql;
using database::text;

constexpr double kPrice = 19;
constexpr int kLayersOfItem = 50;

/// `count` layers of a carton, dealt to as many items, the first of them `first`.
void buy(const Connection& books, int count, int first, int items, const char* day, int left) {
  database::execute(
      sql({"Insert Into Purchase_Log (Item_Code, Branch_Prefix, Purchase_Log_Date,"
           " Total_Purchase_Qty, Purchase_Item_Amount, Company_Prefix, Document_Prefix,"
           " Purchase_Document_No, Purchase_Document_Prefix, Last_Update)"
           " With Recursive Layer(N) As (Select 0 Union All Select N + 1 From Layer Where N < ",
           number(count - 1), ") Select 'AA' || Cast(1000 + ", number(first), " + N % Cast(",
           number(items), " As Integer) As Integer), '01', ", text(day), ", ", number(left),
           ", 19, 'AA', 'PLG', 'AA01GRN7', 'GRN', '2024-01-01 00:00:00' From Layer"}),
      books);
}

void seed(Connection& books, int standing) {
  seed_company(books);
  seed_receipts(books, 0);
  seed_returns(books, standing);
  buy(books, standing * 10, 0, kItems, "2024-01-01 00:00:00", 0);
  buy(books, kItems * kLayersOfItem, 0, kItems, "2024-02-01 00:00:00", kCarton);
}

/// Answers the amount of the line.
double fill_line(Grid& grid, std::int32_t row, const std::string& item, int cartons) {
  const double amount = cartons * kPrice;
  put_cells(grid, row,
            {{1, "1"},
             {2, item},
             {3, "HF-" + item},
             {4, "An item, line " + std::to_string(row)},
             {5, 1.0},
             {6, "Carton"},
             {7, double(kCarton)},
             {8, double(cartons)},
             {9, kPrice},
             {13, amount},
             {14, amount},
             {16, "Main store"},
             {19, "AA01PRJ07"},
             {21, "MAIN"}});
  return amount;
}

void fill(purchase::PurchaseReturn& returned, const std::shared_ptr<Connection>& books,
          const std::shared_ptr<Grid>& grid, double amount) {
  set_up(returned, books, "PRN");
  returned.PurchaseRtnDate = Date::parse(kDay);
  returned.PurchaseRtnRefNo = "AA01GRN7";
  returned.Ref_Doc_Type = "REC";
  returned.Refno = "7";
  returned.SourceExchangeRate = 1;
  returned.PurRetGridName = grid;
  returned.PurchaseRtnSubTotal = returned.PurchaseRtnFCSubTotal = amount;
  returned.PurchaseRtnAmount = returned.PurchaseRtnFCAmount = amount;
  returned.TaxCode = "PUR12";
  returned.TaxPercent = kTaxPercent;
  returned.TaxType = "PR";
  returned.StockMovementPrefix = "STM";
}

/// `restock` puts back what each return takes out of the layers, so that all find as many.
Document document_of(const std::shared_ptr<Connection>& books, const std::shared_ptr<Grid>& grid,
                     double amount, std::function<void()> restock) {
  const auto returned = std::make_shared<purchase::PurchaseReturn>();
  fill(*returned, books, grid, amount);
  return {.create = [=] { return returned->Create_Purchase_Rtn(); },
          .process = [=] { return returned->Process_Return(); },
          .reason = [=] { return returned->ErrDesc(); },
          .prepare =
              [=, restock = std::move(restock)] {
                restock();
                returned->TaxAmount = amount * kTaxPercent / 100;  // posting it took it off
                return true;
              }};
}

Document return_document(const std::shared_ptr<Connection>& books, int lines) {
  const auto grid = std::make_shared<MemoryGrid>(lines + 1, /*columns*/ 27);
  double amount = 0;
  for (std::int32_t row = 1; row <= lines; ++row) {
    amount += fill_line(*grid, row, item_of_line(row - 1), 1);
  }
  return document_of(books, grid, amount,
                     [=] { buy(*books, lines, 0, kItems, "2024-03-01 00:00:00", kCarton); });
}

/// How many times as many layers an item has as a return takes up.
constexpr int kShare = 10;

void seed_layers(Connection& books, int standing) {
  seed_company(books);
  seed_receipts(books, 0);
  seed_returns(books, standing);
  // Two items: one has few layers and one many, and the log is as long for both.
  buy(books, standing * 10, 0, 2, "2024-01-01 00:00:00", 0);
  buy(books, kShare * 10, 0, 1, "2024-02-01 00:00:00", kCarton);
  buy(books, kShare * 1000, 1, 1, "2024-02-01 00:00:00", kCarton);
}

Document layers_document(const std::shared_ptr<Connection>& books, int layers) {
  const int item = layers == 10 ? 0 : 1;
  const auto grid = std::make_shared<MemoryGrid>(2, /*columns*/ 27);
  const double amount = fill_line(*grid, 1, item_of_line(item), layers);
  return document_of(books, grid, amount,
                     [=] { buy(*books, layers, item, 1, "2024-03-01 00:00:00", kCarton); });
}

}  // namespace

const Scenario kReturn{.name = "return", .seed = seed, .document = return_document};
const Scenario kLayers{.name = "layers",
                       .seed = seed_layers,
                       .document = layers_document,
                       .unit = "layers",
                       .many_in_large_books = true};

}  // namespace ombrix::bench
