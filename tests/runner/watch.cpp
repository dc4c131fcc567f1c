#include "runner/watch.h"

#include "ombrix/recordset.h"

#include "hosting/c/handles.h"
#include "runner/text.h"

namespace ombrix::scenarios {

Watch::Watch(const Remote& client, std::shared_ptr<Connection> other)
    : client_(std::dynamic_pointer_cast<Connection>(c::Handles::instance().find(client.handle()))),
      other_(std::move(other)) {
  client_->inject([this](const Call& call) {
    enter(call);
    return Fault();
  });
  client_->observe([this](const Call& call) { leave(call); });
}

Watch::~Watch() {
  client_->observe({});
  client_->inject({});
}

void Watch::begin() {
  statements_.clear();
  calls_.clear();
  unseen_ = 0;
}

void Watch::enter(const Call& call) {
  if (call.kind == Call::Kind::invoke && unseen_++ == 0) calls_.push_back({call.text + "()"});
}

void Watch::leave(const Call& call) {
  if (call.kind == Call::Kind::invoke) --unseen_;
  if (unseen_ > 0) return;
  if (call.kind == Call::Kind::execute) note("execute " + call.text);
  if (call.kind != Call::Kind::open) return;
  const std::string mode = "(" + std::to_string(call.cursor) + "," + std::to_string(call.lock) +
                           "," + std::to_string(call.options) + ") ";
  note((call.road == Call::Road::text ? "text " : "") + mode + call.text);
}

void Watch::note(const std::string& line) {
  const Row row{replaced(line, Date::now().short_text(), "today")};
  statements_.push_back(row);
  calls_.push_back(row);
}

Table Watch::rows(const std::string& select, const std::vector<std::string>& columns) {
  ++unseen_;
  Recordset set;
  set.Open(select, client_->State() == 1 ? client_ : other_, Static);
  Table table;
  for (; !set.IsEOF(); set.MoveNext()) {
    Row& row = table.emplace_back();
    for (const std::string& column : columns) row.push_back(shown(set(column)));
  }
  --unseen_;
  return table;
}

}  // namespace ombrix::scenarios
