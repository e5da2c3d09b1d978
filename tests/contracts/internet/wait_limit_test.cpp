// The limit that a session sets itself for the wait for an answer.

#include <gtest/gtest.h>

#include "tests/contracts/internet/internet_rig.h"

namespace platform {
namespace {

using under_test::IcyServer;

class WaitLimit : public testing::Test {
 protected:
  // Fails to open in a session with that limit, and says how long that took.
  std::chrono::milliseconds FailWithin(std::uint32_t limit, const std::string& url) {
    auto& internet = rig_.internet;
    const InternetHandle session = internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
    EXPECT_TRUE(internet.SetWaitLimit(session, limit));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(internet.InternetOpenUrlW(session, Wide(url), u"", 0), InternetHandle::kNone);
    EXPECT_EQ(internet.LastFailure(), InternetFailure::kNoAnswer);
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
  }
  void ExpectLimit(std::chrono::milliseconds time, std::chrono::milliseconds limit) {
    EXPECT_GE(time, limit);
    EXPECT_LT(time, 5s) << "not the ten seconds that there are without it";
  }

  InternetRig rig_;
};

TEST_F(WaitLimit, HoldsForAServerThatAcceptsAndNeverAnswers) {
  rig_.server.OnAny(Script().Hold());
  ExpectLimit(FailWithin(400, rig_.server.Url()), 400ms);
  if (under_test::EndsSilentConnections()) {
    EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
  }
}

TEST_F(WaitLimit, HoldsForTheRequestsOfAConnection) {
  rig_.server.OnAny(Script().Hold());
  auto& internet = rig_.internet;
  const InternetHandle session = internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
  EXPECT_TRUE(internet.SetWaitLimit(session, 400));
  const InternetHandle connection =
      internet.InternetConnectW(session, u"127.0.0.1", rig_.server.Port(), kInternetServiceHttp);
  const InternetHandle request = internet.HttpOpenRequestW(connection, u"GET", u"/", u"HTTP/1.1", 0);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(internet.HttpSendRequestW(request, u""));
  ExpectLimit(std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start),
              400ms);
}

TEST_F(WaitLimit, HoldsForAllRedirectsTogether) {
  IcyServer silent;
  silent.OnAny(Script().Hold());
  Script slow = Script().Stall(300ms);
  slow.Send(Header("HTTP/1.1 302 Found", {"Location: " + silent.Url(), "Content-Length: 0"}));
  rig_.server.OnAny(slow);
  const auto time = FailWithin(600, rig_.server.Url());
  EXPECT_EQ(silent.Connections(), 1);
  ExpectLimit(time, 600ms);
}

TEST_F(WaitLimit, AppliesToAHeaderThatNeverEndsAndToAHandshakeThatNeverBegins) {
  rig_.server.OnAny(Script().Send("HTTP/1.1 200 OK\r\n").SendInPieces(std::string(5000, 'x'), 1, 20ms));
  ExpectLimit(FailWithin(400, rig_.server.Url()), 400ms);
  rig_.server.SetWelcome(IcyServer::Welcome::kSilence);
  ExpectLimit(FailWithin(400, "https://127.0.0.1:" + std::to_string(rig_.server.Port()) + "/"), 400ms);
}

TEST_F(WaitLimit, ReadingIsNotLimited) {
  rig_.server.OnAny(Script().Send(kOk).AwaitSignal("more").Send("late").Hold());
  auto& internet = rig_.internet;
  const InternetHandle session = internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
  EXPECT_TRUE(internet.SetWaitLimit(session, 300));
  const InternetHandle stream = internet.InternetOpenUrlW(session, Wide(rig_.server.Url()), u"", 0);
  ASSERT_NE(stream, InternetHandle::kNone);
  const auto start = std::chrono::steady_clock::now();
  while (std::chrono::steady_clock::now() - start < 600ms) EXPECT_EQ(rig_.Read(stream, 4), "<nothing>");
  rig_.server.Signal("more");
  EXPECT_EQ(rig_.ReadSomething(stream, 4), "late");
}

TEST_F(WaitLimit, IsForSessionsAndAboveZero) {
  auto& internet = rig_.internet;
  const InternetHandle session = internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
  const InternetHandle connection = internet.InternetConnectW(session, u"h", 80, kInternetServiceHttp);
  EXPECT_FALSE(internet.SetWaitLimit(connection, 400));
  EXPECT_FALSE(internet.SetWaitLimit(InternetHandle::kNone, 400));
  EXPECT_FALSE(internet.SetWaitLimit(session, 0));
}

}  // namespace
}  // namespace platform
