#include <ombrix/purchase/purchase_return.h>

#include "chapters.h"

namespace demo {

namespace {

using ombrix::purchase::PurchaseReturn;
using As = Shown::As;

/// Three of the fourteen bags of flour.
std::shared_ptr<ombrix::Grid> damp_bags() {
  auto grid = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 2, /*columns*/ 27);
  const std::pair<std::int32_t, const char*> cells[] = {
      {1, "1"},    {2, "1001"},      {3, "HF-200"}, {4, "Wheat flour, type 550"},
      {5, "BAG"},  {6, "Bag 25 kg"}, {7, "25"},     {8, "3"},
      {9, "22.5"}, {13, "67.5"},     {14, "67.5"},  {16, "Main store"},
      {21, "MAIN"}};
  for (const auto& [column, cell] : cells) grid->TextMatrix(1, column, cell);
  return grid;
}

void print_books(const Books& books) {
  report(books, "Flour: the layers that are left, oldest first, in kilograms",
         "Select Substr(Purchase_Log_Date, 1, 10) As Entered, Purchase_Document_No, "
         "Total_Purchase_Qty, Purchase_Item_Amount"
         " From Purchase_Log Where Item_Code='AA1001' Order By Purchase_Log_Date, Row_Id",
         {{"Date", "Entered"},
          {"Document", "Purchase_Document_No"},
          {"Left", "Total_Purchase_Qty"},
          {"Amount", "Purchase_Item_Amount", As::money}});
  report(books, "Where the flour is",
         "Select Item_Code, Location_Name, Unit_Name, Location_Qty From Location_Stock"
         " Where Item_Code='AA1001'",
         {{"Item", "Item_Code"},
          {"Location", "Location_Name"},
          {"Unit", "Unit_Name"},
          {"Quantity", "Location_Qty"}});
  report(books, "What the return and its memo posted",
         "Select Document_No, Account_No, GL_Description, GL_Debit_Amount, GL_Credit_Amount"
         " From General_Ledger Where Document_Prefix In ('PRN', 'DRM') Order By Row_Id",
         {{"Document", "Document_No"},
          {"Account", "Account_No"},
          {"Text", "GL_Description", As::text, 34},
          {"Debit", "GL_Debit_Amount", As::money},
          {"Credit", "GL_Credit_Amount", As::money}});
  report(books, "The vendor's side of it",
         "Select Document_No, APL_Description, APL_Debit_Amount, APL_Credit_Amount"
         " From Accounts_Payable_Ledger Where Vendor_Code='AAV001' Order By Row_Id",
         {{"Document", "Document_No"},
          {"Text", "APL_Description"},
          {"Debit", "APL_Debit_Amount", As::money},
          {"Credit", "APL_Credit_Amount", As::money}});
}

}  // namespace

void return_goods(const Books& books, const std::string& receipt) {
  print_chapter("Return: three damp bags of flour go back");
  PurchaseReturn damp;
  prepare(damp, books, "PRN");
  damp.PurchaseRtnDate = ombrix::Date::now().midnight();
  damp.VendorCode = "AAV001";
  damp.VendorName = "Harbour Foods";
  damp.PurchaseRtnRefNo = receipt;
  damp.PurchaseRtnComments = "Damp";
  damp.Ref_Doc_Type = "REC";
  damp.Refno = receipt.substr(7);
  damp.SourceExchangeRate = 1;
  damp.PurRetGridName = damp_bags();
  damp.PurchaseRtnSubTotal = damp.PurchaseRtnFCSubTotal = 67.5;
  damp.PurchaseRtnAmount = damp.PurchaseRtnFCAmount = 67.5;
  damp.TaxCode = "PUR12";
  damp.TaxPercent = 12;
  damp.TaxAmount = 8.1;
  damp.TaxType = "PR";
  damp.StockMovementPrefix = "STM";
  run("Create_Purchase_Rtn", "saved", damp, books, [&] { return damp.Create_Purchase_Rtn(); });
  run("Process_Return", "stock out, tax back, debit memo raised", damp, books,
      [&] { return damp.Process_Return(); });
  run("UpdateReturnSource", "the receipt knows of it", damp, books,
      [&] { return damp.UpdateReturnSource(); });
  std::cout << '\n';
  print_books(books);
}

}  // namespace demo
