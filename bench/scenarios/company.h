#pragma once

#include <initializer_list>
#include <memory>
#include <ombrix/connection.h>
#include <ombrix/date.h>
#include <ombrix/grid.h>
#include <string>
#include <string_view>
#include <utility>

namespace ombrix::bench {

/// The company on whose books all scenarios work.
inline constexpr const char* kCompany = "AA";
inline constexpr const char* kBranch = "01";
inline constexpr const char* kDay = "2024-05-02 00:00:00";
/// One of its vendors, who sells all items.
inline constexpr const char* kVendor = "AAV1";
inline constexpr const char* kVendorName = "Harbour Foods";
inline constexpr const char* kStockAccount = "AA01GL5000";

/// Items enough for lines of one document to meet some of them again.
inline constexpr int kItems = 200;
/// Base units in the carton in which everything is bought.
inline constexpr int kCarton = 12;
inline constexpr int kTaxPercent = 12;

/// The code of the item on a line, without the company's prefix.
std::string item_of_line(int line);

/// Items with their units and prices, vendors, accounts, preferences and taxes.
void seed_company(Connection& books);
/// A counter that has drawn `drawn` numbers.
void seed_series(Connection& books, std::string_view series, int drawn);

/// The head of a statement, a table `name` whose column `N` counts from 1 to `count`.
std::string counting(std::string_view name, int count);

using Cells = std::initializer_list<std::pair<std::int32_t, Value>>;
void put_cells(Grid& grid, std::int32_t row, Cells cells);

/// What a client gives every document, whatever its kind.
template <class Document>
void set_up(Document& document, const std::shared_ptr<Connection>& books, const char* series) {
  document.ConnectionString = books->ConnectionString();
  document.AdoConnectionObject = books;
  document.CompanyPrefix = kCompany;
  document.BranchPrefix = kBranch;
  document.DocumentPrefix = series;
  document.OnlineFlag = true;
  document.LastUpdate = Date::parse(kDay);
  document.VendorCode = kVendor;
  document.VendorName = kVendorName;
  document.CurrencyCode = "EUR";
  document.CurrencySymbol = "EUR";
  document.ExchangeRate = 1;
}

}  // namespace ombrix::bench
