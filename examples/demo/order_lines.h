#pragma once

#include <ombrix/grid.h>
#include <ombrix/purchase/lpo.h>
#include <string>
#include <vector>

#include "csv.h"

namespace demo {

/// A line of an order, as a buyer writes it down.
struct OrderLine {
  std::string item, vendor_item, description, unit, unit_code, account, project;
  double base_units, quantity, price, discount_percent;
  bool free_of_charge, taxable;

  double discount() const;
  double amount() const;
};

/// Reads the lines of an order, behind a heading line. Raises `BadInput` with the number of the
/// first bad line.
std::vector<OrderLine> read_order(const std::string& path);

/// Puts the lines into the grid of an order, and their total with the discount into its amounts.
void fill(ombrix::purchase::LPO& order, const std::vector<OrderLine>& lines);

/// Cents, half away from zero.
double in_cents(double amount);
/// "1234.50".
std::string money(double amount);
/// "1234.5": no more decimals than there are.
std::string plain(double number);

}  // namespace demo
