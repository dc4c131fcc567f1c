#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "ombrix/ombrix.h"

namespace ombrix::testing {

/// How deep callbacks call the library that calls them.
inline constexpr int kMostDepth = 3;
inline constexpr std::size_t kMostHeld = 60;

/// A client that does whatever comes up. Everything it gets it keeps, and gives back at the end.
class FuzzClient {
 public:
  FuzzClient(std::uint64_t seed, std::string folder);
  ~FuzzClient();
  FuzzClient(const FuzzClient&) = delete;
  FuzzClient& operator=(const FuzzClient&) = delete;

  /// One call at the interface, any of them.
  void step();
  /// Releases, unregisters and ends all that is left.
  void end();

  std::uint64_t calls() const { return calls_; }
  std::uint64_t refused() const { return refused_; }
  std::uint64_t callbacks() const { return callbacks_; }
  /// How often a method of an order answered True.
  std::uint64_t done() const { return done_; }
  /// Instances and contexts that the library holds.
  int living() const { return living_; }

 private:
  /// Answers whether it is OMBRIX_OK; ends the process when it is no documented status or tells no
  /// reason.
  bool check(ombrix_status status);

  std::uint64_t below(std::uint64_t count) { return random_() % count; }
  bool one_in(std::uint64_t count) { return below(count) == 0; }
  template <class T>
  const T& pick(const std::vector<T>& from) {
    return from[below(from.size())];
  }

  ombrix_handle any_handle();
  const char* any_member();
  const char* any_class();
  ombrix_value any_value();
  std::vector<ombrix_value> any_arguments();
  void keep(ombrix_handle handle);
  /// Takes over the object of a value that the library filled, and ends the rest.
  void keep(ombrix_value& value);

  void make();
  void make_order();
  void set_grid(ombrix_handle order);
  void let_go();
  void use();
  void call();
  void look();
  void host();
  void scribble();

  ombrix_functions functions();
  /// Answers as a grid with a line would, for the members that a grid reads.
  bool as_grid(const char* member, ombrix_value* result);
  /// What a callback of this client does before it answers.
  ombrix_status inside(ombrix_value* arguments, std::size_t count, ombrix_value* result);

  static ombrix_status on_get(void* self, const char* member, const ombrix_value* arguments,
                              std::size_t count, ombrix_value* result);
  static ombrix_status on_let(void* self, const char* member, const ombrix_value* arguments,
                              std::size_t count, const ombrix_value* value);
  static ombrix_status on_set(void* self, const char* member, ombrix_handle value);
  static ombrix_status on_call(void* self, const char* member, ombrix_value* arguments,
                               std::size_t count, ombrix_value* result);
  static ombrix_status on_make(void* self, ombrix_handle* object);
  static void on_end(void* self);

  std::mt19937_64 random_;
  std::string folder_;
  std::vector<std::string> connection_texts_;
  std::vector<ombrix_handle> held_;
  std::vector<ombrix_handle> stale_;
  /// Some that were made lately; they may be gone by now.
  std::vector<ombrix_handle> orders_;
  /// Those that a method of runs now, the innermost last.
  std::vector<ombrix_handle> busy_;
  std::vector<std::uint64_t> registrations_;
  std::uint64_t calls_ = 0;
  std::uint64_t refused_ = 0;
  std::uint64_t callbacks_ = 0;
  std::uint64_t done_ = 0;
  int depth_ = 0;
  int living_ = 0;
};

}  // namespace ombrix::testing
