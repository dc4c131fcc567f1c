#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "ombrix/connection.h"

namespace ombrix::testing {

/// The calls that went through a connection since this object was made.
class Journal {
 public:
  explicit Journal(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {
    connection_->observe([this](const Call& call) { calls_.push_back(call); });
  }
  ~Journal() { connection_->observe({}); }
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  const std::vector<Call>& calls() const { return calls_; }
  std::vector<Call::Kind> kinds() const {
    std::vector<Call::Kind> kinds;
    for (const Call& call : calls_) kinds.push_back(call.kind);
    return kinds;
  }

 private:
  std::shared_ptr<Connection> connection_;
  std::vector<Call> calls_;
};

}  // namespace ombrix::testing
