#include "database/session_pool.h"

#include <utility>

namespace ombrix::database {

namespace {

/// A method needs two at a time; more are kept only for threads that work side by side.
constexpr std::size_t kMostIdle = 8;

}  // namespace

SessionPool& SessionPool::instance() {
  // Never destroyed: an object of the client's may outlive the statics of this library.
  static auto* pool = new SessionPool;
  return *pool;
}

std::shared_ptr<Session> SessionPool::borrow(const std::string& connection_text) {
  std::unique_ptr<Session> session = idle_session(connection_text);
  // The server may have ended one while it was idle.
  while (session && !session->usable()) session = idle_session(connection_text);
  if (!session) {
    session = std::make_unique<Session>(
        open_driver_session(ConnectionText(connection_text), Missing::refuse));
  }
  return {session.release(), [connection_text](Session* returned) {
            instance().give_back(connection_text, std::unique_ptr<Session>(returned));
          }};
}

std::unique_ptr<Session> SessionPool::idle_session(const std::string& connection_text) {
  const std::lock_guard lock(mutex_);
  const auto shelf = shelves_.find(connection_text);
  if (shelf == shelves_.end() || shelf->second.idle.empty()) return nullptr;
  std::unique_ptr<Session> session = std::move(shelf->second.idle.back());
  shelf->second.idle.pop_back();
  return session;
}

void SessionPool::give_back(const std::string& connection_text, std::unique_ptr<Session> session) {
  if (!session->usable() || session->driver().in_transaction()) return;
  const std::lock_guard lock(mutex_);
  const auto shelf = shelves_.find(connection_text);
  if (shelf == shelves_.end() || shelf->second.idle.size() >= kMostIdle) return;
  shelf->second.idle.push_back(std::move(session));
}

void SessionPool::client_opened(const std::string& connection_text) {
  const std::lock_guard lock(mutex_);
  ++shelves_[connection_text].clients;
}

void SessionPool::client_closed(const std::string& connection_text) {
  // The sessions are closed outside the lock: closing may take its time.
  std::vector<std::unique_ptr<Session>> unwanted;
  const std::lock_guard lock(mutex_);
  const auto shelf = shelves_.find(connection_text);
  if (shelf == shelves_.end() || --shelf->second.clients > 0) return;
  unwanted = std::move(shelf->second.idle);
  shelves_.erase(shelf);
}

std::size_t SessionPool::idle(const std::string& connection_text) const {
  const std::lock_guard lock(mutex_);
  const auto shelf = shelves_.find(connection_text);
  return shelf == shelves_.end() ? 0 : shelf->second.idle.size();
}

}  // namespace ombrix::database
