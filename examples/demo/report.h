#pragma once

#include <iostream>
#include <memory>
#include <ombrix/connection.h>
#include <string>
#include <vector>

#include "csv.h"
#include "table.h"

namespace demo {

using Books = std::shared_ptr<ombrix::Connection>;

void print_chapter(const std::string& title);

/// A column of a report: what stands above it, and the column of the select.
struct Shown {
  enum class As : bool { text, money };
  std::string heading;
  std::string column;
  As as = As::text;
  std::size_t widest = 40;
};
/// Prints the rows of a select as they stand now.
void report(const Books& books, const std::string& title, const std::string& select,
            const std::vector<Shown>& columns);

/// Runs one method, all or nothing, and says what came of it. Ends the demo when it answers False.
template <class Document, class Method>
void run(const std::string& name, const std::string& what, Document& document, const Books& books,
         Method method) {
  if (!ombrix::all_or_nothing(*books, method)) {
    throw BadInput(name + " answers False: " + document.ErrDesc());
  }
  std::cout << "  " << name << " answers True: " << what << '\n';
}

/// What every document is given before anything else: company AA, branch 01.
template <class Document>
void prepare(Document& document, const Books& books, const std::string& series) {
  document.ConnectionString = books->ConnectionString();
  document.AdoConnectionObject = books;
  document.CompanyPrefix = "AA";
  document.BranchPrefix = "01";
  document.DocumentPrefix = series;
  document.LastUpdate = ombrix::Date::now();
  document.OnlineFlag = true;
  document.CurrencyCode = "EUR";
  document.CurrencySymbol = "EUR";
  document.ExchangeRate = 1;
}

}  // namespace demo
