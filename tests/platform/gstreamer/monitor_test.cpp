// The state of playing that the monitor reports while items are opened, played, lost and stopped.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/child_process.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"
#include "tests/support/pulse_server.h"
#include "tests/support/temp_folder.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::kSOk;
using platform::PlaybackFailure;
using platform::PlaybackState;
using platform::PlaybackStatus;
using test_support::LiveHead;
using test_support::MakeTone;
using test_support::MediaHttpServer;
using test_support::PulseServer;
using test_support::ReadBytes;
using test_support::TempFolder;
using test_support::WaitUntil;

class MonitorTest : public testing::Test {
 protected:
  PlaybackStatus Status() { return driver.Media().Status(); }
  bool Reaches(PlaybackState state) {
    return WaitUntil([&] { return Status().state == state; }, 10s);
  }
  std::string Mp3(double seconds) {
    return ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = seconds}, "-b:a 128k"));
  }

  TempFolder folder;
  std::atomic<bool> lose{false};
  std::atomic<bool> come_back{false};
  std::atomic<int> listeners{0};
  MediaHttpServer server;
  SessionDriver driver{Unheard()};
};

TEST_F(MonitorTest, BeforeTheFirstOpeningNothingPlays) { EXPECT_EQ(Status(), PlaybackStatus{}); }

TEST_F(MonitorTest, AnAddressIsConnectingUntilItPlays) {
  const std::string sound = Mp3(20);
  std::vector<PlaybackState> while_opening;
  server.On("/x", [&, sound](MediaHttpServer::Connection& connection) {
    while_opening.push_back(Status().state);
    if (connection.Send(LiveHead("audio/mpeg") + sound)) connection.StaySilent(20s);
  });
  ASSERT_EQ(driver.Open(server.Url("/x")), kSOk);
  EXPECT_EQ(while_opening, std::vector<PlaybackState>{PlaybackState::kConnecting});
  EXPECT_EQ(Status().state, PlaybackState::kConnecting) << "until it is started";
  driver.Start();
  EXPECT_TRUE(Reaches(PlaybackState::kPlaying));
}

TEST_F(MonitorTest, APlayingStationHasItsFormatAndRate) {
  const std::string sound = Mp3(20);
  server.On("/x", [sound](MediaHttpServer::Connection& connection) {
    if (connection.Send(LiveHead("audio/mpeg") + sound)) connection.StaySilent(20s);
  });
  ASSERT_EQ(driver.Open(server.Url("/x")), kSOk);
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kPlaying));
  EXPECT_EQ(Status().codec, u"MP3");
  EXPECT_TRUE(WaitUntil([&] { return Status().bit_rate == 128000; }, 5s)) << Status().bit_rate;
}

TEST_F(MonitorTest, AFileThatWasPlayedToItsEndHasEnded) {
  ASSERT_EQ(driver.Open(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 0.5})), kSOk);
  driver.Start();
  EXPECT_TRUE(Reaches(PlaybackState::kEnded));
  EXPECT_EQ(Status().failure, PlaybackFailure::kNone);
}

TEST_F(MonitorTest, PauseStopAndClosingAreSeenAtOnce) {
  ASSERT_EQ(driver.Open(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 20})), kSOk);
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kPlaying));
  driver.Pause();
  EXPECT_TRUE(Reaches(PlaybackState::kPaused));
  EXPECT_EQ(Status().codec, u"") << "known of what is heard only";
  driver.Stop();
  EXPECT_EQ(Status(), PlaybackStatus{});
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kPlaying));
  driver.Close();
  EXPECT_EQ(Status(), PlaybackStatus{});
}

TEST_F(MonitorTest, ABrokenStationSaysHowLongItWaitsForTheNextTry) {
  const std::string sound = Mp3(1);
  server.On("/x", [sound](MediaHttpServer::Connection& connection) {
    connection.Send(LiveHead("audio/mpeg") + sound);
  });
  ASSERT_EQ(driver.Open(server.Url("/x")), kSOk);
  server.Refuse();
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kReconnecting));
  EXPECT_TRUE(WaitUntil([&] { return Status().seconds_to_next_try == 1; }, 5s));
  server.Listen();
  EXPECT_TRUE(Reaches(PlaybackState::kPlaying));
  EXPECT_EQ(Status().failure, PlaybackFailure::kNone) << "all is well again";
}

TEST_F(MonitorTest, ABufferThatRanDrySaysHowFullItIs) {
  const std::string sound = Mp3(6);
  server.On("/x", [this, sound](MediaHttpServer::Connection& connection) {
    if (!connection.Send(LiveHead("audio/mpeg") + sound.substr(0, sound.size() / 6))) return;
    WaitUntil([this] { return come_back.load(); }, 20s);
    if (connection.Send(sound.substr(sound.size() / 6, sound.size() / 12))) connection.StaySilent(20s);
  });
  ASSERT_EQ(driver.Open(server.Url("/x")), kSOk);
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kPlaying));
  ASSERT_TRUE(Reaches(PlaybackState::kBuffering));
  EXPECT_LT(Status().buffered_percent, 10);
  come_back = true;
  EXPECT_TRUE(WaitUntil([&] { return Status().buffered_percent >= 10; }, 10s));
  EXPECT_EQ(Status().state, PlaybackState::kBuffering) << "half a second is not enough";
}

TEST_F(MonitorTest, ALossIsNotReportedWhileWhatIsBufferedBridgesIt) {
  const std::string sound = Mp3(6);
  server.On("/x", [this, sound](MediaHttpServer::Connection& connection) {
    if (++listeners == 1) {
      if (connection.Send(LiveHead("audio/mpeg") + sound)) WaitUntil([&] { return lose.load(); }, 20s);
      return;
    }
    WaitUntil([&] { return come_back.load(); }, 20s);
    if (connection.Send(LiveHead("audio/mpeg") + sound)) connection.StaySilent(20s);
  });
  ASSERT_EQ(driver.Open(server.Url("/x")), kSOk);
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kPlaying));
  lose = true;
  ASSERT_TRUE(WaitUntil([&] { return listeners == 2; }, 20s)) << "it is opened again";
  EXPECT_EQ(Status().state, PlaybackState::kPlaying);
  EXPECT_EQ(Status().failure, PlaybackFailure::kNone) << "known already, and no reason to worry";
  come_back = true;
}

TEST_F(MonitorTest, ALossIsReportedOnceATryHasFailedAlthoughTheBufferIsStillHeard) {
  const std::string sound = Mp3(6);
  server.On("/x", [sound](MediaHttpServer::Connection& connection) {
    connection.Send(LiveHead("audio/mpeg") + sound);
  });
  ASSERT_EQ(driver.Open(server.Url("/x")), kSOk);
  server.Refuse();
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kReconnecting));
  EXPECT_LT(driver.Seconds(), 5.0) << "the buffer holds more";
}

TEST_F(MonitorTest, AFileOnAServerThatBreaksOffHasFailed) {
  const std::string sound = Mp3(20);
  server.On("/x", [this, sound](MediaHttpServer::Connection& connection) {
    if (++listeners > 1) return;
    connection.Send("HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nContent-Length: " +
                    std::to_string(sound.size()) + "\r\n\r\n" + sound.substr(0, sound.size() / 10));
    WaitUntil([this] { return lose.load(); }, 20s);
  });
  ASSERT_EQ(driver.Open(server.Url("/x")), kSOk);
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kPlaying));
  lose = true;
  ASSERT_TRUE(Reaches(PlaybackState::kFailed));
  EXPECT_EQ(Status().failure, PlaybackFailure::kConnectionLost);
}

TEST_F(MonitorTest, WithoutASoundDeviceThatIsSaid) {
  if (std::filesystem::exists("/proc/asound/card0")) GTEST_SKIP() << "this machine has a sound card";
  setenv("PULSE_SERVER", ("unix:" + (folder.Path() / "nobody-listens-here").string()).c_str(), 1);
  SessionDriver automatic;
  ASSERT_EQ(automatic.Open(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 20})), kSOk);
  automatic.Start();
  EXPECT_TRUE(WaitUntil([&] { return automatic.Media().Status().state == PlaybackState::kNoDevice; }, 10s));
}

TEST_F(MonitorTest, AStopIsSeenAtOnceAlthoughTheSoundServerHangs) {
  PulseServer pulse;
  pulse.UseInThisProcess();
  SessionDriver heard;
  ASSERT_EQ(heard.Open(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 20})), kSOk);
  heard.Start();
  ASSERT_TRUE(WaitUntil([&] { return heard.Media().Status().state == PlaybackState::kPlaying; }, 10s));
  pulse.Signal(SIGSTOP);
  heard.Stop();
  EXPECT_EQ(heard.Media().Status(), PlaybackStatus{});
  pulse.Signal(SIGCONT);
}

TEST_F(MonitorTest, ASoundServerThatHangsIsNotTakenForASilentStation) {
  const std::string file = MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 1});
  PulseServer pulse;
  pulse.UseInThisProcess();
  pulse.Signal(SIGSTOP);
  platform::gstreamer::GstMediaOptions options;
  options.open_deadline = 500ms;
  {
    SessionDriver held_up(options);
    EXPECT_NE(held_up.Open(file), kSOk);
    EXPECT_EQ(held_up.Media().Status().state, PlaybackState::kFailed);
    EXPECT_EQ(held_up.Media().Status().failure, PlaybackFailure::kNoSoundDevice);
  }
  pulse.Signal(SIGCONT);
}

TEST_F(MonitorTest, ASilentServerGivesNoAnswer) {
  auto options = Unheard();
  options.open_deadline = 300ms;
  SessionDriver impatient(options);
  server.On("/x", [](MediaHttpServer::Connection& connection) { connection.StaySilent(30s); });
  ASSERT_NE(impatient.Open(server.Url("/x")), kSOk);
  const PlaybackStatus status = impatient.Media().Status();
  EXPECT_EQ(status.state, PlaybackState::kFailed);
  EXPECT_EQ(status.failure, PlaybackFailure::kNoAnswer);
  impatient.Close();
  EXPECT_EQ(impatient.Media().Status(), status) << "a failure stays until the next opening";
}

}  // namespace
}  // namespace gstreamer_test
