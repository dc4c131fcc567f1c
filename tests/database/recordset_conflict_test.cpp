#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "ombrix/recordset.h"

#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

/// One line, read by this client while another one changes it.
class ConflictTest : public OnEachDatabase {
 protected:
  ConflictTest() {
    books.execute(
        "Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, LPO_Qty) Values ('A', 1, 'x', Null)");
  }

  Recordset line_read(OpenMode mode = Keyset) {
    Recordset set;
    set.Open("Select * from LPO_Detail", books.connection(), mode);
    set.RecordCount();
    return set;
  }
  void other_client(const std::string& statement) { books.another()->Execute(statement); }
  void other_sets(const std::string& assignment) {
    other_client("Update LPO_Detail Set " + assignment);
  }
  /// Raises the conflict and leaves the books as the other client left them.
  void expect_conflict(const std::function<void()>& write) {
    const std::string before = books.dump();
    const Failure failure = raised(write);
    EXPECT_EQ(failure.number(), kDatabaseFailure);
    EXPECT_EQ(failure.description(), kConflict);
    EXPECT_EQ(books.dump(), before);
  }
  Value stored(const std::string& column) {
    return books.value("Select " + column + " As V From LPO_Detail");
  }
};
OMBRIX_ON_EACH_DATABASE(ConflictTest);

TEST_P(ConflictTest, an_update_fails_when_its_own_column_changed) {
  for (const OpenMode mode : {Keyset, Static, Dynamic, KeysetPessimistic}) {
    Recordset set = line_read(mode);
    other_sets("Item_Code = Item_Code || 'y'");
    set("Item_Code") = "mine";
    set("LPO_Qty") = 3;
    expect_conflict([&] { set.Update(); });
    expect_conflict([&] { set.MoveNext(); });
  }
}

TEST_P(ConflictTest, an_update_looks_only_at_the_columns_it_changes) {
  Recordset set = line_read();
  other_sets("Unit_Code = 'theirs', Received_Qty = 9");
  set("Item_Code") = "mine";
  set("LPO_Qty") = 3;
  set.Update();
  EXPECT_EQ(stored("Item_Code"), Value("mine"));
  EXPECT_EQ(stored("Unit_Code"), Value("theirs"));
}

TEST_P(ConflictTest, null_equals_null_and_nothing_else) {
  Recordset set = line_read();
  set("LPO_Qty") = 1;
  set.Update();
  EXPECT_EQ(stored("LPO_Qty"), Value(1.0));
  set("LPO_Qty") = Null();
  other_sets("LPO_Qty = 0");
  expect_conflict([&] { set.Update(); });
  Recordset again = line_read();
  again("LPO_Qty") = 4;
  other_sets("LPO_Qty = Null");
  expect_conflict([&] { again.Update(); });
}

TEST_P(ConflictTest, the_guard_compares_what_the_database_gave) {
  other_sets("LPO_Qty = 0.1 + 0.2, Item_Code = ' 1 ', Unit_Name = ''");
  Recordset set = line_read();
  set("LPO_Qty") = 1;
  set("Item_Code") = "1";
  set("Unit_Name") = Null();
  set.Update();
  EXPECT_EQ(stored("Item_Code"), Value("1"));
  other_sets("Unit_Name = ''");
  set("Unit_Name") = "box";
  expect_conflict([&] { set.Update(); });
}

TEST_P(ConflictTest, a_row_that_moved_or_went_is_not_found) {
  Recordset moved = line_read();
  other_sets("LPO_No = 'B'");
  moved("Item_Code") = "mine";
  expect_conflict([&] { moved.Update(); });
  Recordset gone = line_read();
  other_client("Delete From LPO_Detail");
  expect_conflict([&] { gone.Delete(); });
  gone("LPO_No") = "C";
  expect_conflict([&] { gone.Update(); });
}

TEST_P(ConflictTest, a_delete_fails_when_any_column_changed) {
  for (const std::string assignment : {"Item_Code = 'y'", "Proj_No = ''", "Received_Qty = Null"}) {
    Recordset set = line_read();
    other_sets(assignment);
    expect_conflict([&] { set.Delete(); });
  }
  line_read().Delete();
  EXPECT_TRUE(stored("LPO_No").is_empty());
}

TEST_P(ConflictTest, a_failed_update_may_be_tried_again) {
  books.execute("Insert Into LPO_Detail (LPO_No, SL_No) Values ('B', 1)");
  Recordset set = line_read();
  set("LPO_No") = "B";
  const std::string before = books.dump();
  EXPECT_EQ(raised_number([&] { set.Update(); }), kDatabaseFailure);
  EXPECT_EQ(books.dump(), before);
  set("LPO_No") = "C";
  set.Update();
  set("LPO_Qty") = 3;
  set.Update();
  EXPECT_EQ(books.value("Select LPO_Qty As V From LPO_Detail Where LPO_No='C'"), Value(3.0));
}

}  // namespace
}  // namespace ombrix::testing
