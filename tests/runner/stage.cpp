#include "runner/stage.h"

#include <algorithm>

#include "ombrix/failure.h"

namespace ombrix::scenarios {

namespace {

constexpr std::int32_t kColumns = 40;

std::string raised(const Failure& failure) {
  return std::to_string(failure.number()) + " " + failure.description();
}

bool is_assignment(const std::string& word) {
  const std::string key = assignment(word).first;
  return !key.empty() && key.find('(') == std::string::npos;
}

/// Whether the last step takes the block as its table; else the block goes on with the line, as it
/// does with properties that are looked at.
bool takes_block(const std::string& step) {
  const auto words = words_of(step);
  if (words.empty() || split(step, " : ").size() > 1) return false;
  if (words[0] == "see") return words.size() == 1 || !is_assignment(words[1]);
  return words[0] == "add" || words[0] == "statements" || words[0] == "calls";
}

/// Runs `work`, and tells what it finds without a line that it stands at this one.
template <class Work>
void at_line(int line, Work work) {
  try {
    work();
  } catch (const Finding& finding) {
    throw finding.line != 0 ? finding : Finding{finding.what, line};
  }
}

/// Each "?" outside quotes becomes the next cell.
std::string filled(const std::string& pattern, const std::vector<std::string>& cells) {
  const auto parts = split(pattern, "?");
  if (parts.size() != cells.size() + 1) throw Finding{"as many cells as marks are expected"};
  std::string text;
  std::size_t begin = 0;
  for (const std::string& cell : cells) {
    const auto mark = pattern.find('?', begin);
    text += pattern.substr(begin, mark - begin);
    const bool is_value = mark > 0 && pattern[mark - 1] == '=';
    text += is_value && !is_quoted(cell) ? as_word(cell) : cell;
    begin = mark + 1;
  }
  return text + pattern.substr(begin);
}

}  // namespace

Stage::Stage(const Room& room, Play& play)
    : room_(room),
      play_(play),
      books_(play.database),
      connection_(Remote::open(books_.text())),
      watch_(connection_, books_.connection()) {}

void Stage::perform(const Scenario& scenario) {
  at_line(scenario.name.number, [&] {
    set_up(scenario);
    for (const Statement& statement : scenario.body) perform(statement);
    if (!boxes_.shown.empty()) {
      throw Finding{"a box that no line expects:\n" + side_by_side({}, boxes_.shown)};
    }
    if (expectations_ == 0) throw Finding{"expects nothing"};
  });
}

void Stage::set_up(const Scenario& scenario) {
  books_.execute(play_.company);
  for (const Statement& statement : scenario.body) {
    for (const std::string& step : split(statement.head.text, " ; ")) {
      const auto words = words_of(step);
      if (words.size() < 2 || words[0] != "told" || stand_ins_.contains(words[1])) continue;
      stand_ins_[words[1]] =
          std::make_unique<StandIn>(words[1], StandIn::Role::watches, connection_.handle());
    }
  }
  if (room_.has_documents()) enter(room_.document(), true);
  for (const Statement& statement : room_.given()) perform(statement);
  expectations_ = 0;
}

void Stage::perform(const Statement& statement) {
  at_line(statement.head.number, [&] {
    const auto [word, pattern] = first_word(statement.head.text);
    if (word != "each") {
      const bool table = takes_block(split(statement.head.text, " ; ").back());
      return perform_steps((table ? statement.head : statement.joined()).text, statement, nullptr);
    }
    if (statement.block.empty()) throw Finding{"has no cases below it"};
    for (const Line& row : statement.block) {
      perform_steps(filled(pattern, split(row.text, "|")), statement, &row);
    }
  });
}

void Stage::perform_steps(const std::string& text, const Statement& statement, const Line* row) {
  const auto steps = split(text, " ; ");
  for (const std::string& step : steps) {
    const bool last = &step == &steps.back();
    perform(Step{step, statement, row == nullptr && last && takes_block(step), row});
  }
}

void Stage::perform(const Step& step) {
  at_line(step.line().number, [&] {
    try {
      perform_word(step);
    } catch (const Failure& failure) {
      throw Finding{step.text + ": " + raised(failure)};
    }
  });
}

void Stage::perform_word(const Step& step) {
  const auto [word, rest] = first_word(step.text);
  if (is_assignment(word)) return act(step);
  if (const std::string* steps = room_.meaning("verb", word)) {
    return perform_steps(replaced(*steps, "$*", rest), step.statement, step.row);
  }
  const auto deed = deeds().find(word);
  if (deed != deeds().end()) return deed->second(*this, expanded(rest));
  const auto look = looks().find(word);
  if (look == looks().end()) return act(step);
  const auto parts = split(" " + rest, " : ");
  const bool given = parts.size() > 1;
  look->second(*this, step, given ? parts[0] : rest, given ? Given(parts[1]) : std::nullopt);
}

const std::map<std::string, Stage::Deed>& Stage::deeds() {
  const auto transaction = [](const std::string& method) {
    return [method](Stage& stage, const std::string&) {
      std::vector<Value> none;
      stage.connection_.call(method, none);
    };
  };
  const auto anew = [](bool with_properties) {
    return [with_properties](Stage& stage, const std::string& assignments) {
      stage.enter(Document(stage.actor().document), with_properties);
      stage.let(assignments);
    };
  };
  static const std::map<std::string, Deed> kDeeds{
      {"change", &Stage::change_rows},
      {"delete", &Stage::delete_rows},
      {"sql", &Stage::execute},
      {"elsewhere", [](auto& stage, auto& statement) { stage.books_.execute(statement); }},
      {"lines", &Stage::give_lines},
      {"grid",
       [](auto& stage, auto& rest) {
         const auto [rows, columns] = first_word(rest);
         stage.give_grid(number_of(rows), number_of(columns));
       }},
      {"put", &Stage::put},
      {"use", &Stage::use},
      {"fresh", anew(true)},
      {"bare", anew(false)},
      {"newborn",
       [](auto& stage, auto& assignments) {
         Actor& actor = stage.actor();
         actor.object = Remote::create(actor.document.class_name);
         stage.let(assignments);
       }},
      {"make", &Stage::make},
      {"stand", &Stage::stand},
      {"answer", [](auto& stage, auto& text) { stage.boxes_.answer = unquoted(text); }},
      {"begin", transaction("BeginTrans")},
      {"commit", transaction("CommitTrans")},
      {"rollback", transaction("RollbackTrans")},
      {"close", transaction("Close")}};
  return kDeeds;
}

void Stage::execute(const std::string& statement) {
  std::vector<Value> arguments{statement};
  connection_.call("Execute", arguments);
}

Stage::Actor& Stage::actor() {
  const auto found = actors_.find(at_hand_);
  if (found == actors_.end()) throw Finding{"no object is at hand"};
  return found->second;
}

void Stage::enter(const Document& document, bool with_properties) {
  at_hand_ = document.name;
  Actor& made = actors_[at_hand_] = Actor{document, Remote::create(document.class_name)};
  if (document.class_name.starts_with("OmbrixPurchase.")) {
    made.object.let("ConnectionString", books_.text());
    made.object.refer("AdoConnectionObject", connection_);
    give_grid(1, kColumns);
  }
  if (with_properties) let(document.properties);
}

void Stage::make(const std::string& rest) {
  const auto [name, behind] = first_word(rest);
  const auto [class_name, assignments] = first_word(behind);
  enter({name, class_name, ""}, false);
  let(assignments);
}

void Stage::use(const std::string& name) {
  if (!actors_.contains(name)) return enter(room_.document(name), true);
  at_hand_ = name;
}

void Stage::let(const std::string& assignments) {
  const Actor& at_hand = actor();
  for (const std::string& word : words_of(assignments)) {
    const auto [member, value] = required_assignment(word);
    if (value == "books" && member == "ConnectionString") {
      at_hand.object.let(member, books_.text());
    } else if (value == "books") {
      at_hand.object.refer(member, connection_);
    } else if (value == "grid") {
      at_hand.object.refer(member, at_hand.grid);
    } else if (value == "nothing") {
      at_hand.object.refer(member, Remote());
    } else {
      at_hand.object.let(member, value_of(value));
    }
  }
}

void Stage::give_grid(std::int32_t rows, std::int32_t columns) {
  Actor& at_hand = actor();
  at_hand.grid = Remote::grid(rows, columns);
  const std::string& property = at_hand.document.grid;
  if (!property.empty()) at_hand.object.refer(property, at_hand.grid);
}

void Stage::give_lines(const std::string& rest) {
  const auto lines = rest.empty() ? Words() : split(rest, " / ");
  give_grid(static_cast<std::int32_t>(lines.size()) + 1, kColumns);
  for (std::size_t row = 0; row < lines.size(); ++row) {
    put(std::to_string(row + 1) + " " + lines[row]);
  }
}

void Stage::put(const std::string& rest) {
  const auto [row, cells] = first_word(rest);
  for (const auto& [column, text] : room_.cells_of(cells)) {
    actor().grid.let("TextMatrix", text, {number_of(row), column});
  }
}

void Stage::stand(const std::string& rest) {
  const auto [component, members] = first_word(rest);
  auto& one = stand_ins_[component];
  one = std::make_unique<StandIn>(component, StandIn::Role::plays, connection_.handle());
  for (const std::string& word : words_of(members)) {
    const auto [member, value] = required_assignment(word);
    if (member == "refused") {
      one->refused_call = number_of(value);
    } else {
      one->presets[member] = value_of(value);
    }
  }
}

void Stage::act(const Step& step) {
  const auto arrow = step.text.find(" -> ");
  const std::string text = expanded(step.text.substr(0, arrow));
  std::string seen;
  try {
    seen = call(text);
  } catch (const Failure& failure) {
    seen = "raises " + raised(failure);
  }
  if (arrow != std::string::npos) {
    const std::string expected = step.text.substr(arrow + 4);
    expect_text(step, expected, seen, step.text.substr(0, arrow + 4));
  } else if (!seen.empty() && seen != "True") {
    throw Finding{text + " answers: " + seen};
  }
}

/// What the method answers and, after False, why; nothing for properties that were set.
std::string Stage::call(const std::string& text) {
  auto words = words_of(text);
  if (std::all_of(words.begin(), words.end(), is_assignment)) {
    let(text);
    return "";
  }
  left_.clear();
  for (std::size_t place = 1; place < words.size(); ++place) {
    left_.push_back(words[place] == "books" ? connection_.value() : value_of(words[place]));
  }
  watch_.begin();
  for (auto& [name, one] : stand_ins_) one->told.clear();
  const Remote& object = actor().object;
  const Value answer = object.call(words[0], left_);
  if (answer.is_empty()) return "";
  if (answer != Value(false)) return as_cell(shown(answer));
  try {
    // A reason reads to the end of its step, so it is quoted only for the sake of its ends.
    const std::string reason = shown(object.get("ErrDesc"));
    return "False " + (reason == trimmed(reason) && !reason.empty() ? reason : as_cell(reason));
  } catch (const Failure&) {
    return "False";
  }
}

/// "$Property" and "$document.Property" become their values, "$$" a plain sign.
std::string Stage::expanded(const std::string& text) const {
  std::string result;
  const auto in_name = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_' || c == '.'; };
  for (std::size_t place = 0; place < text.size(); ++place) {
    auto end = place + 1;
    while (end < text.size() && in_name(static_cast<unsigned char>(text[end]))) ++end;
    if (text[place] != '$' || end == place + 1) {
      result += text[place];
      if (text.substr(place, 2) == "$$") ++place;
      continue;
    }
    const std::string name = text.substr(place + 1, end - place - 1);
    const auto dot = name.find('.');
    const std::string object = dot == std::string::npos ? at_hand_ : name.substr(0, dot);
    const auto found = actors_.find(object);
    if (found == actors_.end()) throw Finding{"no object is called " + object};
    result += as_word(shown(found->second.object.get(name.substr(dot + 1))));
    place = end - 1;
  }
  return result;
}

}  // namespace ombrix::scenarios
