#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/contracts/internet/client_rig.h"

namespace platform {
namespace {

using test_support::AudioBytes;
using test_support::MetadataBlock;
using test_support::Page;
using test_support::Redirect;

constexpr std::int32_t kInterval = 64;

class StreamClient : public testing::Test {
 protected:
  void Station(Script script) { rig_.server.On("/live", std::move(script)); }
  // A station that sends one block and plays on.
  void StationWithBlock(const std::string& text) {
    Station(Script().Send(kOk).Send(AudioBytes(kInterval) + MetadataBlock(text)).Flood(std::string(64, 'a')));
  }
  // Sets the address, without a word about the query's outcome.
  void Tune(const std::string& target = "/live") { rig_.client->StreamUrl(Wide(rig_.server.Url(target))); }
  Text Title() {
    Tune();
    return rig_.client->ReadStreamMetaData2(kInterval);
  }

  ClientRig rig_;
};

TEST_F(StreamClient, HeadersAsRealServersSendThem) {
  Station(Script()
              .Send("ICY 200 OK\r\nicy-metaint:8192\r\nICY-NAME: K\xFC"
                    "che\r\nicy-genre:\r\n"
                    "icy-url:http://radio.example:8000/\r\ncontent-type:audio/mpeg\r\n\r\n")
              .Hold());
  Tune();
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(9), u"8192");
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(0), u"K\u00FCche");
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(6), u"");
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(7), u"http://radio.example");
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(10), u"audio/mpeg");
  EXPECT_TRUE(rig_.client->GetStreamQueryInfoRawCrLf().starts_with(u"ICY 200 OK\r\n"));
  EXPECT_TRUE(rig_.client->GetStreamQueryInfoRawCrLf().ends_with(u"audio/mpeg\r\n\r\n"));
}

TEST_F(StreamClient, AnAddressThatEndsInASemicolonIsAskedForAsItIs) {
  rig_.server.On("/;", Script().Send(Header("ICY 200 OK", {"icy-br:128"})).Hold());
  Tune("/;");
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(4), u"128");
  EXPECT_EQ(rig_.server.Requests().at(0).target, "/;");
}

TEST_F(StreamClient, ALineEndThatCameAlongWithAnAddressIsNotAskedFor) {
  StationWithBlock("StreamTitle='Song';");
  Tune("/live\r");
  EXPECT_EQ(rig_.client->LastQueryFailure(), stream::QueryFailure());
  EXPECT_EQ(rig_.client->ReadStreamMetaData2(kInterval), u"Song");
  rig_.client->IsUrlPlaylist(Wide(rig_.server.Url("/live\r")));
  // Without a slash the path is the whole rest of the address.
  const std::string host = rig_.server.Url("");
  rig_.client->StreamUrl(Wide(host + "\r"));
  const auto requests = rig_.server.Requests();
  ASSERT_EQ(requests.size(), 4U);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(requests[i].target, "/live");
  EXPECT_EQ(requests[3].target, "/" + host.substr(std::string("http://").size()));
}

TEST_F(StreamClient, ARedirectKeepsItsQuery) {
  rig_.server.On("/live", Redirect("302 Found", "/real?token=1&a=b"));
  rig_.server.On("/real?token=1&a=b",
                 Script().Send(Header("HTTP/1.1 200 OK", {"icy-metaint: 16000"})).Hold());
  Tune();
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(9), u"16000");
}

TEST_F(StreamClient, AServerThatCutsItsHeaderKeepsTheEarlierLines) {
  Station(Script().Send(Header("ICY 200 OK", {"icy-metaint:8192"})).Hold());
  Tune();
  rig_.server.On("/cut", Script().Send("ICY 200 OK\r\nicy-metaint:1").Reset());
  Tune("/cut");
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(9), u"8192");
}

TEST_F(StreamClient, TitlesAsRealServersSendThem) {
  const std::pair<std::string, Text> cases[] = {
      {"StreamTitle='Artist - Song';StreamUrl='http://x';", u"Artist - Song"},
      {"StreamUrl='http://x';StreamTitle='Artist - Song';", u"Artist - Song"},
      {"StreamTitle='New';tail of an old title';", u"New"},
      {"StreamTitle='Rock &amp; Roll';", u"Rock &amp"},
      {"StreamTitle='One\r\nTwo';", u"One\rTwo"},
      {"\xEF\xBB\xBFStreamTitle='Song';", u"Song"},
      {"StreamTitle='\xCF\xF0\xE8\xE2\xE5\xF2';", u"\u00CF\u00F0\u00E8\u00E2\u00E5\u00F2"},
      {std::string("StreamTitle='\xFF\xFE"
                   "A\0B\0';",
                   21),
       Text(u"\u00FF\u00FEA\0B\0", 6)},
      {"StreamTitle='Open end'", Text(u"Open end\0\0\0\0\0\0\0\0\0\0", 18)},
  };
  for (const auto& [block, title] : cases) {
    StationWithBlock(block);
    EXPECT_EQ(Title(), title) << block;
  }
}

TEST_F(StreamClient, ABlockIsFoundHoweverItIsCutIntoPackets) {
  const std::string bytes =
      AudioBytes(kInterval) + MetadataBlock("StreamTitle='Artist - Song';") + AudioBytes(kInterval);
  for (std::size_t piece = 1; piece < 24; ++piece) {
    Station(Script().Send(kOk).SendInPieces(bytes, piece));
    EXPECT_EQ(Title(), u"Artist - Song") << piece;
  }
}

TEST_F(StreamClient, ABlockIsFoundWhenTheServerPausesAnywhereInIt) {
  const std::string block = MetadataBlock("StreamTitle='Artist - Song';");
  for (const std::size_t split : {0U, 1U, 5U, 20U, 32U}) {
    Station(Script()
                .Send(kOk)
                .Send(AudioBytes(kInterval) + block.substr(0, split))
                .Stall(600ms)  // longer than a read waits for more
                .Send(block.substr(split))
                .Flood("a"));
    EXPECT_EQ(Title(), u"Artist - Song") << split;
  }
}

TEST_F(StreamClient, AStreamThatIsCutTimesOut) {
  const std::string block = MetadataBlock("StreamTitle='Artist - Song';");
  Station(Script().Send(kOk).Send(AudioBytes(kInterval) + block.substr(0, 10)).Reset());
  EXPECT_EQ(Title(), u"TimeOut");
}

TEST_F(StreamClient, TheReadersAskForTitles) {
  StationWithBlock("StreamTitle='Song';");
  Title();
  const auto requests = rig_.server.Requests();
  ASSERT_EQ(requests.size(), 2U);
  for (const auto& request : requests) {
    EXPECT_EQ(request.Header("User-Agent"), "WinampMPEG/5.09");
    EXPECT_EQ(request.Header("Icy-MetaData"), "1");
  }
  EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
}

TEST_F(StreamClient, PlaylistsOfEveryKindAreResolved) {
  rig_.server.On("/a.pls",
                 Page("audio/x-scpls", "[playlist]\r\nnumberofentries=1\r\nFile1=http://h/pls\r\n"));
  rig_.server.On("/b.m3u", Page("audio/x-mpegurl", "#EXTM3U\r\n#EXTINF:-1,X\r\nhttp://h/m3u"));
  rig_.server.On("/c.txt", Page("text/plain", "http://h/bare"));
  for (const auto& [target, wanted] :
       {std::pair("/a.pls", u"http://h/pls"), std::pair("/b.m3u", u"http://h/m3u"),
        std::pair("/c.txt", u"http://h/bare")}) {
    // The whole-second clock may tick at once, so that even a good answer can come too late.
    bool resolved = false;
    for (int i = 0; i < 20 && !resolved; ++i)
      resolved = rig_.client->IsUrlPlaylist(Wide(rig_.server.Url(target)));
    EXPECT_TRUE(resolved) << target;
    Text address, title;
    rig_.client->GetPlaylistEntry(0, address, title);
    EXPECT_EQ(address, wanted);
  }
}

TEST_F(StreamClient, ALiveStreamIsNoPlaylistAsSoonAsItsHeaderIsThere) {
  rig_.server.On("/live", Script().Send(Header("HTTP/1.1 200 OK", {"Content-Type: audio/mpeg"})).Hold());
  // While the clock does not advance only the answer itself can end the query.
  test_support::FakeClock clock;
  const auto deadline = std::chrono::steady_clock::now() + kDeadline;
  rig_.loop.on_pump = [&] {
    if (std::chrono::steady_clock::now() > deadline) ++clock.whole_seconds;
  };
  const stream::Ports ports{rig_.internet, rig_.requests, rig_.files,     rig_.environment,
                            clock,         rig_.loop,     rig_.conversion};
  EXPECT_FALSE(stream::clsFunkhaus(ports).IsUrlPlaylist(Wide(rig_.server.Url("/live"))));
  EXPECT_EQ(clock.whole_seconds, test_support::FakeClock().whole_seconds);
  if (under_test::EndsPlaylistRequests()) {
    EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
  }
}

TEST_F(StreamClient, ASilentServerIsWaitedForOnceAndThenFailsAtOnce) {
  Station(Script().Hold());
  const auto seconds_to_tune = [this] {
    const auto start = std::chrono::steady_clock::now();
    Tune();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  const double first = seconds_to_tune();
  EXPECT_GE(first, 3.0);
  EXPECT_LT(first, 8.0) << "not the ten seconds of the internet library";
  EXPECT_EQ(rig_.client->LastQueryFailure().kind, stream::QueryFailure::Kind::kNoAnswer);
  Tune();
  EXPECT_EQ(rig_.client->ReadStreamMetaData2(kInterval), u"");
  EXPECT_EQ(rig_.server.Connections(), 1) << "nobody was asked again";
  EXPECT_EQ(rig_.client->LastQueryFailure().kind, stream::QueryFailure::Kind::kNoAnswer);
}

TEST_F(StreamClient, AnEndlessStreamIsNoPlaylistAndIsSoonClosed) {
  rig_.server.On("/live", Script().Send(kOk).Flood("[playlist]\r\n"));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(rig_.client->IsUrlPlaylist(Wide(rig_.server.Url("/live"))));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
  EXPECT_GT(rig_.loop.pumps, 0);
  if (under_test::EndsPlaylistRequests()) {
    EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
  }
}

TEST_F(StreamClient, ReleasingItEndsARunningReaderAndItsConnection) {
  Station(Script().Send(kOk).Hold());
  Tune();
  rig_.loop.on_pump = [this] { rig_.client.reset(); };
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(rig_.client->ReadStreamMetaData2(kInterval), u"");
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
  if (under_test::EndsSilentConnections()) {
    EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
  }
}

}  // namespace
}  // namespace platform
