#include <optional>

#include "ombrix/connection.h"

#include "hosting/interface.h"

namespace ombrix {

namespace {

void open_late(Connection& connection, std::optional<std::string> text) {
  connection.Open(text.value_or(connection.ConnectionString()));
}

Connection& self_of(void* self) {
  return *static_cast<Connection*>(self);
}

template <auto kRun>
constexpr Member plain_call(std::string_view name) {
  return {.name = name, .access = Access::call, .call = [](void* self, std::span<Value>) {
            (self_of(self).*kRun)();
            return Value();
          }};
}

constexpr Parameter kMaybeText[] = {{.type = "String", .optional = true}};
/// The second is left empty by callers that pass options as the third.
constexpr Parameter kStatement[] = {
    {.type = "String"}, {.type = "Variant", .optional = true}, {.type = "Long", .optional = true}};

constexpr Member kMembers[] = {
    {.name = "ConnectionString",
     .access = Access::get,
     .type = "String",
     .get = [](void* self, std::span<Value>) { return Value(self_of(self).ConnectionString()); }},
    {.name = "State",
     .access = Access::get,
     .type = "Long",
     .get = [](void* self, std::span<Value>) { return Value(self_of(self).State()); }},
    {.name = "Open",
     .access = Access::call,
     .parameters = kMaybeText,
     .call =
         [](void* self, std::span<Value> arguments) {
           open_late(self_of(self),
                     arguments.empty() ? std::nullopt : std::optional(arguments[0].to_text()));
           return Value();
         }},
    plain_call<&Connection::Close>("Close"),
    {.name = "Execute",
     .access = Access::call,
     .parameters = kStatement,
     .call =
         [](void* self, std::span<Value> arguments) {
           const std::int64_t rows = self_of(self).Execute(arguments[0].to_text());
           return Value(static_cast<double>(rows));
         }},
    plain_call<&Connection::BeginTrans>("BeginTrans"),
    plain_call<&Connection::CommitTrans>("CommitTrans"),
    plain_call<&Connection::RollbackTrans>("RollbackTrans"),
};

constexpr Interface kInterface("Connection", kMembers);

}  // namespace

Value Connection::get(std::string_view member, std::span<Value> arguments) {
  return kInterface.get(this, member, arguments);
}
void Connection::let(std::string_view member, const Value& value, std::span<Value> arguments) {
  kInterface.let(this, member, value, arguments);
}
void Connection::set(std::string_view member, const ObjectRef& object) {
  kInterface.set(this, member, object);
}
Value Connection::call(std::string_view member, std::span<Value> arguments) {
  return kInterface.call(this, member, arguments);
}
std::vector<MemberInfo> Connection::members() const {
  return kInterface.infos();
}

}  // namespace ombrix
