#include "platform/http/body_text.h"

#include <gtest/gtest.h>

#include "tests/support/plain_text_conversion.h"

namespace platform::http {
namespace {

Text Decode(std::string_view body, std::string_view content_type) {
  test_support::PlainTextConversion conversion;
  const DecodeCharset decode_charset = [](const std::string& charset, std::string_view bytes) {
    return charset == "turned" ? std::optional(Text(bytes.rbegin(), bytes.rend())) : std::nullopt;
  };
  return DecodeBody(conversion, decode_charset, body, content_type);
}

TEST(BodyText, IsUtf8WhenNothingElseIsNamed) {
  EXPECT_EQ(Decode("K\xC3\xBC", ""), u"K\u00FC");
  EXPECT_EQ(Decode("K\xC3\xBC", "audio/x-scpls"), u"K\u00FC");
  EXPECT_EQ(Decode("K\xC3\xBC", "text/plain; charset=\"UTF-8\""), u"K\u00FC");
  EXPECT_EQ(Decode("K\xFC!", ""), u"K\uFFFD!");
}

TEST(BodyText, FollowsTheNamedCharset) {
  EXPECT_EQ(Decode("K\xFC\x80", "text/plain; charset=ISO-8859-1"), u"K\u00FC\u20AC");
  EXPECT_EQ(Decode("ab", "text/plain;charset=turned; x=y"), u"ba") << "by the system";
  EXPECT_EQ(Decode("ab", "text/plain; Charset='Turned'"), u"ba");
  EXPECT_EQ(Decode(std::string_view("a\0\xAC\x20", 4), "text/plain; charset=utf-16le"), u"a\u20AC");
  EXPECT_EQ(Decode(std::string_view("a\0\xAC\x20", 4), "text/plain; charset=utf-16"), u"a\u20AC");
  EXPECT_EQ(Decode(std::string_view("\0a\x20\xAC", 4), "text/plain; charset=utf-16be"), u"a\u20AC");
}

TEST(BodyText, AByteOrderMarkDecidesFirst) {
  EXPECT_EQ(Decode("\xEF\xBB\xBF"
                   "K\xC3\xBC",
                   "text/plain; charset=iso-8859-1"),
            u"K\u00FC");
  EXPECT_EQ(Decode(std::string_view("\xFF\xFE"
                                    "a\0",
                                    4),
                   "text/plain"),
            u"a");
  EXPECT_EQ(Decode(std::string_view("\xFE\xFF"
                                    "\0a",
                                    4),
                   "text/plain"),
            u"a");
}

TEST(BodyText, AnUnknownCharsetIsUtf8) {
  EXPECT_EQ(Decode("\xC3\xBC", "text/plain; charset=no-such-thing"), u"\u00FC");
  EXPECT_EQ(Decode("\xC3\xBC", "text/plain; charset="), u"\u00FC");
  EXPECT_EQ(Decode("\xC3\xBC", "text/plain; charset=" + std::string(500, 'x')), u"\u00FC");
  EXPECT_EQ(Decode("\xC3\xBC", "text/plain; charset=//IGNORE"), u"\u00FC");
}

TEST(BodyText, ALoneSurrogateInUtf16StaysAsItIs) {
  const Text lone = {u'a', char16_t{0xD83D}, u'b', char16_t{0xDC00}};
  EXPECT_EQ(Decode(std::string_view("\xFF\xFE"
                                    "a\0\x3D\xD8"
                                    "b\0\0\xDC",
                                    10),
                   ""),
            lone);
  EXPECT_EQ(Decode(std::string_view("\0a\xD8\x3D\0b\xDC\0", 8), "text/plain; charset=utf-16be"), lone);
}

TEST(BodyText, HalfAUnitAtTheEndIsAReplacement) {
  EXPECT_EQ(Decode("\xFF\xFE"
                   "a",
                   ""),
            u"\uFFFD");
}

}  // namespace
}  // namespace platform::http
