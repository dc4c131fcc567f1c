#include "road/road_fixture.h"

namespace ombrix::testing {

namespace {

class WholeRoad : public Road {
 protected:
  void expect_rows(const std::vector<std::string>& columns, const std::string& from,
                   const std::string& expected) const {
    EXPECT_EQ(as_listed(list(columns, from)), as_listed(expected)) << from;
  }
};

OMBRIX_ON_EACH_DATABASE(WholeRoad);

// Paper: 20 of 200, 20 come for 300 (average 12.50), 10 for 280 at 3.5 (15.60); 4 go back for 121
// and 10 for 135, which leaves the costs alone. Pens: 10 for 50 (5.00), 2 free ones worth 40
// (7.50), 8 at half of 100 (7.00), 4 go back for 25. Hampers are stocked by a receipt and not taken
// out by a return. An order raises what is on order by the item's base quantity, 22 pens by 44; a
// receipt does not: 12 came off.
TEST_P(WholeRoad, LeavesStockAndItsCosts) {
  expect_rows({"Item_Code", "Stock_In_Hand", "Stock_Amount", "Average_Cost", "Prv_Average_Cost",
               "Landed_Cost", "Prv_Landed_Cost", "Purchase_Order_Qty"},
              "Item_Master Order By Item_Code", R"(
      AA1001 | 36 | 524 | 15.6 | 12.5 | 28   | 15   | 0
      AA2002 | 16 | 115 | 7    | 7.5  | 6.25 | 20   | 32
      AA3003 | 5  | 350 | 70   | 0    | 70   | 0    | 0
      AA9001 | 0  | 0   | 0    | Null | 0    | Null | 0)");
  expect_rows({"Vendor_Code", "Item_Code", "Last_Purchase_Price"},
              "Vendor_Items Order By Vendor_Code, Item_Code", R"(
      AAV001 | AA1001 | 15
      AAV001 | AA2002 | 6.25
      AAV002 | AA1001 | 28)");
}

// In the unit of the line. Back went 5 boxes of 20, 2 of the 5 from abroad, and 2 packs of 4.
TEST_P(WholeRoad, LeavesEachLocationsStock) {
  expect_rows({"Branch_Prefix", "Item_Code", "location_ID", "Unit_Name", "Location_Qty"},
              "Location_Stock Order By Branch_Prefix, Item_Code, Unit_Name", R"(
      B2 | AA1001 | L2 | Box  | 3
      B2 | AA3003 | L2 | Each | 5
      BR | AA1001 | L1 | Box  | 15
      BR | AA2002 | L1 | Each | 12
      BR | AA2002 | L1 | Pack | 2)");
}

// Net of the order's discount, on the way in; what the return says, on the way out.
TEST_P(WholeRoad, JournalsEveryMovementOfStock) {
  expect_rows({"Document_No", "Document_Type", "Item_Code", "In_Qty", "In_Amount", "In_Price",
               "Out_Qty", "Out_Amount", "Out_Price"},
              "Stock_Movement Order By Document_No, Item_Code, In_Qty", R"(
      AAB2GRN51 | IN  | AA1001 | 10 | 280 | 28   | 0  | 0   | 0
      AAB2GRN51 | IN  | AA3003 | 5  | 350 | 70   | 0  | 0   | 0
      AAB2PRN51 | OUT | AA1001 | 0  | 0   | 0    | 4  | 120 | 30
      AABRCPN11 | IN  | AA2002 | 8  | 50  | 6.25 | 0  | 0   | 0
      AABRGRN11 | IN  | AA1001 | 20 | 270 | 13.5 | 0  | 0   | 0
      AABRGRN12 | IN  | AA2002 | 2  | 40  | 20   | 0  | 0   | 0
      AABRGRN12 | IN  | AA2002 | 10 | 45  | 4.5  | 0  | 0   | 0
      AABRPRN11 | OUT | AA1001 | 0  | 0   | 0    | 10 | 135 | 13.5
      AABRPRN12 | OUT | AA2002 | 0  | 0   | 0    | 4  | 25  | 6.25)");
}

// The branch's oldest layers of paper pay for its return, 6 and 4 of the 14; of pens the newest
// one, with 4 of its 8. Layers keep their amounts.
TEST_P(WholeRoad, TakesReturnsOffTheLayersOfTheirBranch) {
  expect_rows({"Branch_Prefix", "Item_Code", "Purchase_Document_No", "Total_Purchase_Qty",
               "Purchase_Unit_Price", "Purchase_Item_Amount"},
              "Purchase_Log Order By Branch_Prefix, Item_Code, Purchase_Log_Date,"
              " Total_Purchase_Qty",
              R"(
      B2 | AA1001 | AAB2GRN51 | 6  | 56   | 280
      B2 | AA3003 | AAB2GRN51 | 5  | 70   | 350
      BR | AA1001 | earlier   | 0  | Null | 60
      BR | AA1001 | later     | 10 | Null | 140
      BR | AA1001 | AABRGRN11 | 20 | 27   | 270
      BR | AA2002 | AABRGRN12 | 2  | 20   | 40
      BR | AA2002 | AABRGRN12 | 10 | 4.5  | 45
      BR | AA2002 | AABRCPN11 | 4  | 12.5 | 50)");
}

// A receipt's accrual carries the tax, 36 of it 24 and 12; free pens stand against their own
// account, less the order's 10 %. The dearer pens are 10 of variance, and 55 off the accrual.
TEST_P(WholeRoad, PostsTheJournalAtHome) {
  expect_rows({"Document_No", "Account_No", "GL_Debit_Amount", "GL_Credit_Amount"},
              "General_Ledger Where Document_No Like 'AABR%' Order By Row_Id", R"(
      AABRGRN11 | AABRGLSTOCK    | 270 | 0
      AABRGRN11 | AABRGLACCRUAL  | 0   | 306
      AABRGRN11 | AABRGLSTATETAX | 24  | 0
      AABRGRN11 | AABRGLCITYTAX  | 12  | 0
      AABRGRN12 | AABRGLSTOCK    | 45  | 0
      AABRGRN12 | AABRGLACCRUAL  | 0   | 45
      AABRGRN12 | AABRGLSTOCK    | 36  | 0
      AABRGRN12 | AABRGLFREE     | 0   | 36
      AABRPIN11 | AABRGLACCRUAL  | 306 | 0
      AABRPIN11 | AABRGLVARIANCE | 10  | 0
      AABRPIN11 | AABRGLACCRUAL  | 55  | 0
      AABRPIN11 | AABRGLPAYABLE  | 0   | 361
      AABRPIN12 | AABRGLACCRUAL  | 80  | 0
      AABRPIN12 | AABRGLPAYABLE  | 0   | 80
      AABRCPN11 | AABRGLBOUGHT   | 50  | 0
      AABRCPN11 | AABRGLPAYABLE  | 0   | 56
      AABRCPN11 | AABRGLSTATETAX | 4   | 0
      AABRCPN11 | AABRGLCITYTAX  | 2   | 0
      AABRPRN11 | AABRGLSTOCK    | 0   | 135
      AABRPRN11 | AABRGLSTATETAX | 0   | 12
      AABRPRN11 | AABRGLCITYTAX  | 0   | 6
      AABRPRN11 | AABRGLACCRUAL  | 153 | 0
      AABRPRN12 | AABRGLSTOCK    | 0   | 25
      AABRPRN12 | AABRGLACCRUAL  | 25  | 0)");
}

// The boxes are worth 2 x 16 x 4 less 2 x 3.5, 121; at 3.5, and less 2 x 4, 1 of that is variance.
// The hamper is worth 80, 10 of it variance. A line is credited less the variance up to it: 120 and
// 69. The memo has the home amount in both currencies on the vendor's side.
TEST_P(WholeRoad, PostsTheJournalAbroadInBothCurrencies) {
  expect_rows({"Document_No", "Account_No", "GL_Debit_Amount", "GL_Credit_Amount",
               "FC_GL_Debit_Amount", "FC_GL_Credit_Amount"},
              "General_Ledger Where Document_No Like 'AAB2%' Order By Row_Id", R"(
      AAB2GRN51 | AAB2GLSTOCK    | 350 | 0   | 100 | 0
      AAB2GRN51 | AAB2GLACCRUAL  | 0   | 350 | 0   | 100
      AAB2GRN51 | AAB2GLSTOCK    | 280 | 0   | 80  | 0
      AAB2GRN51 | AAB2GLACCRUAL  | 0   | 280 | 0   | 80
      AAB2PIN51 | AAB2GLACCRUAL  | 350 | 0   | 100 | 0
      AAB2PIN51 | AAB2GLACCRUAL  | 280 | 0   | 80  | 0
      AAB2PIN51 | AAB2GLDISCOUNT | 0   | 63  | 0   | 18
      AAB2PIN51 | AAB2GLPAYABLE  | 0   | 567 | 0   | 162
      AAB2PRN51 | AAB2GLSTOCK    | 0   | 120 | 0   | 30
      AAB2PRN51 | AAB2GLSTOCK    | 0   | 69  | 0   | 20
      AAB2PRN51 | AAB2GLACCRUAL  | 190 | 0   | 50  | 0
      AAB2PRN51 | AAB2GLVARIANCE | 0   | 11  | 0   | 0
      AAB2DRM51 | AAB2GLPAYABLE  | 200 | 0   | 200 | 0
      AAB2DRM51 | AAB2GLACCRUAL  | 0   | 208 | 0   | 52
      AAB2DRM51 | AAB2GLRETURNED | 0   | 8   | 0   | 2)");
}

// Balances move as the journal does, but for four things: taxes move against their ledger lines, a
// cash purchase's payable without its tax (50, not 56), and a return's stock and accrual at today's
// rate (201, where the ledger says 189 and 190). Opening balances make no ledger lines.
TEST_P(WholeRoad, MovesTheBalancesOfTheAccounts) {
  expect_rows({"Account_No", "Opening_Balance", "Current_Balance"},
              "Chart_Of_Accounts Where Opening_Balance<>0 Or Current_Balance<>0"
              " Order By Account_No",
              R"(
      AAB2GLACCRUAL  | 0    | -7
      AAB2GLADVANCE  | 40   | 0
      AAB2GLDISCOUNT | 0    | -63
      AAB2GLPAYABLE  | 0    | -367
      AAB2GLRETURNED | 0    | -8
      AAB2GLSTOCK    | 0    | 429
      AAB2GLVARIANCE | 0    | -11
      AABRGLACCRUAL  | 0    | 268
      AABRGLADVANCE  | 100  | 0
      AABRGLBOUGHT   | 0    | 50
      AABRGLCITYTAX  | 0    | -8
      AABRGLFREE     | 0    | -36
      AABRGLPAYABLE  | -500 | -491
      AABRGLSTATETAX | 0    | -16
      AABRGLSTOCK    | 0    | 191
      AABRGLVARIANCE | 0    | 10)");
}

TEST_P(WholeRoad, KeepsTheLedgerOfWhatIsOwed) {
  expect_rows({"Document_No", "Vendor_Code", "Account_No", "APL_Debit_Amount", "APL_Credit_Amount",
               "FC_APL_Debit_Amount", "FC_APL_Credit_Amount", "Ref_No"},
              "Accounts_Payable_Ledger Order By Row_Id", R"(
      AABROBN11 | AAV100 | AABRGLPAYABLE | 0   | 300 | 0   | 300 | Null
      AABROBN12 | AAV100 | AABRGLPAYABLE | 0   | 200 | 0   | 200 | Null
      AABROBN13 | AAV100 | AABRGLADVANCE | 100 | 0   | 100 | 0   | A-1
      AAB2OBN51 | AAV002 | AAB2GLADVANCE | 40  | 0   | 40  | 0   | A-2
      AABRPIN11 | AAV100 | AABRGLPAYABLE | 0   | 361 | 0   | 361 | OT-1
      AAB2PIN51 | AAV002 | AAB2GLPAYABLE | 0   | 567 | 0   | 162 | OM-1
      AABRPIN12 | AAV100 | AABRGLPAYABLE | 0   | 80  | 0   | 80  | OT-2
      AABRCPN11 | AAV100 | AABRGLPAYABLE | 0   | 56  | 0   | 56  | Null
      AAB2DRM51 | AAV002 | AAB2GLPAYABLE | 200 | 0   | 200 | 0   | Null)");
  expect_rows({"Vendor_Code", "Vendor_Balance", "Vendor_Fc_Balance"},
              "Vendor_Master Order By Vendor_Code", R"(
      AAV002 | 327 | -78
      AAV100 | 897 | 897)");
}

// An order keeps the figures of its own currency.
TEST_P(WholeRoad, FinishesOrdersAndReceipts) {
  expect_rows({"LPO_No", "Vendor_Code", "LPO_SubTotal", "LPO_Discount_Amount", "LPO_TaxAmount",
               "LPO_Total_Amount", "Processed_Flag", "Invoiced_Flag"},
              "LPO_Master Order By LPO_No", R"(
      AAB2LPO51 | AAV002 | 180 | 0  | 0  | 180 | 1 | 0
      AABRLPO11 | AAV100 | 400 | 40 | 36 | 396 | 1 | 0
      AABRLPO20 | AAV100 | 80  | 0  | 0  | 80  | 1 | 1)");
  expect_rows({"LPO_No", "SL_No", "LPO_Qty", "Received_Qty", "LPO_Item_Amount", "LPO_Overall_Disc"},
              "LPO_Detail Order By LPO_No, SL_No", R"(
      AAB2LPO51 | 1 | 5  | 5  | 100 | 0
      AAB2LPO51 | 2 | 5  | 5  | 80  | 0
      AABRLPO11 | 1 | 10 | 10 | 300 | 30
      AABRLPO11 | 2 | 20 | 10 | 100 | 10
      AABRLPO11 | 3 | 2  | 2  | 40  | 0
      AABRLPO20 | 1 | 2  | 0  | 80  | 0)");
  expect_rows({"GRN_No", "Vendor_Code", "GRN_SubTotal", "GRN_Discount_Amount", "GRN_Total_Amount",
               "GRN_FC_Total_Amount", "Exchange_Rate", "Processed_Flag", "GRN_Invoiced_flag"},
              "Goods_Receive_Master Order By GRN_No", R"(
      AAB2GRN51 | AAV002 | 630 | 0  | 630 | 180 | 3.5 | 1 | 1
      AABRGRN11 | AAV100 | 300 | 30 | 270 | 270 | 1   | 1 | 1
      AABRGRN12 | AAV100 | 90  | 5  | 85  | 85  | 1   | 1 | 1)");
  expect_rows(
      {"GRN_No", "SL_No", "POD_SL_NO", "Item_Code", "grn_qty", "GRN_Unit_Price", "GRN_Item_Amount",
       "GRN_FC_Item_Amount", "PO_Overall_Disc", "Invoiced_Flag", "Return_Qty"},
      "Goods_Receive_Detail Order By GRN_No, SL_No", R"(
      AAB2GRN51 | 1 | 1 | AA3003 | 5  | 70 | 350 | 100 | 0  | 1 | Null
      AAB2GRN51 | 2 | 2 | AA1001 | 5  | 56 | 280 | 80  | 0  | 1 | Null
      AABRGRN11 | 1 | 1 | AA1001 | 10 | 32 | 300 | 300 | 30 | 1 | 10
      AABRGRN12 | 1 | 2 | AA2002 | 10 | 5  | 50  | 50  | 5  | 1 | Null
      AABRGRN12 | 2 | 3 | AA2002 | 2  | 20 | 40  | 40  | 0  | 1 | Null)");
}

// An opening balance is a figure of one currency. The invoice's 10 % off 350 and 280 is 35 and 28.
// Lines keep the code that the vendor had.
TEST_P(WholeRoad, FinishesInvoices) {
  expect_rows({"Purchase_Inv_No", "Vendor_Code", "Purchase_Inv_SubTotal",
               "Purchase_Inv_Disc_Amount", "Purchase_Inv_Amount", "Purchase_Inv_FC_Amount",
               "Balance_Amount", "Processed_Flag", "Purchase_Inv_Comments"},
              "Purchase_Invoice_Master Order By Purchase_Inv_No", R"(
      AAB2PIN51 | AAV002 | 630 | 63   | 567 | 162 | 567 | 1 | Null
      AABROBN11 | AAV100 | 300 | Null | 300 | 300 | 300 | 1 | R-1
      AABROBN12 | AAV100 | 200 | Null | 200 | 200 | 200 | 1 | R-2 : late
      AABRPIN11 | AAV100 | 361 | 0    | 361 | 361 | 361 | 1 | Null
      AABRPIN12 | AAV100 | 80  | 0    | 80  | 80  | 80  | 1 | Null)");
  expect_rows({"Purchase_Inv_No", "Vendor_Code", "GRN_No", "Item_Code", "Purchase_Inv_Qty",
               "Purchase_Inv_Unit_Price", "Purchase_Inv_Item_Amount", "GRN_Item_Amount",
               "Purchase_Inv_Overall_Disc_Amount", "TaxType", "Return_Qty"},
              "Purchase_Invoice_Detail Order By Purchase_Inv_No, Item_Code, GRN_SL_NO", R"(
      AAB2PIN51 | AAV002 | AAB2GRN51 | AA1001 | 5  | 56 | 280 | 280 | 28   | Exempted | 4
      AAB2PIN51 | AAV002 | AAB2GRN51 | AA3003 | 5  | 70 | 350 | 350 | 35   | Exempted | 1
      AABRPIN11 | AAV001 | AABRGRN11 | AA1001 | 10 | 32 | 306 | 300 | Null | Taxable  | Null
      AABRPIN11 | AAV001 | AABRGRN12 | AA2002 | 10 | 6  | 55  | 50  | Null | Exempted | Null
      AABRPIN11 | AAV001 | AABRGRN12 | AA2002 | 2  | 20 | 40  | 40  | Null | Exempted | Null
      AABRPIN12 | AAV001 | Null      | AA9001 | 2  | 40 | 80  | 80  | Null | Exempted | Null)");
}

TEST_P(WholeRoad, FinishesOpeningBalancesAndPayments) {
  expect_rows({"Vendor_Code", "OBType", "SL_No", "Balance_Amount", "OB_Inv_No"},
              "Vendor_OB Order By OB_Inv_No", R"(
      AAV002 | Debit  | 1 | 40  | AAB2OBN51
      AAV100 | Credit | 1 | 300 | AABROBN11
      AAV100 | Credit | 2 | 200 | AABROBN12
      AAV100 | Debit  | 1 | 100 | AABROBN13)");
  expect_rows({"Payment_No", "Payment_To_Code", "Payment_Status", "Payment_Amount",
               "Payment_FC_Amount", "Balance_Amount", "Foreign_Currency_Flag"},
              "Payment_Master Order By Payment_No", R"(
      AAB2OBN51 | AAV002 | Processed | 40  | 40  | 40  | -1
      AABROBN13 | AAV100 | Processed | 100 | 100 | 100 | 0)");
}

// A return's row keeps what the client saved; the memo takes its figures from there.
TEST_P(WholeRoad, FinishesReturnsAndTheirMemo) {
  expect_rows({"Purchase_Rtn_No", "Vendor_Code", "Purchase_ref_Doc", "Purchase_Rtn_Amount",
               "Purchase_Rtn_FC_Amount", "PR_TaxAmount", "Exchange_Rate", "Processed_Flag"},
              "Purchase_Return_Master Order By Purchase_Rtn_No", R"(
      AAB2PRN51 | AAV002 | INV | 200 | 50  | 0  | 4 | -1
      AABRPRN11 | AAV100 | REC | 135 | 135 | 18 | 1 | -1
      AABRPRN12 | AAV100 | CAP | 25  | 25  | 0  | 1 | -1)");
  expect_rows({"Voucher_No", "Voucher_Identity", "AccountNo", "Voucher_Amount", "Voucher_FCAmount",
               "amountDr", "amountfcDr", "process_Flag"},
              "Voucher_Master", "AAB2DRM51 | 51 | AAV002 | 200 | 50 | 200 | 200 | 1");
  expect_rows({"Voucher_No", "SL_No", "Account_No", "Debit_Amount", "Credit_Amount",
               "FC_Debit_Amount", "FC_Credit_Amount"},
              "Voucher_Detail Order By SL_No", R"(
      AAB2DRM51 | 1 | AAV002         | 200 | 0   | 200 | 0
      AAB2DRM51 | 2 | AAB2GLACCRUAL  | 0   | 208 | 0   | 52
      AAB2DRM51 | 3 | AAB2GLRETURNED | 0   | 8   | 0   | 2)");
}

// The cheque pays the tax too, but not in its foreign figure. The purchase keeps the old code,
// which its entry in the bank's register does not.
TEST_P(WholeRoad, FinishesTheCashPurchaseAndItsCheque) {
  expect_rows(
      {"Cash_Pur_Inv_No", "Vendor_Code", "Cash_Pur_Inv__SubTotal", "Cash_Pur_Inv_Disc_Amount",
       "Cash_Pur_Inv_Amount", "CP_TaxAmount", "Status", "process_Flag"},
      "Cash_Purchase_Master", "AABRCPN11 | AAV001 | 100 | 50 | 50 | 6 | In Transit | 1");
  expect_rows({"Item_Code", "Cash_Pur_Inv_Qty", "Cash_Pur_Inv_Unit_Price",
               "Cash_Pur_Inv_Item_Amount", "Cash_Pur_Inv_Overall_Disc_Amount", "Return_Qty"},
              "Cash_Purchase_Detail Where Cash_Pur_Inv_No='AABRCPN11'",
              "AA2002 | 4 | 25 | 100 | 50 | 4");
  expect_rows({"PDC_No", "Source_No", "CustomerID", "Bank_ID", "Cheque_No", "Cheque_Amount",
               "Cheque_FC_Amount", "Status", "Cleared"},
              "PDC_Master",
              "AABRPDC11 | AABRCPN11 | AAV100 | AABRGLBANK | 101 | 56 | 50 | In Transit | No");
  expect_rows({"Account_No", "Next_Check_No"}, "Bank_List Order By Account_No", R"(
      AAB2GLBANK | 101
      AABRGLBANK | 102)");
}

// Final numbers and temporary ones count apart. A number of the client's own, 20, moves the counter
// behind it; opening balances and cheques have no temporary number.
TEST_P(WholeRoad, MovesTheCountersOn) {
  expect_rows({"Branch_Prefix", "Document_Prefix", "Document_Next_No", "Temporary_Next_No"},
              "Document_Prefix Order By Branch_Prefix, Document_Prefix", R"(
      B2 | CPN | 51 | 1
      B2 | DRM | 52 | 2
      B2 | GRN | 52 | 2
      B2 | LPO | 52 | 2
      B2 | OBN | 52 | 1
      B2 | PDC | 51 | 1
      B2 | PIN | 52 | 2
      B2 | PRN | 52 | 2
      BR | CPN | 12 | 2
      BR | DRM | 11 | 1
      BR | GRN | 13 | 3
      BR | LPO | 21 | 3
      BR | OBN | 14 | 1
      BR | PDC | 12 | 1
      BR | PIN | 13 | 3
      BR | PRN | 13 | 3)");
}

TEST_P(WholeRoad, TakesTheAdjustmentsToTheNewCode) {
  for (const char* table : {"AP_Adjustment_Detail", "AP_Adjustment_Master"}) {
    expect_rows({"Vendor_Code"}, table + std::string(" Order By Vendor_Code"), "AAV002\nAAV100");
  }
}

}  // namespace

}  // namespace ombrix::testing
