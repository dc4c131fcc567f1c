#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace ombrix {

/// The client's message and input boxes. Without one a message goes to standard error and the
/// input box answers "".
class Dialogue {
 public:
  virtual ~Dialogue() = default;
  virtual void message(std::string_view text, std::string_view title) = 0;
  /// "" when the user cancels.
  virtual std::string input(std::string_view prompt, std::string_view title,
                            std::string_view preset) = 0;
};

/// Sets the dialogue of the whole process; an empty one removes it.
void set_dialogue(std::shared_ptr<Dialogue> dialogue);

}  // namespace ombrix
