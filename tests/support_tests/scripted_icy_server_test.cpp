#include "tests/support/scripted_icy_server.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support_tests/raw_client.h"

namespace test_support {
namespace {

using namespace std::chrono_literals;

class Client : public RawClient {
 public:
  explicit Client(const ScriptedIcyServer& server) : RawClient(server.Port()) {}
};

const std::string kIcyHeader = Header("ICY 200 OK", {"icy-name:Test", "icy-metaint:16"});

TEST(ScriptedIcyServer, AnswersWithTheBytesOfTheScriptAndEnds) {
  ScriptedIcyServer server;
  server.On("/a", Script().Send(kIcyHeader).Send("body"));
  EXPECT_EQ(Client(server).Ask("/a").ReadToEnd(),
            "ICY 200 OK\r\nicy-name:Test\r\nicy-metaint:16\r\n\r\nbody");
}

TEST(ScriptedIcyServer, RecordsTheRequestAsItCame) {
  ScriptedIcyServer server;
  Client(server).Ask("/a?b=c", "Icy-MetaData:1\r\nUser-Agent: x y\r\n").ReadToEnd();
  ASSERT_TRUE(server.WaitForAllClosed(kDeadline));
  const auto requests = server.Requests();
  ASSERT_EQ(requests.size(), 1U);
  EXPECT_EQ(requests[0].line, "GET /a?b=c HTTP/1.0");
  EXPECT_EQ(requests[0].target, "/a?b=c");
  EXPECT_EQ(requests[0].headers, "Icy-MetaData:1\r\nUser-Agent: x y\r\n");
  EXPECT_EQ(requests[0].Header("icy-metadata"), "1");
  EXPECT_EQ(requests[0].Header("USER-AGENT"), "x y");
  EXPECT_EQ(requests[0].Header("Range"), std::nullopt);
  EXPECT_EQ(requests[0].connection, 1);
  EXPECT_TRUE(requests[0].finished);
  EXPECT_EQ(requests[0].bytes_sent, server.BytesSent());
}

TEST(ScriptedIcyServer, PrefersTheAnswerWithTheQueryThenThePathThenAny) {
  ScriptedIcyServer server;
  server.On("/a", Script().Send("path"));
  server.On("/a?x", Script().Send("query"));
  EXPECT_EQ(Client(server).Ask("/a?x").ReadToEnd(), "query");
  EXPECT_EQ(Client(server).Ask("/a?y").ReadToEnd(), "path");
  EXPECT_EQ(Client(server).Ask("/b").ReadToEnd().substr(0, 12), "HTTP/1.1 404");
  server.OnAny(Script().Send("any"));
  EXPECT_EQ(Client(server).Ask("/b").ReadToEnd(), "any");
}

TEST(ScriptedIcyServer, GivesEachRequestItsOwnScriptAndRepeatsTheLast) {
  ScriptedIcyServer server;
  server.OnEach("/a", {Script().Send("one"), Script().Send("two")});
  EXPECT_EQ(Client(server).Ask("/a").ReadToEnd(), "one");
  EXPECT_EQ(Client(server).Ask("/a").ReadToEnd(), "two");
  EXPECT_EQ(Client(server).Ask("/a").ReadToEnd(), "two");
  EXPECT_EQ(server.Connections(), 3);
}

TEST(ScriptedIcyServer, SendsByteByByteWithGaps) {
  ScriptedIcyServer server;
  server.On("/a", Script().SendInPieces("abcdef", 1, 5ms));
  Client client(server);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(client.Ask("/a").ReadToEnd(), "abcdef");
  EXPECT_GE(std::chrono::steady_clock::now() - start, 25ms);
}

TEST(ScriptedIcyServer, AwaitsTheSignalOfTheTest) {
  ScriptedIcyServer server;
  server.On("/a", Script().Send("first").Mark("sent").AwaitSignal("go").Send("second"));
  Client client(server);
  EXPECT_EQ(client.Ask("/a").Read(5), "first");
  EXPECT_TRUE(server.WaitForMark("sent", kDeadline));
  EXPECT_TRUE(client.NothingArrivesFor(30ms));
  server.Signal("go");
  EXPECT_EQ(client.ReadToEnd(), "second");
}

TEST(ScriptedIcyServer, StallsForTheTime) {
  ScriptedIcyServer server;
  server.On("/a", Script().Send("first").Stall(40ms).Send("second"));
  Client client(server);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(client.Ask("/a").ReadToEnd(), "firstsecond");
  EXPECT_GE(std::chrono::steady_clock::now() - start, 40ms);
}

TEST(ScriptedIcyServer, NoticesThatTheClientLeavesAHeldOrAwaitingConnection) {
  ScriptedIcyServer server;
  server.On("/hold", Script().Send("x").Hold());
  server.On("/await", Script().Send("x").AwaitSignal("never"));
  for (const char* target : {"/hold", "/await"}) {
    Client client(server);
    EXPECT_EQ(client.Ask(target).Read(1), "x");
    EXPECT_EQ(server.OpenConnections(), 1);
    EXPECT_FALSE(server.WaitForAllClosed(20ms));
    client.Close();
    EXPECT_TRUE(server.WaitForAllClosed(kDeadline));
  }
}

TEST(ScriptedIcyServer, ResetsAfterWhatWasSentHasArrived) {
  ScriptedIcyServer server;
  server.On("/a", Script().Send("all of it").Reset());
  Client client(server);
  EXPECT_EQ(client.Ask("/a").Read(9), "all of it");
  EXPECT_EQ(client.NextRead(), "reset");
}

TEST(ScriptedIcyServer, ClosesCleanlyEvenWhenTheClientHasSentMore) {
  ScriptedIcyServer server;
  server.On("/a", Script().Send("x").Close());
  Client client(server);
  client.Ask("/a").Ask("/never-read");
  EXPECT_EQ(client.Read(1), "x");
  EXPECT_EQ(client.NextRead(), "closed");
}

TEST(ScriptedIcyServer, ClosesOrResetsBeforeAnyAnswerOrStaysSilent) {
  ScriptedIcyServer server;
  server.SetWelcome(ScriptedIcyServer::Welcome::kClose);
  EXPECT_EQ(Client(server).NextRead(), "closed");
  server.SetWelcome(ScriptedIcyServer::Welcome::kReset);
  EXPECT_EQ(Client(server).NextRead(), "reset");
  server.SetWelcome(ScriptedIcyServer::Welcome::kSilence);
  Client client(server);
  EXPECT_TRUE(client.Ask("/a").NothingArrivesFor(30ms));
  EXPECT_TRUE(server.Requests().empty());
  EXPECT_TRUE(server.WaitForConnections(3, kDeadline));
}

TEST(ScriptedIcyServer, ServesFurtherRequestsOnTheSameConnection) {
  ScriptedIcyServer server;
  server.On("/a", Script().Send("one").NextRequest());
  server.On("/b", Script().Send("two"));
  Client client(server);
  EXPECT_EQ(client.Ask("/a").Read(3), "one");
  EXPECT_EQ(client.Ask("/b").ReadToEnd(), "two");
  EXPECT_EQ(server.Connections(), 1);
  EXPECT_EQ(server.Requests()[1].connection, 1);
}

TEST(ScriptedIcyServer, AFloodStopsWhenTheClientStopsReading) {
  ScriptedIcyServer server;
  server.On("/a", Script().Flood(AudioBytes(4096)));
  Client client(server);
  EXPECT_EQ(client.Ask("/a").Read(100'000).size(), 100'000U);
  // The count stops changing once the buffers between the two are full.
  std::uint64_t before = 0;
  std::uint64_t now = server.BytesSent();
  while (before != now) {
    before = now;
    server.WaitForBytesSent(now + 1, 200ms);
    now = server.BytesSent();
  }
  EXPECT_GE(now, 100'000U);
  EXPECT_LT(now, 16'000'000U);
  EXPECT_EQ(client.Read(1'000'000).size(), 1'000'000U);
  EXPECT_TRUE(server.WaitForBytesSent(now + 1, kDeadline));
  client.Close();
  EXPECT_TRUE(server.WaitForAllClosed(kDeadline));
}

TEST(ScriptedIcyServer, ServesSeveralClientsAtOnce) {
  ScriptedIcyServer server;
  server.On("/a", Script().Send("x").AwaitSignal("go").Send("y"));
  Client first(server);
  Client second(server);
  first.Ask("/a");
  second.Ask("/a");
  EXPECT_EQ(first.Read(1) + second.Read(1), "xx");
  EXPECT_TRUE(server.WaitForRequests(2, kDeadline));
  server.Signal("go");
  EXPECT_EQ(first.ReadToEnd() + second.ReadToEnd(), "yy");
}

TEST(ScriptedIcyServer, EndsWithConnectionsInEveryState) {
  std::optional<ScriptedIcyServer> server(std::in_place);
  server->On("/hold", Script().Hold());
  server->On("/await", Script().AwaitSignal("never"));
  server->On("/stall", Script().Stall(1h));
  server->On("/flood", Script().Flood("x"));
  server->On("/end", Script().Send("x"));
  std::vector<RawClient> clients;
  for (const char* target : {"/hold", "/await", "/stall", "/flood", "/end"}) {
    clients.emplace_back(server->Port()).Ask(target);
  }
  clients.emplace_back(server->Port());
  ASSERT_TRUE(server->WaitForRequests(5, kDeadline));
  const auto start = std::chrono::steady_clock::now();
  server.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - start, kDeadline);
}

TEST(ScriptedIcyServer, ComesBackOnItsPort) {
  std::optional<ScriptedIcyServer> server(std::in_place);
  const auto port = server->Port();
  server->OnAny(Script().Send("old").Close());
  EXPECT_EQ(Client(*server).Ask("/").ReadToEnd(), "old");
  server.emplace(port);
  server->OnAny(Script().Send("new"));
  EXPECT_EQ(Client(*server).Ask("/").ReadToEnd(), "new");
}

TEST(IcyScript, AMetadataBlockIsPaddedToUnitsOfSixteenBytes) {
  EXPECT_EQ(MetadataBlock(""), std::string(1, '\0'));
  EXPECT_EQ(MetadataBlock("abc"), "\1abc" + std::string(13, '\0'));
  EXPECT_EQ(MetadataBlock(std::string(16, 'x')), "\1" + std::string(16, 'x'));
  EXPECT_EQ(MetadataBlock(std::string(17, 'x')), "\2" + std::string(17, 'x') + std::string(15, '\0'));
  EXPECT_EQ(MetadataBlock(std::string(4080, 'x')).size(), 4081U);
  EXPECT_THROW(MetadataBlock(std::string(4081, 'x')), std::length_error);
  EXPECT_EQ(TitleBlock("A - B").substr(1, 20), "StreamTitle='A - B';");
  EXPECT_EQ(TitleBlock("A", "http://x/").substr(1, 38), "StreamTitle='A';StreamUrl='http://x/';");
}

TEST(IcyScript, InterleavesAudioAndBlocks) {
  EXPECT_EQ(Interleave(4, {MetadataBlock("a"), MetadataBlock("")}),
            AudioBytes(4) + MetadataBlock("a") + AudioBytes(4, 4) + MetadataBlock(""));
}

TEST(IcyScript, ChunksCarryTheirLengthInHexadecimal) {
  EXPECT_EQ(Chunk(std::string(26, 'x')), "1a\r\n" + std::string(26, 'x') + "\r\n");
  EXPECT_EQ(Chunk(""), "0\r\n\r\n");
}

TEST(IcyScript, ARedirectNamesItsLocation) {
  ScriptedIcyServer server;
  server.On("/old", Redirect("302 Found", "/new?x=1"));
  EXPECT_EQ(Client(server).Ask("/old").ReadToEnd(),
            "HTTP/1.1 302 Found\r\nLocation: /new?x=1\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
}

TEST(IcyScript, APageStatesItsTrueLength) {
  ScriptedIcyServer server;
  server.On("/p.pls", Page("audio/x-scpls", "[playlist]"));
  EXPECT_EQ(
      Client(server).Ask("/p.pls").ReadToEnd(),
      "HTTP/1.1 200 OK\r\nContent-Type: audio/x-scpls\r\nContent-Length: 10\r\nConnection: close\r\n\r\n"
      "[playlist]");
}

}  // namespace
}  // namespace test_support
