#include "ombrix/components.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "ombrix/instruments.h"

#include "frame/database/connection_access.h"
#include "frame/text.h"
#include "support/failures.h"
#include "support/lines.h"

namespace ombrix::testing {
namespace {

constexpr const char* kPayable = "OmbrixAccounts.AccountsPayable";
constexpr const char* kLedger = "OmbrixAccounts.GeneralLedger";
constexpr const char* kRegister = "OmbrixBank.PDC";
constexpr const char* kLocations = "OmbrixInventory.LocationStock";
constexpr const char* kLayers = "OmbrixInventory.PurchaseLog";
constexpr const char* kJournal = "OmbrixInventory.StockMovement";

using Arguments = std::vector<Value>;

/// "" when the call is taken, else the reason.
std::string call(const ObjectRef& object, std::string_view method, Arguments arguments = {}) {
  return object->call(method, arguments).to_flag() ? "" : object->get("ErrDesc").to_text();
}

/// The components that write a row, what they call that, and the one member whose column has
/// another name.
const struct Writer {
  const char *name, *method, *table;
  Arguments arguments{};
  const char *member = "", *column = "";
} kWriters[] = {
    {kPayable, "AP_Insert_Transaction", "Accounts_Payable_Ledger"},
    {kLedger, "GLInsert", "General_Ledger"},
    {kRegister, "Create_PDC", "PDC_Master"},
    {kJournal, "StockMovement", "Stock_Movement", {2.5}},
    {kLayers, "Create_PurchaseLog", "Purchase_Log"},
    {kLocations, "UpdateLocationStock", "Location_Stock", {0}, "LocationCode", "location_ID"}};

const Writer& writer(const std::string& name) {
  return *std::find_if(std::begin(kWriters), std::end(kWriters),
                       [&](const Writer& each) { return each.name == name; });
}

class ComponentsTest : public OnEachDatabase {
 protected:
  ComponentsTest() {
    books.execute(
        "Insert Into Chart_Of_Accounts (Account_No, Opening_Balance, Current_Balance)"
        " Values ('AccountNo', 10, Null), ('O''Hara', 0, 5);"
        "Insert Into Vendor_Master (Vendor_Code, Vendor_Balance, Vendor_Fc_Balance)"
        " Values ('VendorCode', 1000, 400), ('V2', Null, Null);"
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
        " Document_Next_No) Values ('DocumentPrefix', 'CompanyPrefix', 'BranchPrefix', 21)");
  }

  /// What a member is set to, told apart from all others: a text is the member's own name.
  static Value value_of(const MemberInfo& member) {
    if (member.type == "Double") return member.number + 0.5;
    if (member.type == "Date") return Date(2024, 1, member.number);
    return member.type == "String" ? Value(member.name) : Value(true);
  }
  /// With every member set, so that it is accepted.
  ObjectRef filled(const std::string& name) const {
    const ObjectRef object = create_object(name);
    for (const MemberInfo& member : object->members()) {
      if (allows(member.access, Access::let)) object->let(member.name, value_of(member));
    }
    object->set("AdoConnectionObject", books.connection());
    return object;
  }
  static std::string write(const ObjectRef& object) {
    const Writer& how = writer(std::string(object->class_name()));
    return call(object, how.method, how.arguments);
  }
  /// The home and the foreign balance of a vendor.
  std::string balances(const std::string& vendor = "VendorCode") const {
    return listing(books, {"Vendor_Balance", "Vendor_Fc_Balance"},
                   "Vendor_Master Where Vendor_Code='" + vendor + "'");
  }
};
OMBRIX_ON_EACH_DATABASE(ComponentsTest);

TEST_P(ComponentsTest, store_every_member_in_the_column_of_its_name) {
  const auto plain = [](std::string name) {
    std::erase(name, '_');
    return lower_name(name);
  };
  database::Session& session = *database::ConnectionAccess::session(*books.connection());
  for (const Writer& how : kWriters) {
    const ObjectRef object = filled(how.name);
    ASSERT_EQ(write(object), "") << how.name;
    const auto columns = session.table(how.table)->columns;
    for (const MemberInfo& member : object->members()) {
      if (!allows(member.access, Access::let)) continue;
      const std::string name = member.name == how.member ? how.column : std::string(member.name);
      const auto column = std::find_if(columns.begin(), columns.end(), [&](const auto& each) {
        return plain(each.name) == plain(name);
      });
      ASSERT_NE(column, columns.end()) << how.name << "." << member.name;
      const Value value = value_of(member);
      EXPECT_EQ(listing(books, {column->name}, how.table), member.type == "Date"
                                                               ? value.to_date().stored_text()
                                                           : value == Value(true) ? "-1"
                                                                                  : value.to_text())
          << how.name << "." << member.name;
    }
  }
  EXPECT_EQ(listing(books, {"PDC_No", "PDC_Identity"}, "PDC_Master"),
            "CompanyPrefixBranchPrefixDocumentPrefix21 | 21");
}

TEST_P(ComponentsTest, refuse_what_is_empty_or_unknown_and_write_nothing) {
  const struct {
    const char *name, *member;
    Value value;
    std::string reason;
  } cases[] = {
      {kPayable, "DocumentNo", "", "Payables entry: DocumentNo is empty."},
      {kPayable, "VendorCode", " ", "Payables entry: VendorCode is empty."},
      {kPayable, "AccountNo", Null(), "Payables entry: AccountNo is empty."},
      {kPayable, "AccountNo", "B",
       "Payables entry of document \"DocumentNo\": account \"B\" is not"
       " in the chart of accounts."},
      {kPayable, "VendorCode", "vendorcode",
       "Payables entry of document \"DocumentNo\": there is no vendor \"vendorcode\"."},
      {kPayable, "VendorCode", "V'2",
       "Payables entry of document \"DocumentNo\": there is no vendor \"V'2\"."},
      {kLedger, "DocumentNo", "", "Ledger line: DocumentNo is empty."},
      {kLedger, "AccountNo", "B", "Ledger line: account \"B\" is not in the chart of accounts."},
      {kRegister, "CompanyPrefix", " ", "Bank register: CompanyPrefix is empty."},
      {kRegister, "BranchPrefix", Null(), "Bank register: BranchPrefix is empty."},
      {kRegister, "DocumentPrefix", "", "Bank register: DocumentPrefix is empty."},
      {kRegister, "BAnkID", " ", "Bank register: BAnkID is empty."},
      {kRegister, "SourceNo", " ", "Bank register: SourceNo is empty."},
      {kRegister, "DocumentPrefix", "XX",
       "No counter for document series \"XX\" of company"
       " \"CompanyPrefix\", branch \"BranchPrefix\"."},
      {kLocations, "ItemCode", "", "Location stock: ItemCode is empty."},
      {kLayers, "ItemCode", "", "Purchase log: ItemCode is empty."},
      {kLayers, "PurchaseDocumentNo", "", "Purchase log: PurchaseDocumentNo is empty."},
      {kJournal, "ItemCode", "", "Stock movement: ItemCode is empty."},
      {kJournal, "DocumentNo", "", "Stock movement: DocumentNo is empty."}};
  const std::string before = books.dump();
  for (const auto& c : cases) {
    const ObjectRef refused = filled(c.name);
    refused->let(c.member, c.value);
    EXPECT_EQ(write(refused), c.reason);
  }
  for (const Writer& how : kWriters) {
    EXPECT_TRUE(contains(write(create_object(how.name)), ": no connection was given.")) << how.name;
  }
  EXPECT_TRUE(contains(call(create_object(kPayable), "APL_Delete"), "no connection"));
  EXPECT_EQ(call(filled(kLocations), "UpdateLocationStock", {2}),
            "Location stock: direction 2 is neither 0 (in) nor 1 (out).");
  EXPECT_EQ(call(filled(kLedger), "COAPosting", {" ", 1}), "Account balance: AccountNo is empty.");
  EXPECT_EQ(call(filled(kLedger), "COAPosting", {"B", 1}),
            "Account balance: account \"B\" is not in the chart of accounts.");

  // A number that was drawn before the row could not be written comes back.
  books.connection()->inject([](const Call& call) {
    const bool writes = contains(call.text, "PDC_Master");
    return writes ? Fault{Fault::Kind::raise, kDatabaseFailure, "The register is full."} : Fault();
  });
  EXPECT_EQ(raised_text([&] { write(filled(kRegister)); }), "The register is full.");
  books.connection()->inject({});
  EXPECT_EQ(books.dump(), before);
}

TEST_P(ComponentsTest, leave_out_what_a_client_never_set) {
  for (const auto& [name, member] : {std::pair(kPayable, "Refno"), {kLayers, "ProjNo"}}) {
    const ObjectRef object = filled(name);
    object->let(member, "");
    if (name == kPayable) object->let("RefDate", Date());
    if (name == kLayers) object->let("FOC_Flag", Value());
    ASSERT_EQ(write(object), "");
  }
  EXPECT_EQ(listing(books, {"Ref_No", "Ref_Date"}, "Accounts_Payable_Ledger"), "Null | Null");
  EXPECT_EQ(listing(books, {"Proj_No", "FOC_Flag", "Sold_Qty"}, "Purchase_Log"), "Null | Null | 0");
}

TEST_P(ComponentsTest, a_credit_raises_the_balances_of_a_vendor_and_a_debit_lowers_them) {
  const auto post = [&](double debit, double credit, const char* vendor = "VendorCode",
                        const char* document = "D1") {
    const ObjectRef payable = filled(kPayable);
    payable->let("DocumentNo", document);
    payable->let("VendorCode", vendor);
    payable->let("APLDebitAmount", debit);
    payable->let("APLCreditAmount", credit);
    payable->let("FCAPLDebitAmount", debit / 2);
    payable->let("FCAPLCreditAmount", credit / 2);
    EXPECT_EQ(write(payable), "");
    return balances(vendor);
  };
  EXPECT_EQ(post(0, 250.5), "1250.5 | 525.25");
  EXPECT_EQ(post(1300, 0), "-49.5 | -124.75");
  EXPECT_EQ(post(0, -10), "-59.5 | -129.75");
  EXPECT_EQ(post(0, 20, "V2"), "20 | 10");
  EXPECT_EQ(post(0, 5, "VendorCode", "D2"), "-54.5 | -127.25");
  // A document is taken back with all it did, once.
  const ObjectRef payable = filled(kPayable);
  payable->let("DocumentNo", "D1");
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(call(payable, "APL_Delete"), "");
    EXPECT_EQ(count(books, "Accounts_Payable_Ledger"), "1");
    EXPECT_EQ(balances() + " " + balances("V2"), "1005 | 402.5 0 | 0");
  }
  payable->let("DocumentNo", Null());
  EXPECT_TRUE(contains(call(payable, "APL_Delete"), "DocumentNo"));
}

TEST_P(ComponentsTest, lose_no_movement_of_two_callers_at_once) {
  const auto post = [&] {
    const ObjectRef payable = filled(kPayable);
    payable->set("AdoConnectionObject", books.another());
    payable->let("APLDebitAmount", 0);
    payable->let("APLCreditAmount", 2);
    for (int i = 0; i < 50; ++i) EXPECT_EQ(write(payable), "");
  };
  std::thread other(post);
  post();
  other.join();
  EXPECT_TRUE(balances().starts_with("1200 | "));
}

TEST_P(ComponentsTest, balances_and_stock_take_any_amount) {
  const ObjectRef ledger = filled(kLedger);
  EXPECT_EQ(call(ledger, "COAPosting", {"AccountNo", 2.25}), "");
  EXPECT_EQ(call(ledger, "COAPosting", {"O'Hara", -7}), "");
  EXPECT_EQ(listing(books, {"Opening_Balance", "Current_Balance"},
                    "Chart_Of_Accounts Order By Account_No"),
            "10 | 2.25\n0 | -2");

  const ObjectRef stock = filled(kLocations);
  const auto move = [&](const char* unit, const Value& location, double quantity, int direction) {
    stock->let("UnitName", unit);
    stock->let("LocationCode", location);
    stock->let("LocationQty", quantity);
    EXPECT_EQ(call(stock, "UpdateLocationStock", {direction}), "");
  };
  move("5' pipe", Null(), 4, 0);
  move("5' pipe", Null(), 4, 1);
  move("5' pipe", Null(), 2.5, 1);
  move("5' pipe", "L1", 2.5, 0);
  move("Box", "L1", 2.5, 1);
  EXPECT_EQ(listing(books, {"location_ID", "Unit_Name", "Location_Qty"},
                    "Location_Stock Order By location_ID, Location_Qty"),
            " | 5' pipe | -2.5\nL1 | Box | -2.5\nL1 | 5' pipe | 2.5");
}

TEST_P(ComponentsTest, numbers_of_the_register_follow_each_other_past_those_that_are_borne) {
  const std::string series = "CompanyPrefixBranchPrefixDocumentPrefix";
  books.execute("Insert Into PDC_Master (PDC_No) Values ('" + series + "22')");
  EXPECT_EQ(write(filled(kRegister)) + write(filled(kRegister)), "");
  EXPECT_EQ(listing(books, {"PDC_No"}, "PDC_Master Where PDC_Identity Is Not Null Order By PDC_No"),
            series + "21\n" + series + "23");
  EXPECT_EQ(listing(books, {"Document_Next_No"}, "Document_Prefix"), "24");
}

TEST_P(ComponentsTest, preferences_and_items_are_read_by_their_keys_and_forgotten_when_not_found) {
  books.execute(
      "Insert Into Default_Account_Preferences (Company_Prefix, Branch_Prefix, AP_Account_No,"
      " Adv_Pmt_Account_No) Values ('AA', 'BR', 'P1', 'A1'), ('AA', 'B2', 'P2', Null);"
      "Insert Into Item_Master (Item_Code, Item_Type) Values ('AA1', '3'), ('AA2', Null)");
  const ObjectRef preferences = create_object("OmbrixAccounts.AccountPreferences");
  preferences->let("ConnectionString", books.text());
  preferences->let("BranchPrefix", "B2");
  const auto accounts = [&](const Value& company, const char* branch) {
    const std::string reason = call(preferences, "Get_Account_Preferences", {company, branch});
    return preferences->get("APAccountNo").to_text() + " " +
           preferences->get("AdvPmtAccountNo").to_text() + reason;
  };
  EXPECT_EQ(accounts("AA", "BR"), "P1 A1");
  EXPECT_EQ(accounts("AA", "B2"), "P2 ");
  EXPECT_EQ(accounts("BB", "BR"), " No account preferences for company \"BB\", branch \"BR\".");
  EXPECT_EQ(accounts(Null(), "B'R"), " No account preferences for company \"\", branch \"B'R\".");

  const ObjectRef inventory = create_object("OmbrixInventory.Inventory");
  inventory->let("ADOConnectionString", books.text());
  for (const auto& [code, type] : {std::pair("AA1", "3"), std::pair("AA2", "")}) {
    inventory->let("ItemCode", code);
    EXPECT_EQ(call(inventory, "Get_Item_Type"), "");
    EXPECT_EQ(inventory->get("ItemType").to_text(), type);
  }
  inventory->let("ItemCode", "AA9");
  EXPECT_EQ(call(inventory, "Get_Item_Type"), "Item type: item \"AA9\" is not on file.");
}

}  // namespace
}  // namespace ombrix::testing
