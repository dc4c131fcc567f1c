#include "recording.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "database/driver.h"

namespace ombrix::bench {

using database::DriverSession;
using database::Kind;
using database::Parameters;
using database::Prepared;

class Recorder::Tape {
 public:
  Recording recording{};
  Steps RecordedDocument::*part = &RecordedDocument::prepare;

  RecordedDocument& document() {
    if (recording.documents.empty()) recording.documents.emplace_back();
    return recording.documents.back();
  }
  Step& add(Step step) { return (document().*part).emplace_back(std::move(step)); }

  std::size_t number_of(Recording::Statement statement) {
    auto& known = recording.statements;
    const auto found = std::find(known.begin(), known.end(), statement);
    if (found != known.end()) return static_cast<std::size_t>(found - known.begin());
    known.push_back(std::move(statement));
    return known.size() - 1;
  }
};

namespace {

using Tape = Recorder::Tape;

class RecordedStatement final : public Prepared {
 public:
  RecordedStatement(std::shared_ptr<Tape> tape, std::unique_ptr<Prepared> inner,
                    std::size_t session, std::size_t statement)
      : tape_(std::move(tape)),
        inner_(std::move(inner)),
        session_(session),
        statement_(statement) {}

  const std::vector<std::string>& columns() const override { return inner_->columns(); }
  database::Rows fetch(const Parameters& parameters) override {
    database::Rows rows = inner_->fetch(parameters);
    add(Step::Kind::read, parameters, static_cast<std::int64_t>(rows.count()));
    return rows;
  }
  std::int64_t run(const Parameters& parameters) override {
    const std::int64_t rows = inner_->run(parameters);
    add(Step::Kind::write, parameters, rows);
    return rows;
  }

 private:
  void add(Step::Kind kind, const Parameters& parameters, std::int64_t rows) const {
    tape_->add({kind, session_, statement_, parameters, rows});
  }

  std::shared_ptr<Tape> tape_;
  std::unique_ptr<Prepared> inner_;
  std::size_t session_, statement_;
};

class RecordedSession final : public DriverSession {
 public:
  RecordedSession(std::shared_ptr<Tape> tape, std::unique_ptr<DriverSession> inner)
      : tape_(std::move(tape)), inner_(std::move(inner)), number_(tape_->recording.sessions++) {
    ++tape_->document().sessions_opened;
  }

  const database::Dialect& dialect() const override { return inner_->dialect(); }
  std::unique_ptr<Prepared> prepare(const std::string& text,
                                    const Parameters& parameters) override {
    ++tape_->document().set_up;
    std::vector<Kind> kinds;
    for (const auto& parameter : parameters) kinds.push_back(parameter.kind);
    return std::make_unique<RecordedStatement>(tape_, inner_->prepare(text, parameters), number_,
                                               tape_->number_of({text, std::move(kinds)}));
  }
  void check(const std::string& text) override { inner_->check(text); }
  std::int64_t execute(const std::string& text) override {
    const std::int64_t rows = inner_->execute(text);
    tape_->add({Step::Kind::text, number_, tape_->number_of({text, {}}), {}, rows});
    return rows;
  }
  std::optional<database::Table> table(std::string_view name) override {
    ++tape_->document().set_up;
    return inner_->table(name);
  }
  void begin() override {
    inner_->begin();
    tape_->add({Step::Kind::begin, number_});
  }
  void commit() override {
    inner_->commit();
    tape_->add({Step::Kind::commit, number_});
  }
  void rollback() override {
    inner_->rollback();
    tape_->add({Step::Kind::rollback, number_});
  }
  bool in_transaction() const override { return inner_->in_transaction(); }
  std::int64_t rollbacks() const override { return inner_->rollbacks(); }
  bool alive() const override { return inner_->alive(); }

 private:
  std::shared_ptr<Tape> tape_;
  std::unique_ptr<DriverSession> inner_;
  std::size_t number_;
};

/// The statements are the library's own: a blank stands before and behind each word.
std::string word_behind(const std::string& text, std::string_view before) {
  const auto found =
      std::search(text.begin(), text.end(), before.begin(), before.end(),
                  [](char left, char right) { return left == right || (left ^ ' ') == right; });
  if (found == text.end()) return "";
  const auto start =
      text.find_first_not_of(' ', static_cast<std::size_t>(found - text.begin()) + before.size());
  return text.substr(start, text.find_first_of(" ,", start) - start);
}

}  // namespace

Target target_of(const Recording& recording, const Step& step) {
  switch (step.kind) {
    case Step::Kind::begin:
      return {"Begin", ""};
    case Step::Kind::commit:
      return {"Commit", ""};
    case Step::Kind::rollback:
      return {"Rollback", ""};
    case Step::Kind::text:
    case Step::Kind::read:
    case Step::Kind::write:
      break;
  }
  const std::string& text = recording.statements[step.statement].text;
  const std::string verb = text.substr(0, text.find(' '));
  if (verb == "Insert") return {verb, word_behind(text, " into ")};
  return {verb, verb == "Update" ? word_behind(text, "update ") : word_behind(text, " from ")};
}

Recorder::Recorder() : tape_(std::make_shared<Tape>()) {
  database::set_driver_filter([tape = tape_](std::unique_ptr<DriverSession> session) {
    return std::make_unique<RecordedSession>(tape, std::move(session));
  });
}

Recorder::~Recorder() {
  database::set_driver_filter({});
}

void Recorder::begin_document() {
  // The sessions that were opened before the first document count as its own.
  const bool first = tape_->recording.documents.size() == 1 && tape_->document().create.empty();
  if (!first) tape_->recording.documents.emplace_back();
}

void Recorder::begin_part(Steps RecordedDocument::*part) {
  tape_->part = part;
}

Recording Recorder::take() {
  return std::move(tape_->recording);
}

}  // namespace ombrix::bench
