#include "order_lines.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <memory>

namespace demo {

namespace {

constexpr std::size_t kColumns = 13;
constexpr double kMost = 1e9;

/// One line of the file, read field by field.
class Reader {
 public:
  Reader(const CsvLine& line, const CsvLine& heading) : line_(line), heading_(heading) {
    if (line.fields.size() == kColumns) return;
    throw bad("has " + std::to_string(line.fields.size()) + " columns where " +
              std::to_string(kColumns) + " belong");
  }

  const std::string& text(std::size_t column) const { return line_.fields[column]; }

  const std::string& required(std::size_t column) const {
    if (text(column).empty()) throw bad(name(column) + " is empty");
    return text(column);
  }

  double number(std::size_t column, double most = kMost) const {
    const std::string& field = text(column);
    double number = 0;
    const char* end = field.data() + field.size();
    const auto [stop, error] = std::from_chars(field.data(), end, number);
    if (error != std::errc() || stop != end || !(number >= 0) || number > most) {
      throw bad(name(column) + " must be a number from 0 to " + plain(most) + ", not \"" + field +
                "\"");
    }
    return number;
  }

  double above_zero(std::size_t column) const {
    const double value = number(column);
    if (value == 0) throw bad(name(column) + " must be above 0");
    return value;
  }

  bool yes_or_no(std::size_t column) const {
    if (text(column) == "yes") return true;
    if (text(column) == "no") return false;
    throw bad(name(column) + " must be \"yes\" or \"no\", not \"" + text(column) + "\"");
  }

 private:
  BadInput bad(const std::string& what) const {
    return BadInput("line " + std::to_string(line_.number) + ": " + what);
  }
  std::string name(std::size_t column) const { return '"' + heading_.fields[column] + '"'; }

  const CsvLine& line_;
  const CsvLine& heading_;
};

OrderLine order_line(const Reader& line) {
  return {.item = line.required(0),
          .vendor_item = line.text(1),
          .description = line.required(2),
          .unit = line.required(3),
          .unit_code = line.text(4),
          .account = line.required(9),
          .project = line.text(10),
          .base_units = line.above_zero(5),
          .quantity = line.above_zero(6),
          .price = line.number(7),
          .discount_percent = line.number(8, 100),
          .free_of_charge = line.yes_or_no(11),
          .taxable = line.yes_or_no(12)};
}

void fill_row(ombrix::Grid& grid, std::int32_t row, const OrderLine& line) {
  const std::pair<std::int32_t, std::string> cells[] = {
      {1, line.item},
      {2, line.vendor_item},
      {3, line.description},
      {4, line.unit},
      {5, line.unit_code},
      {6, plain(line.base_units)},
      {7, plain(line.quantity)},
      {8, plain(line.price)},
      {9, plain(line.discount_percent)},
      {10, money(line.discount())},
      {12, money(line.amount())},
      {15, line.account},
      {16, line.project},
      {18, line.free_of_charge ? "1" : "0"},
      {20, line.taxable ? "1" : "0"},
  };
  for (const auto& [column, text] : cells) grid.TextMatrix(row, column, text);
}

std::string number_text(double number, std::chars_format form, int precision) {
  char text[64];
  const auto [end, error] = std::to_chars(text, text + sizeof text, number, form, precision);
  return error == std::errc() ? std::string(text, end) : std::string("?");
}

}  // namespace

double OrderLine::discount() const {
  return in_cents(quantity * price * discount_percent / 100);
}

double OrderLine::amount() const {
  return in_cents(quantity * price) - discount();
}

std::vector<OrderLine> read_order(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw BadInput(path + ": the file cannot be read");
  try {
    const std::vector<CsvLine> lines = read_csv(file);
    if (file.bad()) throw BadInput("the file cannot be read");
    if (lines.size() < 2) throw BadInput("there are no lines behind the heading");
    std::vector<OrderLine> order;
    const Reader heading(lines[0], lines[0]);
    for (std::size_t i = 1; i < lines.size(); ++i) {
      order.push_back(order_line(Reader(lines[i], lines[0])));
    }
    return order;
  } catch (const BadInput& bad) {
    throw BadInput(path + ": " + bad.what());
  }
}

void fill(ombrix::purchase::LPO& order, const std::vector<OrderLine>& lines) {
  const auto rows = static_cast<std::int32_t>(lines.size()) + 1;
  const auto grid = std::make_shared<ombrix::MemoryGrid>(rows, /*columns*/ 21);
  double subtotal = 0;
  double taxable = 0;
  for (std::int32_t row = 1; row < rows; ++row) {
    const OrderLine& line = lines[static_cast<std::size_t>(row - 1)];
    fill_row(*grid, row, line);
    if (line.free_of_charge) continue;  // worth its price in the stock, and not paid
    subtotal += line.amount();
    if (line.taxable) taxable += line.amount();
  }
  const double share = order.LPODiscountPercent() / 100;
  const double discount = in_cents(subtotal * share);
  order.GridName = grid;
  order.LPOFCSubtotal = in_cents(subtotal);
  order.LPOFCDiscountAmount = discount;
  order.LPOTaxAmount = in_cents(taxable * (1 - share) * order.LPOTaxPercent() / 100);
  order.LPOFCTotalAmount = in_cents(subtotal - discount + order.LPOTaxAmount());
}

double in_cents(double amount) {
  return std::round(amount * 100) / 100;
}

std::string money(double amount) {
  return number_text(amount, std::chars_format::fixed, 2);
}

std::string plain(double number) {
  return number_text(number, std::chars_format::general, 15);
}

}  // namespace demo
