#include <ombrix/purchase/vendor.h>
#include <ombrix/recordset.h>

#include "chapters.h"

namespace demo {

namespace {

using ombrix::purchase::Vendor;
using As = Shown::As;

void change_code(const Books& books) {
  auto codes = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 2, /*columns*/ 4);
  codes->TextMatrix(1, 1, "1");
  codes->TextMatrix(1, 2, "V001");
  codes->TextMatrix(1, 3, "V100");
  Vendor vendor;
  vendor.ConnectionString = books->ConnectionString();
  vendor.AdoConnectionObject = books;
  vendor.CompanyPrefix = "AA";
  vendor.GridName = codes;
  vendor.LastUpdate = ombrix::Date::now();
  run("Change_Vendor_Code", "AAV001 is AAV100 from now on", vendor, books,
      [&] { return vendor.Change_Vendor_Code(); });
  std::cout << '\n';
  std::string places;
  for (const std::string table :
       {"Vendor_Master", "LPO_Master", "Goods_Receive_Master", "Purchase_Invoice_Master",
        "Purchase_Return_Master", "Accounts_Payable_Ledger"}) {
    places += (places.empty() ? "Select '" : " Union All Select '") + table +
              "' As Place, Sum(Case When Vendor_Code='AAV100' Then 1 Else 0 End) As Renamed,"
              " Sum(Case When Vendor_Code='AAV001' Then 1 Else 0 End) As Old From " +
              table;
  }
  report(books, "Where the vendor stands under the new code, and rows left under the old one",
         places, {{"Table", "Place"}, {"New code", "Renamed"}, {"Old code", "Old"}});
}

void print_trial_balance(const Books& books) {
  report(books, "Trial balance of the journal",
         "Select L.Account_No As Account, Max(C.Account_Name) As Name,"
         " Sum(L.GL_Debit_Amount) As Debit, Sum(L.GL_Credit_Amount) As Credit,"
         " Max(C.Current_Balance) As Stands From General_Ledger L, Chart_Of_Accounts C"
         " Where C.Account_No=L.Account_No Group By L.Account_No Order By L.Account_No",
         {{"Account", "Account"},
          {"Name", "Name", As::text, 32},
          {"Debit", "Debit", As::money},
          {"Credit", "Credit", As::money},
          {"Chart moved by", "Stands", As::money}});
  ombrix::Recordset sums;
  sums.Open(
      "Select Sum(GL_Debit_Amount) As Debit, Sum(GL_Credit_Amount) As Credit,"
      " Sum(Case When Account_No='AA01GL5040' Then GL_Debit_Amount - GL_Credit_Amount Else 0 End)"
      " As Variance From General_Ledger",
      books, ombrix::StaticUnlocked);
  const double debit = in_cents(sums("Debit").number());
  const double credit = in_cents(sums("Credit").number());
  // An invoice debits the accrual with all that is billed, and the variance besides.
  std::cout << "Debits " << money(debit) << ", credits " << money(credit) << ", difference "
            << money(in_cents(debit - credit)) << ", of it price variance "
            << money(sums("Variance").number()) << '\n';
}

}  // namespace

void close_books(const Books& books) {
  print_chapter("A vendor's code changes; the books are held against themselves");
  change_code(books);
  print_trial_balance(books);
}

}  // namespace demo
