#include "database/connection_text.h"

#include <algorithm>
#include <charconv>

#include "ombrix/failure.h"

#include "base/names.h"
#include "base/text.h"

namespace ombrix::database {

namespace {

[[noreturn]] void raise_text(const std::string& what) {
  throw Failure(kDatabaseFailure, "Invalid connection text: " + what);
}

/// Takes the value at the head of `rest`, with or without double quotes, and its `;`.
std::string take_value(std::string_view& rest) {
  const auto start = rest.find_first_not_of(' ');
  rest.remove_prefix(start == std::string_view::npos ? rest.size() : start);
  std::string value;
  if (rest.starts_with('"')) {
    const auto close = rest.find('"', 1);
    if (close == std::string_view::npos) raise_text("a double quote is not closed.");
    value = rest.substr(1, close - 1);
    rest.remove_prefix(close + 1);
    const auto end = rest.find(';');
    if (!trim(rest.substr(0, end)).empty()) {
      raise_text("something stands behind a quoted value.");
    }
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return value;
  }
  const auto end = rest.find(';');
  value = trim(rest.substr(0, end));
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return value;
}

}  // namespace

ConnectionText::ConnectionText(std::string_view text) {
  std::string_view rest = text;
  while (!trim(rest).empty()) {
    if (rest.starts_with(';') || rest.starts_with(' ')) {
      rest.remove_prefix(1);
      continue;
    }
    const auto equals = rest.find_first_of("=;");
    if (equals == std::string_view::npos || rest[equals] == ';') {
      raise_text("a pair is no \"Key=Value\".");
    }
    const std::string key = lower_name(trim(rest.substr(0, equals)));
    if (key.empty()) raise_text("a key is missing before \"=\".");
    rest.remove_prefix(equals + 1);
    if (!values_.emplace(key, take_value(rest)).second) raise_text("a key is given twice.");
  }
}

const std::string& ConnectionText::operator[](std::string_view key) const {
  static const std::string kMissing;
  const auto found = values_.find(key);
  return found == values_.end() ? kMissing : found->second;
}

const std::string& ConnectionText::required(std::string_view key, std::string_view display) const {
  const std::string& value = (*this)[key];
  if (value.empty()) raise_text("\"" + std::string(display) + "\" is missing.");
  return value;
}

void ConnectionText::only(std::initializer_list<std::string_view> keys) const {
  for (const auto& [key, value] : values_) {
    if (std::find(keys.begin(), keys.end(), key) != keys.end()) continue;
    if (values_.contains("password") || values_.contains("pwd")) raise_text("a key is not known.");
    raise_text("the key \"" + key + "\" is not known.");
  }
}

int ConnectionText::busy_timeout() const {
  constexpr int kDefault = 5000;
  const std::string& text = (*this)["busy timeout"];
  if (text.empty()) return kDefault;
  int milliseconds = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, milliseconds);
  if (error != std::errc() || stop != end || milliseconds < 0) {
    raise_text("\"Busy Timeout\" takes a whole number of milliseconds.");
  }
  return milliseconds;
}

}  // namespace ombrix::database
