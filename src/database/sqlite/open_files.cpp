#include "database/sqlite/open_files.h"

#include <algorithm>
#include <filesystem>
#include <mutex>

namespace ombrix::database {

struct OpenFiles::Holder {
  std::filesystem::path file;
  std::thread::id thread;
  std::atomic<bool> in_transaction{false};
};

namespace {

struct List {
  std::mutex mutex;
  std::vector<std::weak_ptr<void>> holders;
};

List& list() {
  // Never destroyed: a connection of the client's may outlive the statics of this library.
  static auto* list = new List;
  return *list;
}

}  // namespace

OpenFiles::Entry OpenFiles::enter(const std::string& path) {
  auto holder = std::make_shared<Holder>();
  std::error_code error;
  holder->file = std::filesystem::canonical(path, error);
  if (error) holder->file = path;
  holder->thread = std::this_thread::get_id();

  const std::lock_guard lock(list().mutex);
  std::erase_if(list().holders, [](const auto& other) { return other.expired(); });
  list().holders.push_back(holder);
  Entry entry;
  entry.holder_ = std::move(holder);
  return entry;
}

void OpenFiles::Entry::set_in_transaction(bool in_transaction) {
  holder_->in_transaction.store(in_transaction, std::memory_order_relaxed);
}

bool OpenFiles::Entry::held_on_this_thread() const {
  const std::lock_guard lock(list().mutex);
  return std::any_of(list().holders.begin(), list().holders.end(), [this](const auto& weak) {
    const auto other = std::static_pointer_cast<Holder>(weak.lock());
    return other && other != holder_ && other->in_transaction &&
           other->thread == std::this_thread::get_id() && other->file == holder_->file;
  });
}

}  // namespace ombrix::database
