#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "database/session.h"

namespace ombrix::database {

/// Idle sessions by connection text. Opening one is dear, so a session that a recordset made from a
/// text is kept for the next while a client connection of that text is open. Safe from any thread.
class SessionPool {
 public:
  static SessionPool& instance();

  /// A session of the caller's own. It comes back by itself when the last reference goes, and is
  /// kept only if it is sound, outside a transaction, and still wanted.
  std::shared_ptr<Session> borrow(const std::string& connection_text);

  void client_opened(const std::string& connection_text);
  void client_closed(const std::string& connection_text);
  std::size_t idle(const std::string& connection_text) const;

 private:
  struct Shelf {
    int clients = 0;
    std::vector<std::unique_ptr<Session>> idle;
  };
  /// Taken from the shelf; null when there is none.
  std::unique_ptr<Session> idle_session(const std::string& connection_text);
  void give_back(const std::string& connection_text, std::unique_ptr<Session> session);

  mutable std::mutex mutex_;
  std::map<std::string, Shelf, std::less<>> shelves_;
};

}  // namespace ombrix::database
