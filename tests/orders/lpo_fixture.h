#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/components.h"
#include "ombrix/purchase/lpo.h"

#include "frame/hosting/hosted.h"
#include "orders/lpo_interface.h"
#include "support/books.h"
#include "support/lines.h"

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

/// How a counter made by name behaves, and what was asked of it.
struct CounterScript {
  double number = 7;
  bool draws = true;
  bool moves_on = true;
  std::string reason = "The counter says no.";
  bool raises = false;
  ObjectRef hands_back{};
  std::vector<std::string> asked{};
  int living = 0;
};

class ScriptedCounter final : public Object {
 public:
  explicit ScriptedCounter(CounterScript& script) : script_(script) { ++script_.living; }
  ~ScriptedCounter() override { --script_.living; }

  std::string_view class_name() const override { return "ScriptedCounter"; }
  Value get(std::string_view member, std::span<Value>) override {
    script_.asked.push_back("get " + std::string(member));
    return member == "ErrDesc" ? Value(script_.reason) : Value(script_.number);
  }
  void let(std::string_view member, const Value& value, std::span<Value>) override {
    script_.asked.push_back("let " + std::string(member) + " " + value.to_text());
  }
  void set(std::string_view member, const ObjectRef&) override {
    script_.asked.push_back("set " + std::string(member));
  }
  Value call(std::string_view member, std::span<Value> arguments) override {
    std::string told = "call " + std::string(member);
    for (const Value& value : arguments) {
      told += " " +
              (value.is_object() ? std::string(value.to_object()->class_name()) : value.to_text());
    }
    script_.asked.push_back(told);
    if (script_.raises) throw Failure(5, "The counter broke down.");
    if (member == "Increase_Counter") return script_.moves_on;
    if (script_.hands_back) arguments[0] = script_.hands_back;
    return script_.draws;
  }

 private:
  CounterScript& script_;
};

inline Registration scripted_counter(CounterScript& script) {
  return {"OmbrixSystem.CounterTransaction",
          [&script] { return std::make_shared<ScriptedCounter>(script); }};
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
    std::string joined;
    for (const auto& row :
         books.rows("Select " + column + " From LPO_Detail Where LPO_No='" + order.LPONo() + "'",
                    {column})) {
      joined += (joined.empty() ? "" : " ") + shown(row[0]);
    }
    return joined;
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
