#include "hosting/c/values.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

#include "base/text.h"
#include "hosting/c/handles.h"

namespace ombrix::c {

namespace {

std::int64_t seconds_of(const Date& date) {
  return date.since_zero().count();
}

/// Most texts are, and then need no look at each character.
bool is_ascii(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::uint64_t seen = 0;
  for (; text.size() >= sizeof seen; text.remove_prefix(sizeof seen)) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data(), sizeof word);
    seen |= word;
  }
  for (const char c : text) seen |= static_cast<unsigned char>(c);
  return (seen & kHighBits) == 0;
}

Value object_from(ombrix_handle handle) {
  if (handle == 0) return Value(ObjectRef());
  ObjectRef object = Handles::instance().find(handle);
  if (!object) throw Refusal{OMBRIX_INVALID_HANDLE, "The handle of a value is not held."};
  return Value(std::move(object));
}

void put_text(ombrix_value& target, std::string_view text) {
  auto bytes = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(bytes.get(), text.data(), text.size());
  target.type = OMBRIX_TEXT;
  target.flags = OMBRIX_OWNED;
  target.as.text = {bytes.release(), static_cast<int64_t>(text.size())};
}

/// Writes the plain kinds; texts and objects need an owner.
struct Filler {
  ombrix_value& target;

  void plain(int32_t type) const {
    target.type = type;
    target.flags = 0;
  }
  void operator()(Empty) const { plain(OMBRIX_EMPTY); }
  void operator()(Null) const { plain(OMBRIX_NULL); }
  void operator()(bool flag) const {
    plain(OMBRIX_BOOLEAN);
    target.as.integer = flag ? 1 : 0;
  }
  void operator()(std::int32_t number) const {
    plain(OMBRIX_LONG);
    target.as.integer = number;
  }
  void operator()(double number) const {
    plain(OMBRIX_DOUBLE);
    target.as.number = number;
  }
  void operator()(const Date& date) const {
    plain(OMBRIX_DATE);
    target.as.seconds = seconds_of(date);
  }
  void operator()(const std::string& text) const { put_text(target, text); }
  void operator()(const ObjectRef& object) const {
    target.as.object = Handles::instance().add(object);
    target.type = OMBRIX_OBJECT;
    target.flags = OMBRIX_OWNED;
  }
};

}  // namespace

std::string_view checked_text(const char* bytes, int64_t length) {
  if (bytes == nullptr && length == 0) return {};
  if (bytes == nullptr || length < OMBRIX_NUL_TERMINATED ||
      length > std::numeric_limits<std::int32_t>::max()) {
    throw Refusal{OMBRIX_INVALID_ARGUMENT, "A text is missing or its length is out of range."};
  }
  const std::string_view text(
      bytes, length == OMBRIX_NUL_TERMINATED ? std::strlen(bytes) : static_cast<size_t>(length));
  if (!is_ascii(text) && !is_utf8(text)) throw Refusal{OMBRIX_INVALID_TEXT, "A text is not UTF-8."};
  return text;
}

Value from_c(const ombrix_value& value) {
  switch (value.type) {
    case OMBRIX_EMPTY:
      return {};
    case OMBRIX_NULL:
      return Null{};
    case OMBRIX_BOOLEAN:
      return value.as.integer != 0;
    case OMBRIX_LONG:
      return value.as.integer;
    case OMBRIX_DOUBLE:
      return value.as.number;
    case OMBRIX_DATE:
      return Date::from_seconds(std::chrono::seconds(value.as.seconds));
    case OMBRIX_TEXT:
      return checked_text(value.as.text.bytes, value.as.text.length);
    case OMBRIX_OBJECT:
      return object_from(value.as.object);
    default:
      throw Refusal{OMBRIX_INVALID_ARGUMENT, "A value has a type that there is not."};
  }
}

void write(ombrix_value& target, const Value& value) {
  std::visit(Filler{target}, value.content());
}

void fill(ombrix_value& target, const Value& value) {
  clear(target);
  write(target, value);
}

void clear(ombrix_value& value) {
  if ((value.flags & OMBRIX_OWNED) != 0) {
    if (value.type == OMBRIX_TEXT) delete[] value.as.text.bytes;
    if (value.type == OMBRIX_OBJECT) Handles::instance().remove(value.as.object);
  }
  value = ombrix_value{};
}

std::vector<Value> arguments_from(const ombrix_value* arguments, size_t count) {
  if (count > OMBRIX_MOST_ARGUMENTS || (arguments == nullptr && count > 0)) {
    throw Refusal{OMBRIX_INVALID_ARGUMENT, "The arguments are missing or too many."};
  }
  std::vector<Value> values;
  values.reserve(count);
  for (size_t i = 0; i < count; ++i) values.push_back(from_c(arguments[i]));
  return values;
}

// Delegates, so that a failure half way still ends the handles.
LentArguments::LentArguments(std::span<const Value> values) : LentArguments() {
  values_.resize(values.size());
  handles_.reserve(values.size());
  for (size_t i = 0; i < values.size(); ++i) {
    ombrix_value& lent = values_[i];
    if (const auto* text = std::get_if<std::string>(&values[i].content())) {
      lent.type = OMBRIX_TEXT;
      lent.as.text = {text->c_str(), static_cast<int64_t>(text->size())};
    } else {
      write(lent, values[i]);
      if (lent.type == OMBRIX_OBJECT) handles_.push_back(lent.as.object);
    }
    lent.flags = OMBRIX_BY_REFERENCE;
  }
}

LentArguments::~LentArguments() {
  for (ombrix_value& value : values_) clear(value);
  for (const ombrix_handle handle : handles_) Handles::instance().remove(handle);
}

}  // namespace ombrix::c
