#pragma once
// The player of the logic with a radio station of its own, which with_sound.py runs. Not for playing files.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <wininet.h>

#include <cstdlib>
#include <string>

#include "tests/platform/win32/media/player_rig.h"

namespace platform::win32 {

struct StationRig : testing::Test, PlayerRig {
  void SetUp() override {
    station = Named("FUNKHAUS_STATION");
    if (station.empty()) GTEST_SKIP() << "tests/platform/win32/media/with_sound.py names no station";
    ASSERT_EQ(Ask("/forget"), 0);
    MakePlayer();
    // What is heard is this case's own sound.
    ASSERT_TRUE(Silent());
  }
  // What a station holds back would keep its connection.
  void TearDown() override { EXPECT_EQ(Ask("/go"), 0); }
  static std::string Named(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? std::string() : value;
  }
  static Text AsText(const std::string& text) { return {text.begin(), text.end()}; }
  [[nodiscard]] Text Address(const std::string& path) const { return AsText(station + path); }
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
  bool Becomes(PlaybackState state) {
    return WaitUntil([&] { return media->Status().state == state; });
  }
  bool Disconnected() {
    return WaitUntil([this] { return Ask("/open") == 0; });
  }
  void Play(const std::string& path) {
    player->MediaFileFromUrl(Address(path));
    ASSERT_EQ(results, std::vector<std::int32_t>{kSOk});
    ASSERT_TRUE(player->PlayMedia());
  }

  std::string station;
};

}  // namespace platform::win32
