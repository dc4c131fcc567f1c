#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <utility>

#include "ombrix/components.h"
#include "ombrix/grid.h"

#include "runner/room.h"
#include "runner/table.h"
#include "sweep/sweep.h"

namespace ombrix::testing {

using scenarios::Finding;

namespace {

const std::string kTests = OMBRIX_TESTS;

/// A document of the scenarios, and what it has besides.
struct Section {
  std::string with;
  std::vector<std::string> lines;
};
struct Methods {
  scenarios::Room room;
  std::map<std::string, Section> sections;
  std::vector<Subject> subjects;
};

/// A step's first word and the rest.
std::pair<std::string, std::string> parted(const std::string& step) {
  const auto blank = std::min(step.find(' '), step.size());
  return {step.substr(0, blank), scenarios::trimmed(step.substr(blank))};
}

Trap trap_named(const std::string& name, int line) {
  constexpr std::string_view kNames[] = {"plain",    "first_reason",   "silent",
                                         "numbered", "numbered_close", "message_box"};
  const auto found = std::find(std::begin(kNames), std::end(kNames), name);
  if (found == std::end(kNames)) throw Finding{"is no trap: " + name, line};
  return static_cast<Trap>(found - std::begin(kNames));
}

Run run_of(const std::string& text) {
  const auto again = (" " + text).find(" again ");
  if (again == std::string::npos) return {text, ""};
  return {text.substr(0, again), text.substr(again + 6)};
}

/// "at PART effects", behind "refused" or "raised".
Rule rule_of(const std::string& step, int line) {
  auto words = scenarios::words_of(step);
  std::optional<Fault::Kind> kind;
  if (words[0] != "at") {
    kind = words[0] == "refused" ? Fault::Kind::answer_false : Fault::Kind::raise;
    words.erase(words.begin());
  }
  if (words.size() < 3 || words[0] != "at") throw Finding{"is no rule: " + step, line};
  for (std::string& word : words) word = scenarios::unquoted(word);
  return {words[1], kind, {words.begin() + 2, words.end()}};
}

void take(Subject& subject, const scenarios::Room& room, const std::string& step, int line) {
  const auto [word, rest] = parted(step);
  if (const std::string* verb = room.meaning("verb", word)) {
    for (const auto& each : scenarios::split(*verb, " ; ")) {
      take(subject, room, each, line);
    }
  } else if (word == "again") {
    subject.all.again = rest;
  } else if (word == "run") {
    subject.runs.push_back(run_of(rest));
  } else if (word == "trap") {
    subject.trap = trap_named(rest, line);
  } else if (word == "alone") {
    subject.alone = true;
  } else if (word == "at" || word == "refused" || word == "raised") {
    subject.rules.push_back(rule_of(step, line));
  } else {
    subject.all.settings = step;
  }
}

Methods read() {
  const auto text = scenarios::read_text(kTests + "/sweep/methods.txt");
  Methods methods{scenarios::Room(text), {}, {}};
  for (const auto& section : text.scenarios) {
    for (const auto& statement : section.body) {
      const scenarios::Line whole = statement.joined();
      const auto [word, rest] = parted(whole.text);
      Section& document = methods.sections[section.name.text];
      if (word == "with") {
        document.with = rest;
      } else if (word == "lines") {
        document.lines = scenarios::split(rest, " / ");
      } else {
        const auto steps = scenarios::split(whole.text, " ; ");
        Subject& subject = methods.subjects.emplace_back(Subject{section.name.text, steps[0]});
        for (std::size_t place = 1; place < steps.size(); ++place) {
          take(subject, methods.room, steps[place], whole.number);
        }
        if (subject.runs.empty()) subject.runs.emplace_back();
      }
    }
  }
  return methods;
}

const Methods& methods() {
  static const Methods methods = read();
  return methods;
}

const scenarios::Document& document_of(const std::string& name) {
  return methods().room.document(name);
}

void perform(ObjectRef& object, const std::string& step, const Books& books) {
  const auto [word, rest] = parted(step);
  if (word == "sql") return books.execute(rest);
  std::vector<Value> arguments = values_of(step);
  if (word == "use") {
    object = made(rest);
    fill(*object, rest, books);
  } else if (word.find('=') != std::string::npos) {
    set(*object, arguments, step);
  } else {
    arguments.pop_back();
    EXPECT_TRUE(object->call(word, arguments).to_flag()) << object->get("ErrDesc").to_text();
  }
}

}  // namespace

const std::vector<Subject>& subjects() {
  return methods().subjects;
}

void given_documents(const Books& books) {
  std::ifstream company(kTests + "/scenarios/company.sql");
  books.execute(std::string(std::istreambuf_iterator<char>(company), {}));
  ObjectRef object;
  for (const auto& statement : methods().room.given()) {
    for (const auto& step : scenarios::split(statement.joined().text, " ; ")) {
      perform(object, step, books);
    }
  }
}

ObjectRef made(const std::string& document) {
  return create_object(document_of(document).class_name);
}

void fill(Object& object, const std::string& document, const Books& books) {
  const Section& section = methods().sections.at(document);
  const auto& [name, class_name, grid_name, properties] = document_of(document);
  object.set("AdoConnectionObject", books.connection());
  object.let("ConnectionString", books.text());
  std::vector<Value> none;
  set(object, none, properties);
  set(object, none, section.with);
  constexpr std::int32_t kColumns = 36;
  std::int32_t row = 0;
  auto grid = std::make_shared<MemoryGrid>(section.lines.size() + 1, kColumns);
  for (const std::string& line : section.lines) {
    ++row;
    for (const auto& [column, text] : methods().room.cells_of(line)) {
      grid->TextMatrix(row, column, text);
    }
  }
  for (const MemberInfo& member : object.members()) {
    if (member.name != grid_name) continue;
    allows(member.access, Access::set) ? object.set(grid_name, grid) : object.let(grid_name, grid);
  }
}

void set(Object& object, std::vector<Value>& arguments, const std::string& settings) {
  for (const std::string& word : scenarios::words_of(settings)) {
    const auto [member, text] = scenarios::assignment(word);
    const Value value = scenarios::value_of(text);
    if (member.find_first_not_of("0123456789") == std::string::npos) {
      arguments.at(std::stoul(member) - 1) = value;
    } else {
      object.let(member, value);
    }
  }
}

std::vector<Value> values_of(const std::string& call) {
  auto words = scenarios::words_of(call);
  Value answer = true;
  if (words.size() > 2 && words[words.size() - 2] == "->") {
    answer = scenarios::value_of(words.back());
    words.resize(words.size() - 2);
  }
  std::vector<Value> values;
  for (std::size_t place = 1; place < words.size(); ++place) {
    const bool nothing = words[place] == "nothing";
    values.push_back(nothing ? Value(ObjectRef()) : scenarios::value_of(words[place]));
  }
  values.push_back(answer);
  return values;
}

void Rule::apply(const Cut& cut, Outcome& outcome) const {
  std::string text = (cut.call().road == Call::Road::text ? "text " : "") + cut.call().text;
  const bool more = cut.refused() && cut.place + 1 < cut.journal.size();
  if (more) text += " " + cut.journal[cut.place + 1].text;
  if ((kind && kind != cut.kind) || text.find(part) == std::string::npos) return;
  used = true;
  for (auto effect = effects.begin(); effect != effects.end(); ++effect) {
    const auto next = [&]() -> const std::string& { return *++effect; };
    if (*effect == "trap") {
      outcome.trapped(cut, trap_named(next(), 0));
    } else if (*effect == "rises") {
      outcome.rises(cut);
    } else if (*effect == "ignored" || *effect == "goes-on") {
      if (*effect == "ignored") outcome.reason = cut.reason_left;
      outcome.answer = true;
      outcome.left = cut.left;
    } else if (*effect == "says") {
      outcome.reason = next();
    } else if (*effect == "shows") {
      outcome.shown = cut.reason;
    } else if (*effect == "blanks") {
      const std::string name = "|" + next() + "|System";
      for (std::string& rows : outcome.left.tables) {
        const auto place = rows.find(name);
        if (place != std::string::npos) rows.replace(place, name.size(), "||System");
      }
    } else if (*effect == "frees") {
      const std::string& series = next();
      outcome.left.counters[series] = cut.given.counters.at(series);
    } else {
      throw Finding{"is no effect: " + *effect, 0};
    }
  }
}

}  // namespace ombrix::testing
