#include "recorder/station_address.h"

#include <gtest/gtest.h>

namespace recorder {
namespace {

TEST(StationAddress, TheHostIsTheAddressWithoutPortUserAndPath) {
  EXPECT_EQ(HostOf(u"http://radio.example/live"), u"radio.example");
  EXPECT_EQ(HostOf(u"https://radio.example:8000"), u"radio.example");
  EXPECT_EQ(HostOf(u"http://user:p@ss@radio.example:8000?x=a@b:c/d"), u"radio.example");
  EXPECT_EQ(HostOf(u"http://[2001:db8::1]:8000/live"), u"[2001:db8::1]");
  EXPECT_EQ(HostOf(u"http://[2001"), u"[2001");
  EXPECT_EQ(HostOf(u"http://"), u"");
  EXPECT_EQ(HostOf(u"radio.example"), u"");
}

}  // namespace
}  // namespace recorder
