#pragma once
// When a lost live stream is opened again: at once, then every second, then ever more rarely.
// Not the opening and not the clock; times are passed in.

#include <algorithm>
#include <chrono>
#include <optional>

namespace platform::gstreamer {

/// One loss and its attempts, in order: Lose, then NextAttempt and AttemptStarted by turns.
class ReconnectSchedule {
 public:
  using Clock = std::chrono::steady_clock;

  /// Sound that lasted this long ends a loss; a stream that breaks sooner goes on with the old schedule,
  /// so that a server that hangs up at once is not asked without a pause.
  static constexpr Clock::duration kSteady = std::chrono::seconds(5);
  static constexpr Clock::duration kOftenFor = std::chrono::seconds(60);
  static constexpr Clock::duration kOften = std::chrono::seconds(1);
  static constexpr Clock::duration kRarest = std::chrono::seconds(30);

  /// The stream was lost at `now`, after sound since `sound_since` (nothing: it was never heard).
  void Lose(Clock::time_point now, std::optional<Clock::time_point> sound_since) {
    const bool steady = sound_since && now - *sound_since >= kSteady;
    if (!steady && Lost()) return;
    lost_at_ = now;
    pause_ = kOften;
    if (steady) attempted_ = false;
  }

  [[nodiscard]] Clock::time_point NextAttempt() const {
    return attempted_ ? last_attempt_ + pause_ : lost_at_;
  }

  void AttemptStarted(Clock::time_point now) {
    if (attempted_ && now - lost_at_ >= kOftenFor) pause_ = std::min<Clock::duration>(pause_ * 2, kRarest);
    attempted_ = true;
    last_attempt_ = now;
  }

  /// Forgets everything, as after Stop.
  void Reset() { *this = {}; }

  [[nodiscard]] bool Lost() const { return lost_at_ != Clock::time_point{}; }
  [[nodiscard]] Clock::time_point LostAt() const { return lost_at_; }

 private:
  Clock::time_point lost_at_{};
  Clock::time_point last_attempt_{};
  Clock::duration pause_ = kOften;
  bool attempted_ = false;
};

}  // namespace platform::gstreamer
