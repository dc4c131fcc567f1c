#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ombrix/connection.h"
#include "ombrix/property.h"

#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixSystem.General`: reads one value. `AdoConnectionObject` is used when it is set, else
/// `ADOConnectionString`.
class General {
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

const Interface& general_interface();

}  // namespace ombrix::components
