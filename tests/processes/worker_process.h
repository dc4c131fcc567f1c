#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

extern char** environ;

namespace ombrix::testing {

/// A process that creates and processes orders on the database of a connection text.
class Worker {
 public:
  Worker(const std::string& books, std::vector<std::string> arguments) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) fail(errno);
    output_ = ends[0];
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    arguments.insert(arguments.begin(), OMBRIX_ORDER_WORKER);
    std::vector<std::string> variables{"OMBRIX_WORKER_BOOKS=" + books};
    for (char** variable = environ; *variable != nullptr; ++variable) {
      variables.emplace_back(*variable);
    }
    const int error = posix_spawn(&id_, OMBRIX_ORDER_WORKER, &actions, nullptr,
                                  pointers(arguments).data(), pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (error != 0) fail(error);
  }
  Worker(Worker&& other) noexcept
      : id_(std::exchange(other.id_, 0)), output_(std::exchange(other.output_, -1)) {}
  Worker& operator=(Worker&&) = delete;
  ~Worker() {
    if (id_ == 0) return;
    finish();
  }

  /// How it ended: its exit code, or the signal that killed it as a negative number.
  int finish() {
    char buffer[4096];
    for (ssize_t size = 0; (size = read(output_, buffer, sizeof buffer)) > 0;) {
      printed_.append(buffer, static_cast<std::size_t>(size));
    }
    close(output_);
    int status = 0;
    waitpid(std::exchange(id_, 0), &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  }
  /// What it printed, once it has finished.
  const std::string& printed() const { return printed_; }

 private:
  [[noreturn]] static void fail(int error) {
    throw std::system_error(error, std::generic_category(), "order_worker");
  }
  static std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
  }

  pid_t id_ = 0;
  int output_ = -1;
  std::string printed_;
};

}  // namespace ombrix::testing
