#include "platform/gstreamer/address.h"

#include <gtest/gtest.h>

#include "platform/gstreamer/results.h"
#include "tests/platform/gstreamer/session_driver.h"

namespace gstreamer_test {
namespace {

using platform::gstreamer::Address;
using platform::gstreamer::ResolveAddress;
using platform::gstreamer::TextFromUtf8;
using platform::gstreamer::Utf8FromText;

class AddressTest : public testing::Test {
 protected:
  std::string Uri(const Text& text) { return ResolveAddress(text, paths).uri; }
  PlainPaths paths;
};

TEST_F(AddressTest, WebAddressesStayAsTheyAre) {
  EXPECT_EQ(Uri(u"http://a.example:8000/;stream.mp3?x=%20&y#z"),
            "http://a.example:8000/;stream.mp3?x=%20&y#z");
  EXPECT_EQ(Uri(u"HTTPS://a.example/"), "HTTPS://a.example/");
  EXPECT_FALSE(ResolveAddress(u"http://a.example/", paths).local_file);
}

TEST_F(AddressTest, WhatNoUriMayContainIsEscaped) {
  EXPECT_EQ(Uri(u"http://a.example/B\u00FCrger radio|1"), "http://a.example/B%C3%BCrger%20radio%7C1");
}

TEST_F(AddressTest, AHostWithUmlautsIsSpelledInAscii) {
  EXPECT_EQ(Uri(u"http://b\u00FCcher.example/x"), "http://xn--bcher-kva.example/x");
}

TEST_F(AddressTest, FileNamesBecomeFileAddresses) {
  EXPECT_EQ(Uri(u"\\music\\a b.mp3"), "file:///music/a%20b.mp3");
  EXPECT_EQ(Uri(u"/music/50%25.mp3"), "file:///music/50%2525.mp3");
  EXPECT_TRUE(ResolveAddress(u"/music/a.mp3", paths).local_file);
}

TEST_F(AddressTest, FileAddressesMayBeWrittenLoosely) {
  EXPECT_EQ(Uri(u"file:///music/a%20b.mp3"), "file:///music/a%20b.mp3");
  EXPECT_EQ(Uri(u"file:///music/a b.mp3"), "file:///music/a%20b.mp3");
  EXPECT_EQ(Uri(u"file://localhost/music/a.mp3"), "file:///music/a.mp3");
  EXPECT_EQ(Uri(u"FILE:///music\\a.mp3"), "file:///music/a.mp3");
}

TEST_F(AddressTest, BlanksAndControlCharactersAtTheEndsAreDropped) {
  EXPECT_EQ(Uri(u"http://a.example/live\r"), "http://a.example/live");
  EXPECT_EQ(Uri(u" \t http://a.example/live\r\n\x7F"), "http://a.example/live");
  EXPECT_EQ(Uri(Text(u"\0http://a.example/\x1F\0", 20)), "http://a.example/");
  EXPECT_EQ(Uri(u"http://a.example/a b \t"), "http://a.example/a%20b") << "those within belong to it";
  EXPECT_EQ(Uri(u"http://a.example/a\u00A0\u0080"), "http://a.example/a%C2%A0%C2%80") << "others stay";
  EXPECT_EQ(Uri(u"/music/a b.mp3\r"), "file:///music/a%20b.mp3");
  EXPECT_EQ(Uri(u"\tfile:///music/a.mp3 "), "file:///music/a.mp3");
  EXPECT_EQ(ResolveAddress(u" rtsp://a.example/x\r", paths).result,
            platform::gstreamer::kMfEUnsupportedScheme);
  EXPECT_EQ(ResolveAddress(u" \r\n\t", paths).result, platform::kEInvalidArg);
}

TEST_F(AddressTest, OtherSchemesAndEmptyTextsAreRefused) {
  EXPECT_EQ(ResolveAddress(u"rtsp://a.example/x", paths).result, platform::gstreamer::kMfEUnsupportedScheme);
  EXPECT_EQ(ResolveAddress(u"", paths).result, platform::kEInvalidArg);
  EXPECT_EQ(ResolveAddress(Text(u"/a\0b", 4), paths).result, platform::kEInvalidArg);
  EXPECT_EQ(ResolveAddress(u"file://", paths).result, platform::kEInvalidArg);
  EXPECT_EQ(ResolveAddress(u"file:///a%00b", paths).result, platform::kEInvalidArg);
}

TEST_F(AddressTest, BrokenTextBecomesTheReplacementCharacter) {
  EXPECT_EQ(Utf8FromText(Text(u"a\xD800z")), "a\xEF\xBF\xBDz");
  EXPECT_EQ(Utf8FromText(u"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(TextFromUtf8("a\xFFz"), u"a\xFFFDz");
}

}  // namespace
}  // namespace gstreamer_test
