#include <algorithm>
#include <iterator>
#include <map>
#include <stdexcept>

#include "ombrix/components.h"
#include "ombrix/grid.h"

#include "runner/room.h"
#include "runner/table.h"
#include "sweep/sweep.h"

namespace ombrix::testing {

namespace {

const std::string kTests = OMBRIX_TESTS;

/// A document of the scenarios, and what it has besides.
struct Section {
  std::string with;
  std::vector<std::string> lines;
};
struct Methods {
  scenarios::Room room;
  std::map<std::string, Section> sections{};
  std::vector<Subject> subjects{};
};

bool is_setting(const std::string& step) {
  return scenarios::first_word(step).first.find('=') != std::string::npos;
}

Run run_of(const std::string& text) {
  const auto again = (" " + text).find(" again ");
  if (again == std::string::npos) return {text, ""};
  return {text.substr(0, again), text.substr(again + 6)};
}

/// "at PART effects", "refused" or "raised" before it; effects alone are those of all calls.
Rule rule_of(const std::string& step) {
  auto words = scenarios::words_of(step);
  std::optional<Fault::Kind> kind;
  if (words[0] == "refused") kind = Fault::Kind::answer_false;
  if (words[0] == "raised") kind = Fault::Kind::raise;
  if (kind) words.erase(words.begin());
  if (words[0] != "at") words.insert(words.begin(), {"at", "''"});
  for (std::string& word : words) word = scenarios::unquoted(word);
  return {words.at(1), kind, {words.begin() + 2, words.end()}};
}

void take(Subject& subject, const scenarios::Room& room, const std::string& step) {
  const auto [word, rest] = scenarios::first_word(step);
  if (const std::string* verb = room.meaning("verb", word)) {
    for (const auto& each : scenarios::split(*verb, " ; ")) take(subject, room, each);
  } else if (word == "again") {
    subject.all.again = rest;
  } else if (word == "run") {
    subject.runs.push_back(run_of(rest));
  } else if (word == "alone") {
    subject.alone = true;
  } else if (is_setting(step)) {
    subject.all.settings = step;
  } else {
    subject.rules.push_back(rule_of(step));
  }
}

Methods read() {
  const auto text = scenarios::read_text(kTests + "/sweep/methods.txt");
  Methods methods{scenarios::Room(text)};
  for (const auto& section : text.scenarios) {
    Section& document = methods.sections[section.name.text];
    for (const auto& statement : section.body) {
      const std::string whole = statement.joined().text;
      const auto [word, rest] = scenarios::first_word(whole);
      if (word == "with") {
        document.with = rest;
      } else if (word == "lines") {
        document.lines = scenarios::split(rest, " / ");
      } else {
        const auto steps = scenarios::split(whole, " ; ");
        Subject subject{section.name.text, steps[0]};
        for (auto step = steps.begin() + 1; step != steps.end(); ++step) {
          take(subject, methods.room, *step);
        }
        if (subject.runs.empty()) subject.runs.emplace_back();
        methods.subjects.push_back(std::move(subject));
      }
    }
  }
  return methods;
}

const Methods& methods() {
  static const Methods methods = [] {
    try {
      return read();
    } catch (const scenarios::Finding& finding) {
      // Read before any test begins, where nobody else could tell.
      throw std::invalid_argument("methods.txt: " + finding.what);
    }
  }();
  return methods;
}

Trap trap_named(const std::string& name) {
  constexpr std::string_view kNames[] = {"plain",    "first_reason",   "silent",
                                         "numbered", "numbered_close", "message_box"};
  const auto found = std::find(std::begin(kNames), std::end(kNames), name);
  if (found == std::end(kNames)) throw std::invalid_argument("is no trap: " + name);
  return static_cast<Trap>(found - std::begin(kNames));
}

}  // namespace

const std::vector<Subject>& subjects() {
  return methods().subjects;
}

void given_documents(const Books& books) {
  books.execute(scenarios::content_of(kTests + "/scenarios/company.sql"));
  for (const auto& statement : methods().room.given()) {
    const auto [word, rest] = scenarios::first_word(statement.head.text);
    if (word == "sql") {
      books.execute(rest);
      continue;
    }
    const auto steps = scenarios::split(statement.head.text, " ; ");
    Instance document(word);
    document.fill(books);
    for (auto step = steps.begin() + 1; step != steps.end(); ++step) {
      if (is_setting(*step)) {
        document.set(*step);
      } else {
        EXPECT_TRUE(document.ask(*step)) << *step << ": " << document.reason();
      }
    }
  }
}

Instance::Instance(const std::string& document)
    : document_(document), object_(create_object(methods().room.document(document).class_name)) {}

void Instance::fill(const Books& books) {
  constexpr std::int32_t kColumns = 36;
  const auto& [name, class_name, grid_name, properties] = methods().room.document(document_);
  const auto& [with, lines] = methods().sections.at(document_);
  object_->set("AdoConnectionObject", books.connection());
  object_->let("ConnectionString", books.text());
  set(properties);
  set(with);
  auto grid = std::make_shared<MemoryGrid>(static_cast<std::int32_t>(lines.size()) + 1, kColumns);
  for (std::size_t row = 0; row < lines.size(); ++row) {
    for (const auto& [column, text] : methods().room.cells_of(lines[row])) {
      grid->TextMatrix(static_cast<std::int32_t>(row) + 1, column, text);
    }
  }
  for (const MemberInfo& member : object_->members()) {
    if (member.name != grid_name) continue;
    const bool refers = allows(member.access, Access::set);
    refers ? object_->set(grid_name, grid) : object_->let(grid_name, grid);
  }
}

void Instance::set(const std::string& settings) {
  for (const std::string& word : scenarios::words_of(settings)) {
    const auto [member, text] = scenarios::assignment(word);
    if (member.find_first_not_of("0123456789") == std::string::npos) {
      arguments_[std::stoul(member) - 1] = scenarios::value_of(text);
    } else {
      object_->let(member, scenarios::value_of(text));
    }
  }
}

bool Instance::ask(const std::string& call) {
  const auto told = scenarios::split(call, " -> ");
  const Value answer = told.size() > 1 ? scenarios::value_of(told[1]) : true;
  const auto words = scenarios::words_of(told[0]);
  std::vector<Value> arguments;
  for (std::size_t place = 1; place < words.size(); ++place) {
    const bool nothing = words[place] == "nothing";
    arguments.push_back(nothing ? Value(ObjectRef()) : scenarios::value_of(words[place]));
  }
  for (const auto& [place, value] : arguments_) arguments.at(place) = value;
  return object_->call(words[0], arguments) == answer;
}

void Outcome::meets(std::optional<Trap> trap, const Cut& cut) {
  raised = !trap && !cut.refused();
  const bool first = trap == Trap::first_reason && cut.before.reason.empty();
  const bool tells = first || !trap || trap == Trap::plain;
  reason = cut.refused() || tells ? cut.reason : cut.before.reason;
  if (cut.refused()) return;
  const std::string number = std::to_string(kDatabaseFailure);
  if (trap == Trap::numbered) reason = number + " : " + cut.reason;
  if (trap == Trap::numbered_close) reason = number + cut.reason;
  if (trap == Trap::message_box) shown = cut.reason;
}

void Rule::apply(const Cut& cut, Outcome& outcome) const {
  std::string text = (cut.call().road == Call::Road::text ? "text " : "") + cut.call().text;
  const std::size_t behind = cut.place + 1;
  if (cut.refused() && behind < cut.journal.size()) text += " " + cut.journal[behind].text;
  if ((kind && kind != cut.kind) || text.find(part) == std::string::npos) return;
  used = true;
  for (auto effect = effects.begin(); effect != effects.end(); ++effect) {
    if (*effect == "trap") {
      outcome.meets(trap_named(*++effect), cut);
    } else if (*effect == "rises") {
      outcome.meets(std::nullopt, cut);
    } else if (*effect == "ignored" || *effect == "goes-on") {
      if (*effect == "ignored") outcome.reason = cut.left.reason;
      outcome.answer = true;
      outcome.state = cut.left.state;
    } else if (*effect == "says") {
      outcome.reason = *++effect;
    } else if (*effect == "shows") {
      outcome.shown = cut.reason;
    } else if (*effect == "frees") {
      ++effect;
      outcome.state.counters[*effect] = cut.given.counters.at(*effect);
    } else {
      throw std::invalid_argument("is no effect: " + *effect);
    }
  }
}

}  // namespace ombrix::testing
