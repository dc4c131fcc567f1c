#include <gtest/gtest.h>

#include "vendor/vendor_fixture.h"

namespace ombrix::testing {
namespace {

class VendorUpkeepTest : public VendorFixture {
 protected:
  bool change(std::string from, std::string to) { return vendor.Change_Code(from, to); }
  bool execute(std::string table, std::string column, std::string value, std::string where) {
    return vendor.Execute_Change_Code(table, column, value, where);
  }
  bool take_back(std::string type, std::string number) {
    return vendor.Delete_Previous_OB(type, number);
  }
  void given_all_code_columns() const {
    for (const auto& [table, key, column] : kHolders) {
      const std::string own_key = *key == '\0' ? "" : ", " + std::string(key);
      for (const char* code : {"AAV001", "AAV002"}) {
        const std::string key_value = *key == '\0' ? "" : ", '" + std::string(code) + "'";
        books.execute("Insert Into " + std::string(table) + " (" + column + own_key +
                      ") Values ('" + code + "'" + key_value + ")");
      }
    }
    books.execute(
        "Insert Into Vendor_OB (Vendor_Code, OBType, Branch_Prefix, SL_No)"
        " Values ('AAV001', 'Credit', 'BR', 1), ('AAV002', 'Credit', 'BR', 1);"
        "Insert Into Cash_Purchase_Master (Cash_Pur_Inv_No, Vendor_Code)"
        " Values ('C1', 'AAV001')");
  }
  /// The codes of a column in two rows, in order, and how many of the rows were stamped today.
  std::string codes(const std::string& table, const std::string& column) const {
    std::string text;
    int today = 0;
    for (const auto& row :
         books.rows("Select " + column + ", Last_Update From " + table + " Order By " + column,
                    {column, "Last_Update"})) {
      text += shown(row[0]) + " ";
      if (!row[1].is_null() && row[1].to_date() == Date::now().midnight()) ++today;
    }
    return text + std::to_string(today);
  }

  struct Holder {
    const char *table, *key, *column;
  };
  static constexpr Holder kHolders[] = {
      {"Vendor_Master", "", "Vendor_Code"},
      {"Accounts_Payable_Ledger", "", "Vendor_Code"},
      {"AP_Adjustment_Detail", "", "Vendor_Code"},
      {"AP_Adjustment_Master", "", "Vendor_Code"},
      {"PDC_Master", "PDC_No", "CustomerID"},
      {"Payment_Master", "Payment_No", "Payment_To_Code"},
      {"Goods_Receive_Master", "GRN_No", "Vendor_Code"},
      {"LPO_Master", "LPO_No", "Vendor_Code"},
      {"Purchase_Invoice_Master", "Purchase_Inv_No", "Vendor_Code"},
      {"Purchase_Return_Master", "Purchase_Rtn_No", "Vendor_Code"},
  };
};
OMBRIX_ON_EACH_DATABASE(VendorUpkeepTest);

TEST_P(VendorUpkeepTest, a_vendor_goes_unless_a_document_of_five_tables_names_it) {
  const std::pair<const char*, const char*> documents[] = {
      {"LPO_Master", "(LPO_No, Vendor_Code) Values ('1', 'AAV001')"},
      {"Goods_Receive_Master", "(GRN_No, Vendor_Code) Values ('1', 'AAV001')"},
      {"Purchase_Invoice_Master", "(Purchase_Inv_No, Vendor_Code) Values ('1', 'AAV001')"},
      {"Purchase_Return_Master", "(Purchase_Rtn_No, Vendor_Code) Values ('1', 'AAV001')"},
      {"Vendor_OB", "(Vendor_Code, OBType, Branch_Prefix, SL_No) Values ('AAV001', 'D', 'B', 1)"}};
  given_vendor();
  given_vendor("AAV002");
  books.execute("Insert Into Accounts_Payable_Ledger (Vendor_Code) Values ('AAV001')");
  for (const auto& [table, row] : documents) {
    books.execute("Update Vendor_Master Set Allow_Delete_Flag=-1;Insert Into " +
                  std::string(table) + " " + row);
    EXPECT_FALSE(vendor.DeleteRecord()) << table;
    EXPECT_EQ(vendor.ErrDesc(), "Cannot delete this Vendor Due to existing transactions");
    EXPECT_EQ(stored("Allow_Delete_Flag"), "0") << table;
    books.execute("Delete From " + std::string(table));
  }
  EXPECT_TRUE(vendor.DeleteRecord()) << vendor.ErrDesc();
  EXPECT_EQ(listing(books, {"Vendor_Code"}, "Vendor_Master"), "AAV002");
}

TEST_P(VendorUpkeepTest, deleting_what_is_not_there_is_false_without_a_reason) {
  vendor.VendorCode = "";
  EXPECT_FALSE(vendor.Exist_Vendor());
  EXPECT_FALSE(vendor.DeleteRecord());
  EXPECT_EQ(vendor.ErrDesc(), "Invalid Vendor Code. ");
}

TEST_P(VendorUpkeepTest, looks_for_documents_in_order_and_stops_at_the_first) {
  given_vendor();
  books.execute(
      "Insert Into Purchase_Invoice_Master (Purchase_Inv_No, Vendor_Code)"
      " Values ('1', 'AAV001')");
  const std::string of = " where Vendor_Code='AAV001'";
  EXPECT_EQ(told_calls(books, [&] { vendor.DeleteRecord(); }),
            (std::vector<std::string>{"text (1,3) Select * From LPO_Master" + of,
                                      "text (1,3) Select * From Goods_Receive_Master" + of,
                                      "text (1,3) Select * From Purchase_Invoice_Master" + of,
                                      "text (1,3) Select * From Vendor_master" + of,
                                      "text (1,3) Select * From Vendor_master" + of}));
}

TEST_P(VendorUpkeepTest, a_document_whose_balance_is_untouched_is_not_adjusted) {
  books.execute(
      "Insert Into Purchase_Invoice_Master (Purchase_Inv_No, Purchase_Inv_Amount, Balance_Amount)"
      " Values ('WHOLE', 100, 100), ('USED', 100, 40);"
      "Insert Into Payment_Master (Payment_No, Payment_Amount, Balance_Amount)"
      " Values ('PAID', 100, 100), ('SPENT', 100, 0)");
  const struct {
    const char *type, *number;
    bool adjusted;
  } cases[] = {{"Credit", "WHOLE", false}, {"CREDIT", "WHOLE", false}, {"credit", "USED", true},
               {"Credit", "PAID", true},   {"Debit", "PAID", false},   {"", "PAID", false},
               {"Debit", "SPENT", true},   {"Debit", "WHOLE", true},   {"Credit", "NONE", true}};
  for (const auto& c : cases) {
    vendor.VendorOBType = c.type;
    vendor.VendorOBDocumentNo = c.number;
    EXPECT_EQ(vendor.Adjusted(), c.adjusted) << c.type << " " << c.number;
  }
  vendor.VendorOBDocumentNo = "N1";
  EXPECT_EQ(told_calls(books, [&] { vendor.Adjusted(); })[0],
            "object (3,3) Select * from Purchase_Invoice_Master Where Purchase_Inv_No='N1'"
            " And Purchase_Inv_Amount=Balance_Amount");
  vendor.VendorOBType = "Debit";
  EXPECT_EQ(told_calls(books, [&] { vendor.Adjusted(); })[0],
            "object (3,3) Select * from Payment_Master where Payment_No='N1'"
            " And Payment_Amount=Balance_Amount");
}

TEST_P(VendorUpkeepTest, takes_an_opening_document_back_with_its_payables) {
  books.execute(
      "Insert Into Vendor_Master (Vendor_Code, Vendor_Balance) Values ('AAV001', 130);"
      "Insert Into Accounts_Payable_Ledger (Vendor_Code, Document_No, APL_Credit_Amount)"
      " Values ('AAV001', 'N1', 100), ('AAV001', 'N2', 30);"
      "Insert Into Purchase_Invoice_Master (Purchase_Inv_No) Values ('N1'), ('N2');"
      "Insert Into Payment_Master (Payment_No) Values ('N1'), ('N2')");
  EXPECT_TRUE(take_back("cREDIT", "  N1 ")) << vendor.ErrDesc();
  EXPECT_EQ(listing(books, {"Purchase_Inv_No"}, "Purchase_Invoice_Master"), "N2");
  EXPECT_EQ(count(books, "Payment_Master"), "2");
  EXPECT_EQ(listing(books, {"Document_No"}, "Accounts_Payable_Ledger"), "N2");
  EXPECT_EQ(stored("Vendor_Balance"), "30");
  EXPECT_TRUE(take_back("Debit", "N2"));
  EXPECT_EQ(listing(books, {"Payment_No"}, "Payment_Master"), "N1");
  EXPECT_EQ(count(books, "Purchase_Invoice_Master"), "1");
  EXPECT_EQ(stored("Vendor_Balance"), "0");
}

TEST_P(VendorUpkeepTest, a_raised_failure_of_taking_back_leaves_the_reason_as_it_was) {
  EXPECT_FALSE(vendor.Exist_Vendor());
  EXPECT_FALSE(take_back("Credit", "N'1"));
  EXPECT_EQ(vendor.ErrDesc(), "Vendor Code does not exists");

  Script script;
  script.refused_call = 1;
  const auto payable = scripted("OmbrixAccounts.AccountsPayable", script);
  books.execute("Insert Into Payment_Master (Payment_No) Values ('N1')");
  EXPECT_FALSE(take_back("Debit", " N1 "));
  EXPECT_EQ(vendor.ErrDesc(), "The component says no.");
  EXPECT_EQ(script.told(), "new\nAdoConnectionObject=object\nDocumentNo=N1\nAPL_Delete()");
  EXPECT_EQ(count(books, "Payment_Master"), "1");
}

TEST_P(VendorUpkeepTest, a_change_of_code_reaches_eleven_tables_and_no_other) {
  given_all_code_columns();
  const auto calls = told_calls(books, [&] { EXPECT_TRUE(change("AAV001", "AAV009")); });
  for (const Holder& holder : kHolders) {
    EXPECT_EQ(codes(holder.table, holder.column), "AAV002 AAV009 1") << holder.table;
  }
  EXPECT_EQ(codes("Vendor_OB", "Vendor_Code"), "AAV002 AAV009 1");
  EXPECT_EQ(codes("Cash_Purchase_Master", "Vendor_Code"), "AAV001 0");
  std::string order;
  for (const auto& call : calls) order += call.substr(15, call.find(" Set ") - 15) + " ";
  EXPECT_EQ(order,
            "Vendor_Master Vendor_OB Accounts_Payable_Ledger AP_Adjustment_Detail"
            " AP_Adjustment_Master PDC_Master Payment_Master Goods_Receive_Master LPO_Master"
            " Purchase_Invoice_Master Purchase_Return_Master ");
  EXPECT_TRUE(change("AAV777", "AAV778"));
}

TEST_P(VendorUpkeepTest, a_failed_change_leaves_the_tables_before_it_changed) {
  given_all_code_columns();
  books.connection()->inject([](const Call& call) {
    return contains(call.text, "Payment_Master") ? Fault{Fault::Kind::raise, 7, "Out of memory"}
                                                 : Fault();
  });
  EXPECT_FALSE(change("AAV001", "AAV009"));
  books.connection()->inject({});
  EXPECT_EQ(vendor.ErrDesc(), "Out of memory");
  EXPECT_EQ(codes("PDC_Master", "CustomerID"), "AAV002 AAV009 1");
  EXPECT_EQ(codes("Payment_Master", "Payment_To_Code"), "AAV001 AAV002 0");
  EXPECT_EQ(codes("Purchase_Return_Master", "Vendor_Code"), "AAV001 AAV002 0");
}

TEST_P(VendorUpkeepTest, the_statement_follows_the_kind_of_database_and_stores_the_day) {
  const std::string day = Date::now().short_text();
  const struct {
    const char* database;
    std::string head, tail;
  } forms[] = {{"MSACCESS", " = 'AAV009', Last_Update=DateValue('", "')  Where  "},
               {"msaccess", " = 'AAV009',  Last_Update='", "' Where  "},
               {"", " = 'AAV009',  Last_Update='", "' Where  "}};
  for (const auto& form : forms) {
    books.execute(
        "Delete From PDC_Master; Insert Into PDC_Master (PDC_No, CustomerID)"
        " Values ('P', 'AAV001')");
    vendor.Database = form.database;
    const auto calls = told_calls(books, [&] {
      EXPECT_TRUE(execute("PDC_Master", "CustomerID", "AAV009", "AAV001")) << vendor.ErrDesc();
    });
    EXPECT_EQ(calls,
              std::vector<std::string>{"execute Update PDC_Master Set CustomerID" + form.head +
                                       day + form.tail + "CustomerID ='AAV001'"});
    EXPECT_EQ(codes("PDC_Master", "CustomerID"), "AAV009 1");
    EXPECT_EQ(shown(books.value("Select Last_Update As V From PDC_Master")), day + " 00:00:00");
  }
}

TEST_P(VendorUpkeepTest, no_argument_of_a_change_makes_another_statement) {
  given_all_code_columns();
  const std::string before = books.dump();
  EXPECT_FALSE(execute("LPO_Master; Delete From LPO_Master", "Vendor_Code", "A", "AAV001"));
  EXPECT_FALSE(execute("LPO_Master", "LPO_No='x', Vendor_Code", "A", "AAV001"));
  EXPECT_FALSE(execute("LPO_Master", "Vendor_Code", "A", "x' Or '1'='1"));
  EXPECT_FALSE(execute("LPO_Master", "Vendor_Code", "O'Hara", "AAV001"));
  EXPECT_NE(vendor.ErrDesc(), "");
  EXPECT_EQ(books.dump(), before);
}

TEST_P(VendorUpkeepTest, the_grid_changes_codes_line_by_line_until_one_is_in_use) {
  given_all_code_columns();
  given_vendor("AAV003");
  const auto run = [&](std::initializer_list<Cells> lines) {
    vendor.GridName = grid_of(lines);
    return vendor.Change_Vendor_Code();
  };
  const std::string before = books.dump();
  EXPECT_TRUE(run({{{1, ""}, {2, "V001"}, {3, "V009"}}}));
  EXPECT_TRUE(run({}));
  EXPECT_EQ(books.dump(), before);
  EXPECT_FALSE(run({{{1, "x"}, {2, "V001"}, {3, "V009"}},
                    {{1, "x"}, {2, "V002"}, {3, "V003"}},
                    {{1, "x"}, {2, "V003"}, {3, "V008"}}}));
  EXPECT_EQ(vendor.ErrDesc(), "This V003 code already in use");
  EXPECT_EQ(listing(books, {"Vendor_Code"}, "Vendor_Master"), "AAV002\nAAV003\nAAV009");
  EXPECT_TRUE(run({{{1, "x"}, {2, "V009"}, {3, "V001"}}, {}, {{1, "x"}, {2, "V002"}, {3, "V7"}}}));
  EXPECT_EQ(listing(books, {"Vendor_Code"}, "LPO_Master Order By Vendor_Code"), "AAV001\nAAV002");
  EXPECT_EQ(told_calls(books,
                       [&] {
                         run({{{1, "x"}, {3, "V003"}}});
                       }),
            std::vector<std::string>{
                "object (0,1) SELECT Vendor_Code From Vendor_Master WHERE Vendor_Code = 'AAV003'"});
  vendor.GridName = nullptr;
  EXPECT_EQ(raised_number([&] { vendor.Change_Vendor_Code(); }), 91);
}

}  // namespace
}  // namespace ombrix::testing
