#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/loudness.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"
#include "tests/support/pulse_server.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::kSOk;
using platform::PlaybackState;
using test_support::LiveHead;
using test_support::Loudness;
using test_support::MakeTone;
using test_support::MediaHttpServer;
using test_support::PulseServer;
using test_support::ReadBytes;
using test_support::TempFolder;
using test_support::WaitUntil;

/// A station that sends an old sound until the test switches to a new one; each connection keeps the sound
/// that it began with.
class DeviceTest : public testing::Test {
 protected:
  static constexpr int kOldHertz = 440;
  static constexpr int kNewHertz = 880;

  DeviceTest() {
    pulse.UseInThisProcess();
    folder.Write("no-card.conf", "");
    setenv("ALSA_CONFIG_PATH", (folder.Path() / "no-card.conf").c_str(), 1);
    Listen();
    const std::string old_sound = Sound("old.mp3", kOldHertz);
    const std::string new_sound = Sound("new.mp3", kNewHertz);
    station.On("/live", [=, this](MediaHttpServer::Connection& connection) {
      const std::string& sound = sends_new_sound ? new_sound : old_sound;
      constexpr std::size_t kBurst = 65536;
      if (!connection.Send(LiveHead("audio/mpeg") + sound.substr(0, kBurst))) return;
      connection.SendAtRate(sound.substr(kBurst), 16000);
    });
  }

  std::string Sound(const std::string& name, int hertz) const {
    return ReadBytes(MakeTone(folder, name, "libmp3lame", {.hertz = hertz, .seconds = 30}));
  }
  /// Creates a new recorder, because a recorder ends with the server or the card.
  void Listen() { loudness = std::make_unique<Loudness>(pulse); }
  bool Hears(int hertz) const {
    return loudness->WaitForSound(300ms, kSoon) &&
           WaitUntil([&] { return std::abs(loudness->Frequency(200ms) - hertz) < 15; }, kSoon);
  }
  /// Nothing else comes before it.
  bool HearsAtOnce(int hertz) const {
    return loudness->WaitForSound(300ms, kSoon) && std::abs(loudness->Frequency(200ms) - hertz) < 15;
  }
  bool IsWithoutDevice() const {
    return WaitUntil([&] { return driver.Media().Status().state == PlaybackState::kNoDevice; }, 10s);
  }
  bool PlaysTheStation() {
    return driver.Open(station.Url("/live")) == kSOk && driver.Start() == kSOk && Hears(kOldHertz);
  }
  /// The position and the peaks over a second.
  void ExpectNothingToMove() {
    const double before = driver.Seconds();
    const auto shows = [&] {
      return driver.Seconds() != before || driver.Peaks() != std::vector<float>({0.0F, 0.0F});
    };
    EXPECT_FALSE(WaitUntil(shows, 1s));
    EXPECT_EQ(driver.State(), 1);
  }

  TempFolder folder;
  PulseServer pulse;
  std::unique_ptr<Loudness> loudness;
  MediaHttpServer station;
  std::atomic<bool> sends_new_sound{false};
  mutable SessionDriver driver;
};

TEST_F(DeviceTest, AStationContinuesLiveAfterEachOfSeveralOutagesOfTheSoundServer) {
  ASSERT_TRUE(PlaysTheStation());
  for (int outage = 0; outage < 3; ++outage) {
    pulse.Stop();
    ASSERT_TRUE(IsWithoutDevice());
    EXPECT_TRUE(WaitUntil([&] { return station.Open() == 0; }, kSoon)) << "nothing piles up";
    ExpectNothingToMove();
    sends_new_sound = outage % 2 == 0;
    pulse.Start();
    Listen();
    ASSERT_TRUE(Hears(sends_new_sound ? kNewHertz : kOldHertz));
    EXPECT_EQ(driver.Media().Status().state, PlaybackState::kPlaying);
  }
}

TEST_F(DeviceTest, AStationThatWasStartedWithoutASoundServerIsHeardWhenOneComes) {
  pulse.Stop();
  ASSERT_EQ(driver.Open(station.Url("/live")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(IsWithoutDevice());
  EXPECT_TRUE(WaitUntil([&] { return station.Open() == 0; }, kSoon));
  ExpectNothingToMove();
  EXPECT_EQ(driver.Seconds(), 0.0);
  EXPECT_EQ(station.Requests("/live"), 1);
  sends_new_sound = true;
  pulse.Start();
  Listen();
  EXPECT_TRUE(Hears(kNewHertz));
  EXPECT_GT(driver.Seconds(), 0.0);
  EXPECT_GT(driver.Peaks().at(0), 0.1F);
  EXPECT_EQ(driver.log.size(), 1U) << "it was said once";
}

TEST_F(DeviceTest, AStationIsOpenedAndHeardLaterThoughTheSoundServerHasNoCardYet) {
  pulse.TakeCardAway();
  ASSERT_EQ(driver.Open(station.Url("/live")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(IsWithoutDevice());
  ExpectNothingToMove();
  EXPECT_EQ(station.Open(), 0);
  pulse.GiveCardBack();
  Listen();
  EXPECT_TRUE(Hears(kOldHertz));
}

TEST_F(DeviceTest, AnAddressThatCannotBeOpenedFailsWithoutADeviceToo) {
  pulse.TakeCardAway();
  EXPECT_EQ(driver.Open(station.Url("/none")), platform::kErrorFileNotFound);
}

TEST_F(DeviceTest, AStationContinuesLiveWhenItsOnlyCardComesBack) {
  ASSERT_TRUE(PlaysTheStation());
  pulse.TakeCardAway();
  ASSERT_TRUE(IsWithoutDevice());
  EXPECT_TRUE(WaitUntil([&] { return station.Open() == 0; }, kSoon));
  ExpectNothingToMove();
  sends_new_sound = true;
  pulse.GiveCardBack();
  Listen();
  EXPECT_TRUE(HearsAtOnce(kNewHertz));
}

TEST_F(DeviceTest, ASuspendedCardPilesNothingUpAndContinuesLive) {
  ASSERT_TRUE(PlaysTheStation());
  pulse.Suspend(true);
  const double suspended = driver.Seconds();
  ASSERT_TRUE(IsWithoutDevice());
  EXPECT_LT(driver.Seconds() - suspended, 0.8) << "only what is heard counts";
  EXPECT_TRUE(WaitUntil([&] { return station.Open() == 0; }, kSoon));
  ExpectNothingToMove();
  sends_new_sound = true;
  pulse.Suspend(false);
  Listen();
  EXPECT_TRUE(HearsAtOnce(kNewHertz));
  EXPECT_EQ(station.Requests("/live"), 2);
}

TEST_F(DeviceTest, AStreamThatTheSoundServerEndsContinues) {
  ASSERT_TRUE(PlaysTheStation());
  sends_new_sound = true;
  pulse.KillStream("Funkhausplayer");
  EXPECT_TRUE(Hears(kNewHertz));
  EXPECT_EQ(driver.State(), 1);
}

TEST_F(DeviceTest, AStreamMovesWithTheDefaultCardUninterrupted) {
  ASSERT_TRUE(PlaysTheStation());
  pulse.PlugIn();
  ASSERT_TRUE(loudness->WaitForSilence(300ms, kSoon)) << "the other card plays it";
  pulse.MakeDefault("ci");
  EXPECT_TRUE(Hears(kOldHertz));
  EXPECT_EQ(station.Requests("/live"), 1);
  EXPECT_TRUE(driver.log.empty());
}

TEST_F(DeviceTest, ASoundServerThatHangsAndContinuesIsHeardLive) {
  ASSERT_TRUE(PlaysTheStation());
  pulse.Signal(SIGSTOP);
  ASSERT_TRUE(IsWithoutDevice());
  ExpectNothingToMove();
  sends_new_sound = true;
  pulse.Signal(SIGCONT);
  EXPECT_TRUE(Hears(kNewHertz));
}

TEST_F(DeviceTest, AStopCountsThoughStartFollowsWhileTheSoundServerHangs) {
  ASSERT_TRUE(PlaysTheStation());
  pulse.Signal(SIGSTOP);
  // The item's thread asks the sound server for a pause, and waits for the answer.
  ASSERT_EQ(driver.Pause(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return driver.Peaks() == std::vector<float>({0.0F, 0.0F}); }, kSoon));
  ASSERT_EQ(driver.Stop(), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  EXPECT_EQ(station.Requests("/live"), 1);
  sends_new_sound = true;
  pulse.Signal(SIGCONT);
  EXPECT_TRUE(Hears(kNewHertz)) << "the station is reopened";
  EXPECT_EQ(station.Requests("/live"), 2);
}

TEST_F(DeviceTest, AFileContinuesWhereItWas) {
  const std::string first = MakeTone(folder, "1.flac", "flac", {.hertz = kOldHertz, .seconds = 2});
  const std::string file = MakeTone(folder, "t.flac", "flac", {.hertz = kNewHertz, .seconds = 2},
                                    "-i " + first + " -filter_complex [1:a][0:a]concat=n=2:v=0:a=1");
  ASSERT_EQ(driver.Open(file), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(Hears(kOldHertz));
  ASSERT_TRUE(WaitUntil([&] { return driver.Seconds() > 2.3; }, kSoon));
  pulse.Stop();
  ASSERT_TRUE(IsWithoutDevice());
  ExpectNothingToMove();
  const double before = driver.Seconds();
  pulse.Start();
  Listen();
  EXPECT_TRUE(HearsAtOnce(kNewHertz));
  EXPECT_GE(driver.Seconds(), before);
  EXPECT_TRUE(WaitUntil([&] { return driver.State() == 2; }, 6s)) << "it ends as ever";
}

TEST_F(DeviceTest, APausedStationIsHeardThoughTheSoundServerRestartedMeanwhile) {
  ASSERT_TRUE(PlaysTheStation());
  ASSERT_EQ(driver.Pause(), kSOk);
  ASSERT_EQ(driver.SetVolume(0.3F), kSOk);
  pulse.Stop();
  pulse.Start();
  Listen();
  EXPECT_EQ(driver.State(), 3);
  ASSERT_EQ(driver.Start(), kSOk);
  EXPECT_TRUE(loudness->WaitForSound(300ms, kSoon));
  EXPECT_NEAR(driver.Volume(), 0.3, 0.01) << "what was set in the pause";
}

TEST_F(DeviceTest, AStationIsHeardThoughTheSoundServerDiedBetweenOpeningAndStart) {
  // Whether the sink notices the death before or at its start is a matter of microseconds.
  for (int death = 0; death < 5; ++death) {
    ASSERT_EQ(driver.Open(station.Url("/live")), kSOk);
    pulse.Stop();
    ASSERT_EQ(driver.Start(), kSOk);
    ASSERT_TRUE(IsWithoutDevice());
    pulse.Start();
    Listen();
    ASSERT_TRUE(Hears(kOldHertz));
    driver.Close();
  }
}

TEST_F(DeviceTest, StopEndsTheSearch) {
  ASSERT_TRUE(PlaysTheStation());
  pulse.Suspend(true);
  ASSERT_TRUE(IsWithoutDevice());
  const auto looks = [&] { return pulse.FindStream("Funkhausplayer").has_value(); };
  ASSERT_TRUE(WaitUntil(looks, kSoon));
  ASSERT_EQ(driver.Stop(), kSOk);
  EXPECT_EQ(driver.State(), 2);
  EXPECT_EQ(driver.Seconds(), 0.0);
  EXPECT_TRUE(WaitUntil([&] { return !looks(); }, kSoon));
  EXPECT_FALSE(WaitUntil(looks, 1500ms));
  pulse.Suspend(false);
  ASSERT_EQ(driver.Start(), kSOk);
  Listen();
  EXPECT_TRUE(loudness->WaitForSound(300ms, kSoon));
}

TEST_F(DeviceTest, WhatTheSoundServerRemembersAppliesThoughItWasNotThereAtTheStart) {
  pulse.Stop();
  pulse.RememberVolumes();
  pulse.Start();
  Listen();
  ASSERT_TRUE(PlaysTheStation());
  pulse.MoveSlider("Funkhausplayer", 40);
  ASSERT_TRUE(WaitUntil([&] { return std::abs(driver.Volume() - 0.4F) < 0.01F; }, kSoon));
  driver.Close();
  pulse.Stop();
  SessionDriver later;
  ASSERT_EQ(later.Open(station.Url("/live")), kSOk);
  ASSERT_EQ(later.SetVolume(later.Volume()), kSOk) << "as the slider does when it takes the value";
  ASSERT_EQ(later.Start(), kSOk);
  pulse.Start();
  ASSERT_TRUE(WaitUntil([&] { return std::abs(later.Volume() - 0.4F) < 0.01F; }, kSoon));
  EXPECT_EQ(pulse.FindStream("Funkhausplayer")->volume_percent, 40);
}

}  // namespace
}  // namespace gstreamer_test
