#include "platform/disk/utf.h"

#include <gtest/gtest.h>

#include <string>

namespace platform::disk {
namespace {

TEST(UtfTest, EveryCharacterComesBackFromBothEncodings) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    std::string bytes;
    AppendUtf8(bytes, character);
    const auto from_bytes = DecodeUtf8(bytes + "x");
    ASSERT_TRUE(from_bytes.has_value());
    ASSERT_EQ(from_bytes->character, character);
    ASSERT_EQ(from_bytes->size, bytes.size());
    Text units;
    AppendUtf16(units, character);
    const DecodedCharacter from_units = DecodeUtf16(units + u"x");
    ASSERT_EQ(from_units.character, character);
    ASSERT_EQ(from_units.size, units.size());
  }
}

TEST(UtfTest, TheEncodingsAreThoseOfTheStandard) {
  std::string bytes;
  Text units;
  for (const char32_t character :
       {U'\u007F', U'\u0080', U'\u07FF', U'\u0800', U'\uFFFF', U'\U00010000', U'\U0010FFFF'}) {
    AppendUtf8(bytes, character);
    AppendUtf16(units, character);
  }
  EXPECT_EQ(bytes, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
  EXPECT_EQ(units, u"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF");
}

TEST(UtfTest, BytesThatAreNoCharacterAreNone) {
  for (const std::string bytes :
       {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3(", "\xE0\x9F\xBF", "\xE2\x82",
        "\xF0\x8F\xBF\xBF", "\xF0\x9D\x84", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
    EXPECT_FALSE(DecodeUtf8(bytes).has_value()) << testing::PrintToString(bytes);
  }
}

TEST(UtfTest, ASurrogateWithoutItsPartnerIsItself) {
  for (const Text& units :
       {Text{char16_t{0xD800}}, Text{char16_t{0xD800}, u'x'}, Text{char16_t{0xDC00}, char16_t{0xD800}}}) {
    const DecodedCharacter decoded = DecodeUtf16(units);
    EXPECT_EQ(decoded.character, char32_t{units.front()});
    EXPECT_EQ(decoded.size, 1U);
    EXPECT_TRUE(IsSurrogate(decoded.character));
  }
  EXPECT_FALSE(IsSurrogate(0xD7FF));
  EXPECT_FALSE(IsSurrogate(0xE000));
}

}  // namespace
}  // namespace platform::disk
