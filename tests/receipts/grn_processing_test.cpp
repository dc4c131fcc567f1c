#include "frame/number.h"
#include "receipts/grn_fixture.h"
#include "support/scripted.h"

namespace ombrix::testing {
namespace {

class GRNProcessingTest : public GRNFixture {
 protected:
  std::string entries() const {
    return count(books, "Stock_Movement") + " " + count(books, "Purchase_Log") + " " +
           count(books, "General_Ledger");
  }
};
OMBRIX_ON_EACH_DATABASE(GRNProcessingTest);

constexpr std::string_view kNoTemporary =
    "Error while Processing, Invalid Temporary Goods Receive No.";

TEST_P(GRNProcessingTest, each_run_has_its_effects) {
  struct {
    std::string_view name;
    bool online, sync;
    std::string_view number, received, entries, next;
  } const cases[] = {{"online", true, true, "AABRGRN7", "5", "1 1 2", "8"},
                     {"offline", false, false, "AABRGRN8", "10", "1 1 2", "9"},
                     {"sync", false, true, "AABRGRNTMP5", "10", "2 2 4", "9"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    ASSERT_TRUE(receipt.Create_GRN()) << receipt.ErrDesc();
    receipt.OnlineFlag = each.online;
    receipt.SyncFlag = each.sync;
    receipt.LastUpdate = Date(2024, 5, 6);
    ASSERT_TRUE(receipt.ProcessGRN()) << receipt.ErrDesc();
    EXPECT_EQ(receipt.GRNNo(), each.number);
    const bool renamed = each.name != "sync";
    EXPECT_EQ(master({"Processed_Flag", "Last_Update"}),
              renamed ? "1 | 2024-05-06 00:00:00" : "Null | 2024-03-05 00:00:00");
    EXPECT_EQ(lines({"Invoiced_Flag", "Last_Update"}),
              renamed ? "0 | 2024-05-06 00:00:00" : "Null | 2024-03-05 00:00:00");
    EXPECT_EQ(master({"GRN_Identity"}), general_text(receipt.GRNIdentity()));
    EXPECT_EQ(listing(books, {"Received_Qty"}, "LPO_Detail Where SL_No=1"), each.received);
    EXPECT_EQ(listing(books, {"Processed_Flag", "Last_Update"}, "LPO_Master"),
              "1 | 2024-05-06 00:00:00");
    EXPECT_EQ(entries(), each.entries);
    EXPECT_EQ(listing(books, {"Document_Next_No"}, "Document_Prefix"), each.next);
    receipt.LastUpdate = Date(2024, 3, 5);
  }
}

TEST_P(GRNProcessingTest, a_number_of_the_clients_own_pushes_the_counter_only_forward) {
  receipt.DocFlag = true;
  for (const auto& [own, left] : {std::pair(500.0, "501"), std::pair(120.0, "501")}) {
    ASSERT_TRUE(receipt.Create_GRN()) << receipt.ErrDesc();
    receipt.manualDocIdentity = own;
    ASSERT_TRUE(receipt.ProcessGRN()) << receipt.ErrDesc();
    EXPECT_EQ(receipt.GRNNo(), "AABRGRN" + general_text(own));
    EXPECT_EQ(listing(books, {"Document_Next_No"}, "Document_Prefix"), left);
  }
}

TEST_P(GRNProcessingTest, only_items_enter_the_stock) {
  ASSERT_TRUE(process({received()})) << receipt.ErrDesc();
  EXPECT_EQ(entries(), "1 1 2");
  books.execute("Update LPO_Master Set Purchase_Type='Fixed Asset'");
  ASSERT_TRUE(process({received()})) << receipt.ErrDesc();
  EXPECT_EQ(entries(), "1 1 4");
  // Without a kind of its own in the master, an item.
  ASSERT_TRUE(create({received()}));
  books.execute("Update Goods_Receive_Master Set Purchase_Type=Null Where Processed_Flag Is Null");
  ASSERT_TRUE(receipt.ProcessGRN()) << receipt.ErrDesc();
  EXPECT_EQ(entries(), "2 2 6");
  // A sync run goes by what the client says.
  receipt.Purchase_Type = "Costing Expense";
  receipt.OnlineFlag = false;
  receipt.SyncFlag = true;
  ASSERT_TRUE(receipt.ProcessGRN()) << receipt.ErrDesc();
  EXPECT_EQ(entries(), "2 2 8");
}

TEST_P(GRNProcessingTest, quantities_are_booked_on_the_order_line_by_line) {
  ASSERT_TRUE(process({received(), received({{9, "3"}}), received({{17, "2"}})}));
  EXPECT_EQ(listing(books, {"Received_Qty"}, "LPO_Detail Order By SL_No"), "8\n5");

  receipt.GRNRefDocumentNo = "AABRIPO1";
  receipt.GRNRefDocumentPrefix = "OPO";
  EXPECT_FALSE(process({received(), received({{17, "2"}}), received()}));
  EXPECT_EQ(receipt.ErrDesc(), kNoTemporary);
  EXPECT_EQ(listing(books, {"Received_Qty"}, "IPO_Detail"), "5");
  EXPECT_EQ(listing(books, {"Processed_Flag"}, "IPO_Master"), "1");
  EXPECT_EQ(receipt.GRNNo(), "AABRGRN8");
  EXPECT_EQ(counters(), "8 | 5");
}

TEST_P(GRNProcessingTest, what_stands_when_the_order_is_not_found) {
  ASSERT_TRUE(receipt.Create_GRN());
  books.execute("Update Goods_Receive_Master Set GRN_Ref_Document_No='none'");
  EXPECT_FALSE(receipt.ProcessGRN());
  EXPECT_EQ(receipt.ErrDesc(), "Invalid Purchase Order No.");
  EXPECT_EQ(master({"GRN_No", "Processed_Flag"}), "AABRGRN7 | 1");
  EXPECT_EQ(lines({"SL_No"}), "1");
  EXPECT_EQ(counters(), "7 | 4");

  books.execute("Update Goods_Receive_Master Set GRN_Ref_Document_Prefix='lpo'");
  const std::string before = books.dump();
  receipt.DocFlag = true;
  receipt.manualDocIdentity = 7;
  EXPECT_FALSE(receipt.ProcessGRN());
  EXPECT_NE(receipt.ErrDesc(), "Invalid Purchase Order No.");
  EXPECT_NE(receipt.ErrDesc(), "");
  EXPECT_EQ(books.dump(), before);
}

TEST_P(GRNProcessingTest, a_receipt_without_lines_passes_and_posts_its_tax) {
  ASSERT_TRUE(receipt.Create_GRN());
  books.execute("Delete From Goods_Receive_Detail");
  receipt.TaxCode = "VAT";
  receipt.TaxAmount = 30;
  receipt.TaxPercent = 15;
  ASSERT_TRUE(receipt.ProcessGRN()) << receipt.ErrDesc();
  EXPECT_EQ(entries(), "0 0 2");
  EXPECT_EQ(listing(books, {"Processed_Flag"}, "LPO_Master"), "Null");
}

TEST_P(GRNProcessingTest, a_counter_that_refuses_stops_it_before_or_behind_the_books) {
  ASSERT_TRUE(receipt.Create_GRN());
  Script script;
  const auto registered = scripted("OmbrixSystem.CounterTransaction", script);
  const std::string before = books.dump();
  script.refused_call = 1;
  EXPECT_FALSE(receipt.ProcessGRN());
  EXPECT_EQ(receipt.ErrDesc(), script.reason);
  EXPECT_EQ(books.dump(), before);

  script = {.refused_call = 2};
  EXPECT_FALSE(receipt.ProcessGRN());
  EXPECT_EQ(receipt.GRNNo(), "AABRGRN0");
  EXPECT_EQ(entries(), "1 1 2");
  EXPECT_EQ(script.asked.back(), "Increase_Counter()");
}

}  // namespace
}  // namespace ombrix::testing
