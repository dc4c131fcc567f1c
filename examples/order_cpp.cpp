#include <iostream>
#include <ombrix/purchase/lpo.h>

int main() {
  auto books = ombrix::Connection::open("Driver=SQLite;Database=build/demo/books.db");
  auto lines = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 2, /*columns*/ 21);
  lines->TextMatrix(1, 1, "1002");         // item
  lines->TextMatrix(1, 7, "10");           // ordered quantity
  lines->TextMatrix(1, 15, "AA01GL5000");  // account
  ombrix::purchase::LPO order;
  order.AdoConnectionObject = books;
  order.ConnectionString = books->ConnectionString();
  order.CompanyPrefix = "AA";
  order.BranchPrefix = "01";
  order.DocumentPrefix = "LPO";
  order.LPODate = order.LastUpdate = ombrix::Date::now();
  order.VendorCode = "AAV001";
  order.VendorName = "Harbour Foods";
  order.CurrencyCode = "EUR";
  order.GridName = lines;
  const bool done = order.Create_LPO() && order.Process_LPO();
  std::cout << (done ? order.LPONo() : order.ErrDesc()) << '\n';
}
