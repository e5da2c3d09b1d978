// What ends the player while it does something with a radio station: it needs with_sound.py.
#include <gtest/gtest.h>

#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

struct ProgramEnd : StationRig {
  /// As the program does when its window has been closed.
  void End() {
    player.reset();
    media.reset();
    EXPECT_EQ(Ask("/go"), 0);
    EXPECT_TRUE(Disconnected());
    EXPECT_TRUE(Silent());
  }
};

TEST_F(ProgramEnd, MayCutAnOpeningShort) {
  loop.on_paint = [this] { loop.input_ends_wait = Ask("/count?/unburst") > 0; };
  player->MediaFileFromUrl(Address("/unburst"));
  EXPECT_TRUE(player->OpeningCancelled());
  End();
}

TEST_F(ProgramEnd, MayCutTheOpeningOfASilentStationShort) {
  loop.on_paint = [this] { loop.input_ends_wait = Ask("/count?/silent") > 0; };
  player->MediaFileFromUrl(Address("/silent"));
  EXPECT_TRUE(player->OpeningCancelled());
  End();
}

TEST_F(ProgramEnd, MayComeBeforeTheStart) {
  player->MediaFileFromUrl(Address("/stream"));
  ASSERT_TRUE(player->IsMediaReady());
  End();
}

// The framework is in use elsewhere, too, so it stays.
TEST_F(ProgramEnd, OfTheFrameworksUseEndsTheStationsReads) {
  player->MediaFileFromUrl(Address("/stream"));
  ASSERT_TRUE(player->IsMediaReady());
  ASSERT_EQ(Ask("/open"), 1);
  ASSERT_EQ(media->MFStartup(1, 0), kSOk);
  EXPECT_EQ(media->MFShutdown(), kSOk);
  EXPECT_TRUE(Disconnected());
}

TEST_F(ProgramEnd, MayComeAtOnceAfterTheStart) {
  Play("/stream");
  End();
}

TEST_F(ProgramEnd, MayComeWhileItPlays) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  End();
}

TEST_F(ProgramEnd, MayComeWhileItIsPaused) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  player->PauseMedia();
  End();
}

TEST_F(ProgramEnd, MayComeAfterStop) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  player->StopMedia();
  End();
}

TEST_F(ProgramEnd, MayComeWhileItBuffers) {
  Play("/stalls");
  EXPECT_TRUE(Becomes(PlaybackState::kBuffering));
  End();
}

TEST_F(ProgramEnd, MayComeWhileItConnectsAgain) {
  Play("/returns");
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  End();
}

TEST_F(ProgramEnd, MayComeAfterSeveralStationsInARow) {
  for (int round = 0; round < 3; ++round) {
    player->MediaFileFromUrl(Address("/stream"));
    ASSERT_TRUE(player->PlayMedia());
  }
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(WaitUntil([this] { return Ask("/open") == 1; }));
  End();
}

// On a busy machine a session may take longer than the window waits for it.
TEST_F(ProgramEnd, MayComeBeforeTheSessionsHaveClosed) {
  player.reset();
  media.reset();
  options.close_limit = {};
  MakePlayer();
  for (int round = 0; round < 3; ++round) {
    player->MediaFileFromUrl(Address("/stream"));
    ASSERT_TRUE(player->PlayMedia());
    EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 1'000'000; }));
  }
  End();
}

}  // namespace
}  // namespace platform::win32
