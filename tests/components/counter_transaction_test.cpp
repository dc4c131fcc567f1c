#include <gtest/gtest.h>
#include <memory>
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
    std::vector<Value> arguments{connection_};
    if (series == Series::temporary) arguments.emplace_back(true);
    return counter_->call("Get_Last_Counter", arguments).to_flag();
  }
  bool keep(Series series = Series::final) {
    std::vector<Value> arguments{series == Series::temporary};
    return counter_->call("Increase_Counter", arguments).to_flag();
  }
  double number() { return counter_->get("NextDocumentNo").to_number(); }
  std::string reason() { return counter_->get("ErrDesc").to_text(); }
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
        " Document_Next_No, Temporary_Next_No) Values ('PO', 'AA', '01', 7, 40);"
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
        " Document_Next_No, Temporary_Next_No) Values ('PO', 'AA', '02', 500, 500)");
  }
  double next(Series series = Series::final) {
    const std::string column = series == Series::final ? "Document_Next_No" : "Temporary_Next_No";
    return books.value("Select " + column + " As V From Document_Prefix Where Branch_Prefix='01'")
        .to_number();
  }
  Counter counter() { return Counter(books.connection()); }
  void given(const std::string& table, const std::string& key, const std::string& number) {
    books.execute("Insert Into " + table + " (" + key + ") Values ('" + number + "')");
  }
};
OMBRIX_ON_EACH_DATABASE(CounterTest);

TEST_P(CounterTest, claims_a_number_when_it_is_drawn_and_keeps_it_when_moved_on) {
  {
    Counter first = counter();
    EXPECT_EQ(first.drawn(), 7);
    EXPECT_EQ(next(), 8);
    EXPECT_EQ(counter().drawn(), 8);
    EXPECT_TRUE(first.keep());
  }
  EXPECT_EQ(next(), 8);
}

TEST_P(CounterTest, gives_a_number_back_that_was_not_moved_on) {
  EXPECT_EQ(counter().drawn(), 7);
  EXPECT_EQ(counter().drawn(Series::temporary), 40);
  EXPECT_EQ(next(), 7);
  EXPECT_EQ(next(Series::temporary), 40);
  Counter twice = counter();
  EXPECT_EQ(twice.drawn(), 7);
  EXPECT_EQ(twice.drawn(), 7);
}

TEST_P(CounterTest, gives_nothing_back_when_a_later_number_was_drawn) {
  Counter later = counter();
  {
    Counter earlier = counter();
    EXPECT_EQ(earlier.drawn(), 7);
    EXPECT_EQ(later.drawn(), 8);
  }
  EXPECT_EQ(next(), 9);
  EXPECT_TRUE(later.keep());
  EXPECT_EQ(counter().drawn(), 9);
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
  EXPECT_EQ(next(), 8);
  EXPECT_EQ(next(Series::temporary), 41);
  EXPECT_EQ(books.value("Select Document_Next_No As V From Document_Prefix Where "
                        "Branch_Prefix='02'"),
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
  given("LPO_Master", "LPO_No", "AA02PO14");
  given("LPO_Master", "LPO_No", "AA01POTMP14");
  EXPECT_EQ(counter().drawn(), 14);
  EXPECT_EQ(next(), 7);
  Counter kept = counter();
  EXPECT_EQ(kept.drawn(), 14);
  EXPECT_TRUE(kept.keep());
  EXPECT_EQ(next(), 15);
}

TEST_P(CounterTest, passes_over_a_temporary_number_only_when_a_voucher_bears_it) {
  given("Voucher_Master", "Voucher_No", "AA01POTMP40");
  given("LPO_Master", "LPO_No", "AA01POTMP41");
  given("Voucher_Master", "Voucher_No", "AA01PO41");
  EXPECT_EQ(counter().drawn(Series::temporary), 41);
  EXPECT_EQ(next(Series::temporary), 40);
}

TEST_P(CounterTest, writes_a_large_number_out_when_it_looks_for_its_bearer) {
  books.execute("Update Document_Prefix Set Document_Next_No = 123456789012");
  given("LPO_Master", "LPO_No", "AA01PO123456789012");
  EXPECT_EQ(counter().drawn(), 123456789013.0);
}

TEST_P(CounterTest, refuses_a_series_without_a_row_by_its_name) {
  Counter unknown(books.connection(), "XX");
  const std::string before = books.dump();
  EXPECT_FALSE(unknown.draw());
  for (const char* name : {"\"XX\"", "\"AA\"", "\"01\""}) {
    EXPECT_TRUE(contains(unknown.reason(), name)) << unknown.reason();
  }
  EXPECT_FALSE(unknown.keep());
  EXPECT_EQ(books.dump(), before);
}

TEST_P(CounterTest, opens_an_unknown_series_at_one_when_it_skips_checking) {
  for (const double expected : {1, 2}) {
    Counter opened(books.connection(), "XX");
    opened.skip_checking();
    EXPECT_EQ(opened.drawn(), expected);
    EXPECT_TRUE(opened.keep());
  }
  EXPECT_EQ(Counter(books.connection(), "XX").drawn(Series::temporary), 1);
}

TEST_P(CounterTest, needs_a_connection) {
  Counter nothing(nullptr);
  EXPECT_FALSE(nothing.draw());
  EXPECT_EQ(nothing.reason(), "Invalid Connection.");
  Counter closed(std::make_shared<Connection>());
  EXPECT_EQ(raised_number([&] { closed.draw(); }), kClosed);
}

TEST_P(CounterTest, raises_for_a_prefix_that_would_break_its_statement) {
  for (const std::string series : {"O'B", "x' Or '1'='1"}) {
    Counter counter(books.connection(), series);
    EXPECT_EQ(raised_number([&] { counter.draw(); }), kDatabaseFailure);
  }
  EXPECT_EQ(next(), 7);
}

TEST_P(CounterTest, leaves_what_a_rollback_did_to_the_counter) {
  for (const bool by_statement : {false, true}) {
    const double before = next();
    {
      Counter undone = counter();
      by_statement ? books.execute("Begin") : books.connection()->BeginTrans();
      EXPECT_EQ(undone.drawn(), before);
      by_statement ? books.execute("Rollback") : books.connection()->RollbackTrans();
      Counter other(books.another());
      EXPECT_EQ(other.drawn(), before);
      EXPECT_TRUE(other.keep());
    }
    // Giving the number back now would hand the other caller's out again.
    EXPECT_EQ(next(), before + 1);
  }
}

TEST_P(CounterTest, stands_where_it_stood_after_each_failed_call) {
  given("LPO_Master", "LPO_No", "AA01PO7");
  int calls = 0;
  {
    const Journal journal(books.connection());
    EXPECT_EQ(counter().drawn(), 8);
    calls = static_cast<int>(journal.calls().size());
  }
  for (int failing = 1; failing < calls; ++failing) {
    int call = 0;
    books.connection()->inject([&](const Call&) {
      return ++call == failing ? Fault{Fault::Kind::raise, 7, "Out of memory"} : Fault();
    });
    EXPECT_EQ(raised_text([&] { counter().draw(); }), "Out of memory") << failing;
    EXPECT_EQ(next(), 7) << "after call " << failing;
  }
  books.connection()->inject({});
  EXPECT_EQ(counter().drawn(), 8);
}

}  // namespace
}  // namespace ombrix::testing
