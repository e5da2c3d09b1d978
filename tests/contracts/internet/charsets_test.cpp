// Charsets by their names, as the system decodes them.

#include <gtest/gtest.h>

#include "internet_under_test.h"

namespace platform {
namespace {

using under_test::DecodeCharset;

TEST(Charsets, AreDecodedByTheirNames) {
  EXPECT_EQ(DecodeCharset("windows-1251", "\xCF\xF0"), u"\u041F\u0440");
  EXPECT_EQ(DecodeCharset("iso-8859-15", "\xA4"), u"\u20AC");
  EXPECT_EQ(DecodeCharset("iso-8859-2", "\xB1"), u"\u0105");
  EXPECT_EQ(DecodeCharset("shift_jis", "\x83\x41"), u"\u30A2");
  EXPECT_EQ(DecodeCharset("euc-jp", "\xA5\xA2"), u"\u30A2");
  EXPECT_EQ(DecodeCharset("koi8-r", ""), u"");
}

TEST(Charsets, NamesThatTheSystemDoesNotKnowGiveNothing) {
  for (const char* name : {"no-such-thing", "iso-8859-", "windows-", "windows-99999", "cp0", "xx1252"}) {
    for (const char* body : {"x", ""}) EXPECT_EQ(DecodeCharset(name, body), std::nullopt) << name;
  }
}

TEST(Charsets, ALongBodyIsDecodedWhole) {
  EXPECT_EQ(DecodeCharset("koi8-r", std::string(100'000, '\xE4')), Text(100'000, u'\u0414'));
}

}  // namespace
}  // namespace platform
