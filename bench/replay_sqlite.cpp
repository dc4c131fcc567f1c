#include <sqlite3.h>
#include <stdexcept>

#include "database/connection_text.h"
#include "replay.h"

namespace ombrix::bench {

namespace {

class SqliteReplay final : public Replay {
 public:
  SqliteReplay(const std::string& text, const Recording& recording) : recording_(recording) {
    const database::ConnectionText pairs(text);
    for (std::size_t session = 0; session < recording.sessions; ++session) {
      sqlite3* raw = nullptr;
      const int code = sqlite3_open_v2(pairs["database"].c_str(), &raw,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
      sessions_.push_back({raw, {}});
      check(raw, code, SQLITE_OK);
      execute(raw, "Pragma journal_mode=WAL");
      execute(raw, "Pragma synchronous=" + pairs["synchronous"]);
      sessions_.back().statements.resize(recording.statements.size());
    }
    for_each_step(recording, [this](const Step& step) {
      if (step.kind == Step::Kind::read || step.kind == Step::Kind::write) prepare(step);
    });
  }
  ~SqliteReplay() override {
    for (const Session& session : sessions_) {
      for (sqlite3_stmt* statement : session.statements) sqlite3_finalize(statement);
      sqlite3_close(session.database);
    }
  }
  SqliteReplay(const SqliteReplay&) = delete;
  SqliteReplay& operator=(const SqliteReplay&) = delete;

  void run(const Steps& steps) override {
    for (const Step& step : steps) run(step);
  }

 private:
  struct Session {
    sqlite3* database;
    std::vector<sqlite3_stmt*> statements;
  };

  static void check(sqlite3* database, int code, int expected) {
    if (code != expected) throw std::runtime_error(sqlite3_errmsg(database));
  }
  static void execute(sqlite3* database, const std::string& text) {
    check(database, sqlite3_exec(database, text.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
  }

  void prepare(const Step& step) {
    Session& session = sessions_[step.session];
    sqlite3_stmt*& statement = session.statements[step.statement];
    if (statement != nullptr) return;
    const std::string& text = recording_.statements[step.statement].text;
    check(session.database,
          sqlite3_prepare_v3(session.database, text.c_str(), -1, SQLITE_PREPARE_PERSISTENT,
                             &statement, nullptr),
          SQLITE_OK);
  }

  void run(const Step& step) {
    const Session& session = sessions_[step.session];
    switch (step.kind) {
      case Step::Kind::begin:
        return execute(session.database, "Begin Immediate");
      case Step::Kind::commit:
        return execute(session.database, "Commit");
      case Step::Kind::rollback:
        return execute(session.database, "Rollback");
      case Step::Kind::text:
        return execute(session.database, recording_.statements[step.statement].text);
      case Step::Kind::read:
      case Step::Kind::write:
        return run_prepared(session, step);
    }
  }

  void run_prepared(const Session& session, const Step& step) {
    sqlite3_stmt* statement = session.statements[step.statement];
    int place = 0;
    for (const auto& parameter : step.parameters) bind(statement, ++place, parameter.cell);
    std::int64_t rows = 0;
    int code = SQLITE_ROW;
    for (; (code = sqlite3_step(statement)) == SQLITE_ROW; ++rows) take_row(statement);
    check(session.database, code, SQLITE_DONE);
    if (step.kind == Step::Kind::write) rows = sqlite3_changes64(session.database);
    if (rows != step.rows) throw std::runtime_error("the replay touches other rows");
    sqlite3_reset(statement);
  }

  static void bind(sqlite3_stmt* statement, int place, const database::Cell& cell) {
    if (const auto* text = std::get_if<std::string>(&cell)) {
      sqlite3_bind_text(statement, place, text->data(), static_cast<int>(text->size()),
                        SQLITE_STATIC);
    } else if (const auto* number = std::get_if<double>(&cell)) {
      sqlite3_bind_double(statement, place, *number);
    } else if (const auto* integer = std::get_if<std::int64_t>(&cell)) {
      sqlite3_bind_int64(statement, place, *integer);
    } else {
      sqlite3_bind_null(statement, place);
    }
  }

  void take_row(sqlite3_stmt* statement) {
    const int count = sqlite3_column_count(statement);
    for (int column = 0; column < count; ++column) {
      switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
          taken_ += static_cast<double>(sqlite3_column_int64(statement, column));
          break;
        case SQLITE_FLOAT:
          taken_ += sqlite3_column_double(statement, column);
          break;
        case SQLITE_TEXT:
          taken_ += *sqlite3_column_text(statement, column);
          taken_ += sqlite3_column_bytes(statement, column);
          break;
        default:
          break;
      }
    }
  }

  const Recording& recording_;
  std::vector<Session> sessions_;
  double taken_ = 0;
};

}  // namespace

std::unique_ptr<Replay> open_sqlite_replay(const std::string& text, const Recording& recording) {
  return std::make_unique<SqliteReplay>(text, recording);
}

}  // namespace ombrix::bench
