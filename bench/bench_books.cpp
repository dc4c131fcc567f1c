#include "bench_books.h"

#include <filesystem>
#include <iterator>
#include <ombrix/recordset.h>
#include <ombrix/schema.h>
#include <random>
#include <stdexcept>

namespace ombrix::bench {

namespace {

constexpr int kItems = 200;
constexpr int kLinesOfFiller = 10;
const char* const kDay = "2024-05-02 00:00:00";

std::string text_of(const std::string& path, const std::string& synchronous) {
  return "Driver=SQLite;Database=\"" + path + "\";Synchronous=" + synchronous;
}

std::string counted(const std::string& name, int count) {
  return "With Recursive " + name + "(N) As (Select 1 Union All Select N + 1 From " + name +
         " Where N < " + std::to_string(count) + ") ";
}

std::string item_number(int index) {
  return std::to_string(1000 + index % kItems);
}

std::string figure(double number) {
  return Value(number).to_text();
}

void require(bool answer, const purchase::LPO& order) {
  if (!answer) throw std::runtime_error(order.ErrDesc());
}

void fill_row(Grid& grid, std::int32_t row, const HandLine& line) {
  const std::pair<std::int32_t, std::string> cells[] = {
      {1, line.item},
      {2, line.vendor_item},
      {3, line.name},
      {4, line.unit},
      {5, line.unit_code},
      {6, figure(line.unit_qty)},
      {7, figure(line.quantity)},
      {8, figure(line.price)},
      {9, figure(line.discount_percent)},
      {10, figure(line.discount)},
      {12, figure(line.amount)},
      {15, line.account},
      {16, line.project},
      {18, figure(line.free_of_charge)},
      {20, line.taxable ? "1" : "0"},
  };
  for (const auto& [column, text] : cells) grid.TextMatrix(row, column, text);
}

}  // namespace

Folder::Folder() {
  const auto folder = std::filesystem::temp_directory_path() /
                      ("ombrix_bench_" + std::to_string(std::random_device()()));
  std::filesystem::create_directories(folder);
  path_ = folder.string();
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void make_books(const std::string& path, int orders) {
  const auto books = Connection::open(text_of(path, "OFF"));
  all_or_nothing(*books, [&] {
    create_schema(*books);
    books->Execute(counted("Item", kItems) +
                   "Insert Into Item_Master (Item_Code, Item_Type, Base_Qty) "
                   "Select 'AA' || (999 + N), '0', 1 From Item");
    const std::string count = std::to_string(orders);
    books->Execute(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix, "
        "Document_Next_No, Temporary_Next_No) Values ('LPO', 'AA', '01', " +
        count + " + 1, " + count + " + 1)");
    books->Execute(counted("Filler", orders) +
                   "Insert Into LPO_Master (LPO_No, LPO_Identity, Company_Prefix, Branch_Prefix, "
                   "Document_Prefix, LPO_Date, Vendor_Code, Vendor_name, Currency_Code, "
                   "Last_Update, Processed_Flag) Select 'AA01LPO' || N, N, 'AA', '01', 'LPO', "
                   "'2024-01-01 00:00:00', 'AAV' || (N % 500), 'A vendor', 'EUR', "
                   "'2024-01-01 00:00:00', 1 From Filler");
    books->Execute(counted("Line", kLinesOfFiller) +
                   "Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, Item_Name, Unit_Name, "
                   "Unit_Qty, LPO_Qty, LPO_Unit_Price, LPO_Item_Amount, Account_No, TaxType, "
                   "Last_Update) Select LPO_No, N, 'AA' || (1000 + N), 'An item of the company', "
                   "'Carton', 12, 5, 9.5, 47.5, 'AA01GL5000', 'Taxable', '2024-01-01 00:00:00' "
                   "From LPO_Master, Line");
    return true;
  });
}

HandOrder sample_order(int lines) {
  HandOrder order{.number = "",
                  .date = kDay,
                  .due_date = kDay,
                  .vendor = "AAV001",
                  .vendor_name = "Harbour Foods",
                  .currency = "EUR",
                  .symbol = "EUR",
                  .last_update = kDay,
                  .lines = {}};
  for (int i = 0; i < lines; ++i) {
    const double quantity = 1 + i % 9;
    order.lines.push_back({.item = item_number(i),
                           .vendor_item = "HF-" + item_number(i),
                           .name = "An item of the company, line " + std::to_string(i + 1),
                           .unit = "Carton",
                           .unit_code = "CTN",
                           .account = "AA01GL5000",
                           .project = "AA01PRJ07",
                           .unit_qty = 12,
                           .quantity = quantity,
                           .price = 20,
                           .discount_percent = 5,
                           .discount = quantity,
                           .amount = quantity * 19,
                           .free_of_charge = 0,
                           .taxable = i % 2 == 0});
    order.subtotal += order.lines.back().amount;
  }
  order.discount_percent = 10;
  order.discount = order.subtotal / 10;
  order.total = order.subtotal - order.discount;
  return order;
}

LibraryOrders::LibraryOrders(const std::string& path, const std::string& synchronous,
                             const HandOrder& order)
    : books_(Connection::open(text_of(path, synchronous))) {
  order_.ConnectionString = books_->ConnectionString();
  order_.AdoConnectionObject = books_;
  order_.CompanyPrefix = "AA";
  order_.BranchPrefix = "01";
  order_.DocumentPrefix = "LPO";
  order_.AmtDig = 2;
  order_.OnlineFlag = true;
  order_.LPODate = order_.LPODueDate = order_.LastUpdate = Date::parse(kDay);
  order_.VendorCode = order.vendor;
  order_.VendorName = order.vendor_name;
  order_.CurrencyCode = order.currency;
  order_.CurrencySymbol = order.symbol;
  order_.LPODiscountPercent = order.discount_percent;
  order_.LPOFCDiscountAmount = order.discount;
  order_.LPOFCSubtotal = order.subtotal;
  order_.LPOFCTotalAmount = order.total;
  const auto rows = static_cast<std::int32_t>(order.lines.size()) + 1;
  const auto grid = std::make_shared<MemoryGrid>(rows, /*columns*/ 21);
  for (std::int32_t row = 1; row < rows; ++row) {
    fill_row(*grid, row, order.lines[static_cast<std::size_t>(row - 1)]);
  }
  order_.GridName = grid;
}

void LibraryOrders::create() {
  order_.Purchase_Type = "";  // a read makes it "Item"
  require(all_or_nothing(*books_, [&] { return order_.Create_LPO(); }), order_);
}

void LibraryOrders::process() {
  require(all_or_nothing(*books_, [&] { return order_.Process_LPO(); }), order_);
}

std::string rows_of(const std::string& path) {
  const auto books = Connection::open(text_of(path, "FULL"));
  std::string text;
  for (const char* table : {"LPO_Master", "LPO_Detail", "Item_Master", "Document_Prefix"}) {
    const std::string name = table;
    std::string columns = "''";
    Recordset list;
    list.Open("Select name From pragma_table_info('" + name + "')", books, StaticUnlocked);
    for (; !list.IsEOF(); list.MoveNext()) {
      columns += " || '|' || quote(" + list("name").value().to_text() + ")";
    }
    Recordset rows;
    rows.Open("Select " + columns + " As Line From " + name + " Order By 1", books, StaticUnlocked);
    for (; !rows.IsEOF(); rows.MoveNext()) text += rows("Line").value().to_text() + '\n';
  }
  return text;
}

}  // namespace ombrix::bench
