#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <fstream>

#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/loudness.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"
#include "tests/support/pulse_server.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::kSOk;
using test_support::HttpAnswer;
using test_support::Loudness;
using test_support::MakeTone;
using test_support::MediaHttpServer;
using test_support::PulseServer;
using test_support::ReadBytes;
using test_support::RunProgram;
using test_support::TempFolder;
using test_support::WaitUntil;
using Clock = std::chrono::steady_clock;

class PlayingTest : public testing::Test {
 protected:
  PlayingTest() { pulse.UseInThisProcess(); }
  bool HearsTone(double hertz) {
    return loudness.WaitForSound(100ms, 5s) &&
           WaitUntil([&] { return std::abs(loudness.Frequency(200ms) - hertz) < 15; }, kSoon);
  }
  bool Start(const std::string& address) { return driver.Open(address) == kSOk && driver.Start() == kSOk; }

  TempFolder folder;
  PulseServer pulse;
  Loudness loudness{pulse};
  SessionDriver driver;
};

TEST_F(PlayingTest, AnOpenedFileIsSilentUntilItIsStarted) {
  ASSERT_EQ(driver.Open(MakeTone(folder, "t.mp3", "libmp3lame")), kSOk);
  EXPECT_EQ(driver.State(), 2);
  EXPECT_EQ(driver.Seconds(), 0.0);
  const auto opened = Clock::now();
  EXPECT_FALSE(WaitUntil([&] { return loudness.FirstSoundAfter(opened).has_value(); }, 3s));
  const auto before = Clock::now();
  ASSERT_EQ(driver.Start(), kSOk);
  EXPECT_EQ(driver.State(), 1);
  EXPECT_TRUE(HearsTone(440));
  EXPECT_LT(*loudness.FirstSoundAfter(before) - before, before - opened)
      << "the wait before the start costs nothing";
  EXPECT_NEAR(driver.DurationSeconds().value_or(0), 5.0, 0.1);
}

TEST_F(PlayingTest, EveryFormatOfStationsIsHeard) {
  struct Format {
    const char* name;
    const char* codec;
    const char* more;
  };
  for (const Format format : {Format{"t.mp3", "libmp3lame", ""}, Format{"t.aac", "aac", ""},
                              Format{"t.ogg", "libvorbis", ""}, Format{"t.opus", "libopus", "-ar 48000"},
                              Format{"t.flac", "flac", ""}, Format{"t.oga", "flac", "-f ogg"}}) {
    ASSERT_TRUE(Start(MakeTone(folder, format.name, format.codec, {.seconds = 20}, format.more)))
        << format.name;
    EXPECT_TRUE(HearsTone(440)) << format.name;
    EXPECT_EQ(driver.Channels(), 2) << format.name;
    driver.Close();
    EXPECT_TRUE(loudness.WaitForSilence(50ms, kSoon)) << format.name;
  }
}

TEST_F(PlayingTest, AFileThatEndsIsHeardToItsEndAndStops) {
  const auto start = Clock::now();
  ASSERT_TRUE(Start(MakeTone(folder, "t.flac", "flac", {.seconds = 1.5})));
  ASSERT_TRUE(WaitUntil([&] { return driver.State() == 2; }, kSoon));
  EXPECT_GT(loudness.SoundSince(start), 500ms) << "not when all was read";
  EXPECT_EQ(driver.Seconds(), 0.0);
  EXPECT_TRUE(WaitUntil([&] { return loudness.SoundSince(start) > 1400ms; }, kSoon));
  ASSERT_TRUE(loudness.WaitForSilence(100ms, kSoon));
  EXPECT_TRUE(driver.log.empty()) << "nothing was opened again";
  EXPECT_EQ(driver.Start(), kSOk);
  EXPECT_EQ(driver.State(), 1);
  EXPECT_TRUE(HearsTone(440)) << "it starts again from its beginning";
  EXPECT_LT(driver.Seconds(), 1.5);
}

TEST_F(PlayingTest, AFileOnAServerThatEndsIsNotOpenedAgain) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 1}));
  MediaHttpServer server;
  server.On("/t.mp3", [&](MediaHttpServer::Connection& connection) {
    connection.Send(HttpAnswer("200 OK", "audio/mpeg", sound));
  });
  ASSERT_TRUE(Start(server.Url("/t.mp3")));
  EXPECT_NEAR(driver.DurationSeconds().value_or(0), 1.0, 0.2);
  ASSERT_TRUE(WaitUntil([&] { return driver.State() == 2; }, 8s));
  EXPECT_TRUE(driver.log.empty());
  EXPECT_EQ(server.Requests("/t.mp3"), 1);
}

TEST_F(PlayingTest, PauseKeepsThePositionAndStartContinues) {
  ASSERT_TRUE(Start(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 20})));
  ASSERT_TRUE(HearsTone(440));
  EXPECT_EQ(driver.Pause(), kSOk);
  EXPECT_EQ(driver.State(), 3);
  ASSERT_TRUE(loudness.WaitForSilence(300ms, kSoon));
  const double paused = driver.Seconds();
  EXPECT_GT(paused, 0.0);
  EXPECT_FALSE(WaitUntil([&] { return driver.Seconds() != paused; }, 300ms));
  EXPECT_EQ(driver.Peaks(), std::vector<float>({0.0F, 0.0F}));
  const auto continued = Clock::now();
  EXPECT_EQ(driver.Start(), kSOk);
  EXPECT_EQ(driver.State(), 1);
  EXPECT_TRUE(HearsTone(440));
  const double position = driver.Seconds();
  EXPECT_GT(position, paused);
  const std::chrono::duration<double> since = Clock::now() - continued;
  EXPECT_LT(position, paused + since.count() + 0.5);
}

TEST_F(PlayingTest, ThePositionCountsWhatWasPlayed) {
  ASSERT_TRUE(Start(MakeTone(folder, "t.ogg", "libvorbis", {.seconds = 10})));
  ASSERT_TRUE(HearsTone(440));
  const auto before = Clock::now();
  const double position = driver.Seconds();
  const auto after = Clock::now();
  ASSERT_TRUE(WaitUntil([&] { return driver.Seconds() >= position + 2.0; }, 8s));
  using Seconds = std::chrono::duration<double>;
  const double least = Seconds(Clock::now() - after).count();
  const double played = driver.Seconds() - position;
  EXPECT_GT(played, least - 0.2);
  EXPECT_LT(played, Seconds(Clock::now() - before).count() + 0.2);
}

class FormatChangeTest : public PlayingTest {
 protected:
  /// A live stream of 2 s in stereo, then 3 s in mono at half the rate.
  void ServeAndStart(const std::string& ending, const std::string& codec, const std::string& type) {
    const std::string stereo = ReadBytes(MakeTone(folder, "a." + ending, codec, {.seconds = 2}));
    const std::string mono = ReadBytes(
        MakeTone(folder, "b." + ending, codec, {.hertz = 880, .seconds = 3, .rate = 22050, .channels = 1}));
    server.On("/live", [all = stereo + mono, type](MediaHttpServer::Connection& connection) {
      if (connection.Send(test_support::LiveHead(type) + all)) connection.StaySilent(10s);
    });
    ASSERT_TRUE(Start(server.Url("/live")));
  }
  void ExpectBothParts() {
    ASSERT_TRUE(HearsTone(440));
    EXPECT_EQ(driver.Channels(), 2);
    EXPECT_TRUE(HearsTone(880));
    EXPECT_EQ(driver.Channels(), 1);
    EXPECT_EQ(driver.State(), 1);
    EXPECT_EQ(server.Requests("/live"), 1);
  }
  MediaHttpServer server;
};

TEST_F(FormatChangeTest, ChainedOggContinuesToPlay) {
  ServeAndStart("ogg", "libvorbis", "application/ogg");
  ExpectBothParts();
}

TEST_F(FormatChangeTest, Mp3ContinuesToPlay) {
  ServeAndStart("mp3", "libmp3lame", "audio/mpeg");
  ExpectBothParts();
}

class HlsTest : public PlayingTest {
 protected:
  /// Cuts a tone into a playlist of 1 s segments, below `folder`/hls/NAME.
  void Cut(const std::string& name, int hertz) {
    const std::string tone = MakeTone(folder, name + ".m4a", "aac", {.hertz = hertz, .seconds = 6});
    std::filesystem::create_directories(folder.Path() / "hls" / name);
    const std::string target = (folder.Path() / "hls" / name).string();
    RunProgram({"ffmpeg", "-y", "-loglevel", "error", "-i", tone, "-c", "copy", "-hls_time", "1",
                "-hls_list_size", "0", "-hls_segment_filename", target + "/%d.ts", target + "/list.m3u8"});
  }
  /// A list of two variants; after the first segment of the first one the second one's are played.
  void CutTwoVariants() {
    Cut("low", 440);
    Cut("high", 440);
    folder.Write("hls/master.m3u8",
                 "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=64000,CODECS=\"mp4a.40.2\"\nlow/list.m3u8\n"
                 "#EXT-X-STREAM-INF:BANDWIDTH=128000,CODECS=\"mp4a.40.2\"\nhigh/list.m3u8\n");
  }
  /// Serves everything below the folder; the better variant's list after a while.
  void Serve(std::chrono::milliseconds better_after = {}) {
    const auto root = folder.Path() / "hls";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
      if (!entry.is_regular_file()) continue;
      const std::string path = "/" + std::filesystem::relative(entry.path(), root).string();
      const bool list = entry.path().extension() == ".m3u8";
      const auto after = path == "/high/list.m3u8" ? better_after : std::chrono::milliseconds();
      server.On(path, [bytes = ReadBytes(entry.path()), list,
                       after](MediaHttpServer::Connection& connection) {
        connection.StaySilent(after);
        connection.Send(HttpAnswer("200 OK", list ? "application/vnd.apple.mpegurl" : "video/mp2t", bytes));
      });
    }
  }
  /// How often the last segment of a list of variants was read.
  [[nodiscard]] int ReadToItsEnd() const {
    int last = 0;
    while (std::filesystem::exists(folder.Path() / "hls/low" / (std::to_string(last + 1) + ".ts"))) ++last;
    const std::string name = std::to_string(last) + ".ts";
    return server.Requests("/low/" + name) + server.Requests("/high/" + name);
  }
  MediaHttpServer server;
};

TEST_F(HlsTest, AListOfSeveralVariantsIsHeard) {
  CutTwoVariants();
  Serve();
  ASSERT_TRUE(Start(server.Url("/master.m3u8")));
  EXPECT_NEAR(driver.DurationSeconds().value_or(0), 6.0, 0.5);
  EXPECT_TRUE(HearsTone(440));
}

TEST_F(HlsTest, ItsLengthIsWaitedForWhileItChangesItsVariant) {
  CutTwoVariants();
  Serve(300ms);
  platform::gstreamer::GstMediaOptions options;
  options.length_limit = 8s;
  SessionDriver patient(options);
  for (int round = 0; round < 3; ++round) {
    const int before = ReadToItsEnd();
    ASSERT_EQ(patient.Open(server.Url("/master.m3u8")), kSOk);
    ASSERT_NEAR(patient.DurationSeconds().value_or(0), 6.0, 0.5) << round;
    ASSERT_TRUE(WaitUntil([&] { return ReadToItsEnd() > before && server.Open() == 0; }, 10s));
  }
}

TEST_F(HlsTest, AListThatOpensBeforeItsLengthIsKnownEndsAllTheSame) {
  CutTwoVariants();
  Serve(300ms);
  platform::gstreamer::GstMediaOptions options;
  options.length_limit = 0s;
  SessionDriver impatient(options);
  ASSERT_EQ(impatient.Open(server.Url("/master.m3u8")), kSOk);
  ASSERT_EQ(impatient.Start(), kSOk);
  EXPECT_TRUE(WaitUntil([&] { return impatient.State() == 2; }, 15s));
  EXPECT_EQ(server.Requests("/master.m3u8"), 1) << "a station would be opened again";
}

TEST_F(HlsTest, ALiveListIsHeardWithoutALength) {
  Cut("live", 440);
  std::string list = folder.Read("hls/live/list.m3u8");
  list.resize(list.find("#EXT-X-ENDLIST"));
  folder.Write("hls/live/list.m3u8", list);
  Serve();
  ASSERT_TRUE(Start(server.Url("/live/list.m3u8")));
  EXPECT_TRUE(HearsTone(440));
  EXPECT_EQ(driver.DurationSeconds(), std::nullopt);
}

}  // namespace
}  // namespace gstreamer_test
