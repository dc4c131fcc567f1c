#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace ombrix::database {

/// Which database files this process has open, by which thread, and which of these sessions hold a
/// transaction. Safe from any thread.
class OpenFiles {
  struct Holder;

 public:
  /// One session on a file; leaves the list when it goes.
  class Entry {
   public:
    Entry() = default;
    void set_in_transaction(bool in_transaction);
    /// Whether another session on this file, opened on the calling thread, holds a transaction.
    bool held_on_this_thread() const;

   private:
    friend class OpenFiles;
    std::shared_ptr<Holder> holder_;
  };

  static Entry enter(const std::string& path);
};

}  // namespace ombrix::database
