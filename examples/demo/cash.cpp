#include <ombrix/purchase/cash_purchase.h>

#include "chapters.h"

namespace demo {

namespace {

using ombrix::purchase::CashPurchase;
using As = Shown::As;

struct Purchase {
  const char* payment;
  const char* unit;
  double base_units, quantity, price;
};

std::shared_ptr<ombrix::Grid> cheese(const Purchase& bought) {
  auto grid = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 2, /*columns*/ 24);
  const std::string amount = plain(bought.quantity * bought.price);
  const std::pair<std::int32_t, std::string> cells[] = {
      {1, "1005"},
      {3, "Farm cheese"},
      {4, "CHS"},
      {5, bought.unit},
      {6, plain(bought.base_units)},
      {7, plain(bought.quantity)},
      {8, plain(bought.price)},
      {9, plain(bought.price)},
      {13, amount},
      {14, amount},
      {16, "Main store"},
      {17, "AA01GL5000"},
      {20, "MAIN"},
      {21, "0"},
  };
  for (const auto& [column, cell] : cells) grid->TextMatrix(1, column, cell);
  return grid;
}

void buy(const Books& books, const Purchase& bought) {
  CashPurchase purchase;
  prepare(purchase, books, "CPN");
  purchase.AmtDig = "2";
  purchase.CashPurInvDate = ombrix::Date::now().midnight();
  purchase.VendorCode = "AAV003";
  purchase.VendorName = "Valley Dairy";
  purchase.VendorRefInvoiceNo = "VD-88";
  purchase.VendorRefInvoiceDate = purchase.CashPurInvDate();
  purchase.Purchase_Type = "Item";
  purchase.PurchaseLogPrefix = "PLG";
  purchase.StockMovementPrefix = "STM";
  purchase.Payment_Type = bought.payment;
  purchase.Cheque_Bank_AccountNo = "AA01GL1010";
  purchase.ChequeNo = "100451";
  purchase.ChequeDate = purchase.CashPurInvDate();
  purchase.ChequeToPay = "Valley Dairy";
  purchase.CreditCardCode = "VI";
  purchase.CreditCardName = "Company card";
  purchase.CreditCardNo = "4000 0000 0000 0002";
  purchase.GridName = cheese(bought);
  purchase.CashPurInvFCSubTotal = bought.quantity * bought.price;
  purchase.CashPurInvFCAmount = purchase.CashPurInvFCSubTotal();
  purchase.CashPurInvAmount = purchase.CashPurInvFCSubTotal();
  run("Create_Cash_Purchase_Invoice", "by " + std::string(bought.payment), purchase, books,
      [&] { return purchase.Create_Cash_Purchase_Invoice(); });
  run("Process_Cash_Purchase", "bought, stored and paid", purchase, books,
      [&] { return purchase.Process_Cash_Purchase(); });
  std::cout << "  its number is " << purchase.CashPurInvNo() << '\n';
}

}  // namespace

void buy_for_cash(const Books& books) {
  print_chapter("Cheese, paid by cash, by cheque and by card");
  for (const Purchase& bought :
       {Purchase{"Cash", "Kg", 1, 4, 12.25}, Purchase{"Cheque", "Wheel", 8, 2, 92},
        Purchase{"Credit Card", "Wheel", 8, 1, 94}}) {
    buy(books, bought);
  }
  std::cout << '\n';
  report(books, "The purchases",
         "Select Cash_Pur_Inv_No, Payment_Type, Status, Cash_Pur_Inv__SubTotal From"
         " Cash_Purchase_Master Order By Cash_Pur_Inv_Identity",
         {{"Document", "Cash_Pur_Inv_No"},
          {"Payment", "Payment_Type"},
          {"Status", "Status"},
          {"Amount", "Cash_Pur_Inv__SubTotal", As::money}});
  report(books, "What they posted",
         "Select Document_No, Account_No, GL_Description, GL_Debit_Amount, GL_Credit_Amount"
         " From General_Ledger Where Document_Prefix='CPN' Order By Row_Id",
         {{"Document", "Document_No"},
          {"Account", "Account_No"},
          {"Text", "GL_Description", As::text, 34},
          {"Debit", "GL_Debit_Amount", As::money},
          {"Credit", "GL_Credit_Amount", As::money}});
  report(books, "The register of the bank",
         "Select PDC_No, Source_No, Bank_ID, Cheque_No, CreditCard_No, Cheque_Amount From "
         "PDC_Master Order By PDC_No",
         {{"Entry", "PDC_No"},
          {"Document", "Source_No"},
          {"Bank", "Bank_ID"},
          {"Cheque", "Cheque_No"},
          {"Card", "CreditCard_No"},
          {"Amount", "Cheque_Amount", As::money}});
  report(books, "The next cheque of each account of the branch",
         "Select Account_No, Next_Check_No From Bank_List Where Branch_Prefix='01'"
         " Order By Account_No",
         {{"Account", "Account_No"}, {"Next", "Next_Check_No"}});
  report(books, "The cheese",
         "Select Item_Code, Stock_In_Hand, Stock_Amount, Average_Cost, Landed_Cost"
         " From Item_Master Where Item_Code='AA1005'",
         {{"Item", "Item_Code"},
          {"In hand", "Stock_In_Hand"},
          {"Amount", "Stock_Amount", As::money},
          {"Average", "Average_Cost", As::money},
          {"Last", "Landed_Cost", As::money}});
}

}  // namespace demo
