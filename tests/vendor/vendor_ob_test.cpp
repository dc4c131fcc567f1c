#include <gtest/gtest.h>

#include "vendor/vendor_fixture.h"

namespace ombrix::testing {
namespace {

class VendorOBTest : public OnEachDatabase {
 protected:
  void SetUp() override {
    given_accounts(books);
    fill(balances, books, {owed("REF1", "100"), owed("REF2", "1,000.50")});
  }
  bool create(std::initializer_list<Cells> lines) {
    balances.GridName = grid_of(lines);
    return balances.Create_OB();
  }
  std::string lines(const std::vector<std::string>& columns) const {
    return listing(books, columns, "Vendor_OB");
  }
  std::string cells(std::int32_t row) const {
    std::string text;
    for (std::int32_t column = 1; column <= 8; ++column) {
      text += (column == 1 ? "" : "|") + balances.GridName()->TextMatrix(row, column);
    }
    return text;
  }

  purchase::VendorOB balances;
};
OMBRIX_ON_EACH_DATABASE(VendorOBTest);

TEST_P(VendorOBTest, what_is_missing_is_told_in_one_order) {
  purchase::VendorOB blank;
  const auto refused = [&](const std::string& message) {
    EXPECT_FALSE(blank.Validation());
    EXPECT_EQ(blank.ErrDesc(), message);
    EXPECT_FALSE(blank.Create_OB());
  };
  refused("Invalid Vendor");
  blank.VendorCode = " AAV001 ";
  EXPECT_EQ(raised_number([&] { blank.Validation(); }), 91);
  blank.AdoConnectionObject = std::make_shared<Connection>();
  refused("Invalid Connection.");
  blank.AdoConnectionObject = books.connection();
  refused("Invalid Opening Balance Type");
  blank.OBType = " Credit ";
  EXPECT_EQ(raised_number([&] { blank.Validation(); }), 91);
  blank.GridName = grid_of({{{3, "-1"}}});
  refused("Invalid Reference No.");
  blank.GridName()->TextMatrix(1, 1, "REF1");
  refused("Invalid Reference Date");
  blank.GridName()->TextMatrix(1, 2, "2023-12-31");
  refused("Invalid Amount");
  blank.GridName()->TextMatrix(1, 3, "0.01");
  EXPECT_TRUE(blank.Validation());
  EXPECT_EQ(blank.VendorCode() + blank.OBType(), "AAV001Credit");
}

TEST_P(VendorOBTest, a_blank_number_or_date_ends_what_is_checked_and_stored) {
  const auto stored = [&](std::initializer_list<Cells> given) {
    books.execute("Delete From Vendor_OB");
    return create(given) ? lines({"Ref_No"}) : "refused";
  };
  EXPECT_EQ(stored({owed("A", "1"), owed("B", "2"), owed("", "3"), owed("D", "4")}), "A\nB");
  EXPECT_EQ(stored({owed("A", "1"), owed("B", "2"), owed("C", "-3", ""), owed("D", "-4")}), "A\nB");
  EXPECT_EQ(stored({owed("A", "1"), owed("B", "0")}), "refused");
  EXPECT_EQ(stored({owed("A", "1"), owed("B", "text")}), "refused");
  EXPECT_EQ(balances.ErrDesc(), "Invalid Amount");
}

TEST_P(VendorOBTest, stores_each_line_in_every_column) {
  balances.ForeignCurrencyFlag = true;
  balances.CurrencySymbol = "old";
  ASSERT_TRUE(create({owed(" REF1 ", "1,000", " 31/12/2023 ", " opening "), owed("REF2", "2.5")}))
      << balances.ErrDesc();
  EXPECT_EQ(balances.CurrencySymbol(), "$");
  EXPECT_EQ(lines({"OBType", "SL_No", "Vendor_Code", "Branch_Prefix", "Company_Prefix", "Ref_No",
                   "Ref_Date", "Balance_FCAmount", "Balance_Amount", "Foreign_Currency_Flag",
                   "Currency_Code", "Currency_Symbol", "Exchange_Rate", "OB_Comments", "OB_Inv_No",
                   "Last_Update"}),
            "Credit | 1 | AAV001 | BR | AA | REF1 | 2023-12-31 00:00:00 | 1000 | 1000 | -1 | USD |"
            " $ | 1 | opening | Null | 2024-03-05 00:00:00\n"
            "Credit | 2 | AAV001 | BR | AA | REF2 | 2023-12-31 00:00:00 | 2.5 | 2.5 | -1 | USD |"
            " $ | 1 | Null | Null | 2024-03-05 00:00:00");
  balances.CurrencyCode = "GBP";
  balances.CurrencySymbol = "mine";
  ASSERT_TRUE(create({owed("REF1", "1")}));
  EXPECT_EQ(lines({"Currency_Code", "Currency_Symbol"}), "GBP | mine");
}

TEST_P(VendorOBTest, replaces_the_lines_of_its_key_alone) {
  ASSERT_TRUE(create({owed("OLD1", "1"), owed("OLD2", "2")}));
  books.execute("Update Vendor_OB Set OB_Inv_No='AABRINV7'");
  const auto variations = {&purchase::VendorOB::OBType, &purchase::VendorOB::BranchPrefix,
                           &purchase::VendorOB::VendorCode};
  for (const auto property : variations) {
    const std::string before = balances.*property;
    balances.*property = "other";
    ASSERT_TRUE(create({owed("OTHER", "1")}));
    balances.*property = before;
  }
  EXPECT_EQ(told_calls(books, [&] { ASSERT_TRUE(create({owed("NEW", "3")})); }),
            (std::vector<std::string>{
                "object (1,3) Select * from Currency_Master Where Currency_Code='USD'",
                "execute Delete From Vendor_OB Where Vendor_Code='AAV001' And OBType = 'Credit'"
                " and branch_prefix='BR'",
                "object (2,3) Select * from Vendor_OB"}));
  EXPECT_EQ(listing(books, {"Ref_No", "OB_Inv_No"}, "Vendor_OB Order By Ref_No, OBType"),
            "NEW | Null\nOTHER | Null\nOTHER | Null\nOTHER | Null");
}

TEST_P(VendorOBTest, a_failure_behind_the_delete_leaves_fewer_lines) {
  ASSERT_TRUE(create({owed("OLD", "1")}));
  EXPECT_FALSE(create({owed("NEW1", "1"), owed("NEW2", "2", "never")}));
  EXPECT_EQ(balances.ErrDesc(), "Type mismatch");
  EXPECT_EQ(lines({"Ref_No"}), "NEW1");
  balances.VendorCode = "AAV'1";
  EXPECT_FALSE(create({owed("NEW", "1")}));
  EXPECT_FALSE(balances.Get_OB());
  EXPECT_FALSE(balances.Process_OB());
  EXPECT_EQ(lines({"Ref_No"}), "NEW1");
}

TEST_P(VendorOBTest, fills_the_grid_and_leaves_what_no_line_reaches) {
  ASSERT_TRUE(create(
      {owed("REF1", "100", "2023-12-31", "opening"), owed("REF2", "1234.5"), owed("REF3", "3")}));
  books.execute(
      "Update Vendor_OB Set OB_Inv_No='AABBINV123', Exchange_Rate=2, Balance_Amount=9"
      " Where SL_No=1");
  const Cells old{{1, "x"}, {4, "four"}, {6, "six"}, {7, "seven"}, {8, "eight"}};
  balances.GridName = grid_of({old, old});
  EXPECT_FALSE(balances.ProcessedFlag());
  ASSERT_TRUE(balances.Get_OB()) << balances.ErrDesc();
  EXPECT_TRUE(balances.ProcessedFlag());
  EXPECT_EQ(balances.GridName()->Rows(), 4);
  EXPECT_EQ(cells(1), "REF1|2023-12-31|100|four|2|opening|123|AABBINV123");
  EXPECT_EQ(cells(2), "REF2|2023-12-31|1234.5|four|1|six|seven|eight");
  EXPECT_EQ(cells(3), "REF3|2023-12-31|3||1|||");
  balances.GridName = grid_of({{}});
  ASSERT_TRUE(balances.Get_OB());
  EXPECT_EQ(balances.GridName()->Rows(), 4);
  balances.GridName = grid_of({{}, {}, {}, {}, {}, {}});
  ASSERT_TRUE(balances.Get_OB());
  EXPECT_EQ(balances.GridName()->Rows(), 7);
  EXPECT_EQ(told_calls(books, [&] { balances.Get_OB(); }),
            std::vector<std::string>{
                "text (1,3) Select * from Vendor_OB Where Vendor_Code='AAV001' And OBType ="
                " 'Credit' and branch_prefix='BR' order by SL_No"});
}

TEST_P(VendorOBTest, reading_answers_with_its_own_reasons) {
  EXPECT_FALSE(balances.Get_OB());
  EXPECT_EQ(balances.ErrDesc(), "");
  for (const char* column : {"Ref_No", "Ref_Date", "Balance_FCAmount", "Exchange_Rate"}) {
    ASSERT_TRUE(create({owed("REF1", "1")}));
    books.execute("Update Vendor_OB Set " + std::string(column) + "=Null");
    EXPECT_FALSE(balances.Get_OB()) << column;
    EXPECT_EQ(balances.ErrDesc(), "Invalid use of Null") << column;
  }
  balances.OBType = "";
  EXPECT_FALSE(balances.Get_OB());
  EXPECT_EQ(balances.ErrDesc(), "Invalid Opening Balance Type");
  balances.ConnectionString = " ";
  EXPECT_FALSE(balances.Get_OB());
  EXPECT_EQ(balances.ErrDesc(), "Invalid Connection String");
  balances.VendorCode = "";
  EXPECT_FALSE(balances.Get_OB());
  EXPECT_EQ(balances.ErrDesc(), "Invalid Vendor");
}

TEST_P(VendorOBTest, the_members_stand_in_dispatch_order) {
  std::string order;
  for (const Member& member : purchase::vendor_ob_interface().members()) {
    order += std::string(member.name) + " ";
  }
  EXPECT_EQ(order,
            "SyncFlag OBType VendorName VendorCode GridName ConnectionString ErrDesc"
            " AdoConnectionObject CompanyPrefix BranchPrefix DocumentPrefix ProcessedFlag"
            " CurrencyCode CurrencySymbol LastUpdate ForeignCurrencyFlag Validation Create_OB"
            " Get_OB Process_OB Database ");
}

}  // namespace
}  // namespace ombrix::testing
