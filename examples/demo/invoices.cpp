#include <ombrix/purchase/lpo.h>
#include <ombrix/purchase/purchase_invoice.h>

#include "chapters.h"

namespace demo {

namespace {

using ombrix::purchase::LPO;
using ombrix::purchase::PurchaseInvoice;
using As = Shown::As;

void describe(PurchaseInvoice& invoice, const Books& books, const std::string& reference) {
  prepare(invoice, books, "PIN");
  invoice.AmtDig = 2;
  invoice.PurchaseInvDate = ombrix::Date::now().midnight();
  invoice.VendorCode = "AAV001";
  invoice.VendorName = "Harbour Foods";
  invoice.VendorRefInvoiceNo = reference;
  invoice.VendorRefInvoiceDate = invoice.PurchaseInvDate();
  invoice.Purchase_Type = "Item";
  invoice.PInvoiceGridName = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 1, /*columns*/ 36);
}

void scale(ombrix::Grid& grid, std::int32_t row, std::int32_t column, double factor) {
  grid.TextMatrix(row, column, plain(in_cents(grid.ValueMatrix(row, column) * factor)));
}

/// Ticks the lines, bills the coffee 5 % dearer and leaves the hamper for another invoice.
void take_lines(ombrix::Grid& grid) {
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    const std::string item = grid.TextMatrix(row, 6);
    grid.TextMatrix(row, 1, item == "3001" ? "False" : "True");
    if (item != "1003") continue;
    for (const std::int32_t column : {16, 17, 24, 32, 34}) scale(grid, row, column, 1.05);
  }
}

/// The totals are the client's: what is billed, whatever was received free of charge left out.
void total(PurchaseInvoice& invoice) {
  const ombrix::Grid& grid = *invoice.PInvoiceGridName();
  double home = 0, foreign = 0;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    const bool taken = grid.TextMatrix(row, 1) == "True" || grid.TextMatrix(row, 1) == "-1";
    if (!taken || grid.TextMatrix(row, 30) == "1") continue;
    home += grid.ValueMatrix(row, 32);
    foreign += grid.ValueMatrix(row, 34);
  }
  invoice.PurchaseInvSubTotal = invoice.PurchaseInvAmount = in_cents(home);
  invoice.PurchaseInvFCSubTotal = invoice.PurchaseInvFCAmount = in_cents(foreign);
}

void bill(PurchaseInvoice& invoice, const Books& books, const std::string& what) {
  total(invoice);
  run("Create_Purchase_Invoice", money(invoice.PurchaseInvAmount()) + " euro", invoice, books,
      [&] { return invoice.Create_Purchase_Invoice(); });
  run("Process_Invoice", what, invoice, books, [&] { return invoice.Process_Invoice(); });
  std::cout << "  its number is " << invoice.PurchaseInvNo() << '\n';
}

void bill_deliveries(const Books& books) {
  PurchaseInvoice invoice;
  describe(invoice, books, "HF-77120");
  invoice.InvoiceType = "GRN";
  if (!invoice.Get_GRN_details()) {
    throw BadInput("Get_GRN_details answers False: " + invoice.ErrDesc());
  }
  std::cout << "  Get_GRN_details answers True: " << invoice.PInvoiceGridName()->Rows() - 1
            << " open lines\n";
  take_lines(*invoice.PInvoiceGridName());
  bill(invoice, books, "accrual cleared, variance and payable posted");
}

/// A second order, billed before anything arrives.
std::string order_cleaning(const Books& books) {
  auto lines = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 2, /*columns*/ 21);
  const std::pair<std::int32_t, const char*> cells[] = {
      {1, "9001"},  {3, "Deep cleaning of the kitchen"},
      {4, "Visit"}, {6, "1"},
      {7, "2"},     {8, "180"},
      {12, "360"},  {15, "AA01GL6100"}};
  for (const auto& [column, cell] : cells) lines->TextMatrix(1, column, cell);
  LPO order;
  prepare(order, books, "LPO");
  order.LPODate = ombrix::Date::now().midnight();
  order.VendorCode = "AAV001";
  order.VendorName = "Harbour Foods";
  order.GridName = lines;
  order.LPOFCSubtotal = order.LPOFCTotalAmount = 360;
  run("Create_LPO", "another order", order, books, [&] { return order.Create_LPO(); });
  run("Process_LPO", "two visits", order, books, [&] { return order.Process_LPO(); });
  return order.LPONo();
}

void bill_order(const Books& books) {
  PurchaseInvoice invoice;
  const std::string order = order_cleaning(books);
  describe(invoice, books, "HF-77131");
  invoice.InvoiceType = invoice.RefInvoiceType = "LPO";
  invoice.PONo = order;
  invoice.PODate = invoice.PurchaseInvDate();
  if (!invoice.Get_PO_details()) {
    throw BadInput("Get_PO_details answers False: " + invoice.ErrDesc());
  }
  bill(invoice, books, "straight from " + order);
}

}  // namespace

void bill_goods(const Books& books) {
  print_chapter("Invoices: the deliveries, the coffee dearer, the hamper not yet; then an order");
  bill_deliveries(books);
  bill_order(books);
  std::cout << '\n';
  report(books, "What the invoices posted",
         "Select Document_No, Account_No, GL_Description, GL_Debit_Amount, GL_Credit_Amount"
         " From General_Ledger Where Document_Prefix='PIN' Order By Row_Id",
         {{"Document", "Document_No"},
          {"Account", "Account_No"},
          {"Text", "GL_Description", As::text, 34},
          {"Debit", "GL_Debit_Amount", As::money},
          {"Credit", "GL_Credit_Amount", As::money}});
  report(books, "The vendor, and what is received and not yet billed",
         "Select Vendor_name As Who, Vendor_Balance As Stands From Vendor_Master"
         " Where Vendor_Code='AAV001' Union All Select Account_Name, Current_Balance"
         " From Chart_Of_Accounts Where Account_No='AA01GL2100'",
         {{"", "Who"}, {"Balance", "Stands", As::money}});
}

}  // namespace demo
