#pragma once

#include <string>

#include "database/connection_access.h"

namespace ombrix {

/// `name` equals `value`; a value that is no number stands between quotes.
struct Comparison {
  std::string name;
  std::string value;
  bool is_number = false;
};

/// The statement that looks one field up. A blank first name selects every row, an empty second one
/// leaves the first comparison alone.
database::Statement field_lookup(const std::string& table, const std::string& field,
                                 const Comparison& first, const Comparison& second);

/// The field of the first row as text; "" when there is no row or it is Null.
std::string first_value(Recordset& rows, const std::string& field);

}  // namespace ombrix
