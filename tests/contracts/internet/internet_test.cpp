#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/contracts/internet/internet_rig.h"

namespace platform {
namespace {

using test_support::Redirect;
using under_test::IcyServer;

class InternetTest : public testing::Test {
 protected:
  // The header query's operations for a path of the server; kNone when one fails.
  InternetHandle Ask(const Text& path, const Text& headers = u"Icy-MetaData:1",
                     std::chrono::milliseconds limit = 10s) {
    const InternetHandle session = rig_.internet.InternetOpenW(u"WinampMPEG/5.09", kInternetOpenTypeDirect);
    rig_.internet.SetWaitLimit(session, static_cast<std::uint32_t>(limit.count()));
    const InternetHandle connection =
        rig_.internet.InternetConnectW(session, u"127.0.0.1", rig_.server.Port(), kInternetServiceHttp);
    const InternetHandle request =
        rig_.internet.HttpOpenRequestW(connection, u"GET", path, u"HTTP/1.1", kReload);
    return rig_.internet.HttpSendRequestW(request, headers) ? request : InternetHandle::kNone;
  }
  std::string Host() { return "127.0.0.1:" + std::to_string(rig_.server.Port()); }

  InternetRig rig_;
};

TEST_F(InternetTest, SendsAgentAndHeaderAsGivenAndNothingNeedless) {
  rig_.server.OnAny(Script().Send(kOk));
  ASSERT_NE(Ask(u"/live?a=b"), InternetHandle::kNone);
  const auto requests = rig_.server.Requests();
  EXPECT_EQ(requests.at(0).line, "GET /live?a=b HTTP/1.1");
  EXPECT_EQ(requests.at(0).Header("User-Agent"), "WinampMPEG/5.09");
  EXPECT_EQ(requests.at(0).Header("Icy-MetaData"), "1");
  EXPECT_EQ(requests.at(0).Header("Cache-Control"), "no-cache");
  if (!under_test::SendsLinesAsGiven()) return;
  EXPECT_EQ(requests.at(0).headers, "Host: " + Host() +
                                        "\r\nUser-Agent: WinampMPEG/5.09\r\nIcy-MetaData:1\r\n"
                                        "Cache-Control: no-cache\r\n");
}

TEST_F(InternetTest, AnAddressIsOpenedWithTheSameLines) {
  rig_.server.OnAny(Script().Send(kOk));
  rig_.OpenUrl(rig_.server.Url("/;"), u"A:1\r\nB: 2\r\n\r\nC:", 0);
  const auto requests = rig_.server.Requests();
  EXPECT_EQ(requests.at(0).line, "GET /; HTTP/1.1");
  EXPECT_EQ(requests.at(0).Header("User-Agent"), "Agent/1");
  EXPECT_EQ(requests.at(0).Header("A"), "1");
  EXPECT_EQ(requests.at(0).Header("B"), "2");
  EXPECT_EQ(requests.at(0).Header("C"), "");
  if (!under_test::SendsLinesAsGiven()) return;
  EXPECT_EQ(requests.at(0).headers, "Host: " + Host() + "\r\nUser-Agent: Agent/1\r\nA:1\r\nB: 2\r\nC:\r\n");
}

TEST_F(InternetTest, APathIsSentAsItIsButForWhatNoRequestMayHold) {
  rig_.server.OnAny(Script().Send(kOk));
  Ask(u"radio.example:8000");
  Ask(u"/a/../b/./c?x=/../y");
  Ask(u"/\u00FC b\r\nInjected: yes");
  const auto requests = rig_.server.Requests();
  EXPECT_EQ(requests.at(0).target, "/radio.example:8000");
  if (under_test::SendsLinesAsGiven()) {
    EXPECT_EQ(requests.at(1).target, "/a/../b/./c?x=/../y");
  }
  EXPECT_EQ(requests.at(2).target, "/%C3%BC%20b%0D%0AInjected:%20yes");
}

TEST_F(InternetTest, TheStatusLineComesFirstAsTheServerSentIt) {
  rig_.server.On("/icy", Script().Send("ICY 200 OK\r\nicy-metaint:8192\r\n\r\n"));
  rig_.server.On("/old", Script().Send("HTTP/1.0 200 Alles gut\r\n\r\n"));
  rig_.server.On("/lf", Script().Send("HTTP/1.1 200 OK\nicy-br: 128\n\n"));
  const InternetHandle icy = Ask(u"/icy");
  EXPECT_EQ(rig_.Status(icy), u"200");
  EXPECT_EQ(rig_.Headers(icy), "ICY 200 OK\r\nicy-metaint:8192\r\n\r\n");
  EXPECT_EQ(rig_.Headers(Ask(u"/old")), "HTTP/1.0 200 Alles gut\r\n\r\n");
  EXPECT_EQ(rig_.Headers(Ask(u"/lf")), "HTTP/1.1 200 OK\r\nicy-br: 128\r\n\r\n");
}

TEST_F(InternetTest, HeaderBytesComeThroughTheCodePage) {
  rig_.server.OnAny(Script().Send("ICY 200 OK\r\nicy-name:K\xFC\x80\x81\r\n\r\n"));
  EXPECT_EQ(rig_.Query(Ask(u"/"), kHttpQueryRawHeadersCrLf),
            u"ICY 200 OK\r\nicy-name:K\u00FC\u20AC\u0081\r\n\r\n");
}

TEST_F(InternetTest, AnyStatusIsAnAnswer) {
  rig_.server.OnAny(Script().Send(Header("HTTP/1.1 404 Not Found", {"Content-Length: 0"})));
  EXPECT_EQ(rig_.Status(Ask(u"/")), u"404");
  EXPECT_EQ(rig_.Status(rig_.Open()), u"404");
}

TEST_F(InternetTest, AnIcyStatusOtherThan200IsNoAnswer) {
  rig_.server.OnAny(Script().Send("ICY 404 Not Found\r\n\r\n"));
  EXPECT_EQ(Ask(u"/"), InternetHandle::kNone);
}

TEST_F(InternetTest, AnInterimAnswerIsPassedOver) {
  rig_.server.OnAny(Script().Send("HTTP/1.1 100 Continue\r\nX: 1\r\n\r\n").Send(kOk));
  EXPECT_EQ(rig_.Headers(Ask(u"/")), "HTTP/1.1 200 OK\r\n\r\n");
}

TEST_F(InternetTest, TheQueryReportsTheSizeThatIsNeeded) {
  rig_.server.OnAny(Script().Send(kOk));
  const InternetHandle request = Ask(u"/");
  std::uint32_t size = 0;
  EXPECT_FALSE(rig_.internet.HttpQueryInfoW(request, kHttpQueryStatusCode, {}, size));
  EXPECT_EQ(size, 6U);
  std::vector<std::byte> buffer(size - 1);
  EXPECT_FALSE(rig_.internet.HttpQueryInfoW(request, kHttpQueryStatusCode, buffer, size));
  buffer.resize(100);
  EXPECT_TRUE(rig_.internet.HttpQueryInfoW(request, kHttpQueryStatusCode, buffer, size));
  EXPECT_EQ(size, 6U);
  EXPECT_EQ(rig_.Query(request, 9999), u"");
}

TEST_F(InternetTest, EveryRedirectIsFollowedAndTheLastAnswerCounts) {
  for (const std::string status : {"301 Moved Permanently", "302 Found", "303 See Other",
                                   "307 Temporary Redirect", "308 Permanent Redirect"}) {
    IcyServer other;
    other.OnAny(Script().Send(Header("ICY 200 OK", {"icy-name:Ziel"})).Hold());
    rig_.server.OnAny(Redirect(status, other.Url("/live?token=a%20b&x=1;")));
    const InternetHandle request = Ask(u"/go");
    EXPECT_EQ(rig_.Status(request), u"200") << status;
    EXPECT_EQ(rig_.Headers(request), "ICY 200 OK\r\nicy-name:Ziel\r\n\r\n") << status;
    ASSERT_EQ(other.Requests().size(), 1U) << status;
    EXPECT_EQ(other.Requests()[0].line, "GET /live?token=a%20b&x=1; HTTP/1.1");
    EXPECT_EQ(other.Requests()[0].Header("Icy-MetaData"), "1");
    EXPECT_EQ(other.Requests()[0].Header("User-Agent"), "WinampMPEG/5.09");
    rig_.internet.InternetCloseHandle(request);
  }
}

TEST_F(InternetTest, ARelativeRedirectStaysOnTheServer) {
  rig_.server.On("/a/go", Redirect("302 Found", "live?x=1"));
  rig_.server.On("/a/live", Script().Send(kOk));
  EXPECT_EQ(rig_.Status(Ask(u"/a/go")), u"200");
}

TEST_F(InternetTest, TenRedirectsAreFollowedAndNoMore) {
  for (int i = 0; i < 11; ++i) {
    rig_.server.On("/" + std::to_string(i), Redirect("302 Found", "/" + std::to_string(i + 1)));
  }
  rig_.server.On("/11", Script().Send(kOk));
  EXPECT_EQ(rig_.Status(Ask(u"/1")), u"200");
  EXPECT_EQ(Ask(u"/0"), InternetHandle::kNone);
}

TEST_F(InternetTest, ARedirectIsFollowedBeforeItsBodyEnds) {
  rig_.server.On("/go", Script().Send(Header("HTTP/1.1 302 Found", {"Location: /live"})).Send("body").Hold());
  rig_.server.On("/live", Script().Send(kOk));
  EXPECT_EQ(rig_.Status(Ask(u"/go")), u"200");
}

TEST_F(InternetTest, ARedirectToAnotherSchemeFails) {
  rig_.server.On("/file", Redirect("302 Found", "file:///etc/passwd"));
  rig_.server.On("/ftp", Redirect("302 Found", "ftp://127.0.0.1/x"));
  EXPECT_EQ(Ask(u"/file"), InternetHandle::kNone);
  EXPECT_EQ(Ask(u"/ftp"), InternetHandle::kNone);
}

TEST_F(InternetTest, AHeaderThatComesByteByByteIsWhole) {
  rig_.server.OnAny(Script().SendInPieces(Header("ICY 200 OK", {"icy-name:X"}), 1, 1ms).Hold());
  EXPECT_EQ(rig_.Headers(Ask(u"/")), "ICY 200 OK\r\nicy-name:X\r\n\r\n");
}

TEST_F(InternetTest, AHeaderIsTakenUpToItsLimit) {
  const std::string line = "X: " + std::string(1020, 'x') + "\r\n";
  const auto header_of = [&](int lines) {
    std::string header = "HTTP/1.1 200 OK\r\n";
    for (int i = 0; i < lines; ++i) header += line;
    return header + "\r\n";
  };
  rig_.server.On("/fits", Script().Send(header_of(255)).Hold());
  rig_.server.On("/too-long", Script().Send(header_of(257)).Hold());
  rig_.server.On("/one-line", Script().Send("HTTP/1.1 200 OK\r\nX:" + std::string(1 << 20, 'x')).Hold());
  rig_.server.On("/endless", Script().Send("HTTP/1.1 200 OK\r\n").Flood("X: y\r\n"));
  rig_.server.On("/endless-line", Script().Send("HTTP/1.1 200 OK\r\n").Flood("x"));
  EXPECT_EQ(rig_.Headers(Ask(u"/fits")).size(), header_of(255).size());
  for (const Text target : {u"/too-long", u"/one-line", u"/endless", u"/endless-line"}) {
    // In time where the library counts what has come, at the limit elsewhere.
    EXPECT_EQ(Ask(target, u"", 3s), InternetHandle::kNone) << test_support::Ascii(target);
  }
}

TEST_F(InternetTest, AServerThatGoesAwayIsAFailure) {
  rig_.server.On("/cut", Script().Send("HTTP/1.1 200 OK\r\nicy-na").Reset());
  rig_.server.On("/reset", Script().Reset());
  rig_.server.On("/closed", Script());
  if (under_test::NoticesEveryFault()) {
    EXPECT_EQ(Ask(u"/cut"), InternetHandle::kNone);
  }
  EXPECT_EQ(Ask(u"/reset"), InternetHandle::kNone);
  EXPECT_EQ(Ask(u"/closed"), InternetHandle::kNone);
}

TEST_F(InternetTest, GarbageIsNoAnswer) {
  rig_.server.OnAny(Script().Send("\x16\x03\x01 nonsense\r\n\r\n"));
  EXPECT_EQ(Ask(u"/"), InternetHandle::kNone);
}

TEST_F(InternetTest, NobodyListeningIsAFailure) {
  std::uint16_t port = 0;
  {
    const IcyServer gone;
    port = gone.Port();
  }
  EXPECT_EQ(rig_.OpenUrl("http://127.0.0.1:" + std::to_string(port) + "/"), InternetHandle::kNone);
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kRefused);
}

TEST_F(InternetTest, ReportsWhyARequestHasFailed) {
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kNone) << "nothing was asked yet";
  rig_.server.On("/cut", Script());
  rig_.server.On("/gone", Script().Send(Header("HTTP/1.1 404 Not Found")));
  EXPECT_EQ(rig_.Open("/cut"), InternetHandle::kNone);
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kOther);
  EXPECT_NE(rig_.Open("/gone"), InternetHandle::kNone);
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kNone) << "any status is an answer";
  // This name is reserved never to exist (RFC 6761).
  EXPECT_EQ(rig_.OpenUrl("http://station.invalid/"), InternetHandle::kNone);
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kUnknownHost);
  EXPECT_EQ(rig_.OpenUrl("mms://h/"), InternetHandle::kNone);
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kOther);
  EXPECT_FALSE(rig_.internet.HttpSendRequestW(InternetHandle::kNone, u""));
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kOther);
}

TEST_F(InternetTest, WhatCannotBeAskedForFailsAtOnce) {
  auto& internet = rig_.internet;
  EXPECT_EQ(internet.InternetOpenW(u"Agent", 0), InternetHandle::kNone) << "only direct access";
  EXPECT_EQ(internet.InternetOpenW(u"Agent\r\nX: y", kInternetOpenTypeDirect), InternetHandle::kNone);
  const InternetHandle session = internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
  EXPECT_EQ(internet.InternetConnectW(session, u"", 80, kInternetServiceHttp), InternetHandle::kNone);
  EXPECT_EQ(internet.InternetConnectW(session, u"h", 80, 1), InternetHandle::kNone);
  EXPECT_EQ(internet.InternetOpenUrlW(session, u"", u"", 0), InternetHandle::kNone);
  EXPECT_EQ(internet.InternetOpenUrlW(session, u"mms://h/", u"", 0), InternetHandle::kNone);
  const InternetHandle connection = internet.InternetConnectW(session, u"a b", 80, kInternetServiceHttp);
  EXPECT_EQ(internet.HttpOpenRequestW(connection, u"GET", u"/", u"HTTP/1.1", 0), InternetHandle::kNone);
}

TEST_F(InternetTest, AHandleIsClosedOnceAndMeansOneThing) {
  auto& internet = rig_.internet;
  const InternetHandle session = internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
  EXPECT_FALSE(internet.HttpSendRequestW(session, u""));
  EXPECT_EQ(internet.HttpOpenRequestW(session, u"GET", u"/", u"HTTP/1.1", 0), InternetHandle::kNone);
  std::uint32_t size = 7;
  EXPECT_FALSE(internet.HttpQueryInfoW(session, kHttpQueryStatusCode, {}, size));
  EXPECT_EQ(rig_.Read(session), "<failed>");
  EXPECT_TRUE(internet.InternetCloseHandle(session));
  EXPECT_FALSE(internet.InternetCloseHandle(session));
  EXPECT_FALSE(internet.InternetCloseHandle(InternetHandle::kNone));
  EXPECT_EQ(internet.InternetOpenUrlW(session, u"http://h/", u"", 0), InternetHandle::kNone);
}

// Time limits. What is waited for at most is written down here once; the stream client asks for less.

TEST(InternetSettings, ADeadServerCostsAtMostTenSecondsAStep) {
  const under_test::InternetSettings settings;
  EXPECT_EQ(settings.connect_limit, 10s);
  EXPECT_EQ(settings.answer_limit, 10s);
  EXPECT_EQ(settings.whole_limit, 30s);
  EXPECT_LE(settings.read_slice, 100ms);
}

class InternetLimits : public testing::Test {
 protected:
  static under_test::InternetSettings Short() {
    under_test::InternetSettings settings;
    settings.connect_limit = 400ms;
    settings.answer_limit = 400ms;
    settings.whole_limit = 1500ms;
    return settings;
  }
  // Fails to open, and says how long that took.
  std::chrono::milliseconds FailToOpen(const std::string& url) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(rig_.OpenUrl(url), InternetHandle::kNone);
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
  }

  InternetRig rig_{Short()};
};

TEST_F(InternetLimits, ASilentServerIsGivenUpWhileTheWindowIsPainted) {
  rig_.server.OnAny(Script().Hold());
  EXPECT_GE(FailToOpen(rig_.server.Url()), 400ms);
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kNoAnswer);
  EXPECT_GE(rig_.loop.paints, 5);
  EXPECT_EQ(rig_.loop.pumps, 0) << "this wait takes no input";
  if (under_test::EndsSilentConnections()) {
    EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
  }
}

TEST_F(InternetLimits, ASessionsLimitMakesThemNoLonger) {
  Script slow = Script().Stall(300ms);
  slow.Send(Header("HTTP/1.1 302 Found", {"Location: /again", "Content-Length: 0"}));
  rig_.server.OnAny(slow);
  const InternetHandle session = rig_.internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
  EXPECT_TRUE(rig_.internet.SetWaitLimit(session, 60'000));
  EXPECT_EQ(rig_.internet.InternetOpenUrlW(session, Wide(rig_.server.Url()), u"", 0), InternetHandle::kNone);
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kNoAnswer) << "before the tenth redirect";
}

TEST_F(InternetLimits, InputThatEndsAWaitGivesASilentServerUpAtOnce) {
  rig_.server.OnAny(Script().Hold());
  int asked = 0;
  rig_.loop.on_paint = [&] { rig_.loop.input_ends_wait = ++asked == 3; };
  EXPECT_EQ(rig_.OpenUrl(rig_.server.Url()), InternetHandle::kNone);
  EXPECT_EQ(rig_.internet.LastFailure(), InternetFailure::kGivenUp);
  EXPECT_EQ(asked, 3) << "it is asked in every slice";
  EXPECT_EQ(rig_.loop.pumps, 0) << "the input is left for later";
  if (under_test::EndsSilentConnections()) {
    EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
  }
}

TEST_F(InternetLimits, AHeaderThatNeverEndsIsGivenUp) {
  rig_.server.OnAny(Script().Send("HTTP/1.1 200 OK\r\n").SendInPieces(std::string(5000, 'x'), 1, 20ms));
  EXPECT_GE(FailToOpen(rig_.server.Url()), 400ms);
}

TEST_F(InternetLimits, InterimAnswersDoNotProlongTheWait) {
  Script script;
  for (int i = 0; i < 500; ++i) script.Send("HTTP/1.1 102 Processing\r\n\r\n").Stall(20ms);
  rig_.server.OnAny(script);
  EXPECT_LT(FailToOpen(rig_.server.Url()), 5s);
}

TEST_F(InternetLimits, SlowRedirectsAreGivenUpTogether) {
  Script slow = Script().Stall(300ms);
  slow.Send(Header("HTTP/1.1 302 Found", {"Location: /again", "Content-Length: 0"}));
  rig_.server.OnAny(slow);
  const auto time = FailToOpen(rig_.server.Url());
  EXPECT_GE(time, 1400ms);
  EXPECT_LT(time, 5s);
}

TEST_F(InternetLimits, AnUnknownHostAndAnUnreachableOneAreGivenUp) {
  // The first name is reserved never to exist (RFC 6761), the second address never to be used (RFC 5737).
  EXPECT_LT(FailToOpen("http://station.invalid/"), 5s);
  EXPECT_LT(FailToOpen("http://192.0.2.1/"), 5s);
}

}  // namespace
}  // namespace platform
