/// A purchase on its whole way: what documents leave with each other, which none of them shows
/// alone.

#include "road/walk.h"

namespace ombrix::testing {
namespace {

/// The company AA before its first purchase: branches BR and B2, which count from 11 and from 51,
/// both with temporary numbers from 1; home currency AED, and USD at 3.5. BR has 20 reams of paper
/// worth 200 from before; B2 raises debit memos. Paper and pens are goods, a hamper is made up of
/// goods, a visit is a service.
constexpr const char* kCompany = R"(
  Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix, Document_Next_No,
      Temporary_Next_No)
    Select s.column1, 'AA', b.column1, b.column2, 1
    From (Values ('LPO'), ('GRN'), ('PIN'), ('PRN'), ('CPN'), ('OBN'), ('DRM'), ('PDC')) As s,
         (Values ('BR', 11), ('B2', 51)) As b;
  Insert Into Chart_Of_Accounts (Account_No, Account_Name)
    Select 'AA' || b.column1 || 'GL' || a.column1, a.column1
    From (Values ('ACCRUAL'), ('ADVANCE'), ('BANK'), ('BOUGHT'), ('CITYTAX'), ('DISCOUNT'),
                 ('FREE'), ('PAYABLE'), ('RETURNED'), ('STATETAX'), ('STOCK'), ('VARIANCE')) As a,
         (Values ('BR'), ('B2')) As b;
  Insert Into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix, Pur_Accrual_Account_No,
      FOC_Account_No, Discount_Account_No, Pur_Variance_Account_No, Inventory_Account_No,
      Cash_Purchase_Account_No, Purchase_Disc_Account_No, Generate_Debit_Memo)
    Values ('BR', 'AA', 'AABRGLACCRUAL', 'AABRGLFREE', 'AABRGLDISCOUNT', 'AABRGLVARIANCE',
            'AABRGLSTOCK', 'AABRGLBOUGHT', 'AABRGLRETURNED', 0),
           ('B2', 'AA', 'AAB2GLACCRUAL', 'AAB2GLFREE', 'AAB2GLDISCOUNT', 'AAB2GLVARIANCE',
            'AAB2GLSTOCK', 'AAB2GLBOUGHT', 'AAB2GLRETURNED', -1);
  Insert Into Default_Account_Preferences (Branch_Prefix, Company_Prefix, AP_Account_No,
      Adv_Pmt_Account_No)
    Values ('BR', 'AA', 'AABRGLPAYABLE', 'AABRGLADVANCE'),
           ('B2', 'AA', 'AAB2GLPAYABLE', 'AAB2GLADVANCE');
  Insert Into Bank_List (Account_No, Branch_Prefix, Next_Check_No) Values ('AABRGLBANK', 'BR', 101);
  Insert Into Currency_Master (Currency_Code, Currency_Symbol) Values ('AED', 'Dh'), ('USD', '$');
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
  Insert Into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityRate)
    Values ('PUR12', 'STATE', 8), ('PUR12', 'CITY', 4);
  Insert Into TaxAuthorities (Code, accountno, Description)
    Values ('STATE', 'AABRGLSTATETAX', 'State'), ('CITY', 'AABRGLCITYTAX', 'City');
  Insert Into AP_Adjustment_Detail (Vendor_Code) Values ('AAV001'), ('AAV002');
  Insert Into AP_Adjustment_Master (Vendor_Code) Values ('AAV001'), ('AAV002'))";

/// What its purchasers do. A document begins with its class, its side and its series; what stands
/// below is done in turn: members are set, a table becomes the grid (its heading names the
/// columns), cells are written (@) and methods called (>), each of which has to answer True.
constexpr const char* kRoad = R"(
  Vendor home -
  VendorCountry=Oman; VendorCurrencyCode=AED
  > Create_Vendor
  Vendor abroad -
  VendorCountry=Oman; VendorCurrencyCode=USD
  > Create_Vendor

  # 300 and 200 are owed to the first vendor, who holds 100 of an advance; the other holds 40.
  VendorOB home OBN
  OBType=Credit
  1   | 2          | 3   | 6
  R-1 | 2023-11-10 | 300 |
  R-2 | 2023-12-01 | 200 | late
  > Create_OB Process_OB
  VendorOB home OBN
  OBType=Debit
  1   | 2          | 3
  A-1 | 2023-12-20 | 100
  > Create_OB Process_OB
  VendorOB abroad OBN
  OBType=Debit
  1   | 2          | 3
  A-2 | 2023-12-21 | 40
  > Create_OB Process_OB

  # Paper at 32 less 2 and pens, 10 % off the whole, two better pens free; paper and hampers from
  # abroad; a service under a number of the buyer's own.
  LPO home LPO
  LPODate=2024-01-02; LPOFCSubtotal=400; LPODiscountPercent=10; LPOFCDiscountAmount=40
  LPOTaxAmount=36; LPOFCTotalAmount=396
  1    | 3           | 4    | 5 | 6 | 7  | 8  | 10 | 12  | 15          | 18 | 20
  1001 | Paper       | Box  | 1 | 2 | 10 | 32 | 2  | 300 | AABRGLSTOCK | 0  | True
  2002 | Pens        | Each | 2 | 1 | 20 | 5  | 0  | 100 | AABRGLSTOCK | 0  | False
  2002 | Better pens | Each | 2 | 1 | 2  | 20 | 0  | 40  | AABRGLSTOCK | 1  | False
  > Create_LPO Process_LPO
  LPO abroad LPO
  LPODate=2024-01-02; LPOFCSubtotal=180; LPOFCTotalAmount=180
  1    | 3      | 4    | 5 | 6 | 7 | 8  | 12  | 15
  3003 | Hamper | Each | 3 | 1 | 5 | 20 | 100 | AAB2GLSTOCK
  1001 | Paper  | Box  | 1 | 2 | 5 | 16 | 80  | AAB2GLSTOCK
  > Create_LPO Process_LPO
  LPO home LPO
  LPODate=2024-01-02; LPOFCSubtotal=80; LPOFCTotalAmount=80; DocFlag=True; manualDocIdentity=20
  1    | 3     | 4     | 5 | 6 | 7 | 8  | 12 | 15
  9001 | Visit | Visit | 4 | 1 | 2 | 40 | 80 | AABRGLBOUGHT
  > Create_LPO Process_LPO

  # All the paper, taxed 12 % on 300; half the pens and the free ones; all from abroad at 3.5.
  GRN home GRN
  GRNRefDocumentNo=AABRLPO11; TaxCode=PUR12; TaxPercent=12; TaxAmount=36; TaxType=GRN
  1 | 2    | 4     | 5   | 6 | 7 | 8  | 9  | 16   | 17 | 18          | 20 | 22 | 23 | 24      | 25
  1 | 1001 | Paper | Box | 1 | 2 | 10 | 10 | Main | 1  | AABRGLSTOCK | L1 | 30 | 30 | Taxable | 12
  > Create_GRN ProcessGRN
  GRN home GRN
  GRNRefDocumentNo=AABRLPO11
  1 | 2    | 4           | 5    | 6 | 7 | 8  | 9  | 16   | 17 | 18          | 20 | 21 | 22 | 23
  1 | 2002 | Pens        | Each | 2 | 1 | 20 | 10 | Main | 2  | AABRGLSTOCK | L1 | 0  | 10 | 10
  1 | 2002 | Better pens | Each | 2 | 1 | 2  | 2  | Main | 3  | AABRGLSTOCK | L1 | 1  | 0  | 0
  > Create_GRN ProcessGRN
  GRN abroad GRN
  GRNRefDocumentNo=AAB2LPO51
  1 | 2    | 4      | 5    | 6 | 7 | 8 | 9 | 16   | 17 | 18          | 20
  1 | 3003 | Hamper | Each | 3 | 1 | 5 | 5 | Shop | 1  | AAB2GLSTOCK | L2
  1 | 1001 | Paper  | Box  | 1 | 2 | 5 | 5 | Shop | 2  | AAB2GLSTOCK | L2
  > Create_GRN ProcessGRN

  # The pens cost 6 and not 5; 10 % off the goods from abroad; the visits straight from the order.
  PurchaseInvoice home PIN
  VendorRefInvoiceNo=OT-1; InvoiceType=GRN; PurchaseInvSubTotal=361; PurchaseInvFCSubTotal=361
  PurchaseInvAmount=361; PurchaseInvFCAmount=361
  > Get_GRN_details
  @ 1,1=True; 2,1=True; 3,1=True; 2,24=6; 2,16=60; 2,17=60; 2,32=55; 2,34=55
  > Create_Purchase_Invoice Process_Invoice
  PurchaseInvoice abroad PIN
  VendorRefInvoiceNo=OM-1; InvoiceType=GRN; PurchaseInvSubTotal=630; PurchaseInvFCSubTotal=180
  PurchaseInvDiscPercent=10; PurchaseInvDiscAmount=63; PurchaseInvFCDiscAmount=18
  PurchaseInvAmount=567; PurchaseInvFCAmount=162
  > Get_GRN_details
  @ 1,1=True; 2,1=True
  > Create_Purchase_Invoice Process_Invoice
  PurchaseInvoice home PIN
  VendorRefInvoiceNo=OT-2; InvoiceType=LPO; RefInvoiceType=LPO; PONo=AABRLPO20; PODate=2024-01-02
  PurchaseInvSubTotal=80; PurchaseInvFCSubTotal=80; PurchaseInvAmount=80; PurchaseInvFCAmount=80
  > Get_PO_details Create_Purchase_Invoice Process_Invoice

  # Four packs of pens at half of 25, and 12 % tax on 50.
  CashPurchase home CPN
  TaxCode=PUR12; TaxPercent=12; TaxAmount=6; TaxType=CP; CashPurInvDate=2024-02-01
  Payment_Type=Cheque; Cheque_Bank_AccountNo=AABRGLBANK; ChequeNo=101; ChequeDate=2024-02-15
  CashPurInvFCSubTotal=100; CashPurInvDiscPercent=50; CashPurInvDiscAmount=50
  CashPurInvFCDiscAmount=50; CashPurInvAmount=50; CashPurInvFCAmount=50
  1    | 3    | 4 | 5    | 6 | 7 | 13  | 14  | 16   | 17          | 20
  2002 | Pens | 2 | Pack | 2 | 4 | 100 | 100 | Main | AABRGLSTOCK | L1
  > Create_Cash_Purchase_Invoice Process_Cash_Purchase

  # Half the paper of the first receipt, 30 a box less its 10 %, with its tax; two of the four
  # packs, at half of 25; two boxes and a hamper, billed at 3.5 and returned at 4, with 2 dollars of
  # the invoice's discount on the boxes.
  PurchaseReturn home PRN
  Ref_Doc_Type=REC; Refno=11; TaxCode=PUR12; TaxPercent=12; TaxAmount=18; TaxType=PR
  PurchaseRtnSubTotal=150; PurchaseRtnFCSubTotal=150; PurchaseRtnDiscAmount=15
  PurchaseRtnFCDiscAmount=15; PurchaseRtnAmount=135; PurchaseRtnFCAmount=135
  1 | 2    | 4     | 5 | 6   | 7 | 8 | 9  | 11 | 13  | 14  | 16   | 21
  1 | 1001 | Paper | 1 | Box | 2 | 5 | 30 | 15 | 135 | 135 | Main | L1
  > Create_Purchase_Rtn Process_Return UpdateReturnSource
  PurchaseReturn home PRN
  Ref_Doc_Type=CAP; Refno=11; PurchaseRtnSubTotal=50; PurchaseRtnFCSubTotal=50
  PurchaseRtnDiscAmount=25; PurchaseRtnFCDiscAmount=25; PurchaseRtnAmount=25; PurchaseRtnFCAmount=25
  1 | 2    | 4    | 5 | 6    | 7 | 8 | 9  | 11 | 13 | 14 | 16   | 21
  1 | 2002 | Pens | 2 | Pack | 2 | 2 | 25 | 25 | 25 | 25 | Main | L1
  > Create_Purchase_Rtn Process_Return UpdateReturnSource
  PurchaseReturn abroad PRN
  Ref_Doc_Type=INV; Refno=51; ExchangeRate=4; PurchaseRtnSubTotal=208; PurchaseRtnFCSubTotal=52
  PurchaseRtnDiscAmount=8; PurchaseRtnFCDiscAmount=2; PurchaseRtnAmount=200; PurchaseRtnFCAmount=50
  1 | 2    | 4      | 5 | 6    | 7 | 8 | 9  | 12 | 13 | 14  | 16   | 21 | 26
  1 | 1001 | Paper  | 1 | Box  | 2 | 2 | 16 | 2  | 30 | 120 | Shop | L2 | 8
  1 | 3003 | Hamper | 3 | Each | 1 | 1 | 20 | 0  | 20 | 80  | Shop | L2 | 0
  > Create_Purchase_Rtn Process_Return UpdateReturnSource

  Vendor home -
  1 | 2    | 3
  1 | V001 | V100
  > Change_Vendor_Code)";

/// Each test finds the books at the end of the road.
class WholeRoad : public OnEachDatabase {
 protected:
  void SetUp() override {
    books.execute(kCompany);
    walk(books, kRoad);
  }

  void expect_rows(const std::vector<std::string>& columns, const std::string& from,
                   const std::string& expected) const {
    EXPECT_EQ(as_listed(listing(books, columns, from)), as_listed(expected)) << from;
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

// Receipts are marked billed but for the half of the pens that never came, and returns on what they
// came from: a receipt, an invoice, a cash purchase.
TEST_P(WholeRoad, MarksEachDocumentOnTheOneBeforeIt) {
  expect_rows({"LPO_No", "Processed_Flag", "Invoiced_Flag"}, "LPO_Master Order By LPO_No", R"(
      AAB2LPO51 | 1 | 0
      AABRLPO11 | 1 | 0
      AABRLPO20 | 1 | 1)");
  expect_rows({"LPO_No", "SL_No", "Received_Qty"}, "LPO_Detail Order By LPO_No, SL_No", R"(
      AAB2LPO51 | 1 | 5
      AAB2LPO51 | 2 | 5
      AABRLPO11 | 1 | 10
      AABRLPO11 | 2 | 10
      AABRLPO11 | 3 | 2
      AABRLPO20 | 1 | 0)");
  expect_rows({"GRN_No", "SL_No", "Invoiced_Flag", "Return_Qty"},
              "Goods_Receive_Detail Order By GRN_No, SL_No", R"(
      AAB2GRN51 | 1 | 1 | Null
      AAB2GRN51 | 2 | 1 | Null
      AABRGRN11 | 1 | 1 | 10
      AABRGRN12 | 1 | 1 | Null
      AABRGRN12 | 2 | 1 | Null)");
  expect_rows({"GRN_Invoiced_flag"}, "Goods_Receive_Master", "1\n1\n1");
  expect_rows({"Purchase_Inv_No", "GRN_No", "Item_Code", "Return_Qty"},
              "Purchase_Invoice_Detail Order By Purchase_Inv_No, GRN_No, Item_Code", R"(
      AAB2PIN51 | AAB2GRN51 | AA1001 | 4
      AAB2PIN51 | AAB2GRN51 | AA3003 | 1
      AABRPIN11 | AABRGRN11 | AA1001 | Null
      AABRPIN11 | AABRGRN12 | AA2002 | Null
      AABRPIN11 | AABRGRN12 | AA2002 | Null
      AABRPIN12 | Null      | AA9001 | Null)");
  expect_rows({"Cash_Pur_Inv_No", "Return_Qty"}, "Cash_Purchase_Detail", "AABRCPN11 | 4");
}

// All but the lines of an invoice and a cash purchase, whose entry in the bank's register does.
TEST_P(WholeRoad, TakesEveryDocumentToTheNewCode) {
  std::string both;
  for (const auto& [table, column] : {std::pair("Vendor_Master", "Vendor_Code"),
                                      {"Vendor_OB", "Vendor_Code"},
                                      {"LPO_Master", "Vendor_Code"},
                                      {"Goods_Receive_Master", "Vendor_Code"},
                                      {"Purchase_Invoice_Master", "Vendor_Code"},
                                      {"Purchase_Invoice_Detail", "Vendor_Code"},
                                      {"Purchase_Return_Master", "Vendor_Code"},
                                      {"Cash_Purchase_Master", "Vendor_Code"},
                                      {"PDC_Master", "CustomerID"},
                                      {"Payment_Master", "Payment_To_Code"},
                                      {"AP_Adjustment_Detail", "Vendor_Code"},
                                      {"AP_Adjustment_Master", "Vendor_Code"}}) {
    const std::string with = table + std::string(" Where ") + column + "='AAV";
    both += count(books, with + "001'") + count(books, with + "100'") + " ";
  }
  EXPECT_EQ(both, "01 03 02 02 04 40 02 10 01 01 01 01 ");
}

}  // namespace
}  // namespace ombrix::testing
