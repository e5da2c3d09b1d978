#pragma once
// How much sound must be buffered before it starts or continues: little at first, more after every gap.
// Not the buffer; amounts and times are passed in.

#include <algorithm>
#include <chrono>
#include <optional>

namespace platform::live {

/// The reserve of one connection, in order: Resume (at 100 %), RunDry, Resume, RunDry ...
class Reserve {
 public:
  using Clock = std::chrono::steady_clock;
  using Sound = std::chrono::nanoseconds;

  /// Before the first sound, which should come soon. A device takes 400 ms of it at once, and what is left
  /// must not count as dry.
  static constexpr Sound kFirst = std::chrono::milliseconds(600);
  /// What fits into the buffer with room to spare.
  static constexpr Sound kLargest = std::chrono::seconds(8);
  /// After sound that lasted this long, reserves start small again.
  static constexpr Clock::duration kSteady = std::chrono::minutes(5);

  /// The sound starts or continues at `now`.
  void Resume(Clock::time_point now) { resumed_at_ = now; }

  /// The buffer is empty at `now`.
  void RunDry(Clock::time_point now) {
    dry_at_ = now;
    if (now - resumed_at_ >= kSteady) least_ = kFirst;
    least_ = std::min<Sound>(least_ * 5 / 2, kLargest);
  }

  /// The percentage of the wanted sound that is there at `now` when `buffered` is; the sound may continue at
  /// 100. As much sound is wanted as there was silence, but at least the reserve and, for a connection that
  /// hardly delivers, at most twice that.
  [[nodiscard]] int Percent(Sound buffered, Clock::time_point now) const {
    const Sound wanted = dry_at_ ? std::clamp<Sound>(now - *dry_at_, least_, Most()) : kFirst;
    return static_cast<int>(std::min(buffered, wanted) * 100 / wanted);
  }

  /// No more than this is wanted.
  [[nodiscard]] Sound Most() const { return dry_at_ ? std::min(least_ * 2, kLargest) : kFirst; }

 private:
  Sound least_ = kFirst;
  std::optional<Clock::time_point> dry_at_;
  Clock::time_point resumed_at_{};
};

}  // namespace platform::live
