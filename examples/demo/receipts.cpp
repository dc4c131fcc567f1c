#include <ombrix/purchase/grn.h>
#include <ombrix/recordset.h>

#include "chapters.h"

namespace demo {

namespace {

using ombrix::purchase::GRN;
using As = Shown::As;

/// A line of the order in the row of a receipt that takes the whole of it.
void fill_row(ombrix::Grid& grid, std::int32_t row, ombrix::Recordset& line, bool taxed) {
  const auto text = [&](const char* column) { return line(column).text_or_empty(); };
  const std::string period = text("Period_Type");
  const std::pair<std::int32_t, std::string> cells[] = {
      {1, "1"},
      {2, text("Item_Code").substr(2)},
      {3, text("Vendor_Item_Code")},
      {4, text("Item_Name")},
      {5, text("Unit_Name") + (period.empty() ? "" : "-" + period)},
      {6, text("Unit_Code")},
      {7, text("Unit_Qty")},
      {8, text("LPO_Qty")},
      {9, text("LPO_Qty")},
      {16, "Main store"},
      {17, text("SL_No")},
      {18, text("Account_No")},
      {19, text("Proj_No")},
      {20, "MAIN"},
      {21, text("FOC_Flag")},
      {22, text("LPO_Overall_Disc")},
      {23, text("LPO_Overall_FC_Disc")},
      {24, taxed ? "Taxable" : "Exempted"},
      {25, taxed ? "12" : "0"},
  };
  for (const auto& [column, cell] : cells) grid.TextMatrix(row, column, cell);
}

/// The lines of the order from `first` to `last`.
std::shared_ptr<ombrix::Grid> lines_of(const Books& books, const std::string& order, int first,
                                       int last, bool taxed) {
  ombrix::Recordset line;
  line.Open("Select * From LPO_Detail Where LPO_No='" + order + "' And SL_No Between " +
                std::to_string(first) + " And " + std::to_string(last),
            books, ombrix::StaticUnlocked);
  const auto rows = static_cast<std::int32_t>(line.RecordCount()) + 1;
  auto grid = std::make_shared<ombrix::MemoryGrid>(rows, /*columns*/ 26);
  for (std::int32_t row = 1; row < rows; ++row, line.MoveNext()) {
    fill_row(*grid, row, line, taxed);
  }
  return grid;
}

void describe(GRN& receipt, const Books& books, const std::string& order) {
  prepare(receipt, books, "GRN");
  receipt.AmtDig = 2;
  receipt.GRNDate = ombrix::Date::now().midnight();
  receipt.OrderDate = receipt.GRNDate();
  receipt.VendorRefDocumentDate = receipt.GRNDate();
  receipt.VendorCode = "AAV001";
  receipt.VendorName = "Harbour Foods";
  receipt.GRNRefDocumentNo = order;
  receipt.GRNRefDocumentPrefix = "LPO";
  receipt.PurchaseLogPrefix = "PLG";
  receipt.StockMovementPrefix = "STM";
}

std::string receive(const Books& books, GRN& receipt, const std::string& what) {
  run("Create_GRN", "saved", receipt, books, [&] { return receipt.Create_GRN(); });
  run("ProcessGRN", what, receipt, books, [&] { return receipt.ProcessGRN(); });
  std::cout << "  its number is " << receipt.GRNNo() << '\n';
  return receipt.GRNNo();
}

void print_books(const Books& books) {
  report(books, "The order's lines: ordered and received",
         "Select SL_No, Item_Name, LPO_Qty, Received_Qty From LPO_Detail Where LPO_No="
         "(Select Max(GRN_Ref_Document_No) From Goods_Receive_Master) Order By SL_No",
         {{"#", "SL_No"},
          {"Item", "Item_Name"},
          {"Ordered", "LPO_Qty"},
          {"Received", "Received_Qty"}});
  report(books, "Stock and cost of the stocked items, in base units",
         "Select Item_Code, Stock_In_Hand, Stock_Amount, Average_Cost, Landed_Cost,"
         " Prv_Average_Cost From Item_Master Where Landed_Cost Is Not Null Order By Item_Code",
         {{"Item", "Item_Code"},
          {"In hand", "Stock_In_Hand"},
          {"Amount", "Stock_Amount", As::money},
          {"Average", "Average_Cost", As::money},
          {"This time", "Landed_Cost", As::money},
          {"Before", "Prv_Average_Cost", As::money}});
  report(books, "The journal of the two receipts",
         "Select Document_No, Account_No, GL_Description, GL_Debit_Amount, GL_Credit_Amount"
         " From General_Ledger Where Document_Prefix='GRN' Order By Row_Id",
         {{"Document", "Document_No"},
          {"Account", "Account_No"},
          {"Text", "GL_Description", As::text, 34},
          {"Debit", "GL_Debit_Amount", As::money},
          {"Credit", "GL_Credit_Amount", As::money}});
  report(books, "The accounts that moved",
         "Select Account_No, Account_Name, Current_Balance From Chart_Of_Accounts"
         " Where Current_Balance <> 0 Order By Account_No",
         {{"Account", "Account_No"},
          {"Name", "Account_Name"},
          {"Balance", "Current_Balance", As::money}});
}

}  // namespace

std::vector<std::string> receive_goods(const Books& books, const std::string& order) {
  print_chapter("Two deliveries: the flour, taxed; the rest billed in pounds, a tray of it free");
  std::vector<std::string> numbers;
  {
    GRN flour;
    describe(flour, books, order);
    flour.GridName = lines_of(books, order, 1, 1, /*taxed*/ true);
    flour.TaxCode = "PUR12";
    flour.TaxPercent = 12;
    flour.TaxAmount = in_cents(14 * 22.5 * 0.12);
    flour.TaxType = "GRN";
    numbers.push_back(receive(books, flour, "stock in, accrual and tax posted"));
  }
  GRN rest;
  describe(rest, books, order);
  rest.GridName = lines_of(books, order, 2, 9, /*taxed*/ false);
  rest.ForeignCurrencyFlag = true;
  rest.CurrencyCode = "GBP";
  rest.CurrencySymbol = "GBP";
  rest.ExchangeRate = 1.17;
  numbers.push_back(receive(books, rest, "at 1.17 euro the pound"));
  std::cout << '\n';
  print_books(books);
  return numbers;
}

}  // namespace demo
