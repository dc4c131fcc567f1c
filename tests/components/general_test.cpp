#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "ombrix/components.h"

#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

enum class Road : bool { object, text };
using Arguments = std::vector<Value>;

class GeneralTest : public OnEachDatabase {
 protected:
  GeneralTest() {
    books.execute(
        "Insert Into Item_Master (Item_Code, Item_Type, Base_Qty) Values ('AA1', '0', 12.5);"
        "Insert Into Item_Master (Item_Code, Item_Type, Base_Qty) Values ('AA2', '3', Null);"
        "Insert Into Item_Master (Item_Code, Item_Type, Base_Qty) Values ('AA3', '3', 7);"
        "Insert Into Item_Master (Item_Code, Item_Type) Values ('', 'none')");
  }

  std::string value(Arguments arguments, Road road = Road::object) {
    const ObjectRef general = create_object("OmbrixSystem.General");
    if (road == Road::object) {
      general->set("AdoConnectionObject", books.connection());
    } else {
      general->let("ADOConnectionString", books.text());
    }
    return general->call("GetFldValue", arguments).to_text();
  }
};
OMBRIX_ON_EACH_DATABASE(GeneralTest);

TEST_P(GeneralTest, answers_one_field_of_the_first_row_that_its_comparisons_select) {
  const struct {
    Arguments arguments;
    const char* answer;
  } cases[] = {
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
      {{"Item_Master", "Item_Type", "Item_Code", "AA2", Null(), Null(), Null(), Null()}, "3"},
  };
  for (const auto& c : cases) {
    for (const Road road : {Road::object, Road::text}) {
      SCOPED_TRACE(&c - cases);
      EXPECT_EQ(value(c.arguments, road), c.answer);
    }
  }
}

TEST_P(GeneralTest, sees_open_work_through_the_object_and_committed_work_through_the_text) {
  const Arguments lookup{"Item_Master", "Item_Type", "Item_Code", "AA9", false};
  books.connection()->BeginTrans();
  books.execute("Insert Into Item_Master (Item_Code, Item_Type) Values ('AA9', '0')");
  EXPECT_EQ(value(lookup, Road::object), "0");
  EXPECT_EQ(value(lookup, Road::text), "");
  books.connection()->CommitTrans();
  EXPECT_EQ(value(lookup, Road::text), "0");
}

TEST_P(GeneralTest, raises_what_could_change_its_statement) {
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
    for (const Road road : {Road::object, Road::text}) {
      const Failure failure = raised([&] { value(arguments, road); });
      EXPECT_EQ(failure.number(), kDatabaseFailure) << arguments.back().to_text();
      EXPECT_NE(failure.description(), "") << arguments.back().to_text();
    }
  }
}

TEST_P(GeneralTest, needs_a_connection_and_two_names) {
  const ObjectRef general = create_object("OmbrixSystem.General");
  Arguments lookup{"Item_Master", "Item_Type"}, table{"Item_Master"};
  EXPECT_TRUE(contains(raised_text([&] { general->call("GetFldValue", lookup); }),
                       "\"Driver\" is missing"));
  EXPECT_EQ(raised_number([&] { general->call("GetFldValue", table); }), 449);
  general->set("AdoConnectionObject", std::make_shared<Connection>());
  EXPECT_EQ(raised_number([&] { general->call("GetFldValue", lookup); }), kClosed);
}

}  // namespace
}  // namespace ombrix::testing
