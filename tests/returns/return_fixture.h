#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ombrix/purchase/purchase_return.h"

#include "frame/hosting/hosted.h"
#include "returns/purchase_return_interface.h"
#include "support/books.h"
#include "support/lines.h"

namespace ombrix::testing {

inline std::shared_ptr<MemoryGrid> grid_of(const std::vector<Cells>& lines) {
  auto grid = std::make_shared<MemoryGrid>(static_cast<std::int32_t>(lines.size()) + 1, kColumns);
  for (std::size_t row = 0; row < lines.size(); ++row) {
    for (const auto& [column, text] : lines[row]) {
      grid->TextMatrix(static_cast<std::int32_t>(row) + 1, column, text);
    }
  }
  return grid;
}

/// Ten pieces at 100, with cells of the test's own.
inline Cells returned(const Cells& own = {}) {
  Cells cells = own;
  cells.merge(Cells{{1, "-1"},
                    {2, "1001"},
                    {4, "Paper"},
                    {5, "7"},
                    {6, "Pcs"},
                    {7, "1"},
                    {8, "10"},
                    {9, "100"},
                    {13, "1000"},
                    {14, "1000"},
                    {16, "Main"},
                    {21, "L1"}});
  return cells;
}

/// Series, currency, items, preferences, accounts and a vendor; no debit memo is raised.
inline void given_return_books(const Books& books) {
  books.execute(R"(
    Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix, Last_Update)
      Values ('PR', 'AA', 'BR', '2020-01-01 00:00:00'),
             ('DRM', 'AA', 'BR', '2020-01-01 00:00:00');
    Insert Into Currency_Master (Currency_Code, Currency_Symbol) Values ('AED', ' Dh ');
    Insert Into Item_Master (Item_Code, Item_Type, Costing_Type, Stock_In_Hand, Stock_Amount)
      Values ('AA1001', '0', 'FIFO', 500, 50000), ('AA2002', '1', 'FIFO', 500, 50000),
             ('AA3003', '3', 'FIFO', 500, 50000);
    Insert Into Item_Detail (Item_Code, Unit_Name, Unit_Qty)
      Values ('AA1001', 'Pcs', 1), ('AA1001', 'Box', 12);
    Insert Into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix, Inventory_Account_No,
        Pur_Accrual_Account_No, Pur_Variance_Account_No, Purchase_Disc_Account_No,
        Generate_Debit_Memo)
      Values ('BR', 'AA', 'STOCK', 'ACCRUAL', 'VARIANCE', 'DISCOUNT', 0);
    Insert Into Default_Account_Preferences (Branch_Prefix, Company_Prefix, AP_Account_No)
      Values ('BR', 'AA', 'PAYABLE');
    Insert Into Chart_Of_Accounts (Account_No, Account_Name)
      Values ('STOCK', 'Stock'), ('ACCRUAL', 'Accrued purchases'), ('VARIANCE', 'Rates'),
             ('DISCOUNT', 'Discounts'), ('PAYABLE', 'Vendors'), ('TAX', 'Tax office'),
             ('TOLL', 'Customs');
    Insert Into Vendor_Master (Vendor_Code, Vendor_name) Values ('AAV001', 'Orchard Traders');
    Insert Into TaxAuthorities (Code, accountno, Description)
      Values ('FED', 'TAX', 'Federal'), ('CUS', 'TOLL', 'Customs'))");
}

/// Authorities of the code VAT with their rates, in order.
using Authorities = std::vector<std::pair<std::string, double>>;
inline void given_tax(const Books& books, const Authorities& authorities) {
  for (const auto& [code, rate] : authorities) {
    books.execute(
        "Insert Into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityRate) Values ('VAT', "
        "'" +
        code + "', " + std::to_string(rate) + ")");
  }
}

/// A layer of AA1001, of a day in January.
struct Layer {
  int day;
  double quantity;
  double sold = 0;
};
inline void given_layers(const Books& books, const std::vector<Layer>& layers,
                         const std::string& branch = "BR") {
  for (const auto& [day, quantity, sold] : layers) {
    books.execute(
        "Insert Into Purchase_Log (Item_Code, Branch_Prefix, Purchase_Log_Date, Total_Purchase_Qty,"
        " Sold_Qty, Purchase_Item_Amount, Last_Update) Values ('AA1001', '" +
        branch + "', '2024-01-1" + std::to_string(day) + " 00:00:00', " + std::to_string(quantity) +
        ", " + std::to_string(sold) + ", 77, '2024-01-01 00:00:00')");
  }
}

/// All that a client sets before it creates a return of `lines`, and for its processing online.
inline void fill(purchase::PurchaseReturn& document, const Books& books,
                 const std::vector<Cells>& lines) {
  document.ConnectionString = books.text();
  document.AdoConnectionObject = books.connection();
  document.CompanyPrefix = "AA";
  document.BranchPrefix = "BR";
  document.DocumentPrefix = "PR";
  document.LastUpdate = Date(2024, 3, 5);
  document.PurchaseRtnDate = Date(2024, 3, 1);
  document.VendorCode = "AAV001";
  document.VendorName = "Orchard Traders";
  document.CurrencyCode = "AED";
  document.PurchaseRtnComments = "too wet";
  document.ExchangeRate = 1;
  document.StockMovementPrefix = "SM";
  document.OnlineFlag = true;
  document.PurRetGridName = grid_of(lines);
}

class ReturnFixture : public OnEachDatabase {
 protected:
  using Hosted = ombrix::Hosted<purchase::PurchaseReturn>;

  void SetUp() override {
    given_return_books(books);
    fill(document, books, {returned()});
  }

  bool create(const std::vector<Cells>& lines) {
    document.PurRetGridName = grid_of(lines);
    return document.Create_Purchase_Rtn();
  }
  bool process(const std::vector<Cells>& lines) {
    return create(lines) && document.Process_Return();
  }

  std::string list(const std::vector<std::string>& columns, const std::string& from) const {
    return listing(books, columns, from);
  }
  /// "account | debit | credit" of each ledger line, as they were written.
  std::string ledger() const {
    return list({"Account_No", "GL_Debit_Amount", "GL_Credit_Amount"},
                "General_Ledger Order By Row_Id");
  }
  /// "account | balance" of the accounts that moved, by name.
  std::string balances() const {
    return list({"Account_No", "Current_Balance"},
                "Chart_Of_Accounts Where Current_Balance<>0 Order By Account_No");
  }
  /// "next | next temporary" of a series.
  std::string counter(const std::string& series = "PR") const {
    return list({"Document_Next_No", "Temporary_Next_No"},
                "Document_Prefix Where Document_Prefix='" + series + "'");
  }

  /// The statements of the class's own, "text (cursor,lock,options) statement", without those that
  /// siblings make while they are asked.
  template <class Body>
  std::vector<std::string> statements(Body body) const {
    std::vector<std::string> made;
    int asked = 0;
    books.connection()->inject([&](const Call& call) {
      if (call.kind == Call::Kind::invoke) ++asked;
      return Fault();
    });
    books.connection()->observe([&](const Call& call) {
      if (call.kind == Call::Kind::invoke) --asked;
      if (asked > 0 || (call.kind != Call::Kind::open && call.kind != Call::Kind::execute)) return;
      made.push_back((call.road == Call::Road::text ? "text (" : "(") +
                     std::to_string(call.cursor) + "," + std::to_string(call.lock) + "," +
                     std::to_string(call.options) + ") " + call.text);
    });
    EXPECT_TRUE(body()) << document.ErrDesc();
    books.connection()->inject({});
    books.connection()->observe({});
    return made;
  }

  std::shared_ptr<Hosted> object = std::make_shared<Hosted>(purchase::purchase_return_interface());
  Object& late = *object;
  purchase::PurchaseReturn& document = object->held();
};

}  // namespace ombrix::testing
