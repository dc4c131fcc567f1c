#include "receipts/grn_fixture.h"
#include "support/sweep.h"

namespace ombrix::testing {
namespace {

using Receipt = std::shared_ptr<purchase::GRN>;

Receipt receipt_on(const Books& books, const ProcessingRun& run) {
  auto receipt = std::make_shared<purchase::GRN>();
  fill(*receipt, books, {received({{22, "20"}}), received({{2, "3003"}, {17, "2"}, {21, "1"}})});
  receipt->OnlineFlag = run.online;
  receipt->SyncFlag = run.sync;
  receipt->DocFlag = run.manual;
  receipt->manualDocIdentity = 40;
  receipt->TaxCode = "VAT";
  receipt->TaxAmount = 100;
  receipt->TaxPercent = 15;
  return receipt;
}

/// Two saved receipts: one to fail on, one to go on with.
void given_receipts(const Books& books) {
  given_order(books);
  const auto receipt = receipt_on(books, {});
  ASSERT_TRUE(receipt->Create_GRN() && receipt->Create_GRN()) << receipt->ErrDesc();
}

Subject at_work(const Receipt& receipt, bool (purchase::GRN::*method)()) {
  return {[receipt, method] { return (receipt.get()->*method)(); },
          [receipt] { return receipt->ErrDesc(); }};
}

class GRNSweepTest : public ::testing::TestWithParam<std::string> {
 protected:
  /// The method on a saved receipt.
  Sweep on_saved(const std::string& name, bool (purchase::GRN::*method)()) const {
    return {.method = name,
            .database = GetParam(),
            .given = given_receipts,
            .subject =
                [method](const Books& books, const ProcessingRun& run) {
                  const auto receipt = receipt_on(books, run);
                  receipt->GRNNo = "AABRGRNTMP3";
                  return at_work(receipt, method);
                },
            .differs = silent_in_tax};
  }
  /// What was posted before the failure stays, and is posted again by the next call.
  Sweep posting(const std::string& name, bool (purchase::GRN::*method)()) const {
    auto sweep = on_saved(name, method);
    sweep.subject = [method](const Books& books, const ProcessingRun& run) {
      const auto receipt = receipt_on(books, run);
      receipt->GRNNo = "AABRGRNTMP3";
      auto subject = at_work(receipt, method);
      subject.again = [receipt, method] {
        receipt->TaxAmount = 100;
        return (receipt.get()->*method)();
      };
      return subject;
    };
    return sweep;
  }
};
OMBRIX_ON_EACH_DATABASE(GRNSweepTest);

TEST_P(GRNSweepTest, Create_GRN) {
  auto sweep = on_saved("Create_GRN", &purchase::GRN::Create_GRN);
  sweep.given = given_order;
  run(sweep);
}

TEST_P(GRNSweepTest, Update_GRN) {
  run(on_saved("Update_GRN", &purchase::GRN::Update_GRN));
}

TEST_P(GRNSweepTest, Get_GRN) {
  run(on_saved("Get_GRN", &purchase::GRN::Get_GRN));
}

TEST_P(GRNSweepTest, GRN_Posting) {
  run(posting("GRN_Posting", &purchase::GRN::GRN_Posting));
}

TEST_P(GRNSweepTest, GRN_Tax_Posting) {
  run(posting("GRN_Tax_Posting", &purchase::GRN::GRN_Tax_Posting));
}

TEST_P(GRNSweepTest, ProcessGRN) {
  auto sweep = on_saved("ProcessGRN", &purchase::GRN::ProcessGRN);
  sweep.in_runs = true;
  sweep.subject = [](const Books& books, const ProcessingRun& run) {
    const auto receipt = receipt_on(books, run);
    receipt->GRNNo = "AABRGRNTMP3";
    auto subject = at_work(receipt, &purchase::GRN::ProcessGRN);
    // The first may stand half renamed, so it is the other's turn.
    subject.again = [receipt] {
      receipt->GRNNo = "AABRGRNTMP4";
      receipt->manualDocIdentity = 41;
      return receipt->ProcessGRN();
    };
    return subject;
  };
  run(sweep);
}

}  // namespace
}  // namespace ombrix::testing
