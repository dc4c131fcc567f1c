#include "ombrix/recordset.h"

#include <charconv>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "support/books.h"
#include "support/failures.h"
#include "support/journal.h"

namespace ombrix::testing {
namespace {

using Kind = Call::Kind;
using Kinds = std::vector<Kind>;

class RecordsetTest : public OnEachDatabase {
 protected:
  void given_line(const std::string& number, int line, const std::string& item,
                  const std::string& quantity = "Null") {
    books.execute("Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, LPO_Qty) Values ('" + number +
                  "', " + std::to_string(line) + ", '" + item + "', " + quantity + ")");
  }
  void given_orders_out_of_order() {
    given_line("B", 2, "x", "1");
    given_line("A", 10, "y", "2");
    given_line("B", 1, "x", "2");
    given_line("A", 9, "x", "1");
  }

  Recordset open(const std::string& select, OpenMode mode = Keyset) {
    Recordset set;
    set.Open(select, books.connection(), mode);
    return set;
  }
  Recordset lines(OpenMode mode = Keyset) { return open("Select * from LPO_Detail", mode); }

  /// The column's texts in the order of the rows, joined by blanks.
  static std::string walk(Recordset set, const std::string& column) {
    std::string text;
    for (; !set.IsEOF(); set.MoveNext()) text += set(column).value().text_or_empty() + ' ';
    return text;
  }
  std::string items() { return walk(open("Select Item_Code from LPO_Detail"), "Item_Code"); }
  Value stored(const std::string& column) {
    return books.value("Select " + column + " As V From LPO_Detail");
  }
};
OMBRIX_ON_EACH_DATABASE(RecordsetTest);

TEST_P(RecordsetTest, is_read_once_and_whole_and_not_at_all_to_append) {
  given_line("A", 1, "x");
  given_line("A", 2, "y");
  const Journal journal(books.connection());
  Recordset set = lines();
  EXPECT_FALSE(set.IsBOF());
  EXPECT_EQ(set.RecordCount(), 2U);
  EXPECT_EQ(walk(std::move(set), "Item_Code"), "x y ");
  Recordset added = lines();
  added.AddNew();
  added("LPO_No") = "A";
  added("sl_NO") = 3;
  added.Update();
  EXPECT_EQ(journal.kinds(), (Kinds{Kind::open, Kind::read, Kind::open, Kind::insert}));
}

TEST_P(RecordsetTest, never_meets_the_rows_it_adds_or_moves_while_it_walks) {
  given_line("A", 1, "x");
  given_line("A", 2, "y");
  Recordset walked = lines();
  int seen = 0;
  for (; !walked.IsEOF() && seen < 10; walked.MoveNext(), ++seen) {
    walked("SL_No") = walked("SL_No").value().to_long() + 100;
    walked.Update();
    Recordset added = lines();
    added.AddNew();
    added("LPO_No") = "B";
    added("SL_No") = seen;
    added.Update();
  }
  EXPECT_EQ(seen, 2);
  EXPECT_EQ(walk(lines(), "SL_No"), "101 102 0 1 ");
}

TEST_P(RecordsetTest, comes_in_key_order_unless_told_otherwise) {
  given_orders_out_of_order();
  const struct {
    const char* select;
    const char* numbers_and_lines;
  } cases[] = {
      {"Select * from LPO_Detail", "A9 A10 B1 B2 "},
      {"select  LPO_NO , sl_no  FROM  lpo_detail", "A9 A10 B1 B2 "},
      {"Select * From LPO_Detail Where Item_Code='x'", "A9 B1 B2 "},
      {"Select D.* From LPO_Detail D", "A9 A10 B1 B2 "},
      {"Select D.LPO_No, D.SL_No From LPO_Detail As D Where D.Item_Code='x'", "A9 B1 B2 "},
      {"Select * From LPO_Detail Where Item_Code<>' order by '", "A9 A10 B1 B2 "},
      {"Select * From LPO_Detail Order By SL_No", "B1 B2 A9 A10 "},
      // Rows that an order leaves equal come in key order, in the direction of its last term.
      {"Select * From LPO_Detail Order By Item_Code", "A9 B1 B2 A10 "},
      {"Select * From LPO_Detail Order By Item_Code Desc", "A10 B2 B1 A9 "},
      {"Select * From LPO_Detail Order By Item_Code Desc, LPO_Qty", "A10 A9 B2 B1 "},
  };
  for (const auto& c : cases) {
    std::string found;
    for (Recordset set = open(c.select); !set.IsEOF(); set.MoveNext()) {
      found += set("LPO_No").value().to_text() + set("SL_No").value().to_text() + ' ';
    }
    EXPECT_EQ(found, c.numbers_and_lines) << c.select;
  }
}

TEST_P(RecordsetTest, comes_in_key_order_and_is_written_without_the_key_in_its_list) {
  given_line("B", 1, "b1");
  given_line("A", 2, "a2");
  given_line("A", 1, "a1");
  EXPECT_EQ(items(), "a1 a2 b1 ");
  Recordset set = open("Select Item_Code, LPO_Qty From LPO_Detail");
  set.MoveNext();
  set("Item_Code") = "changed";
  set.Update();
  set.MoveNext();
  set.Delete();
  EXPECT_EQ(items(), "a1 changed ");
  EXPECT_EQ(raised_number([&] { open("Select Item_Code From LPO_Detail")("SL_No").value(); }),
            kNoField);
}

TEST_P(RecordsetTest, joins_in_the_order_of_the_first_tables_key) {
  books.execute(
      "Insert Into Item_Master (Item_Code, Base_Qty) Values ('x', 5);"
      "Insert Into Item_Master (Item_Code, Base_Qty) Values ('y', 7)");
  given_orders_out_of_order();
  const std::string join =
      "Select A.* , B.Base_Qty as BaseQty from LPO_Detail A, Item_Master B Where A.Item_Code = "
      "B.Item_Code";
  EXPECT_EQ(walk(open(join), "SL_No"), "9 10 1 2 ");
  EXPECT_EQ(walk(open(join), "BASEQTY"), "5 7 5 5 ");
  EXPECT_EQ(walk(open("Select B.Base_Qty as BaseQty from LPO_Detail A, Item_Master B Where "
                      "A.Item_Code = B.Item_Code"),
                 "BaseQty"),
            "5 7 5 5 ");
}

TEST_P(RecordsetTest, cannot_change_rows_that_are_no_rows_of_one_table) {
  given_line("A", 1, "x", "3");
  books.execute("Insert Into Item_Master (Item_Code, Base_Qty) Values ('x', 5)");
  for (const std::string select :
       {"Select A.*, B.Base_Qty From LPO_Detail A, Item_Master B Where A.Item_Code=B.Item_Code",
        "Select A.* From LPO_Detail A Join Item_Master B On A.Item_Code=B.Item_Code",
        "Select max(SL_No) as SL_No from LPO_Detail", "Select Distinct SL_No from LPO_Detail",
        "Select SL_No from LPO_Detail Group By SL_No",
        "Select SL_No from LPO_Detail Union Select 1 As SL_No from LPO_Detail",
        "Select LPO_Qty * 2 As SL_No from LPO_Detail", "Select Item_Code As SL_No from LPO_Detail",
        "Select Item_Code SL_No from LPO_Detail"}) {
    Recordset set = open(select);
    EXPECT_EQ(set.RecordCount(), 1U) << select;
    EXPECT_EQ(raised_number([&] { set("SL_No") = 7; }), kNotUpdatable) << select;
    EXPECT_EQ(raised_number([&] { set.AddNew(); }), kNotUpdatable) << select;
    EXPECT_EQ(raised_number([&] { set.Delete(); }), kNotUpdatable) << select;
  }
  EXPECT_EQ(stored("SL_No"), Value(1));
}

TEST_P(RecordsetTest, writes_only_under_a_lock_that_allows_it) {
  given_line("A", 1, "x");
  for (const OpenMode mode : {ForwardOnly, StaticUnlocked}) {
    Recordset set = lines(mode);
    EXPECT_EQ(set("Item_Code").value(), Value("x"));
    EXPECT_EQ(raised_number([&] { set("Item_Code") = "y"; }), kNotUpdatable);
    EXPECT_EQ(raised_number([&] { set.AddNew(); }), kNotUpdatable);
    EXPECT_EQ(raised_number([&] { set.Delete(); }), kNotUpdatable);
  }
  std::string item = "y";
  for (const OpenMode mode : {Keyset, Static, Dynamic, KeysetPessimistic}) {
    Recordset set = lines(mode);
    set("Item_Code") = item += 'y';
    set.Update();
    EXPECT_EQ(stored("Item_Code"), Value(item));
  }
}

TEST_P(RecordsetTest, stores_a_value_as_its_column_does) {
  given_line("A", 1, "x");
  const struct {
    const char* column;
    Value written, read;
  } cases[] = {
      {"Item_Code", "O'Brien \"\u20AC\"; --", "O'Brien \"\u20AC\"; --"},
      {"Item_Code", "  blanks  ", "  blanks  "},
      {"Item_Code", 2.5, "2.5"},
      {"Item_Code", true, "True"},
      {"Item_Code", Value(), ""},
      {"Last_Update", Date(2024, 2, 29, 23, 59, 58), "2024-02-29 23:59:58"},
      {"Last_Update", Date(), "1899-12-30 00:00:00"},
      {"LPO_Qty", 0.1 + 0.2, 0.1 + 0.2},
      {"LPO_Qty", std::numeric_limits<double>::max(), std::numeric_limits<double>::max()},
      {"LPO_Qty", std::numeric_limits<double>::denorm_min(),
       std::numeric_limits<double>::denorm_min()},
      {"LPO_Qty", 9007199254740993.0, 9007199254740992.0},
      {"LPO_Qty", 123456789.123456789, 123456789.123456789},
      {"LPO_Qty", true, -1.0},
      {"LPO_Qty", " 1,234.50 ", 1234.5},
      {"LPO_Qty", Value(), 0.0},
      {"SL_No", true, -1},
      {"SL_No", 2.5, 2},
      {"SL_No", std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min()},
  };
  for (const auto& c : cases) {
    Recordset set = lines();
    set(c.column) = c.written;
    EXPECT_EQ(set(c.column).value(), c.read) << c.column << " before Update";
    set.Update();
    EXPECT_EQ(stored(c.column), c.read) << c.column;
    if (c.column != std::string("LPO_Qty")) continue;
    // The database itself holds that very number.
    char digits[40]{};
    std::to_chars(digits, std::end(digits), c.read.to_number());
    EXPECT_EQ(walk(open("Select * From LPO_Detail Where LPO_Qty = Cast('" + std::string(digits) +
                        "' As double precision)"),
                   "LPO_No"),
              "A ")
        << digits;
  }
}

TEST_P(RecordsetTest, refuses_a_value_that_its_column_cannot_hold) {
  given_line("A", 1, "x", "3");
  const struct {
    const char* column;
    Value value;
    const char* failure;
  } cases[] = {
      {"LPO_Qty", "twelve", "Type mismatch"},
      {"LPO_Qty", std::numeric_limits<double>::quiet_NaN(), "Overflow"},
      {"SL_No", 3e9, "Overflow"},
      {"SL_No", "1st", "Type mismatch"},
      {"Item_Code", std::string("a\0b", 3), "Type mismatch"},
      {"Item_Code", books.connection(), "Type mismatch"},
  };
  const std::string before = books.dump();
  for (const auto& c : cases) {
    Recordset set = lines();
    EXPECT_EQ(raised_text([&] { set(c.column) = c.value; }), c.failure) << c.column;
    set.Update();
  }
  EXPECT_EQ(books.dump(), before);
}

TEST_P(RecordsetTest, shows_defaults_on_a_new_row_and_takes_what_is_left_out_from_them) {
  Recordset set = lines();
  set.AddNew();
  EXPECT_EQ(set("Received_Qty").value(), Value(0.0));
  EXPECT_EQ(set("Item_Code").value(), Value(Null()));
  set("LPO_No") = "A";
  set("SL_No") = 1;
  set.Update();
  EXPECT_EQ(set("Received_Qty").value(), stored("Received_Qty"));
  EXPECT_EQ(stored("Received_Qty"), Value(0.0));
  EXPECT_TRUE(stored("Item_Code").is_null());
}

TEST_P(RecordsetTest, writes_a_row_again_after_each_update) {
  Recordset set = lines();
  set.AddNew();
  set("LPO_No") = "A";
  set("SL_No") = 1;
  set("LPO_Qty") = 2;
  set.Update();
  set("LPO_Qty") = set("LPO_Qty").value().to_number() + 1;
  set.Update();
  set("LPO_No") = "B";
  set("LPO_Qty") = 4;
  set.Update();
  set("LPO_Qty") = 5;
  set.Update();
  EXPECT_EQ(books.rows("Select * from LPO_Detail", {"LPO_No", "LPO_Qty"}),
            (std::vector<std::vector<Value>>{{"B", 5.0}}));
  set.Delete();
  EXPECT_EQ(walk(lines(), "LPO_No"), "");
}

TEST_P(RecordsetTest, knows_a_key_that_the_database_made) {
  for (const std::string select : {"Select * from Purchase_Log",
                                   "Select Item_Code, Total_Purchase_"
                                   "Qty from Purchase_Log"}) {
    Recordset set = open(select);
    for (const std::string item : {"x", "y"}) {
      set.AddNew();
      set("Item_Code") = item;
      set.Update();
    }
    set("Total_Purchase_Qty") = 7;
    set.Update();
    set.AddNew();
    set.Update();
    set.Delete();
  }
  EXPECT_EQ(books.rows("Select * from Purchase_Log", {"Item_Code", "Total_Purchase_Qty"}),
            (std::vector<std::vector<Value>>{{"x", 0.0}, {"y", 7.0}, {"x", 0.0}, {"y", 7.0}}));
}

TEST_P(RecordsetTest, has_no_current_row_behind_its_end_or_after_a_delete) {
  given_line("A", 1, "x");
  Recordset set = lines();
  set.Delete();
  EXPECT_EQ(raised_number([&] { set("Item_Code").value(); }), kNoRow);
  EXPECT_EQ(raised_number([&] { set("Item_Code") = "y"; }), kNoRow);
  EXPECT_EQ(raised_number([&] { set.Delete(); }), kNoRow);
  set.MoveNext();
  EXPECT_TRUE(set.IsEOF());
  EXPECT_EQ(raised_number([&] { set.MoveNext(); }), kNoRow);
  EXPECT_EQ(raised_number([&] { set("Item_Code").value(); }), kNoRow);
  EXPECT_EQ(raised_number([&] { set.Delete(2); }), 5);
  Recordset none = lines();
  EXPECT_TRUE(none.IsBOF() && none.IsEOF());
}

TEST_P(RecordsetTest, is_closed_until_opened_and_opened_once) {
  Recordset set;
  EXPECT_EQ(set.State(), 0);
  EXPECT_EQ(raised_number([&] { set.RecordCount(); }), kClosed);
  EXPECT_EQ(raised_number([&] { set("LPO_No").value(); }), kClosed);
  EXPECT_EQ(raised_number([&] { set.Update(); }), kClosed);
  set = lines();
  EXPECT_EQ(set.State(), 1);
  EXPECT_EQ(raised_number([&] { set.Open("Select * from LPO_Master", books.text()); }), kOpen);
  set.Close();
  set.Close();
  EXPECT_EQ(raised_number([&] { set.MoveNext(); }), kClosed);
  EXPECT_EQ(raised_number([&] { set.Open("Select 1 As V", std::shared_ptr<Connection>()); }), 91);
  EXPECT_EQ(set.State(), 0);
}

}  // namespace
}  // namespace ombrix::testing
