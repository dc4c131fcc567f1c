#include "runner/client.h"

#include "frame/hosting/c/values.h"

namespace ombrix::scenarios {

namespace {

/// Values on their way through the C interface, and what comes back.
class Passed {
 public:
  explicit Passed(const std::vector<Value>& values, int flags = 0) : values_(values.size()) {
    for (std::size_t place = 0; place < values.size(); ++place) {
      c::write(values_[place], values[place]);
      values_[place].flags |= flags;
    }
  }
  ~Passed() {
    for (auto& value : values_) ombrix_clear(&value);
  }
  Passed(const Passed&) = delete;
  Passed& operator=(const Passed&) = delete;

  ombrix_value* data() { return values_.data(); }
  std::size_t size() const { return values_.size(); }
  Value operator[](std::size_t place) const { return c::from_c(values_[place]); }

 private:
  std::vector<ombrix_value> values_;
};

}  // namespace

void check(ombrix_status status) {
  if (status == OMBRIX_OK) return;
  throw Raised{status, ombrix_failure_number(), ombrix_failure_text()};
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
  ombrix_handle handle = 0;
  check(ombrix_create(name.c_str(), &handle));
  return Remote(handle);
}

Remote Remote::open(const std::string& connection_text) {
  ombrix_handle handle = 0;
  check(ombrix_connection_open(connection_text.c_str(), &handle));
  return Remote(handle);
}

Remote Remote::grid(std::int32_t rows, std::int32_t columns) {
  ombrix_handle handle = 0;
  check(ombrix_grid_new(rows, columns, &handle));
  return Remote(handle);
}

Value Remote::value() const {
  ombrix_value value{};
  value.type = OMBRIX_OBJECT;
  value.as.object = handle_;
  return c::from_c(value);
}

std::vector<ombrix_member_info> Remote::members() const {
  std::size_t count = 0;
  check(ombrix_member_count(handle_, &count));
  std::vector<ombrix_member_info> members(count);
  for (std::size_t place = 0; place < count; ++place) {
    check(ombrix_member(handle_, place, &members[place]));
  }
  return members;
}

Value Remote::get(const std::string& member, std::vector<Value> indices) const {
  Passed passed(indices);
  Passed result({Value()});
  check(ombrix_get(handle_, member.c_str(), passed.data(), passed.size(), result.data()));
  return result[0];
}

void Remote::let(const std::string& member, const Value& value, std::vector<Value> indices) const {
  Passed passed(indices);
  Passed given({value});
  check(ombrix_let(handle_, member.c_str(), passed.data(), passed.size(), given.data()));
}

void Remote::refer(const std::string& member, const Remote& object) const {
  for (const ombrix_member_info& info : members()) {
    if (member != info.name || (info.access & OMBRIX_CAN_SET) == 0) continue;
    return check(ombrix_set(handle_, member.c_str(), object.handle()));
  }
  ombrix_value value{};
  value.type = OMBRIX_OBJECT;
  value.as.object = object.handle();
  check(ombrix_let(handle_, member.c_str(), nullptr, 0, &value));
}

Value Remote::call(const std::string& method, std::vector<Value>& arguments) const {
  Passed passed(arguments, OMBRIX_BY_REFERENCE);
  Passed result({Value()});
  check(ombrix_call(handle_, method.c_str(), passed.data(), passed.size(), result.data()));
  for (std::size_t place = 0; place < arguments.size(); ++place) arguments[place] = passed[place];
  return result[0];
}

}  // namespace ombrix::scenarios
