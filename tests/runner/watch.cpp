#include "runner/watch.h"

#include "ombrix/recordset.h"

#include "frame/hosting/c/handles.h"

namespace ombrix::scenarios {

Watch::Watch(const Remote& books)
    : books_(std::dynamic_pointer_cast<Connection>(c::Handles::instance().find(books.handle()))) {
  books_->inject([this](const Call& call) {
    enter(call);
    return Fault();
  });
  books_->observe([this](const Call& call) { leave(call); });
}

Watch::~Watch() {
  books_->observe({});
  books_->inject({});
}

void Watch::begin() {
  statements_.clear();
  calls_.clear();
  inside_siblings_ = 0;
}

void Watch::enter(const Call& call) {
  if (call.kind != Call::Kind::invoke) return;
  if (inside_siblings_++ == 0) calls_.push_back(call.text + "()");
}

void Watch::leave(const Call& call) {
  if (call.kind == Call::Kind::invoke) --inside_siblings_;
  if (inside_siblings_ > 0) return;
  if (call.kind == Call::Kind::execute) note("execute " + call.text);
  if (call.kind != Call::Kind::open) return;
  const std::string mode = "(" + std::to_string(call.cursor) + "," + std::to_string(call.lock) +
                           "," + std::to_string(call.options) + ") ";
  note((call.road == Call::Road::text ? "text " : "") + mode + call.text);
}

void Watch::note(std::string line) {
  const std::string day = Date::now().midnight().short_text();
  const auto place = line.find(day);
  if (place != std::string::npos) line.replace(place, day.size(), "today");
  statements_.push_back(line);
  calls_.push_back(line);
}

Table Watch::rows(const std::string& select, const std::vector<std::string>& columns) const {
  const bool open = books_->State() == 1;
  Recordset set;
  set.Open(select, open ? books_ : Connection::open(books_->ConnectionString()), Static);
  Table table;
  for (; !set.IsEOF(); set.MoveNext()) {
    Row& row = table.emplace_back();
    for (const std::string& column : columns) row.push_back(shown(set(column)));
  }
  return table;
}

}  // namespace ombrix::scenarios
