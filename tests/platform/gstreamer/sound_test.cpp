#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <memory>

#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/loudness.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"
#include "tests/support/pulse_server.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::kEInvalidArg;
using platform::kSOk;
using test_support::LiveHead;
using test_support::Loudness;
using test_support::MakeTone;
using test_support::MediaHttpServer;
using test_support::PulseServer;
using test_support::ReadBytes;
using test_support::TempFolder;
using test_support::WaitUntil;
using testing::ElementsAre;
using testing::FloatNear;
using Clock = std::chrono::steady_clock;

constexpr const char* kApplication = "Funkhausplayer";

class SoundTest : public testing::Test {
 protected:
  SoundTest() { pulse.UseInThisProcess(); }
  bool StartTone(SessionDriver& player, const test_support::Tone& tone = {.seconds = 20}) {
    const std::string file = MakeTone(folder, "t.flac", "flac", tone);
    return player.Open(file) == kSOk && player.Start() == kSOk && loudness.WaitForSound(100ms, kSoon);
  }
  bool IsAsLoudAs(double level) {
    return WaitUntil([&] { return std::abs(loudness.Last(100ms) - level) < 0.1 * level + 0.001; }, kSoon);
  }

  TempFolder folder;
  PulseServer pulse;
  Loudness loudness{pulse};
};

/// Of this process.
std::ptrdiff_t Threads() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                       std::filesystem::directory_iterator());
}

/// A sine of half the full scale.
constexpr double kToneLevel = 0.5 * 0.7071;

TEST_F(SoundTest, TheVolumeIsTheProgramsOwnEntryInTheMixer) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  EXPECT_EQ(driver.Volume(), 1.0F);
  EXPECT_TRUE(IsAsLoudAs(kToneLevel));
  EXPECT_EQ(driver.SetVolume(0.5F), kSOk);
  EXPECT_FLOAT_EQ(driver.Volume(), 0.5F);
  EXPECT_TRUE(IsAsLoudAs(kToneLevel / 8)) << "the mixer's scale is cubic";
  const auto stream = pulse.FindStream(kApplication);
  ASSERT_TRUE(stream);
  EXPECT_EQ(stream->volume_percent, 50);
  EXPECT_NEAR(stream->decibels, -18.06, 0.2);
  EXPECT_EQ(driver.SetVolume(0.0F), kSOk);
  EXPECT_TRUE(loudness.WaitForSilence(200ms, kSoon));
}

TEST_F(SoundTest, MuteIsReadBackFromTheMixer) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  EXPECT_FALSE(driver.Mute());
  EXPECT_EQ(driver.SetMute(true), kSOk);
  EXPECT_TRUE(driver.Mute());
  EXPECT_TRUE(loudness.WaitForSilence(200ms, kSoon));
  EXPECT_TRUE(pulse.FindStream(kApplication)->mute);
  EXPECT_EQ(driver.SetMute(false), kSOk);
  EXPECT_TRUE(IsAsLoudAs(kToneLevel));
  EXPECT_FALSE(pulse.FindStream(kApplication)->mute);
}

TEST_F(SoundTest, WhatTheUserSetsInTheMixerIsTheProgramsVolume) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  pulse.MoveSlider(kApplication, 50);
  EXPECT_TRUE(WaitUntil([&] { return std::abs(driver.Volume() - 0.5F) < 0.002F; }, kSoon));
}

TEST_F(SoundTest, WhatTheUserMutesInTheMixerIsMutedInTheProgram) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  pulse.Mute(kApplication, true);
  EXPECT_TRUE(WaitUntil([&] { return driver.Mute(); }, kSoon));
  EXPECT_TRUE(WaitUntil([&] { return driver.Peaks() == std::vector<float>({0.0F, 0.0F}); }, kSoon));
  pulse.Mute(kApplication, false);
  EXPECT_TRUE(WaitUntil([&] { return !driver.Mute(); }, kSoon));
  EXPECT_TRUE(IsAsLoudAs(kToneLevel));
}

TEST_F(SoundTest, WhatTheUserSetsInTheMixerJustBeforeTheItemClosesIsNotLost) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  ASSERT_EQ(driver.Pause(), kSOk);
  // While the sound is paused the sink reports nothing.
  ASSERT_TRUE(WaitUntil([&] { return pulse.FindStream(kApplication)->corked; }, kSoon));
  pulse.MoveSlider(kApplication, 30);
  pulse.Mute(kApplication, true);
  ASSERT_FALSE(driver.Mute());
  driver.Close();
  ASSERT_EQ(driver.Open(MakeTone(folder, "next.flac", "flac")), kSOk);
  EXPECT_TRUE(driver.Mute());
  EXPECT_NEAR(driver.Volume(), 0.3F, 0.002F);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return pulse.FindStream(kApplication).has_value(); }, kSoon));
  EXPECT_EQ(pulse.FindStream(kApplication)->volume_percent, 30);
  EXPECT_TRUE(pulse.FindStream(kApplication)->mute);
}

TEST_F(SoundTest, WhatTheUserSetsInTheMixerWhileABreakIsBridgedIsNotLost) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 8}));
  MediaHttpServer server;
  server.On("/live",
            [&, first = std::make_shared<std::atomic<bool>>(true)](MediaHttpServer::Connection& connection) {
              const bool ends = first->exchange(false);
              if (connection.Send(LiveHead("audio/mpeg") + sound) && !ends) connection.StaySilent(20s);
            });
  SessionDriver driver;
  ASSERT_EQ(driver.Open(server.Url("/live")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return server.Requests("/live") == 2; }, kSoon)) << "opened again meanwhile";
  ASSERT_LT(driver.Seconds(), 7.0) << "the first connection is still heard";
  pulse.MoveSlider(kApplication, 30);
  ASSERT_TRUE(WaitUntil([&] { return std::abs(driver.Volume() - 0.3F) < 0.002F; }, kSoon));
  ASSERT_TRUE(WaitUntil([&] { return driver.Seconds() > 8.5; }, kSoon)) << "the second one is heard";
  EXPECT_EQ(pulse.FindStream(kApplication)->volume_percent, 30);
}

TEST_F(SoundTest, AVolumeOutsideItsRangeIsRefused) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  for (const float volume : {-0.1F, 1.1F, std::nanf("")}) EXPECT_EQ(driver.SetVolume(volume), kEInvalidArg);
  EXPECT_EQ(driver.Volume(), 1.0F);
}

TEST_F(SoundTest, VolumeAndMuteSurviveANewConnectionAndTheNextItem) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 1}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    connection.Send(LiveHead("audio/mpeg") + sound);
  });
  SessionDriver driver;
  ASSERT_EQ(driver.Open(server.Url("/live")), kSOk);
  ASSERT_EQ(driver.SetVolume(0.5F), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return server.Requests("/live") >= 2; }, kSoon));
  ASSERT_TRUE(WaitUntil([&] { return loudness.Last(100ms) > Loudness::kSilence; }, kSoon));
  EXPECT_TRUE(IsAsLoudAs(kToneLevel / 8));
  EXPECT_FLOAT_EQ(driver.Volume(), 0.5F);
  ASSERT_TRUE(StartTone(driver));
  EXPECT_FLOAT_EQ(driver.Volume(), 0.5F);
  EXPECT_TRUE(IsAsLoudAs(kToneLevel / 8));
}

TEST_F(SoundTest, ASmallVolumeOfTheMixerIsFollowedThoughTheProgramWasSilent) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  ASSERT_EQ(driver.SetVolume(0.0F), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return pulse.FindStream(kApplication)->volume_percent == 0; }, kSoon));
  pulse.MoveSlider(kApplication, 10);
  EXPECT_TRUE(WaitUntil([&] { return std::abs(driver.Volume() - 0.1F) < 0.002F; }, kSoon));
  ASSERT_EQ(driver.Open(MakeTone(folder, "t.flac", "flac")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return pulse.FindStream(kApplication).has_value(); }, kSoon));
  EXPECT_EQ(pulse.FindStream(kApplication)->volume_percent, 10) << "the next item is not silent again";
}

TEST_F(SoundTest, AnAmplificationOfTheMixerSurvivesANewConnectionAndTheNextItem) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 2}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    connection.Send(LiveHead("audio/mpeg") + sound);
  });
  const auto percent = [&] {
    const auto stream = pulse.FindStream(kApplication);
    return stream ? stream->volume_percent : -1;
  };
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  pulse.MoveSlider(kApplication, 130);
  EXPECT_TRUE(IsAsLoudAs(kToneLevel * 1.3 * 1.3 * 1.3));
  ASSERT_TRUE(WaitUntil([&] { return driver.Peaks().at(0) > 0.9F; }, kSoon)) << "the program knows it";
  EXPECT_EQ(driver.Volume(), 1.0F) << "the program's own scale ends there";
  EXPECT_THAT(driver.Peaks(), testing::Each(testing::Le(1.0F)));
  ASSERT_EQ(driver.Open(server.Url("/live")), kSOk);
  ASSERT_EQ(driver.SetVolume(driver.Volume()), kSOk) << "as the slider does when it takes the value";
  ASSERT_EQ(driver.Start(), kSOk);
  EXPECT_TRUE(WaitUntil([&] { return percent() == 130; }, kSoon));
  ASSERT_TRUE(WaitUntil([&] { return server.Requests("/live") >= 2; }, 8s));
  ASSERT_TRUE(loudness.WaitForSound(300ms, kSoon));
  EXPECT_TRUE(WaitUntil([&] { return percent() == 130; }, kSoon));
  ASSERT_EQ(driver.SetVolume(0.5F), kSOk);
  EXPECT_TRUE(WaitUntil([&] { return percent() == 50; }, kSoon));
}

TEST_F(SoundTest, ThePeaksShowEveryChannelWithVolumeAndMute) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver));
  EXPECT_THAT(driver.Peaks(), ElementsAre(FloatNear(0.5F, 0.02F), FloatNear(0.5F, 0.02F)));
  float peak = 0;
  EXPECT_EQ(Call(driver.Media(), driver.meter, platform::IAudioMeterInformation::GetPeakValue, &peak), kSOk);
  EXPECT_NEAR(peak, 0.5F, 0.02F);
  driver.SetVolume(0.5F);
  EXPECT_THAT(driver.Peaks(), ElementsAre(FloatNear(0.0625F, 0.003F), FloatNear(0.0625F, 0.003F)));
  driver.SetMute(true);
  EXPECT_THAT(driver.Peaks(), ElementsAre(0.0F, 0.0F));
  driver.SetMute(false);
  driver.Stop();
  EXPECT_THAT(driver.Peaks(), ElementsAre(0.0F, 0.0F));
}

TEST_F(SoundTest, SurroundSoundHasSixChannels) {
  SessionDriver driver;
  ASSERT_TRUE(StartTone(driver, {.seconds = 5, .rate = 48000, .channels = 6}));
  EXPECT_EQ(driver.Channels(), 6);
  EXPECT_THAT(driver.Peaks(), testing::SizeIs(6));
  EXPECT_THAT(driver.Peaks(), testing::Each(FloatNear(0.5F, 0.02F)));
  EXPECT_EQ(pulse.FindStream(kApplication)->channels, 6);
  std::vector<float> two(2);
  EXPECT_EQ(Call(driver.Media(), driver.meter, platform::IAudioMeterInformation::GetChannelsPeakValues, 2,
                 two.data()),
            kEInvalidArg);
}

TEST_F(SoundTest, ThePeaksAreTheSameInEveryFormatOfSamples) {
  for (const char* codec : {"pcm_u8", "pcm_s16le", "pcm_s24le", "pcm_s32le", "pcm_f32le", "pcm_f64le"}) {
    SessionDriver driver;
    ASSERT_EQ(driver.Open(MakeTone(folder, std::string(codec) + ".wav", codec)), kSOk) << codec;
    ASSERT_EQ(driver.Start(), kSOk);
    EXPECT_TRUE(WaitUntil(
        [&] {
          const auto peaks = driver.Peaks();
          return !peaks.empty() && std::abs(peaks[0] - 0.5F) < 0.02F;
        },
        3s))
        << codec;
  }
}

TEST_F(SoundTest, ThePeaksRiseAndFallWithWhatIsHeard) {
  // Half a second of sound and half a second of silence by turns.
  const std::string file =
      MakeTone(folder, "t.flac", "flac", {.seconds = 8}, "-af volume='lt(mod(t,1),0.5)':eval=frame");
  SessionDriver driver;
  ASSERT_EQ(driver.Open(file), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  int agreements = 0;
  int looks = 0;
  const auto start = Clock::now();
  WaitUntil(
      [&] {
        const bool heard = loudness.Last(30ms) > 0.1;
        const auto peaks = driver.Peaks();
        const bool shown = !peaks.empty() && peaks[0] > 0.1F;
        if (Clock::now() - start > 1s) {
          ++looks;
          if (heard == shown) ++agreements;
        }
        return Clock::now() - start > 5s;
      },
      8s);
  // Twice a second there is an edge; being 50 ms apart at each would be one look in ten.
  EXPECT_GT(agreements, looks * 85 / 100) << "of " << looks;
  EXPECT_GT(looks, 100);
}

TEST_F(SoundTest, TheMeterKeepsWorkingOverANewConnection) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 1.5}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    connection.Send(LiveHead("audio/mpeg") + sound);
  });
  SessionDriver driver;
  ASSERT_EQ(driver.Open(server.Url("/live")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  const auto shows = [&] {
    const auto peaks = driver.Peaks();
    return peaks.size() == 2 && peaks[0] > 0.3F;
  };
  EXPECT_TRUE(WaitUntil(shows, 5s));
  ASSERT_TRUE(WaitUntil([&] { return server.Requests("/live") >= 3; }, 8s));
  EXPECT_TRUE(WaitUntil(shows, 5s));
}

TEST_F(SoundTest, TheSoundMovesOnWhenItsDeviceIsUnplugged) {
  pulse.RescueStreams();
  pulse.PlugIn();
  SessionDriver driver;
  ASSERT_EQ(driver.Open(MakeTone(folder, "t.flac", "flac", {.seconds = 20})), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return driver.Seconds() > 0.5; }, kSoon));
  EXPECT_EQ(loudness.Last(200ms), 0.0) << "the other device plays it";
  pulse.Unplug();
  EXPECT_TRUE(loudness.WaitForSound(500ms, 5s));
  EXPECT_EQ(driver.State(), 1);
  EXPECT_TRUE(IsAsLoudAs(kToneLevel));
  EXPECT_TRUE(driver.log.empty()) << "the same stream continues";
}

TEST_F(SoundTest, ALiveStreamIsHeardOnAnotherDeviceThoughTheServerEndsTheStreamsOfAnUnpluggedOne) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 20}));
  MediaHttpServer server;
  server.On("/live", [&](MediaHttpServer::Connection& connection) {
    if (connection.Send(LiveHead("audio/mpeg") + sound)) connection.StaySilent(20s);
  });
  pulse.PlugIn();
  SessionDriver driver;
  ASSERT_EQ(driver.Open(server.Url("/live")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return driver.Seconds() > 0.5; }, kSoon));
  EXPECT_EQ(loudness.Last(200ms), 0.0) << "the other device plays it";
  pulse.Unplug();
  EXPECT_TRUE(loudness.WaitForSound(500ms, 5s));
  EXPECT_EQ(driver.State(), 1);
}

TEST_F(SoundTest, ASoundServerThatHangsBlocksNobody) {
  platform::gstreamer::GstMediaOptions options;
  options.open_deadline = 500ms;
  const std::string file = MakeTone(folder, "t.flac", "flac");
  const auto threads = Threads();
  pulse.Signal(SIGSTOP);
  const auto start = Clock::now();
  {
    SessionDriver driver(options);
    EXPECT_LT(driver.Open(file), 0);
    EXPECT_GT(driver.loop.paints, 10);
  }
  EXPECT_LT(Clock::now() - start, 10s) << "though the server never answers";
  pulse.Signal(SIGCONT);
  EXPECT_TRUE(WaitUntil([&] { return Threads() <= threads; }, 10s)) << "nothing stays connected";
}

}  // namespace
}  // namespace gstreamer_test
