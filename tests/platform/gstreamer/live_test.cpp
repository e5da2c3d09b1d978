#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/icecast_server.h"
#include "tests/support/loudness.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"
#include "tests/support/pulse_server.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::kSOk;
using test_support::IcecastServer;
using test_support::LiveHead;
using test_support::Loudness;
using test_support::MakeTone;
using test_support::MediaHttpServer;
using test_support::PulseServer;
using test_support::ReadBytes;
using test_support::TempFolder;
using test_support::WaitUntil;
using Clock = std::chrono::steady_clock;

/// What a station sends ahead of real time to a new listener.
constexpr std::size_t kBurst = 65536;
/// A lost station is asked again after a second at most; in this time even on a busy machine.
constexpr auto kOfTheSchedule = 8s;
/// 128 kbit/s
constexpr std::size_t kBytesPerSecond = 16000;

class LiveTest : public testing::Test {
 protected:
  LiveTest() { pulse.UseInThisProcess(); }
  bool OpenAndHear(const std::string& url) {
    return driver.Open(url) == kSOk && driver.Start() == kSOk && loudness.WaitForSound(300ms, kSoon);
  }

  TempFolder folder;
  PulseServer pulse;
  Loudness loudness{pulse};
  SessionDriver driver;
};

TEST_F(LiveTest, AnMp3StationIsHeardAndNamed) {
  IcecastServer icecast;
  icecast.Feed("/mp3", MakeTone(folder, "t.mp3", "libmp3lame"), "mp3", "audio/mpeg");
  icecast.SetTitle("/mp3", "Ein%20Lied");
  const auto start = Clock::now();
  ASSERT_TRUE(OpenAndHear(icecast.Url("/mp3")));
  EXPECT_EQ(driver.DurationSeconds(), std::nullopt);
  EXPECT_EQ(driver.TextProperty(u"StationName"), IcecastServer::kStationName);
  EXPECT_TRUE(WaitUntil([&] { return driver.TextProperty(u"Title") == "Ein Lied"; }, kSoon));
  const double heard = driver.Seconds();
  const std::chrono::duration<double> since = Clock::now() - start;
  EXPECT_LT(heard, since.count()) << "not the station's time, which has been running for longer";
}

TEST_F(LiveTest, AnOggStationIsHeard) {
  IcecastServer icecast;
  icecast.Feed("/ogg", MakeTone(folder, "t.ogg", "libvorbis"), "ogg", "audio/ogg");
  ASSERT_TRUE(OpenAndHear(icecast.Url("/ogg")));
}

TEST_F(LiveTest, SoundIsBackAfterTheServer) {
  IcecastServer icecast;
  icecast.Feed("/mp3", MakeTone(folder, "t.mp3", "libmp3lame"), "mp3", "audio/mpeg");
  ASSERT_TRUE(OpenAndHear(icecast.Url("/mp3")));
  icecast.Kill();
  ASSERT_TRUE(loudness.WaitForSilence(200ms, 15s));
  EXPECT_EQ(driver.State(), 1);
  const double before = driver.Seconds();
  icecast.Restart();
  const auto back = Clock::now();
  EXPECT_TRUE(WaitUntil([&] { return icecast.IsHeardBy("/mp3", "Funkhausplayer"); }, kOfTheSchedule));
  EXPECT_TRUE(WaitUntil([&] { return loudness.FirstSoundAfter(back).has_value(); }, kSoon));
  EXPECT_EQ(driver.State(), 1);
  EXPECT_TRUE(loudness.WaitForSound(500ms, kSoon));
  EXPECT_GE(driver.Seconds(), before);
  EXPECT_GT(driver.Peaks().at(0), 0.1F);
}

TEST_F(LiveTest, AnOggStationComesBackToo) {
  IcecastServer icecast;
  icecast.Feed("/ogg", MakeTone(folder, "t.ogg", "libvorbis"), "ogg", "audio/ogg");
  ASSERT_TRUE(OpenAndHear(icecast.Url("/ogg")));
  icecast.Kill();
  ASSERT_TRUE(loudness.WaitForSilence(200ms, 15s));
  icecast.Restart();
  const auto back = Clock::now();
  EXPECT_TRUE(WaitUntil([&] { return icecast.IsHeardBy("/ogg", "Funkhausplayer"); }, kOfTheSchedule));
  EXPECT_TRUE(WaitUntil([&] { return loudness.FirstSoundAfter(back).has_value(); }, kSoon));
}

TEST_F(LiveTest, TheStreamIsOpenedOnceAndPlayed) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 8}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    if (connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBurst))) {
      connection.SendAtRate(sound.substr(kBurst), kBytesPerSecond);
    }
  });
  ASSERT_TRUE(OpenAndHear(server.Url("/live")));
  ASSERT_TRUE(loudness.WaitForSound(1000ms, kSoon));
  EXPECT_EQ(server.Requests("/live"), 1);
  EXPECT_EQ(server.Connections(), 1);
}

TEST_F(LiveTest, AStationThatSendsMuchAtOnceStartsEveryTime) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 8}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    if (connection.Send(LiveHead("audio/mpeg") + sound)) connection.StaySilent(20s);
  });
  SessionDriver unheard(Unheard());
  for (int round = 0; round < 100; ++round) {
    ASSERT_EQ(unheard.Open(server.Url("/live")), kSOk);
    ASSERT_EQ(unheard.Start(), kSOk);
    ASSERT_TRUE(WaitUntil([&] { return unheard.Seconds() > 0; }, kSoon)) << round;
  }
}

TEST_F(LiveTest, AResetIsBridgedByWhatIsBuffered) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 12}));
  MediaHttpServer server;
  std::atomic<int> listeners{0};
  std::atomic<bool> is_heard{false};
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    // The HTTP source asks a broken answer's server for the rest first; a station has none to give.
    if (connection.Request().find("\r\nRange:") != std::string::npos) return;
    const bool first = ++listeners == 1;
    if (!connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBurst))) return;
    // A reset takes with it what is not read yet, so the first one waits until the stream is opened.
    constexpr std::size_t kPiece = kBytesPerSecond / 10;
    for (std::size_t sent = kBurst; sent < sound.size() && !(first && is_heard); sent += kPiece) {
      if (!connection.SendAtRate(sound.substr(sent, kPiece), kBytesPerSecond)) return;
    }
    connection.ResetAtEnd();
  });
  ASSERT_TRUE(OpenAndHear(server.Url("/live")));
  const auto heard = Clock::now();
  is_heard = true;
  ASSERT_TRUE(WaitUntil([&] { return listeners == 2; }, 3s)) << "reopened while the buffer lasts";
  EXPECT_EQ(driver.State(), 1);
  ASSERT_TRUE(WaitUntil([&] { return driver.Seconds() > 5.5; }, 8s));
  EXPECT_LT(loudness.SilenceSince(heard), 400ms);
  EXPECT_EQ(listeners, 2);
}

TEST_F(LiveTest, AStationThatClosesEveryConnectionIsAskedOnceASecondAtMost) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 0.5}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    connection.Send(LiveHead("audio/mpeg") + sound);
  });
  ASSERT_EQ(driver.Open(server.Url("/live")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  const auto start = Clock::now();
  ASSERT_TRUE(WaitUntil([&] { return server.Requests("/live") >= 4; }, 8s));
  EXPECT_GE(Clock::now() - start, 2s);
  EXPECT_EQ(driver.State(), 1);
  driver.Stop();
  const int asked = server.Requests("/live");
  EXPECT_EQ(driver.State(), 2);
  EXPECT_FALSE(WaitUntil([&] { return server.Requests("/live") > asked; }, 1500ms)) << "stopped is stopped";
}

class LostLiveTest : public LiveTest, public testing::WithParamInterface<const char*> {
 protected:
  using Times = std::vector<Clock::time_point>;

  /// A station loses its listener and answers with `status` from then on. Whether the times at which it is
  /// asked come to be as `wanted` says.
  bool IsAskedWhileItAnswers(const std::string& status, const std::function<bool(const Times&)>& wanted) {
    const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 1}));
    std::mutex mutex;
    Times refused;
    MediaHttpServer server;
    server.On("/live", [&, first = std::make_shared<std::atomic<bool>>(true)](
                           MediaHttpServer::Connection& connection) {
      if (first->exchange(false)) return void(connection.Send(LiveHead("audio/mpeg") + sound));
      {
        const std::lock_guard lock(mutex);
        refused.push_back(Clock::now());
      }
      connection.Send(test_support::HttpAnswer(status, "text/plain", ""));
    });
    if (driver.Open(server.Url("/live")) != kSOk || driver.Start() != kSOk) return false;
    const bool is_as_wanted = WaitUntil(
        [&] {
          const std::lock_guard lock(mutex);
          return wanted(refused);
        },
        20s);
    driver.Stop();
    return is_as_wanted;
  }
};

TEST_F(LostLiveTest, AStationThatIsNotThereYetIsAskedMoreThanOnceASecond) {
  // On a busy machine not always, but once a second would never do.
  EXPECT_TRUE(IsAskedWhileItAnswers("404 Not Found", [](const Times& times) {
    return times.size() >= 3 && times.back() - times[times.size() - 3] < 1500ms;
  }));
}

TEST_P(LostLiveTest, AServerThatRefusesIsAskedOnceASecond) {
  Clock::duration three_pauses{};
  EXPECT_TRUE(IsAskedWhileItAnswers(GetParam(), [&](const Times& times) {
    if (times.size() < 4) return false;
    three_pauses = times[3] - times[0];
    return true;
  }));
  EXPECT_GT(three_pauses, 2s);
}
INSTANTIATE_TEST_SUITE_P(Statuses, LostLiveTest, testing::Values("503 Service Unavailable", "200 OK"));

TEST_F(LiveTest, ABufferThatRunsDryPausesUntilThereIsEnough) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 8}));
  MediaHttpServer server;
  std::atomic<bool> go_on{false};
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    if (!connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBytesPerSecond))) return;
    while (!go_on && connection.Send("")) test_support::LookAgainSoon();
    connection.SendAtRate(sound.substr(kBytesPerSecond), kBytesPerSecond * 2);
  });
  // There is only a second of sound, which is over before a busy machine looks at it.
  const auto start = Clock::now();
  ASSERT_EQ(driver.Open(server.Url("/live")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return loudness.FirstSoundAfter(start).has_value(); }, kSoon));
  ASSERT_TRUE(loudness.WaitForSilence(500ms, kSoon));
  EXPECT_EQ(driver.State(), 1);
  const double dry = driver.Seconds();
  EXPECT_NEAR(dry, 1.0, 0.2) << "only what is heard counts";
  EXPECT_EQ(driver.Peaks(), std::vector<float>({0.0F, 0.0F}));
  const auto continued = Clock::now();
  go_on = true;
  ASSERT_TRUE(WaitUntil([&] { return loudness.FirstSoundAfter(continued).has_value(); }, kSoon));
  const auto again = *loudness.FirstSoundAfter(continued);
  ASSERT_TRUE(WaitUntil([&] { return driver.Seconds() >= dry + 2; }, kSoon));
  EXPECT_LT(loudness.SilenceSince(again), 100ms) << "and then it holds";
  const std::chrono::duration<double> heard = Clock::now() - again;
  EXPECT_NEAR(driver.Seconds() - dry, heard.count(), 0.5);
  EXPECT_EQ(server.Requests("/live"), 1);
}

TEST_F(LiveTest, TheSoundAfterAHoleIsWorthTheWait) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 12}));
  MediaHttpServer server;
  std::atomic<bool> is_heard_again{false};
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    if (!connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBytesPerSecond))) return;
    connection.StaySilent(1500ms);
    constexpr std::size_t kPiece = kBytesPerSecond / 10;
    for (std::size_t sent = kBytesPerSecond; sent < sound.size() && !is_heard_again; sent += kPiece) {
      if (!connection.SendAtRate(sound.substr(sent, kPiece), kBytesPerSecond)) return;
    }
    connection.StaySilent(20s);
  });
  ASSERT_TRUE(OpenAndHear(server.Url("/live")));
  ASSERT_TRUE(loudness.WaitForSilence(200ms, kSoon));
  const auto silent = Clock::now() - 200ms;
  ASSERT_TRUE(WaitUntil([&] { return loudness.FirstSoundAfter(silent + 200ms).has_value(); }, 15s));
  is_heard_again = true;
  const auto again = *loudness.FirstSoundAfter(silent + 200ms);
  ASSERT_TRUE(loudness.WaitForSilence(200ms, 15s));
  const auto lasted = Clock::now() - 200ms - again;
  EXPECT_GT(lasted + 300ms, std::min<Clock::duration>(again - silent, 3s)) << "three seconds are the bound";
}

TEST_F(LiveTest, AHoleThatTheDeviceCanBridgeIsNotHeard) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 8}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    // 600 ms later the rest of the first second is all in the device.
    if (!connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBytesPerSecond))) return;
    connection.StaySilent(750ms);
    connection.Send(sound.substr(kBytesPerSecond));
    connection.StaySilent(20s);
  });
  ASSERT_TRUE(OpenAndHear(server.Url("/live")));
  const auto heard = Clock::now();
  ASSERT_TRUE(WaitUntil([&] { return driver.Seconds() > 2.0; }, kSoon));
  EXPECT_LT(loudness.SilenceSince(heard), 80ms);
}

TEST_F(LiveTest, WhatTheDeviceContainsIsHeardThoughTheConnectionBroke) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 8}));
  MediaHttpServer server;
  std::atomic<bool> is_heard{false};
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    if (is_heard) return connection.StaySilent(20s);
    if (!connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBytesPerSecond))) return;
    while (!is_heard && connection.Send("")) test_support::LookAgainSoon();
    connection.ResetAtEnd();
  });
  const auto start = Clock::now();
  ASSERT_TRUE(OpenAndHear(server.Url("/live")));
  is_heard = true;
  EXPECT_TRUE(WaitUntil([&] { return loudness.SoundSince(start) > 850ms; }, kSoon));
  EXPECT_EQ(driver.State(), 1);
}

TEST_F(LiveTest, AServerThatStallsIsAskedAgain) {
  platform::gstreamer::GstMediaOptions options;
  options.stall_limit = 1s;
  SessionDriver impatient(options);
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 8}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    if (connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBytesPerSecond))) {
      connection.StaySilent(20s);
    }
  });
  ASSERT_EQ(impatient.Open(server.Url("/live")), kSOk);
  ASSERT_EQ(impatient.Start(), kSOk);
  EXPECT_TRUE(WaitUntil([&] { return server.Requests("/live") >= 2; }, kSoon));
  EXPECT_EQ(impatient.State(), 1);
}

TEST_F(LiveTest, StopReleasesTheConnectionAtOnceAndStartOpensItAgain) {
  constexpr auto kSilent = 60s;
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 8}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    if (connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBurst))) connection.StaySilent(kSilent);
  });
  ASSERT_TRUE(OpenAndHear(server.Url("/live")));
  const auto before = Clock::now();
  EXPECT_EQ(driver.Stop(), kSOk);
  EXPECT_EQ(driver.State(), 2);
  EXPECT_EQ(driver.Seconds(), 0.0);
  EXPECT_TRUE(WaitUntil([&] { return server.Open() == 0; }, kSoon));
  EXPECT_LT(Clock::now() - before, kSilent / 2) << "the server itself would keep it for longer";
  EXPECT_EQ(pulse.FindStream("Funkhausplayer"), std::nullopt);
  const auto again = Clock::now();
  EXPECT_EQ(driver.Start(), kSOk);
  EXPECT_EQ(driver.State(), 1);
  EXPECT_TRUE(loudness.WaitForSound(300ms, kSoon));
  const double heard = driver.Seconds();
  const std::chrono::duration<double> since = Clock::now() - again;
  EXPECT_LT(heard, since.count()) << "from the beginning";
  EXPECT_EQ(server.Requests("/live"), 2);
}

}  // namespace
}  // namespace gstreamer_test
