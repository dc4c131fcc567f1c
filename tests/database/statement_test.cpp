#include "database/statement.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "ombrix/recordset.h"

#include "database/connection_access.h"
#include "support/books.h"
#include "support/failures.h"
#include "support/journal.h"

namespace ombrix::testing {
namespace {

using database::date_value;
using database::digits;
using database::flag;
using database::name;
using database::number;
using database::sql;
using database::Statement;
using database::text;
using namespace std::string_view_literals;

constexpr const char* kRefused = "The statement was refused: a value would change what it does.";

Statement by_item(std::string_view item) {
  return sql({"Select LPO_No From LPO_Detail Where Item_Code=", text(item), " and SL_No > 0"});
}
Statement by_quantity(std::string_view quantity) {
  return sql({"Select LPO_No From LPO_Detail Where LPO_Qty=", digits(quantity), " and SL_No > 0"});
}

TEST(StatementText, IsJoinedForAReaderAndPreparedForADatabase) {
  const auto statement =
      sql({"Select ", name("LPO_No"), " From LPO_Detail  Where Item_Code=", text("AA", "1002"),
           " and LPO_Qty=", number(2.5), " and SL_No=", digits("3"), " and 1=1"});
  EXPECT_EQ(statement.joined_text(),
            "Select LPO_No From LPO_Detail  Where Item_Code='AA1002' and LPO_Qty=2.5 and SL_No=3"
            " and 1=1");
  EXPECT_EQ(statement.prepared_text(),
            "Select LPO_No From LPO_Detail  Where Item_Code=$1 and LPO_Qty=$2 and SL_No=$3"
            " and 1=1");
  ASSERT_EQ(statement.parameters().size(), 3U);
  EXPECT_EQ(std::get<std::string>(statement.parameters()[0].cell), "AA1002");
  EXPECT_EQ(std::get<double>(statement.parameters()[1].cell), 2.5);
  EXPECT_EQ(std::get<std::int64_t>(statement.parameters()[2].cell), 3);
}

TEST(StatementText, KeepsANumberExactAlsoWhereItsTextRounds) {
  const auto statement = sql({"", number(0.1 + 0.2), number(1e20), number(-7)});
  EXPECT_EQ(statement.joined_text(), "0.31E+20-7");
  EXPECT_EQ(std::get<double>(statement.parameters()[0].cell), 0.1 + 0.2);
  EXPECT_EQ(std::get<double>(statement.parameters()[1].cell), 1e20);
  EXPECT_EQ(std::get<std::int64_t>(statement.parameters()[2].cell), -7);
}

class StatementTest : public OnEachDatabase {
 protected:
  StatementTest() {
    books.execute(
        "Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, LPO_Qty) Values ('A', 1, 'AA1', 2),"
        " ('B', 1, '2', 2.5), ('C', 2, '', Null)");
  }

  std::string found(const Statement& statement) {
    return walk(database::open_recordset(statement, *books.connection(), Static));
  }
  std::string found_by_text(const std::string& text) {
    Recordset rows;
    rows.Open(text, books.connection(), Static);
    return walk(std::move(rows));
  }
  Failure refusal(const Statement& statement) {
    return raised([&] { found(statement); });
  }
  /// What the database itself says against the joined text.
  std::string complaint(const Statement& statement) {
    return raised_text([&] { books.execute(statement.joined_text()); });
  }

 private:
  static std::string walk(Recordset rows) {
    std::string numbers;
    for (; !rows.IsEOF(); rows.MoveNext()) numbers += rows("LPO_No").value().to_text();
    return numbers;
  }
};
OMBRIX_ON_EACH_DATABASE(StatementTest);

TEST_P(StatementTest, finds_with_bound_values_what_its_joined_text_finds) {
  const std::pair<Statement, const char*> cases[] = {
      {by_item("AA1"), "A"},
      {by_item("2"), "B"},
      {by_item(""), "C"},
      {by_item("none"), ""},
      {by_item("a\"b;--/*"), ""},
      {by_item("$1"), ""},
      {by_quantity("2"), "A"},
      {by_quantity("2.50"), "B"},
      {by_quantity("+25E-1"), "B"},
      {sql({"Select LPO_No From LPO_Detail Where LPO_Qty=", number(2)}), "A"},
      {sql({"Select LPO_No From LPO_Detail Where SL_No > ", number(1.5)}), "C"},
      {sql({"Select ", name("lpo_no"), " From ", name("LPO_DETAIL"), " Where SL_No=", number(1)}),
       "AB"},
  };
  for (const auto& [statement, rows] : cases) {
    const std::string joined = statement.joined_text();
    EXPECT_EQ(found(statement), rows) << joined;
    EXPECT_EQ(found_by_text(joined), rows) << joined;
  }
}

TEST_P(StatementTest, raises_what_the_database_says_when_a_value_breaks_it) {
  for (const auto& statement :
       {by_item("O'Brien"), by_item("'"), by_quantity(""), by_quantity("2.5.1"),
        by_quantity("two words"), by_quantity("1'"), by_quantity("(1"),
        sql({"Select ", name("LPO_No,"), " From LPO_Detail"}),
        sql({"Select LPO_No From ", name("no such table")})}) {
    const Failure failure = refusal(statement);
    EXPECT_EQ(failure.number(), kDatabaseFailure) << statement.joined_text();
    EXPECT_NE(failure.description(), "") << statement.joined_text();
    EXPECT_EQ(failure.description(), complaint(statement)) << statement.joined_text();
  }
}

TEST_P(StatementTest, is_refused_where_a_value_makes_another_valid_statement) {
  for (const auto& statement :
       {by_item("x' Or '1'='1"), by_item("''"), by_item("AA1' --"), by_quantity("2 Or 1=1"),
        by_quantity("LPO_Qty"), by_quantity("(2)"), by_quantity("'2'"), by_quantity("2 --"),
        by_quantity("1 Union Select 'A' From LPO_Detail Where 1=1"),
        sql({"Select ", name("*"), " From LPO_Detail"}),
        sql({"Select ", name("LPO_No, SL_No"), " From LPO_Detail"}),
        sql({"Select LPO_No From ", name("LPO_Detail, Item_Master")})}) {
    const Failure failure = refusal(statement);
    EXPECT_EQ(failure.number(), kDatabaseFailure) << statement.joined_text();
    EXPECT_EQ(failure.description(), kRefused) << statement.joined_text();
  }
}

TEST_P(StatementTest, executes_nothing_of_a_refused_value) {
  const std::string before = books.dump();
  const Journal journal(books.connection());
  EXPECT_NE(refusal(by_item("x'; Delete From LPO_Detail; --")).number(), 0);
  EXPECT_NE(refusal(by_quantity("0; Delete From LPO_Detail; --")).number(), 0);
  for (const std::string value : {"x' Or '1'='1", "x'; Delete From LPO_Detail; --"}) {
    EXPECT_NE(raised_number([&] {
                database::execute(
                    sql({"Update LPO_Detail Set LPO_Qty=9 Where Item_Code=", text(value)}),
                    *books.connection());
              }),
              0);
  }
  EXPECT_EQ(books.dump(), before);
  EXPECT_TRUE(journal.calls().empty());
}

TEST_P(StatementTest, takes_no_zero_character_and_no_number_that_no_double_holds) {
  for (const auto value : {"AA1\0"sv, "\0"sv, "AA1\0' Or '1'='1"sv}) {
    EXPECT_EQ(refusal(by_item(value)).number(), kDatabaseFailure);
    EXPECT_EQ(refusal(by_quantity(value)).number(), kDatabaseFailure);
  }
  EXPECT_EQ(refusal(by_quantity("1e999")).description(), "Overflow");
}

TEST_P(StatementTest, goes_the_same_way_through_a_connection_text) {
  const auto by_text = [&](const Statement& statement) {
    auto rows = database::open_fresh_recordset(statement, books.text(), nullptr, Static);
    return rows.RecordCount();
  };
  EXPECT_EQ(by_text(by_item("AA1")), 1U);
  EXPECT_EQ(raised_text([&] { by_text(by_item("x' Or '1'='1")); }), kRefused);
  EXPECT_EQ(raised_text([&] { by_text(by_item("O'Brien")); }), complaint(by_item("O'Brien")));
}

TEST_P(StatementTest, a_bare_flag_is_true_when_it_holds_neither_0_nor_null) {
  books.execute(
      "Insert Into LPO_Master (LPO_No, Processed_Flag, Cancel_Flag) Values ('A', -1, 0),"
      " ('B', 1, 1), ('C', 0, 1), ('D', Null, 1), ('E', 2, Null)");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where ", flag("Processed_Flag")})), "ABE");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where ", flag("Processed_Flag"), " And Not ",
                       flag("Cancel_Flag")})),
            "A");
}

TEST_P(StatementTest, a_date_value_is_a_day_as_dates_are_stored) {
  books.execute(
      "Insert Into LPO_Master (LPO_No, LPO_Date) Values ('A', '2024-03-04 23:59:59'),"
      " ('B', '2024-03-05 00:00:00'), ('C', '2024-03-05 00:00:01'), ('D', Null)");
  const auto day = date_value(Date(2024, 3, 5, 17, 30));
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where LPO_Date = ", day})), "B");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where LPO_Date < ", day})), "A");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where LPO_Date >= ", day})), "BC");
}

TEST_P(StatementTest, a_view_gives_its_quoted_columns_in_any_case_and_receipts_in_their_order) {
  books.execute(
      "Insert Into Goods_Receive_Master (GRN_No, GRN_Ref_Document_No, GRN_Order_Date,"
      " Processed_Flag) Values ('H', 'AABRPO1', '2024-03-05 00:00:00', 1),"
      " ('G', 'AABRPO1', '2024-03-05 00:00:00', 1);"
      "Insert Into Goods_Receive_Detail (GRN_No, SL_No) Values ('H', 1), ('G', 2), ('G', 1)");
  Recordset set;
  set.Open("Select * From grnforinvoicing", books.connection(), Static);
  ASSERT_EQ(set.RecordCount(), 3U);
  EXPECT_EQ(set("ORDER no").value(), Value("AABRPO1"));
  EXPECT_EQ(set("order date").value(), Value("2024-03-05 00:00:00"));
  std::string lines;
  for (; !set.IsEOF(); set.MoveNext()) {
    lines += set("GRN_No").value().to_text() + set("SL_No").value().to_text();
  }
  EXPECT_EQ(lines, "G1G2H1");
}

}  // namespace
}  // namespace ombrix::testing
