#include <ombrix/purchase/vendor.h>
#include <ombrix/purchase/vendor_ob.h>

#include "chapters.h"

namespace demo {

namespace {

using ombrix::purchase::Vendor;
using ombrix::purchase::VendorOB;
using As = Shown::As;

/// What was owed when the books were opened: an invoice of 1,250 and one of 480.
void open_balance(const Books& books) {
  auto lines = std::make_shared<ombrix::MemoryGrid>(/*rows*/ 3, /*columns*/ 9);
  const char* const cells[2][3] = {{"PG-2291", "2023-11-14", "1,250.00"},
                                   {"PG-2317", "2023-12-02", "480.00"}};
  for (std::int32_t row = 1; row <= 2; ++row) {
    for (std::int32_t column = 1; column <= 3; ++column) {
      lines->TextMatrix(row, column, cells[row - 1][column - 1]);
    }
  }
  VendorOB balance;
  balance.ConnectionString = books->ConnectionString();
  balance.AdoConnectionObject = books;
  balance.CompanyPrefix = "AA";
  balance.BranchPrefix = "01";
  balance.DocumentPrefix = "OBN";
  balance.LastUpdate = ombrix::Date::now();
  balance.VendorCode = "AAV010";
  balance.VendorName = "Polder Greens";
  balance.OBType = "Credit";
  balance.CurrencyCode = "EUR";
  balance.GridName = lines;
  run("Create_OB", "two references", balance, books, [&] { return balance.Create_OB(); });
  run("Process_OB", "an invoice of each", balance, books, [&] { return balance.Process_OB(); });
}

}  // namespace

void keep_vendors(const Books& books) {
  print_chapter("Vendors");
  for (const auto& [code, name, city] : {std::tuple("AAV010", "Polder Greens", "Lelystad"),
                                         std::tuple("AAV011", "Corner Hardware", "Utrecht")}) {
    Vendor vendor;
    vendor.ConnectionString = books->ConnectionString();
    vendor.AdoConnectionObject = books;
    vendor.VendorCode = code;
    vendor.VendorName = name;
    vendor.VendorCity = city;
    vendor.VendorCountry = "Netherlands";
    vendor.CompanyPrefix = "AA";
    vendor.VendorCurrencyCode = "EUR";
    vendor.CurrencyCode = "EUR";
    vendor.VendorCreditLimit = 5000;
    vendor.APAccountNo = "AA01GL2000";
    vendor.LastUpdate = ombrix::Date::now();
    if (!vendor.Create_Vendor()) throw BadInput("Create_Vendor answers False: " + vendor.ErrDesc());
    std::cout << "  Create_Vendor answers True: " << code << ", " << name << '\n';
    if (vendor.Create_Vendor()) throw BadInput("a vendor was entered twice");
    std::cout << "  Create_Vendor once more answers False: " << vendor.ErrDesc() << '\n';
  }
  open_balance(books);
  std::cout << '\n';
  report(books, "What became of the opening balance",
         "Select Vendor_Code, Ref_No, Balance_Amount, OB_Inv_No From Vendor_OB Order By SL_No",
         {{"Vendor", "Vendor_Code"},
          {"Reference", "Ref_No"},
          {"Amount", "Balance_Amount", As::money},
          {"Document", "OB_Inv_No"}});
}

}  // namespace demo
