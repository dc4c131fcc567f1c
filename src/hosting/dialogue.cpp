#include "hosting/dialogue.h"

#include <iostream>
#include <mutex>
#include <utility>

namespace ombrix {

namespace {

constexpr std::string_view kTitle = "OmbrixPurchase";

std::mutex mutex;
std::shared_ptr<Dialogue> client_dialogue;

/// A reference of its own, so that a dialogue that is replaced meanwhile lives through its call.
std::shared_ptr<Dialogue> dialogue() {
  const std::lock_guard lock(mutex);
  return client_dialogue;
}

}  // namespace

void set_dialogue(std::shared_ptr<Dialogue> dialogue) {
  const std::lock_guard lock(mutex);
  client_dialogue.swap(dialogue);
}

void show_message(std::string_view text) {
  if (const auto box = dialogue()) {
    box->message(text, kTitle);
  } else {
    std::cerr << kTitle << ": " << text << '\n';
  }
}

std::string ask(std::string_view prompt, std::string_view preset) {
  const auto box = dialogue();
  return box ? box->input(prompt, kTitle, preset) : std::string();
}

}  // namespace ombrix
