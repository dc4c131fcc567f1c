#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/purchase/vendor.h"
#include "ombrix/purchase/vendor_ob.h"

#include "frame/hosting/hosted.h"
#include "support/failures.h"
#include "support/lines.h"
#include "support/scripted.h"
#include "vendor/vendor_interface.h"

namespace ombrix::testing {

/// What the methods of one object make of the database and of siblings: "text (1,3) Select ...".
inline std::vector<std::string> told_calls(const Books& books, const std::function<void()>& call) {
  std::vector<std::string> lines;
  books.connection()->observe([&](const Call& seen) {
    const std::string mode =
        " (" + std::to_string(seen.cursor) + "," + std::to_string(seen.lock) + ") ";
    const std::string road = seen.road == Call::Road::text ? "text" : "object";
    if (seen.kind == Call::Kind::open) lines.push_back(road + mode + seen.text);
    if (seen.kind == Call::Kind::execute) lines.push_back("execute " + seen.text);
  });
  call();
  books.connection()->observe({});
  return lines;
}

/// The least that is accepted.
inline void fill(purchase::Vendor& vendor, const Books& books) {
  vendor.ConnectionString = books.text();
  vendor.AdoConnectionObject = books.connection();
  vendor.CompanyPrefix = "AA";
  vendor.VendorCode = "AAV001";
  vendor.VendorName = "Orchard Traders";
  vendor.VendorCountry = "Oman";
  vendor.VendorCurrencyCode = "USD";
  vendor.CurrencyCode = "AED";
  vendor.LastUpdate = Date(2024, 3, 5);
}

class VendorFixture : public OnEachDatabase {
 protected:
  void SetUp() override { fill(vendor, books); }

  std::string stored(const std::string& column, const std::string& code = "AAV001") const {
    return shown(books.value("Select " + column + " As V From Vendor_Master Where Vendor_Code='" +
                             code + "'"));
  }
  void given_vendor(const std::string& code = "AAV001") const {
    books.execute("Insert Into Vendor_Master (Vendor_Code) Values ('" + code + "')");
  }

  std::shared_ptr<Hosted<purchase::Vendor>> object =
      std::make_shared<Hosted<purchase::Vendor>>(purchase::vendor_interface());
  Object& late = *object;
  purchase::Vendor& vendor = object->held();
};

/// A line of an opening balance.
inline Cells owed(const std::string& number, const std::string& amount,
                  const std::string& date = "2023-12-31", const std::string& comments = "") {
  return {{1, number}, {2, date}, {3, amount}, {6, comments}};
}

inline void fill(purchase::VendorOB& balances, const Books& books,
                 std::initializer_list<Cells> lines, const std::string& type = "Credit") {
  balances.ConnectionString = books.text();
  balances.AdoConnectionObject = books.connection();
  balances.CompanyPrefix = "AA";
  balances.BranchPrefix = "BR";
  balances.DocumentPrefix = "INV";
  balances.VendorCode = "AAV001";
  balances.VendorName = "Orchard Traders";
  balances.OBType = type;
  balances.CurrencyCode = "USD";
  balances.LastUpdate = Date(2024, 3, 5);
  balances.GridName = grid_of(lines);
}

/// The vendor, the accounts of the branch and the currency.
inline void given_accounts(const Books& books) {
  books.execute(
      "Insert Into Vendor_Master (Vendor_Code, Vendor_Balance, Vendor_Fc_Balance)"
      " Values ('AAV001', 1000, 1000);"
      "Insert Into Currency_Master (Currency_Code, Currency_Symbol) Values ('USD', ' $ ');"
      "Insert Into Chart_Of_Accounts (Account_No, Opening_Balance) Values ('PAYABLE', -50),"
      " ('ADVANCE', 20);"
      "Insert Into Default_Account_Preferences (Company_Prefix, Branch_Prefix, AP_Account_No,"
      " Adv_Pmt_Account_No) Values ('AA', 'BR', 'PAYABLE', 'ADVANCE')");
}

}  // namespace ombrix::testing
