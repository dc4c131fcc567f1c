#pragma once

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/components.h"
#include "ombrix/purchase/lpo.h"

#include "frame/hosting/hosted.h"
#include "orders/lpo_interface.h"
#include "support/books.h"
#include "support/lines.h"
#include "support/scripted.h"

namespace ombrix::testing {

/// A line that is accepted, with cells of the test's own.
inline Cells line(const Cells& own = {}) {
  Cells cells = own;
  cells.merge(Cells{
      {1, "1001"}, {3, "Paper"}, {4, "Box"}, {6, "12"}, {7, "10"}, {12, "35"}, {15, "AABR001100"}});
  return cells;
}

inline void given_series(const Books& books, int next = 1, int next_temporary = 1) {
  books.execute(
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
      " Document_Next_No, Temporary_Next_No, Last_Update) Values ('PO', 'AA', 'BR', " +
      std::to_string(next) + ", " + std::to_string(next_temporary) + ", '2020-01-01 00:00:00')");
}

/// `quantity` is what is on order already; both numbers as they stand in a statement.
inline void given_item(const Books& books, std::string_view code, std::string_view type = "0",
                       std::string_view quantity = "100", std::string_view base = "2") {
  books.execute("Insert Into Item_Master (Item_Code, Item_Type, Purchase_Order_Qty, Base_Qty)" +
                std::string(" Values ('") + std::string(code) + "', '" + std::string(type) + "', " +
                std::string(quantity) + ", " + std::string(base) + ")");
}

/// All that a client sets before it creates an order of `lines`.
inline void fill(purchase::LPO& order, const Books& books, std::initializer_list<Cells> lines) {
  order.ConnectionString = books.text();
  order.AdoConnectionObject = books.connection();
  order.CompanyPrefix = "AA";
  order.BranchPrefix = "BR";
  order.DocumentPrefix = "PO";
  order.LastUpdate = Date(2024, 3, 5);
  order.AmtDig = 2;
  order.LPODate = Date(2024, 3, 1);
  order.VendorCode = "AAV001";
  order.VendorName = "Orchard Traders";
  order.CurrencyCode = "AED";
  order.GridName = grid_of(lines);
}

/// Stands for the counter that documents make by name; it draws the number 7.
inline Registration scripted_counter(Script& script) {
  return {"OmbrixSystem.CounterTransaction", [&script] {
            auto counter = std::make_shared<ScriptedSibling>(script);
            counter->let("NextDocumentNo", 7, {});
            script.asked.pop_back();  // that was this test's, not the document's
            return counter;
          }};
}

/// An order on books with its series at 1 and the item AA1001, reached by its typed members and by
/// name.
class LPOFixture : public OnEachDatabase {
 protected:
  using Hosted = ombrix::Hosted<purchase::LPO>;

  void SetUp() override {
    given_series(books);
    given_item(books, "AA1001");
    fill(order, books, {line()});
  }

  bool create(std::initializer_list<Cells> lines) {
    order.GridName = grid_of(lines);
    return order.Create_LPO();
  }

  std::string master(std::string_view column, std::string_view number = "") const {
    const std::string wanted(number.empty() ? order.LPONo() : number);
    return shown(books.value("Select " + std::string(column) +
                             " As V From LPO_Master Where LPO_No='" + wanted + "'"));
  }
  std::string detail(int serial, std::string_view column) const {
    return shown(books.value("Select " + std::string(column) +
                             " As V From LPO_Detail Where LPO_No='" + order.LPONo() +
                             "' And SL_No=" + std::to_string(serial)));
  }
  /// One column of all lines, in their order: "1 2 3".
  std::string details(const std::string& column) const {
    std::string lines = listing(books, {column}, "LPO_Detail Where LPO_No='" + order.LPONo() + "'");
    std::replace(lines.begin(), lines.end(), '\n', ' ');
    return lines;
  }
  std::string counter(std::string_view column = "Document_Next_No") const {
    return shown(books.value("Select " + std::string(column) + " As V From Document_Prefix"));
  }
  std::string on_order(std::string_view item = "AA1001") const {
    return shown(books.value("Select Purchase_Order_Qty As V From Item_Master Where Item_Code='" +
                             std::string(item) + "'"));
  }

  /// What the call makes of the connection and of siblings, statements with their modes.
  template <class Body>
  std::vector<std::string> told(Body call) const {
    std::vector<std::string> lines;
    books.connection()->observe([&](const Call& seen) {
      const auto mode = " (" + std::to_string(seen.cursor) + "," + std::to_string(seen.lock) + "," +
                        std::to_string(seen.options) + ") ";
      const auto* road = seen.road == Call::Road::text ? "text" : "object";
      if (seen.kind == Call::Kind::open) lines.push_back(road + mode + seen.text);
      if (seen.kind == Call::Kind::execute) lines.push_back("execute " + seen.text);
    });
    EXPECT_TRUE(call()) << order.ErrDesc();
    books.connection()->observe({});
    return lines;
  }

  std::shared_ptr<Hosted> object = std::make_shared<Hosted>(purchase::lpo_interface());
  Object& late = *object;
  purchase::LPO& order = object->held();
};

}  // namespace ombrix::testing
