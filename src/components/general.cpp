#include "components/general.h"

#include "frame/lookup.h"

namespace ombrix::components {

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

namespace {

using Of = MembersOf<General, Nulls::read_as_empty>;

constexpr Member kMembers[] = {
    Of::property<&General::ADOConnectionString>("ADOConnectionString"),
    Of::property<&General::AdoConnectionObject>("AdoConnectionObject"),
    Of::method<&General::GetFldValue>("GetFldValue"),
};

}  // namespace

const Interface& general_interface() {
  static constexpr Interface kInterface("OmbrixSystem.General", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
