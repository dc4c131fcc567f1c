#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix::database {

/// The `Key=Value` pairs of a connection text. Failures name the key that is wrong and never repeat
/// a value, since a value may be a password.
class ConnectionText {
 public:
  explicit ConnectionText(std::string_view text);

  /// "" when the key is missing. Keys are given in lower case.
  const std::string& operator[](std::string_view key) const;
  /// Raises, naming the key, when it is missing or empty.
  const std::string& required(std::string_view key, std::string_view display) const;
  /// Raises when there is a key that is not among these; names it, unless the text has a password,
  /// of which a stray key may be a part.
  void only(std::initializer_list<std::string_view> keys) const;
  /// Milliseconds that a call waits for another writer.
  int busy_timeout() const;

 private:
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace ombrix::database
