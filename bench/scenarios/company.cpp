#include "scenarios/company.h"

namespace ombrix::bench {

namespace {

constexpr int kVendors = 500;

void seed_items(Connection& books) {
  books.Execute(counting("Item", kItems) +
                "Insert Into Item_Master (Item_Code, Item_Type, Base_Qty, Costing_Type, "
                "Stock_In_Hand, Stock_Amount, Average_Cost, Landed_Cost) "
                "Select 'AA' || (999 + N), '0', 1, 'FIFO', 600, 900, 1.5, 1.5 From Item");
  books.Execute(
      "Insert Into Item_Detail (Item_Code, Unit_Name, Unit_Qty) Select Item_Code, "
      "'Carton', " +
      std::to_string(kCarton) + " From Item_Master");
}

void seed_vendors(Connection& books) {
  books.Execute(counting("Vendor", kVendors) +
                "Insert Into Vendor_Master (Vendor_Code, Company_Prefix, Vendor_name, "
                "Currency_Code, AP_Account_No) Select 'AAV' || N, 'AA', 'A vendor', 'EUR', "
                "'AA01GL2000' From Vendor");
  books.Execute("Insert Into Vendor_Items (Vendor_Code, Item_Code, Last_Purchase_Price) Select '" +
                std::string(kVendor) + "', Item_Code, 1.5 From Item_Master");
}

constexpr const char* kAccounts = R"(
Insert Into Chart_Of_Accounts (Account_No, Account_Name) Values
  ('AA01GL1000', 'Cash on hand'), ('AA01GL1010', 'Bank'), ('AA01GL1200', 'Stock of goods'),
  ('AA01GL1300', 'Recoverable federal tax'), ('AA01GL1310', 'Recoverable city tax'),
  ('AA01GL2000', 'Accounts payable'), ('AA01GL2100', 'Goods received, not yet billed'),
  ('AA01GL5000', 'Food purchases'), ('AA01GL5020', 'Goods free of charge'),
  ('AA01GL5030', 'Purchase discounts'), ('AA01GL5040', 'Purchase variance');
Insert Into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix, Pur_Accrual_Account_No,
    FOC_Account_No, Discount_Account_No, Pur_Variance_Account_No, Inventory_Account_No,
    Cash_Purchase_Account_No, Purchase_Disc_Account_No, Generate_Debit_Memo) Values
  ('01', 'AA', 'AA01GL2100', 'AA01GL5020', 'AA01GL5030', 'AA01GL5040', 'AA01GL1200', 'AA01GL5000',
   'AA01GL5030', -1);
Insert Into Default_Account_Preferences (Branch_Prefix, Company_Prefix, Cash_Memo_Account_No,
    CreditCard_Payment_Account_No, AP_Account_No, Adv_Pmt_Account_No) Values
  ('01', 'AA', 'AA01GL1000', 'AA01GL1010', 'AA01GL2000', 'AA01GL2000');
Insert Into Bank_List (Account_No, Branch_Prefix, Next_Check_No) Values ('AA01GL1010', '01', 1);
Insert Into Currency_Master (Currency_Code, Currency_Symbol) Values ('EUR', 'EUR');
Insert Into TaxCodeMaster (TaxCode, Tax_Type, Tax_Rate) Values ('PUR12', 'Purchase', 12);
Insert Into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityName, TaxAuthorityRate) Values
  ('PUR12', 'FED', 'Federal tax office', 9), ('PUR12', 'CITY', 'City treasury', 3);
Insert Into TaxAuthorities (Code, accountno, Description) Values
  ('FED', 'AA01GL1300', 'Federal tax office'), ('CITY', 'AA01GL1310', 'City treasury');
)";

}  // namespace

std::string item_of_line(int line) {
  return std::to_string(1000 + line % kItems);
}

void seed_company(Connection& books) {
  seed_items(books);
  seed_vendors(books);
  books.Execute(kAccounts);
}

void seed_series(Connection& books, std::string_view series, int drawn) {
  const std::string next = std::to_string(drawn + 1);
  books.Execute(
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix, "
      "Document_Next_No, Temporary_Next_No) Values ('" +
      std::string(series) + "', 'AA', '01', " + next + ", " + next + ")");
}

std::string counting(std::string_view name, int count) {
  const std::string table(name);
  return "With Recursive " + table + "(N) As (Select 1 Union All Select N + 1 From " + table +
         " Where N < " + std::to_string(count) + ") ";
}

void put_cells(Grid& grid, std::int32_t row, Cells cells) {
  for (const auto& [column, value] : cells) grid.TextMatrix(row, column, value.to_text());
}

}  // namespace ombrix::bench
