#include <string>
#include <vector>

#include "ombrix/instruments.h"

#include "cash/cash_purchase_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

/// What siblings ask the database themselves is left out.
class CashPurchaseStatementsTest : public CashPurchaseFixture {
 protected:
  void SetUp() override {
    CashPurchaseFixture::SetUp();
    constexpr std::string_view kNames[] = {
        "OmbrixInventory.LocationStock",  "OmbrixInventory.StockMovement",
        "OmbrixInventory.PurchaseLog",    "OmbrixAccounts.GeneralLedger",
        "OmbrixAccounts.AccountsPayable", "OmbrixBank.PDC"};
    for (const auto name : kNames) registered_.push_back(scripted(name, script_));
    purchase.Payment_Type = "Cheque";
    purchase.TaxCode = "VAT";
    ASSERT_TRUE(purchase.Create_Cash_Purchase_Invoice()) << purchase.ErrDesc();
  }

  /// The statements of the call, each with its mode, and its road when that is the text.
  std::string told(bool (purchase::CashPurchase::*method)()) {
    std::string text;
    books.connection()->observe([&](const Call& seen) {
      if (seen.kind == Call::Kind::execute) text += seen.text + "\n";
      if (seen.kind != Call::Kind::open) return;
      if (seen.road == Call::Road::text) text += "text ";
      text += std::to_string(seen.cursor) + "," + std::to_string(seen.lock) + "," +
              std::to_string(seen.options) + " " + seen.text + "\n";
    });
    EXPECT_TRUE((purchase.*method)()) << purchase.ErrDesc();
    books.connection()->observe({});
    return text;
  }

 private:
  Script script_;
  std::vector<Registration> registered_;
};
OMBRIX_ON_EACH_DATABASE(CashPurchaseStatementsTest);

constexpr std::string_view kMaster =
    "text 1,3,-1 Select * from Cash_Purchase_Master Where Cash_Pur_Inv_No='AABRCPITMP3'\n";

TEST_P(CashPurchaseStatementsTest, of_saving) {
  EXPECT_EQ(told(&purchase::CashPurchase::Update_Cash_Purchase_Invoice),
            "1,3,-1 Select * from Currency_Master Where Currency_Code='AED'\n"
            "1,3,-1 Select * From Cash_Purchase_Master Where Cash_Pur_Inv_No='AABRCPITMP3'\n"
            "Delete from Cash_Purchase_Detail Where   Cash_Pur_Inv_No='AABRCPITMP3'\n"
            "1,3,-1 Select * from Cash_Purchase_Detail\n"
            "3,3,-1 Select max(SL_NO) as MaxNo from Cash_Purchase_Detail\n");
}

TEST_P(CashPurchaseStatementsTest, of_reading) {
  EXPECT_EQ(told(&purchase::CashPurchase::Get_Direct_PInvoice),
            std::string(kMaster) +
                "text 3,-1,-1 SELECT Cash_Purchase_Master.Purchase_Type, Cash_Purchase_Detail.* "
                "FROM Cash_Purchase_Master INNER JOIN Cash_Purchase_Detail ON "
                "Cash_Purchase_Master.Cash_Pur_Inv_No = Cash_Purchase_Detail.Cash_Pur_Inv_No "
                "Where Cash_Purchase_Detail.Cash_Pur_Inv_No='AABRCPITMP3' Order by "
                "Cash_Purchase_Detail.SL_No\n");
}

TEST_P(CashPurchaseStatementsTest, of_processing) {
  purchase.DocFlag = true;
  purchase.manualDocIdentity = 9;
  EXPECT_EQ(
      told(&purchase::CashPurchase::Process_Cash_Purchase),
      std::string(kMaster) +
          "3,3,-1 Select * from Cash_Purchase_Master Where Cash_Pur_Inv_No='AABRCPITMP3'\n"
          "3,3,-1 Select * from Cash_Purchase_Detail Where Cash_Pur_Inv_No='AABRCPITMP3'\n"
          "1,2,-1 Select B.Cash_Pur_Inv_No, B.Location_ID, B.Location_Name,C.Base_Qty, "
          "B.Item_Code, B.Item_Name,C.Item_Type, B.Unit_Qty, B.Cash_Pur_Inv_Qty, b.Unit_Name from "
          "Cash_Purchase_Detail B,Item_Master C Where  B.Item_Code=C.Item_Code and "
          "B.Cash_Pur_Inv_No='AABRCPI9'\n"
          "3,3,-1 Select A.* , B.Base_Qty as BaseQty, B.Item_Type as Item_Type from "
          "Cash_Purchase_Detail A, Item_Master B Where A.Item_Code = B.Item_Code and "
          "Cash_Pur_Inv_No='AABRCPI9' Order By Sl_No\n"
          "1,3,-1 Select * from Item_Master Where Item_Code='AA1001'\n"
          "1,3,-1 Select Last_Purchase_Price from Vendor_Items Where Vendor_Code='AAV001' and "
          "Item_Code='AA1001'\n"
          "1,2,-1 Select A.* , B.Base_Qty as BaseQty from Cash_Purchase_Detail A, Item_Master B "
          "Where A.Item_Code = B.Item_Code and Cash_Pur_Inv_No='AABRCPI9'\n"
          "1,2,-1 Select A.* , B.Base_Qty as BaseQty ,Item_Type from Cash_Purchase_Detail A, "
          "Item_Master B Where A.Item_Code = B.Item_Code and Cash_Pur_Inv_No='AABRCPI9'\n"
          "1,3,-1 Select * from Default_Account_Preferences Where Branch_Prefix='BR' and "
          "Company_Prefix='AA'\n"
          "1,3,-1 Select * from Default_Purchase_Preferences Where Company_Prefix = 'AA' and "
          "Branch_Prefix = 'BR'\n"
          "1,2,-1 Select *  from Cash_Purchase_Detail Where  Cash_Pur_Inv_No='AABRCPI9' Order By "
          "Sl_No\n"
          "1,3,-1 Select * from Bank_List Where Account_No='BANK' And Branch_Prefix='BR'\n"
          "text 1,3,-1 select TaxAuthorityCode,TaxAuthorityName,TaxAuthorityRate from "
          "TaxCodeDetails where TaxCode='VAT'\n"
          "text 1,3,-1 select accountno,Description from TaxAuthorities where Code='A'\n"
          "text 1,3,-1 select accountno,Description from TaxAuthorities where Code='B'\n"
          "1,3,-1 Select Document_Next_No, Last_Update From Document_Prefix Where "
          "Document_Prefix='CPI' and Company_Prefix='AA' and Branch_Prefix='BR'\n");
}

}  // namespace
}  // namespace ombrix::testing
