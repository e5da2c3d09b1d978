// The player of the logic over the system's own objects, with a radio station: it needs with_sound.py.
#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "platform/win32/media/media_results.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

using Station = StationRig;

struct SoundingStation : Station, testing::WithParamInterface<const char*> {};

TEST_P(SoundingStation, IsHeardUntilItIsStopped) {
  player->MediaFileFromUrl(Address(GetParam()));
  ASSERT_EQ(results, std::vector<std::int32_t>{kSOk});
  EXPECT_EQ(player->Duration(), 0);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Heard());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
  EXPECT_NEAR(media->Status().bit_rate, 320000, 1000);
  EXPECT_EQ(media->Status().codec, u"MP3");
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 10'000'000; }));
  player->StopMedia();
  EXPECT_TRUE(Silent());
  EXPECT_TRUE(Disconnected());
}

INSTANTIATE_TEST_SUITE_P(EachKind, SoundingStation,
                         testing::Values("/stream", "/icy", "/titles", "/mislabelled", "/moved"));

TEST_F(Station, ThatHangsUpIsAskedAgain) {
  player->MediaFileFromUrl(Address("/cut"));
  ASSERT_EQ(results, std::vector<std::int32_t>{kSOk});
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(WaitUntil([this] { return Ask("/count?/cut") > 2; }));
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 30'000'000; }));
  EXPECT_TRUE(Heard());
  EXPECT_EQ(player->PlayState(), static_cast<std::int32_t>(ClockState::kRunning));
}

TEST_F(Station, ThatReturnsIsHeardAgain) {
  player->MediaFileFromUrl(Address("/returns"));
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Heard());
  // What was sent before the loss bridges it for a while.
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kHttpStatus);
  EXPECT_TRUE(Silent());
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
}

TEST_F(Station, WhoseNetworkWantsALoginMeanwhileIsHeardAgain) {
  Play("/portal");
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  EXPECT_TRUE(WaitUntil([this] { return media->Status().failure == PlaybackFailure::kWebPage; }));
  EXPECT_TRUE(Silent());
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(Heard());
}

TEST_F(Station, ThatSaysNothingDoesNotHoldUpWhatEndsTheWait) {
  loop.on_paint = [this] { loop.input_ends_wait = Ask("/count?/silent") > 0; };
  player->MediaFileFromUrl(Address("/silent"));
  EXPECT_TRUE(player->OpeningCancelled());
  EXPECT_EQ(results, std::vector<std::int32_t>{});
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
}

TEST_F(Station, ThatSaysNothingIsGivenUp) {
  options.open_deadline = 300ms;
  player.reset();
  media.reset();
  MakePlayer();
  player->MediaFileFromUrl(Address("/silent"));
  EXPECT_FALSE(player->IsMediaReady());
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kNoAnswer);
}

TEST_F(Station, ThatIsNotThereIsReported) {
  player->MediaFileFromUrl(Address("/fehlt"));
  EXPECT_EQ(results, std::vector<std::int32_t>{kErrorFileNotFound});
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kHttpStatus);
  EXPECT_EQ(media->Status().http_status, 404);
}

TEST_F(Station, ThatIsAPageOrAListIsReported) {
  for (const char* path : {"/page", "/list"}) {
    results.clear();
    player->MediaFileFromUrl(Address(path));
    EXPECT_EQ(results, std::vector<std::int32_t>{kMfEUnsupportedByteStreamType}) << path;
    EXPECT_EQ(media->Status().failure, PlaybackFailure::kWebPage) << path;
  }
}

TEST_F(Station, ThatSendsNoSoundIsReported) {
  player->MediaFileFromUrl(Address("/noise"));
  EXPECT_FALSE(player->IsMediaReady());
  EXPECT_EQ(media->Status().state, PlaybackState::kFailed);
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kUnreadable);
}

TEST_F(Station, ThatSendsAsItSoundsIsHeardWithoutGaps) {
  Play("/unburst");
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(WaitUntil([this] { return Ask("/quietest") > 300; }));
}

TEST_F(Station, ThatRunsDryPausesUntilThereIsEnough) {
  Play("/stalls");
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(Becomes(PlaybackState::kBuffering));
  EXPECT_TRUE(Silent());
  EXPECT_EQ(media->Status().buffered_percent, 0);
  EXPECT_EQ(player->PlayState(), static_cast<std::int32_t>(ClockState::kRunning));
  EXPECT_EQ(Ask("/go"), 0);
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
}

TEST_F(Station, ThatEndsWithAllItPromisedIsOver) {
  Play("/whole");
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(Becomes(PlaybackState::kEnded));
  EXPECT_EQ(Ask("/count?/whole"), 1);
}

TEST_F(Station, ThatWasStoppedIsConnectedAgainByStart) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  player->StopMedia();
  EXPECT_TRUE(Silent());
  EXPECT_TRUE(Disconnected());
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

TEST_F(Station, ThatIsPausedContinues) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  player->PauseMedia();
  EXPECT_TRUE(Silent());
  EXPECT_EQ(media->Status().state, PlaybackState::kPaused);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Heard());
}

}  // namespace
}  // namespace platform::win32
