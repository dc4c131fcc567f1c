#include "returns/return_fixture.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

class ReturnSourceTest : public ReturnFixture {
 protected:
  /// The processed document 5 and the unprocessed 6, with two lines of AA1001 and one of AA2002.
  void given_source(const std::string& name, const std::string& key, const std::string& flag) {
    for (const std::string number : {"5", "6"}) {
      const std::string identity = name == "Goods_Receive"   ? "GRN_Identity"
                                   : name == "Cash_Purchase" ? "Cash_Pur_Inv_Identity"
                                                             : "Purchase_Inv_Identity";
      books.execute("Insert Into " + name + "_Master (" + key + ", " + identity + ", " + flag +
                    ") Values ('S" + number + "', " + number + ", " + (number == "5" ? "1" : "0") +
                    ")");
      for (const std::string line : {"1', 'AA1001", "2', 'AA1001", "3', 'AA2002"}) {
        books.execute("Insert Into " + name + "_Detail (" + key + ", SL_No, Item_Code) Values ('S" +
                      number + "', '" + line + "')");
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
    std::string kind, name, key, flag;
  } const kinds[] = {{"INV", "Purchase_Invoice", "Purchase_Inv_No", "processed_flag"},
                     {"REC", "Goods_Receive", "GRN_No", "processed_flag"},
                     {"CAP", "Cash_Purchase", "Cash_Pur_Inv_No", "process_flag"}};
  const std::string none = "\nNull | Null\nNull | Null";
  for (const auto& each : kinds) {
    SCOPED_TRACE(each.kind);
    given_source(each.name, each.key, each.flag);
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
    EXPECT_TRUE(document.UpdateReturnSource());
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
