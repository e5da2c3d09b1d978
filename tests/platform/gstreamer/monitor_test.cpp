// How playing stands, as the monitor says it while items are opened, played, lost and stopped.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/child_process.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"
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
  MediaHttpServer server;
  SessionDriver driver{Unheard()};
};

TEST_F(MonitorTest, BeforeTheFirstOpeningNothingPlays) { EXPECT_EQ(Status(), PlaybackStatus{}); }

TEST_F(MonitorTest, AnAddressIsConnectingUntilItPlays) {
  const std::string sound = Mp3(20);
  std::vector<PlaybackState> while_opening;
  server.On("/x", [&](MediaHttpServer::Connection& connection) {
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
  server.On("/x", [&](MediaHttpServer::Connection& connection) {
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
  driver.Stop();
  EXPECT_EQ(Status(), PlaybackStatus{});
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kPlaying));
  driver.Close();
  EXPECT_EQ(Status(), PlaybackStatus{});
}

TEST_F(MonitorTest, ABrokenStationSaysHowLongItWaitsForTheNextTry) {
  const std::string sound = Mp3(1);
  server.On("/x", [&](MediaHttpServer::Connection& connection) {
    connection.Send(LiveHead("audio/mpeg") + sound);
  });
  ASSERT_EQ(driver.Open(server.Url("/x")), kSOk);
  server.Refuse();
  driver.Start();
  ASSERT_TRUE(Reaches(PlaybackState::kReconnecting));
  EXPECT_TRUE(WaitUntil([&] { return Status().seconds_to_next_try == 1; }, 5s));
  server.Listen();
  EXPECT_TRUE(Reaches(PlaybackState::kPlaying));
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
