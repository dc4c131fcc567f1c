#include <charconv>
#include <cstdlib>
#include <libpq-fe.h>
#include <stdexcept>
#include <unordered_map>

#include "database/connection_text.h"
#include "replay.h"

namespace ombrix::bench {

namespace {

/// Types of the server, as its catalogue numbers them.
Oid oid_of(database::Kind kind) {
  constexpr Oid kText = 25, kFloat8 = 701, kInt8 = 20;
  return kind == database::Kind::text ? kText : kind == database::Kind::number ? kFloat8 : kInt8;
}

std::string wire_text(const database::Cell& cell) {
  if (std::holds_alternative<Null>(cell)) return "";
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  char digits[40];
  char* end = digits;
  if (const auto* number = std::get_if<double>(&cell)) {
    end = std::to_chars(digits, digits + sizeof digits, *number).ptr;
  } else {
    end = std::to_chars(digits, digits + sizeof digits, std::get<std::int64_t>(cell)).ptr;
  }
  return {digits, end};
}

class PostgresReplay final : public Replay {
 public:
  PostgresReplay(const std::string& text, const Recording& recording) : recording_(recording) {
    const database::ConnectionText pairs(text);
    for (std::size_t session = 0; session < recording.sessions; ++session) {
      const char* const keys[] = {"host",   "port", "user", "password", "client_encoding",
                                  "dbname", nullptr};
      const char* const values[] = {pairs["host"].c_str(),
                                    pairs["port"].c_str(),
                                    pairs["username"].c_str(),
                                    pairs["password"].c_str(),
                                    "UTF8",
                                    pairs["database"].c_str(),
                                    nullptr};
      sessions_.push_back(
          {PQconnectdbParams(keys, values, 0), std::vector<bool>(recording.statements.size())});
      if (PQstatus(sessions_.back().connection) != CONNECTION_OK) {
        throw std::runtime_error("the replay cannot open a session");
      }
    }
    for (std::size_t statement = 0; statement < recording.statements.size(); ++statement) {
      names_.push_back("replay_" + std::to_string(statement));
    }
    for_each_step(recording, [this](const Step& step) {
      if (step.kind != Step::Kind::read && step.kind != Step::Kind::write) return;
      prepare(step);
      render(step);
    });
  }
  ~PostgresReplay() override {
    for (const Session& session : sessions_) PQfinish(session.connection);
  }
  PostgresReplay(const PostgresReplay&) = delete;
  PostgresReplay& operator=(const PostgresReplay&) = delete;

  void run(const Steps& steps) override {
    for (const Step& step : steps) run(step);
  }

 private:
  struct Session {
    PGconn* connection;
    std::vector<bool> prepared;
  };
  /// Parameters as the wire takes them, made before the clock runs.
  struct Values {
    std::vector<std::string> texts;
    std::vector<const char*> pointers;
  };

  /// Takes the result and looks at every column of every row.
  std::int64_t take(PGconn* connection, PGresult* result, bool reads) {
    const ExecStatusType status = PQresultStatus(result);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
      const std::string message = PQerrorMessage(connection);
      PQclear(result);
      throw std::runtime_error(message);
    }
    const int rows = PQntuples(result), columns = PQnfields(result);
    for (int row = 0; row < rows; ++row) {
      for (int column = 0; column < columns; ++column) {
        if (PQgetisnull(result, row, column) != 0) continue;
        taken_ += *PQgetvalue(result, row, column) + PQgetlength(result, row, column);
      }
    }
    const std::int64_t touched = reads ? rows : std::atoll(PQcmdTuples(result));
    PQclear(result);
    return touched;
  }
  void execute(PGconn* connection, const char* text) {
    take(connection, PQexec(connection, text), false);
  }

  void prepare(const Step& step) {
    Session& session = sessions_[step.session];
    if (session.prepared[step.statement]) return;
    session.prepared[step.statement] = true;
    const Recording::Statement& statement = recording_.statements[step.statement];
    std::vector<Oid> types;
    for (const database::Kind kind : statement.kinds) types.push_back(oid_of(kind));
    take(session.connection,
         PQprepare(session.connection, names_[step.statement].c_str(), statement.text.c_str(),
                   static_cast<int>(types.size()), types.data()),
         false);
  }

  void render(const Step& step) {
    Values& values = values_[&step];
    for (const auto& parameter : step.parameters) values.texts.push_back(wire_text(parameter.cell));
    for (std::size_t i = 0; i < values.texts.size(); ++i) {
      const bool null = std::holds_alternative<Null>(step.parameters[i].cell);
      values.pointers.push_back(null ? nullptr : values.texts[i].c_str());
    }
  }

  void run(const Step& step) {
    PGconn* connection = sessions_[step.session].connection;
    switch (step.kind) {
      case Step::Kind::begin:
        return execute(connection, "Begin");
      case Step::Kind::commit:
        return execute(connection, "Commit");
      case Step::Kind::rollback:
        return execute(connection, "Rollback");
      case Step::Kind::text:
        return execute(connection, recording_.statements[step.statement].text.c_str());
      case Step::Kind::read:
      case Step::Kind::write:
        return run_prepared(connection, step);
    }
  }

  void run_prepared(PGconn* connection, const Step& step) {
    const Values& values = values_.at(&step);
    PGresult* result = PQexecPrepared(connection, names_[step.statement].c_str(),
                                      static_cast<int>(values.pointers.size()),
                                      values.pointers.data(), nullptr, nullptr, 0);
    if (take(connection, result, step.kind == Step::Kind::read) != step.rows) {
      throw std::runtime_error("the replay touches other rows");
    }
  }

  const Recording& recording_;
  std::vector<Session> sessions_;
  std::vector<std::string> names_;
  std::unordered_map<const Step*, Values> values_;
  std::int64_t taken_ = 0;
};

}  // namespace

std::unique_ptr<Replay> open_postgres_replay(const std::string& text, const Recording& recording) {
  return std::make_unique<PostgresReplay>(text, recording);
}

std::unique_ptr<Replay> open_replay(const std::string& text, const Recording& recording) {
  const bool on_server = database::ConnectionText(text)["driver"] == "PostgreSQL";
  return on_server ? open_postgres_replay(text, recording) : open_sqlite_replay(text, recording);
}

}  // namespace ombrix::bench
