#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ombrix/ombrix.h"
#include "ombrix/value.h"

namespace ombrix::scenarios {

/// Stands under a sibling's name while it lives, and notes what it is told: "new" for each
/// instance, "Member=value", "Method(argument,argument)".
class StandIn {
 public:
  /// Passes everything on to the component that stood there, or plays one of its own that reads
  /// back what was set and answers True.
  enum class Role : bool { watches, plays };

  /// `books` is told from other connections by its name.
  StandIn(std::string component, Role role, ombrix_handle books);
  ~StandIn();
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;

  std::vector<std::string> told;
  /// What members read as, and methods ("NextNo()") answer, before anything was set.
  std::map<std::string, Value> presets;
  /// The call, counted from 1, that answers False; 0 for none. Its reason reads as `ErrDesc`.
  int refused_call = 0;

 private:
  friend struct Instance;
  void enter();
  static ombrix_status make(void* context, ombrix_handle* object);

  std::string component_;
  Role role_;
  ombrix_handle books_;
  std::uint64_t registration_ = 0;
  int calls_ = 0;
};

/// The message and input boxes of the process while it lives: what was shown, and what is answered.
class Boxes {
 public:
  Boxes();
  ~Boxes();
  Boxes(const Boxes&) = delete;
  Boxes& operator=(const Boxes&) = delete;

  std::vector<std::vector<std::string>> shown;
  std::string answer;
};

}  // namespace ombrix::scenarios
