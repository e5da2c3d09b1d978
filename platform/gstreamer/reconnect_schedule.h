#pragma once
// When a lost live stream is opened again: at once, then every second or sooner, after a minute ever more
// rarely. Not the opening and not the clock; times are passed in.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>

namespace platform::gstreamer {

/// One loss and its attempts, in order: Lose, then NextAttempt and AttemptStarted by turns, with
/// AttemptFailed after an attempt that has opened nothing.
class ReconnectSchedule {
 public:
  using Clock = std::chrono::steady_clock;

  /// Sound that lasted this long ends a loss; a stream that breaks sooner goes on with the old schedule,
  /// so that a server that hangs up at once is not asked without a pause.
  static constexpr Clock::duration kSteady = std::chrono::seconds(5);
  static constexpr Clock::duration kOftenFor = std::chrono::seconds(60);
  static constexpr Clock::duration kOften = std::chrono::seconds(1);
  static constexpr Clock::duration kSoon = std::chrono::milliseconds(250);
  static constexpr Clock::duration kRarest = std::chrono::seconds(30);

  enum class Failure : std::uint8_t {
    kCheap,    ///< it cost nobody anything: no server is there, or the stream is not there yet
    kRefusal,  ///< a server has answered, but gives no sound
  };

  /// The stream was lost at `now`, after sound since `sound_since` (nothing: it was never heard).
  void Lose(Clock::time_point now, std::optional<Clock::time_point> sound_since) {
    const bool steady = sound_since && now - *sound_since >= kSteady;
    if (!steady && lost_) return;
    lost_ = true;
    since_ = now;
    pause_ = kOften;
    if (steady) attempted_ = false;
  }

  [[nodiscard]] Clock::time_point NextAttempt() const {
    if (!attempted_) return since_;
    return soon_at_ ? *soon_at_ : last_attempt_ + pause_;
  }

  void AttemptStarted(Clock::time_point now) {
    if (attempted_ && now - since_ >= kOftenFor) pause_ = std::min<Clock::duration>(pause_ * 2, kRarest);
    attempted_ = true;
    last_attempt_ = now;
    soon_at_.reset();
  }

  /// The last attempt has opened nothing, as is known at `now`; what was not lost before is lost with that.
  void AttemptFailed(Clock::time_point now, Failure failure) {
    Lose(now, std::nullopt);
    if (failure == Failure::kCheap && now - since_ < kOftenFor) soon_at_ = now + kSoon;
  }

  /// Forgets everything, as after Stop.
  void Reset() { *this = {}; }

  [[nodiscard]] bool Lost() const { return lost_; }

 private:
  bool lost_ = false;
  Clock::time_point since_{};  ///< of the loss
  Clock::time_point last_attempt_{};
  std::optional<Clock::time_point> soon_at_;
  Clock::duration pause_ = kOften;
  bool attempted_ = false;
};

}  // namespace platform::gstreamer
