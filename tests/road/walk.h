#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ombrix/components.h"
#include "ombrix/grid.h"

#include "base/text.h"
#include "support/lines.h"

namespace ombrix::testing {

/// The cells of a table written as text: a line a row, "|" between cells, blanks around them and
/// empty lines left out.
inline std::vector<std::vector<std::string>> cells_of(const std::string& table) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    if (trim(line).empty()) continue;
    std::istringstream cells(line + " |");
    rows.emplace_back();
    for (std::string cell; std::getline(cells, cell, '|');) rows.back().emplace_back(trim(cell));
  }
  return rows;
}

/// A table as `listing` writes it, so that an expected one may stand in columns.
inline std::string as_listed(const std::string& table) {
  std::string text;
  for (const auto& row : cells_of(table)) {
    if (!text.empty()) text += "\n";
    for (const auto& cell : row) text += (&cell == &row.front() ? "" : " | ") + cell;
  }
  return text;
}

/// Documents on their way, driven by the names of their members.
class Walk {
 public:
  explicit Walk(const Books& books) : books_(books) {}

  void step(const std::string& line) {
    std::istringstream words(line);
    std::string name, side, series;
    if (line[0] == '#') return;
    if (line[0] == '>') return run(line.substr(1));
    if (line[0] == '@')
      return each_pair(line.substr(1), [this](auto cell, auto text) {
        std::int32_t row = 0, column = 0;
        ASSERT_EQ(std::sscanf(cell.c_str(), "%d,%d", &row, &column), 2) << cell;
        grid_->TextMatrix(row, column, text);
      });
    if (line.find('|') != std::string::npos) return add_line(cells_of(line)[0]);
    if (line.find('=') != std::string::npos) return let(line);
    ASSERT_TRUE(words >> name >> side >> series) << line;
    begin(name, side == "abroad", series);
  }

 private:
  /// What every document is told; V001 delivers at home to BR, V002 abroad to B2. Members that a
  /// class does not have are left out.
  void begin(const std::string& name, bool abroad, const std::string& series) {
    document_ = create_object("OmbrixPurchase." + name);
    document_->set("AdoConnectionObject", books_.connection());
    grid_ = std::make_shared<MemoryGrid>(1, kColumns);
    heading_.clear();
    const std::string common =
        "CompanyPrefix=AA; LastUpdate=2024-03-05; OnlineFlag=True; AmtDig=2; Purchase_Type=Item;"
        "StockMovementPrefix=STM; PurchaseLogPrefix=PLG; GRNDate=2024-01-10; OrderDate=2024-01-02;"
        "VendorRefDocumentDate=2024-01-09; GRNRefDocumentPrefix=LPO; PurchaseInvDate=2024-01-20;"
        "VendorRefInvoiceDate=2024-01-19; PurchaseRtnDate=2024-02-20;";
    const std::string own =
        abroad ? "BranchPrefix=B2; VendorCode=AAV002; VendorName=Overseas Mills; CurrencyCode=USD;"
                 "ForeignCurrencyFlag=True; CurrencySymbol=$; ExchangeRate=3.5;"
                 "SourceExchangeRate=3.5"
               : "BranchPrefix=BR; VendorCode=AAV001; VendorName=Orchard Traders; CurrencyCode=AED;"
                 "ForeignCurrencyFlag=False; CurrencySymbol=Dh; ExchangeRate=1;"
                 "SourceExchangeRate=1";
    each_pair(common + own, [this](auto member, auto text) {
      if (access(member) != Access::none) document_->let(member, text);
    });
    document_->let("DocumentPrefix", series);
    document_->let("ConnectionString", books_.text());
    for (const char* member : {"GridName", "PInvoiceGridName", "PurRetGridName"}) {
      if (allows(access(member), Access::set)) document_->set(member, grid_);
      if (allows(access(member), Access::let)) document_->let(member, grid_);
    }
  }
  void let(const std::string& line) {
    each_pair(line, [this](auto member, auto text) { document_->let(member, text); });
  }
  void add_line(const std::vector<std::string>& cells) {
    if (heading_.empty()) {
      heading_ = cells;
      return;
    }
    grid_->Rows(grid_->Rows() + 1);
    for (std::size_t place = 0; place < cells.size(); ++place) {
      grid_->TextMatrix(grid_->Rows() - 1, std::stoi(heading_.at(place)), cells[place]);
    }
  }
  void run(const std::string& methods) {
    std::istringstream names(methods);
    for (std::string name; names >> name;) {
      EXPECT_TRUE(document_->call(name, {}).to_flag())
          << name << ": " << document_->get("ErrDesc").to_text();
    }
  }
  /// "a=b; c=d".
  template <class Body>
  static void each_pair(const std::string& text, Body body) {
    std::istringstream pairs(text);
    for (std::string pair; std::getline(pairs, pair, ';');) {
      const auto end = pair.find('=');
      body(std::string(trim(pair.substr(0, end))), std::string(trim(pair.substr(end + 1))));
    }
  }
  Access access(const std::string& name) const {
    for (const MemberInfo& member : document_->members()) {
      if (member.name == name) return member.access;
    }
    return Access::none;
  }

  const Books& books_;
  ObjectRef document_;
  std::shared_ptr<MemoryGrid> grid_;
  std::vector<std::string> heading_;
};

inline void walk(const Books& books, const std::string& road) {
  Walk walk(books);
  std::istringstream lines(road);
  for (std::string line; std::getline(lines, line);) {
    if (!trim(line).empty()) walk.step(std::string(trim(line)));
  }
}

}  // namespace ombrix::testing
