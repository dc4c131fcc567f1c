#include "runner/client.h"

#include "ombrix/failure.h"

#include "hosting/c/values.h"

namespace ombrix::scenarios {

void check(ombrix_status status) {
  if (status != OMBRIX_OK) throw Failure(ombrix_failure_number(), ombrix_failure_text());
}

Value taken(ombrix_value& value) {
  Value result = c::from_c(value);
  ombrix_clear(&value);
  return result;
}

Remote::~Remote() {
  if (handle_ != 0) ombrix_release(handle_);
}

Remote Remote::create(const std::string& name) {
  Remote made;
  check(ombrix_create(name.c_str(), &made.handle_));
  return made;
}

Remote Remote::open(const std::string& connection_text) {
  Remote made;
  check(ombrix_connection_open(connection_text.c_str(), &made.handle_));
  return made;
}

Remote Remote::grid(std::int32_t rows, std::int32_t columns) {
  Remote made;
  check(ombrix_grid_new(rows, columns, &made.handle_));
  return made;
}

Value Remote::value() const {
  ombrix_value value{};
  value.type = OMBRIX_OBJECT;
  value.as.object = handle_;
  return c::from_c(value);
}

Value Remote::get(const std::string& member, const std::vector<Value>& indices) const {
  c::LentArguments lent(indices);
  ombrix_value result{};
  check(ombrix_get(handle_, member.c_str(), lent.data(), lent.size(), &result));
  return taken(result);
}

void Remote::let(const std::string& member, const Value& value,
                 const std::vector<Value>& indices) const {
  c::LentArguments lent(indices), given({&value, 1});
  check(ombrix_let(handle_, member.c_str(), lent.data(), lent.size(), given.data()));
}

void Remote::refer(const std::string& member, const Remote& object) const {
  std::size_t count = 0;
  check(ombrix_member_count(handle_, &count));
  for (std::size_t place = 0; place < count; ++place) {
    ombrix_member_info info;
    check(ombrix_member(handle_, place, &info));
    if (member == info.name && (info.access & OMBRIX_CAN_SET) != 0) {
      return check(ombrix_set(handle_, member.c_str(), object.handle()));
    }
  }
  let(member, object.value());
}

Value Remote::call(const std::string& method, std::vector<Value>& arguments) const {
  c::LentArguments lent(arguments);
  ombrix_value result{};
  check(ombrix_call(handle_, method.c_str(), lent.data(), lent.size(), &result));
  // A text that was left may be the one that was lent.
  std::vector<Value> left;
  for (std::size_t place = 0; place < lent.size(); ++place) {
    left.push_back(c::from_c(lent.data()[place]));
  }
  arguments = std::move(left);
  return taken(result);
}

}  // namespace ombrix::scenarios
