#pragma once
// How much sound must have come after a gap before it continues: more after every gap. Not the buffer; times
// are passed in.

#include <algorithm>
#include <chrono>
#include <optional>

namespace platform::win32 {

class GapReserve {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr std::chrono::milliseconds kFirst{1500};
  static constexpr std::chrono::milliseconds kLargest{8000};
  /// After sound that lasted this long, reserves start small again.
  static constexpr Clock::duration kSteady = std::chrono::minutes(5);

  /// What is wanted after the gap that begins at `now`.
  std::chrono::milliseconds Next(Clock::time_point now) {
    const bool again = latest_ && now - *latest_ < kSteady;
    wanted_ = again ? std::min(wanted_ * 5 / 2, kLargest) : kFirst;
    latest_ = now;
    return wanted_;
  }

 private:
  std::chrono::milliseconds wanted_ = kFirst;
  std::optional<Clock::time_point> latest_;
};

}  // namespace platform::win32
