#include "base/text.h"

#include <algorithm>

namespace ombrix {
namespace {

struct LeadByte {
  std::size_t length;
  unsigned char second_low;
  unsigned char second_high;
};

// The narrowed ranges of the second byte are what keeps out overlong forms, surrogates and what
// lies beyond U+10FFFF; every later byte runs from 0x80 to 0xBF.
LeadByte lead_byte(unsigned char byte) {
  if (byte < 0x80) return {1, 0, 0};
  if (byte < 0xC2) return {0, 0, 0};
  if (byte < 0xE0) return {2, 0x80, 0xBF};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte < 0xF0) return {3, 0x80, 0xBF};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte < 0xF4) return {4, 0x80, 0xBF};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

/// Bytes of the well-formed character at the head of a text that is not empty; 0 when it is broken.
std::size_t sequence_length(std::string_view text) {
  const LeadByte lead = lead_byte(static_cast<unsigned char>(text.front()));
  if (lead.length < 2) return lead.length;
  if (text.size() < lead.length) return 0;
  const auto second = static_cast<unsigned char>(text[1]);
  if (second < lead.second_low || second > lead.second_high) return 0;
  for (std::size_t at = 2; at < lead.length; ++at) {
    if ((static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) return 0;
  }
  return lead.length;
}

/// A broken byte stands for itself, so that cutting a text always gets on and loses nothing.
std::size_t character_length(std::string_view text) {
  return std::max<std::size_t>(1, sequence_length(text));
}

std::size_t bytes_of_first(std::string_view text, std::size_t count) {
  std::size_t bytes = 0;
  for (; count > 0 && bytes < text.size(); --count) bytes += character_length(text.substr(bytes));
  return bytes;
}

}  // namespace

std::string_view trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view without_first(std::string_view text, std::size_t count) {
  return text.substr(bytes_of_first(text, count));
}

std::string_view first_of(std::string_view text, std::size_t count) {
  return text.substr(0, bytes_of_first(text, count));
}

std::size_t length_of(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(character_length(text));
  return count;
}

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t bytes = sequence_length(text);
    if (bytes == 0) return false;
    text.remove_prefix(bytes);
  }
  return true;
}

}  // namespace ombrix
