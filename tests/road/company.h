#pragma once

#include <string>

#include "support/books.h"

namespace ombrix::testing {

/// The company AA before its first purchase: branches BR and B2, which count from 11 and from 51,
/// both with temporary numbers from 1; home currency AED, and USD at 3.5. BR has 20 reams of paper
/// worth 200 from before; B2 raises debit memos.
inline void given_company(const Books& books) {
  const auto each = [&](const char* branch, const std::string& first) {
    for (const char* series : {"LPO", "GRN", "PIN", "PRN", "CPN", "OBN", "DRM", "PDC"}) {
      books.execute(
          "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
          " Document_Next_No, Temporary_Next_No) Values ('" +
          std::string(series) + "', 'AA', '" + branch + "', " + first + ", 1)");
    }
    for (const char* account : {"ACCRUAL", "ADVANCE", "BANK", "BOUGHT", "CITYTAX", "DISCOUNT",
                                "FREE", "PAYABLE", "RETURNED", "STATETAX", "STOCK", "VARIANCE"}) {
      books.execute("Insert Into Chart_Of_Accounts (Account_No, Account_Name) Values ('AA" +
                    std::string(branch) + "GL" + account + "', '" + account + "')");
    }
    const std::string prefix = ", 'AA" + std::string(branch) + "GL";
    books.execute(
        "Insert Into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix,"
        " Pur_Accrual_Account_No, FOC_Account_No, Discount_Account_No, Pur_Variance_Account_No,"
        " Inventory_Account_No, Cash_Purchase_Account_No, Purchase_Disc_Account_No,"
        " Generate_Debit_Memo) Values ('" +
        std::string(branch) + "', 'AA'" + prefix + "ACCRUAL'" + prefix + "FREE'" + prefix +
        "DISCOUNT'" + prefix + "VARIANCE'" + prefix + "STOCK'" + prefix + "BOUGHT'" + prefix +
        "RETURNED', " + (branch == std::string("B2") ? "-1" : "0") + ");" +
        "Insert Into Default_Account_Preferences (Branch_Prefix, Company_Prefix, AP_Account_No,"
        " Adv_Pmt_Account_No) Values ('" +
        branch + "', 'AA'" + prefix + "PAYABLE'" + prefix + "ADVANCE');" +
        "Insert Into Bank_List (Account_No, Branch_Prefix, Next_Check_No) Values ('AA" + branch +
        "GLBANK', '" + branch + "', 101)");
  };
  each("BR", "11");
  each("B2", "51");
  // Paper and pens are goods, a hamper is made up of goods, a visit is a service.
  books.execute(R"(
    Insert Into Currency_Master (Currency_Code, Currency_Symbol)
      Values ('AED', 'Dh'), ('USD', '$');
    Insert Into Item_Master (Item_Code, Item_Type, Base_Qty, Costing_Type, Stock_In_Hand,
        Stock_Amount, Average_Cost, Landed_Cost)
      Values ('AA1001', '0', 1, 'FIFO', 20, 200, 10, 10), ('AA2002', '0', 2, 'LIFO', 0, 0, 0, 0),
             ('AA3003', '3', 1, 'AVEG', 0, 0, 0, 0), ('AA9001', '2', 1, 'AVEG', 0, 0, 0, 0);
    Insert Into Item_Detail (Item_Code, Unit_Name, Unit_Qty)
      Values ('AA1001', 'Box', 2), ('AA2002', 'Each', 1), ('AA2002', 'Pack', 2),
             ('AA3003', 'Each', 1);
    Insert Into Purchase_Log (Company_Prefix, Branch_Prefix, Item_Code, Purchase_Log_Date,
        Total_Purchase_Qty, Purchase_Item_Amount, Purchase_Document_No)
      Values ('AA', 'BR', 'AA1001', '2023-12-15 00:00:00', 14, 140, 'later'),
             ('AA', 'BR', 'AA1001', '2023-12-01 00:00:00', 6, 60, 'earlier');
    Insert Into Location_Stock (Company_Prefix, Branch_Prefix, Item_Code, location_ID, Unit_Name,
        Location_Qty)
      Values ('AA', 'BR', 'AA1001', 'L1', 'Box', 10);
    Insert Into Vendor_Items (Vendor_Code, Item_Code, Last_Purchase_Price)
      Values ('AAV001', 'AA1001', 9), ('AAV001', 'AA2002', 9), ('AAV002', 'AA1001', 9);
    Insert Into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityRate)
      Values ('PUR12', 'STATE', 8), ('PUR12', 'CITY', 4);
    Insert Into TaxAuthorities (Code, accountno, Description)
      Values ('STATE', 'AABRGLSTATETAX', 'State'), ('CITY', 'AABRGLCITYTAX', 'City');
    Insert Into AP_Adjustment_Detail (Vendor_Code) Values ('AAV001'), ('AAV002');
    Insert Into AP_Adjustment_Master (Vendor_Code) Values ('AAV001'), ('AAV002'))");
}

}  // namespace ombrix::testing
