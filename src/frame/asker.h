#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "ombrix/connection.h"

#include "frame/sibling.h"

namespace ombrix {

/// For whom a sibling is asked: the connection that is handed on, and where the reason of a refusal
/// goes. Both outlive this object.
struct Asker {
  std::shared_ptr<Connection>& connection;
  std::string& reason;

  Sibling sibling(std::string_view name) const;
  /// Both answer false.
  bool refused(std::string_view text) const;
  bool refused_by(Sibling& sibling) const;
};

}  // namespace ombrix
