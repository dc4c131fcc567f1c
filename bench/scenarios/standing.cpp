#include "scenarios/standing.h"

#include "scenarios/company.h"

namespace ombrix::bench {

namespace {

constexpr int kLines = 10;

// The statements insert in the order of a key, or a load of large books takes minutes.

/// Runs a statement behind a table `Standing` that counts the documents.
void for_each(Connection& books, int standing, const std::string& statement) {
  books.Execute(counting("Standing", standing) + statement);
}
/// The same behind a table `Line`.
void for_each_line(Connection& books, const std::string& statement) {
  books.Execute(counting("Line", kLines) + statement);
}

}  // namespace

void seed_orders(Connection& books, int standing) {
  seed_series(books, "LPO", standing);
  for_each(books, standing,
           "Insert Into LPO_Master (LPO_No, LPO_Identity, Company_Prefix, Branch_Prefix, "
           "Document_Prefix, LPO_Date, Vendor_Code, Vendor_name, Currency_Code, "
           "Last_Update, Processed_Flag) Select 'AA01LPO' || N, N, 'AA', '01', 'LPO', "
           "'2024-01-01 00:00:00', 'AAV' || (1 + N % 500), 'A vendor', 'EUR', "
           "'2024-01-01 00:00:00', 1 From Standing Order By 1");
  for_each_line(books,
                "Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, Item_Name, Unit_Name, "
                "Unit_Qty, LPO_Qty, LPO_Unit_Price, LPO_Item_Amount, Account_No, TaxType, "
                "Last_Update) Select LPO_No, N, 'AA' || (1000 + N), 'An item of the company', "
                "'Carton', 12, 5, 9.5, 47.5, 'AA01GL5000', 'Taxable', '2024-01-01 00:00:00' "
                "From LPO_Master, Line Order By 1, 2");
}

void seed_receipts(Connection& books, int standing) {
  seed_series(books, "GRN", standing);
  for_each(
      books, standing,
      "Insert Into Goods_Receive_Master (GRN_No, GRN_Identity, Company_Prefix, "
      "Branch_Prefix, Document_Prefix, GRN_Date, GRN_Ref_Document_No, "
      "GRN_Ref_Document_Prefix, GRN_Order_Date, GRN_Invoiced_flag, Processed_Flag, "
      "Vendor_Code, Vendor_name, Vendor_Ref_Document_Date, Exchange_Rate, Currency_Code, "
      "Purchase_Type, Last_Update) Select 'AA01GRN' || N, N, 'AA', '01', 'GRN', "
      "'2024-01-01 00:00:00', 'AA01LPO' || N, 'LPO', '2024-01-01 00:00:00', "
      "Case When N % 20 = 0 Then 0 Else 1 End, 1, 'AAV' || (1 + N % 500), 'A vendor', "
      "'2024-01-01 00:00:00', 1, 'EUR', 'Item', '2024-01-01 00:00:00' From Standing Order By 1");
  for_each_line(
      books,
      "Insert Into Goods_Receive_Detail (GRN_No, SL_No, Item_Code, Item_Name, "
      "Unit_Name, Unit_Qty, grn_qty, POD_SL_NO, Account_No, location_ID, TaxType, "
      "TaxPercent, GRN_Unit_Price, GRN_Item_Amount, GRN_FC_Item_Amount, "
      "GRN_Item_Disc_Amount, GRN_FC_Item_Disc_Amount, Invoiced_Flag, Last_Update) "
      "Select GRN_No, N, 'AA' || (999 + N), 'An item of the company', 'Carton', 12, 5, "
      "N, 'AA01GL5000', 'MAIN', 'Taxable', 12, 9.5, 47.5, 47.5, 0, 0, "
      "GRN_Invoiced_flag, '2024-01-01 00:00:00' From Goods_Receive_Master, Line Order By 1, 2");
  books.Execute(
      "Insert Into Purchase_Log (Item_Code, Branch_Prefix, Purchase_Log_Date, "
      "Total_Purchase_Qty, Purchase_Item_Amount, Company_Prefix, Document_Prefix, "
      "Purchase_Document_No, Purchase_Document_Prefix, Last_Update) Select Item_Code, '01', "
      "'2024-01-01 00:00:00', 60, 47.5, 'AA', 'PLG', GRN_No, 'GRN', '2024-01-01 00:00:00' "
      "From Goods_Receive_Detail Order By 1");
}

void seed_invoices(Connection& books, int standing) {
  seed_series(books, "PIN", standing);
  for_each(books, standing,
           "Insert Into Purchase_Invoice_Master (Purchase_Inv_No, Purchase_Inv_Identity, "
           "Company_Prefix, Branch_Prefix, Document_Prefix, Purchase_Inv_Date, Vendor_Code, "
           "Vendor_name, Purchase_Inv_Amount, Processed_Flag, Currency_Code, Invoice_Type, "
           "Last_Update) Select 'AA01PIN' || N, N, 'AA', '01', 'PIN', '2024-01-01 00:00:00', "
           "'AAV' || (1 + N % 500), 'A vendor', 475, 1, 'EUR', 'GRN', '2024-01-01 00:00:00' "
           "From Standing Order By 1");
  for_each_line(books,
                "Insert Into Purchase_Invoice_Detail (Purchase_Inv_No, SL_No, Vendor_Code, "
                "Item_Code, Item_Name, Unit_Name, Unit_Qty, Purchase_Inv_Qty, "
                "Purchase_Inv_Unit_Price, Purchase_Inv_Item_Amount, Purchase_Inv_FC_Item_Amount, "
                "GRN_SL_NO, GRN_No, GRN_Flag, Last_Update) Select Purchase_Inv_No, N, "
                "Vendor_Code, 'AA' || (999 + N), 'An item of the company', 'Carton', 12, 5, 9.5, "
                "47.5, 47.5, N, 'AA01GRN' || Purchase_Inv_Identity, 'GRN', "
                "'2024-01-01 00:00:00' From Purchase_Invoice_Master, Line Order By 1, 2");
}

void seed_returns(Connection& books, int standing) {
  seed_series(books, "PRN", standing);
  seed_series(books, "DRM", 0);
  for_each(books, standing,
           "Insert Into Purchase_Return_Master (Purchase_Rtn_No, Purchase_Rtn_Identity, "
           "Company_Prefix, Branch_Prefix, Document_Prefix, Purchase_Rtn_Date, Vendor_Code, "
           "Vendor_name, Currency_Code, Purchase_Rtn_Amount, Processed_Flag, Last_Update) "
           "Select 'AA01PRN' || N, N, 'AA', '01', 'PRN', '2024-01-01 00:00:00', "
           "'AAV' || (1 + N % 500), 'A vendor', 'EUR', 475, -1, '2024-01-01 00:00:00' "
           "From Standing Order By 1");
  for_each_line(books,
                "Insert Into Purchase_Return_Detail (Purchase_Rtn_No, SL_No, Item_Code, "
                "Item_Name, Unit_Name, Unit_Qty, pur_rtn_qty, Purchase_Rtn_Unit_Price, "
                "purchase_rtn_item_amount, Last_Update) Select Purchase_Rtn_No, "
                "(Purchase_Rtn_Identity - 1) * 10 + N, 'AA' || (999 + N), "
                "'An item of the company', 'Carton', 12, 5, 9.5, 47.5, '2024-01-01 00:00:00' "
                "From Purchase_Return_Master, Line Order By 1, 2");
}

void seed_cash_purchases(Connection& books, int standing) {
  seed_series(books, "CPN", standing);
  seed_series(books, "PDC", 0);
  for_each(books, standing,
           "Insert Into Cash_Purchase_Master (Cash_Pur_Inv_No, Cash_Pur_Inv_Identity, "
           "Company_Prefix, Branch_Prefix, Document_Prefix, Cash_Pur_Inv_Date, Vendor_Code, "
           "Vendor_name, Currency_Code, Cash_Pur_Inv_Amount, Payment_Type, Status, process_Flag, "
           "Last_Update) Select 'AA01CPN' || N, N, 'AA', '01', 'CPN', '2024-01-01 00:00:00', "
           "'AAV' || (1 + N % 500), 'A vendor', 'EUR', 475, 'Cash', 'Processed', 1, "
           "'2024-01-01 00:00:00' From Standing Order By 1");
  for_each_line(books,
                "Insert Into Cash_Purchase_Detail (Cash_Pur_Inv_No, SL_No, Item_Code, "
                "Item_Name, Unit_Name, Unit_Qty, Cash_Pur_Inv_Qty, Cash_Pur_Inv_Unit_Price, "
                "Cash_Pur_Inv_Item_Amount, Account_No, Last_Update) Select Cash_Pur_Inv_No, "
                "(Cash_Pur_Inv_Identity - 1) * 10 + N, 'AA' || (999 + N), "
                "'An item of the company', 'Carton', 12, 5, 9.5, 47.5, 'AA01GL5000', "
                "'2024-01-01 00:00:00' From Cash_Purchase_Master, Line Order By 1, 2");
}

}  // namespace ombrix::bench
