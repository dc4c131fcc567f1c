#include "frame/text.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string_view>

namespace ombrix {
namespace {

using namespace std::string_view_literals;

TEST(Text, LosesOnlyBlanksAtItsEnds) {
  const struct {
    std::string_view text;
    std::string_view trimmed;
  } cases[] = {
      {"", ""},
      {"   ", ""},
      {"a", "a"},
      {"  a b  ", "a b"},
      {"\t a \n", "\t a \n"},
      {" \xC2\xA0 ", "\xC2\xA0"},
  };
  for (const auto& c : cases) EXPECT_EQ(trim(c.text), c.trimmed);
}

TEST(Text, IsCutByCharactersNotBytes) {
  const struct {
    std::string_view text;
    std::size_t count;
    std::string_view first;
    std::string_view rest;
  } cases[] = {
      {"AA1002", 2, "AA", "1002"},
      {"AA", 2, "AA", ""},
      {"A", 2, "A", ""},
      {"", 2, "", ""},
      {"AA", 0, "", "AA"},
      {"AA", static_cast<std::size_t>(-1), "AA", ""},
      {"\u00E9\u00E91", 2, "\u00E9\u00E9", "1"},
      {"\u20AC1", 1, "\u20AC", "1"},
      {"\U0001F600x", 1, "\U0001F600", "x"},
      // A broken byte is a character of its own and takes nothing that follows with it.
      {"\x80z", 1, "\x80", "z"},
      {"\xE2\x82z", 2, "\xE2\x82", "z"},
      {"\xC3", 1, "\xC3", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(first_of(c.text, c.count), c.first) << c.text;
    EXPECT_EQ(without_first(c.text, c.count), c.rest) << c.text;
  }
}

TEST(Text, IsAsLongAsItsCharacters) {
  const struct {
    std::string_view text;
    std::size_t length;
  } cases[] = {
      {"", 0},
      {"abc", 3},
      {"a\0b"sv, 3},
      {"\u00E9\u20AC\U0001F600", 3},
      {"\xE2\x82", 2},
      {"\xED\xA0\x80", 3},
      {"\xFF\xFE"
       "a",
       3},
  };
  for (const auto& c : cases) EXPECT_EQ(length_of(c.text), c.length) << c.text;
}

TEST(Text, IsUtf8OnlyInTheShortestFormOfARealCharacter) {
  const struct {
    std::string_view text;
    bool valid;
  } cases[] = {
      {"", true},
      {"plain", true},
      {"\0"sv, true},
      // First and last characters of each length, and the neighbours of the surrogates.
      {"\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", true},
      {"\xED\x9F\xBF\xEE\x80\x80", true},
      {"\x80", false},
      {"\xC0\xAF", false},
      {"\xC1\xBF", false},
      {"\xE0\x9F\xBF", false},
      {"\xED\xA0\x80", false},
      {"\xED\xBF\xBF", false},
      {"\xF0\x8F\xBF\xBF", false},
      {"\xF4\x90\x80\x80", false},
      {"\xF5\x80\x80\x80", false},
      {"\xC3", false},
      {"\xE2\x82", false},
      {"\xE2\x28\xA1", false},
      {"\xF0\x9F\x98", false},
      {"\xF0\x9F\x98z", false},
      {"\xC3\xC3", false},
      {"ok\xFF", false},
  };
  for (const auto& c : cases) EXPECT_EQ(is_utf8(c.text), c.valid) << c.text;
}

TEST(Name, IsComparedWithoutRegardToAsciiCase) {
  EXPECT_TRUE(same_name("LPO_No", "lpo_NO"));
  EXPECT_TRUE(same_name("", ""));
  EXPECT_FALSE(same_name("LPO_No", "LPO_N"));
  EXPECT_FALSE(same_name("LPO_N", "LPO_No"));
  // The pairs differ by the bit that tells capital from small letters, but are no letters.
  EXPECT_FALSE(same_name("@[", "`{"));
  EXPECT_FALSE(same_name("\u00C9", "\u00E9"));
  EXPECT_EQ(lower_name("Vendor_MASTER9\u00C9"), "vendor_master9\u00C9");
}

TEST(Name, IsPlainWithoutAnythingAStatementCouldTrip) {
  for (const auto name : {"a", "_", "LPO_Detail", "x9", "_9"}) {
    EXPECT_TRUE(is_plain_name(name)) << name;
  }
  for (const auto name : {"", "9a", "a b", "a;", "a'", "a.b", "[a]", "\"a\"", "a-b", "\u00E9"}) {
    EXPECT_FALSE(is_plain_name(name)) << name;
  }
  EXPECT_FALSE(is_plain_name("a\0"sv));
}

}  // namespace
}  // namespace ombrix
