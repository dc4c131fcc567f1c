#include "hand_written_lpo.h"

#include <charconv>
#include <cmath>
#include <sqlite3.h>
#include <stdexcept>

namespace ombrix::bench {

namespace {

const std::string kCompany = "AA";
const std::string kBranch = "01";
const std::string kSeries = "LPO";

std::string digits_of(double number) {
  char text[32];
  const auto [end, error] =
      std::to_chars(text, text + sizeof text, number, std::chars_format::general, 15);
  return {text, end};
}

double in_cents(double amount) {
  return std::nearbyint(amount * 100) / 100;
}

void execute(sqlite3* database, const char* text) {
  if (sqlite3_exec(database, text, nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(database));
  }
}

}  // namespace

class HandWrittenOrders::Statement {
 public:
  Statement(const Database& database, const char* text) : database_(database.get()) {
    check(sqlite3_prepare_v3(database_, text, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr),
          SQLITE_OK);
  }
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  Statement& with(std::initializer_list<Bound> values) {
    sqlite3_reset(statement_);
    int place = 0;
    for (const Bound& value : values) bind(++place, value);
    return *this;
  }

  /// False behind the last row, where the statement ends.
  bool next() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) return true;
    check(code, SQLITE_DONE);
    sqlite3_reset(statement_);
    return false;
  }

  void run_on_one_row() {
    while (next()) {
    }
    if (sqlite3_changes64(database_) != 1) throw std::runtime_error("not one row was changed");
  }

  double number(int column) const { return sqlite3_column_double(statement_, column); }
  bool is_null(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
  std::string text(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    return {bytes == nullptr ? "" : bytes,
            static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
  }

 private:
  void check(int code, int expected) const {
    if (code != expected) throw std::runtime_error(sqlite3_errmsg(database_));
  }

  void bind(int place, const Bound& value) {
    if (const auto* text = std::get_if<const std::string*>(&value)) {
      const std::string& held = **text;
      check(sqlite3_bind_text(statement_, place, held.data(), static_cast<int>(held.size()),
                              SQLITE_STATIC),
            SQLITE_OK);
    } else if (const auto* number = std::get_if<double>(&value)) {
      check(sqlite3_bind_double(statement_, place, *number), SQLITE_OK);
    } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
      check(sqlite3_bind_int64(statement_, place, *integer), SQLITE_OK);
    } else {
      check(sqlite3_bind_null(statement_, place), SQLITE_OK);
    }
  }

  sqlite3* database_;
  sqlite3_stmt* statement_ = nullptr;
};

struct HandWrittenOrders::Statements {
  Statements(const Database& on, const Database& reader)
      : claim_temporary(on,
                        "Update Document_Prefix Set Temporary_Next_No = Temporary_Next_No + 1 "
                        "Where Document_Prefix=$1 and Company_Prefix=$2 and Branch_Prefix=$3 "
                        "Returning Temporary_Next_No - 1"),
        claim_final(on,
                    "Update Document_Prefix Set Document_Next_No = Document_Next_No + 1 "
                    "Where Document_Prefix=$1 and Company_Prefix=$2 and Branch_Prefix=$3 "
                    "Returning Document_Next_No - 1"),
        borne_temporary(on, "Select Voucher_No From Voucher_Master Where Voucher_No=$1"),
        borne_final(on,
                    "Select 1 Where Exists (Select 1 From LPO_Master Where LPO_No=$1) "
                    "Or Exists (Select 1 From Goods_Receive_Master Where GRN_No=$1) "
                    "Or Exists (Select 1 From Purchase_Invoice_Master Where Purchase_Inv_No=$1) "
                    "Or Exists (Select 1 From Purchase_Return_Master Where Purchase_Rtn_No=$1) "
                    "Or Exists (Select 1 From Cash_Purchase_Master Where Cash_Pur_Inv_No=$1) "
                    "Or Exists (Select 1 From Payment_Master Where Payment_No=$1) "
                    "Or Exists (Select 1 From Voucher_Master Where Voucher_No=$1)"),
        master(on, "Select * From LPO_Master Where LPO_No=$1 Order By LPO_No"),
        insert_master(
            on,
            "Insert Into LPO_Master (LPO_No, LPO_Identity, Company_Prefix, Branch_Prefix, "
            "Document_Prefix, LPO_Date, LPO_Due_Date, Vendor_Code, Vendor_name, LPO_Comments, "
            "RFQ_No, LPO_Discount_Percent, LPO_FC_Discount_Amount, LPO_Discount_Amount, "
            "LPO_FC_Subtotal, LPO_SubTotal, LPO_FC_Total_Amount, LPO_Total_Amount, "
            "Foreign_Currency_Flag, Currency_Code, Currency_Symbol, Last_Update, Purchase_Type, "
            "TaxCode, TaxDescription, LPO_TaxRate, LPO_TaxAmount) Values ($1, $2, $3, $4, $5, $6, "
            "$7, $8, $9, $10, $11, $12, $13, $14, $15, $16, $17, $18, $19, $20, $21, $22, $23, "
            "$24, $25, $26, $27)"),
        insert_line(
            on,
            "Insert Into LPO_Detail (LPO_No, SL_No, Item_Code, Vendor_Item_Code, Item_Name, "
            "Unit_Name, FOC_Flag, Unit_Code, Unit_Qty, LPO_Qty, LPO_Unit_Price, "
            "LPO_Item_Discount_Percent, LPO_Item_Discount_amount, LPO_Item_Amount, "
            "LPO_FCItem_Discount_Amount, LPO_FCItem_Amount, Account_No, Proj_No, "
            "LPO_Overall_FC_Disc, LPO_Overall_Disc, TaxType, Last_Update) Values ($1, $2, $3, $4, "
            "$5, $6, $7, $8, $9, $10, $11, $12, $13, $14, $15, $16, $17, $18, $19, $20, $21, $22)"),
        read_master(reader, "Select * from LPO_Master Where LPO_No=$1 Order By LPO_No"),
        read_lines(reader, "Select * from LPO_Detail Where LPO_No=$1 Order By SL_No"),
        rename_master(on,
                      "Update LPO_Master Set LPO_Identity=$1, LPO_No=$2, Last_Update=$3, "
                      "Processed_Flag=$4 Where LPO_No=$5 And LPO_Identity Is Not Distinct From $6 "
                      "And Last_Update Is Not Distinct From $7 "
                      "And Processed_Flag Is Not Distinct From $8"),
        lines(on, "Select * from LPO_Detail Where LPO_No=$1 Order By LPO_No, SL_No"),
        rename_line(on,
                    "Update LPO_Detail Set LPO_No=$1, Last_Update=$2 Where LPO_No=$3 And SL_No=$4 "
                    "And Last_Update Is Not Distinct From $5"),
        item(on, "Select * from Item_Master Where Item_Code=$1 Order By Item_Code"),
        raise_item(on,
                   "Update Item_Master Set Purchase_Order_Qty=$1 Where Item_Code=$2 "
                   "And Purchase_Order_Qty Is Not Distinct From $3") {}

  Statement claim_temporary, claim_final, borne_temporary, borne_final;
  Statement master, insert_master, insert_line, read_master, read_lines;
  Statement rename_master, lines, rename_line, item, raise_item;
};

void HandWrittenOrders::CloseDatabase::operator()(sqlite3* database) const {
  sqlite3_close(database);
}

HandWrittenOrders::Database HandWrittenOrders::open(const std::string& path,
                                                    const std::string& synchronous) {
  sqlite3* raw = nullptr;
  const int code =
      sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  Database database(raw);
  if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(raw));
  sqlite3_busy_timeout(raw, 5000);
  execute(raw, "Pragma journal_mode=WAL");
  execute(raw, ("Pragma synchronous=" + synchronous).c_str());
  return database;
}

HandWrittenOrders::HandWrittenOrders(const std::string& path, const std::string& synchronous)
    : database_(open(path, synchronous)),
      reader_(open(path, synchronous)),
      statements_(std::make_unique<Statements>(database_, reader_)) {}

HandWrittenOrders::~HandWrittenOrders() = default;

void HandWrittenOrders::create(HandOrder& order) {
  execute(database_.get(), "Begin Immediate");
  order.identity = claim(statements_->claim_temporary);
  order.number = kCompany + kBranch + kSeries + "TMP" + digits_of(order.identity);
  refuse_borne(statements_->borne_temporary, order.number);
  insert_master(order);
  insert_detail(order);
  execute(database_.get(), "Commit");
}

void HandWrittenOrders::process(HandOrder& order) {
  execute(database_.get(), "Begin Immediate");
  load(order);
  rename(order);
  raise_ordered_quantities(order);
  execute(database_.get(), "Commit");
}

double HandWrittenOrders::claim(Statement& statement) {
  statement.with({&kSeries, &kCompany, &kBranch});
  if (!statement.next()) throw std::runtime_error("the series has no counter");
  const double claimed = statement.number(0);
  statement.next();
  return claimed;
}

void HandWrittenOrders::refuse_borne(Statement& statement, const std::string& number) {
  if (statement.with({&number}).next()) throw std::runtime_error(number + " is borne");
}

void HandWrittenOrders::insert_master(const HandOrder& order) {
  if (statements_->master.with({&order.number}).next()) throw std::runtime_error("saved before");
  const std::string empty;
  statements_->insert_master
      .with({&order.number,
             order.identity,
             &kCompany,
             &kBranch,
             &kSeries,
             &order.date,
             &order.due_date,
             &order.vendor,
             &order.vendor_name,
             {},
             {},
             order.discount_percent,
             order.discount,
             in_cents(order.discount),
             order.subtotal,
             in_cents(order.subtotal),
             order.total,
             in_cents(order.total),
             std::int64_t{0},
             &order.currency,
             &order.symbol,
             &order.last_update,
             &empty,
             &empty,
             &empty,
             0.0,
             0.0})
      .run_on_one_row();
}

void HandWrittenOrders::insert_detail(const HandOrder& order) {
  static const std::string kTaxable = "Taxable";
  static const std::string kExempted = "Exempted";
  double spread = 0;
  std::int64_t serial = 0;
  for (const HandLine& line : order.lines) {
    const bool last = &line == &order.lines.back();
    const double share =
        in_cents(last ? order.discount - spread : order.discount_percent / 100 * line.amount);
    spread += share;
    const std::string item = kCompany + line.item;
    statements_->insert_line
        .with({&order.number,
               ++serial,
               &item,
               &line.vendor_item,
               &line.name,
               &line.unit,
               line.free_of_charge,
               &line.unit_code,
               line.unit_qty,
               line.quantity,
               line.price,
               line.discount_percent,
               line.discount,
               line.amount,
               line.discount,
               line.amount,
               &line.account,
               &line.project,
               share,
               share,
               line.taxable ? &kTaxable : &kExempted,
               &order.last_update})
        .run_on_one_row();
  }
}

void HandWrittenOrders::load(HandOrder& order) {
  Statement& row = statements_->read_master.with({&order.number});
  if (!row.next()) throw std::runtime_error("no such order");
  order.identity = row.number(1);
  order.date = row.text(5);
  order.due_date = row.text(6);
  order.vendor = row.text(7);
  order.vendor_name = row.text(8);
  order.discount_percent = row.number(11);
  order.discount = row.number(12);
  order.subtotal = row.number(14);
  order.total = row.number(16);
  order.currency = row.text(19);
  order.symbol = row.text(20);
  row.next();
  load_lines(order);
}

void HandWrittenOrders::load_lines(HandOrder& order) {
  order.lines.clear();
  Statement& row = statements_->read_lines.with({&order.number});
  while (row.next()) {
    order.lines.push_back({.item = row.text(2).substr(2),
                           .vendor_item = row.text(3),
                           .name = row.text(4),
                           .unit = row.text(5),
                           .unit_code = row.text(8),
                           .account = row.text(17),
                           .project = row.text(18),
                           .unit_qty = row.number(9),
                           .quantity = row.number(10),
                           .price = row.number(11),
                           .discount_percent = row.number(12),
                           .discount = row.number(13),
                           .amount = row.number(14),
                           .free_of_charge = row.number(7),
                           .taxable = row.text(21) == "Taxable"});
  }
}

void HandWrittenOrders::rename(HandOrder& order) {
  Statement& row = statements_->master.with({&order.number});
  if (!row.next()) throw std::runtime_error("no such order");
  const double old_identity = row.number(1);
  const std::string old_update = row.text(21);
  const Bound old_flag = row.is_null(31) ? Bound() : Bound(row.number(31));
  row.next();

  order.identity = claim(statements_->claim_final);
  const std::string final_number = kCompany + kBranch + kSeries + digits_of(order.identity);
  refuse_borne(statements_->borne_final, final_number);
  statements_->rename_master
      .with({order.identity, &final_number, &order.last_update, std::int64_t{1}, &order.number,
             old_identity, &old_update, old_flag})
      .run_on_one_row();
  rename_lines(order, final_number);
  order.number = final_number;
}

void HandWrittenOrders::rename_lines(const HandOrder& order, const std::string& final_number) {
  struct Row {
    double serial;
    std::string last_update;
  };
  std::vector<Row> rows;
  Statement& read = statements_->lines.with({&order.number});
  while (read.next()) rows.push_back({read.number(1), read.text(22)});
  for (const Row& row : rows) {
    statements_->rename_line
        .with({&final_number, &order.last_update, &order.number,
               static_cast<std::int64_t>(row.serial), &row.last_update})
        .run_on_one_row();
  }
}

void HandWrittenOrders::raise_ordered_quantities(const HandOrder& order) {
  Statement& row = statements_->lines.with({&order.number});
  while (row.next()) raise_ordered_quantity(row.text(2), row.number(10) * row.number(9));
}

void HandWrittenOrders::raise_ordered_quantity(const std::string& item, double line_quantity) {
  Statement& row = statements_->item.with({&item});
  if (!row.next()) return;
  const std::string type = row.text(1);
  const double before = row.number(10);
  const double after = before + line_quantity * row.number(2);
  row.next();
  if (type != "0" && type != "3") return;
  statements_->raise_item.with({after, &item, before}).run_on_one_row();
}

}  // namespace ombrix::bench
