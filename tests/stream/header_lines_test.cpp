#include "stream/header_lines.h"

#include <gtest/gtest.h>

namespace stream {
namespace {

using Lines = std::vector<Text>;

TEST(HeaderLines, TheNamesHaveTheirFixedPlaces) {
  EXPECT_EQ(HeaderName(0), u"icy-name");
  EXPECT_EQ(HeaderName(1), u"ice-audio-info");
  EXPECT_EQ(HeaderName(2), u"icy-audio-info");
  EXPECT_EQ(HeaderName(3), u"icy-description");
  EXPECT_EQ(HeaderName(4), u"icy-br");
  EXPECT_EQ(HeaderName(5), u"icy-sr");
  EXPECT_EQ(HeaderName(6), u"icy-genre");
  EXPECT_EQ(HeaderName(7), u"icy-url");
  EXPECT_EQ(HeaderName(8), u"icy-pub");
  EXPECT_EQ(HeaderName(9), u"icy-metaint");
  EXPECT_EQ(HeaderName(10), u"Content-Type");
  EXPECT_EQ(HeaderName(11), u"Server");
  EXPECT_EQ(HeaderName(12), u"Date");
  EXPECT_EQ(HeaderName(13), u"Expires");
}

TEST(HeaderLines, ValuesWithAndWithoutABlankAfterTheColon) {
  const Lines lines{u"HTTP/1.1 200 OK", u"icy-metaint:16000", u"Content-Type: audio/mpeg", u"", u""};
  EXPECT_EQ(HeaderValues(lines, 9), u"16000");
  EXPECT_EQ(HeaderValues(lines, 10), u"audio/mpeg");
}

TEST(HeaderLines, NamesAreFoundInAnyCase) {
  EXPECT_EQ(HeaderValues({u"content-type: audio/aac"}, 10), u"audio/aac");
  EXPECT_EQ(HeaderValues({u"ICY-MetaInt:8192"}, 9), u"8192");
}

TEST(HeaderLines, ANameWithABlankBeforeItIsAnotherName) {
  EXPECT_EQ(HeaderValues({u" icy-name:X"}, 0), u"");
  EXPECT_EQ(HeaderValues({u"icy-name :X"}, 0), u"");
}

TEST(HeaderLines, AValueEndsAtItsFirstColon) {
  EXPECT_EQ(HeaderValues({u"Date: Mon, 01 Jan 2024 10:00:00 GMT"}, 12), u"Mon, 01 Jan 2024 10");
}

TEST(HeaderLines, TheStationsAddressKeepsItsFirstColon) {
  EXPECT_EQ(HeaderValues({u"icy-url:http://radio.example:8080/"}, 7), u"http://radio.example");
  EXPECT_EQ(HeaderValues({u"icy-url: https : //x "}, 7), u"https://x");
}

TEST(HeaderLines, SeveralLinesAreJoinedByCommas) {
  EXPECT_EQ(HeaderValues({u"icy-genre:Rock", u"x:y", u"icy-genre:Pop"}, 6), u"Rock,Pop");
}

TEST(HeaderLines, AnEmptyValueIsEmpty) {
  EXPECT_EQ(HeaderValues({u"icy-genre:"}, 6), u"");
  EXPECT_EQ(HeaderValues({u"icy-genre:", u"icy-genre:Pop"}, 6), u",Pop");
}

TEST(HeaderLines, OnlyOneClosingCommaIsDropped) { EXPECT_EQ(HeaderValues({u"icy-genre:a,"}, 6), u"a,"); }

TEST(HeaderLines, AnUnknownIndexGivesNothing) {
  const Lines lines{u"icy-name:X", u"Expires:y", u":z"};
  EXPECT_EQ(HeaderValues(lines, 14), u"");
  EXPECT_EQ(HeaderValues(lines, -1), u"");
  EXPECT_EQ(HeaderValues(lines, 2147483647), u"");
}

TEST(HeaderLines, ALineWithoutTheNeededPieceEndsTheLookUpWithNothing) {
  EXPECT_EQ(HeaderValues({u"icy-name:X", u"icy-name"}, 0), u"");
  EXPECT_EQ(HeaderValues({u"icy-url:www.radio.example"}, 7), u"");
}

TEST(HeaderLines, NoSuchLineGivesNothing) { EXPECT_EQ(HeaderValues({u"", u"x:y"}, 0), u""); }

}  // namespace
}  // namespace stream
