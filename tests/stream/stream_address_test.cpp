#include "stream/stream_address.h"

#include <gtest/gtest.h>

namespace stream {
namespace {

constexpr std::uint32_t kReload = 0x80000000u;
constexpr std::uint32_t kReloadSecure = 0x80800000u;

void ExpectTarget(TextView address, TextView host, std::uint16_t port, TextView path, std::uint32_t flags) {
  const auto target = QueryTargetOf(address);
  ASSERT_TRUE(target);
  EXPECT_EQ(target->host, host);
  EXPECT_EQ(target->port, port);
  EXPECT_EQ(target->path, path);
  EXPECT_EQ(target->flags, flags);
}

TEST(StreamAddress, OpenFlagsFollowThePrefixInAnyCase) {
  EXPECT_EQ(OpenFlagsOf(u"http://a"), kReload);
  EXPECT_EQ(OpenFlagsOf(u"HttpS://a"), kReloadSecure);
  EXPECT_EQ(OpenFlagsOf(u"ftp://a"), std::nullopt);
  EXPECT_EQ(OpenFlagsOf(u""), std::nullopt);
}

TEST(StreamAddress, HostPortAndPath) {
  ExpectTarget(u"http://radio.example:8000/live", u"radio.example", 8000, u"/live", kReload);
  ExpectTarget(u"https://radio.example/stream.mp3", u"radio.example", 443, u"/stream.mp3", kReloadSecure);
}

TEST(StreamAddress, AnEndWithSemicolonStaysInThePath) {
  ExpectTarget(u"http://radio.example:8000/;", u"radio.example", 8000, u"/;", kReload);
}

TEST(StreamAddress, AQueryStaysInThePath) {
  ExpectTarget(u"http://h/s?a=b&c=http:%2F", u"h", 80, u"/s?a=b&c=http:%2F", kReload);
}

TEST(StreamAddress, WithoutASlashThePathIsTheWholeRest) {
  ExpectTarget(u"http://radio.example:8000", u"radio.example", 8000, u"radio.example:8000", kReload);
}

TEST(StreamAddress, ALineEndBehindThePortIsNoPartOfIt) {
  ExpectTarget(u"http://h:8000\r\n", u"h", 8000, u"h:8000\r\n", kReload);
  EXPECT_FALSE(QueryTargetOf(u"http://h:80\r00/").has_value());
}

TEST(StreamAddress, WithoutSlashAndPortThereIsNoHost) {
  ExpectTarget(u"http://radio.example", u"", 80, u"radio.example", kReload);
}

TEST(StreamAddress, OtherSchemesHaveNoHost) {
  ExpectTarget(u"mms://h/s", u"", 0, u"", 0);
  ExpectTarget(u"radio.example/live", u"", 0, u"", 0);
}

TEST(StreamAddress, EveryLowerCaseSchemeIsRemoved) {
  ExpectTarget(u"http://h/go?to=http://x/y", u"h", 80, u"/go?to=x/y", kReload);
  ExpectTarget(u"https://h/go?to=https://x/y", u"h", 443, u"/go?to=x/y", kReloadSecure);
  ExpectTarget(u"https://h/go?to=http://x/y", u"h", 443, u"/go?to=http://x/y", kReloadSecure);
  ExpectTarget(u"http://h/go?to=https://x/y", u"h", 80, u"/go?to=https://x/y", kReload);
}

TEST(StreamAddress, AnUpperCaseSchemeStaysAndSpoilsTheHost) {
  EXPECT_FALSE(QueryTargetOf(u"HTTP://radio.example/live").has_value());
}

TEST(StreamAddress, APortThatIsNoPortFails) {
  EXPECT_FALSE(QueryTargetOf(u"http://h:x/").has_value());
  EXPECT_FALSE(QueryTargetOf(u"http://h:/").has_value());
  EXPECT_FALSE(QueryTargetOf(u"http://h:65536/").has_value());
  EXPECT_FALSE(QueryTargetOf(u"http://h:-1/").has_value());
  EXPECT_FALSE(QueryTargetOf(u"http://h:80:81/").has_value());
  EXPECT_FALSE(QueryTargetOf(u"http://[::1]:8000/").has_value());
}

}  // namespace
}  // namespace stream
