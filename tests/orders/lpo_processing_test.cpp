#include "orders/lpo_fixture.h"

namespace ombrix::testing {
namespace {

class LPOProcessingTest : public LPOFixture {};
OMBRIX_ON_EACH_DATABASE(LPOProcessingTest);

constexpr std::string_view kNoNumber = "Invalid Purchase Order No";
constexpr std::string_view kNoTemporary =
    "Error while Processing, Invalid Temporary Purchase Order No.";

TEST_P(LPOProcessingTest, each_run_has_its_effects) {
  struct {
    bool online, sync;
    std::string_view number, identity, flag, counter;
  } const cases[] = {{true, false, "AABRPO1", "1", "1", "2"},
                     {true, true, "AABRPO2", "2", "1", "3"},
                     {false, false, "AABRPO3", "3", "1", "4"},
                     {false, true, "AABRPOTMP4", "4", "Null", "4"}};
  std::string expected_quantity;
  for (const auto& each : cases) {
    ASSERT_TRUE(create({line(), line({{6, "3"}})})) << order.ErrDesc();
    order.LastUpdate = Date(2024, 5, 6);
    order.OnlineFlag = each.online;
    order.SyncFlag = each.sync;
    const double before = std::stod(on_order());
    ASSERT_TRUE(order.Process_LPO()) << order.ErrDesc();
    EXPECT_EQ(order.LPONo(), each.number);
    EXPECT_EQ(order.LPOIdentity(), std::stod(std::string(each.identity)));
    EXPECT_EQ(master("LPO_Identity"), each.identity);
    EXPECT_EQ(master("Processed_Flag"), each.flag);
    EXPECT_EQ(details("SL_No"), "1 2");
    const bool renamed = each.flag == "1";
    const std::string updated = renamed ? "2024-05-06 00:00:00" : "2024-03-05 00:00:00";
    EXPECT_EQ(master("Last_Update"), updated);
    EXPECT_EQ(detail(2, "Last_Update"), updated);
    EXPECT_EQ(counter(), each.counter);
    EXPECT_EQ(std::stod(on_order()), before + (10 * 12 + 10 * 3) * 2);
    order.LastUpdate = Date(2024, 3, 5);
  }
  EXPECT_EQ(counter("Temporary_Next_No"), "5");
}

TEST_P(LPOProcessingTest, a_number_of_the_clients_own_pushes_the_counter_only_forward) {
  struct {
    double own;
    int next;
    std::string_view pushed;
  } const cases[] = {{500, 100, "501"}, {501, 600, "600"}, {502, 502, "503"}};
  order.DocFlag = true;
  for (const auto& each : cases) {
    books.execute("Update Document_Prefix Set Last_Update='2020-01-01 00:00:00'," +
                  std::string("Document_Next_No=") + std::to_string(each.next));
    ASSERT_TRUE(create({line()})) << order.ErrDesc();
    order.manualDocIdentity = each.own;
    ASSERT_TRUE(order.Process_LPO()) << order.ErrDesc();
    EXPECT_EQ(order.LPONo(), "AABRPO" + std::to_string(static_cast<int>(each.own)));
    EXPECT_EQ(master("LPO_Identity"), std::to_string(static_cast<int>(each.own)));
    EXPECT_EQ(counter(), each.pushed);
    EXPECT_EQ(counter("Last_Update") == "2020-01-01 00:00:00", each.own < each.next);
  }
  books.execute("Update Document_Prefix Set Document_Next_No=Null");
  ASSERT_TRUE(create({line()}));
  order.manualDocIdentity = 700;
  EXPECT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(counter(), "Null");
}

TEST_P(LPOProcessingTest, a_number_of_the_clients_own_needs_no_series_and_counts_in_a_sync_run) {
  ASSERT_TRUE(create({line()}));
  order.DocFlag = true;
  order.manualDocIdentity = 40;
  order.SyncFlag = true;
  ASSERT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.LPONo(), "AABRPOTMP1");
  EXPECT_EQ(counter(), "41");
  books.execute("Delete From Document_Prefix");
  order.SyncFlag = false;
  EXPECT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.LPONo(), "AABRPO40");
}

TEST_P(LPOProcessingTest, a_number_that_is_no_saved_order_is_refused_in_every_run) {
  const std::string before = books.dump();
  for (const bool sync : {false, true}) {
    order.SyncFlag = sync;
    for (const std::string_view blank : {"", "   "}) {
      order.LPONo = std::string(blank);
      EXPECT_FALSE(order.Process_LPO());
      EXPECT_EQ(order.ErrDesc(), kNoNumber);
    }
    order.LPONo = "AABRPOTMP9";
    EXPECT_FALSE(order.Process_LPO());
    EXPECT_EQ(order.ErrDesc(), sync ? kNoNumber : "Invalid LPO Number");
  }
  order.SyncFlag = false;
  order.GridName = nullptr;
  order.ConnectionString = "";
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(order.ErrDesc(), "Invalid Connection string Property.");
  EXPECT_EQ(books.dump(), before);
}

TEST_P(LPOProcessingTest, an_order_without_lines_leaves_a_renamed_master_and_the_series_goes_on) {
  ASSERT_TRUE(order.Create_LPO());
  books.execute("Delete From LPO_Detail");
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(order.ErrDesc(), kNoTemporary);
  EXPECT_EQ(order.LPONo(), "AABRPOTMP1");
  EXPECT_EQ(order.LPOIdentity(), 1);
  EXPECT_EQ(master("LPO_Identity", "AABRPO1") + master("Processed_Flag", "AABRPO1"), "11");
  EXPECT_EQ(counter(), "1");

  ASSERT_TRUE(create({line()})) << order.ErrDesc();
  ASSERT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.LPONo(), "AABRPO2");
  EXPECT_EQ(counter(), "3");
}

TEST_P(LPOProcessingTest, an_older_reason_hides_a_failure_but_not_a_refusal) {
  ASSERT_TRUE(order.Create_LPO());
  books.execute("Update LPO_Detail Set Item_Code='it''s'");
  order.SyncFlag = true;
  EXPECT_FALSE(order.Process_LPO());
  const std::string first = order.ErrDesc();
  EXPECT_NE(first, "");

  books.spoil();
  books.execute("Update LPO_Detail Set Item_Code='AA1001'");
  books.execute("Drop Table Item_Master");
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(order.ErrDesc(), first);
  books.execute("Delete From LPO_Detail");
  order.SyncFlag = false;
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(order.ErrDesc(), kNoTemporary);
}

TEST_P(LPOProcessingTest, only_stocked_items_that_are_there_are_ordered) {
  struct {
    std::string_view type, quantity, base, ordered;
  } const cases[] = {{"0", "100", "2", "340"},    {" 3 ", "100", "2", "340"},
                     {"1", "100", "2", "100"},    {"00", "100", "2", "100"},
                     {"", "100", "2", "100"},     {"0", "Null", "2", "Null"},
                     {"3", "100", "Null", "Null"}};
  for (const auto& each : cases) {
    books.execute("Delete From Item_Master");
    given_item(books, "AA1001", each.type, each.quantity, each.base);
    ASSERT_TRUE(create({line({{1, "7777"}}), line({{1, " "}}), line()})) << order.ErrDesc();
    EXPECT_TRUE(order.Process_LPO()) << order.ErrDesc();
    EXPECT_EQ(on_order(), each.ordered) << each.type << " " << each.quantity << " " << each.base;
  }
  books.execute("Update Item_Master Set Item_Type=Null, Purchase_Order_Qty=5");
  EXPECT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(on_order(), "5");
}

TEST_P(LPOProcessingTest, a_processed_order_can_be_processed_again) {
  ASSERT_TRUE(order.Create_LPO());
  ASSERT_TRUE(order.Process_LPO());
  ASSERT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.LPONo(), "AABRPO2");
  EXPECT_EQ(on_order(), "580");
  // An offline run and a sync run of the same order both add its quantities.
  order.SyncFlag = true;
  ASSERT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.LPONo(), "AABRPO2");
  EXPECT_EQ(on_order(), "820");
}

TEST_P(LPOProcessingTest, only_a_run_that_renumbers_reads_the_order_and_needs_a_grid) {
  ASSERT_TRUE(order.Create_LPO());
  order.GridName = nullptr;
  order.VendorName = "as the client left it";
  order.SyncFlag = true;
  EXPECT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.VendorName(), "as the client left it");
  order.SyncFlag = false;
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(order.ErrDesc(), "Object variable or With block variable not set");
  order.GridName = grid_of({{}});
  EXPECT_TRUE(order.Process_LPO()) << order.ErrDesc();
  EXPECT_EQ(order.VendorName(), "Orchard Traders");
}

TEST_P(LPOProcessingTest, statements_their_roads_and_what_the_counter_is_asked_are_these) {
  ASSERT_TRUE(create({line()}));
  Script script;
  const auto counter = scripted_counter(script);
  const std::vector<std::string> read = {
      "text (1,3,-1) Select * from LPO_Master Where LPO_No='AABRPOTMP1'",
      "text (1,3,-1) Select * from LPO_Detail Where LPO_No='AABRPOTMP1' Order By SL_No"};
  std::vector<std::string> renumbering = read;
  renumbering.insert(renumbering.end(),
                     {"object (1,3,-1) Select * from  LPO_Master  Where LPO_NO='AABRPOTMP1'",
                      "object (3,3,-1) Select * from LPO_Detail Where LPO_No='AABRPOTMP1'",
                      "object (1,3,-1) Select * from  LPO_Detail  Where LPO_NO='AABRPO7'",
                      "object (1,3,-1) Select * from Item_Master Where Item_Code='AA1001'"});
  EXPECT_EQ(told([&] { return order.Process_LPO(); }), renumbering);
  EXPECT_EQ(script.told(),
            "new\nCompanyPrefix=AA\nBranchPrefix=BR\nDocumentPrefix=PO\n"
            "Get_Last_Counter(object)\nIncrease_Counter(False)");

  // No counter is made where none is needed.
  script.asked.clear();
  order.SyncFlag = true;
  order.DocFlag = true;
  EXPECT_EQ(told([&] { return order.Process_LPO(); }),
            (std::vector<std::string>{
                "object (1,3,-1) Select * from  LPO_Master  Where LPO_NO='AABRPO7'",
                "object (1,3,-1) Select * from  LPO_Detail  Where LPO_NO='AABRPO7'",
                "object (1,3,-1) Select * from Item_Master Where Item_Code='AA1001'",
                "object (1,3,-1) Select Document_Next_No, Last_Update From Document_Prefix"
                " Where Document_Prefix='PO' and Company_Prefix='AA' and Branch_Prefix='BR'"}));
  EXPECT_EQ(script.told(), "");
}

TEST_P(LPOProcessingTest, a_counter_that_refuses_ends_the_processing_with_its_reason) {
  ASSERT_TRUE(order.Create_LPO());
  Script script{.refused_call = 1};
  const auto counter = scripted_counter(script);
  const std::string before = books.dump();
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(order.ErrDesc(), "The component says no.");
  EXPECT_EQ(books.dump(), before);

  script.refused_call = 3;
  script.reason = "The counter stands still.";
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(order.ErrDesc(), "The counter stands still.");
  EXPECT_EQ(order.LPONo(), "AABRPO7");
  EXPECT_EQ(on_order(), "340");
}

TEST_P(LPOProcessingTest, a_quote_in_a_joined_value_is_refused_and_nothing_more_is_written) {
  ASSERT_TRUE(create({line(), line({{1, "x' OR '1'='1"}}), line()}));
  order.SyncFlag = true;
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(order.ErrDesc(), "The statement was refused: a value would change what it does.");
  EXPECT_EQ(on_order(), "340");  // of the line before it

  order.LPONo = "x' OR '1'='1";
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(on_order(), "340");
  order.LPONo = "AABRPOTMP1";
  order.DocFlag = true;
  order.manualDocIdentity = 9;
  books.execute("Delete From LPO_Detail");
  order.BranchPrefix = "x' OR '1'='1";
  EXPECT_FALSE(order.Process_LPO());
  EXPECT_EQ(counter(), "1");
}

}  // namespace
}  // namespace ombrix::testing
