#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "ombrix/components.h"

#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

using Arguments = std::vector<Value>;

class GeneralTest : public OnEachDatabase {
 protected:
  GeneralTest() {
    books.execute(
        "Insert Into Item_Master (Item_Code, Item_Type, Base_Qty) Values ('AA1', '0', 12.5),"
        " ('AA2', '3', Null), ('AA3', '3', 7), ('', 'none', Null)");
    by_object->set("AdoConnectionObject", books.connection());
    by_text->let("ADOConnectionString", books.text());
  }

  static std::string value(const ObjectRef& general, Arguments arguments) {
    return general->call("GetFldValue", arguments).to_text();
  }

  ObjectRef by_object = create_object("OmbrixSystem.General");
  ObjectRef by_text = create_object("OmbrixSystem.General");
};
OMBRIX_ON_EACH_DATABASE(GeneralTest);

TEST_P(GeneralTest, answers_one_field_of_the_first_row_that_its_comparisons_select) {
  const std::pair<Arguments, const char*> cases[] = {
      {{"Item_Master", "Item_Type", "  "}, "none"},
      {{"Item_Master", "Item_Type", "Item_Code", "AA2", false}, "3"},
      {{"item_master", "BASE_qty", "ITEM_code", "AA1", false}, "12.5"},
      {{"Item_Master", "Item_Code", "Base_Qty", 7, true}, "AA3"},
      {{"Item_Master", "Item_Code", "Item_Type", "3", false}, "AA2"},
      {{"Item_Master", "Item_Code", "Item_Type", "3", false, "Base_Qty", "7", true}, "AA3"},
      {{"Item_Master", "Item_Code", "Item_Type", "3", false, "", "ignored", true}, "AA2"},
      {{"Item_Master", "Item_Code", "Item_Type", 3}, "AA2"},
      // No row, a Null, and a Null to compare with, which reads as an empty text.
      {{"Item_Master", "Item_Type", "Item_Code", "none", false}, ""},
      {{"Item_Master", "Base_Qty", "Item_Code", "AA2", false}, ""},
      {{"Item_Master", "Item_Type", Null(), Null(), Null()}, "none"},
      {{"Item_Master", "Item_Type", "Item_Code", "AA2", Null(), Null(), Null(), Null()}, "3"}};
  for (const auto& [arguments, answer] : cases) {
    SCOPED_TRACE(arguments.back().text_or_empty() + " " + answer);
    EXPECT_EQ(value(by_object, arguments), answer);
    EXPECT_EQ(value(by_text, arguments), answer);
  }
}

TEST_P(GeneralTest, sees_open_work_through_the_object_and_committed_work_through_the_text) {
  const Arguments lookup{"Item_Master", "Item_Type", "Item_Code", "AA9", false};
  books.connection()->BeginTrans();
  books.execute("Insert Into Item_Master (Item_Code, Item_Type) Values ('AA9', '0')");
  EXPECT_EQ(value(by_object, lookup), "0");
  EXPECT_EQ(value(by_text, lookup), "");
  books.connection()->CommitTrans();
  EXPECT_EQ(value(by_text, lookup), "0");
}

TEST_P(GeneralTest, raises_what_could_change_its_statement_and_what_it_lacks) {
  for (const Arguments& arguments :
       {Arguments{"Item_Master", "Item_Type", "Item_Code", "O'Brien", false},
        {"Item_Master", "Item_Type", "Item_Code", "x' Or '1'='1", false},
        {"Item_Master", "Item_Type", "Item_Code", "AA1", false, "Item_Type", "'", false},
        {"Item_Master", "Item_Code", "Base_Qty", "7 Or 1=1", true},
        {"Item_Master Where 1=1 --", "Item_Type"},
        {"Item_Master", "Item_Type, Item_Code"},
        {"Item_Master", "Item_Type", "1=1 Or Item_Code", "x", false},
        {"No_Such_Table", "Item_Type"},
        {"Item_Master", "No_Such_Column"}}) {
    for (const ObjectRef& general : {by_object, by_text}) {
      const Failure failure = raised([&] { value(general, arguments); });
      EXPECT_EQ(failure.number(), kDatabaseFailure) << arguments.back().to_text();
      EXPECT_NE(failure.description(), "") << arguments.back().to_text();
    }
  }
  const Arguments lookup{"Item_Master", "Item_Type"};
  const ObjectRef alone = create_object("OmbrixSystem.General");
  EXPECT_TRUE(contains(raised_text([&] { value(alone, lookup); }), "\"Driver\" is missing"));
  EXPECT_EQ(raised_number([&] { value(alone, {"Item_Master"}); }), 449);
  alone->set("AdoConnectionObject", std::make_shared<Connection>());
  EXPECT_EQ(raised_number([&] { value(alone, lookup); }), kClosed);
}

}  // namespace
}  // namespace ombrix::testing
