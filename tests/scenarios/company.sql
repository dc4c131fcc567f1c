-- The one company of all tests: AA, with its branch BR. A file of scenarios says what differs.

insert into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix, Document_Next_No,
                             Temporary_Next_No, Last_Update) values
  ('PO', 'AA', 'BR', 5, 2, '2020-01-01 00:00:00'),
  ('GRN', 'AA', 'BR', 7, 3, '2020-01-01 00:00:00'),
  ('PIN', 'AA', 'BR', 7, 3, '2020-01-01 00:00:00'),
  ('PR', 'AA', 'BR', 1, 1, '2020-01-01 00:00:00'),
  ('CPI', 'AA', 'BR', 7, 3, '2020-01-01 00:00:00'),
  ('DRM', 'AA', 'BR', 1, 1, '2020-01-01 00:00:00'),
  ('PDC', 'AA', 'BR', 21, 1, '2020-01-01 00:00:00');

insert into Currency_Master (Currency_Code, Currency_Symbol) values
  ('AED', ' Dh '),
  ('USD', ' $ ');

-- Types 0 (goods) and 3 (goods made up of others) are stocked; 1 is used up at once.
insert into Item_Master (Item_Code, Item_Type, Costing_Type, Stock_Amount, Stock_In_Hand,
                         Average_Cost, Landed_Cost, Purchase_Order_Qty, Base_Qty) values
  ('AA1001', '0', 'FIFO', 100, 10, 10, 8, 100, 3),
  ('AA2002', ' 3 ', 'FIFO', 0, 0, 0, 0, 0, 1),
  ('AA3003', '1', 'FIFO', 0, 0, 0, 0, 0, 1);

insert into Item_Detail (Item_Code, Unit_Name, Unit_Qty) values
  ('AA1001', 'Pcs', 1),
  ('AA1001', 'Box', 12);

insert into Vendor_Master (Vendor_Code, Vendor_name, Vendor_Balance, Vendor_Fc_Balance) values
  ('AAV001', 'Orchard Traders', 0, 0);

insert into Vendor_Items (Vendor_Code, Item_Code, Last_Purchase_Price) values
  ('AAV001', 'AA1001', 9),
  ('AAV001', 'AA3003', 9),
  ('AAV002', 'AA1001', 9);

insert into Chart_Of_Accounts (Account_No, Account_Name) values
  ('ACCRUAL', 'Accrued purchases'),
  ('ADVANCE', 'Advances to vendors'),
  ('ASSETS', 'Fixed assets'),
  ('BUY', 'Purchases for cash'),
  ('CASH', 'Cash'),
  ('DISCOUNT', 'Discounts'),
  ('FREE', 'Goods free of charge'),
  ('INVENTORY', 'Stock'),
  ('PAYABLE', 'Vendors'),
  ('TAX A', 'Town tax'),
  ('TAX B', 'State tax'),
  ('VARIANCE', 'Price and rate variance');

insert into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix, Pur_Accrual_Account_No,
                                          FOC_Account_No, Discount_Account_No,
                                          Purchase_Disc_Account_No, Pur_Variance_Account_No,
                                          Inventory_Account_No, Cash_Purchase_Account_No,
                                          Generate_Debit_Memo) values
  ('BR', 'AA', 'ACCRUAL', 'FREE', 'DISCOUNT', 'DISCOUNT', 'VARIANCE', 'INVENTORY', 'BUY', 0);

insert into Default_Account_Preferences (Branch_Prefix, Company_Prefix, AP_Account_No,
                                         Adv_Pmt_Account_No, Cash_Memo_Account_No,
                                         CreditCard_Payment_Account_No) values
  ('BR', 'AA', 'PAYABLE', 'ADVANCE', 'CASH', 'CARDS');

insert into Bank_List (Account_No, Branch_Prefix, Next_Check_No) values
  ('BANK', 'B2', 5),
  ('BANK', 'BR', 1001),
  ('CARDS', 'BR', 1);

insert into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityRate) values
  ('VAT', 'A', 10),
  ('VAT', 'B', 5);

insert into TaxAuthorities (Code, accountno, Description) values
  ('A', 'TAX A', 'Town'),
  ('B', 'TAX B', 'State');

-- Orders of both kinds: line 1 is 10 for 600 in foreign currency, 20 off, line 2 is 4 for 100.
insert into LPO_Master (LPO_No, Purchase_Type, LPO_Discount_Percent, Invoiced_Flag) values
  ('AABRLPO1', 'Item', 0, 0);
insert into LPO_Detail (LPO_No, SL_No, LPO_Qty, LPO_FCItem_Amount,
                        LPO_FCItem_Discount_Amount) values
  ('AABRLPO1', 1, 10, 600, 20),
  ('AABRLPO1', 2, 4, 100, 0);
insert into IPO_Master (IPO_No, Purchase_Type, IPO_Discount_Percent, Invoiced_Flag) values
  ('AABRIPO1', '', 50, 0);
insert into IPO_Detail (IPO_No, SL_No, IPO_Qty, IPO_FCItem_Amount,
                        IPO_FCItem_Discount_Amount) values
  ('AABRIPO1', 1, 10, 600, 20);
