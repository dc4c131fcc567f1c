-- Aspen Street Kitchens, a small caterer: company AA, with its kitchen (branch 01) and its shop
-- (branch 02). Plain inserts, for a database that has the tables and no rows yet.
--
-- Every code begins with the company. An account is AA, the branch, GL and a number; a project is
-- AA, the branch, PRJ and a number: screens show them without those first 6 and 7 characters.

insert into Currency_Master (Currency_Code, Currency_Symbol, Currency_Name) values
  ('EUR', 'EUR', 'Euro'),
  ('GBP', 'GBP', 'Pound sterling'),
  ('USD', '$', 'US dollar');

insert into Chart_Of_Accounts (Account_No, Account_Name, Opening_Balance, Last_Update) values
  ('AA01GL1000', 'Cash on hand', 2500, '2024-01-01 00:00:00'),
  ('AA01GL1010', 'Bank, current account', 48200, '2024-01-01 00:00:00'),
  ('AA01GL1020', 'Bank, card settlements', 1150, '2024-01-01 00:00:00'),
  ('AA01GL1200', 'Stock of goods', 2962, '2024-01-01 00:00:00'),
  ('AA01GL1250', 'Advances to vendors', 0, '2024-01-01 00:00:00'),
  ('AA01GL1300', 'Recoverable federal tax', 0, '2024-01-01 00:00:00'),
  ('AA01GL1310', 'Recoverable city tax', 0, '2024-01-01 00:00:00'),
  ('AA01GL1500', 'Kitchen equipment', 86000, '2024-01-01 00:00:00'),
  ('AA01GL2000', 'Accounts payable', -18650, '2024-01-01 00:00:00'),
  ('AA01GL2100', 'Goods received, not yet billed', 0, '2024-01-01 00:00:00'),
  ('AA01GL3000', 'Capital', -122162, '2024-01-01 00:00:00'),
  ('AA01GL5000', 'Food purchases', 0, '2024-01-01 00:00:00'),
  ('AA01GL5010', 'Packaging', 0, '2024-01-01 00:00:00'),
  ('AA01GL5020', 'Goods free of charge', 0, '2024-01-01 00:00:00'),
  ('AA01GL5030', 'Purchase discounts', 0, '2024-01-01 00:00:00'),
  ('AA01GL5040', 'Purchase variance', 0, '2024-01-01 00:00:00'),
  ('AA01GL6100', 'Cleaning and maintenance', 0, '2024-01-01 00:00:00'),
  ('AA02GL1000', 'Shop: cash on hand', 800, '2024-01-01 00:00:00'),
  ('AA02GL1010', 'Shop: bank, current account', 5200, '2024-01-01 00:00:00'),
  ('AA02GL1200', 'Shop: stock of goods', 0, '2024-01-01 00:00:00'),
  ('AA02GL1250', 'Shop: advances to vendors', 0, '2024-01-01 00:00:00'),
  ('AA02GL2000', 'Shop: accounts payable', 0, '2024-01-01 00:00:00'),
  ('AA02GL2100', 'Shop: goods received, not yet billed', 0, '2024-01-01 00:00:00'),
  ('AA02GL3000', 'Shop: capital', -6000, '2024-01-01 00:00:00'),
  ('AA02GL5000', 'Shop: food purchases', 0, '2024-01-01 00:00:00'),
  ('AA02GL5020', 'Shop: goods free of charge', 0, '2024-01-01 00:00:00'),
  ('AA02GL5030', 'Shop: purchase discounts', 0, '2024-01-01 00:00:00'),
  ('AA02GL5040', 'Shop: purchase variance', 0, '2024-01-01 00:00:00');

-- Types 0 (goods) and 3 (goods made up of others) are stocked; 1 is used up at once, 2 a service.
insert into Item_Master (Item_Code, Item_Type, Base_Qty, Costing_Type, Stock_In_Hand, Stock_Amount,
                         Average_Cost, Purchase_Order_Qty, Last_Update) values
  ('AA1001', '0', 1, 'FIFO', 350, 315, 0.9, 0, '2024-01-01 00:00:00'),
  ('AA1002', '0', 1, 'AVEG', 96, 480, 5, 24, '2024-01-01 00:00:00'),
  ('AA1003', '0', 1, 'FIFO', 42, 756, 18, 0, '2024-01-01 00:00:00'),
  ('AA1004', '0', 1, 'LIFO', 120, 216, 1.8, 60, '2024-01-01 00:00:00'),
  ('AA1005', '0', 1, 'FIFO', 30, 345, 11.5, 0, '2024-01-01 00:00:00'),
  ('AA2001', '0', 1, 'AVEG', 8000, 640, 0.08, 0, '2024-01-01 00:00:00'),
  ('AA2002', '1', 1, 'AVEG', 0, 0, 0, 0, '2024-01-01 00:00:00'),
  ('AA3001', '3', 1, 'FIFO', 6, 210, 35, 0, '2024-01-01 00:00:00'),
  ('AA9001', '2', 1, 'AVEG', 0, 0, 0, 0, '2024-01-01 00:00:00');

-- Unit_Qty counts base units: kilograms, bottles, pieces.
insert into Item_Detail (Item_Code, Unit_Name, Unit_Qty) values
  ('AA1001', 'Kg', 1),
  ('AA1001', 'Bag 25 kg', 25),
  ('AA1002', 'Bottle', 1),
  ('AA1002', 'Carton', 12),
  ('AA1003', 'Kg', 1),
  ('AA1003', 'Case', 6),
  ('AA1004', 'Tin', 1),
  ('AA1004', 'Tray', 24),
  ('AA1005', 'Kg', 1),
  ('AA1005', 'Wheel', 8),
  ('AA2001', 'Piece', 1),
  ('AA2001', 'Carton', 1000),
  ('AA2002', 'Roll', 1),
  ('AA3001', 'Basket', 1),
  ('AA9001', 'Visit', 1);

insert into Vendor_Master (Vendor_Code, Company_Prefix, Vendor_name, Vendor_Address, Vendor_City,
                           Vendor_Country, Vendor_Contact_Name, Vendor_Payment_Type,
                           Vendor_Payment_Terms, Vendor_Balance, Vendor_Fc_Balance,
                           Vendor_Currency_Code, Currency_Code, Currency_Name, Currency_Symbol,
                           Vendor_Credit_limit, Vendor_Discount, Foreign_Currency_Flag,
                           Vendor_InActive_Flag, AP_Account_No, Last_Update,
                           Allow_Delete_Flag) values
  ('AAV001', 'AA', 'Harbour Foods', '4 Quay Street', 'Rotterdam', 'Netherlands', 'Ines Vos',
   'Credit', '30 days', 8200, 8200, 'EUR', 'EUR', 'Euro', 'EUR', 25000, 2.5, 0,
   0, 'AA01GL2000', '2024-01-01 00:00:00', 0),
  ('AAV002', 'AA', 'Northern Paper Works', '17 Mill Lane', 'Leeds', 'United Kingdom', 'Tom Reed',
   'Credit', '60 days', 3450, 2900, 'GBP', 'GBP', 'Pound sterling', 'GBP', 10000, 0, -1,
   0, 'AA01GL2000', '2024-01-01 00:00:00', 0),
  ('AAV003', 'AA', 'Valley Dairy', 'Hill Farm 2', 'Utrecht', 'Netherlands', 'Mara Kok',
   'Cash', 'On delivery', 0, 0, 'EUR', 'EUR', 'Euro', 'EUR', 2000, 1, 0,
   0, 'AA01GL2000', '2024-01-01 00:00:00', -1),
  ('AAV004', 'AA', 'Pacific Kitchen Supply', '900 Dock Road', 'Oakland', 'United States',
   'Lee Tran', 'Credit', '30 days', 7000, 7600, 'USD', 'USD', 'US dollar', '$', 40000, 5, -1,
   0, 'AA01GL2000', '2024-01-01 00:00:00', 0);

insert into Vendor_Items (Vendor_Code, Item_Code, Last_Purchase_Price, Last_Update) values
  ('AAV001', 'AA1001', 22.5, '2024-01-01 00:00:00'),
  ('AAV001', 'AA1002', 58.8, '2024-01-01 00:00:00'),
  ('AAV001', 'AA1003', 108, '2024-01-01 00:00:00'),
  ('AAV001', 'AA1004', 43.2, '2024-01-01 00:00:00'),
  ('AAV002', 'AA2001', 78, '2024-01-01 00:00:00'),
  ('AAV002', 'AA2002', 6.25, '2024-01-01 00:00:00'),
  ('AAV003', 'AA1005', 92, '2024-01-01 00:00:00');

insert into TaxCodeMaster (TaxCode, Tax_Type, Tax_Rate) values
  ('PUR12', 'Purchase', 12),
  ('SAL12', 'Sales', 12);

insert into TaxCodeDetails (TaxCode, TaxAuthorityCode, TaxAuthorityName, TaxAuthorityRate) values
  ('PUR12', 'FED', 'Federal tax office', 9),
  ('PUR12', 'CITY', 'City treasury', 3),
  ('SAL12', 'FED', 'Federal tax office', 9),
  ('SAL12', 'CITY', 'City treasury', 3);

insert into TaxAuthorities (Code, accountno, Description) values
  ('FED', 'AA01GL1300', 'Federal tax office'),
  ('CITY', 'AA01GL1310', 'City treasury');

insert into Default_Purchase_Preferences (Branch_Prefix, Company_Prefix, Pur_Accrual_Account_No,
                                          FOC_Account_No, Discount_Account_No,
                                          Pur_Variance_Account_No, Inventory_Account_No,
                                          Cash_Purchase_Account_No, Purchase_Disc_Account_No,
                                          Generate_Debit_Memo) values
  ('01', 'AA', 'AA01GL2100', 'AA01GL5020', 'AA01GL5030', 'AA01GL5040', 'AA01GL1200', 'AA01GL5000',
   'AA01GL5030', -1),
  ('02', 'AA', 'AA02GL2100', 'AA02GL5020', 'AA02GL5030', 'AA02GL5040', 'AA02GL1200', 'AA02GL5000',
   'AA02GL5030', 0);

insert into Default_Account_Preferences (Branch_Prefix, Company_Prefix, Cash_Memo_Account_No,
                                         CreditCard_Payment_Account_No, AP_Account_No,
                                         Adv_Pmt_Account_No) values
  ('01', 'AA', 'AA01GL1000', 'AA01GL1020', 'AA01GL2000', 'AA01GL1250'),
  ('02', 'AA', 'AA02GL1000', 'AA02GL1010', 'AA02GL2000', 'AA02GL1250');

insert into Bank_List (Account_No, Branch_Prefix, Next_Check_No) values
  ('AA01GL1010', '01', 100451),
  ('AA01GL1020', '01', 1),
  ('AA02GL1010', '02', 20017);

insert into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix, Document_Next_No,
                             Manual_Flag, Last_Update) values
  ('LPO', 'AA', '01', 118, 0, '2024-01-01 00:00:00'),
  ('GRN', 'AA', '01', 97, 0, '2024-01-01 00:00:00'),
  ('PIN', 'AA', '01', 92, 0, '2024-01-01 00:00:00'),
  ('PRN', 'AA', '01', 8, 0, '2024-01-01 00:00:00'),
  ('CPN', 'AA', '01', 41, 0, '2024-01-01 00:00:00'),
  ('DRM', 'AA', '01', 6, 0, '2024-01-01 00:00:00'),
  ('PDC', 'AA', '01', 23, 0, '2024-01-01 00:00:00'),
  ('OBN', 'AA', '01', 1, 0, '2024-01-01 00:00:00'),
  ('LPO', 'AA', '02', 12, 0, '2024-01-01 00:00:00'),
  ('GRN', 'AA', '02', 9, 0, '2024-01-01 00:00:00'),
  ('PIN', 'AA', '02', 9, 0, '2024-01-01 00:00:00'),
  ('PRN', 'AA', '02', 1, 0, '2024-01-01 00:00:00'),
  ('CPN', 'AA', '02', 64, 0, '2024-01-01 00:00:00'),
  ('DRM', 'AA', '02', 1, -1, '2024-01-01 00:00:00'),
  ('PDC', 'AA', '02', 3, 0, '2024-01-01 00:00:00'),
  ('OBN', 'AA', '02', 1, 0, '2024-01-01 00:00:00');
