#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ombrix/purchase/cash_purchase.h"
#include "ombrix/purchase/grn.h"
#include "ombrix/purchase/lpo.h"
#include "ombrix/purchase/purchase_invoice.h"
#include "ombrix/purchase/purchase_return.h"
#include "ombrix/purchase/vendor.h"
#include "ombrix/purchase/vendor_ob.h"

#include "road/company.h"
#include "road/text_table.h"
#include "support/lines.h"

namespace ombrix::testing {

/// Each test finds the books at the end of the road: two vendors, their opening balances, orders,
/// receipts, invoices, a cash purchase, returns, and the first vendor under a new code.
class Road : public OnEachDatabase {
 protected:
  void SetUp() override {
    given_company(books);
    keep_vendors();
    enter_opening_balances();
    order();
    receive();
    bill();
    buy_by_cheque();
    send_back_at_home();
    send_back_what_was_paid();
    send_back_abroad();
    change_code();
  }

  std::string list(const std::vector<std::string>& columns, const std::string& from) const {
    return listing(books, columns, from);
  }

 private:
  static void expect(bool answer, const auto& document) {
    EXPECT_TRUE(answer) << document.ErrDesc();
  }

  /// What every document is told; the vendor V001 delivers at home to BR, V002 abroad to B2.
  template <class Document>
  void prepare(Document& document, const std::string& branch, const std::string& series) {
    const bool abroad = branch == "B2";
    document.ConnectionString = books.text();
    document.AdoConnectionObject = books.connection();
    document.CompanyPrefix = "AA";
    document.BranchPrefix = branch;
    document.DocumentPrefix = series;
    document.LastUpdate = Date(2024, 3, 5);
    document.VendorCode = abroad ? "AAV002" : "AAV001";
    document.VendorName = abroad ? "Overseas Mills" : "Orchard Traders";
    document.ForeignCurrencyFlag = abroad;
    document.CurrencyCode = abroad ? "USD" : "AED";
    document.CurrencySymbol = abroad ? "$" : "Dh";
    if constexpr (requires { document.OnlineFlag = true; }) {
      document.OnlineFlag = true;
      document.ExchangeRate = abroad ? 3.5 : 1;
    }
    if constexpr (requires { document.AmtDig() + 1.0; }) document.AmtDig = 2;
    if constexpr (requires { document.Purchase_Type = "Item"; }) document.Purchase_Type = "Item";
    if constexpr (requires { document.StockMovementPrefix = "STM"; }) {
      document.StockMovementPrefix = "STM";
    }
    if constexpr (requires { document.PurchaseLogPrefix = "PLG"; }) {
      document.PurchaseLogPrefix = "PLG";
    }
  }

  template <class Document>
  static void tax(Document& document, const std::string& own_side, double amount) {
    document.TaxCode = "PUR12";
    document.TaxPercent = 12;
    document.TaxAmount = amount;
    document.TaxType = own_side;
  }

  void keep_vendors() {
    for (const char* branch : {"BR", "B2"}) {
      purchase::Vendor vendor;
      prepare(vendor, branch, "");
      vendor.VendorCountry = "Oman";
      vendor.VendorCurrencyCode = vendor.CurrencyCode();
      expect(vendor.Create_Vendor(), vendor);
    }
  }

  void enter(const std::string& branch, const std::string& type, const std::string& due) {
    purchase::VendorOB balance;
    prepare(balance, branch, "OBN");
    balance.OBType = type;
    balance.GridName = grid_from(due);
    expect(balance.Create_OB() && balance.Process_OB(), balance);
  }
  /// 300 and 200 are owed to the first vendor, who holds 100 of an advance; the other holds 40.
  void enter_opening_balances() {
    enter("BR", "Credit", R"(1   | 2          | 3   | 6
                             R-1 | 2023-11-10 | 300 |
                             R-2 | 2023-12-01 | 200 | late)");
    enter("BR", "Debit", R"(1   | 2          | 3
                            A-1 | 2023-12-20 | 100)");
    enter("B2", "Debit", R"(1   | 2          | 3
                            A-2 | 2023-12-21 | 40)");
  }

  void place(purchase::LPO& order, double subtotal, double discount, double tax_amount,
             const std::string& lines) {
    order.LPODate = Date(2024, 1, 2);
    order.GridName = grid_from(lines);
    order.LPOFCSubtotal = subtotal;
    order.LPODiscountPercent = 100 * discount / subtotal;
    order.LPOFCDiscountAmount = discount;
    order.LPOTaxAmount = tax_amount;
    order.LPOFCTotalAmount = subtotal - discount + tax_amount;
    expect(order.Create_LPO() && order.Process_LPO(), order);
  }
  /// Paper at 32 less 2 and pens, 10 % off the whole, two better pens free; paper and hampers
  /// abroad; a service under a number of the buyer's own.
  void order() {
    purchase::LPO goods, abroad, visits;
    prepare(goods, "BR", "LPO");
    place(goods, 400, 40, 36,
          R"(1    | 3           | 4    | 5 | 6 | 7  | 8  | 10 | 12  | 15          | 18 | 20
             1001 | Paper       | Box  | 1 | 2 | 10 | 32 | 2  | 300 | AABRGLSTOCK | 0  | True
             2002 | Pens        | Each | 2 | 1 | 20 | 5  | 0  | 100 | AABRGLSTOCK | 0  | False
             2002 | Better pens | Each | 2 | 1 | 2  | 20 | 0  | 40  | AABRGLSTOCK | 1  | False)");
    prepare(abroad, "B2", "LPO");
    place(abroad, 180, 0, 0,
          R"(1    | 3      | 4    | 5 | 6 | 7 | 8  | 12  | 15
             3003 | Hamper | Each | 3 | 1 | 5 | 20 | 100 | AAB2GLSTOCK
             1001 | Paper  | Box  | 1 | 2 | 5 | 16 | 80  | AAB2GLSTOCK)");
    prepare(visits, "BR", "LPO");
    visits.DocFlag = true;
    visits.manualDocIdentity = 20;
    place(visits, 80, 0, 0,
          R"(1    | 3     | 4     | 5 | 6 | 7 | 8  | 12 | 15
             9001 | Visit | Visit | 4 | 1 | 2 | 40 | 80 | AABRGLBOUGHT)");
  }

  void arrive(purchase::GRN& receipt, const std::string& order_no, const std::string& lines) {
    receipt.GRNDate = Date(2024, 1, 10);
    receipt.OrderDate = Date(2024, 1, 2);
    receipt.VendorRefDocumentDate = Date(2024, 1, 9);
    receipt.GRNRefDocumentNo = order_no;
    receipt.GRNRefDocumentPrefix = "LPO";
    const auto grid = grid_from(lines);
    for (std::int32_t row = 1; row < grid->Rows(); ++row) {
      grid->TextMatrix(row, 1, "1");
      grid->TextMatrix(row, 18, "AA" + receipt.BranchPrefix() + "GLSTOCK");
    }
    receipt.GridName = grid;
    expect(receipt.Create_GRN() && receipt.ProcessGRN(), receipt);
  }
  /// All the paper, taxed 12 % on 300; half the pens and the free ones; all from abroad at 3.5.
  void receive() {
    purchase::GRN paper, pens, abroad;
    prepare(paper, "BR", "GRN");
    tax(paper, "GRN", 36);
    arrive(paper, "AABRLPO11", R"(
        2    | 4     | 5   | 6 | 7 | 8  | 9  | 16   | 17 | 20 | 22 | 23 | 24      | 25
        1001 | Paper | Box | 1 | 2 | 10 | 10 | Main | 1  | L1 | 30 | 30 | Taxable | 12)");
    prepare(pens, "BR", "GRN");
    arrive(pens, "AABRLPO11", R"(
        2    | 4           | 5    | 6 | 7 | 8  | 9  | 16   | 17 | 20 | 21 | 22 | 23
        2002 | Pens        | Each | 2 | 1 | 20 | 10 | Main | 2  | L1 | 0  | 10 | 10
        2002 | Better pens | Each | 2 | 1 | 2  | 2  | Main | 3  | L1 | 1  | 0  | 0)");
    prepare(abroad, "B2", "GRN");
    arrive(abroad, "AAB2LPO51", R"(
        2    | 4      | 5    | 6 | 7 | 8 | 9 | 16   | 17 | 20
        3003 | Hamper | Each | 3 | 1 | 5 | 5 | Shop | 1  | L2
        1001 | Paper  | Box  | 1 | 2 | 5 | 5 | Shop | 2  | L2)");
  }

  void begin(purchase::PurchaseInvoice& invoice, const std::string& branch, const std::string& type,
             const std::string& reference) {
    prepare(invoice, branch, "PIN");
    invoice.PurchaseInvDate = Date(2024, 1, 20);
    invoice.VendorRefInvoiceNo = reference;
    invoice.VendorRefInvoiceDate = Date(2024, 1, 19);
    invoice.InvoiceType = type;
    invoice.PInvoiceGridName = std::make_shared<MemoryGrid>(1, kColumns);
  }
  static void finish(purchase::PurchaseInvoice& invoice, double subtotal, double fc_subtotal,
                     double discount, double fc_discount) {
    invoice.PurchaseInvSubTotal = subtotal;
    invoice.PurchaseInvFCSubTotal = fc_subtotal;
    invoice.PurchaseInvDiscPercent = 100 * discount / subtotal;
    invoice.PurchaseInvDiscAmount = discount;
    invoice.PurchaseInvFCDiscAmount = fc_discount;
    invoice.PurchaseInvAmount = subtotal - discount;
    invoice.PurchaseInvFCAmount = fc_subtotal - fc_discount;
    expect(invoice.Create_Purchase_Invoice() && invoice.Process_Invoice(), invoice);
  }
  /// The pens cost 6 and not 5; 10 % off the goods from abroad; the visits straight from the order.
  void bill() {
    purchase::PurchaseInvoice goods, abroad, visits;
    begin(goods, "BR", "GRN", "OT-1");
    expect(goods.Get_GRN_details(), goods);
    take(goods);
    finish(goods, 306 + 55, 306 + 55, 0, 0);
    begin(abroad, "B2", "GRN", "OM-1");
    expect(abroad.Get_GRN_details(), abroad);
    take(abroad);
    finish(abroad, 630, 180, 63, 18);
    begin(visits, "BR", "LPO", "OT-2");
    visits.RefInvoiceType = "LPO";
    visits.PONo = "AABRLPO20";
    visits.PODate = Date(2024, 1, 2);
    expect(visits.Get_PO_details(), visits);
    finish(visits, 80, 80, 0, 0);
  }
  /// All open lines, which come in no order of their own, by receipt and line.
  static void take(purchase::PurchaseInvoice& invoice) {
    const auto open = invoice.PInvoiceGridName();
    std::map<std::string, Cells> lines;
    for (std::int32_t row = 1; row < open->Rows(); ++row) {
      Cells& line = lines[open->TextMatrix(row, 22) + "/" + open->TextMatrix(row, 20)];
      for (std::int32_t column = 2; column < kColumns; ++column) {
        line[column] = open->TextMatrix(row, column);
      }
      line[1] = "True";
      if (line[8] != "Pens") continue;
      line[24] = "6";
      line[16] = line[17] = "60";
      line[32] = line[34] = "55";
    }
    std::int32_t row = 0;
    for (const auto& [source, line] : lines) {
      ++row;
      for (const auto& [column, text] : line) open->TextMatrix(row, column, text);
    }
  }

  /// Four packs of pens at half of 25, and 12 % tax on 50.
  void buy_by_cheque() {
    purchase::CashPurchase bought;
    prepare(bought, "BR", "CPN");
    tax(bought, "CP", 6);
    bought.CashPurInvDate = Date(2024, 2, 1);
    bought.VendorRefInvoiceDate = Date(2024, 2, 1);
    bought.Payment_Type = "Cheque";
    bought.Cheque_Bank_AccountNo = "AABRGLBANK";
    bought.ChequeNo = "101";
    bought.ChequeDate = Date(2024, 2, 15);
    bought.CashPurInvFCSubTotal = 100;
    bought.CashPurInvDiscPercent = 50;
    bought.CashPurInvDiscAmount = bought.CashPurInvFCDiscAmount = 50;
    bought.CashPurInvAmount = bought.CashPurInvFCAmount = 50;
    bought.AmtDig = "2";
    bought.GridName = grid_from(R"(
        1    | 3    | 4 | 5    | 6 | 7 | 13  | 14  | 16   | 17          | 20
        2002 | Pens | 2 | Pack | 2 | 4 | 100 | 100 | Main | AABRGLSTOCK | L1)");
    expect(bought.Create_Cash_Purchase_Invoice() && bought.Process_Cash_Purchase(), bought);
  }

  static void send_back(purchase::PurchaseReturn& goods, const std::string& lines) {
    goods.PurchaseRtnDate = Date(2024, 2, 20);
    goods.PurRetGridName = grid_from(lines);
    expect(goods.Create_Purchase_Rtn() && goods.Process_Return(), goods);
    expect(goods.UpdateReturnSource(), goods);
  }
  /// Half the paper of the first receipt, 30 a box less its 10 %, with its tax.
  void send_back_at_home() {
    purchase::PurchaseReturn paper;
    prepare(paper, "BR", "PRN");
    tax(paper, "PR", 18);
    paper.Ref_Doc_Type = "REC";
    paper.Refno = "11";
    paper.SourceExchangeRate = 1;
    paper.PurchaseRtnSubTotal = paper.PurchaseRtnFCSubTotal = 150;
    paper.PurchaseRtnDiscAmount = paper.PurchaseRtnFCDiscAmount = 15;
    paper.PurchaseRtnAmount = paper.PurchaseRtnFCAmount = 135;
    send_back(paper, R"(
        1 | 2    | 4     | 5 | 6   | 7 | 8 | 9  | 11 | 13  | 14  | 16   | 21
        1 | 1001 | Paper | 1 | Box | 2 | 5 | 30 | 15 | 135 | 135 | Main | L1)");
  }
  /// Two of the four packs, at half of 25.
  void send_back_what_was_paid() {
    purchase::PurchaseReturn pens;
    prepare(pens, "BR", "PRN");
    pens.Ref_Doc_Type = "CAP";
    pens.Refno = "11";
    pens.SourceExchangeRate = 1;
    pens.PurchaseRtnSubTotal = pens.PurchaseRtnFCSubTotal = 50;
    pens.PurchaseRtnDiscAmount = pens.PurchaseRtnFCDiscAmount = 25;
    pens.PurchaseRtnAmount = pens.PurchaseRtnFCAmount = 25;
    send_back(pens, R"(
        1 | 2    | 4    | 5 | 6    | 7 | 8 | 9  | 11 | 13 | 14 | 16   | 21
        1 | 2002 | Pens | 2 | Pack | 2 | 2 | 25 | 25 | 25 | 25 | Main | L1)");
  }
  /// Two boxes and a hamper, billed at 3.5 and returned at 4; 2 dollars of the invoice's discount
  /// were on the boxes.
  void send_back_abroad() {
    purchase::PurchaseReturn goods;
    prepare(goods, "B2", "PRN");
    goods.ExchangeRate = 4;
    goods.SourceExchangeRate = 3.5;
    goods.Ref_Doc_Type = "INV";
    goods.Refno = "51";
    goods.PurchaseRtnSubTotal = 208;
    goods.PurchaseRtnFCSubTotal = 52;
    goods.PurchaseRtnDiscAmount = 8;
    goods.PurchaseRtnFCDiscAmount = 2;
    goods.PurchaseRtnAmount = 200;
    goods.PurchaseRtnFCAmount = 50;
    send_back(goods, R"(
        1 | 2    | 4      | 5 | 6    | 7 | 8 | 9  | 12 | 13 | 14  | 16   | 21 | 26
        1 | 1001 | Paper  | 1 | Box  | 2 | 2 | 16 | 2  | 30 | 120 | Shop | L2 | 8
        1 | 3003 | Hamper | 3 | Each | 1 | 1 | 20 | 0  | 20 | 80  | Shop | L2 | 0)");
  }

  void change_code() {
    purchase::Vendor vendor;
    prepare(vendor, "BR", "");
    vendor.GridName = grid_from(R"(1 | 2    | 3
                                   1 | V001 | V100)");
    expect(vendor.Change_Vendor_Code(), vendor);
  }
};

}  // namespace ombrix::testing
