#include "ombrix/dialogue.h"

#include "invoices/purchase_invoice_fixture.h"
#include "support/sweep.h"

namespace ombrix::testing {
namespace {

using Invoice = std::shared_ptr<purchase::PurchaseInvoice>;
using Method = bool (purchase::PurchaseInvoice::*)();

Invoice invoice_on(const Books& books, const ProcessingRun& run) {
  auto invoice = std::make_shared<purchase::PurchaseInvoice>();
  fill(*invoice, books,
       {billed({{24, "113"}, {32, "904"}, {34, "246"}, {35, "5"}}),
        billed({{22, "AABRSDR5"}, {20, "3"}, {29, "Direct"}, {30, "1"}})});
  invoice->PurchaseInvNo = "AABRPINTMP3";
  invoice->OnlineFlag = run.online;
  invoice->SyncFlag = run.sync;
  invoice->DocFlag = run.manual;
  invoice->manualDocIdentity = 40;
  invoice->PurchaseInvDiscAmount = 36;
  invoice->PurchaseInvFCDiscAmount = 10;
  invoice->RefInvoiceType = "GRN";
  invoice->PONo = "AABRLPO12";
  invoice->TaxCode = "VAT";
  invoice->TaxAmount = 100;
  invoice->TaxPercent = 15;
  return invoice;
}

/// Two saved invoices: one to fail on, one to go on with.
void given_invoices(const Books& books) {
  given_sources(books);
  const auto invoice = invoice_on(books, {});
  ASSERT_TRUE(invoice->Create_Purchase_Invoice() && invoice->Create_Purchase_Invoice())
      << invoice->ErrDesc();
}

/// A posting is not repeatable: a second call posts again what stands already.
Subject posting(const Invoice& invoice, const std::function<bool()>& method) {
  return {method, [invoice] { return invoice->ErrDesc(); }, method};
}

/// Reading the accounts tells the failure's number too.
void numbered(const Cut& cut, Outcome& expected) {
  if (cut.concerns("Select Pur_Accrual_Account_No")) {
    expected.reason = std::to_string(kDatabaseFailure) + " : " + expected.reason;
  }
}

Subject at_work(const Invoice& invoice, std::function<bool()> method) {
  return {std::move(method), [invoice] { return invoice->ErrDesc(); }};
}

struct Unseen final : Dialogue {
  void message(std::string_view, std::string_view) override {}
  std::string input(std::string_view, std::string_view, std::string_view) override { return ""; }
};

class PurchaseInvoiceSweepTest : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override { set_dialogue(std::make_shared<Unseen>()); }
  void TearDown() override { set_dialogue(nullptr); }

  /// The method on a saved invoice.
  Sweep on_saved(const std::string& name, Method method) const {
    return {.method = name,
            .database = GetParam(),
            .given = given_invoices,
            .subject = [method](const Books& books, const ProcessingRun& run) {
              const auto invoice = invoice_on(books, run);
              return at_work(invoice, [invoice, method] { return (invoice.get()->*method)(); });
            }};
  }
};
OMBRIX_ON_EACH_DATABASE(PurchaseInvoiceSweepTest);

TEST_P(PurchaseInvoiceSweepTest, Create_Purchase_Invoice) {
  auto sweep =
      on_saved("Create_Purchase_Invoice", &purchase::PurchaseInvoice::Create_Purchase_Invoice);
  sweep.given = given_sources;
  run(sweep);
}

TEST_P(PurchaseInvoiceSweepTest, Update_Purchase_Invoice) {
  run(on_saved("Update_Purchase_Invoice", &purchase::PurchaseInvoice::Update_Purchase_Invoice));
}

TEST_P(PurchaseInvoiceSweepTest, Get_Purchase_Invoice) {
  auto sweep = on_saved("Get_Purchase_Invoice", &purchase::PurchaseInvoice::Get_Purchase_Invoice);
  // A rate that cannot be looked up shows in a message box and leaves its cell empty.
  sweep.differs = [](const Cut& cut, Outcome& expected) {
    if (cut.concerns("TaxCodeMaster")) expected = {true, "", cut.clean_rows};
  };
  run(sweep);
}

TEST_P(PurchaseInvoiceSweepTest, Get_GRN_details) {
  run(on_saved("Get_GRN_details", &purchase::PurchaseInvoice::Get_GRN_details));
}

TEST_P(PurchaseInvoiceSweepTest, Get_PO_details) {
  auto sweep = on_saved("Get_PO_details", &purchase::PurchaseInvoice::Get_PO_details);
  for (const std::string_view kind : {"LPO", "OPO"}) {
    sweep.subject = [kind](const Books& books, const ProcessingRun& run) {
      const auto invoice = invoice_on(books, run);
      invoice->RefInvoiceType = std::string(kind);
      invoice->PONo = kind == "LPO" ? "AABRLPO12" : "AABRIPO4";
      return at_work(invoice, [invoice] { return invoice->Get_PO_details(); });
    };
    run(sweep);
  }
}

TEST_P(PurchaseInvoiceSweepTest, Get_Item_Accounts) {
  auto sweep = on_saved("Get_Item_Accounts", nullptr);
  sweep.subject = [](const Books& books, const ProcessingRun& run) {
    const auto invoice = invoice_on(books, run);
    return at_work(invoice, [invoice] {
      Value item = "AA1001";
      return invoice->Get_Item_Accounts(item);
    });
  };
  sweep.differs = numbered;
  run(sweep);
}

TEST_P(PurchaseInvoiceSweepTest, Account_Posting) {
  auto sweep = on_saved("Account_Posting", nullptr);
  sweep.subject = [](const Books& books, const ProcessingRun& run) {
    const auto invoice = invoice_on(books, run);
    return posting(invoice, [invoice] {
      std::string description = "text", account = "TAX A", side = "Credit";
      double home = 10, foreign = 4;
      return invoice->Account_Posting(description, account, home, foreign, side);
    });
  };
  run(sweep);
}

TEST_P(PurchaseInvoiceSweepTest, GetFldValue) {
  auto sweep = on_saved("GetFldValue", nullptr);
  sweep.subject = [](const Books& books, const ProcessingRun& run) {
    const auto invoice = invoice_on(books, run);
    return at_work(invoice, [invoice] {
      return invoice->GetFldValue("TaxCodeMaster", "Tax_Rate", "TaxCode", "VAT", false) == "5";
    });
  };
  sweep.differs = [](const Cut&, Outcome& expected) { expected.reason = ""; };
  run(sweep);
}

TEST_P(PurchaseInvoiceSweepTest, PI_Tax_Posting) {
  auto sweep = on_saved("PI_Tax_Posting", nullptr);
  sweep.subject = [](const Books& books, const ProcessingRun& run) {
    const auto invoice = invoice_on(books, run);
    return posting(invoice, [invoice] {
      invoice->TaxAmount = 100;
      return invoice->PI_Tax_Posting();
    });
  };
  sweep.differs = [](const Cut&, Outcome& expected) { expected.reason.clear(); };
  run(sweep);
}

TEST_P(PurchaseInvoiceSweepTest, Process_Invoice) {
  for (const std::string_view type : {"GRN", "LPO"}) {
    auto sweep = on_saved("Process_Invoice", nullptr);
    sweep.differs = numbered;
    sweep.given = [type](const Books& books) {
      given_invoices(books);
      if (type == "GRN") return;
      // Only the mark on the order differs: one line will do.
      books.execute("Update Purchase_Invoice_Master Set Invoice_Type='LPO'");
      books.execute("Delete From Purchase_Invoice_Detail Where SL_No=2");
    };
    // The order differs in its marks and amounts alone, which no run changes.
    sweep.in_runs = type == "GRN";
    sweep.subject = [type](const Books& books, const ProcessingRun& run) {
      const auto invoice = invoice_on(books, run);
      invoice->RefInvoiceType = std::string(type);
      auto subject = at_work(invoice, [invoice] { return invoice->Process_Invoice(); });
      // The first may stand half renamed, so it is the other's turn.
      subject.again = [invoice] {
        invoice->PurchaseInvNo = "AABRPINTMP4";
        invoice->manualDocIdentity = 41;
        return invoice->Process_Invoice();
      };
      return subject;
    };
    run(sweep);
  }
}

}  // namespace
}  // namespace ombrix::testing
