#include "playlist/web_address.h"

#include <gtest/gtest.h>

namespace playlist {
namespace {

using app::Text;

TEST(WebAddressTest, IsHttpOrHttpsInAnyLetterCaseWithAHost) {
  EXPECT_TRUE(IsWebAddress(u"http://a"));
  EXPECT_TRUE(IsWebAddress(u"HTTPS://radio.example:8000/live.mp3?x=1,2#y"));
  EXPECT_TRUE(IsWebAddress(u"http://[::1]:8000/"));
  for (const Text& text :
       {Text(u""), Text(u"http"), Text(u"http://"), Text(u"http:///a"), Text(u"http://:80/"),
        Text(u"http://user@/a"), Text(u"http://a b/"), Text(u" http://a"), Text(u"ftp://a"),
        Text(u"httpx://a"), Text(u"http:a"), Text(u"C:\\a.mp3"), Text(u"http://[]/")}) {
    EXPECT_FALSE(IsWebAddress(text)) << std::string(text.begin(), text.end());
  }
}

TEST(WebAddressTest, BeginningIsSoughtInsideTheTextOnly) {
  const app::TextView address = u"http://a";
  EXPECT_TRUE(StartsWithIgnoringCase(address, u"http://"));
  EXPECT_FALSE(StartsWithIgnoringCase(address.substr(0, 3), u"http://"));
}

TEST(WebAddressTest, ContainsNoControlCharacterAndIsOfBoundedLength) {
  EXPECT_FALSE(IsWebAddress(u"http://a/\tb"));
  EXPECT_FALSE(IsWebAddress(Text(u"http://a/\0b", 11)));
  EXPECT_FALSE(IsWebAddress(u"http://a/\u007F"));
  const Text longest = u"http://a/" + Text(kLongestAddress - 9, u'x');
  EXPECT_TRUE(IsWebAddress(longest));
  EXPECT_FALSE(IsWebAddress(longest + u'x'));
}

TEST(WebAddressTest, HostIsWithoutUserPortAndBrackets) {
  EXPECT_EQ(HostOf(u"http://radio.example/live"), u"radio.example");
  EXPECT_EQ(HostOf(u"http://radio.example"), u"radio.example");
  EXPECT_EQ(HostOf(u"https://user:p@ss@radio.example:8443?x@y"), u"radio.example");
  EXPECT_EQ(HostOf(u"http://radio.example#a/b"), u"radio.example");
  EXPECT_EQ(HostOf(u"http://[2001:db8::1]:8000/"), u"2001:db8::1");
  EXPECT_EQ(HostOf(u"http://[2001:db8"), u"2001:db8");
  EXPECT_EQ(HostOf(u"radio.example/live"), u"");
}

}  // namespace
}  // namespace playlist
