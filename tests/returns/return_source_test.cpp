#include "returns/return_fixture.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

class ReturnSourceTest : public ReturnFixture {
 protected:
  /// The processed document 5 and the unprocessed 6, with two lines of AA1001 and one of AA2002.
  void given_source(const std::string& name, const std::string& key, const std::string& identity,
                    const std::string& flag) {
    for (const std::string number : {"5", "6"}) {
      books.execute("Insert Into " + name + "_Master (" + key + ", " + identity + ", " + flag +
                    ") Values ('S" + number + "', " + number + ", " + (number == "5" ? "1" : "0") +
                    ")");
      for (const std::string line : {"1, 'AA1001'", "2, 'AA1001'", "3, 'AA2002'"}) {
        books.execute("Insert Into " + name + "_Detail (" + key + ", SL_No, Item_Code) Values ('S" +
                      number + "', " + line + ")");
      }
    }
  }
  std::string marks(const std::string& name, const std::string& key) const {
    return list({"Return_Qty", "Last_Update"}, name + "_Detail Order By " + key + ", SL_No");
  }
};
OMBRIX_ON_EACH_DATABASE(ReturnSourceTest);

TEST_P(ReturnSourceTest, the_first_line_of_the_item_takes_the_base_units_of_each_kind) {
  struct {
    std::string kind, name, key, identity, flag;
  } const kinds[] = {
      {"INV", "Purchase_Invoice", "Purchase_Inv_No", "Purchase_Inv_Identity", "processed_flag"},
      {"REC", "Goods_Receive", "GRN_No", "GRN_Identity", "processed_flag"},
      {"CAP", "Cash_Purchase", "Cash_Pur_Inv_No", "Cash_Pur_Inv_Identity", "process_flag"}};
  const std::string none = "\nNull | Null\nNull | Null";
  for (const auto& each : kinds) {
    SCOPED_TRACE(each.kind);
    given_source(each.name, each.key, each.identity, each.flag);
    document.Ref_Doc_Type = each.kind;
    ASSERT_TRUE(create({returned({{7, "12"}, {8, "3"}})}));
    document.Refno = "6";  // not processed
    EXPECT_TRUE(document.UpdateReturnSource());
    document.Refno = "5";
    EXPECT_TRUE(document.UpdateReturnSource()) << document.ErrDesc();
    EXPECT_EQ(marks(each.name, each.key),
              "36 | 2024-03-05 00:00:00\nNull | Null\nNull | Null\nNull | Null" + none);
    ASSERT_TRUE(create(
        {returned({{7, "12"}, {8, "1"}}), returned({{7, "1"}, {8, "2"}}), returned({{2, "404"}})}));
    const std::string line = "(3,3,-1) Select * from " + each.name + "_Detail Where " + each.key +
                             "='S5' And Item_Code='";
    EXPECT_EQ(statements([&] { return document.UpdateReturnSource(); }),
              (std::vector<std::string>{
                  "(1,3,-1) Select " + each.key + " from " + each.name + "_Master Where " +
                      each.identity + "=5 and " + each.flag,
                  "(1,3,-1) Select * from Purchase_Return_Detail Where Purchase_Rtn_No='" +
                      document.PurchaseRtnNo() + "'",
                  line + "AA1001'", line + "AA1001'", line + "AA404'"}));
    EXPECT_EQ(marks(each.name, each.key).substr(0, 2), "50");
    books.execute("Delete From Purchase_Return_Detail");
  }
}

TEST_P(ReturnSourceTest, a_kind_or_an_identity_that_is_none_raises) {
  ASSERT_TRUE(create({returned()}));
  for (const std::string_view kind : {"", "GRN", "inv"}) {
    document.Ref_Doc_Type = std::string(kind);
    document.Refno = "5";
    EXPECT_THROW(document.UpdateReturnSource(), Failure) << kind;
  }
  document.Ref_Doc_Type = "INV";
  for (const std::string_view identity : {"", "5 or 1=1", "'5'"}) {
    document.Refno = std::string(identity);
    EXPECT_THROW(document.UpdateReturnSource(), Failure) << identity;
  }
  EXPECT_EQ(document.ErrDesc(), "");
  std::vector<Value> arguments{Value(books.connection()), "S5", 4, "inv", "AA1001", 1};
  EXPECT_EQ(late.call("Update_Source", arguments), Value(false));
  EXPECT_NE(document.ErrDesc(), "");
  arguments[3] = "INV";
  EXPECT_EQ(late.call("Update_Source", arguments), Value(true));  // no such line passes
}

}  // namespace
}  // namespace ombrix::testing
