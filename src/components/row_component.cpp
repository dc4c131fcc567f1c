#include "components/row_component.h"

#include <algorithm>
#include <cassert>

#include "database/statement.h"

namespace ombrix::components {

namespace {

Value converted(const Value& value, Type type) {
  const Value& given = value.is_null() ? Value() : value;
  switch (type) {
    case Type::text:
      return given.to_text();
    case Type::number:
      return given.to_number();
    case Type::flag:
      return given.to_flag();
    case Type::day:
      return given.to_date();
    case Type::any:
      break;
  }
  return given;
}

}  // namespace

Value as_it_is(const Value& value) {
  return value;
}
Value null_if_empty(const Value& value) {
  return value.is_empty() || value.to_text().empty() ? Value(Null{}) : value;
}
Value number_unless_empty(const Value& value) {
  return value.is_empty() ? Value(Null{}) : Value(value.to_number());
}
Value null_if_zero(const Value& value) {
  return value.to_date().is_zero() ? Value(Null{}) : value;
}

RowComponent::RowComponent(std::span<const Stored> members) : members_(members) {
  for (const Stored& stored : members) values_.push_back(converted(Value(), stored.type));
}

void RowComponent::keep(std::size_t place, const Value& value) {
  values_[place] = converted(value, members_[place].type);
}

std::size_t RowComponent::place_of(std::string_view name) const {
  const auto found = std::find_if(members_.begin(), members_.end(),
                                  [&](const Stored& stored) { return stored.member == name; });
  assert(found != members_.end());
  return static_cast<std::size_t>(found - members_.begin());
}

bool RowComponent::ready_with(std::string_view work, std::initializer_list<std::string_view> keys) {
  if (!ready(work, {})) return false;
  for (const std::string_view key : keys) {
    if (!ready(work, {{key, text(key)}})) return false;
  }
  return true;
}

void RowComponent::write_row(const database::Statement& table) const {
  auto row = open(table, Dynamic);
  row.AddNew();
  for (std::size_t place = 0; place < members_.size(); ++place) {
    row.write(members_[place].column, members_[place].rule(values_[place]));
  }
  row.Update();
}

}  // namespace ombrix::components
