#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "ombrix/purchase/posted_document.h"

#include "database/statement.h"
#include "frame/sibling.h"

namespace ombrix::purchase {

/// The steps by which the lines of a document enter the stock: location, movement, cost, log. Each
/// walks the lines that its statement selects, answers false with its reason at the first that
/// fails, and leaves what was done before.
///
/// The lines come joined with their items, so that a line without an item enters nothing.
class PostedDocument::StockIn {
 public:
  /// Sets the members of a component for a line, in their order.
  using SetMembers = std::function<void(Sibling& component, Recordset& line)>;

  /// How a document differs.
  struct Terms {
    std::string_view quantity;  ///< the column of the quantity, in line units
    const std::string& log_series;
    const std::string& movement_series;
    /// What the line adds in home currency, as the movement and the log have it.
    std::function<Value(Recordset& line)> net_amount;
    /// What it adds to the cost of the item.
    std::function<double(Recordset& line)> cost;
    std::function<Value(Recordset& line)> unit_price;
    /// The goods were ordered: `Purchase_Order_Qty` falls, and the `Last_Update` of item and vendor
    /// price is written. Goods without an order tell the location component its connection with the
    /// members of each line.
    bool ordered;
  };

  StockIn(PostedDocument& document, const Heading& heading, Terms terms)
      : document_(document), heading_(heading), terms_(std::move(terms)) {}

  /// Raises the quantity at the location of each stocked line.
  bool locate(const database::Statement& lines, const SetMembers& set_members) const;
  /// One entry of the stock journal for each stocked line.
  bool move(const database::Statement& lines) const;
  /// Quantity, amount and average cost of each stocked item, and the vendor's last price.
  bool cost(const database::Statement& lines) const;
  /// One purchase layer for each line.
  bool log(const database::Statement& lines) const;

 private:
  double base_quantity(Recordset& line) const;
  void cost_item(const std::string& item_code, double quantity, double amount) const;
  void price_of_vendor(const std::string& item_code, double quantity, double amount) const;

  PostedDocument& document_;
  Heading heading_;
  Terms terms_;
};

}  // namespace ombrix::purchase
