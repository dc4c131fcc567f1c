#include <gtest/gtest.h>

#include "support/sweep.h"
#include "vendor/vendor_fixture.h"

namespace ombrix::testing {
namespace {

using Vendor = purchase::Vendor;
using VendorOB = purchase::VendorOB;
using OnVendor = std::function<bool(Vendor&)>;

void given_vendors(const Books& books) {
  given_accounts(books);
  books.execute(
      "Insert Into Vendor_Master (Vendor_Code, Vendor_Discount) Values ('AAV002', 7.5);"
      "Insert Into Accounts_Payable_Ledger (Vendor_Code, Document_No, APL_Credit_Amount)"
      " Values ('AAV001', 'N1', 100);"
      "Insert Into Purchase_Invoice_Master (Purchase_Inv_No, Vendor_Code) Values ('N1', 'AAV001');"
      "Insert Into LPO_Master (LPO_No, Vendor_Code) Values ('L1', 'AAV001')");
}

Subject at_work(const Books& books, const OnVendor& method, const OnVendor& again = {}) {
  auto vendor = std::make_shared<Vendor>();
  fill(*vendor, books);
  Subject subject{[vendor, method] { return method(*vendor); },
                  [vendor] { return vendor->ErrDesc(); }};
  if (again) subject.again = [vendor, again] { return again(*vendor); };
  return subject;
}

class VendorSweepTest : public ::testing::TestWithParam<std::string> {
 protected:
  Sweep of(const std::string& name, OnVendor method, OnVendor again = {}) const {
    return {.method = name,
            .database = GetParam(),
            .given = given_vendors,
            .subject = [=](const Books& books, const ProcessingRun&) {
              return at_work(books, method, again);
            }};
  }
  /// A method that works through the text.
  Sweep on_text(const std::string& name, OnVendor method, OnVendor again = {}) const {
    Sweep sweep = of(name, std::move(method), std::move(again));
    sweep.in_transaction = false;
    return sweep;
  }
};
OMBRIX_ON_EACH_DATABASE(VendorSweepTest);

TEST_P(VendorSweepTest, Create_Vendor) {
  const auto create = [](std::string code) {
    return [code](Vendor& vendor) {
      vendor.VendorCode = code;
      return vendor.Create_Vendor();
    };
  };
  Sweep sweep = on_text("Create_Vendor", create("AAV008"), create("AAV009"));
  // A look for the code that fails has not found it.
  sweep.differs = [](const Cut& cut, Outcome& expected) {
    if (!cut.concerns("Select  *")) return;
    expected.answer = true;
    expected.rows = cut.clean_rows;
  };
  run(sweep);
}

TEST_P(VendorSweepTest, Update_Vendor) {
  run(on_text("Update_Vendor", [](Vendor& vendor) { return vendor.Update_Vendor(); }));
}

TEST_P(VendorSweepTest, Exist_Vendor) {
  run(on_text("Exist_Vendor", [](Vendor& vendor) { return vendor.Exist_Vendor(); }));
}

TEST_P(VendorSweepTest, Get_Vendor) {
  run(of("Get_Vendor", [](Vendor& vendor) { return vendor.Get_Vendor("AAV001"); }));
  run(of("Get_Vendor, on the object", [](Vendor& vendor) {
    vendor.ConnectionString = "";
    return vendor.Get_Vendor("AAV001");
  }));
}

TEST_P(VendorSweepTest, Get_Vendor_Balance) {
  run(of("Get_Vendor_Balance", [](Vendor& vendor) { return vendor.Get_Vendor_Balance("AAV001"); }));
}

TEST_P(VendorSweepTest, Get_Vendor_Discount) {
  Sweep sweep = of("Get_Vendor_Discount", [](Vendor& vendor) {
    std::string code = "AAV002";
    return vendor.Get_Vendor_Discount(code) == 7.5;
  });
  sweep.differs = [](const Cut&, Outcome& expected) { expected.raised = true; };
  run(sweep);
}

TEST_P(VendorSweepTest, Get_AP_Account_Name) {
  Sweep sweep = of("Get_AP_Account_Name", [](Vendor& vendor) {
    vendor.ConnectionString = "";
    vendor.APAccountNo = "PAYABLE";
    return vendor.Get_AP_Account_Name() == "Creditors";
  });
  sweep.given = [](const Books& books) {
    given_vendors(books);
    books.execute("Update Chart_Of_Accounts Set Account_Name='Creditors'");
  };
  sweep.differs = [](const Cut& cut, Outcome& expected) {
    if (cut.kind == Fault::Kind::answer_false) expected.reason = "Invalid Account";
  };
  run(sweep);
}

TEST_P(VendorSweepTest, DeleteRecord) {
  run(on_text("DeleteRecord", [](Vendor& vendor) {
    vendor.VendorCode = "AAV002";
    return vendor.DeleteRecord();
  }));
}

TEST_P(VendorSweepTest, Adjusted) {
  run(of("Adjusted", [](Vendor& vendor) {
    vendor.VendorOBType = "Credit";
    vendor.VendorOBDocumentNo = "N2";
    return vendor.Adjusted();
  }));
}

TEST_P(VendorSweepTest, Delete_Previous_OB) {
  const OnVendor take_back = [](Vendor& vendor) {
    std::string type = "Credit", number = "N1";
    return vendor.Delete_Previous_OB(type, number);
  };
  Sweep sweep = of("Delete_Previous_OB", take_back, take_back);
  sweep.differs = [](const Cut&, Outcome& expected) { expected.reason = ""; };
  run(sweep);
}

TEST_P(VendorSweepTest, Change_Code) {
  run(of("Change_Code", [](Vendor& vendor) {
    std::string from = "AAV001", to = "AAV009";
    return vendor.Change_Code(from, to);
  }));
}

TEST_P(VendorSweepTest, Change_Vendor_Code) {
  const auto change = [](const Cells& first, const Cells& second) {
    return [first, second](Vendor& vendor) {
      vendor.GridName = grid_of({first, second});
      return vendor.Change_Vendor_Code();
    };
  };
  Sweep sweep =
      of("Change_Vendor_Code",
         change({{1, "x"}, {2, "V001"}, {3, "V011"}}, {{1, "x"}, {2, "V002"}, {3, "V012"}}),
         change({{1, "x"}, {2, "V001"}, {3, "V021"}}, {}));
  sweep.differs = [](const Cut& cut, Outcome& expected) {
    expected.raised = cut.concerns("SELECT Vendor_Code");
  };
  run(sweep);
}

TEST_P(VendorSweepTest, Execute_Change_Code) {
  run(of("Execute_Change_Code", [](Vendor& vendor) {
    std::string table = "LPO_Master", column = "Vendor_Code", to = "AAV009", from = "AAV001";
    return vendor.Execute_Change_Code(table, column, to, from);
  }));
}

void given_balances(const Books& books, const std::string& type) {
  given_accounts(books);
  books.execute(
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
      " Document_Next_No) Values ('INV', 'AA', 'BR', 7)");
  VendorOB balances;
  fill(balances, books, {owed("REF1", "100"), owed("REF2", "200")}, type);
  ASSERT_TRUE(balances.Create_OB()) << balances.ErrDesc();
}

class VendorOBSweepTest : public ::testing::TestWithParam<std::string> {
 protected:
  Sweep of(const std::string& name, bool (VendorOB::*method)(), const std::string& type = "Credit",
           bool repeats = false) const {
    return {.method = name,
            .database = GetParam(),
            .given = [type](const Books& books) { given_balances(books, type); },
            .subject =
                [=](const Books& books, const ProcessingRun& run) {
                  auto balances = std::make_shared<VendorOB>();
                  fill(*balances, books, {owed("REF3", "300"), owed("REF4", "400")}, type);
                  balances->SyncFlag = run.sync;
                  Subject subject{[=] { return (balances.get()->*method)(); },
                                  [=] { return balances->ErrDesc(); }};
                  if (repeats) subject.again = subject.method;
                  return subject;
                }};
  }
};
OMBRIX_ON_EACH_DATABASE(VendorOBSweepTest);

TEST_P(VendorOBSweepTest, Create_OB) {
  run(of("Create_OB", &VendorOB::Create_OB));
}

TEST_P(VendorOBSweepTest, Get_OB) {
  run(of("Get_OB", &VendorOB::Get_OB));
}

TEST_P(VendorOBSweepTest, Process_OB) {
  run(of("Process_OB, invoices", &VendorOB::Process_OB, "Credit", true));
  auto payments = of("Process_OB, payments", &VendorOB::Process_OB, "Debit", true);
  payments.in_runs = true;
  run(payments);
}

}  // namespace
}  // namespace ombrix::testing
