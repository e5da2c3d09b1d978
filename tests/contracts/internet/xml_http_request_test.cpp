#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/contracts/internet/internet_rig.h"

namespace platform {
namespace {

using test_support::Page;
using test_support::Redirect;

// With a line, for not every system shows a header without any.
const std::string kSome = Header("HTTP/1.1 200 OK", {"X: y"});
constexpr std::size_t kLongestBody = 1024 * 1024;

class XmlHttp : public testing::Test {
 protected:
  std::unique_ptr<XmlHttpRequest> Create() { return requests_.CreateObject(u"MSXML2.ServerXMLHTTP.6.0"); }
  std::unique_ptr<XmlHttpRequest> Ask(const std::string& target) {
    auto request = Create();
    EXPECT_TRUE(request->Open(u"GET", Wide(server_.Url(target)), true));
    EXPECT_EQ(request->ReadyState(), 1);
    EXPECT_TRUE(request->Send());
    return request;
  }
  static bool Reaches(XmlHttpRequest& request, std::int32_t state) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (request.ReadyState() != state) {
      if (std::chrono::steady_clock::now() > deadline) return false;
    }
    return true;
  }
  bool AsksTheServer(XmlHttpRequest& request) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (server_.Requests().empty() && std::chrono::steady_clock::now() < deadline) request.ReadyState();
    return !server_.Requests().empty();
  }
  // The text of a request that completes.
  Text Fetch(const std::string& target) {
    const auto request = Ask(target);
    EXPECT_TRUE(Reaches(*request, 4));
    return request->ResponseText();
  }

  under_test::IcyServer server_;
  under_test::NetText conversion_;
  under_test::XmlHttpRequests requests_{conversion_};
};

TEST_F(XmlHttp, KnowsOneClassInAnyCase) {
  EXPECT_NE(requests_.CreateObject(u"msxml2.serverxmlhttp.6.0"), nullptr);
  EXPECT_EQ(requests_.CreateObject(u"MSXML2.NoSuchThing.6.0"), nullptr);
  EXPECT_EQ(requests_.CreateObject(u""), nullptr);
}

TEST_F(XmlHttp, GoesThroughItsStates) {
  server_.OnAny(
      Script().AwaitSignal("header").Send(kSome).AwaitSignal("body").Send("one").AwaitSignal("end").Send(
          "two"));
  const auto request = Create();
  EXPECT_EQ(request->ReadyState(), 0);
  EXPECT_TRUE(request->Open(u"GET", Wide(server_.Url()), true));
  EXPECT_TRUE(request->Send());
  EXPECT_EQ(request->ReadyState(), 1);
  server_.Signal("header");
  EXPECT_TRUE(Reaches(*request, 2));
  server_.Signal("body");
  if (under_test::ReportsEveryState()) {
    EXPECT_TRUE(Reaches(*request, 3));
  }
  EXPECT_EQ(request->ResponseText(), u"") << "not before it is complete";
  server_.Signal("end");
  EXPECT_TRUE(Reaches(*request, 4));
  EXPECT_EQ(request->ResponseText(), u"onetwo");
  EXPECT_EQ(request->ReadyState(), 4);
}

TEST_F(XmlHttp, SendsNothingNeedless) {
  server_.OnAny(Page("text/plain", ""));
  Fetch("/list.pls?x=1");
  EXPECT_EQ(server_.Requests().at(0).line, "GET /list.pls?x=1 HTTP/1.1");
  if (!under_test::SendsLinesAsGiven()) return;
  EXPECT_EQ(server_.Requests().at(0).headers,
            "Host: 127.0.0.1:" + std::to_string(server_.Port()) + "\r\nUser-Agent: Funkhausplayer\r\n");
}

TEST_F(XmlHttp, DecodesByCharset) {
  server_.On("/utf8", Page("audio/x-scpls", "K\xC3\xBC"));
  server_.On("/latin1", Page("text/plain; charset=iso-8859-1", "K\xFC"));
  server_.On("/mark", Page("text/plain", "\xEF\xBB\xBF[playlist]"));
  EXPECT_EQ(Fetch("/utf8"), u"K\u00FC");
  EXPECT_EQ(Fetch("/latin1"), u"K\u00FC");
  EXPECT_EQ(Fetch("/mark"), u"[playlist]");
}

TEST_F(XmlHttp, FollowsRedirectsAndTakesAnyStatus) {
  server_.On("/go", Redirect("302 Found", "/gone"));
  server_.On("/gone", Script().Send(Header("HTTP/1.1 404 Not Found")).Send("page"));
  EXPECT_EQ(Fetch("/go"), u"page");
}

TEST_F(XmlHttp, AFailedTransferIsCompleteWithoutText) {
  server_.On("/cut", Script().Send(Header("HTTP/1.1 200 OK", {"Content-Length: 100"})).Send("[playlist]"));
  server_.On("/reset", Script().Send(kSome).Send("[playlist]").Reset());
  server_.On("/closed", Script());
  EXPECT_EQ(Fetch("/cut"), u"");
  if (under_test::NoticesEveryFault()) {
    EXPECT_EQ(Fetch("/reset"), u"");
  }
  EXPECT_EQ(Fetch("/closed"), u"");
}

TEST_F(XmlHttp, AnAddressThatCannotBeAskedForIsNotOpened) {
  const auto request = Create();
  EXPECT_FALSE(request->Open(u"GET", u"C:\\Radio\\liste.m3u", true));
  EXPECT_FALSE(request->Open(u"GET", u"", true));
  EXPECT_FALSE(request->Open(u"POST", u"http://h/", true));
  EXPECT_FALSE(request->Open(u"GET", u"http://h/", false));
  EXPECT_FALSE(request->Send());
  EXPECT_EQ(request->ReadyState(), 0);
}

TEST_F(XmlHttp, AskingTakesAFewMillisecondsOnly) {
  server_.OnAny(Script().Hold());
  const auto request = Ask("/");
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 20; ++i) EXPECT_EQ(request->ReadyState(), 1);
  const auto time = std::chrono::steady_clock::now() - start;
  EXPECT_GE(time, 60ms) << "so that whoever asks in a loop does not spin";
  EXPECT_LT(time, 10s) << "though the answer never comes";
}

TEST_F(XmlHttp, AbortEndsItAtAnyTime) {
  server_.OnAny(Script().Send(kSome).Flood("x"));
  const auto request = Create();
  request->Abort();
  request->Open(u"GET", Wide(server_.Url()), true);
  request->Abort();
  request->Open(u"GET", Wide(server_.Url()), true);
  request->Send();
  EXPECT_TRUE(AsksTheServer(*request));
  request->Abort();
  EXPECT_EQ(request->ReadyState(), 0);
  EXPECT_EQ(request->ResponseText(), u"");
  if (under_test::EndsPlaylistRequests()) {
    EXPECT_TRUE(server_.WaitForAllClosed(kDeadline));
  }
}

TEST_F(XmlHttp, ItsEndEndsTheRequest) {
  server_.OnAny(Script().Send(kSome).Hold());
  auto request = Ask("/");
  EXPECT_TRUE(Reaches(*request, 2));
  request.reset();
  if (under_test::EndsPlaylistRequests()) {
    EXPECT_TRUE(server_.WaitForAllClosed(kDeadline));
  }
}

TEST_F(XmlHttp, AMebibyteIsTheMostThatCompletes) {
  const std::string most(kLongestBody, 'x');
  server_.On("/most", Page("text/plain", most));
  server_.On("/more", Page("text/plain", most + "x"));
  EXPECT_EQ(Fetch("/most").size(), most.size());
  const auto request = Ask("/more");
  EXPECT_TRUE(Reaches(*request, 3));
  EXPECT_TRUE(server_.WaitForRequests(2, kDeadline));
  const auto until = std::chrono::steady_clock::now() + 1s;
  while (std::chrono::steady_clock::now() < until) EXPECT_EQ(request->ReadyState(), 3);
}

TEST_F(XmlHttp, ALiveStreamIsCompleteWithoutATextAtOnce) {
  for (const auto& fields : std::vector<std::vector<std::string>>{{"Content-Type: audio/mpeg"},
                                                                  {"content-type: Audio/AACP; x=y"},
                                                                  {"Content-Type: video/mp2t"},
                                                                  {"Content-Type: application/ogg"},
                                                                  {"icy-metaint: 8192"},
                                                                  {"ICY-NAME:X", "Content-Type: x/y"}}) {
    // Without its first byte, so that nothing but the header can have decided.
    server_.OnAny(Script().Send(Header("HTTP/1.1 200 OK", fields)).Hold());
    const auto request = Ask("/");
    EXPECT_TRUE(Reaches(*request, 4)) << fields[0];
    EXPECT_EQ(request->ResponseText(), u"");
    if (!under_test::EndsPlaylistRequests()) continue;
    EXPECT_TRUE(server_.WaitForAllClosed(kDeadline)) << "its connection is given back";
  }
  server_.OnAny(Script().Send("ICY 200 OK\r\n\r\n").Send("[playlist]").Hold());
  const auto bare = Ask("/");
  if (under_test::NoticesEveryFault()) {
    EXPECT_TRUE(Reaches(*bare, 3)) << "the status line of a station alone does not count";
  }
}

TEST_F(XmlHttp, ALiveStreamThatHasEndedAlreadyHasNoTextEither) {
  server_.OnAny(Script().Send(Header("HTTP/1.1 200 OK", {"Content-Type: audio/mpeg"})).Send("http://h/"));
  EXPECT_EQ(Fetch("/"), u"");
}

TEST_F(XmlHttp, WhatHasALengthOrThePlaylistsTypeIsReadToItsEnd) {
  for (const std::string field :
       {"Content-Type: audio/x-mpegurl", "Content-Type: audio/mpegurl", "Content-Type: audio/x-scpls",
        "Content-Type: AUDIO/X-SCPLS; charset=utf-8", "Content-Type: application/vnd.apple.mpegurl",
        "Content-Type: application/pls+xml", "Content-Type: audio/x-pn-realaudio", "Content-Type: text/plain",
        "Content-Type: text/html\r\nicy-name: X", "Content-Type: audio/x-scpls\r\nicy-name: X",
        "Content-Type: audio/mpeg\r\nContent-Length: 10", "icy-br: 128\r\nContent-Length: 10",
        "Content-Type: application/octet-stream", "X: y"}) {
    server_.OnAny(Script().Send(Header("HTTP/1.1 200 OK", {field})).Send("[playlist]"));
    EXPECT_EQ(Fetch("/"), u"[playlist]") << field;
  }
}

TEST_F(XmlHttp, OnlyTheFinalAnswerSaysWhetherItIsALiveStream) {
  server_.On("/go", Script()
                        .Send(Header("HTTP/1.1 302 Found",
                                     {"Location: /list", "Content-Type: audio/mpeg", "icy-name: X"}))
                        .Send("body")
                        .Hold());
  server_.On("/list", Script().Send(kSome).Send("[playlist]"));
  EXPECT_EQ(Fetch("/go"), u"[playlist]");
}

TEST_F(XmlHttp, AnEndlessStreamIsClosedAndNeverCompletes) {
  server_.OnAny(Script().Send(kSome).Flood("0123456789abcdef"));
  const auto request = Ask("/");
  if (under_test::ReportsEveryState()) {
    EXPECT_TRUE(Reaches(*request, 3));
  }
  EXPECT_TRUE(AsksTheServer(*request));
  std::int32_t highest = 0;
  const auto deadline = std::chrono::steady_clock::now() + kDeadline / 2;
  while (server_.OpenConnections() > 0 && std::chrono::steady_clock::now() < deadline) {
    highest = std::max(highest, request->ReadyState());
  }
  EXPECT_EQ(highest, 3);
  EXPECT_EQ(request->ReadyState(), 3);
  if (!under_test::EndsPlaylistRequests()) return;
  EXPECT_EQ(server_.OpenConnections(), 0);
  if (!under_test::CountsWhatComes()) return;
  EXPECT_LT(server_.BytesSent(), 8U * 1024 * 1024);
}

}  // namespace
}  // namespace platform
