#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "ombrix/connection.h"
#include "ombrix/property.h"
#include "ombrix/recordset.h"

#include "base/raw.h"
#include "base/text.h"
#include "database/connection_access.h"

namespace ombrix::components {

/// What the shipped components share that write through the caller's connection. Failures of the
/// database rise; what is refused answers False with a reason that says what and which.
class Component {
 public:
  Reference<Connection> AdoConnectionObject;
  Property<std::string, Access::get> ErrDesc;

 protected:
  Component() = default;
  ~Component() = default;

  bool refuse(std::string reason) {
    raw(ErrDesc) = std::move(reason);
    return false;
  }
  /// What a row cannot do without, by the names that the caller knows.
  using Keys = std::initializer_list<std::pair<std::string_view, std::string_view>>;
  /// False, refused, without a connection or with a blank key.
  bool ready(std::string_view work, Keys keys) {
    if (!AdoConnectionObject()) return refuse(std::string(work) + ": no connection was given.");
    for (const auto& [name, value] : keys) {
      if (trim(value).empty()) {
        return refuse(std::string(work) + ": " + std::string(name) + " is empty.");
      }
    }
    return true;
  }
  bool has_account(const std::string& account) const {
    return !open(database::sql({"Select Account_No From Chart_Of_Accounts Where Account_No=",
                                database::any_text(account)}),
                 ForwardOnly)
                .IsEOF();
  }

  Recordset open(const database::Statement& statement, OpenMode mode) const {
    return database::open_recordset(statement, *AdoConnectionObject(), mode);
  }
  /// Answers how many rows changed.
  std::int64_t execute(const database::Statement& statement) const {
    return database::execute(statement, *AdoConnectionObject());
  }
};

}  // namespace ombrix::components
