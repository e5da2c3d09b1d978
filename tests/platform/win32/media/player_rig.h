#pragma once
// The player of the logic over the system's own objects, as tests use it. Not a double: everything plays.

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/values/portable_property_values.h"
#include "platform/win32/media/property_values.h"
#include "platform/win32/media/win32_media.h"
#include "player/mf_player.h"
#include "tests/support/fakes.h"

namespace platform::win32 {

/// A clock that runs, for waits of the player.
class RunningClock : public test_support::FakeClock {
 public:
  double SecondsSinceMidnight() override {
    const std::chrono::duration<double> since = std::chrono::steady_clock::now() - start_;
    return 1000 + since.count();
  }

 private:
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

struct PlayerRig {
  PlayerRig() {
    loop.on_sleep = [](std::uint32_t milliseconds) {
      std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    };
    options.log = [this](const std::string& line) { log.push_back(line); };
  }
  PlayerRig(const PlayerRig&) = delete;
  PlayerRig& operator=(const PlayerRig&) = delete;

  void MakePlayer() {
    player.reset();
    media.reset();
    media = std::make_unique<Win32Media>(loop, options);
    player = std::make_shared<player::clsMFPlayer>(
        player::clsMFPlayer::Ports{*media, *media, values, environment, clock, loop}, duration);
    player->IsCreateOK = [this](std::int32_t result) { results.push_back(result); };
  }
  static bool WaitUntil(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
      if (std::chrono::steady_clock::now() > limit) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
  }

  test_support::FakeMessageLoop loop;
  test_support::FakeEnvironment environment;
  RunningClock clock;
  values::PortablePropertyValues portable;
  Win32PropertyValues values{portable};
  std::vector<std::string> log;
  std::vector<std::int32_t> results;
  Win32MediaOptions options;
  player::ProgramDuration duration;
  std::unique_ptr<Win32Media> media;
  std::shared_ptr<player::clsMFPlayer> player;
};

}  // namespace platform::win32
