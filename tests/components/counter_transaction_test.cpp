#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "ombrix/components.h"

#include "support/books.h"
#include "support/failures.h"
#include "support/journal.h"

namespace ombrix::testing {
namespace {

enum class Series : bool { final, temporary };

/// The component on one series, as a document uses it: by name, released at the end.
class Counter {
 public:
  explicit Counter(std::shared_ptr<Connection> connection, const std::string& series = "PO")
      : connection_(std::move(connection)) {
    counter_->let("CompanyPrefix", "AA");
    counter_->let("BranchPrefix", "01");
    counter_->let("DocumentPrefix", series);
  }

  void skip_checking() { counter_->let("SkipChecking", true); }
  bool draw(Series series = Series::final) {
    std::array<Value, 2> arguments{connection_, true};
    const std::size_t count = series == Series::temporary ? 2 : 1;
    return counter_->call("Get_Last_Counter", std::span(arguments).first(count)).to_flag();
  }
  bool keep(Series series = Series::final) {
    std::vector<Value> arguments{series == Series::temporary};
    return counter_->call("Increase_Counter", arguments).to_flag();
  }
  std::string reason() { return counter_->get("ErrDesc").to_text(); }
  double number() { return counter_->get("NextDocumentNo").to_number(); }
  /// 0 when none was drawn.
  double drawn(Series series = Series::final) { return draw(series) ? number() : 0; }

 private:
  std::shared_ptr<Connection> connection_;
  ObjectRef counter_ = create_object("OmbrixSystem.CounterTransaction");
};

class CounterTest : public OnEachDatabase {
 protected:
  CounterTest() {
    books.execute(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
        " Document_Next_No, Temporary_Next_No) Values ('PO', 'AA', '01', 7, 40),"
        " ('PO', 'AA', '02', 500, 500)");
  }
  /// What is next of both series, "7 40".
  std::string next() const {
    const auto row = books.rows("Select * From Document_Prefix Where Branch_Prefix='01'",
                                {"Document_Next_No", "Temporary_Next_No"})[0];
    return row[0].to_text() + " " + row[1].to_text();
  }
  Counter counter() { return Counter(client); }
  void given(const std::string& table, const std::string& key, const std::string& number) {
    books.execute("Insert Into " + table + " (" + key + ") Values ('" + number + "')");
  }

  const std::shared_ptr<Connection>& client = books.connection();
  std::shared_ptr<Connection> other = books.another();
};
OMBRIX_ON_EACH_DATABASE(CounterTest);

TEST_P(CounterTest, claims_a_number_when_it_is_drawn_and_gives_it_back_unless_it_was_moved_on) {
  EXPECT_EQ(counter().drawn(), 7);
  EXPECT_EQ(counter().drawn(Series::temporary), 40);
  EXPECT_EQ(next(), "7 40");
  Counter twice = counter();
  EXPECT_EQ(twice.drawn(), 7);
  EXPECT_EQ(twice.drawn(), 7);
  {
    Counter later = counter();
    EXPECT_EQ(later.drawn(), 8);
    EXPECT_TRUE(later.keep());
  }
  EXPECT_EQ(next(), "9 40");
  // Nothing comes back when a later number was drawn.
  twice = counter();
  EXPECT_EQ(next(), "9 40");
}

TEST_P(CounterTest, counts_temporary_and_final_numbers_apart) {
  Counter temporary = counter(), final = counter();
  EXPECT_EQ(temporary.drawn(Series::temporary), 40);
  EXPECT_EQ(final.drawn(), 7);
  EXPECT_FALSE(final.keep(Series::temporary));
  EXPECT_NE(final.reason(), "");
  EXPECT_TRUE(temporary.keep(Series::temporary));
  EXPECT_TRUE(final.keep());
  EXPECT_FALSE(final.keep());
  EXPECT_EQ(next(), "8 41");
  EXPECT_EQ(
      books.value("Select Document_Next_No As V From Document_Prefix Where Branch_Prefix='02'"),
      Value(500.0));
}

TEST_P(CounterTest, passes_over_a_final_number_that_any_document_bears) {
  given("LPO_Master", "LPO_No", "AA01PO7");
  given("Goods_Receive_Master", "GRN_No", "AA01PO8");
  given("Purchase_Invoice_Master", "Purchase_Inv_No", "AA01PO9");
  given("Purchase_Return_Master", "Purchase_Rtn_No", "AA01PO10");
  given("Cash_Purchase_Master", "Cash_Pur_Inv_No", "AA01PO11");
  given("Payment_Master", "Payment_No", "AA01PO12");
  given("Voucher_Master", "Voucher_No", "AA01PO13");
  given("PDC_Master", "PDC_No", "AA01PO14");
  given("LPO_Master", "LPO_No", "AA02PO15");
  given("LPO_Master", "LPO_No", "AA01POTMP15");
  EXPECT_EQ(counter().drawn(), 15);
  EXPECT_EQ(next(), "7 40");
  // A temporary one only when a voucher bears it.
  given("Voucher_Master", "Voucher_No", "AA01POTMP40");
  given("LPO_Master", "LPO_No", "AA01POTMP41");
  given("Voucher_Master", "Voucher_No", "AA01PO41");
  EXPECT_EQ(counter().drawn(Series::temporary), 41);
  Counter kept = counter();
  EXPECT_EQ(kept.drawn(), 15);
  EXPECT_TRUE(kept.keep());
  EXPECT_EQ(next(), "16 40");
  books.execute("Update Document_Prefix Set Document_Next_No = 123456789012");
  given("LPO_Master", "LPO_No", "AA01PO123456789012");
  EXPECT_EQ(counter().drawn(), 123456789013.0);
}

TEST_P(CounterTest, refuses_a_series_without_a_row_or_opens_it_when_it_skips_checking) {
  const std::string before = books.dump();
  {
    Counter unknown(client, "XX");
    EXPECT_FALSE(unknown.draw());
    EXPECT_EQ(unknown.reason(),
              "No counter for document series \"XX\" of company \"AA\", branch \"01\".");
    EXPECT_FALSE(unknown.keep());
    for (const std::string series : {"O'B", "x' Or '1'='1"}) {
      EXPECT_EQ(raised_number([&] { Counter(client, series).draw(); }), kDatabaseFailure);
    }
    Counter nothing(nullptr);
    EXPECT_FALSE(nothing.draw());
    EXPECT_EQ(nothing.reason(), "Invalid Connection.");
    EXPECT_EQ(raised_number([] { Counter(std::make_shared<Connection>()).draw(); }), kClosed);
  }
  EXPECT_EQ(books.dump(), before);
  for (const double expected : {1, 2}) {
    Counter opened(client, "XX");
    opened.skip_checking();
    EXPECT_EQ(opened.drawn(), expected);
    EXPECT_TRUE(opened.keep());
  }
  EXPECT_EQ(Counter(client, "XX").drawn(Series::temporary), 1);
}

TEST_P(CounterTest, stands_where_it_stood_after_each_failed_call) {
  given("LPO_Master", "LPO_No", "AA01PO7");
  int calls = 0;
  {
    const Journal journal(client);
    EXPECT_EQ(counter().drawn(), 8);
    calls = static_cast<int>(journal.calls().size());
  }
  for (int failing = 1; failing < calls; ++failing) {
    int call = 0;
    client->inject([&](const Call&) {
      return ++call == failing ? Fault{Fault::Kind::raise, 7, "Out of memory"} : Fault();
    });
    EXPECT_EQ(raised_text([&] { counter().draw(); }), "Out of memory") << failing;
    EXPECT_EQ(next(), "7 40") << "after call " << failing;
  }
  client->inject({});
  EXPECT_EQ(counter().drawn(), 8);
}

// What another caller drew meanwhile is never handed out again.

TEST_P(CounterTest, gives_no_number_back_that_a_rollback_or_the_end_of_the_session_gave_back) {
  const auto roll_back = [&] { client->RollbackTrans(); };
  const auto execute = [&] { books.execute("Rollback"); };
  const auto reopen = [&] {
    client->Close();
    client->Open(books.text());
  };
  const auto commit_in_vain = [&] {
    EXPECT_NE(raised_number([&] { client->Execute("Select 1 / 0"); }), 0);
    EXPECT_NE(raised_number([&] { client->CommitTrans(); }), 0);
  };
  // Reopened first: a session that has rolled back is told from a new one by its count alone.
  std::vector<std::function<void()>> ends{reopen, roll_back, execute};
  // A failed statement dooms no transaction of SQLite.
  if (GetParam() == "PostgreSQL") ends.push_back(commit_in_vain);
  for (const auto& end : ends) {
    client->BeginTrans();
    Counter undone = counter();
    const double number = undone.drawn();
    end();
    Counter drawn(other);
    EXPECT_EQ(drawn.drawn(), number);
    undone = counter();
    EXPECT_EQ(Counter(client).drawn(), number + 1);
    EXPECT_TRUE(drawn.keep());
  }
}

TEST_P(CounterTest, gives_no_number_back_that_another_drew_while_one_was_passed_over) {
  given("LPO_Master", "LPO_No", "AA01PO7");
  Counter second(other);
  client->inject([&](const Call& call) {
    if (second.number() == 0 && call.text.starts_with("Select 1 As Borne")) second.draw();
    return Fault{};
  });
  Counter first = counter();
  EXPECT_EQ(first.drawn(), 9);
  client->inject({});
  EXPECT_EQ(second.number(), 8);
  first = counter();
  EXPECT_EQ(next(), "9 40");
}

}  // namespace
}  // namespace ombrix::testing
