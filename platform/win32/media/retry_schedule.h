#pragma once
// When a lost live stream is opened again: at once, every second for a minute, then less and less often. Not
// the opening and not the clock; times are passed in.

#include <algorithm>
#include <chrono>
#include <optional>

namespace platform::win32 {

class RetrySchedule {
 public:
  using Clock = std::chrono::steady_clock;

  /// Sound that lasted this long ends a loss; a stream that breaks sooner continues with the old schedule, so
  /// that a server that hangs up at once is not asked without a pause.
  static constexpr Clock::duration kSteady = std::chrono::seconds(5);
  static constexpr Clock::duration kOftenFor = std::chrono::seconds(60);
  static constexpr Clock::duration kOften = std::chrono::seconds(1);
  static constexpr Clock::duration kRarest = std::chrono::seconds(30);

  /// An attempt that began at `begun` and sounded for `sounded` is over at `now`: when the next one is due.
  Clock::time_point Lost(Clock::time_point now, Clock::time_point begun, Clock::duration sounded) {
    if (!since_ || sounded >= kSteady) {
      since_ = now;
      pause_ = kOften;
      return now;
    }
    if (now - *since_ >= kOftenFor) pause_ = std::min<Clock::duration>(pause_ * 2, kRarest);
    return std::max(now, begun + pause_);
  }

 private:
  std::optional<Clock::time_point> since_;
  Clock::duration pause_ = kOften;
};

}  // namespace platform::win32
