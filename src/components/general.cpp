#include <memory>
#include <optional>
#include <string>

#include "ombrix/connection.h"
#include "ombrix/property.h"

#include "components/component.h"
#include "components/components.h"
#include "frame/lookup.h"

namespace ombrix::components {

namespace {

/// `OmbrixSystem.General`: reads one value. `AdoConnectionObject` is used when it is set, else
/// `ADOConnectionString`.
class General final {
 public:
  Text ADOConnectionString;
  Reference<Connection> AdoConnectionObject;

  /// The field of the first row that the comparisons select, as text; "" when there is none or it
  /// is Null. Without a `where_field` the first row of the table. Failures of the database rise.
  std::string GetFldValue(const std::string& table, const std::string& field,
                          std::optional<std::string> where_field, std::optional<Value> where_value,
                          std::optional<bool> where_is_number,
                          std::optional<std::string> second_field,
                          std::optional<Value> second_value, std::optional<bool> second_is_number);
};

std::string General::GetFldValue(const std::string& table, const std::string& field,
                                 std::optional<std::string> where_field,
                                 std::optional<Value> where_value,
                                 std::optional<bool> where_is_number,
                                 std::optional<std::string> second_field,
                                 std::optional<Value> second_value,
                                 std::optional<bool> second_is_number) {
  const auto comparison = [](const std::optional<std::string>& name,
                             const std::optional<Value>& value,
                             const std::optional<bool>& is_number) {
    return Comparison{name.value_or(""), value.value_or(Value()).text_or_empty(),
                      is_number.value_or(false)};
  };
  const auto statement =
      field_lookup(table, field, comparison(where_field, where_value, where_is_number),
                   comparison(second_field, second_value, second_is_number));
  const auto& connection = AdoConnectionObject();
  auto rows = connection ? database::open_recordset(statement, *connection, Static)
                         : database::open_fresh_recordset(statement, ADOConnectionString(), nullptr,
                                                          Static);
  return first_value(rows, field);
}

using Of = MembersOf<General>;

constexpr Member kMembers[] = {
    Of::property<&General::ADOConnectionString>("ADOConnectionString"),
    Of::property<&General::AdoConnectionObject>("AdoConnectionObject"),
    Of::method<&General::GetFldValue>("GetFldValue"),
};

constexpr Interface kInterface("OmbrixSystem.General", kMembers);

}  // namespace

Shipped general() {
  return component<General>(kInterface);
}

}  // namespace ombrix::components
