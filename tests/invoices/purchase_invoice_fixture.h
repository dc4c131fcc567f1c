#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "ombrix/purchase/purchase_invoice.h"

#include "frame/hosting/hosted.h"
#include "invoices/purchase_invoice_interface.h"
#include "support/lines.h"

namespace ombrix::testing {

/// A line that is taken, as it was received: 8 for 880 at home, 240 in foreign currency.
inline Cells billed(const Cells& own = {}) {
  Cells cells = own;
  cells.merge(Cells{{1, "1"},
                    {6, "1001"},
                    {8, "Paper"},
                    {9, "3"},
                    {10, "Box"},
                    {11, "12"},
                    {12, "8"},
                    {16, "880"},
                    {17, "240"},
                    {20, "1"},
                    {22, "AABRGRN1"},
                    {23, "2024-02-03"},
                    {24, "110"},
                    {25, "880"},
                    {26, "240"},
                    {27, "110"},
                    {28, "AABRLPO12"},
                    {29, "GRN"}});
  return cells;
}

/// The cells of a row that are not empty.
inline Cells row_of(const Grid& grid, std::int32_t row) {
  Cells cells;
  for (std::int32_t column = 0; column < kColumns; ++column) {
    if (auto text = grid.TextMatrix(row, column); !text.empty()) cells[column] = text;
  }
  return cells;
}

/// Orders "LPO" 12 and "OPO" 4, a receipt of two lines and a direct one, all of the vendor AAV001,
/// with accounts and preferences.
inline void given_sources(const Books& books) {
  books.execute(
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
      " Document_Next_No, Temporary_Next_No) Values ('PIN', 'AA', 'BR', 7, 3);"
      "Insert Into LPO_Master (LPO_No, Vendor_Code, Vendor_name, Currency_Code,"
      " LPO_Discount_Percent, LPO_FC_Discount_Amount, LPO_TaxAmount, LPO_TaxRate) Values"
      " ('AABRLPO12', 'AAV001', ' Orchard ', 'USD', 10, 24, 12, 5);"
      "Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, Vendor_Item_Code, Item_Name, Unit_Name,"
      " Period_Type, FOC_Flag, Unit_Code, Unit_Qty, LPO_Qty, LPO_Unit_Price,"
      " LPO_Item_Discount_amount, LPO_Item_Amount, LPO_FCItem_Discount_Amount, LPO_FCItem_Amount,"
      " Proj_No, LPO_Overall_FC_Disc, LPO_Overall_Disc, TaxType) Values"
      " ('AABRLPO12', 2, 'AA2002', Null, 'Pens', 'Pack', Null, 1, '4', 1, 4, 25, 0, 100, 0, 90,"
      " Null, 1, 2, 'Exempted'),"
      " ('AABRLPO12', 1, 'AA1001', 'V-1', 'Paper', 'Box', 'Month', 0, '3', 12, 8, 110, 0.5, 880,"
      " 0.25, 240, 'AABRPRJ9', 2.5, 10, 'Taxable');"
      "Insert Into IPO_Master (IPO_No, Vendor_Code, Vendor_name, Currency_Code,"
      " IPO_Discount_Percent) Values ('AABRIPO4', 'AAV002', 'Abroad', 'EUR', 3);"
      "Insert Into IPO_Detail (IPO_No, SL_No, Item_Code, Unit_Name, Unit_Qty, IPO_Qty,"
      " IPO_Unit_Price, IPO_Item_Discount_amount, IPO_FCItem_Discount_amount, IPO_Item_Amount,"
      " IPO_FCItem_Amount) Values ('AABRIPO4', 1, 'AA3003', 'Each', 1, 2, 50, 5, 4, 100, 80);"
      "Insert Into Goods_Receive_Master (GRN_No, GRN_Date, GRN_Ref_Document_No, GRN_Order_Date,"
      " Vendor_Ref_Document_No, Vendor_Ref_Document_Date, Vendor_Code, Purchase_Type,"
      " Processed_Flag) Values ('AABRGRN1', '2024-02-03 00:00:00', 'AABRLPO12',"
      " '2024-02-01 00:00:00', 'VD-1', '2024-02-02 00:00:00', 'AAV001', Null, 1);"
      "Insert Into Goods_Receive_Detail (GRN_No, SL_No, Item_Code, Vendor_Item_Code, Item_Name,"
      " Unit_Code, Unit_Name, FOC_Flag, Unit_Qty, grn_qty, Proj_No, PO_Overall_Disc,"
      " PO_Overall_FC_Disc, TaxType, TaxPercent, GRN_Unit_Price, GRN_Item_Amount,"
      " GRN_FC_Item_Amount, GRN_Item_Disc_Amount, GRN_FC_Item_Disc_Amount) Values"
      " ('AABRGRN1', 1, 'AA1001', 'V-1', 'Paper', '3', 'Box', 0, 12, 8, 'AABRPRJ9', 10, 2.5,"
      " 'Taxable', 5, 110, 880, 240, 0.5, 0.25),"
      " ('AABRGRN1', 2, 'AA2002', '', 'Pens', '4', 'Pack', 1, 1, 4, Null, 2, 1, 'Exempted', 5, 25,"
      " 100, 90, 0, 0);"
      "Insert Into Direct_Goods_Receive_Master (Direct_GRN_No, Direct_GRN_Date, Vendor_Code,"
      " Vendor_Ref_Document_Date, Purchase_Type, Processed_Flag) Values ('AABRSDR5',"
      " '2024-02-04 00:00:00', 'AAV001', '2024-02-02 00:00:00', 'Item', 1);"
      "Insert Into Direct_Goods_Receive_Detail (Direct_GRN_No, SL_NO, Item_Code, Item_Name,"
      " Direct_GRN_Qty, TaxType, Direct_GRN_Unit_Price, Direct_GRN_Item_Amount,"
      " Direct_GRN_FC_Item_Amount, Direct_GRN_Item_Disc_Amount, Direct_GRN_FC_Item_Disc_Amount)"
      " Values ('AABRSDR5', 3, 'AA3003', 'Chair', 2, 'Taxable', 50, 100, 80, 0, 0);"
      "Insert Into Vendor_Master (Vendor_Code) Values ('AAV001');"
      "Insert Into Chart_Of_Accounts (Account_No) Values ('AABR00ACCRUAL'), ('AABR00VARIANCE'),"
      " ('AABR00DISCOUNT'), ('AABR00PAYABLE'), ('TAX A'), ('TAX B');"
      "Insert Into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix,"
      " Pur_Accrual_Account_No, FOC_Account_No, Discount_Account_No, Pur_Variance_Account_No)"
      " Values ('BR', 'AA', 'AABR00ACCRUAL', 'AABR00FREE', 'AABR00DISCOUNT', 'AABR00VARIANCE');"
      "Insert Into Default_Account_Preferences (Branch_Prefix, Company_Prefix, AP_Account_No)"
      " Values ('BR', 'AA', 'AABR00PAYABLE');"
      "Insert Into TaxCodeMaster (TaxCode, Tax_Type, Tax_Rate) Values ('OUT', 'Sales', 9),"
      " ('VAT', 'Purchase', 5);"
      "Insert Into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityRate)"
      " Values ('VAT', 'A', 10), ('VAT', 'B', 5);"
      "Insert Into TaxAuthorities (Code, accountno, Description)"
      " Values ('A', 'TAX A', 'Town'), ('B', 'TAX B', 'State')");
}

/// All that a client sets before it creates an invoice of `lines` against receipts.
inline void fill(purchase::PurchaseInvoice& invoice, const Books& books,
                 std::initializer_list<Cells> lines) {
  invoice.ConnectionString = books.text();
  invoice.AdoConnectionObject = books.connection();
  invoice.CompanyPrefix = "AA";
  invoice.BranchPrefix = "BR";
  invoice.DocumentPrefix = "PIN";
  invoice.LastUpdate = Date(2024, 3, 5);
  invoice.AmtDig = 2;
  invoice.ExchangeRate = 1;
  invoice.PurchaseInvDate = Date(2024, 3, 1);
  invoice.VendorCode = "AAV001";
  invoice.CurrencyCode = "AED";
  invoice.CurrencySymbol = "Dh";
  invoice.InvoiceType = "GRN";
  invoice.PurchaseInvAmount = 880;
  invoice.PurchaseInvFCAmount = 240;
  invoice.OnlineFlag = true;
  invoice.PInvoiceGridName = grid_of(lines);
}

class PurchaseInvoiceFixture : public OnEachDatabase {
 protected:
  void SetUp() override {
    given_sources(books);
    fill(invoice, books, {billed()});
  }

  bool create(std::initializer_list<Cells> lines) {
    invoice.PInvoiceGridName = grid_of(lines);
    return invoice.Create_Purchase_Invoice();
  }
  bool process(std::initializer_list<Cells> lines) {
    return create(lines) && invoice.Process_Invoice();
  }

  std::string master(const std::vector<std::string>& columns) const {
    return listing(
        books, columns,
        "Purchase_Invoice_Master Where Purchase_Inv_No='" + invoice.PurchaseInvNo() + "'");
  }
  std::string lines(const std::vector<std::string>& columns) const {
    return listing(books, columns,
                   "Purchase_Invoice_Detail Where Purchase_Inv_No='" + invoice.PurchaseInvNo() +
                       "' Order By SL_No");
  }
  std::string counters() const {
    return listing(books, {"Document_Next_No", "Temporary_Next_No"}, "Document_Prefix");
  }
  /// Who got what, in order: "account | debit | credit | foreign debit | foreign credit".
  std::string postings() const {
    return listing(books,
                   {"Account_No", "GL_Debit_Amount", "GL_Credit_Amount", "FC_GL_Debit_Amount",
                    "FC_GL_Credit_Amount"},
                   "General_Ledger Order By Row_Id");
  }
  std::string balances() const {
    return listing(books, {"Account_No", "Current_Balance"},
                   "Chart_Of_Accounts Where Current_Balance<>0 Order By Account_No");
  }
  Grid& grid() const { return *invoice.PInvoiceGridName(); }

  /// What the call makes of the connection, statements with their modes.
  template <class Body>
  std::string told(Body call) const {
    std::string text;
    books.connection()->observe([&](const Call& seen) {
      const bool opened = seen.kind == Call::Kind::open;
      if (!opened && seen.kind != Call::Kind::execute) return;
      text += seen.road == Call::Road::text ? "text" : "object";
      if (opened) {
        text += " (" + std::to_string(seen.cursor) + "," + std::to_string(seen.lock) + "," +
                std::to_string(seen.options) + ")";
      }
      text += " " + seen.text + "\n";
    });
    EXPECT_TRUE(call()) << invoice.ErrDesc();
    books.connection()->observe({});
    return text;
  }

  std::shared_ptr<Hosted<purchase::PurchaseInvoice>> object =
      std::make_shared<Hosted<purchase::PurchaseInvoice>>(purchase::purchase_invoice_interface());
  Object& late = *object;
  purchase::PurchaseInvoice& invoice = object->held();
};

}  // namespace ombrix::testing
