#include <functional>
#include <memory>

#include "cash/cash_purchase_fixture.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

class CashPurchaseSavingTest : public CashPurchaseFixture {
 protected:
  std::string amounts() const {
    return master({"Cash_Pur_Inv_FC_Amount", "Cash_Pur_Inv_Amount", "Cash_Pur_Inv__SubTotal",
                   "Cash_Pur_Inv_FC_SubTotal", "Cash_Pur_Inv_Disc_Percent",
                   "Cash_Pur_Inv_Disc_Amount", "Cash_Pur_Inv_FC_Disc_Amount", "Balance_Amount",
                   "Balance_FCAmount", "Exchange_Rate"});
  }
  std::string of_payment() const {
    return master({"Payment_Type", "CreditCard_No", "CreditCard_Name", "CreditCard_Code",
                   "Cheque_Bank", "Cheque_Date", "Cheque_No", "Cheque_Bank_AccountNo",
                   "ChequeToPay"});
  }
  std::string of_vendor() const {
    return master({"Cash_Pur_Inv_Identity", "Company_Prefix", "Branch_Prefix", "Document_Prefix",
                   "Cash_Pur_Inv_Date", "Vendor_Code", "Vendor_name", "Vendor_Ref_Invoice_No",
                   "Vendor_Ref_Invoice_Date", "Vendor_Ref_Document_Prefix", "Cash_Pur_Inv_Comments",
                   "Foreign_Currency_Flag", "Currency_Code", "Currency_Symbol", "Purchase_Type",
                   "Last_Update"});
  }
  std::string of_tax() const {
    return master({"TaxCode", "TaxDescription", "CP_TaxRate", "CP_TaxAmount"});
  }
  std::string flags() const {
    return master({"fulfilled_Flag", "Status", "process_Flag", "Cancel_Flag", "Allow_Cancel_Flag",
                   "Year_End_Flag"});
  }
  std::string goods() const {
    return lines({"Item_Code", "Vendor_Item_Code", "Item_Name", "Unit_Code", "Unit_Name",
                  "Period_Type", "FOC_Flag", "Unit_Qty", "Cash_Pur_Inv_Qty"});
  }
  std::string prices() const {
    return lines({"Cash_Pur_Inv_Unit_Price", "Cash_Pur_Inv_Item_Disc_Percent",
                  "Cash_Pur_Inv_Item_Disc_Amount", "Cash_Pur_Inv_Item_FC_Disc_Amount",
                  "Cash_Pur_Inv_Item_Amount", "Cash_Pur_Inv_FC_Item_Amount"});
  }
  std::string places() const {
    return lines({"Proj_No", "Account_No", "Location_Name", "location_ID"});
  }
  std::string shares() const {
    return lines({"Cash_Pur_Inv_Overall_FC_Disc_Amount", "Cash_Pur_Inv_Overall_Disc_Amount"});
  }
};
OMBRIX_ON_EACH_DATABASE(CashPurchaseSavingTest);

/// The cells of a row from `first` to `last`.
std::string cells(const Grid& grid, std::int32_t row, std::int32_t first, std::int32_t last) {
  std::string text = grid.TextMatrix(row, first);
  for (auto column = first + 1; column <= last; ++column) {
    text += " | " + grid.TextMatrix(row, column);
  }
  return text;
}

TEST_P(CashPurchaseSavingTest, a_purchase_is_checked_before_anything_is_written) {
  struct {
    std::function<void()> spoil;
    std::string_view reason;
  } const cases[] = {
      {[&] { purchase.CurrencyCode = " "; }, "Invalid Currency Code."},
      {[&] { purchase.CashPurInvFCSubTotal = -1; }, "Invalid Purchase Invoice Sub Total."},
      {[&] { purchase.CashPurInvAmount = -0.01; }, "Invalid Purchase Invoice Amount."},
      {[&] { purchase.VendorCode = ""; }, "Invalid Vendor Code."},
      {[&] { purchase.CashPurInvDate = Date(); }, "Invalid Cash Purchase Date."},
      {[&] { purchase.BranchPrefix = ""; }, "Invalid Branch Prefix."},
      {[&] { purchase.DocumentPrefix = ""; }, "Invalid Document Prefix."},
      {[&] { purchase.CompanyPrefix = ""; }, "Invalid Company Prefix."},
      {[&] { purchase.AdoConnectionObject = std::make_shared<Connection>(); },
       "Invalid Connection."},
  };
  EXPECT_FALSE(purchase.Update_Cash_Purchase_Invoice());
  EXPECT_EQ(purchase.ErrDesc(), "Invalid Purchase Invoice No");
  purchase.CashPurInvSubTotal = -1;  // the home one is not looked at
  ASSERT_TRUE(purchase.Create_Cash_Purchase_Invoice()) << purchase.ErrDesc();
  // Each hides those before it: the checks come in the opposite order.
  for (const auto& each : cases) {
    each.spoil();
    EXPECT_FALSE(purchase.Create_Cash_Purchase_Invoice());
    EXPECT_EQ(purchase.ErrDesc(), each.reason);
  }
  EXPECT_FALSE(purchase::CashPurchase().Create_Cash_Purchase_Invoice());
  EXPECT_EQ(counters(), "7 | 4");
}

TEST_P(CashPurchaseSavingTest, the_digits_are_a_number_that_goes_as_text) {
  EXPECT_EQ(purchase::CashPurchase().AmtDig(), "0");
  purchase.AmtDig = " 3.0 ";
  EXPECT_EQ(raised_number([&] { purchase.AmtDig = "three"; }), 13);
  EXPECT_EQ(purchase.AmtDig(), "3");
}

TEST_P(CashPurchaseSavingTest, the_master_keeps_what_its_columns_say) {
  purchase.ForeignCurrencyFlag = true;
  purchase.ExchangeRate = 1.2;
  purchase.CashPurInvFCAmount = 90;
  purchase.CashPurInvAmount = 100;
  purchase.CashPurInvFCSubTotal = 95;
  purchase.CashPurInvSubTotal = 1;
  purchase.CashPurInvDiscPercent = 2.5;
  purchase.CashPurInvFCDiscAmount = 5;
  purchase.CashPurInvDiscAmount = 1;
  purchase.VendorRefInvoiceNo = " ";
  purchase.VendorRefDocumentPrefix = "VI";
  purchase.CashPurInvComments = "";
  purchase.CurrencySymbol = "mine";
  purchase.ProcessFlag = true;
  purchase.CancelFlag = true;
  purchase.AllowCancelFlag = true;
  purchase.FulFilledFlag = true;
  purchase.YearEndFlag = true;
  purchase.Status = "Processed";
  purchase.ChequeToPay = "bearer";
  purchase.TaxDescription = "Value added";
  tax();
  ASSERT_TRUE(purchase.Create_Cash_Purchase_Invoice()) << purchase.ErrDesc();
  EXPECT_EQ(purchase.CashPurInvNo(), "AABRCPITMP3");
  EXPECT_EQ(of_vendor(),
            "3 | AA | BR | CPI | 2024-03-01 00:00:00 | AAV001 | Orchard Traders | Null |"
            " 2024-02-28 00:00:00 | VI | Null | -1 | AED | Dh | Item | 2024-03-05 00:00:00");
  EXPECT_EQ(amounts(), "90 | 108 | 114 | 95 | 2.5 | 6 | 5 | 100 | 90 | 1.2");
  EXPECT_EQ(of_payment(), "Cash | 4000 | A Buyer | VC | First Bank | Null | 1000 | BANK | bearer");
  EXPECT_EQ(flags(), "0 | Saved | 0 | 0 | 0 | 0");
  EXPECT_EQ(of_tax(), "VAT | Value added | 15 | 100");

  // A currency without a row leaves the client's symbol. Home currency stores the rate 1, and the
  // client's own still counts. An empty name leaves the old one.
  purchase.CurrencyCode = "XXX";
  purchase.CurrencySymbol = " x ";
  purchase.ForeignCurrencyFlag = false;
  purchase.ExchangeRate = 0;
  purchase.VendorName = "";
  purchase.VendorRefDocumentPrefix = "";
  purchase.VendorRefInvoiceNo = "V-1";
  purchase.Payment_Type = "Cheque";
  ASSERT_TRUE(purchase.Update_Cash_Purchase_Invoice()) << purchase.ErrDesc();
  EXPECT_EQ(amounts(), "90 | 0 | 0 | 95 | 2.5 | 0 | 5 | 100 | 90 | 1");
  EXPECT_EQ(master({"Currency_Symbol", "Vendor_name", "Vendor_Ref_Document_Prefix",
                    "Vendor_Ref_Invoice_No", "Cheque_Date"}),
            "x | Orchard Traders | VI | V-1 | 2024-04-01 00:00:00");
}

TEST_P(CashPurchaseSavingTest, a_line_keeps_what_its_cells_say) {
  purchase.ExchangeRate = 1.5;
  ASSERT_TRUE(create({bought({{1, " 1001"},
                              {2, " V-7 "},
                              {3, " Paper"},
                              {4, "3 boxes"},
                              {5, "Box-12-x"},
                              {10, "10%"},
                              {11, "4"},
                              {12, "2.5"},
                              {18, " P1 "},
                              {19, "1"},
                              {21, "1"},
                              {23, " Taxable "}}),
                      bought({{1, " "}, {5, ""}, {6, ""}, {17, ""}, {18, "P2"}, {20, " "}})}))
      << purchase.ErrDesc();
  EXPECT_EQ(goods(),
            "AA 1001 |  V-7  |  Paper | 3 | Box | 12-x | 1 | 2 | 5\n"
            "Null | Null | Paper | 3 |  | Null | 0 | 0 | 5");
  EXPECT_EQ(prices(), "64 | 10 | 4 | 2.5 | 450 | 300\n60 | 0 | 0 | 0 | 450 | 300");
  EXPECT_EQ(places(), "P1 | AABR001100 | Main store | L1\nNull |  | Null | Null");
  EXPECT_EQ(lines({"TaxType", "Last_Update"}),
            "Taxable | 2024-03-05 00:00:00\nExempted | 2024-03-05 00:00:00");
  purchase.Purchase_Type = "Costing Expense";
  ASSERT_TRUE(create({bought()}));
  EXPECT_EQ(lines({"SL_No", "Item_Code"}), "3 | AABR1001");

  // The serial runs through the whole table; a line of quantity 0 has no price.
  purchase.CashPurInvNo = "AABRCPITMP3";
  purchase.GridName = grid_of({bought(), bought(), bought({{7, "0"}})});
  EXPECT_FALSE(purchase.Update_Cash_Purchase_Invoice());
  EXPECT_EQ(purchase.ErrDesc(), "Division by zero");
  EXPECT_EQ(lines({"SL_No"}), "4\n5");
}

TEST_P(CashPurchaseSavingTest, the_last_line_takes_what_the_others_leave_of_the_discount) {
  purchase.ExchangeRate = 3;
  purchase.CashPurInvDiscPercent = 3.333;
  purchase.CashPurInvFCDiscAmount = 10;
  purchase.CashPurInvDiscAmount = 30;
  const Cells third{{14, "100.1"}};
  // Round(3.336333), Round(10.008999).
  ASSERT_TRUE(create({bought(third), bought(third), bought(third)})) << purchase.ErrDesc();
  EXPECT_EQ(shares(), "3.34 | 10.01\n3.34 | 10.01\n3.32 | 9.98");
  // A blank row ends the lines, yet those below it were counted: none is the last.
  ASSERT_TRUE(create({bought(third), bought({{1, ""}, {14, "100.1"}}),
                      bought({{1, ""}, {2, "V-7"}, {3, ""}}), bought(third)}));
  EXPECT_EQ(shares(), "3.34 | 10.01\n3.34 | 10.01");
  ASSERT_TRUE(create({bought(third)}));
  EXPECT_EQ(shares(), "10 | 30");
  purchase.CashPurInvFCDiscAmount = 0;
  ASSERT_TRUE(create({bought(third)}));
  EXPECT_EQ(shares(), "0 | 0");
}

TEST_P(CashPurchaseSavingTest, what_is_saved_is_read_again) {
  purchase.ForeignCurrencyFlag = true;
  purchase.ExchangeRate = 1.2;
  purchase.CashPurInvFCAmount = 250;
  purchase.CashPurInvDiscPercent = 2;
  purchase.CashPurInvFCDiscAmount = 5;
  purchase.CashPurInvDiscAmount = 6;
  purchase.VendorRefDocumentPrefix = "VI";
  purchase.Payment_Type = "Cheque";
  purchase.ChequeToPay = "bearer";
  purchase.Purchase_Type = "Costing Expense";
  purchase.TaxDescription = "Value added";
  tax();
  ASSERT_TRUE(create({bought({{2, "V-7"},
                              {5, "Box-M"},
                              {10, "10"},
                              {11, "4"},
                              {12, "2.5"},
                              {13, "360"},
                              {18, "AABRPRJ42"},
                              {19, "42"},
                              {21, "1"},
                              {23, "Taxable"}}),
                      bought({{1, "2002"}, {13, "360"}, {16, ""}, {20, ""}}),
                      bought({{1, ""}, {13, "360"}})}));

  purchase::CashPurchase read;
  read.AdoConnectionObject = books.connection();
  read.ConnectionString = books.text();
  EXPECT_FALSE(read.Get_Direct_PInvoice());
  EXPECT_EQ(read.ErrDesc(), "Invalid Cash Purchase Number");
  read.CashPurInvNo = "AABRCPI99";
  EXPECT_FALSE(read.Get_Direct_PInvoice());
  EXPECT_EQ(read.ErrDesc(), "Cash Purchase Number does Not Exists.");
  read.CashPurInvNo = purchase.CashPurInvNo();
  const auto grid = std::make_shared<MemoryGrid>(1, kColumns);
  read.GridName = grid;
  ASSERT_TRUE(read.Get_Direct_PInvoice()) << read.ErrDesc();
  EXPECT_EQ(grid->Rows(), 5);
  EXPECT_EQ(cells(*grid, 1, 1, 12),
            "1001 | V-7 | Paper | 3 | Box-M | 2 | 5 | 62.5 | 76 | 10 | 4"
            " | 2.5");
  EXPECT_EQ(cells(*grid, 1, 13, 23),
            "360 | 300 | 1100 | Main store | AABR001100 | AABRPRJ42 | 42"
            " | L1 | 1 | 1 | ");
  EXPECT_EQ(cells(*grid, 2, 14, 23), "300 | 1100 |  | AABR001100 |  |  |  | 0 | 0 | ");
  // Grey where the item is on file and of another kind than "0".
  std::string marks;
  for (const auto& mark : grid->marks()) {
    marks += std::to_string(mark.setting) + ":" + std::to_string(mark.row) + "," +
             std::to_string(mark.column) + "=" + mark.value.to_text() + " ";
  }
  EXPECT_EQ(marks, "13:1,21=1 7:1,16=0 13:2,21=0 7:2,16=-2147483631 13:3,21=0 ");
  EXPECT_EQ(read.CashPurInvAmount(), 300);
  EXPECT_EQ(read.ExchangeRate(), 1.2);
  EXPECT_EQ(read.Status(), "Saved");

  // Saved again it is the same but for the class of tax, which reading does not fill.
  const auto all = [&] {
    return of_vendor() + amounts() + of_payment() + of_tax() + goods() + prices() + places() +
           shares();
  };
  const std::string before = all();
  read.AmtDig = "2";
  read.LastUpdate = Date(2024, 3, 5);
  ASSERT_TRUE(read.Update_Cash_Purchase_Invoice()) << read.ErrDesc();
  EXPECT_EQ(all(), before);
  EXPECT_EQ(count(books, "Cash_Purchase_Detail Where TaxType=''"), "3");
}

TEST_P(CashPurchaseSavingTest, what_is_missing_reads_as_it_should) {
  ASSERT_TRUE(purchase.Create_Cash_Purchase_Invoice());
  books.execute(
      "Update Cash_Purchase_Master Set Purchase_Type=Null, Exchange_Rate=Null, Cheque_No=Null,"
      " CreditCard_No=Null, Vendor_name='  ', Cash_Pur_Inv_Comments=Null, TaxCode=Null,"
      " Status=Null, Cash_Pur_Inv_Date=Null, Payment_Type=Null");
  purchase.ForeignCurrencyFlag = true;
  purchase.ExchangeRate = 7;
  purchase.TaxCode = "mine";
  ASSERT_TRUE(purchase.Get_Direct_PInvoice()) << purchase.ErrDesc();
  EXPECT_EQ(purchase.Purchase_Type(), "Item");
  EXPECT_EQ(purchase.ExchangeRate(), 1);
  EXPECT_EQ(purchase.ChequeNo() + purchase.CreditCardNo(), "");
  EXPECT_EQ(purchase.VendorName(), "Orchard Traders");
  EXPECT_EQ(purchase.CashPurInvComments(), "by hand");
  EXPECT_EQ(purchase.TaxCode(), "mine");
  EXPECT_EQ(purchase.CashPurInvDate(), Date(2024, 3, 1));
  EXPECT_EQ(purchase.Payment_Type(), "Cash");
  EXPECT_EQ(purchase.ChequeDate(), Date::now().midnight());
  EXPECT_EQ(purchase.Status(), "Saved");
  books.execute("Update Cash_Purchase_Master Set process_Flag=1, Foreign_Currency_Flag=-1");
  purchase.ExchangeRate = 7;
  ASSERT_TRUE(purchase.Get_Direct_PInvoice());
  EXPECT_EQ(purchase.Status(), "Processed");
  EXPECT_EQ(purchase.ExchangeRate(), 7);
  EXPECT_EQ(purchase.GridName()->Rows(), 3);

  books.execute("Update Cash_Purchase_Detail Set Account_No=Null");
  EXPECT_FALSE(purchase.Get_Direct_PInvoice());
  EXPECT_EQ(purchase.ErrDesc(), "Invalid use of Null");
  books.execute("Delete From Cash_Purchase_Detail");
  EXPECT_FALSE(purchase.Get_Direct_PInvoice());
  EXPECT_EQ(purchase.ErrDesc(), "Invalid Purchase Invoice No.");
}

}  // namespace
}  // namespace ombrix::testing
