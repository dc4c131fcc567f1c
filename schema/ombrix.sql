-- The tables of the purchase module and of the components that ship with it, in words that SQLite
-- and PostgreSQL both take.
--
-- Types: text also holds dates, as YYYY-MM-DD HH:MM:SS, which sort as they fall. double precision
-- holds amounts, quantities, rates and identities. integer holds line numbers and flags: True is
-- -1, False is 0, and a 1 that was written as a number stays 1. FOC_Flag is a number, since any
-- figure but 0 in a grid cell means free of charge.
--
-- Keys: a document by its number, a line by number and SL_No, anything else by what names it. Where
-- nothing does, Row_Id counts the rows: generated_key stands for the type and the primary key
-- clause that each driver puts in its place.
--
-- Null and defaults: only keys are never Null, readers have their rules for the rest. A number
-- starts at 0 when something is added to it, or when one writer leaves it out and a reader takes it
-- untested. Return_Qty starts Null, for a line of which nothing ever came back.
--
-- There are no foreign keys: processing renames a document and its lines row by row, and a vendor
-- takes a new code one table at a time. The file may run again on books in use.

-- Reference tables, filled by other modules of the suite.

create table if not exists Document_Prefix (
  Document_Prefix text not null,
  Company_Prefix text not null,
  Branch_Prefix text not null,
  Document_Next_No double precision default 1,
  -- Temporary numbers count apart, or each saved document would leave a gap in the final ones.
  Temporary_Next_No double precision default 1,
  Manual_Flag integer,
  Last_Update text,
  primary key (Company_Prefix, Branch_Prefix, Document_Prefix)
);

create table if not exists Currency_Master (
  Currency_Code text not null,
  Currency_Symbol text,
  Currency_Name text,
  primary key (Currency_Code)
);

create table if not exists Chart_Of_Accounts (
  Account_No text not null,
  Account_Name text,
  Opening_Balance double precision default 0,
  Last_Update text,
  Current_Balance double precision default 0,
  primary key (Account_No)
);

create table if not exists Item_Master (
  Item_Code text not null,
  Item_Type text,
  Base_Qty double precision,
  Costing_Type text,
  Stock_In_Hand double precision default 0,
  Stock_Amount double precision default 0,
  Average_Cost double precision,
  Prv_Average_Cost double precision,
  Landed_Cost double precision,
  Prv_Landed_Cost double precision,
  Purchase_Order_Qty double precision default 0,
  Last_Update text,
  primary key (Item_Code)
);

create table if not exists Item_Detail (
  Item_Code text not null,
  Unit_Name text not null,
  Unit_Qty double precision,
  primary key (Item_Code, Unit_Name)
);

create table if not exists Vendor_Items (
  Vendor_Code text not null,
  Item_Code text not null,
  Last_Purchase_Price double precision,
  Last_Update text,
  primary key (Vendor_Code, Item_Code)
);

-- The branch comes first in the key, as most look-ups know nothing else.
create table if not exists Default_Purchase_Preferences (
  Branch_Prefix text not null,
  Company_Prefix text not null,
  Pur_Accrual_Account_No text,
  FOC_Account_No text,
  Discount_Account_No text,
  Pur_Variance_Account_No text,
  Inventory_Account_No text,
  Cash_Purchase_Account_No text,
  Purchase_Disc_Account_No text,
  Generate_Debit_Memo integer,
  primary key (Branch_Prefix, Company_Prefix)
);

create table if not exists Default_Account_Preferences (
  Branch_Prefix text not null,
  Company_Prefix text not null,
  Cash_Memo_Account_No text,
  CreditCard_Payment_Account_No text,
  AP_Account_No text,
  Adv_Pmt_Account_No text,
  primary key (Branch_Prefix, Company_Prefix)
);

create table if not exists TaxCodeMaster (
  Row_Id generated_key,
  TaxCode text,
  Tax_Type text,
  Tax_Rate double precision
);
create index if not exists TaxCodeMaster_Tax_Type on TaxCodeMaster (Tax_Type);

create table if not exists TaxCodeDetails (
  Row_Id generated_key,
  TaxCode text,
  TaxAuthorityCode text,
  TaxAuthorityName text,
  TaxAuthorityRate double precision
);
create index if not exists TaxCodeDetails_TaxCode on TaxCodeDetails (TaxCode);

create table if not exists TaxAuthorities (
  Code text not null,
  accountno text,
  Description text,
  primary key (Code)
);

create table if not exists Bank_List (
  Account_No text not null,
  Branch_Prefix text not null,
  Next_Check_No double precision default 0,
  primary key (Account_No, Branch_Prefix)
);

-- Vendors.

create table if not exists Vendor_Master (
  Vendor_Code text not null,
  Company_Prefix text,
  Vendor_name text,
  Vendor_Address text,
  Vendor_City text,
  Vendor_State text,
  Vendor_Postal text,
  Vendor_Country text,
  Country_ID double precision,
  Vendor_Phone text,
  Vendor_Fax text,
  Vendor_Email text,
  Vendor_Contact_Name text,
  Vendor_Contact_Phone text,
  Vendor_Payment_Type text,
  Vendor_Payment_Terms text,
  Payment_Terms_ID double precision,
  Vendor_Balance double precision default 0,
  Vendor_Fc_Balance double precision default 0,
  Vendor_Currency_Code text,
  Currency_Code text,
  Currency_Name text,
  Currency_Symbol text,
  Vendor_Credit_limit double precision,
  Vendor_Discount double precision,
  Foreign_Currency_Flag integer,
  Vendor_InActive_Flag integer,
  Vendor_Comments text,
  AP_Account_No text,
  Last_Update text,
  Vendor_OB_Ledger_No text,
  Vendor_OB_Amount double precision default 0,
  Vendor_OB_Type text,
  Vendor_OB_Document_No text,
  Allow_Delete_Flag integer,
  primary key (Vendor_Code)
);

create table if not exists Vendor_OB (
  OBType text not null,
  SL_No integer not null,
  Vendor_Code text not null,
  Branch_Prefix text not null,
  Company_Prefix text,
  Ref_No text,
  Ref_Date text,
  Balance_FCAmount double precision,
  Balance_Amount double precision,
  Foreign_Currency_Flag integer,
  Currency_Code text,
  Currency_Symbol text,
  Exchange_Rate double precision,
  OB_Comments text,
  OB_Inv_No text,
  Last_Update text,
  primary key (Vendor_Code, OBType, Branch_Prefix, SL_No)
);

create table if not exists Payment_Master (
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  Payment_No text not null,
  Payment_Date text,
  Payment_Identity integer,
  Payment_To_Code text,
  Payment_To_Name text,
  Payment_To text,
  Payment_Type text,
  Payment_Status text,
  Foreign_Currency_Flag integer,
  Currency_Code text,
  Currency_Symbol text,
  Payment_Amount double precision,
  Payment_FC_Amount double precision,
  Balance_Amount double precision,
  Balance_FCAmount double precision,
  Exchange_Rate double precision,
  Processed_Flag integer,
  Payment_Comments text,
  Last_Update text,
  primary key (Payment_No)
);
create index if not exists Payment_Master_Payment_To_Code on Payment_Master (Payment_To_Code);

-- Purchase orders. The second kind, IPO, is entered elsewhere in the suite.

create table if not exists LPO_Master (
  LPO_No text not null,
  LPO_Identity double precision,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  LPO_Date text,
  LPO_Due_Date text,
  Vendor_Code text,
  Vendor_name text,
  LPO_Comments text,
  RFQ_No text,
  LPO_Discount_Percent double precision,
  LPO_FC_Discount_Amount double precision,
  LPO_Discount_Amount double precision,
  LPO_FC_Subtotal double precision,
  LPO_SubTotal double precision,
  LPO_FC_Total_Amount double precision,
  LPO_Total_Amount double precision,
  Foreign_Currency_Flag integer,
  Currency_Code text,
  Currency_Symbol text,
  Last_Update text,
  Purchase_Type text,
  TaxCode text,
  TaxDescription text,
  LPO_TaxRate double precision,
  LPO_TaxAmount double precision,
  Exchange_Rate double precision,
  fulfilled_Flag integer,
  Allow_Cancel_Flag integer,
  Cancel_Flag integer,
  Processed_Flag integer,
  Invoiced_Flag integer,
  primary key (LPO_No)
);
create index if not exists LPO_Master_Vendor_Code on LPO_Master (Vendor_Code);

create table if not exists LPO_Detail (
  LPO_No text not null,
  SL_No integer not null,
  Item_Code text,
  Vendor_Item_Code text,
  Item_Name text,
  Unit_Name text,
  Period_Type text,
  FOC_Flag double precision,
  Unit_Code text,
  Unit_Qty double precision,
  LPO_Qty double precision,
  LPO_Unit_Price double precision,
  LPO_Item_Discount_Percent double precision,
  LPO_Item_Discount_amount double precision,
  LPO_Item_Amount double precision,
  LPO_FCItem_Discount_Amount double precision,
  LPO_FCItem_Amount double precision,
  Account_No text,
  Proj_No text,
  LPO_Overall_FC_Disc double precision default 0,
  LPO_Overall_Disc double precision default 0,
  TaxType text,
  Last_Update text,
  Received_Qty double precision default 0,
  primary key (LPO_No, SL_No)
);

create table if not exists IPO_Master (
  IPO_No text not null,
  Vendor_Code text,
  Vendor_name text,
  Currency_Code text,
  Purchase_Type text,
  IPO_Date text,
  IPO_Discount_Percent double precision,
  IPO_FC_Discount_Amount double precision,
  Exchange_Rate double precision,
  Invoiced_Flag integer,
  Processed_Flag integer,
  Last_Update text,
  primary key (IPO_No)
);

create table if not exists IPO_Detail (
  IPO_No text not null,
  SL_No integer not null,
  Item_Code text,
  Vendor_Item_Code text,
  Item_Name text,
  Unit_Code text,
  Unit_Name text,
  Period_Type text,
  Proj_No text,
  FOC_Flag double precision,
  Unit_Qty double precision,
  IPO_Unit_Price double precision,
  IPO_Qty double precision,
  IPO_Item_Amount double precision,
  IPO_FCItem_Amount double precision,
  IPO_Item_Discount_amount double precision,
  IPO_FCItem_Discount_Amount double precision,
  IPO_Overall_Disc double precision default 0,
  IPO_Overall_FC_Disc double precision default 0,
  Received_Qty double precision default 0,
  Last_Update text,
  primary key (IPO_No, SL_No)
);

-- Goods receipts. A direct receipt comes without an order and is entered elsewhere in the suite.

create table if not exists Goods_Receive_Master (
  GRN_No text not null,
  GRN_Identity double precision,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  GRN_Date text,
  GRN_Comments text,
  GRN_Ref_Document_No text,
  GRN_Ref_Document_Prefix text,
  GRN_Order_Date text,
  GRN_Invoiced_flag integer,
  Processed_Flag integer,
  Cancel_Flag integer,
  Vendor_Code text,
  Vendor_name text,
  Vendor_Ref_Document_No text,
  Vendor_Ref_Document_Date text,
  Foreign_Currency_Flag integer,
  Exchange_Rate double precision,
  Currency_Code text,
  Currency_Symbol text,
  GRN_SubTotal double precision,
  GRN_FC_SubTotal double precision,
  GRN_Discount_Amount double precision,
  GRN_FC_Discount_Amount double precision,
  GRN_Total_Amount double precision,
  GRN_FC_Total_Amount double precision,
  Grn_Costing_Amount double precision,
  GRN_FC_Costing_Amount double precision,
  Year_End_Flag integer,
  Purchase_Type text,
  Last_Update text,
  primary key (GRN_No)
);
create index if not exists Goods_Receive_Master_GRN_Identity on Goods_Receive_Master (GRN_Identity);
create index if not exists Goods_Receive_Master_Vendor_Code on Goods_Receive_Master (Vendor_Code);

create table if not exists Goods_Receive_Detail (
  GRN_No text not null,
  SL_No integer not null,
  Item_Code text,
  Vendor_Item_Code text,
  Item_Name text,
  Unit_Name text,
  Period_Type text,
  FOC_Flag double precision,
  Unit_Code text,
  Unit_Qty double precision,
  grn_qty double precision,
  Proj_No text,
  POD_SL_NO integer,
  Account_No text,
  Location_Name text,
  location_ID text,
  PO_Overall_FC_Disc double precision default 0,
  PO_Overall_Disc double precision default 0,
  TaxType text,
  TaxPercent double precision,
  GRN_Unit_Price double precision,
  GRN_Item_Amount double precision,
  GRN_FC_Item_Amount double precision,
  GRN_Item_Disc_Amount double precision,
  GRN_FC_Item_Disc_Amount double precision,
  Invoiced_Flag integer,
  Return_Qty double precision,
  Last_Update text,
  primary key (GRN_No, SL_No)
);
create index if not exists Goods_Receive_Detail_Item_Code
  on Goods_Receive_Detail (GRN_No, Item_Code);
-- Only lines that may still be billed, so that looking for them costs what is open and not what a
-- vendor ever delivered.
create index if not exists Goods_Receive_Detail_Open
  on Goods_Receive_Detail (GRN_No, SL_No)
  where coalesce(Invoiced_Flag, 0) = 0;

create table if not exists Direct_Goods_Receive_Master (
  Direct_GRN_No text not null,
  Direct_GRN_Date text,
  Direct_GRN_Invoiced_Flag integer,
  Processed_Flag integer,
  Vendor_Code text,
  Vendor_Ref_Document_No text,
  Vendor_Ref_Document_Date text,
  Purchase_Type text,
  Last_Update text,
  primary key (Direct_GRN_No)
);
create index if not exists Direct_Goods_Receive_Master_Vendor_Code
  on Direct_Goods_Receive_Master (Vendor_Code);

create table if not exists Direct_Goods_Receive_Detail (
  Direct_GRN_No text not null,
  SL_NO integer not null,
  Item_Code text,
  Vendor_Item_Code text,
  Item_Name text,
  Unit_Name text,
  FOC_Flag double precision,
  Unit_Code text,
  Unit_Qty double precision,
  Direct_GRN_Qty double precision,
  Proj_No text,
  Direct_GRN_Overall_FC_Disc double precision default 0,
  Direct_GRN_Overall_Disc double precision default 0,
  TaxType text,
  TaxPercent double precision,
  Direct_GRN_Unit_Price double precision,
  Direct_GRN_Item_Amount double precision,
  Direct_GRN_FC_Item_Amount double precision,
  Direct_GRN_Item_Disc_Amount double precision,
  Direct_GRN_FC_Item_Disc_Amount double precision,
  Invoiced_Flag integer,
  Last_Update text,
  primary key (Direct_GRN_No, SL_NO)
);
create index if not exists Direct_Goods_Receive_Detail_Open
  on Direct_Goods_Receive_Detail (Direct_GRN_No, SL_NO)
  where coalesce(Invoiced_Flag, 0) = 0;

-- What a vendor may still bill. The line's own flag decides: a receipt is marked with the first of
-- its lines that is billed, while the others stay open.
drop view if exists GRNforInvoicing;
create view GRNforInvoicing as
select
  M.Vendor_Code as Vendor_Code,
  case when trim(coalesce(M.Purchase_Type, '')) = '' then 'Item' else M.Purchase_Type
  end as PurType,
  M.GRN_Ref_Document_No as "Order No",
  M.GRN_Order_Date as "Order Date",
  M.Vendor_Ref_Document_No as Vendor_Ref_Document_No,
  M.Vendor_Ref_Document_Date as Vendor_Ref_Document_Date,
  D.Item_Code as Item_Code,
  D.Vendor_Item_Code as Vendor_Item_Code,
  D.Item_Name as Item_Name,
  D.Unit_Code as Unit_Code,
  D.Unit_Name as Unit_Name,
  D.FOC_Flag as FOC_Flag,
  D.Unit_Qty as Unit_Qty,
  D.grn_qty as grn_qty,
  D.GRN_FC_Item_Amount as GRN_FC_Item_Amount,
  D.GRN_FC_Item_Disc_Amount as GRN_FC_Item_Disc_Amount,
  D.GRN_Item_Disc_Amount as GRN_Item_Disc_Amount,
  D.GRN_Unit_Price as GRN_Unit_Price,
  D.GRN_Item_Amount as GRN_Item_Amount,
  D.Proj_No as Proj_No,
  D.SL_No as SL_No,
  D.GRN_No as GRN_No,
  M.GRN_Date as GRN_Date,
  cast('GRN' as text) as GRN_Flag,
  D.PO_Overall_Disc as PO_Overall_Disc,
  D.PO_Overall_FC_Disc as PO_Overall_FC_Disc,
  D.TaxPercent as TaxPercent,
  D.TaxType as TaxType
from Goods_Receive_Master M
join Goods_Receive_Detail D on D.GRN_No = M.GRN_No
where M.Processed_Flag <> 0 and coalesce(D.Invoiced_Flag, 0) = 0
union all
select
  M.Vendor_Code,
  case when trim(coalesce(M.Purchase_Type, '')) = '' then 'Item' else M.Purchase_Type
  end,
  cast(null as text),
  cast(null as text),
  M.Vendor_Ref_Document_No,
  M.Vendor_Ref_Document_Date,
  D.Item_Code,
  D.Vendor_Item_Code,
  D.Item_Name,
  D.Unit_Code,
  D.Unit_Name,
  D.FOC_Flag,
  D.Unit_Qty,
  D.Direct_GRN_Qty,
  D.Direct_GRN_FC_Item_Amount,
  D.Direct_GRN_FC_Item_Disc_Amount,
  D.Direct_GRN_Item_Disc_Amount,
  D.Direct_GRN_Unit_Price,
  D.Direct_GRN_Item_Amount,
  D.Proj_No,
  D.SL_NO,
  D.Direct_GRN_No,
  M.Direct_GRN_Date,
  cast('Direct' as text),
  D.Direct_GRN_Overall_Disc,
  D.Direct_GRN_Overall_FC_Disc,
  D.TaxPercent,
  D.TaxType
from Direct_Goods_Receive_Master M
join Direct_Goods_Receive_Detail D on D.Direct_GRN_No = M.Direct_GRN_No
where M.Processed_Flag <> 0 and coalesce(D.Invoiced_Flag, 0) = 0;

-- Purchase invoices.

create table if not exists Purchase_Invoice_Master (
  Purchase_Inv_No text not null,
  Purchase_Inv_Identity double precision,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  Purchase_Inv_Date text,
  Vendor_Code text,
  Vendor_name text,
  Vendor_Ref_Invoice_No text,
  Vendor_Ref_Invoice_Date text,
  Vendor_Ref_Document_Prefix text,
  Purchase_Inv_Amount double precision,
  Processed_Flag integer,
  Cancel_Flag integer,
  Allow_Cancel_Flag integer,
  fulfilled_Flag integer,
  Purchase_Inv_Comments text,
  Foreign_Currency_Flag integer,
  Currency_Code text,
  Currency_Symbol text,
  Purchase_Inv_FC_Amount double precision,
  Purchase_Inv_SubTotal double precision,
  Purchase_Inv_FC_SubTotal double precision,
  Purchase_Inv_Disc_Percent double precision,
  Purchase_Inv_Disc_Amount double precision,
  Purchase_Inv_FC_Disc_Amount double precision,
  Purchase_Variance double precision,
  FC_Purchase_Variance double precision,
  Year_End_Flag integer,
  Balance_Amount double precision,
  Balance_FCAmount double precision,
  Exchange_Rate double precision,
  Invoice_Type text,
  PO_No text,
  PO_Date text,
  Purchase_Type text,
  Last_Update text,
  primary key (Purchase_Inv_No)
);
create index if not exists Purchase_Invoice_Master_Purchase_Inv_Identity
  on Purchase_Invoice_Master (Purchase_Inv_Identity);
create index if not exists Purchase_Invoice_Master_Vendor_Code
  on Purchase_Invoice_Master (Vendor_Code);

create table if not exists Purchase_Invoice_Detail (
  Purchase_Inv_No text not null,
  Vendor_Code text,
  Vendor_name text,
  SL_No integer not null,
  Order_No text,
  Order_Date text,
  Vendor_Ref_Document_No text,
  Vendor_Ref_Document_Date text,
  Item_Code text,
  Vendor_Item_Code text,
  Item_Name text,
  Unit_Code double precision,
  Unit_Name text,
  Period_Type text,
  FOC_Flag double precision,
  Unit_Qty double precision,
  Purchase_Inv_Qty double precision,
  grn_qty double precision,
  Purchase_Inv_Unit_Price double precision,
  Purchase_Inv_Item_Disc_Amount double precision,
  Purchase_Inv_Item_FC_Disc_Amount double precision,
  Purchase_Inv_Item_Amount double precision,
  Purchase_Inv_FC_Item_Amount double precision,
  PO_Disc_Amount double precision,
  PO_FC_Disc_Amount double precision,
  TaxType text,
  Proj_No text,
  GRN_SL_NO double precision,
  GRN_No text,
  GRN_Date text,
  GRN_Flag text,
  Purchase_Inv_Overall_FC_Disc_Amount double precision,
  Purchase_Inv_Overall_Disc_Amount double precision,
  GRN_Item_Amount double precision,
  GRN_FC_Item_Amount double precision,
  GRN_Unit_Price double precision,
  Last_Update text,
  Return_Qty double precision,
  primary key (Purchase_Inv_No, SL_No)
);
create index if not exists Purchase_Invoice_Detail_Item_Code
  on Purchase_Invoice_Detail (Purchase_Inv_No, Item_Code);

-- Purchase returns and their debit memos.

create table if not exists Purchase_Return_Master (
  Purchase_Rtn_No text not null,
  Purchase_Rtn_Identity double precision,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  Purchase_Rtn_Date text,
  Vendor_Code text,
  Vendor_name text,
  Purchase_Rtn_Ref_No text,
  Purchase_Rtn_Comments text,
  Purchase_ref_Doc text,
  Foreign_Currency_Flag integer,
  Currency_Code text,
  Currency_Symbol text,
  Purchase_Rtn_Amount double precision,
  Purchase_Rtn_FC_Amount double precision,
  Purchase_Rtn_SubTotal double precision,
  Purchase_Rtn_FC_SubTotal double precision,
  Purchase_Rtn_Disc_Amount double precision,
  Purchase_Rtn_FC_Disc_Amount double precision,
  Year_End_Flag integer,
  TaxCode text,
  TaxDescription text,
  PR_TaxRate double precision,
  PR_TaxAmount double precision,
  Exchange_Rate double precision,
  Last_Update text,
  Processed_Flag integer,
  Allow_Cancel_Flag integer,
  Cancel_Flag integer,
  primary key (Purchase_Rtn_No)
);
create index if not exists Purchase_Return_Master_Vendor_Code
  on Purchase_Return_Master (Vendor_Code);

-- SL_No runs through all returns. Its index finds the highest and is not unique, as two clients may
-- read the same one.
create table if not exists Purchase_Return_Detail (
  Purchase_Rtn_No text not null,
  SL_No integer not null,
  Item_Code text,
  Vendor_Item_Code text,
  Item_Name text,
  Unit_Code double precision,
  Unit_Name text,
  Period_Type text,
  Unit_Qty double precision,
  pur_rtn_qty double precision,
  Purchase_Rtn_Unit_Price double precision,
  Purchase_Rtn_Item_Discount_Amount double precision,
  purchase_rtn_item_amount double precision,
  purchase_rtn_FC_item_amount double precision,
  Purchase_Rtn_FC_Item_Discount_Amount double precision,
  Purchase_Rtn_Overall_FC_Disc_Amount double precision,
  Purchase_Rtn_Overall_Disc_Amount double precision,
  Proj_No text,
  Location_Name text,
  location_ID text,
  Last_Update text,
  Purchase_Rtn_Overall_Inv_FC_Disc_Amt double precision,
  Purchase_Rtn_Overall_Inv_Disc_Amt double precision,
  primary key (Purchase_Rtn_No, SL_No)
);
create index if not exists Purchase_Return_Detail_SL_No on Purchase_Return_Detail (SL_No);

create table if not exists Voucher_Master (
  Voucher_No text not null,
  Voucher_Identity text,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  Voucher_Date text,
  Voucher_Comments text,
  Foreign_Currency_Flag integer,
  Currency_Code text,
  Currency_Symbol text,
  process_Flag integer,
  Voucher_Amount double precision,
  Voucher_FCAmount double precision,
  Balance_Amount double precision,
  Balance_FCAmount double precision,
  Voucher_For text,
  Exchange_Rate double precision,
  Type text,
  AccountNo text,
  AccountName text,
  amountDr double precision,
  amountfcDr double precision,
  amountCr double precision,
  amountfcCr double precision,
  Last_Update text,
  primary key (Voucher_No)
);

create table if not exists Voucher_Detail (
  SL_No integer not null,
  Voucher_No text not null,
  Voucher_Type text,
  Account_No text,
  Account_Name text,
  Voucher_Description text,
  Debit_Amount double precision,
  FC_Debit_Amount double precision,
  Credit_Amount double precision,
  FC_Credit_Amount double precision,
  Proj_No text,
  Foreign_Currency_Flag integer,
  Currency_Code text,
  Currency_Symbol text,
  Last_Update text,
  primary key (Voucher_No, SL_No)
);

-- Cash purchases.

create table if not exists Cash_Purchase_Master (
  Cash_Pur_Inv_No text not null,
  Cash_Pur_Inv_Identity double precision,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  Cash_Pur_Inv_Date text,
  Vendor_Code text,
  Vendor_name text,
  Vendor_Ref_Invoice_No text,
  Vendor_Ref_Invoice_Date text,
  Vendor_Ref_Document_Prefix text,
  Cash_Pur_Inv_Comments text,
  Foreign_Currency_Flag integer,
  Currency_Code text,
  Currency_Symbol text,
  Cash_Pur_Inv_FC_Amount double precision,
  Cash_Pur_Inv_Amount double precision,
  Cash_Pur_Inv__SubTotal double precision,
  Cash_Pur_Inv_FC_SubTotal double precision,
  Cash_Pur_Inv_Disc_Percent double precision,
  Cash_Pur_Inv_Disc_Amount double precision,
  Cash_Pur_Inv_FC_Disc_Amount double precision,
  Balance_Amount double precision,
  Balance_FCAmount double precision,
  Purchase_Type text,
  Exchange_Rate double precision,
  Last_Update text,
  Payment_Type text,
  CreditCard_No text,
  CreditCard_Name text,
  CreditCard_Code text,
  Cheque_Bank text,
  Cheque_Date text,
  Cheque_No text,
  Cheque_Bank_AccountNo text,
  ChequeToPay text,
  fulfilled_Flag integer,
  Status text,
  process_Flag integer,
  Cancel_Flag integer,
  Allow_Cancel_Flag integer,
  Year_End_Flag integer,
  TaxCode text,
  TaxDescription text,
  CP_TaxRate double precision,
  CP_TaxAmount double precision,
  primary key (Cash_Pur_Inv_No)
);
create index if not exists Cash_Purchase_Master_Cash_Pur_Inv_Identity
  on Cash_Purchase_Master (Cash_Pur_Inv_Identity);

-- SL_No runs through all cash purchases, as it does for returns.
create table if not exists Cash_Purchase_Detail (
  Cash_Pur_Inv_No text not null,
  SL_No integer not null,
  Item_Code text,
  Vendor_Item_Code text,
  Item_Name text,
  Unit_Code double precision,
  Unit_Name text,
  Period_Type text,
  FOC_Flag double precision,
  Unit_Qty double precision,
  Cash_Pur_Inv_Qty double precision,
  Cash_Pur_Inv_Unit_Price double precision,
  Cash_Pur_Inv_Item_Disc_Percent double precision,
  Cash_Pur_Inv_Item_Disc_Amount double precision,
  Cash_Pur_Inv_Item_FC_Disc_Amount double precision,
  Cash_Pur_Inv_Item_Amount double precision,
  Cash_Pur_Inv_FC_Item_Amount double precision,
  Proj_No text,
  Account_No text,
  Location_Name text,
  location_ID text,
  Cash_Pur_Inv_Overall_FC_Disc_Amount double precision,
  Cash_Pur_Inv_Overall_Disc_Amount double precision,
  TaxType text,
  Last_Update text,
  Return_Qty double precision,
  primary key (Cash_Pur_Inv_No, SL_No)
);
create index if not exists Cash_Purchase_Detail_SL_No on Cash_Purchase_Detail (SL_No);
create index if not exists Cash_Purchase_Detail_Item_Code
  on Cash_Purchase_Detail (Cash_Pur_Inv_No, Item_Code);

-- Stock, kept by the inventory components.

create table if not exists Purchase_Log (
  Row_Id generated_key,
  Item_Code text,
  Branch_Prefix text,
  Purchase_Log_Date text,
  Total_Purchase_Qty double precision default 0,
  Sold_Qty double precision default 0,
  Purchase_Item_Amount double precision,
  Last_Update text,
  Company_Prefix text,
  Document_Prefix text,
  Purchase_Document_No text,
  Purchase_Document_Prefix text,
  Item_Name text,
  Unit_Code text,
  Unit_Name text,
  FOC_Flag double precision,
  Unit_Qty double precision,
  Purchase_Qty double precision,
  Purchase_Unit_Price double precision,
  Proj_No text
);
-- Only open layers, so that a return costs what is in stock and not what was ever bought. Row_Id
-- settles the order of layers of one date.
create index if not exists Purchase_Log_Open_Layers
  on Purchase_Log (Item_Code, Branch_Prefix, Purchase_Log_Date, Row_Id)
  where Total_Purchase_Qty - Sold_Qty > 0;

-- Quantities are in line units, which do not add up across the units of an item.
create table if not exists Location_Stock (
  Company_Prefix text not null,
  Branch_Prefix text not null,
  Item_Code text not null,
  Item_Name text,
  location_ID text not null,
  Location_Name text,
  Unit_Name text not null,
  Location_Qty double precision default 0,
  Last_Update text,
  primary key (Company_Prefix, Branch_Prefix, Item_Code, location_ID, Unit_Name)
);

create table if not exists Stock_Movement (
  Row_Id generated_key,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  Item_Code text,
  Item_Name text,
  Unit_Code text,
  Unit_Name text,
  FOC_Flag double precision,
  Unit_Qty double precision,
  In_Qty double precision,
  In_Amount double precision,
  In_Price double precision,
  Out_Qty double precision,
  Out_Amount double precision,
  Out_Price double precision,
  Document_No text,
  Document_Date text,
  Document_Type text,
  location_ID text,
  Location_Name text,
  Last_Update text,
  Stock_Comments text
);

-- Ledgers, kept by the accounts components.

create table if not exists General_Ledger (
  Row_Id generated_key,
  Document_No text,
  Document_Prefix text,
  GL_Date text,
  Currency_Code text,
  Currency_Symbol text,
  GL_Description text,
  GL_Comments text,
  Account_No text,
  GL_Debit_Amount double precision,
  GL_Credit_Amount double precision,
  FC_GL_Debit_Amount double precision,
  FC_GL_Credit_Amount double precision,
  Foreign_Currency_Flag integer,
  Last_Update text
);

create table if not exists Accounts_Payable_Ledger (
  Row_Id generated_key,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  Foreign_Currency_Flag integer,
  Vendor_Code text,
  Account_No text,
  Document_No text,
  APL_Date text,
  APL_Description text,
  APL_Comments text,
  APL_Debit_Amount double precision,
  APL_Credit_Amount double precision,
  FC_APL_Debit_Amount double precision,
  FC_APL_Credit_Amount double precision,
  Currency_Code text,
  Currency_Symbol text,
  Last_Update text,
  Ref_No text,
  Ref_Date text
);
create index if not exists Accounts_Payable_Ledger_Vendor_Code
  on Accounts_Payable_Ledger (Vendor_Code);
create index if not exists Accounts_Payable_Ledger_Document_No
  on Accounts_Payable_Ledger (Document_No);

-- The matching of payments to invoices lives elsewhere. These follow a vendor to its new code.

create table if not exists AP_Adjustment_Detail (
  Row_Id generated_key,
  Vendor_Code text,
  Last_Update text
);
create index if not exists AP_Adjustment_Detail_Vendor_Code on AP_Adjustment_Detail (Vendor_Code);

create table if not exists AP_Adjustment_Master (
  Row_Id generated_key,
  Vendor_Code text,
  Last_Update text
);
create index if not exists AP_Adjustment_Master_Vendor_Code on AP_Adjustment_Master (Vendor_Code);

-- Cheques and card payments that have yet to clear, kept by the bank component.

create table if not exists PDC_Master (
  PDC_No text not null,
  PDC_Identity double precision,
  Company_Prefix text,
  Branch_Prefix text,
  Document_Prefix text,
  Transaction_Type text,
  Bank_ID text,
  Bank_Name text,
  Cheque_No text,
  Cheque_Amount double precision,
  Cleared text,
  CustomerID text,
  Customer_Name text,
  PDC_Date text,
  PDC_Due_Date text,
  CreditCard_No text,
  CreditCard_Name text,
  CreditCard_Code text,
  Source_No text,
  Source_Prefix text,
  Status text,
  Currency_Code text,
  Foreign_Currency_Flag integer,
  Cheque_FC_Amount double precision,
  Last_Update text,
  primary key (PDC_No)
);
create index if not exists PDC_Master_CustomerID on PDC_Master (CustomerID);

create table if not exists Ombrix_Schema (
  Version integer not null,
  primary key (Version)
);
insert into Ombrix_Schema (Version) values (1) on conflict do nothing;
