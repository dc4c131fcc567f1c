#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/purchase/cash_purchase.h"

#include "support/lines.h"

namespace ombrix::testing {

/// 5 boxes of 2 for 300, with cells of the test's own.
inline Cells bought(const Cells& own = {}) {
  Cells cells = own;
  cells.merge(Cells{{1, "1001"},
                    {3, "Paper"},
                    {4, "3"},
                    {5, "Box"},
                    {6, "2"},
                    {7, "5"},
                    {13, "300"},
                    {14, "300"},
                    {16, "Main store"},
                    {17, "AABR001100"},
                    {20, "L1"},
                    {23, "Exempted"}});
  return cells;
}

inline void given_shop(const Books& books) {
  books.execute(
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
      " Document_Next_No, Temporary_Next_No) Values ('CPI', 'AA', 'BR', 7, 3),"
      " ('PDC', 'AA', 'BR', 21, 1);"
      "Insert Into Item_Master (Item_Code, Item_Type, Stock_Amount, Stock_In_Hand, Average_Cost,"
      " Landed_Cost, Purchase_Order_Qty, Base_Qty) Values ('AA1001', '0', 100, 10, 10, 8, 100, 3),"
      " ('AA2002', ' 3 ', 0, 0, 0, 0, 0, 1), ('AA3003', '1', 0, 0, 0, 0, 0, 1);"
      "Insert Into Vendor_Items (Vendor_Code, Item_Code, Last_Purchase_Price)"
      " Values ('AAV001', 'AA1001', 9), ('AAV002', 'AA1001', 9);"
      "Insert Into Vendor_Master (Vendor_Code, Vendor_Balance, Vendor_Fc_Balance)"
      " Values ('AAV001', 0, 0);"
      "Insert Into Currency_Master (Currency_Code, Currency_Symbol) Values ('AED', ' Dh ');"
      "Insert Into Chart_Of_Accounts (Account_No) Values ('BUY'), ('FREE'), ('CASH'), ('PAYABLE'),"
      " ('TAX A'), ('TAX B');"
      "Insert Into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix,"
      " Cash_Purchase_Account_No, FOC_Account_No)"
      " Values ('BR', 'ZZ', 'OTHER', 'OTHER'), ('BR', 'AA', 'BUY', 'FREE');"
      "Insert Into Default_Account_Preferences (Branch_Prefix, Company_Prefix,"
      " Cash_Memo_Account_No, CreditCard_Payment_Account_No, AP_Account_No)"
      " Values ('BR', 'AA', 'CASH', 'CARDS', 'PAYABLE');"
      "Insert Into Bank_List (Account_No, Branch_Prefix, Next_Check_No)"
      " Values ('BANK', 'BR', 1001), ('BANK', 'B2', 5), ('CARDS', 'BR', 1);"
      "Insert Into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityRate)"
      " Values ('VAT', 'A', 10), ('VAT', 'B', 5);"
      "Insert Into TaxAuthorities (Code, accountno, Description)"
      " Values ('A', 'TAX A', 'Town'), ('B', 'TAX B', 'State')");
}

/// All that a client sets before it creates a purchase of `lines`.
inline void fill(purchase::CashPurchase& purchase, const Books& books,
                 std::initializer_list<Cells> lines) {
  purchase.ConnectionString = books.text();
  purchase.AdoConnectionObject = books.connection();
  purchase.CompanyPrefix = "AA";
  purchase.BranchPrefix = "BR";
  purchase.DocumentPrefix = "CPI";
  purchase.LastUpdate = Date(2024, 3, 5);
  purchase.AmtDig = "2";
  purchase.ExchangeRate = 1;
  purchase.CashPurInvDate = Date(2024, 3, 1);
  purchase.CashPurInvComments = "by hand";
  purchase.CashPurInvFCAmount = 300;
  purchase.CashPurInvAmount = 300;
  purchase.VendorCode = "AAV001";
  purchase.VendorName = "Orchard Traders";
  purchase.VendorRefInvoiceNo = "V-77";
  purchase.VendorRefInvoiceDate = Date(2024, 2, 28);
  purchase.CurrencyCode = "AED";
  purchase.Purchase_Type = "Item";
  purchase.Payment_Type = "Cash";
  purchase.Cheque_Bank_AccountNo = "BANK";
  purchase.ChequeBank = "First Bank";
  purchase.ChequeNo = "1000";
  purchase.ChequeDate = Date(2024, 4, 1);
  purchase.CreditCardCode = "VC";
  purchase.CreditCardName = "A Buyer";
  purchase.CreditCardNo = "4000";
  purchase.PurchaseLogPrefix = "PLG";
  purchase.StockMovementPrefix = "STM";
  purchase.OnlineFlag = true;
  purchase.GridName = grid_of(lines);
}

class CashPurchaseFixture : public OnEachDatabase {
 protected:
  void SetUp() override {
    given_shop(books);
    fill(purchase, books, {bought()});
  }

  bool create(std::initializer_list<Cells> lines) {
    purchase.GridName = grid_of(lines);
    return purchase.Create_Cash_Purchase_Invoice();
  }
  bool process(std::initializer_list<Cells> lines) {
    return create(lines) && purchase.Process_Cash_Purchase();
  }
  /// A tax of 100 in shares of 66.67 and 33.33, on the document's own side.
  void tax() {
    purchase.TaxCode = "VAT";
    purchase.TaxPercent = 15;
    purchase.TaxAmount = 100;
    purchase.TaxType = "cp";
  }

  std::string master(const std::vector<std::string>& columns) const {
    return listing(books, columns,
                   "Cash_Purchase_Master Where Cash_Pur_Inv_No='" + purchase.CashPurInvNo() + "'");
  }
  std::string lines(const std::vector<std::string>& columns) const {
    return listing(books, columns,
                   "Cash_Purchase_Detail Where Cash_Pur_Inv_No='" + purchase.CashPurInvNo() +
                       "' Order By SL_No");
  }
  std::string counters(const std::string& series = "CPI") const {
    return listing(books, {"Document_Next_No", "Temporary_Next_No"},
                   "Document_Prefix Where Document_Prefix='" + series + "'");
  }
  std::string journal(const std::vector<std::string>& columns = {"Account_No", "GL_Debit_Amount",
                                                                 "GL_Credit_Amount"}) const {
    return listing(books, columns, "General_Ledger Order By Row_Id");
  }
  /// Who stands where: the accounts that moved.
  std::string balances() const {
    return listing(books, {"Account_No", "Current_Balance"},
                   "Chart_Of_Accounts Where Current_Balance<>0 Order By Account_No");
  }
  std::string next_cheques() const {
    return listing(books, {"Next_Check_No"}, "Bank_List Order By Account_No, Branch_Prefix");
  }

  purchase::CashPurchase purchase;
};

}  // namespace ombrix::testing
