#include "database/sqlite/sqlite_session.h"

#include <sqlite3.h>
#include <utility>

#include "ombrix/failure.h"

#include "base/names.h"
#include "base/number.h"
#include "base/text.h"
#include "database/sqlite/open_files.h"
#include "database/sqlite/sqlite_error.h"

namespace ombrix::database {

namespace {

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// A database file opened in this process, as others on the same file see it.
struct File {
  Database database;
  OpenFiles::Entry entry;
  /// A transaction was begun that nobody ended yet. A failure such as a full disk may have rolled
  /// it back already.
  bool begun = false;
  std::int64_t rollbacks = 0;

  bool autocommit() const { return sqlite3_get_autocommit(database.get()) != 0; }
  /// A statement that fails by itself, outside a transaction, undoes nobody's work.
  static void note_rollback(void* file) {
    auto& self = *static_cast<File*>(file);
    if (!self.autocommit()) ++self.rollbacks;
  }
  void note_transaction() { entry.set_in_transaction(!autocommit()); }

  /// Refuses a statement that must not run now.
  void admit(sqlite3_stmt* statement) const {
    if (!autocommit()) return;
    // Outside the transaction that its caller believes in, it would stand for good.
    if (begun) {
      throw Failure(kDatabaseFailure,
                    "the database rolled the transaction back after a failure; nothing can be done "
                    "before it is ended");
    }
    // Waiting could not help: the lock is held further up this thread's own stack.
    if (!sqlite3_stmt_readonly(statement) && entry.held_on_this_thread()) {
      throw Failure(kDatabaseFailure,
                    "database is locked by a transaction of this thread's own connection; a write "
                    "through a connection of its own cannot succeed before that transaction ends");
    }
  }
};

bool begins_with(std::string_view statement, std::string_view word) {
  return same_name(trim(statement).substr(0, word.size()), word);
}

StatementHandle compile(sqlite3* database, const std::string& text, unsigned flags) {
  sqlite3_stmt* raw = nullptr;
  const char* tail = nullptr;
  const int code =
      sqlite3_prepare_v3(database, text.data(), static_cast<int>(text.size()), flags, &raw, &tail);
  if (code != SQLITE_OK) raise_sqlite(database, code);
  StatementHandle statement(raw);
  if (!statement) throw Failure(kDatabaseFailure, "The statement is empty.");
  if (!trim(text.substr(static_cast<std::size_t>(tail - text.data()))).empty()) {
    throw Failure(kDatabaseFailure, "A second statement stands behind the first.");
  }
  return statement;
}

class SqlitePrepared final : public Prepared {
 public:
  SqlitePrepared(std::shared_ptr<File> file, const std::string& text)
      : file_(std::move(file)),
        statement_(compile(file_->database.get(), text, SQLITE_PREPARE_PERSISTENT)) {
    const int count = sqlite3_column_count(statement_.get());
    for (int column = 0; column < count; ++column) {
      columns_.emplace_back(sqlite3_column_name(statement_.get(), column));
    }
  }

  const std::vector<std::string>& columns() const override { return columns_; }

  Rows fetch(const Parameters& parameters) override {
    const Use use(*this, parameters);
    Rows rows(columns_.size());
    rows.reserve(1);
    int code = step();
    if (sqlite3_column_count(statement_.get()) != static_cast<int>(columns_.size())) {
      throw Failure(kDatabaseFailure, "The columns of a table changed while it was in use.");
    }
    for (; code == SQLITE_ROW; code = step()) take_row(rows);
    return rows;
  }

  std::int64_t run(const Parameters& parameters) override {
    const Use use(*this, parameters);
    while (step() == SQLITE_ROW) {
    }
    return sqlite3_changes64(file_->database.get());
  }

 private:
  /// Parameters are bound by reference. Each run binds them all anew, so nothing ever reads those
  /// of an earlier one.
  class Use {
   public:
    Use(SqlitePrepared& prepared, const Parameters& parameters) : prepared_(prepared) {
      prepared.file_->admit(prepared.statement_.get());
      int place = 0;
      for (const Parameter& parameter : parameters) prepared.bind(++place, parameter.cell);
    }
    ~Use() {
      sqlite3_reset(prepared_.statement_.get());
      prepared_.file_->note_transaction();
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    SqlitePrepared& prepared_;
  };

  void bind(int place, const Cell& cell) {
    sqlite3_stmt* statement = statement_.get();
    int code = SQLITE_OK;
    if (const auto* text = std::get_if<std::string>(&cell)) {
      code = sqlite3_bind_text64(statement, place, text->data(), text->size(), SQLITE_STATIC,
                                 SQLITE_UTF8);
    } else if (const auto* number = std::get_if<double>(&cell)) {
      code = sqlite3_bind_double(statement, place, *number);
    } else if (const auto* integer = std::get_if<std::int64_t>(&cell)) {
      code = sqlite3_bind_int64(statement, place, *integer);
    } else {
      code = sqlite3_bind_null(statement, place);
    }
    if (code != SQLITE_OK) raise_sqlite(file_->database.get(), code);
  }

  int step() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) raise_sqlite(file_->database.get(), code);
    return code;
  }

  void take_row(Rows& rows) const {
    const int count = static_cast<int>(columns_.size());
    for (int column = 0; column < count; ++column) {
      // Where a database has no mutex, as ours, a value needs no protection to be looked at.
      sqlite3_value* value = sqlite3_column_value(statement_.get(), column);
      switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
          rows.add(std::int64_t{sqlite3_value_int64(value)});
          break;
        case SQLITE_FLOAT:
          rows.add(sqlite3_value_double(value));
          break;
        case SQLITE_NULL:
          rows.add(Null{});
          break;
        default: {
          const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
          const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
          rows.add(std::string_view(bytes, size));
        }
      }
    }
  }

  std::shared_ptr<File> file_;
  StatementHandle statement_;
  std::vector<std::string> columns_;
};

Kind kind_of(std::string_view declared_type) {
  const std::string type = lower_name(declared_type);
  if (type.find("int") != std::string::npos) return Kind::integer;
  if (type.find("char") != std::string::npos || type.find("text") != std::string::npos ||
      type.find("clob") != std::string::npos || type.empty()) {
    return Kind::text;
  }
  return Kind::number;
}

/// Defaults in our tables are numbers.
Cell initial_cell(const Cell& declared, Kind kind) {
  const auto* text = std::get_if<std::string>(&declared);
  if (text == nullptr || !is_plain_number(*text)) return Null{};
  return to_cell(Value(*text), kind);
}

class SqliteSession final : public DriverSession {
 public:
  explicit SqliteSession(std::shared_ptr<File> file) : file_(std::move(file)) {}
  ~SqliteSession() override {
    // A recordset that is still there keeps the file open, but it must keep no lock.
    if (!file_->autocommit()) sqlite3_exec(handle(), "Rollback", nullptr, nullptr, nullptr);
    file_->note_transaction();
  }
  SqliteSession(const SqliteSession&) = delete;
  SqliteSession& operator=(const SqliteSession&) = delete;

  const Dialect& dialect() const override {
    static constexpr Dialect kDialect{.row_lock = "",
                                      .key_order = "",
                                      .text_type = "text",
                                      .generated_key = "integer primary key autoincrement",
                                      .schema_lock = ""};
    return kDialect;
  }

  std::unique_ptr<Prepared> prepare(const std::string& text, const Parameters&) override {
    return std::make_unique<SqlitePrepared>(file_, text);
  }

  void check(const std::string& text) override { compile(handle(), text, 0); }

  std::int64_t execute(const std::string& text) override {
    if (text.find('\0') != std::string::npos) raise_type_mismatch();
    std::string_view rest = text;
    std::int64_t rows = 0;
    while (!trim(rest).empty()) {
      const char* tail = nullptr;
      sqlite3_stmt* raw = nullptr;
      const int code =
          sqlite3_prepare_v2(handle(), rest.data(), static_cast<int>(rest.size()), &raw, &tail);
      const StatementHandle statement(raw);
      if (code != SQLITE_OK) raise_sqlite(handle(), code);
      if (statement) rows = run_to_end(statement.get());
      rest.remove_prefix(static_cast<std::size_t>(tail - rest.data()));
    }
    return rows;
  }

  std::optional<Table> table(std::string_view name) override {
    // The key column is named with its place in the key, 0 for a column outside it.
    SqlitePrepared columns(file_,
                           "Select name, type, pk, dflt_value From pragma_table_info($1) "
                           "Order By cid");
    const Rows rows = columns.fetch({{Kind::text, std::string(name)}});
    if (rows.count() == 0) return std::nullopt;
    Table table{std::string(name), {}, {}};
    std::vector<std::pair<std::int64_t, std::string>> key;
    for (std::size_t row = 0; row < rows.count(); ++row) {
      const auto column = std::get<std::string>(rows.cell(row, 0));
      const Kind kind = kind_of(std::get<std::string>(rows.cell(row, 1)));
      table.columns.push_back({column, kind, initial_cell(rows.cell(row, 3), kind)});
      const auto place = std::get<std::int64_t>(rows.cell(row, 2));
      if (place > 0) key.emplace_back(place, column);
    }
    table.key.resize(key.size());
    for (auto& [place, column] : key) table.key[static_cast<std::size_t>(place - 1)] = column;
    return table;
  }

  void begin() override {
    execute("Begin Immediate");
    file_->begun = true;
  }
  void commit() override { execute("Commit"); }
  void rollback() override {
    if (!file_->autocommit()) execute("Rollback");
    file_->begun = false;
  }
  bool in_transaction() const override { return file_->begun || !file_->autocommit(); }
  std::int64_t rollbacks() const override { return file_->rollbacks; }
  bool alive() const override { return true; }

 private:
  sqlite3* handle() const { return file_->database.get(); }

  /// Answers how many rows it changed.
  std::int64_t run_to_end(sqlite3_stmt* statement) {
    file_->admit(statement);
    // A statement that changes no rows leaves the count of the one before it standing.
    const std::int64_t before = sqlite3_total_changes64(handle());
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW) code = sqlite3_step(statement);
    file_->note_transaction();
    // The hook hears nothing of a return to a savepoint.
    if (begins_with(sqlite3_sql(statement), "rollback")) ++file_->rollbacks;
    if (code != SQLITE_DONE) raise_sqlite(handle(), code);
    if (file_->autocommit()) file_->begun = false;
    return sqlite3_total_changes64(handle()) == before ? 0 : sqlite3_changes64(handle());
  }

  std::shared_ptr<File> file_;
};

/// The level may come from the text, so it is picked from a list and never pasted.
const char* synchronous_pragma(const ConnectionText& text) {
  const std::string& level = text["synchronous"];
  if (level.empty() || same_name(level, "FULL")) return "Pragma synchronous=FULL";
  if (same_name(level, "NORMAL")) return "Pragma synchronous=NORMAL";
  if (same_name(level, "OFF")) return "Pragma synchronous=OFF";
  throw Failure(kDatabaseFailure,
                "Invalid connection text: \"Synchronous\" must be FULL, NORMAL or OFF.");
}

void execute_pragma(sqlite3* database, const char* pragma) {
  const int code = sqlite3_exec(database, pragma, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) raise_sqlite(database, code);
}

/// Readers and a writer work side by side only in this mode, which the file itself remembers.
void use_write_ahead_log(sqlite3* database) {
  const StatementHandle mode = compile(database, "Pragma journal_mode", 0);
  const int code = sqlite3_step(mode.get());
  if (code != SQLITE_ROW) raise_sqlite(database, code);
  const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(mode.get(), 0));
  const bool already = name != nullptr && same_name(name, "wal");
  sqlite3_reset(mode.get());
  const bool may_write = sqlite3_db_readonly(database, "main") == 0;
  if (!already && may_write) execute_pragma(database, "Pragma journal_mode=WAL");
}

constexpr int kLookasideSlot = 1200;
constexpr int kLookasideSlots = 200;

}  // namespace

std::unique_ptr<DriverSession> open_sqlite_session(const ConnectionText& text, Missing missing) {
  text.only({"driver", "database", "busy timeout", "synchronous"});
  const std::string& path = text.required("database", "Database");
  const bool is_uri = same_name(std::string_view(path).substr(0, 5), "file:");
  if (path == ":memory:" || is_uri || path.find('\0') != std::string::npos) {
    throw Failure(kDatabaseFailure,
                  "Invalid connection text: \"Database\" must be the path of a file.");
  }
  const char* synchronous = synchronous_pragma(text);
  const int busy_timeout = text.busy_timeout();
  int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
  if (missing == Missing::create) flags |= SQLITE_OPEN_CREATE;

  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &raw, flags, nullptr);
  auto file = std::make_shared<File>();
  file->database.reset(raw);
  if (code != SQLITE_OK) raise_sqlite(raw, code);
  sqlite3_extended_result_codes(raw, 1);
  sqlite3_busy_timeout(raw, busy_timeout);
  // Room for what a statement of a wide table needs at once, without asking the heap.
  sqlite3_db_config(raw, SQLITE_DBCONFIG_LOOKASIDE, nullptr, kLookasideSlot, kLookasideSlots);
  use_write_ahead_log(raw);
  execute_pragma(raw, synchronous);
  sqlite3_rollback_hook(raw, &File::note_rollback, file.get());
  file->entry = OpenFiles::enter(path);
  return std::make_unique<SqliteSession>(std::move(file));
}

}  // namespace ombrix::database
