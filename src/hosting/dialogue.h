#pragma once

#include <string>
#include <string_view>

#include "ombrix/dialogue.h"

namespace ombrix {

/// Shows a message under the title of the library.
void show_message(std::string_view text);

/// Asks under the title of the library.
std::string ask(std::string_view prompt, std::string_view preset);

}  // namespace ombrix
