#include "stream/record_name.h"

#include <gtest/gtest.h>

namespace stream {
namespace {

Text Name(TextView title, TextView extension = u".mp3", std::size_t longest = 255) {
  return RecordFileName(title, extension, longest);
}

TEST(ExtensionOf, KnowsTheContentTypesInAnyCase) {
  EXPECT_EQ(ExtensionOf(u"Audio/MPEG"), u".mp3");
  EXPECT_EQ(ExtensionOf(u"audio/aac"), u".m4a");
  EXPECT_EQ(ExtensionOf(u"audio/aacp"), u".m4a");
  EXPECT_EQ(ExtensionOf(u"audio/mp4"), u".m4a");
  EXPECT_EQ(ExtensionOf(u"audio/ogg"), u".ogg");
  EXPECT_EQ(ExtensionOf(u"application/ogg"), u".ogg");
}

TEST(ExtensionOf, ComparesTheContentTypeAsAWhole) {
  EXPECT_EQ(ExtensionOf(u"audio/x-scpls"), u"");
  EXPECT_EQ(ExtensionOf(u"audio/mpeg; charset=utf-8"), u"");
  EXPECT_EQ(ExtensionOf(u" audio/mpeg"), u"");
  EXPECT_EQ(ExtensionOf(u""), u"");
}

TEST(RecordFileName, KeepsAnOrdinaryTitle) {
  EXPECT_EQ(Name(u"Artist - Song (Remix) [2024] 'x' \u00FC\u20AC"),
            u"Artist - Song (Remix) [2024] 'x' \u00FC\u20AC.mp3");
}

TEST(RecordFileName, ReplacesEveryForbiddenCharacter) {
  EXPECT_EQ(Name(u"a/b\\c:d*e?f\"g<h>i|j"), u"a_b_c_d_e_f_g_h_i_j.mp3");
  EXPECT_EQ(Name(Text(u"a\0b\x1F"
                      u"c\x7F"
                      u"d\x9F"
                      u"e\r\nf",
                      12)),
            u"a_b_c_d_e__f.mp3");
}

TEST(RecordFileName, NeverLeavesTheFolder) {
  EXPECT_EQ(Name(u"../../etc/passwd", u""), u".._.._etc_passwd");
  EXPECT_EQ(Name(u"..", u""), u"_");
  EXPECT_EQ(Name(u".", u""), u"_");
  EXPECT_EQ(Name(u"..", u".mp3"), u"...mp3");
  EXPECT_EQ(Name(u"/", u""), u"_");
  EXPECT_EQ(Name(u"C:\\x", u""), u"C__x");
}

TEST(RecordFileName, DropsDotsAndBlanksAtTheEndOfANameWithoutAnExtension) {
  EXPECT_EQ(Name(u"Song. . .", u""), u"Song");
  EXPECT_EQ(Name(u" .Song", u""), u" .Song");
}

TEST(RecordFileName, KeepsDotsAndBlanksBeforeTheExtension) {
  EXPECT_EQ(Name(u"Song ", u".ogg"), u"Song .ogg");
  EXPECT_EQ(Name(u"Song. . .", u".mp3"), u"Song. . ..mp3");
  EXPECT_EQ(Name(u"abc .def", u".mp3", 9), u"abc ..mp3") << "a cut takes no more than it must";
}

TEST(RecordFileName, AnEmptyRestBecomesAnUnderscore) {
  EXPECT_EQ(Name(u"", u""), u"_");
  EXPECT_EQ(Name(u" . ", u""), u"_");
  EXPECT_EQ(Name(u"", u".mp3"), u"_.mp3");
}

TEST(RecordFileName, CutsALongTitleAndKeepsTheExtension) {
  EXPECT_EQ(Name(Text(300, u'a')), Text(251, u'a') + u".mp3");
  EXPECT_EQ(Name(Text(251, u'a')), Text(251, u'a') + u".mp3");
}

TEST(RecordFileName, CutsBetweenCharacters) {
  EXPECT_EQ(Name(Text(10, u'\u00FC'), u".mp3", 9), u"\u00FC\u00FC.mp3");
  EXPECT_EQ(Name(u"a\U0001F3B5\U0001F3B5", u".mp3", 8), u"a.mp3");
  EXPECT_EQ(Name(u"a\U0001F3B5\U0001F3B5", u".mp3", 12), u"a\U0001F3B5.mp3");
  EXPECT_EQ(Name(u"\U0001F3B5\U0001F3B5", u".mp3", 12), u"\U0001F3B5\U0001F3B5.mp3");
  EXPECT_EQ(Name(u"\u20AC\u20AC", u"", 5), u"\u20AC");
}

TEST(RecordFileName, WhatACutLeavesAtTheEndIsDroppedToo) { EXPECT_EQ(Name(u"abc .def", u"", 5), u"abc"); }

TEST(RecordFileName, HalvesOfSurrogatePairsAreReplaced) {
  EXPECT_EQ(Name(Text{u'a', 0xD83C, u'b', 0xDFB5}), u"a_b_.mp3");
}

TEST(RecordFileName, DeviceNamesGetAnUnderscore) {
  EXPECT_EQ(Name(u"CON"), u"CON_.mp3");
  EXPECT_EQ(Name(u"nul.tar"), u"nul_.tar.mp3");
  EXPECT_EQ(Name(u"lpt1", u""), u"lpt1_");
  EXPECT_EQ(Name(u"COM\u00B9"), u"COM\u00B9_.mp3");
  EXPECT_EQ(Name(u"aux .x"), u"aux _.x.mp3");
  EXPECT_EQ(Name(u"con .", u""), u"con_") << "behind the name, not behind what is dropped";
  EXPECT_EQ(Name(u"Contact"), u"Contact.mp3");
  EXPECT_EQ(Name(u"COMA"), u"COMA.mp3");
  for (const char16_t* name :
       {u"COM", u"COM10", u"LPT12", u"XCON", u"Nullen", u"CONIN$1", u"a con", u"con a"}) {
    EXPECT_EQ(Name(name), Text(name) + u".mp3") << "a device's name is the whole name";
  }
}

}  // namespace
}  // namespace stream
