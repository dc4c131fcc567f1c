#include <charconv>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "frame/database/connection_access.h"
#include "orders/lpo_fixture.h"
#include "support/books.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

using database::date_value;
using database::flag;
using database::number;
using database::Piece;
using database::sql;
using database::Statement;
using database::text;

/// A number with every digit that it has.
std::string exact(double value) {
  char digits[40];
  return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

/// A client that writes down what it was answered.
class Clerk {
 public:
  explicit Clerk(const Books& books) : books_(books) {
    given_series(books);
    given_item(books, "AA1001");
    given_item(books, "AA1002", "3", "0.1", "0.3");
    given_item(books, "AA1003", "1");
    given_item(books, "AA1004", "0", "Null");
  }

  purchase::LPO& fresh(std::initializer_list<Cells> lines = {line()}) {
    order_ = std::make_unique<purchase::LPO>();
    fill(*order_, books_, lines);
    order_->OnlineFlag = true;
    return *order_;
  }
  void call(const std::string& what, bool answer) {
    answers_.push_back(what + (answer ? ": True, " : ": False, " + order_->ErrDesc() + ", ") +
                       order_->LPONo() + " " + exact(order_->LPOIdentity()));
  }
  /// The database's own words differ, not the answer.
  void call_the_database_refuses(const std::string& what, bool answer) {
    EXPECT_FALSE(answer) << what;
    EXPECT_NE(order_->ErrDesc(), "") << what;
    answers_.push_back(what + ": refused by the database");
  }
  void create() { call("create", order_->Create_LPO()); }
  void update() { call("update", order_->Update_LPO()); }
  void process() { call("process", order_->Process_LPO()); }
  void read() {
    call("read", order_->Get_LPO());
    const purchase::LPO& order = *order_;
    std::string told;
    for (const double amount : {order.LPODiscountPercent(), order.LPODiscountAmount(),
                                order.LPOSubTotal(), order.LPOTotalAmount(), order.LPOTaxAmount(),
                                order.LPOTaxPercent(), order.ExchangeRate()}) {
      told += exact(amount) + " ";
    }
    told += order.LPODate().general_text() + " " + order.LPODueDate().general_text() + " " +
            order.LPOComments() + "|" + order.RFQNo() + "|" + order.Purchase_Type();
    answers_.push_back(told);
    for (std::int32_t row = 1; row < order.GridName()->Rows(); ++row) {
      std::string cells;
      for (std::int32_t column = 1; column < kColumns; ++column) {
        cells += order.GridName()->TextMatrix(row, column) + "|";
      }
      answers_.push_back(cells);
    }
  }

  const Books& books() const { return books_; }
  const std::vector<std::string>& answers() const { return answers_; }

 private:
  const Books& books_;
  std::unique_ptr<purchase::LPO> order_;
  std::vector<std::string> answers_;
};

void enter_change_and_process(Clerk& clerk) {
  purchase::LPO& order = clerk.fresh({line({{7, "3"}, {8, "11.11"}, {12, "33.33"}}),
                                      line({{1, "1002"}, {7, "0.1"}, {6, "0.7"}, {12, "33.33"}}),
                                      line({{1, "1003"}, {7, "0"}}),
                                      line({{1, "1004"}, {4, "Box-Month"}, {12, "33.34"}})});
  order.LPODiscountPercent = 10;
  order.LPOFCDiscountAmount = 10;
  order.LPOFCSubtotal = 0.1 + 0.2;
  order.LPOFCTotalAmount = 2.675;
  order.LPOTaxAmount = 1.0 / 3;
  order.LPOTaxPercent = 1e-300;
  order.LPOComments =
      "Gr\xC3\xB6\xC3\x9F"
      "e \xE4\xBB\xB7\xE6\xA0\xBC \xF0\x9F\x93\xA6 100 % \\ \"of\" $1";
  clerk.create();
  clerk.read();
  order.RFQNo = "Q 7";
  order.LPODueDate = Date(2024, 4, 1, 13, 5, 9);
  order.LPOFCTotalAmount = 123456789.123456789;
  clerk.update();
  clerk.read();
  clerk.process();
  clerk.read();
}

void run_each_way_with_each_number(Clerk& clerk) {
  for (const bool online : {true, false}) {
    for (const bool manual : {true, false}) {
      purchase::LPO& order = clerk.fresh({line(), line({{1, "1002"}, {6, "0.1"}})});
      clerk.create();
      order.OnlineFlag = online;
      order.DocFlag = manual;
      order.manualDocIdentity = online ? 500 : 20;
      clerk.process();
      order.OnlineFlag = false;
      order.SyncFlag = true;
      clerk.process();
    }
  }
}

void meet_refusals(Clerk& clerk) {
  clerk.fresh().VendorCode = " ";
  clerk.create();
  clerk.fresh().LPODate = Date();
  clerk.create();
  clerk.fresh({});
  clerk.create();
  clerk.fresh({line(), line({{15, ""}})});
  clerk.create();
  clerk.fresh({line({{7, "ten"}})});
  clerk.create();
  clerk.fresh({line({{6, "1e308"}, {7, "1e308"}})});
  clerk.create();
  clerk.process();
  clerk.fresh().LPOFCTotalAmount = 1;
  clerk.update();
  clerk.fresh().LPONo = "  ";
  clerk.process();
  clerk.fresh().LPONo = "AABRPO99";
  clerk.process();
  clerk.fresh().DocumentPrefix = "XX";
  clerk.create();
  clerk.fresh().VendorName = std::string("A\0B", 3);
  clerk.create();
}

void meet_the_databases_refusals(Clerk& clerk) {
  purchase::LPO& quoted = clerk.fresh();
  quoted.LPONo = "O'Brien";
  clerk.call_the_database_refuses("read", quoted.Get_LPO());
  purchase::LPO& harmful = clerk.fresh();
  harmful.LPONo = "x' Or '1'='1";
  clerk.call_the_database_refuses("update", harmful.Update_LPO());
  purchase::LPO& in_transaction = clerk.fresh();
  in_transaction.LPONo = "O'Brien";
  clerk.call_the_database_refuses("update", all_or_nothing(*clerk.books().connection(), [&] {
                                    return in_transaction.Update_LPO();
                                  }));
}

void work_in_transactions(Clerk& clerk) {
  Connection& connection = *clerk.books().connection();
  purchase::LPO& order = clerk.fresh();
  clerk.call("create", all_or_nothing(connection, [&] { return order.Create_LPO(); }));
  clerk.call("process", all_or_nothing(connection, [&] { return order.Process_LPO(); }));
  purchase::LPO& refused = clerk.fresh({line(), line({{15, ""}})});
  clerk.call("create", all_or_nothing(connection, [&] { return refused.Create_LPO(); }));
}

using Rows = std::vector<std::vector<Value>>;

struct Answers {
  std::vector<std::string> told;
  Rows lines, items;
  std::string dump;
};

Answers answers_of(const std::string& database) {
  const Books books(database);
  Clerk clerk(books);
  enter_change_and_process(clerk);
  run_each_way_with_each_number(clerk);
  meet_refusals(clerk);
  meet_the_databases_refusals(clerk);
  work_in_transactions(clerk);
  // A number of the client's own that passes the counter's leaves the time of day there.
  EXPECT_NE(books.value("Select Last_Update As V From Document_Prefix"),
            Value("2020-01-01 00:00:00"));
  books.execute("Update Document_Prefix Set Last_Update = ''");
  return {clerk.answers(),
          books.rows("Select * From LPO_Detail",
                     {"LPO_No", "SL_No", "Unit_Qty", "LPO_Qty", "LPO_Overall_Disc", "Period_Type"}),
          books.rows("Select * From Item_Master", {"Item_Code", "Purchase_Order_Qty"}),
          books.dump()};
}

TEST(SameAnswers, come_from_each_database) {
  const Answers first = answers_of("SQLite");
  EXPECT_GT(first.lines.size(), 10U);
  EXPECT_EQ(first.items.at(0).at(1), Value(100.0 + 2 * (3 + 4 * 2 * 10 + 10) * 12));
  if (databases().size() < 2) GTEST_SKIP() << "OMBRIX_POSTGRES names no server to compare with";
  const Answers second = answers_of("PostgreSQL");
  EXPECT_EQ(first.told, second.told);
  EXPECT_EQ(first.lines, second.lines);
  EXPECT_EQ(first.items, second.items);
  EXPECT_EQ(first.dump, second.dump);
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

TEST_P(SameMeaning, a_whole_number_finds_a_double_and_a_fraction_an_integer_column) {
  books.execute(
      "Insert Into LPO_Master (LPO_No, LPO_Identity, Processed_Flag) Values ('A', 7, 1),"
      " ('B', 7.5, 2)");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where LPO_Identity=", number(7)})), "A");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where LPO_Identity=", number(7.5)})), "B");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master Where Processed_Flag>", number(1.5)})), "B");
}

TEST_P(SameMeaning, keys_come_in_byte_order_and_texts_match_by_case) {
  books.execute(
      "Insert Into LPO_Master (LPO_No) Values ('b'), ('A'), ('a'), ('_'), ('B'), ('A-'), ('AA')");
  EXPECT_EQ(found(sql({"Select LPO_No From LPO_Master"})), "AA-AAB_ab");
  EXPECT_EQ(found(sql({"Select lpo_no From lpo_master Where LPO_NO=", text("a")})), "a");
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
