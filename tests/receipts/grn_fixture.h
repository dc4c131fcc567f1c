#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/purchase/grn.h"

#include "support/lines.h"

namespace ombrix::testing {

/// A received line of the order's line 1, with cells of the test's own.
inline Cells received(const Cells& own = {}) {
  Cells cells = own;
  cells.merge(Cells{{1, "1"},
                    {2, "1001"},
                    {4, "Paper"},
                    {5, "Box"},
                    {6, "BX"},
                    {7, "2"},
                    {8, "10"},
                    {9, "5"},
                    {16, "Main store"},
                    {17, "1"},
                    {18, "INVENTORY"},
                    {20, "L1"}});
  return cells;
}

/// Two orders of one company, "LPO" 1 and "OPO" 1, each with lines 1 (10 for 600 in foreign
/// currency, 20 off) and 2 (4 for 100), items of three kinds, accounts and preferences.
inline void given_order(const Books& books) {
  books.execute(
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
      " Document_Next_No, Temporary_Next_No) Values ('GRN', 'AA', 'BR', 7, 3);"
      "Insert Into LPO_Master (LPO_No, Purchase_Type, LPO_Discount_Percent, Invoiced_Flag)"
      " Values ('AABRLPO1', 'Item', 0, 0);"
      "Insert Into LPO_Detail (LPO_No, SL_No, LPO_Qty, LPO_FCItem_Amount,"
      " LPO_FCItem_Discount_Amount) Values ('AABRLPO1', 1, 10, 600, 20), ('AABRLPO1', 2, 4, 100, "
      "0);"
      "Insert Into IPO_Master (IPO_No, Purchase_Type, IPO_Discount_Percent, Invoiced_Flag)"
      " Values ('AABRIPO1', '', 50, 0);"
      "Insert Into IPO_Detail (IPO_No, SL_No, IPO_Qty, IPO_FCItem_Amount,"
      " IPO_FCItem_Discount_Amount) Values ('AABRIPO1', 1, 10, 600, 20);"
      "Insert Into Item_Master (Item_Code, Item_Type, Stock_Amount, Stock_In_Hand, Average_Cost,"
      " Landed_Cost, Purchase_Order_Qty, Base_Qty) Values ('AA1001', '0', 100, 10, 10, 8, 100, 3),"
      " ('AA2002', ' 3 ', 0, 0, 0, 0, 0, 1), ('AA3003', '1', 0, 0, 0, 0, 0, 1);"
      "Insert Into Vendor_Items (Vendor_Code, Item_Code, Last_Purchase_Price)"
      " Values ('AAV001', 'AA1001', 9), ('AAV001', 'AA3003', 9), ('AAV002', 'AA1001', 9);"
      "Insert Into Chart_Of_Accounts (Account_No) Values ('INVENTORY'), ('ASSETS'), ('ACCRUAL'),"
      " ('FREE'), ('TAX A'), ('TAX B');"
      "Insert Into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix,"
      " Pur_Accrual_Account_No, FOC_Account_No, Discount_Account_No)"
      " Values ('BR', 'AA', 'ACCRUAL', 'FREE', 'DISCOUNT');"
      "Insert Into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityRate)"
      " Values ('VAT', 'A', 10), ('VAT', 'B', 5);"
      "Insert Into TaxAuthorities (Code, accountno, Description)"
      " Values ('A', 'TAX A', 'Town'), ('B', 'TAX B', 'State')");
}

/// All that a client sets before it creates a receipt of `lines`.
inline void fill(purchase::GRN& receipt, const Books& books, std::initializer_list<Cells> lines) {
  receipt.ConnectionString = books.text();
  receipt.AdoConnectionObject = books.connection();
  receipt.CompanyPrefix = "AA";
  receipt.BranchPrefix = "BR";
  receipt.DocumentPrefix = "GRN";
  receipt.LastUpdate = Date(2024, 3, 5);
  receipt.AmtDig = 2;
  receipt.ExchangeRate = 1;
  receipt.GRNDate = Date(2024, 3, 1);
  receipt.GRNComments = "left at the gate";
  receipt.VendorCode = "AAV001";
  receipt.VendorName = "Orchard Traders";
  receipt.CurrencyCode = "AED";
  receipt.CurrencySymbol = "Dh";
  receipt.GRNRefDocumentNo = "AABRLPO1";
  receipt.GRNRefDocumentPrefix = "LPO";
  receipt.PurchaseLogPrefix = "PLG";
  receipt.StockMovementPrefix = "STM";
  receipt.OnlineFlag = true;
  receipt.GridName = grid_of(lines);
}

class GRNFixture : public OnEachDatabase {
 protected:
  void SetUp() override {
    given_order(books);
    fill(receipt, books, {received()});
  }

  bool create(std::initializer_list<Cells> lines) {
    receipt.GridName = grid_of(lines);
    return receipt.Create_GRN();
  }
  bool process(std::initializer_list<Cells> lines) { return create(lines) && receipt.ProcessGRN(); }

  std::string master(const std::vector<std::string>& columns) const {
    return listing(books, columns, "Goods_Receive_Master Where GRN_No='" + receipt.GRNNo() + "'");
  }
  std::string lines(const std::vector<std::string>& columns) const {
    return listing(books, columns,
                   "Goods_Receive_Detail Where GRN_No='" + receipt.GRNNo() + "' Order By SL_No");
  }
  std::string counters() const {
    return listing(books, {"Document_Next_No", "Temporary_Next_No"}, "Document_Prefix");
  }
  std::string journal(const std::vector<std::string>& columns) const {
    return listing(books, columns, "General_Ledger Order By Row_Id");
  }
  /// Who stands where: the accounts that moved.
  std::string balances() const {
    return listing(books, {"Account_No", "Current_Balance"},
                   "Chart_Of_Accounts Where Current_Balance<>0 Order By Account_No");
  }

  purchase::GRN receipt;
};

}  // namespace ombrix::testing
