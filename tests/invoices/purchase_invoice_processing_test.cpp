#include "invoices/purchase_invoice_fixture.h"

namespace ombrix::testing {
namespace {

class PurchaseInvoiceProcessingTest : public PurchaseInvoiceFixture {
 protected:
  /// One column of all rows.
  std::string flags(const std::string& column, const std::string& table) const {
    std::string text;
    for (const auto& row : books.rows("Select " + column + " From " + table, {column})) {
      text += (text.empty() ? "" : " ") + shown(row[0]);
    }
    return text;
  }
};
OMBRIX_ON_EACH_DATABASE(PurchaseInvoiceProcessingTest);

TEST_P(PurchaseInvoiceProcessingTest, each_run_has_its_effects) {
  struct {
    bool online, sync;
    std::string_view number, stored, receipt, counters;
  } const cases[] = {{true, true, "AABRPIN7", "7 | 1 | 2024-05-06 00:00:00", "1", "8 | 4"},
                     {false, false, "AABRPIN8", "8 | 1 | 2024-05-06 00:00:00", "1", "9 | 5"},
                     {false, true, "AABRPINTMP5", "5 | 0 | 2024-03-05 00:00:00", "Null", "9 | 6"}};
  for (const auto& each : cases) {
    fill(invoice, books, {});
    ASSERT_TRUE(create({billed(), billed()})) << invoice.ErrDesc();
    books.execute("Update Goods_Receive_Master Set GRN_Invoiced_flag=Null");
    invoice.LastUpdate = Date(2024, 5, 6);
    invoice.OnlineFlag = each.online;
    invoice.SyncFlag = each.sync;
    ASSERT_TRUE(invoice.Process_Invoice()) << invoice.ErrDesc();
    EXPECT_EQ(invoice.PurchaseInvNo(), each.number);
    EXPECT_EQ(master({"Purchase_Inv_Identity", "Processed_Flag", "Last_Update"}), each.stored);
    EXPECT_EQ(lines({"SL_No"}), "1\n2");
    EXPECT_EQ(flags("GRN_Invoiced_flag", "Goods_Receive_Master"), each.receipt);
    EXPECT_EQ(counters(), each.counters);
  }
  EXPECT_EQ(balances(), "AABR00ACCRUAL | 5280\nAABR00PAYABLE | -2640");
}

TEST_P(PurchaseInvoiceProcessingTest, a_number_of_the_clients_own_pushes_the_counter_only_forward) {
  struct {
    double own;
    int next;
    bool sync;
    std::string_view number, pushed;
  } const cases[] = {{100, 100, false, "AABRPIN100", "101"},
                     {101, 102, false, "AABRPIN101", "102"},
                     {500, 102, true, "AABRPINTMP5", "501"}};
  invoice.DocFlag = true;
  for (const auto& each : cases) {
    books.execute("Update Document_Prefix Set Document_Next_No=" + std::to_string(each.next));
    invoice.PurchaseInvAmount = 880;
    invoice.ProcessedFlag = false;
    ASSERT_TRUE(create({billed()})) << invoice.ErrDesc();
    invoice.manualDocIdentity = each.own;
    invoice.OnlineFlag = false;
    invoice.SyncFlag = each.sync;
    ASSERT_TRUE(invoice.Process_Invoice()) << invoice.ErrDesc();
    EXPECT_EQ(invoice.PurchaseInvNo(), each.number);
    EXPECT_EQ(listing(books, {"Document_Next_No"}, "Document_Prefix"), each.pushed);
  }
}

TEST_P(PurchaseInvoiceProcessingTest, what_cannot_be_processed_is_refused_and_the_counter_stays) {
  ASSERT_TRUE(process({billed()})) << invoice.ErrDesc();
  const std::string before = books.dump();
  EXPECT_FALSE(invoice.Process_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Already Processed");
  EXPECT_EQ(invoice.PurchaseInvNo(), "AABRPIN7");
  invoice.PurchaseInvNo = "AABRPIN99";
  EXPECT_FALSE(invoice.Process_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Purchase Invoice Number  Does Not Exists.");
  invoice.PurchaseInvNo = "  ";
  EXPECT_FALSE(invoice.Process_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Invalid Purchase Invoice No");
  invoice.AdoConnectionObject = std::make_shared<Connection>();
  EXPECT_FALSE(invoice.Process_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Invalid Connection Object");
  invoice.AdoConnectionObject = nullptr;
  EXPECT_THROW(invoice.Process_Invoice(), Failure);
  EXPECT_EQ(books.dump(), before);
}

TEST_P(PurchaseInvoiceProcessingTest, an_invoice_without_lines_keeps_its_new_number) {
  ASSERT_TRUE(create({}));
  EXPECT_FALSE(invoice.Process_Invoice());
  EXPECT_EQ(invoice.ErrDesc(), "Error while Processing, Invalid Temporary Purchase Invoice No.");
  EXPECT_EQ(invoice.PurchaseInvNo(), "AABRPINTMP3");
  EXPECT_EQ(flags("Purchase_Inv_No", "Purchase_Invoice_Master"), "AABRPIN7");
  EXPECT_EQ(counters(), "7 | 4");
}

TEST_P(PurchaseInvoiceProcessingTest, receipts_are_marked_line_by_line_and_by_their_kind) {
  const Cells direct{{22, "AABRSDR5"}, {20, "3"}, {29, "Direct"}};
  ASSERT_TRUE(process({billed({{29, "grn"}}), billed(direct)})) << invoice.ErrDesc();
  EXPECT_EQ(listing(books, {"GRN_Invoiced_flag", "Last_Update"}, "Goods_Receive_Master"),
            "1 | 2024-03-05 00:00:00");
  EXPECT_EQ(listing(books, {"Invoiced_Flag", "Last_Update"}, "Goods_Receive_Detail"),
            "1 | 2024-03-05 00:00:00\nNull | Null");
  EXPECT_EQ(
      listing(books, {"Direct_GRN_Invoiced_Flag", "Last_Update"}, "Direct_Goods_Receive_Master"),
      "1 | 2024-03-05 00:00:00");
  EXPECT_EQ(listing(books, {"Invoiced_Flag", "Last_Update"}, "Direct_Goods_Receive_Detail"),
            "1 | 2024-03-05 00:00:00");

  // A line that is not there ends the run behind the receipt's own mark; one without a line number
  // is no statement.
  books.execute("Update Goods_Receive_Master Set GRN_Invoiced_flag=0");
  invoice.ProcessedFlag = false;
  invoice.PurchaseInvAmount = 880;
  EXPECT_FALSE(process({billed({{20, "8"}})}));
  EXPECT_EQ(invoice.ErrDesc(), "Error while Processing, Invalid Temporary Purchase Invoice No.");
  EXPECT_EQ(invoice.PurchaseInvNo(), "AABRPIN8");
  EXPECT_EQ(flags("GRN_Invoiced_flag", "Goods_Receive_Master"), "1");
  EXPECT_EQ(counters(), "8 | 5");
}

TEST_P(PurchaseInvoiceProcessingTest, the_order_is_marked_that_both_types_name) {
  struct {
    std::string_view reference, type, order, reason, marked;
  } const cases[] = {{"LPO", "OPO", "AABRLPO12", "", "1 Null"},
                     {"GRN", "OPO", "AABRIPO4", "", "Null 1"},
                     {"OPO", "OPO", "AABRLPO12", "Invalid Purchase Order No.", "Null Null"}};
  for (const auto& each : cases) {
    books.execute("Update LPO_Master Set Invoiced_Flag=Null");
    books.execute("Update IPO_Master Set Invoiced_Flag=Null");
    fill(invoice, books, {});
    invoice.ProcessedFlag = false;
    invoice.RefInvoiceType = std::string(each.reference);
    invoice.InvoiceType = std::string(each.type);
    invoice.PONo = std::string(each.order);
    EXPECT_EQ(process({billed()}), each.reason.empty()) << invoice.ErrDesc();
    if (!each.reason.empty()) {
      EXPECT_EQ(invoice.ErrDesc(), each.reason);
    }
    EXPECT_EQ(flags("Invoiced_Flag", "LPO_Master") + " " + flags("Invoiced_Flag", "IPO_Master"),
              each.marked);
  }
  // Of no known kind: there is nothing to open.
  fill(invoice, books, {});
  invoice.RefInvoiceType = "OPO";
  invoice.InvoiceType = "PO";
  const std::string older = invoice.ErrDesc();
  EXPECT_FALSE(process({billed()}));
  EXPECT_NE(invoice.ErrDesc(), older);
}

TEST_P(PurchaseInvoiceProcessingTest, the_grid_is_left_alone_from_then_on) {
  ASSERT_TRUE(invoice.Create_Purchase_Invoice());
  invoice.PInvoiceGridName = nullptr;
  ASSERT_TRUE(invoice.Process_Invoice()) << invoice.ErrDesc();
  EXPECT_EQ(invoice.PurchaseInvAmount(), -880);
  ASSERT_TRUE(invoice.Get_Purchase_Invoice()) << invoice.ErrDesc();
  EXPECT_EQ(invoice.PurchaseInvAmount(), 880);
}

TEST_P(PurchaseInvoiceProcessingTest, statements_and_their_roads_are_these) {
  invoice.PurchaseInvDiscAmount = 5;
  invoice.DocFlag = true;
  invoice.manualDocIdentity = 40;
  ASSERT_TRUE(create({billed({{22, "AABRSDR5"}, {20, "3"}, {29, ""}})}));
  std::string told_here = told([&] { return invoice.Process_Invoice(); });
  // What the components say of their own accord is theirs.
  std::string own;
  for (std::size_t at = 0; at < told_here.size();) {
    const auto end = told_here.find('\n', at) + 1;
    const std::string one = told_here.substr(at, end - at);
    if (!one.starts_with("object (2,") && !one.starts_with("object Update") &&
        one.find("Chart_Of_Accounts") == std::string::npos) {
      own += one;
    }
    at = end;
  }
  EXPECT_EQ(own,
            "text (1,3,-1) Select * from Purchase_Invoice_Master"
            " Where Purchase_Inv_No='AABRPINTMP3'\n"
            "object (3,3,-1) Select * from Purchase_Invoice_Master"
            " Where Purchase_Inv_No='AABRPINTMP3'\n"
            "object (3,3,-1) Select * from Purchase_Invoice_Detail"
            " Where Purchase_Inv_No='AABRPINTMP3'\n"
            "object (3,3,-1) Select * from Purchase_Invoice_Detail"
            " Where Purchase_Inv_No='AABRPIN40'\n"
            "object (3,3,-1) Select * from Direct_Goods_Receive_Master"
            " Where Direct_GRN_No='AABRSDR5'\n"
            "object (3,3,-1) Select * from Direct_Goods_Receive_Detail"
            " Where Direct_GRN_No='AABRSDR5' And SL_NO=3\n"
            "object (1,3,-1) Select * from Purchase_Invoice_Detail"
            " Where Purchase_Inv_No='AABRPIN40'\n"
            "object (1,3,-1) Select Pur_Accrual_Account_No , FOC_Account_No,"
            "Pur_Variance_Account_No from Default_Purchase_Preferences Where Branch_Prefix='BR'\n"
            "object (1,3,-1) Select Discount_Account_No from Default_Purchase_Preferences"
            " Where Branch_Prefix='BR'\n"
            "object (1,3,-1) Select Document_Next_No, Last_Update From Document_Prefix"
            " Where Document_Prefix='PIN' and Company_Prefix='AA' and Branch_Prefix='BR'\n");
}

}  // namespace
}  // namespace ombrix::testing
