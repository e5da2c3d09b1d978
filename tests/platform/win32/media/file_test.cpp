// The player of the logic over the system's own objects, with a file.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/player_rig.h"
#include "tests/platform/win32/media/wave_file.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

struct MediaFile : testing::Test, PlayerRig {
  Text WaveFile(std::chrono::milliseconds length) {
    const auto path = std::filesystem::path(folder.Path()) / "ton.wav";
    WriteWaveFile(path, length);
    return path.u16string();
  }
  test_support::TempFolder folder;
};

TEST_F(MediaFile, PlaysToItsEnd) {
  MakePlayer();
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  player->MediaFileFromUrl(WaveFile(1500ms));
  ASSERT_EQ(results, std::vector<std::int32_t>{kSOk});
  ASSERT_TRUE(player->IsMediaReady());
  EXPECT_EQ(media->Status().state, PlaybackState::kConnecting);
  EXPECT_NEAR(static_cast<double>(player->Duration()), 15e6, 2e5);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 5'000'000; }));
  EXPECT_EQ(player->PlayState(), static_cast<std::int32_t>(ClockState::kRunning));
  EXPECT_TRUE(WaitUntil([this] { return media->Status().state == PlaybackState::kEnded; }));
}

TEST_F(MediaFile, PauseStopsTheClockAndPlayContinues) {
  MakePlayer();
  player->MediaFileFromUrl(WaveFile(60s));
  ASSERT_TRUE(player->PlayMedia());
  ASSERT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 1'000'000; }));
  player->PauseMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kPaused);
  EXPECT_TRUE(
      WaitUntil([this] { return player->PlayState() == static_cast<std::int32_t>(ClockState::kPaused); }));
  const auto paused_at = player->CurrentPlayPosition();
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(WaitUntil([&] { return player->CurrentPlayPosition() > paused_at + 1'000'000; }));
  player->StopMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
}

TEST_F(MediaFile, VolumeAndMuteComeBack) {
  MakePlayer();
  player->MediaFileFromUrl(WaveFile(60s));
  ASSERT_TRUE(player->PlayMedia());
  ASSERT_TRUE(player->CreateService());
  EXPECT_TRUE(player->SetAudioAudioVolume(0.25f));
  EXPECT_EQ(player->GetAudioSimpleAudioVolume(), 25);
  EXPECT_TRUE(player->SetAudioSimpleMute(true));
  EXPECT_EQ(player->GetAudioSimpleMute(), 1);
  EXPECT_TRUE(player->SetAudioSimpleMute(false));
  EXPECT_EQ(player->GetAudioSimpleMute(), 0);
}

TEST_F(MediaFile, Mp3IsPlayedAndHasALength) {
  const char* const loop_file = std::getenv("FUNKHAUS_LOOP");
  if (loop_file == nullptr) GTEST_SKIP() << "tests/platform/win32/media/with_sound.py names no file";
  MakePlayer();
  player->MediaFileFromUrl(std::filesystem::path(loop_file).u16string());
  ASSERT_EQ(results, std::vector<std::int32_t>{kSOk});
  EXPECT_GT(player->Duration(), 10'000'000);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 5'000'000; }));
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
}

TEST_F(MediaFile, AMissingFileIsReported) {
  MakePlayer();
  player->MediaFileFromUrl((std::filesystem::path(folder.Path()) / "fehlt.wav").u16string());
  EXPECT_EQ(results, std::vector<std::int32_t>{kErrorFileNotFound});
  EXPECT_FALSE(player->IsMediaReady());
  EXPECT_EQ(media->Status().state, PlaybackState::kFailed);
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kNotFound);
}

TEST_F(MediaFile, AnOpenItemMayBeReplacedAndTheProgramMayEnd) {
  MakePlayer();
  const Text file = WaveFile(60s);
  for (int round = 0; round < 3; ++round) {
    player->MediaFileFromUrl(file);
    ASSERT_TRUE(player->PlayMedia());
  }
  player.reset();
  media.reset();
  EXPECT_EQ(results, (std::vector<std::int32_t>{kSOk, kSOk, kSOk}));
}

TEST_F(MediaFile, TheRefusedVersionIsSaidOnce) {
  MakePlayer();
  const auto said = log.size();
  EXPECT_LE(said, 1u);
  EXPECT_EQ(media->MFStartup(1, 0), kSOk);
  EXPECT_EQ(log.size(), said);
  EXPECT_EQ(media->MFShutdown(), kSOk);
}

TEST_F(MediaFile, NoAddressIsRefused) {
  MakePlayer();
  InterfaceHandle resolver = InterfaceHandle::kNone;
  ASSERT_EQ(media->MFCreateSourceResolver(resolver), kSOk);
  const Text address = u" \t";
  std::int32_t type = 0;
  InterfaceHandle object = InterfaceHandle::kNone;
  const std::vector<Argument> list = {&address, kMfResolutionMediaSource, InterfaceHandle::kNone, &type,
                                      &object};
  EXPECT_EQ(media->DispCallFunc(resolver, Interface::kSourceResolver, 3, list), kEInvalidArg);
  EXPECT_EQ(media->DispCallFunc(resolver, Interface::kMediaSession, 3, list), std::nullopt);
}

}  // namespace
}  // namespace platform::win32
