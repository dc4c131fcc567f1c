#include <charconv>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "frame/database/connection_access.h"
#include "orders/lpo_fixture.h"
#include "support/books.h"

namespace ombrix::testing {
namespace {

using database::date_value;
using database::flag;
using database::Piece;
using database::sql;
using database::Statement;

/// A number with every digit that it has.
std::string exact(double value) {
  char digits[40];
  return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

/// All that the order tells after it was read.
std::string told(purchase::LPO& order) {
  EXPECT_TRUE(order.Get_LPO()) << order.ErrDesc();
  std::string text = order.LPONo() + " " + order.LPODate().general_text() + " " +
                     order.LPODueDate().general_text() + " " + order.LPOComments() + "|" +
                     order.RFQNo();
  for (const double amount :
       {order.LPOIdentity(), order.LPODiscountPercent(), order.LPODiscountAmount(),
        order.LPOSubTotal(), order.LPOTotalAmount(), order.LPOTaxAmount(), order.LPOTaxPercent()}) {
    text += " " + exact(amount);
  }
  for (std::int32_t row = 1; row < order.GridName()->Rows(); ++row) {
    for (std::int32_t column = 1; column < kColumns; ++column) {
      text += "|" + order.GridName()->TextMatrix(row, column);
    }
  }
  return text;
}

/// What a client is told, and what then stands in the database, of an order whose numbers and texts
/// are no easy ones.
std::vector<std::string> answers_of(const std::string& database) {
  const Books books(database);
  given_series(books);
  given_item(books, "AA1001");
  given_item(books, "AA1002", "3", "0.1", "0.3");
  given_item(books, "AA1004", "0", "Null");
  purchase::LPO order;
  fill(order, books,
       {line({{7, "3"}, {8, "11.11"}, {12, "33.33"}}),
        line({{1, "1002"}, {7, "0.1"}, {6, "0.7"}, {12, "33.33"}}), line({{7, "0"}}),
        line({{1, "1004"}, {4, "Box-Month"}, {12, "33.34"}})});
  order.OnlineFlag = true;
  order.LPODiscountPercent = order.LPOFCDiscountAmount = 10;
  order.LPOFCSubtotal = 0.1 + 0.2;
  order.LPOFCTotalAmount = 2.675;
  order.LPOTaxAmount = 1.0 / 3;
  order.LPOTaxPercent = 1e-300;
  order.LPOComments = "Gr\u00F6\u00DFe \u4EF7\u683C \U0001F4E6 100 % \\ \"of\" $1";
  EXPECT_TRUE(order.Create_LPO()) << order.ErrDesc();
  std::vector<std::string> answers{told(order)};
  order.RFQNo = "Q 7";
  order.LPODueDate = Date(2024, 4, 1, 13, 5, 9);
  order.LPOFCTotalAmount = 123456789.123456789;
  EXPECT_TRUE(order.Update_LPO()) << order.ErrDesc();
  answers.push_back(told(order));
  EXPECT_TRUE(order.Process_LPO()) << order.ErrDesc();
  answers.push_back(told(order));
  for (const auto& row : books.rows("Select * From Item_Master", {"Purchase_Order_Qty"})) {
    answers.push_back(row[0].is_null() ? "Null" : exact(row[0].to_number()));
  }
  answers.push_back(books.dump());
  return answers;
}

TEST(SameAnswers, come_from_each_database) {
  const auto first = answers_of("SQLite");
  EXPECT_EQ(first.at(3), "172");
  if (databases().size() < 2) GTEST_SKIP() << "OMBRIX_POSTGRES names no server to compare with";
  EXPECT_EQ(first, answers_of("PostgreSQL"));
}

class SameMeaning : public OnEachDatabase {
 protected:
  std::string found(const Statement& statement) const {
    auto rows = database::open_recordset(statement, *books.connection(), Static);
    std::string numbers;
    for (; !rows.IsEOF(); rows.MoveNext()) numbers += rows("LPO_No").value().to_text();
    return numbers;
  }
};
OMBRIX_ON_EACH_DATABASE(SameMeaning);

TEST_P(SameMeaning, a_bare_flag_is_true_when_it_holds_neither_0_nor_null) {
  books.execute(
      "Insert Into LPO_Master (LPO_No, Processed_Flag, Cancel_Flag) Values ('A', -1, 0),"
      " ('B', 1, 1), ('C', 0, 1), ('D', Null, 1), ('E', 2, Null)");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where ", flag("Processed_Flag")})), "ABE");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where ", flag("Processed_Flag"), " And Not ",
                       flag("Cancel_Flag")})),
            "A");
}

TEST_P(SameMeaning, a_date_value_is_a_day_as_dates_are_stored) {
  books.execute(
      "Insert Into LPO_Master (LPO_No, LPO_Date) Values ('A', '2024-03-04 23:59:59'),"
      " ('B', '2024-03-05 00:00:00'), ('C', '2024-03-05 00:00:01'), ('D', Null)");
  const Piece day = date_value(Date(2024, 3, 5, 17, 30));
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where LPO_Date = ", day})), "B");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where LPO_Date < ", day})), "A");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where LPO_Date >= ", day})), "BC");
}

TEST_P(SameMeaning, a_view_gives_its_quoted_columns_in_any_case) {
  books.execute(
      "Insert Into Goods_Receive_Master (GRN_No, GRN_Ref_Document_No, GRN_Order_Date,"
      " Processed_Flag) Values ('G', 'AABRPO1', '2024-03-05 00:00:00', 1);"
      "Insert Into Goods_Receive_Detail (GRN_No, SL_No) Values ('G', 1)");
  Recordset set;
  set.Open("Select * From grnforinvoicing", books.connection(), Static);
  ASSERT_EQ(set.RecordCount(), 1U);
  EXPECT_EQ(set("Order No").value(), Value("AABRPO1"));
  EXPECT_EQ(set("ORDER no").value(), Value("AABRPO1"));
  EXPECT_EQ(set("order date").value(), Value("2024-03-05 00:00:00"));
}

}  // namespace
}  // namespace ombrix::testing
