#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "processes/worker_process.h"
#include "support/books.h"

namespace ombrix::testing {
namespace {

constexpr int kProcesses = 8;

/// For each process. A slow build asks for fewer.
int documents() {
  const char* told = std::getenv("OMBRIX_TEST_DOCUMENTS");
  return told != nullptr ? std::stoi(told) : 500;
}

double number(const Books& books, const std::string& select) {
  const Value value = books.value(select);
  return value.is_null() ? 0 : value.to_number();
}

/// No update of an item was lost, none came twice: it holds what the processed orders say.
void expect_exact_item(const Books& books, const std::string& item) {
  const double ordered =
      number(books,
             "Select Sum(d.LPO_Qty * d.Unit_Qty) As V From LPO_Detail d, LPO_Master m"
             " Where d.LPO_No = m.LPO_No And m.Processed_Flag = 1 And d.Item_Code = '" +
                 item + "'");
  EXPECT_EQ(number(books, "Select Purchase_Order_Qty As V From Item_Master Where Item_Code = '" +
                              item + "'"),
            100 + ordered * 2)
      << item;
}

/// Every order that is processed has all its lines.
void expect_whole_orders(const Books& books, double orders, int lines) {
  EXPECT_EQ(number(books, "Select Count(*) As V From LPO_Master Where Processed_Flag = 1"), orders);
  EXPECT_EQ(
      number(books,
             "Select Count(*) As V From LPO_Master m Where Processed_Flag = 1 And (Select Count(*)"
             " From LPO_Detail d Where d.LPO_No = m.LPO_No) <> " +
                 std::to_string(lines)),
      0);
  EXPECT_EQ(number(books,
                   "Select Count(*) As V From LPO_Detail d Where Not Exists"
                   " (Select 1 From LPO_Master m Where m.LPO_No = d.LPO_No)"),
            0);
}

/// The final numbers run from 1 without a gap, and the counter stands behind the last.
void expect_gapless(const Books& books) {
  const std::string processed = " From LPO_Master Where Processed_Flag = 1";
  const double count = number(books, "Select Count(*) As V" + processed);
  EXPECT_EQ(number(books, "Select Max(LPO_Identity) As V" + processed), count);
  EXPECT_EQ(number(books, "Select Count(Distinct LPO_Identity) As V" + processed), count);
  EXPECT_EQ(number(books, "Select Document_Next_No As V From Document_Prefix"), count + 1);
}

class ProcessesTest : public OnEachDatabase {
 protected:
  ProcessesTest() {
    books.execute(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
        " Document_Next_No, Temporary_Next_No) Values ('PO', 'AA', 'BR', 1, 1);"
        "Insert Into Item_Master (Item_Code, Item_Type, Purchase_Order_Qty, Base_Qty)"
        " Values ('AA1001', '0', 100, 2), ('AA1002', '0', 100, 2)");
  }

  /// A lock is waited for, however busy the machine is: giving up is no part of these tests.
  std::string patient() const { return books.text("Busy Timeout=60000"); }

  /// Runs all processes to their end and collects the numbers that they printed.
  void work(const std::string& way) {
    std::vector<Worker> workers;
    for (int i = 0; i < kProcesses; ++i) {
      workers.emplace_back(patient(),
                           std::vector<std::string>{std::to_string(documents()), way, "AA"});
    }
    for (Worker& worker : workers) {
      EXPECT_EQ(worker.finish(), 0);
      std::istringstream lines(worker.printed());
      for (std::string temporary, final; lines >> temporary >> final;) {
        EXPECT_TRUE(temporary_numbers.insert(temporary).second) << temporary << " came twice";
        EXPECT_TRUE(final_numbers.insert(final).second) << final << " came twice";
      }
    }
  }

  std::set<std::string> temporary_numbers, final_numbers;
};

TEST_P(ProcessesTest, in_transactions_numbers_have_no_gap_and_no_update_is_lost) {
  work("transactions");
  const int all = kProcesses * documents();
  EXPECT_EQ(final_numbers.size(), static_cast<std::size_t>(all));
  expect_whole_orders(books, all, 2);
  expect_gapless(books);
  EXPECT_EQ(number(books, "Select Temporary_Next_No As V From Document_Prefix"), all + 1);
  expect_exact_item(books, "AA1001");
  expect_exact_item(books, "AA1002");
}

TEST_P(ProcessesTest, without_transactions_numbers_are_unique_and_no_update_is_lost) {
  work("plain");
  const int all = kProcesses * documents();
  EXPECT_EQ(final_numbers.size(), static_cast<std::size_t>(all));
  expect_whole_orders(books, all, 1);
  std::set<std::string> stored;
  for (const auto& row : books.rows("Select LPO_No From LPO_Master", {"LPO_No"})) {
    stored.insert(row[0].to_text());
  }
  EXPECT_EQ(stored, final_numbers);
  expect_exact_item(books, "AA1001");
}

/// One process dies at each of its calls in turn, from the first of a create to the last of a
/// process, while another books on the same items.
TEST_P(ProcessesTest, a_killed_process_leaves_no_lock_and_no_half_booked_order) {
  Worker survivor(patient(), {std::to_string(documents() / 2), "transactions", "AA"});
  int killed = 0;
  for (int last_call = 1;; ++last_call) {
    Worker victim(patient(), {"1", "transactions", "AA", std::to_string(last_call)});
    const int end = victim.finish();
    if (end == 0) break;
    ASSERT_EQ(end, -SIGKILL);
    ++killed;
  }
  EXPECT_GT(killed, 20);
  EXPECT_EQ(survivor.finish(), 0);

  Worker next(books.text("Busy Timeout=1000"), {"1", "transactions", "AA"});
  EXPECT_EQ(next.finish(), 0);
  // Those of the survivor, of the victim that came through, and of the next.
  expect_whole_orders(books, documents() / 2 + 2, 2);
  expect_gapless(books);
  expect_exact_item(books, "AA1001");
  expect_exact_item(books, "AA1002");
}

OMBRIX_ON_EACH_DATABASE(ProcessesTest);

}  // namespace
}  // namespace ombrix::testing
