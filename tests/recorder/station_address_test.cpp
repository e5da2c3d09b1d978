#include "recorder/station_address.h"

#include <gtest/gtest.h>

#include "tests/recorder/recorder_rig.h"

namespace recorder {
namespace {

class StationAddress : public testing::Test {
 protected:
  StreamFacts Facts(const Text& header_lines) {
    rig_.internet.answer.raw_headers = u"HTTP/1.1 200 OK\r\n" + header_lines + u"\r\n";
    stream::clsFunkhaus client({rig_.internet, rig_.requests, rig_.record_files, rig_.environment, rig_.clock,
                                rig_.loop, rig_.conversion});
    client.StreamUrl(kLink);
    return FactsOf(client, rig_.conversion);
  }
  Text Address(const Text& link) {
    stream::clsFunkhaus client({rig_.internet, rig_.requests, rig_.record_files, rig_.environment, rig_.clock,
                                rig_.loop, rig_.conversion});
    return AddressOf(client, rig_.files, rig_.conversion, link);
  }

  RecorderRig rig_;
};

TEST_F(StationAddress, AHeaderOfAStationMakesALengthNoFile) {
  EXPECT_TRUE(Facts(u"Content-Type: audio/mpeg\r\nContent-Length: 9\r\n").is_file);
  EXPECT_FALSE(Facts(u"Content-Type: audio/mpeg\r\n").is_file);
  EXPECT_FALSE(Facts(u"Content-Type: audio/mpeg\r\nContent-Length: 9\r\nicy-br: 128\r\n").is_file);
  EXPECT_FALSE(Facts(u"Content-Type: audio/mpeg\r\nContent-Length: 9\r\nIce-Audio-Info: x\r\n").is_file);
}

TEST_F(StationAddress, PagesPlaylistsAndEveryKindOfTextAreNoSound) {
  for (const Text type :
       {u"text/html", u"text/plain", u"Text/xml; charset=utf-8", u"application/xhtml+xml", u"audio/x-mpegurl",
        u"application/vnd.apple.mpegurl", u"audio/x-scpls", u"application/xspf+xml"}) {
    EXPECT_FALSE(Facts(u"Content-Type: " + type + u"\r\n").is_sound) << test_support::Ascii(type);
  }
  for (const Text type : {u"audio/mpeg", u"application/ogg", u"application/octet-stream", u""}) {
    EXPECT_TRUE(Facts(u"Content-Type: " + type + u"\r\n").is_sound) << test_support::Ascii(type);
  }
}

TEST_F(StationAddress, OfADoubledHeaderTheFirstValueCounts) {
  const StreamFacts facts = Facts(
      u"icy-metaint: 16000\r\nicy-metaint: 8192\r\nContent-Type: audio/aac\r\nContent-Type: text/html\r\n");
  EXPECT_EQ(facts.metaint, u"16000");
  EXPECT_EQ(facts.content_type, u"audio/aac");
  EXPECT_TRUE(facts.is_sound);
}

TEST_F(StationAddress, AnIntervalThatIsNoCountIsNone) {
  for (const Text value : {u"0", u"-1", u"x", u""}) {
    EXPECT_EQ(Facts(u"icy-metaint: " + value + u"\r\n").metaint, u"");
  }
}

TEST_F(StationAddress, TheHostIsTheAddressWithoutPortUserAndPath) {
  EXPECT_EQ(HostOf(u"http://radio.example/live"), u"radio.example");
  EXPECT_EQ(HostOf(u"https://radio.example:8000"), u"radio.example");
  EXPECT_EQ(HostOf(u"http://user:p@ss@radio.example:8000?x=a@b:c/d"), u"radio.example");
  EXPECT_EQ(HostOf(u"http://[2001:db8::1]:8000/live"), u"[2001:db8::1]");
  EXPECT_EQ(HostOf(u"http://[2001"), u"[2001");
  EXPECT_EQ(HostOf(u"http://"), u"");
  EXPECT_EQ(HostOf(u"radio.example"), u"");
}

TEST_F(StationAddress, SchemeAndPathAreSuchAsTheServerIsAskedWith) {
  EXPECT_EQ(Address(u"HTTP://Radio.Example/Live"), u"http://Radio.Example/Live");
  EXPECT_EQ(Address(u"Https://radio.example"), u"https://radio.example/");
  EXPECT_EQ(Address(u"http://radio.example?x=/y"), u"http://radio.example/?x=/y");
  EXPECT_EQ(Address(u"http://radio.example:8000/;stream"), u"http://radio.example:8000/;stream");
  EXPECT_EQ(Address(u"MMS://radio.example"), u"MMS://radio.example");
  rig_.files.files[u"/home/u/mein.m3u"] = "#EXTM3U\r\n#EXTINF:-1,X\r\nhttp://radio.example\r\n";
  EXPECT_EQ(Address(u"/home/u/mein.m3u"), u"http://radio.example/");
}

}  // namespace
}  // namespace recorder
