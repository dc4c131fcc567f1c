#include <string>
#include <vector>

#include "ombrix/instruments.h"

#include "cash/cash_purchase_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

class CashPurchaseProcessingTest : public CashPurchaseFixture {
 protected:
  std::string item(const std::string& code) const {
    return listing(books,
                   {"Stock_Amount", "Stock_In_Hand", "Average_Cost", "Landed_Cost",
                    "Prv_Average_Cost", "Prv_Landed_Cost", "Purchase_Order_Qty", "Last_Update"},
                   "Item_Master Where Item_Code='" + code + "'");
  }
};
OMBRIX_ON_EACH_DATABASE(CashPurchaseProcessingTest);

constexpr std::string_view kNoTemporary =
    "Error while Processing, Invalid Temporary Direct Purchase Invoice No.";

TEST_P(CashPurchaseProcessingTest, each_run_has_its_number_and_all_its_effects) {
  struct {
    bool online, sync;
    std::string_view payment, stored, lines, counters;
  } const cases[] = {
      {true, false, "Cash", "AABRCPI7 | 7 | 1 | Processed | 2024-05-06 00:00:00", "1\n2", "8 | 4"},
      {true, true, "Cheque", "AABRCPI8 | 8 | 1 | In Transit | 2024-05-06 00:00:00", "3\n4",
       "9 | 5"},
      {false, false, "Credit Card", "AABRCPI9 | 9 | 1 | In Transit | 2024-05-06 00:00:00", "5\n6",
       "10 | 6"},
      {false, false, "cash", "AABRCPI10 | 10 | 1 | In Transit | 2024-05-06 00:00:00", "7\n8",
       "11 | 7"},
      {false, true, "Cash", "AABRCPITMP7 | 7 | 0 | Saved | 2024-03-05 00:00:00", "9\n10",
       "11 | 8"}};
  int booked = 0;
  for (const auto& each : cases) {
    purchase.OnlineFlag = each.online;
    purchase.SyncFlag = each.sync;
    purchase.Payment_Type = std::string(each.payment);
    purchase.LastUpdate = Date(2024, 3, 5);
    ASSERT_TRUE(create({bought(), bought({{1, "2002"}})})) << purchase.ErrDesc();
    purchase.LastUpdate = Date(2024, 5, 6);
    ASSERT_TRUE(purchase.Process_Cash_Purchase()) << purchase.ErrDesc();
    EXPECT_EQ(master({"Cash_Pur_Inv_No", "Cash_Pur_Inv_Identity", "process_Flag", "Status",
                      "Last_Update"}),
              each.stored);
    EXPECT_EQ(lines({"SL_No"}), each.lines);
    EXPECT_EQ(counters(), each.counters);
    booked += 2;
    EXPECT_EQ(count(books, "Stock_Movement"), std::to_string(booked));
    EXPECT_EQ(count(books, "General_Ledger Where Account_No='BUY'"), std::to_string(booked));
  }
}

TEST_P(CashPurchaseProcessingTest, lines_enter_stock_net_of_the_documents_percentage) {
  purchase.CashPurInvDiscPercent = 10;
  purchase.CashPurInvFCDiscAmount = 130;
  purchase.CashPurInvDiscAmount = 130;
  purchase.Purchase_Type = "Fixed Asset";
  ASSERT_TRUE(process({bought({{11, "4"}, {13, "1000"}, {14, "1000"}, {18, "P1"}, {19, "1"}}),
                       bought({{1, "3003"}, {20, ""}}), bought({{1, ""}}), bought({{1, "9999"}})}))
      << purchase.ErrDesc();
  // 100 + 900 over 10 + 10. What was not ordered leaves no mark on what is on order.
  EXPECT_EQ(item("AA1001"), "1000 | 20 | 50 | 90 | 10 | 8 | 100 | Null");
  EXPECT_EQ(item("AA3003"), "0 | 0 | 0 | 0 | Null | Null | 0 | Null");
  EXPECT_EQ(listing(books, {"Vendor_Code", "Last_Purchase_Price", "Last_Update"},
                    "Vendor_Items Order By Vendor_Code"),
            "AAV001 | 90 | Null\nAAV002 | 9 | Null");
  EXPECT_EQ(listing(books, {"Item_Code", "location_ID", "Location_Name", "Location_Qty"},
                    "Location_Stock"),
            "AA1001 | L1 | Main store | 5");
  EXPECT_EQ(listing(books,
                    {"Document_Prefix", "Item_Code", "Unit_Qty", "In_Qty", "In_Amount", "In_Price",
                     "Document_No", "Document_Date", "Document_Type", "Stock_Comments"},
                    "Stock_Movement"),
            "STM | AA1001 | 2 | 10 | 900 | 90 | AABRCPI7 | 2024-03-01 00:00:00 | IN | by hand");
  // 1000 / 5 + 4 - 4 - 100 / 5; the second has 60 less 30 / 5, and the project of the line before.
  EXPECT_EQ(listing(books,
                    {"Document_Prefix", "Purchase_Document_No", "Purchase_Document_Prefix",
                     "Item_Code", "Purchase_Qty", "Total_Purchase_Qty", "Purchase_Unit_Price",
                     "Purchase_Item_Amount", "Proj_No"},
                    "Purchase_Log Order By Row_Id"),
            "PLG | AABRCPI7 | CPI | AA1001 | 5 | 10 | 180 | 900 | P1\n"
            "PLG | AABRCPI7 | CPI | AA3003 | 5 | 10 | 54 | 270 | P1");
  // Lines that no item stands behind are paid all the same.
  EXPECT_EQ(count(books, "General_Ledger Where Account_No='BUY'"), "4");
}

TEST_P(CashPurchaseProcessingTest, each_step_sets_its_members_in_order) {
  Script location, movement, log;
  const auto first = scripted("OmbrixInventory.LocationStock", location);
  const auto second = scripted("OmbrixInventory.StockMovement", movement);
  const auto third = scripted("OmbrixInventory.PurchaseLog", log);
  ASSERT_TRUE(process({bought(), bought({{1, "2002"}, {16, ""}, {20, ""}})})) << purchase.ErrDesc();
  EXPECT_EQ(location.told(),
            "new\nAdoConnectionObject=object\nCompanyPrefix=AA\nBranchPrefix=BR\nItemCode=AA1001\n"
            "ItemName=Paper\nLocationCode=L1\nLocationName=Main store\nLocationQty=5\n"
            "LastUpdate=2024-03-05\nUnitName=Box\nUpdateLocationStock(0)\n"
            "AdoConnectionObject=object\nCompanyPrefix=AA\nBranchPrefix=BR\nItemCode=AA2002\n"
            "ItemName=Paper\nLocationCode=Null\nLocationName=Null\nLocationQty=5\n"
            "LastUpdate=2024-03-05\nUnitName=Box\nUpdateLocationStock(0)");
  EXPECT_TRUE(movement.told().starts_with(
      "new\nAdoConnectionObject=object\nCompanyPrefix=AA\nBranchPrefix=BR\nDocumentPrefix=STM\n"
      "LastUpdate=2024-03-05\nItemCode=AA1001\nItemName=Paper\nUnitCode=3\nUnitName=Box\n"
      "FOC_Flag=0\nUnitQty=2\nInQty=10\nInAmount=300\nInPrice=30\nDocumentNo=AABRCPI7\n"
      "DocumentDate=2024-03-01\nDocumentType=IN\nLocationID=L1\nLocationName=Main store\n"
      "StockComments=by hand\nStockMovement()\nItemCode=AA2002\n"))
      << movement.told();
  EXPECT_TRUE(log.told().starts_with(
      "new\nAdoConnectionObject=object\nBranchPrefix=BR\nCompanyPrefix=AA\nDocumentPrefix=PLG\n"
      "PurchaseDocumentNo=AABRCPI7\nPurchaseDocumentPrefix=CPI\nPurchaseLogDate=2024-03-01\n"
      "LastUpdate=2024-03-05\nItemCode=AA1001\n"))
      << log.told();

  // The log comes before the movement: its refusal leaves the journal alone.
  log = {.refused_call = 1};
  movement = {};
  EXPECT_FALSE(process({bought()}));
  EXPECT_EQ(purchase.ErrDesc(), log.reason);
  EXPECT_EQ(movement.told(), "");
  EXPECT_EQ(counters().substr(0, 1), "8");
}

TEST_P(CashPurchaseProcessingTest, a_document_without_lines_stays_half_renamed) {
  ASSERT_TRUE(create({bought({{1, ""}, {3, ""}})})) << purchase.ErrDesc();
  EXPECT_FALSE(purchase.Process_Cash_Purchase());
  EXPECT_EQ(purchase.ErrDesc(), kNoTemporary);
  EXPECT_EQ(listing(books, {"Cash_Pur_Inv_No", "Status"}, "Cash_Purchase_Master"),
            "AABRCPI7 | Processed");
  EXPECT_EQ(purchase.CashPurInvIdentity(), 7);
  EXPECT_EQ(purchase.CashPurInvNo(), "AABRCPITMP3");
  EXPECT_EQ(counters(), "7 | 4");
  purchase.DocumentPrefix = "XX";
  books.execute(
      "Update Cash_Purchase_Master Set Cash_Pur_Inv_No='AABRCPITMP3',"
      " Document_Prefix='XX'");
  EXPECT_FALSE(purchase.Process_Cash_Purchase());
  EXPECT_TRUE(purchase.ErrDesc().starts_with("No counter for document series \"XX\""));
}

TEST_P(CashPurchaseProcessingTest, only_a_counter_that_moved_on_lets_the_grid_be_loaded) {
  const auto loads = [&] {
    purchase.GridName = grid_of({});
    EXPECT_TRUE(purchase.Get_Direct_PInvoice()) << purchase.ErrDesc();
    return purchase.GridName()->Rows() > 1;
  };
  purchase.DocFlag = true;
  purchase.manualDocIdentity = 500;
  ASSERT_TRUE(process({bought()})) << purchase.ErrDesc();
  EXPECT_EQ(purchase.CashPurInvNo(), "AABRCPI500");
  EXPECT_EQ(counters(), "501 | 4");
  EXPECT_FALSE(loads());
  purchase.DocFlag = false;
  ASSERT_TRUE(process({bought()})) << purchase.ErrDesc();
  EXPECT_TRUE(loads());
  purchase.OnlineFlag = false;
  purchase.SyncFlag = true;  // draws no number, and so moves none on
  ASSERT_TRUE(process({bought()})) << purchase.ErrDesc();
  EXPECT_FALSE(loads());
  purchase.OnlineFlag = true;
  ASSERT_TRUE(purchase.Process_Cash_Purchase());
  EXPECT_TRUE(loads());
  books.execute("Delete From Default_Account_Preferences");
  EXPECT_FALSE(purchase.Process_Cash_Purchase());
  EXPECT_FALSE(loads());
}

TEST_P(CashPurchaseProcessingTest, a_processed_purchase_that_is_saved_again_begins_anew) {
  ASSERT_TRUE(process({bought()})) << purchase.ErrDesc();
  ASSERT_TRUE(purchase.Update_Cash_Purchase_Invoice()) << purchase.ErrDesc();
  EXPECT_EQ(master({"Cash_Pur_Inv_No", "process_Flag", "Status"}), "AABRCPI7 | 0 | Saved");
  ASSERT_TRUE(purchase.Process_Cash_Purchase()) << purchase.ErrDesc();
  EXPECT_EQ(purchase.CashPurInvNo(), "AABRCPI8");
  EXPECT_EQ(balances(), "BUY | 600\nCASH | -600");
}

/// The statements of a call with their roads and modes, those of siblings left out.
TEST_P(CashPurchaseProcessingTest, each_statement_goes_its_road) {
  std::vector<Script> scripts(6);
  std::vector<Registration> registered;
  const std::string_view names[] = {
      "OmbrixInventory.LocationStock",  "OmbrixInventory.StockMovement",
      "OmbrixInventory.PurchaseLog",    "OmbrixAccounts.GeneralLedger",
      "OmbrixAccounts.AccountsPayable", "OmbrixBank.PDC"};
  for (std::size_t i = 0; i < scripts.size(); ++i) {
    registered.push_back(scripted(names[i], scripts[i]));
  }
  const auto told = [&](bool (purchase::CashPurchase::*method)()) {
    std::string text;
    books.connection()->observe([&](const Call& seen) {
      const bool own = !seen.text.starts_with("Update Document_Prefix");
      if (seen.kind == Call::Kind::execute && own) text += "\n" + seen.text;
      if (seen.kind != Call::Kind::open || !own || seen.text.starts_with("Select 1 As")) return;
      text += (seen.road == Call::Road::text ? "\ntext " : "\n") + std::to_string(seen.cursor) +
              "," + std::to_string(seen.lock) + "," + std::to_string(seen.options) + " " +
              seen.text;
    });
    EXPECT_TRUE((purchase.*method)()) << purchase.ErrDesc();
    books.connection()->observe({});
    return text;
  };
  purchase.Payment_Type = "Cheque";
  purchase.TaxCode = "VAT";
  const std::string line = "\n3,3,-1 Select max(SL_NO) as MaxNo from Cash_Purchase_Detail";
  const std::string currency = "\n1,3,-1 Select * from Currency_Master Where Currency_Code='AED'";
  EXPECT_EQ(told(&purchase::CashPurchase::Create_Cash_Purchase_Invoice),
            currency +
                "\n1,3,-1 Select * From Cash_Purchase_Master Where Cash_Pur_Inv_No='AABRCPITMP3'"
                "\n1,3,-1 Select * from Cash_Purchase_Detail" +
                line);
  EXPECT_EQ(told(&purchase::CashPurchase::Update_Cash_Purchase_Invoice),
            currency +
                "\n1,3,-1 Select * From Cash_Purchase_Master Where Cash_Pur_Inv_No='AABRCPITMP3'"
                "\nDelete from Cash_Purchase_Detail Where   Cash_Pur_Inv_No='AABRCPITMP3'"
                "\n1,3,-1 Select * from Cash_Purchase_Detail" +
                line);
  const std::string master =
      "\ntext 1,3,-1 Select * from Cash_Purchase_Master Where Cash_Pur_Inv_No='AABRCPITMP3'";
  EXPECT_EQ(
      told(&purchase::CashPurchase::Get_Direct_PInvoice),
      master +
          "\ntext 3,-1,-1 SELECT Cash_Purchase_Master.Purchase_Type, Cash_Purchase_Detail.* FROM"
          " Cash_Purchase_Master INNER JOIN Cash_Purchase_Detail ON"
          " Cash_Purchase_Master.Cash_Pur_Inv_No = Cash_Purchase_Detail.Cash_Pur_Inv_No Where"
          " Cash_Purchase_Detail.Cash_Pur_Inv_No='AABRCPITMP3' Order by"
          " Cash_Purchase_Detail.SL_No");
  purchase.DocFlag = true;
  purchase.manualDocIdentity = 9;
  EXPECT_EQ(
      told(&purchase::CashPurchase::Process_Cash_Purchase),
      master +
          "\n3,3,-1 Select * from Cash_Purchase_Master Where Cash_Pur_Inv_No='AABRCPITMP3'"
          "\n3,3,-1 Select * from Cash_Purchase_Detail Where Cash_Pur_Inv_No='AABRCPITMP3'"
          "\n1,2,-1 Select B.Cash_Pur_Inv_No, B.Location_ID, B.Location_Name,C.Base_Qty,"
          " B.Item_Code, B.Item_Name,C.Item_Type, B.Unit_Qty, B.Cash_Pur_Inv_Qty, b.Unit_Name from"
          " Cash_Purchase_Detail B,Item_Master C Where  B.Item_Code=C.Item_Code and"
          " B.Cash_Pur_Inv_No='AABRCPI9'"
          "\n3,3,-1 Select A.* , B.Base_Qty as BaseQty, B.Item_Type as Item_Type from"
          " Cash_Purchase_Detail A, Item_Master B Where A.Item_Code = B.Item_Code and"
          " Cash_Pur_Inv_No='AABRCPI9' Order By Sl_No"
          "\n1,3,-1 Select * from Item_Master Where Item_Code='AA1001'"
          "\n1,3,-1 Select Last_Purchase_Price from Vendor_Items Where Vendor_Code='AAV001' and"
          " Item_Code='AA1001'"
          "\n1,2,-1 Select A.* , B.Base_Qty as BaseQty from Cash_Purchase_Detail A, Item_Master B"
          " Where A.Item_Code = B.Item_Code and Cash_Pur_Inv_No='AABRCPI9'"
          "\n1,2,-1 Select A.* , B.Base_Qty as BaseQty ,Item_Type from Cash_Purchase_Detail A,"
          " Item_Master B Where A.Item_Code = B.Item_Code and Cash_Pur_Inv_No='AABRCPI9'"
          "\n1,3,-1 Select * from Default_Account_Preferences Where Branch_Prefix='BR' and"
          " Company_Prefix='AA'"
          "\n1,3,-1 Select * from Default_Purchase_Preferences Where Company_Prefix = 'AA' and"
          " Branch_Prefix = 'BR'"
          "\n1,2,-1 Select *  from Cash_Purchase_Detail Where  Cash_Pur_Inv_No='AABRCPI9' Order By"
          " Sl_No"
          "\n1,3,-1 Select * from Bank_List Where Account_No='BANK' And Branch_Prefix='BR'"
          "\ntext 1,3,-1 select TaxAuthorityCode,TaxAuthorityName,TaxAuthorityRate from"
          " TaxCodeDetails where TaxCode='VAT'"
          "\ntext 1,3,-1 select accountno,Description from TaxAuthorities where Code='A'"
          "\ntext 1,3,-1 select accountno,Description from TaxAuthorities where Code='B'"
          "\n1,3,-1 Select Document_Next_No, Last_Update From Document_Prefix Where"
          " Document_Prefix='CPI' and Company_Prefix='AA' and Branch_Prefix='BR'");
}

}  // namespace
}  // namespace ombrix::testing
