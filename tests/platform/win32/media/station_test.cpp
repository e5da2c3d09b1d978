// The player of the logic over the system's own objects, with a radio station: it needs with_sound.py.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <wininet.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/player_rig.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

struct Station : testing::Test, PlayerRig {
  void SetUp() override {
    const char* const named = std::getenv("FUNKHAUS_STATION");
    if (named == nullptr) GTEST_SKIP() << "tests/platform/win32/media/with_sound.py names no station";
    station = named;
    MakePlayer();
    // What is heard is this case's own sound.
    ASSERT_TRUE(Silent());
  }
  [[nodiscard]] Text Address(const std::string& path) const {
    const std::string text = station + path;
    return {text.begin(), text.end()};
  }
  /// The number that the station answers.
  [[nodiscard]] int Ask(const std::string& path) const {
    HINTERNET const session = InternetOpenA("test", INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
    HINTERNET const request =
        InternetOpenUrlA(session, (station + path).c_str(), nullptr, 0, INTERNET_FLAG_RELOAD, 0);
    char answer[32] = {};
    DWORD count = 0;
    if (request != nullptr) InternetReadFile(request, answer, sizeof answer - 1, &count);
    InternetCloseHandle(request);
    InternetCloseHandle(session);
    return std::atoi(answer);
  }
  bool Heard() {
    return WaitUntil([this] { return Ask("/loudness") > 300; });
  }
  bool Silent() {
    return WaitUntil([this] { return Ask("/loudness") < 30; });
  }

  std::string station;
};

struct SoundingStation : Station, testing::WithParamInterface<const char*> {};

TEST_P(SoundingStation, IsHeardUntilItIsStopped) {
  player->MediaFileFromUrl(Address(GetParam()));
  ASSERT_EQ(results, std::vector<std::int32_t>{kSOk});
  EXPECT_EQ(player->Duration(), 0);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Heard());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
  EXPECT_NEAR(media->Status().bit_rate, 128000, 1000);
  EXPECT_EQ(media->Status().codec, u"MP3");
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 10'000'000; }));
  player->StopMedia();
  EXPECT_TRUE(Silent());
  EXPECT_TRUE(WaitUntil([this] { return Ask("/open") == 0; }));
}

INSTANTIATE_TEST_SUITE_P(EachKind, SoundingStation, testing::Values("/stream", "/icy", "/titles"));

TEST_F(Station, ThatHangsUpIsAskedAgain) {
  player->MediaFileFromUrl(Address("/cut"));
  ASSERT_EQ(results, std::vector<std::int32_t>{kSOk});
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(WaitUntil([this] { return Ask("/count?/cut") > 2; }));
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 80'000'000; }));
  EXPECT_TRUE(Heard());
  EXPECT_EQ(player->PlayState(), static_cast<std::int32_t>(ClockState::kRunning));
}

TEST_F(Station, ThatReturnsIsHeardAgain) {
  player->MediaFileFromUrl(Address("/returns"));
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Heard());
  // What was sent before the loss bridges it for a while.
  EXPECT_TRUE(WaitUntil([this] { return media->Status().state == PlaybackState::kReconnecting; }));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kHttpStatus);
  EXPECT_TRUE(Silent());
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(Heard());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
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

TEST_F(Station, ThatIsAPageIsReported) {
  player->MediaFileFromUrl(Address("/page"));
  EXPECT_EQ(results, std::vector<std::int32_t>{kMfEUnsupportedByteStreamType});
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kWebPage);
}

TEST_F(Station, MayBeReplacedWhileItPlaysAndTheProgramMayEnd) {
  for (int round = 0; round < 3; ++round) {
    player->MediaFileFromUrl(Address("/stream"));
    ASSERT_TRUE(player->PlayMedia());
  }
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(WaitUntil([this] { return Ask("/open") == 1; }));
  player.reset();
  media.reset();
  EXPECT_TRUE(WaitUntil([this] { return Ask("/open") == 0; }));
}

}  // namespace
}  // namespace platform::win32
