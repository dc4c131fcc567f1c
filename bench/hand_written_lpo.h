#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace ombrix::bench {

/// One line of an order, its figures as numbers.
struct HandLine {
  std::string item, vendor_item, name, unit, unit_code, account, project;
  double unit_qty, quantity, price, discount_percent, discount, amount;
  double free_of_charge;
  bool taxable;
};

struct HandOrder {
  std::string number, date, due_date, vendor, vendor_name, currency, symbol, last_update;
  double identity = 0, discount_percent = 0, discount = 0, subtotal = 0, total = 0;
  std::vector<HandLine> lines;
};

/// The yardstick: a purchase order written for this one task on the C interface of SQLite. It
/// executes the statements that the library executes, guards, looks for borne numbers and the read
/// through a second connection included, each prepared once, and keeps of a row only what it uses.
class HandWrittenOrders {
 public:
  HandWrittenOrders(const std::string& path, const std::string& synchronous);
  ~HandWrittenOrders();

  /// Each in a transaction of its own; raises `std::runtime_error` on any failure.
  void create(HandOrder& order);
  void process(HandOrder& order);

 private:
  class Statement;
  using Bound = std::variant<std::monostate, double, std::int64_t, const std::string*>;

  struct CloseDatabase {
    void operator()(sqlite3* database) const;
  };
  using Database = std::unique_ptr<sqlite3, CloseDatabase>;

  static Database open(const std::string& path, const std::string& synchronous);
  double claim(Statement& statement);
  void refuse_borne(Statement& statement, const std::string& number);
  void insert_master(const HandOrder& order);
  void insert_detail(const HandOrder& order);
  void load(HandOrder& order);
  void load_lines(HandOrder& order);
  void rename(HandOrder& order);
  void rename_lines(const HandOrder& order, const std::string& final_number);
  void raise_ordered_quantities(const HandOrder& order);
  void raise_ordered_quantity(const std::string& item, double line_quantity);

  struct Statements;
  Database database_, reader_;
  std::unique_ptr<Statements> statements_;
};

}  // namespace ombrix::bench
