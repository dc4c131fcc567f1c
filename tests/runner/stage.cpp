#include "runner/stage.h"

#include <algorithm>

namespace ombrix::scenarios {

namespace {

constexpr std::int32_t kColumns = 40;
constexpr std::string_view kWithBlock[] = {"see", "add", "statements", "calls"};

bool is_assignment(const std::string& word) {
  const std::string key = assignment(word).first;
  return !key.empty() && key.find('(') == std::string::npos;
}

/// Whether the last step takes the block as its table; else the block goes on with the line, as it
/// does with properties that are looked at.
bool takes_block(const std::string& step, int line) {
  const auto words = words_of(step, line);
  if (words.empty() || step.find(" : ") != std::string::npos) return false;
  if (words.size() > 1 && is_assignment(words[1])) return false;
  return std::find(std::begin(kWithBlock), std::end(kWithBlock), words[0]) != std::end(kWithBlock);
}

/// Each "?" outside quotes becomes the next cell.
std::string filled(const std::string& pattern, const std::vector<std::string>& cells, int line) {
  const auto parts = split(pattern, "?", line);
  std::string text;
  std::size_t begin = 0;
  for (std::size_t place = 0; place < cells.size(); ++place) {
    const auto mark = pattern.find('?', begin);
    if (mark == std::string::npos) throw Mistake{line, "more cells than marks"};
    text += pattern.substr(begin, mark - begin);
    const bool is_value = mark > 0 && pattern[mark - 1] == '=';
    text += is_value && !is_quoted(cells[place]) ? as_word(cells[place]) : cells[place];
    begin = mark + 1;
  }
  if (parts.size() != cells.size() + 1) throw Mistake{line, "fewer cells than marks"};
  return text + pattern.substr(begin);
}

/// A reason reads to the end of its step, so it is quoted only for the sake of its ends.
std::string as_reason(const std::string& text) {
  return text.empty() || text != trimmed(text) ? as_cell(text) : text;
}

}  // namespace

Stage::Stage(const Room& room, Play& play)
    : room_(room),
      play_(play),
      books_(play.database),
      connection_(Remote::open(books_.text())),
      watch_(connection_) {}

void Stage::perform(const Scenario& scenario) {
  set_up(scenario);
  for (const Statement& statement : scenario.body) perform(statement);
  if (boxes_.shown.size() > boxes_seen_) {
    throw Difference{scenario.name.number, "a box that no line expects:\n" +
                                               side_by_side({}, {boxes_.shown[boxes_seen_]})};
  }
  if (expectations_ == 0) throw Mistake{scenario.name.number, "expects nothing"};
}

void Stage::set_up(const Scenario& scenario) {
  books_.execute(play_.company);
  for (const Statement& statement : scenario.body) {
    for (const std::string& step : split(statement.head.text, " ; ", statement.head.number)) {
      const auto words = words_of(step, statement.head.number);
      if (words.size() < 2 || words[0] != "told" || stand_ins_.contains(words[1])) continue;
      stand_ins_[words[1]] =
          std::make_unique<StandIn>(words[1], StandIn::Role::watches, connection_.handle());
    }
  }
  if (!room_.documents.empty()) use(room_.documents.front().name, scenario.name.number);
  for (const Statement& statement : room_.given) perform(statement);
  expectations_ = 0;
}

void Stage::perform(const Statement& statement) {
  if (statement.head.text.starts_with("each ")) return perform_each(statement);
  const int line = statement.head.number;
  const bool table = takes_block(split(statement.head.text, " ; ", line).back(), line);
  perform_steps(table ? statement.head.text : joined(statement).text, statement, nullptr);
}

void Stage::perform_each(const Statement& statement) {
  if (statement.block.empty()) throw Mistake{statement.head.number, "has no cases below it"};
  const std::string pattern = trimmed(statement.head.text.substr(5));
  for (const Line& row : statement.block) {
    const auto cells = split(row.text, "|", row.number);
    perform_steps(filled(pattern, cells, row.number), statement, &row);
  }
}

void Stage::perform_steps(const std::string& text, const Statement& statement, const Line* row) {
  const int line = statement.head.number;
  const auto steps = split(text, " ; ", line);
  for (const std::string& step : steps) {
    const bool last = &step == &steps.back();
    perform(Step{step, &statement, row == nullptr && last && takes_block(step, line), row});
  }
}

void Stage::perform(const Step& step) {
  try {
    // The first word may be an assignment whose value holds blanks.
    const auto words = words_of(step.text, step.line());
    const std::string word = words.empty() ? "" : words[0];
    if (is_assignment(word)) return act(step);
    const std::string rest = trimmed(step.text.substr(word.size()));
    const auto verb = room_.verbs.find(word);
    if (verb != room_.verbs.end()) {
      verb->second.used = true;
      std::string text = verb->second.meaning;
      for (auto place = text.find("$*"); place != std::string::npos; place = text.find("$*")) {
        text.replace(place, 2, rest);
      }
      return perform_steps(text, *step.statement, step.row);
    }
    if (is_assignment(word)) return act(step);
    if (!prepares(step, word, expanded(rest)) && !expects(step, word, rest)) act(step);
  } catch (const Raised& raised) {
    throw Mistake{step.line(),
                  step.text + ": " + std::to_string(raised.number) + " " + raised.text};
  } catch (const Failure& failure) {
    throw Mistake{step.line(), step.text + ": " + failure.description()};
  }
}

bool Stage::prepares(const Step& step, const std::string& word, const std::string& rest) {
  const int line = step.line();
  const auto transaction = [&](const char* method) {
    std::vector<Value> none;
    connection_.call(method, none);
  };
  if (word == "add") {
    add_rows(step, rest);
  } else if (word == "change") {
    change_rows(rest, line);
  } else if (word == "delete") {
    delete_rows(rest, line);
  } else if (word == "sql") {
    execute(rest);
  } else if (word == "elsewhere") {
    books_.execute(rest);
  } else if (word == "lines") {
    give_lines(rest, line);
  } else if (word == "grid") {
    const auto words = words_of(rest, line);
    if (words.size() != 2) throw Mistake{line, "grid ROWS COLUMNS is expected"};
    give_grid(actor(), std::stoi(words[0]), std::stoi(words[1]));
  } else if (word == "put") {
    put(rest, line);
  } else if (word == "use") {
    use(rest, line);
  } else if (word == "fresh") {
    let(enter(actor().document, true), rest, line);
  } else if (word == "bare") {
    let(enter(actor().document, false), rest, line);
  } else if (word == "newborn") {
    Actor& actor_at_hand = actor();
    actor_at_hand.object = Remote::create(actor_at_hand.document.class_name);
    let(actor_at_hand, rest, line);
  } else if (word == "make") {
    const auto words = words_of(rest, line);
    if (words.size() < 2) throw Mistake{line, "make NAME CLASS is expected"};
    Actor& made = enter({words[0], words[1], "", {}}, false);
    let(made, trimmed(rest.substr(rest.find(words[1]) + words[1].size())), line);
  } else if (word == "stand") {
    stand(words_of(rest, line), line);
  } else if (word == "answer") {
    boxes_.answer = unquoted(rest);
  } else if (word == "begin") {
    transaction("BeginTrans");
  } else if (word == "commit") {
    transaction("CommitTrans");
  } else if (word == "rollback") {
    transaction("RollbackTrans");
  } else if (word == "close") {
    transaction("Close");
  } else {
    return false;
  }
  return true;
}

void Stage::execute(const std::string& statement) {
  std::vector<Value> arguments{statement};
  connection_.call("Execute", arguments);
}

Stage::Actor& Stage::actor() {
  const auto found = actors_.find(at_hand_);
  if (found == actors_.end()) throw Mistake{0, "no object is at hand"};
  return found->second;
}

Stage::Actor& Stage::enter(const Document& document, bool with_properties) {
  at_hand_ = document.name;
  Actor& actor = actors_[document.name] = Actor{document};
  actor.object = Remote::create(document.class_name);
  if (document.class_name.starts_with("OmbrixPurchase.")) {
    actor.object.let("ConnectionString", books_.text());
    actor.object.refer("AdoConnectionObject", connection_);
    give_grid(actor, 1, kColumns);
  }
  if (with_properties) let(actor, document.properties.text, document.properties.number);
  return actor;
}

void Stage::use(const std::string& name, int line) {
  at_hand_ = name;
  if (actors_.contains(name)) return;
  for (const Document& document : room_.documents) {
    if (document.name == name) return static_cast<void>(enter(document, true));
  }
  throw Mistake{line, "is no document: " + name};
}

void Stage::let(Actor& actor, const std::string& assignments, int line) {
  for (const std::string& word : words_of(assignments, line)) {
    const auto [member, value] = assignment(word);
    if (member.empty()) throw Mistake{line, "Property=value is expected: " + word};
    if (value == "books") {
      if (member == "ConnectionString") {
        actor.object.let(member, books_.text());
      } else {
        actor.object.refer(member, connection_);
      }
    } else if (value == "grid") {
      actor.object.refer(member, actor.grid);
    } else if (value == "nothing") {
      actor.object.refer(member, Remote());
    } else {
      actor.object.let(member, value_of(value));
    }
  }
}

void Stage::give_grid(Actor& actor, std::int32_t rows, std::int32_t columns) {
  actor.grid = Remote::grid(rows, columns);
  if (!actor.document.grid.empty()) actor.object.refer(actor.document.grid, actor.grid);
}

void Stage::give_lines(const std::string& rest, int line) {
  const auto lines = rest.empty() ? std::vector<std::string>() : split(rest, " / ", line);
  give_grid(actor(), static_cast<std::int32_t>(lines.size()) + 1, kColumns);
  for (std::size_t row = 0; row < lines.size(); ++row) {
    put(std::to_string(row + 1) + " " + lines[row], line);
  }
}

void Stage::put(const std::string& rest, int line) {
  const auto blank = rest.find(' ');
  const std::string row = rest.substr(0, blank);
  if (blank == std::string::npos || row.find_first_not_of("0123456789") != std::string::npos) {
    throw Mistake{line, "a row and its cells are expected: " + rest};
  }
  for (const auto& [column, text] : room_.cells_of(rest.substr(blank), line)) {
    actor().grid.let("TextMatrix", text, {std::stoi(row), column});
  }
}

void Stage::stand(const Words& words, int line) {
  if (words.empty()) throw Mistake{line, "whose place?"};
  auto& one = stand_ins_[words[0]];
  one = std::make_unique<StandIn>(words[0], StandIn::Role::plays, connection_.handle());
  for (std::size_t place = 1; place < words.size(); ++place) {
    const auto [member, value] = assignment(words[place]);
    if (member.empty()) throw Mistake{line, "Member=value is expected: " + words[place]};
    if (member == "refused") {
      one->refused_call = std::stoi(value);
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
    seen = call(text, step.line());
  } catch (const Raised& raised) {
    seen = "raises " + std::to_string(raised.number) + " " + raised.text;
  }
  if (arrow != std::string::npos) {
    const std::string expected = step.text.substr(arrow + 4);
    return expect_text(step, expected, seen, step.text.substr(0, arrow + 4));
  }
  if (!seen.empty() && seen != "True") {
    throw Difference{step.line(), text + " answers: " + seen};
  }
}

/// What the method answers and, after False, why; nothing for properties that were set.
std::string Stage::call(const std::string& text, int line) {
  auto words = words_of(text, line);
  if (words.empty()) throw Mistake{line, "an empty step"};
  if (std::all_of(words.begin(), words.end(), is_assignment)) {
    let(actor(), text, line);
    return "";
  }
  const std::string method = words[0];
  left_.clear();
  for (std::size_t place = 1; place < words.size(); ++place) {
    left_.push_back(words[place] == "books" ? connection_.value() : value_of(words[place]));
  }
  watch_.begin();
  for (auto& [name, one] : stand_ins_) one->told.clear();
  return answer_text(actor(), actor().object.call(method, left_));
}

std::string Stage::answer_text(const Actor& actor, const Value& answer) const {
  if (answer.is_empty()) return "";
  if (answer != Value(false)) return as_cell(shown(answer));
  try {
    return "False " + as_reason(shown(actor.object.get("ErrDesc")));
  } catch (const Raised&) {
    return "False";
  }
}

/// "$Property" and "$document.Property" become their values.
std::string Stage::expanded(const std::string& text) const {
  std::string result;
  for (std::size_t place = 0; place < text.size(); ++place) {
    auto end = place + 1;
    while (end < text.size() && (std::isalnum(static_cast<unsigned char>(text[end])) != 0 ||
                                 text[end] == '_' || text[end] == '.')) {
      ++end;
    }
    if (text[place] != '$' || end == place + 1) {
      result += text[place];
      continue;
    }
    const std::string name = text.substr(place + 1, end - place - 1);
    const auto dot = name.find('.');
    const std::string object = dot == std::string::npos ? at_hand_ : name.substr(0, dot);
    const auto found = actors_.find(object);
    if (found == actors_.end()) throw Mistake{0, "no object is called " + object};
    result += as_word(shown(found->second.object.get(name.substr(dot + 1))));
    place = end - 1;
  }
  return result;
}

}  // namespace ombrix::scenarios
