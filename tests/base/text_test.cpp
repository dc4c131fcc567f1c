#include "base/text.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string_view>

#include "base/names.h"

namespace ombrix {
namespace {

using namespace std::string_view_literals;

TEST(Text, LosesOnlyBlanksAtItsEnds) {
  EXPECT_EQ(trim("   "), "");
  EXPECT_EQ(trim("  a b  "), "a b");
  EXPECT_EQ(trim("\t a \n"), "\t a \n");
  EXPECT_EQ(trim(" \xC2\xA0 "), "\xC2\xA0");
}

TEST(Text, IsCutByCharactersNotBytes) {
  // A broken byte is a character of its own and takes nothing that follows with it.
  const struct {
    std::string_view text;
    std::size_t count;
    std::string_view first, rest;
  } cases[] = {{"AA1002", 2, "AA", "1002"},
               {"A", 2, "A", ""},
               {"AA", 0, "", "AA"},
               {"AA", static_cast<std::size_t>(-1), "AA", ""},
               {"\u00E9\u00E91", 2, "\u00E9\u00E9", "1"},
               {"\u20AC1", 1, "\u20AC", "1"},
               {"\U0001F600x", 1, "\U0001F600", "x"},
               {"\x80z", 1, "\x80", "z"},
               {"\xE2\x82z", 2, "\xE2\x82", "z"},
               {"\xC3", 1, "\xC3", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(first_of(c.text, c.count), c.first) << c.text;
    EXPECT_EQ(without_first(c.text, c.count), c.rest) << c.text;
    EXPECT_EQ(length_of(c.text), length_of(c.first) + length_of(c.rest)) << c.text;
  }
  EXPECT_EQ(length_of("a\0b\u00E9\u20AC\U0001F600\xED\xA0\x80"sv), 9U);
}

TEST(Text, IsUtf8OnlyInTheShortestFormOfARealCharacter) {
  // First and last characters of each length, and the neighbours of the surrogates.
  for (const auto text :
       {""sv, "\0plain"sv, "\xED\x9F\xBF\xEE\x80\x80"sv,
        "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"sv}) {
    EXPECT_TRUE(is_utf8(text)) << text;
  }
  for (const auto text :
       {"\x80"sv, "\xC0\xAF"sv, "\xC1\xBF"sv, "\xE0\x9F\xBF"sv, "\xED\xA0\x80"sv, "\xED\xBF\xBF"sv,
        "\xF0\x8F\xBF\xBF"sv, "\xF4\x90\x80\x80"sv, "\xF5\x80\x80\x80"sv, "\xC3"sv, "\xE2\x82"sv,
        "\xE2\x28\xA1"sv, "\xF0\x9F\x98z"sv, "\xC3\xC3"sv, "ok\xFF"sv}) {
    EXPECT_FALSE(is_utf8(text)) << text;
  }
}

TEST(Name, IsComparedWithoutRegardToAsciiCase) {
  EXPECT_TRUE(same_name("LPO_No", "lpo_NO"));
  EXPECT_FALSE(same_name("LPO_No", "LPO_N"));
  EXPECT_FALSE(same_name("LPO_N", "LPO_No"));
  // The pairs differ by the bit that tells capital from small letters, but are no letters.
  EXPECT_FALSE(same_name("@[", "`{"));
  EXPECT_FALSE(same_name("\u00C9", "\u00E9"));
  EXPECT_EQ(lower_name("Vendor_MASTER9\u00C9"), "vendor_master9\u00C9");
}

TEST(Name, IsPlainWithoutAnythingAStatementCouldTrip) {
  for (const auto name : {"_", "LPO_Detail", "x9"}) EXPECT_TRUE(is_plain_name(name)) << name;
  for (const auto name : {""sv, "9a"sv, "a b"sv, "a;"sv, "a'"sv, "a.b"sv, "[a]"sv, "\"a\""sv,
                          "a-b"sv, "\u00E9"sv, "a\0"sv}) {
    EXPECT_FALSE(is_plain_name(name)) << name;
  }
}

}  // namespace
}  // namespace ombrix
