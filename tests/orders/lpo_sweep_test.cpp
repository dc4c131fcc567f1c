#include "orders/lpo_fixture.h"
#include "support/sweep.h"

namespace ombrix::testing {
namespace {

/// An order at work, its numbers and its grid as they are in `fill`.
std::shared_ptr<purchase::LPO> order_on(const Books& books, const ProcessingRun& run) {
  auto order = std::make_shared<purchase::LPO>();
  fill(*order, books, {line(), line({{1, "2002"}}), line({{1, "3003"}})});
  order->OnlineFlag = run.online;
  order->SyncFlag = run.sync;
  order->DocFlag = run.manual;
  order->manualDocIdentity = 40;
  return order;
}

void given_items(const Books& books) {
  given_series(books, 4, 9);
  given_item(books, "AA1001");
  given_item(books, "AA2002", "3");
}

/// Two saved orders: one to fail on, one to go on with.
void given_orders(const Books& books) {
  given_items(books);
  const auto order = order_on(books, {});
  ASSERT_TRUE(order->Create_LPO() && order->Create_LPO()) << order->ErrDesc();
}

Subject at_work(const std::shared_ptr<purchase::LPO>& order, bool (purchase::LPO::*method)()) {
  return {[order, method] { return (order.get()->*method)(); },
          [order] { return order->ErrDesc(); }};
}

class LPOSweepTest : public ::testing::TestWithParam<std::string> {};
OMBRIX_ON_EACH_DATABASE(LPOSweepTest);

TEST_P(LPOSweepTest, Create_LPO) {
  run({.method = "Create_LPO",
       .database = GetParam(),
       .given = given_items,
       .subject =
           [](const Books& books, const ProcessingRun& run) {
             return at_work(order_on(books, run), &purchase::LPO::Create_LPO);
           },
       .differs =
           [](const Cut& cut, Outcome& expected) {
             if (cut.concerns("LPO_Detail")) expected.reason = "Invalid Details";
           }});
}

TEST_P(LPOSweepTest, Update_LPO) {
  run({.method = "Update_LPO",
       .database = GetParam(),
       .given = given_orders,
       .subject = [](const Books& books, const ProcessingRun& run) {
         const auto order = order_on(books, run);
         order->LPONo = "AABRPOTMP9";
         order->LPOComments = "changed";
         return at_work(order, &purchase::LPO::Update_LPO);
       }});
}

TEST_P(LPOSweepTest, Get_LPO) {
  run({.method = "Get_LPO",
       .database = GetParam(),
       .given = given_orders,
       .subject = [](const Books& books, const ProcessingRun& run) {
         const auto order = order_on(books, run);
         order->LPONo = "AABRPOTMP9";
         return at_work(order, &purchase::LPO::Get_LPO);
       }});
}

TEST_P(LPOSweepTest, Process_LPO) {
  constexpr std::string_view kOlder = "Invalid Purchase Order No";
  run({.method = "Process_LPO",
       .database = GetParam(),
       .given = given_orders,
       .subject =
           [](const Books& books, const ProcessingRun& run) {
             const auto order = order_on(books, run);
             EXPECT_FALSE(order->Process_LPO());  // without a number: its reason stays
             order->LPONo = "AABRPOTMP9";
             auto subject = at_work(order, &purchase::LPO::Process_LPO);
             // The first order may stand half renamed, so it is the other's turn.
             subject.again = [order] {
               order->LPONo = "AABRPOTMP10";
               order->manualDocIdentity = 41;
               return order->Process_LPO();
             };
             return subject;
           },
       .in_runs = true,
       .differs =
           [&](const Cut& cut, Outcome& expected) {
             const bool reading = cut.call().road == Call::Road::text;
             if (!reading && cut.kind != Fault::Kind::answer_false) expected.reason = kOlder;
           }});
}

}  // namespace
}  // namespace ombrix::testing
