#include "database/postgres/postgres_session.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/names.h"
#include "base/number.h"
#include "database/postgres/postgres_error.h"
#include "database/postgres/postgres_result.h"

namespace ombrix::database {

namespace {

/// One connection of the client library, shared with the statements prepared on it.
class Server {
 public:
  explicit Server(PGconn* connection) : connection_(connection) {
    // What the server says unasked would go to standard error, which is the client's.
    PQsetNoticeReceiver(connection_, &Server::hear, this);
  }
  ~Server() { PQfinish(connection_); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  PGconn* get() const { return connection_; }

  PostgresResult checked(PGresult* raw) const {
    PostgresResult result(raw);
    if (is_failure(raw)) raise_postgres(connection_, raw);
    return result;
  }

  /// The result of the last of the statements. That an earlier one undid work is told by its own.
  PostgresResult execute(const char* text) {
    if (PQsendQuery(connection_, text) != 1) raise_postgres(connection_, nullptr);
    PostgresResult last(nullptr);
    while (PGresult* raw = PQgetResult(connection_)) {
      end_copy(PQresultStatus(raw));
      if (std::string_view(PQcmdStatus(raw)) == "ROLLBACK") ++rollbacks_;
      if (last && is_failure(last.get())) {
        PQclear(raw);
      } else {
        last = PostgresResult(raw);
      }
    }
    return checked(last.release());
  }
  std::int64_t rollbacks() const { return rollbacks_; }
  std::string next_name() { return "ombrix_" + std::to_string(++statements_); }

  /// Notices an end that the server has already sent, without asking it.
  bool alive() const {
    if (PQconsumeInput(connection_) != 1) return false;
    PQisBusy(connection_);  // hears what came in
    return PQstatus(connection_) == CONNECTION_OK && !took_leave_;
  }

 private:
  static bool is_failure(const PGresult* result) {
    const ExecStatusType status = PQresultStatus(result);
    return status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK && status != PGRES_EMPTY_QUERY;
  }

  /// Rows that a statement wants to exchange outside of results: none are.
  void end_copy(ExecStatusType status) const {
    if (status == PGRES_COPY_IN) PQputCopyEnd(connection_, "no rows are sent this way");
    if (status != PGRES_COPY_OUT) return;
    char* row = nullptr;
    while (PQgetCopyData(connection_, &row, 0) > 0) PQfreemem(row);
  }

  /// The server's farewell comes before the end of the session does.
  static void hear(void* self, const PGresult* notice) {
    const char* severity = PQresultErrorField(notice, PG_DIAG_SEVERITY_NONLOCALIZED);
    if (severity == nullptr) return;
    const std::string_view word = severity;
    if (word == "FATAL" || word == "PANIC") static_cast<Server*>(self)->took_leave_ = true;
  }

  PGconn* connection_;
  std::uint64_t statements_ = 0;
  std::int64_t rollbacks_ = 0;
  bool took_leave_ = false;
};

/// Parameters as the wire takes them: texts, exact for every number.
class Wire {
 public:
  explicit Wire(const Parameters& parameters) {
    pointers_.reserve(parameters.size());
    numbers_.reserve(parameters.size());
    for (const Parameter& parameter : parameters) pointers_.push_back(text_of(parameter.cell));
  }
  const char* const* pointers() const { return pointers_.data(); }
  int count() const { return static_cast<int>(pointers_.size()); }

 private:
  const char* text_of(const Cell& cell) {
    if (std::holds_alternative<Null>(cell)) return nullptr;
    if (const auto* text = std::get_if<std::string>(&cell)) return text->c_str();
    auto& buffer = numbers_.emplace_back();
    char* end = buffer.data();
    if (const auto* number = std::get_if<double>(&cell)) {
      end = std::to_chars(buffer.data(), buffer.data() + buffer.size() - 1, *number).ptr;
    } else {
      const auto integer = std::get<std::int64_t>(cell);
      end = std::to_chars(buffer.data(), buffer.data() + buffer.size() - 1, integer).ptr;
    }
    *end = '\0';
    return buffer.data();
  }

  std::vector<const char*> pointers_;
  std::vector<std::array<char, 40>> numbers_;
};

class PostgresPrepared final : public Prepared {
 public:
  PostgresPrepared(std::shared_ptr<Server> server, const std::string& text,
                   const Parameters& parameters)
      : server_(std::move(server)), name_(server_->next_name()) {
    std::vector<Oid> types;
    for (const Parameter& parameter : parameters) types.push_back(oid_of(parameter.kind));
    server_->checked(PQprepare(server_->get(), name_.c_str(), text.c_str(),
                               static_cast<int>(types.size()), types.data()));
    const auto description = server_->checked(PQdescribePrepared(server_->get(), name_.c_str()));
    for (int column = 0; column < PQnfields(description.get()); ++column) {
      columns_.emplace_back(PQfname(description.get(), column));
    }
  }

  ~PostgresPrepared() override {
    // In a failed transaction the server would refuse; then the statement lives as the session
    // does.
    const PGTransactionStatusType status = PQtransactionStatus(server_->get());
    if (status == PQTRANS_IDLE || status == PQTRANS_INTRANS) {
      const PostgresResult ignored(PQexec(server_->get(), ("Deallocate " + name_).c_str()));
    }
  }
  PostgresPrepared(const PostgresPrepared&) = delete;
  PostgresPrepared& operator=(const PostgresPrepared&) = delete;

  const std::vector<std::string>& columns() const override { return columns_; }

  Rows fetch(const Parameters& parameters) override {
    const auto result = execute(parameters);
    const int width = PQnfields(result.get());
    Rows rows(static_cast<std::size_t>(width));
    rows.reserve(static_cast<std::size_t>(PQntuples(result.get())));
    for (int row = 0; row < PQntuples(result.get()); ++row) {
      for (int column = 0; column < width; ++column) add_cell(rows, result.get(), row, column);
    }
    return rows;
  }

  std::int64_t run(const Parameters& parameters) override {
    return parsed<std::int64_t>(PQcmdTuples(execute(parameters).get()));
  }

 private:
  PostgresResult execute(const Parameters& parameters) const {
    const Wire wire(parameters);
    return server_->checked(PQexecPrepared(server_->get(), name_.c_str(), wire.count(),
                                           wire.pointers(), nullptr, nullptr, 0));
  }

  static void add_cell(Rows& rows, const PGresult* result, int row, int column) {
    if (PQgetisnull(result, row, column) != 0) {
      rows.add(Null{});
      return;
    }
    const auto size = static_cast<std::size_t>(PQgetlength(result, row, column));
    add_text_form(rows, PQftype(result, column), {PQgetvalue(result, row, column), size});
  }

  std::shared_ptr<Server> server_;
  std::string name_;
  std::vector<std::string> columns_;
};

std::shared_ptr<Server> connect(const ConnectionText& text) {
  // To the server, 0 is a wait without end.
  const std::string options =
      "-c lock_timeout=" + std::to_string(std::max(text.busy_timeout(), 1)) +
      " -c standard_conforming_strings=on -c extra_float_digits=1 -c client_min_messages=warning";
  const char* const keys[] = {"host",
                              "port",
                              "dbname",
                              "user",
                              "password",
                              "client_encoding",
                              "options",
                              "application_name",
                              "connect_timeout",
                              nullptr};
  const char* const values[] = {text["host"].c_str(),
                                text["port"].c_str(),
                                text.required("database", "Database").c_str(),
                                text["username"].c_str(),
                                text["password"].c_str(),
                                "UTF8",
                                options.c_str(),
                                "ombrixpurchase",
                                "10",
                                nullptr};
  // A name that looks like a connection string of the client library's own is not taken for one.
  auto server = std::make_shared<Server>(PQconnectdbParams(keys, values, 0));
  if (PQstatus(server->get()) != CONNECTION_OK) {
    raise_not_connected(server->get(), text["password"]);
  }
  return server;
}

class PostgresSession final : public DriverSession {
 public:
  explicit PostgresSession(const ConnectionText& text) : text_(text), server_(connect(text)) {}
  ~PostgresSession() override {
    // A recordset that is still there keeps the server's session, but it must keep no lock.
    if (in_transaction()) const PostgresResult ignored(PQexec(server_->get(), "Rollback"));
  }
  PostgresSession(const PostgresSession&) = delete;
  PostgresSession& operator=(const PostgresSession&) = delete;

  const Dialect& dialect() const override {
    static constexpr Dialect kDialect{
        .row_lock = " For Update",
        .key_order = " Collate \"C\"",
        .text_type = "text collate \"C\"",
        .generated_key = "bigint generated by default as identity primary key",
        // Any number serves, as long as every process of the suite takes the same.
        .schema_lock = "Select pg_advisory_xact_lock(7190322611)"};
    return kDialect;
  }

  std::unique_ptr<Prepared> prepare(const std::string& text,
                                    const Parameters& parameters) override {
    return std::make_unique<PostgresPrepared>(server_, text, parameters);
  }

  void check(const std::string& text) override {
    // A failed statement would doom the client's transaction, so the text is tried beside it.
    if (in_transaction()) {
      if (!side_) side_ = connect(text_);
    }
    const Server& server = in_transaction() ? *side_ : *server_;
    server.checked(PQprepare(server.get(), "", text.c_str(), 0, nullptr));
  }

  std::int64_t execute(const std::string& text) override {
    if (text.find('\0') != std::string::npos) raise_type_mismatch();
    const auto result = server_->execute(text.c_str());
    // The server counts the rows that a select reads, too.
    if (std::string_view(PQcmdStatus(result.get())).starts_with("SELECT")) return 0;
    return parsed<std::int64_t>(PQcmdTuples(result.get()));
  }

  std::optional<Table> table(std::string_view name) override;

  void begin() override { server_->execute("Begin"); }
  void commit() override {
    // The server would answer a commit by a rollback, without a word of failure.
    if (PQtransactionStatus(server_->get()) == PQTRANS_INERROR) {
      server_->execute("Rollback");
      throw Failure(kDatabaseFailure,
                    "The transaction was rolled back, since a statement in it had failed.");
    }
    server_->execute("Commit");
  }
  void rollback() override { server_->execute("Rollback"); }
  std::int64_t rollbacks() const override { return server_->rollbacks(); }

  bool in_transaction() const override {
    const PGTransactionStatusType status = PQtransactionStatus(server_->get());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR || status == PQTRANS_ACTIVE;
  }
  bool alive() const override { return server_->alive(); }

 private:
  ConnectionText text_;
  std::shared_ptr<Server> server_;
  std::shared_ptr<Server> side_;
};

/// Defaults in our tables are numbers, which the server shows with or without a cast.
Cell initial_cell(const Cell& declared, Kind kind) {
  const auto* text = std::get_if<std::string>(&declared);
  if (text == nullptr) return Null{};
  std::string number = text->substr(0, text->find("::"));
  std::erase_if(number, [](char c) { return c == '\'' || c == '(' || c == ')'; });
  return is_plain_number(number) ? to_cell(Value(number), kind) : Cell(Null{});
}

std::optional<Table> PostgresSession::table(std::string_view name) {
  static const std::string kColumns =
      "Select a.attname, a.atttypid::int8, pg_get_expr(d.adbin, d.adrelid),"
      " array_position(i.indkey::int2[], a.attnum)::int8"
      " From pg_attribute a"
      " Left Join pg_attrdef d On d.adrelid = a.attrelid And d.adnum = a.attnum"
      " Left Join pg_index i On i.indrelid = a.attrelid And i.indisprimary"
      " Where a.attrelid = to_regclass(quote_ident($1)) And a.attnum > 0 And Not a.attisdropped"
      " Order By a.attnum";
  const Parameters parameters{{Kind::text, lower_name(name)}};
  const Rows rows = PostgresPrepared(server_, kColumns, parameters).fetch(parameters);
  if (rows.count() == 0) return std::nullopt;
  Table table{std::string(name), {}, {}};
  std::vector<std::pair<std::int64_t, std::string>> key;
  for (std::size_t row = 0; row < rows.count(); ++row) {
    const auto column = std::get<std::string>(rows.cell(row, 0));
    const Kind kind = kind_of(static_cast<Oid>(std::get<std::int64_t>(rows.cell(row, 1))));
    table.columns.push_back({column, kind, initial_cell(rows.cell(row, 2), kind)});
    // Places in an index vector count from 0.
    const Cell place = rows.cell(row, 3);
    if (const auto* in_key = std::get_if<std::int64_t>(&place)) key.emplace_back(*in_key, column);
  }
  table.key.resize(key.size());
  for (auto& [place, column] : key) table.key.at(static_cast<std::size_t>(place)) = column;
  return table;
}

}  // namespace

std::unique_ptr<DriverSession> open_postgres_session(const ConnectionText& text) {
  text.only({"driver", "host", "port", "database", "username", "password", "busy timeout"});
  return std::make_unique<PostgresSession>(text);
}

}  // namespace ombrix::database
