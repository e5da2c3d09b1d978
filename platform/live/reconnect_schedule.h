#pragma once
// When a lost live stream is opened again: at once, then every second or sooner, and less and less often
// after a minute. Not the opening and not the clock; times are passed in.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>

#include "ports/playback_monitor.h"

namespace platform::live {

/// One loss and its attempts, in order: Lose, then NextAttempt and AttemptStarted alternately, each with
/// AttemptOpened or AttemptFailed.
class ReconnectSchedule {
 public:
  using Clock = std::chrono::steady_clock;

  /// Sound that lasted this long ends a loss; a stream that breaks sooner continues with the old schedule,
  /// so that a server that hangs up at once is not asked without a pause.
  static constexpr Clock::duration kSteady = std::chrono::seconds(5);
  static constexpr Clock::duration kOftenFor = std::chrono::seconds(60);
  static constexpr Clock::duration kOften = std::chrono::seconds(1);
  static constexpr Clock::duration kSoon = std::chrono::milliseconds(250);
  static constexpr Clock::duration kRarest = std::chrono::seconds(30);

  enum class Failure : std::uint8_t {
    kCheap,    ///< it costs nobody anything: no server is there, or the stream is not there yet
    kRefusal,  ///< a server has answered, but gives no sound
  };
  /// How an attempt that failed for that reason counts.
  static Failure Weigh(PlaybackFailure failure, int http_status = 0);

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

  void AttemptOpened() { failed_ = false; }

  /// At `now` it is known that the last attempt opened nothing; what was not lost before is lost now.
  void AttemptFailed(Clock::time_point now, Failure failure) {
    Lose(now, std::nullopt);
    failed_ = true;
    if (failure == Failure::kCheap && now - since_ < kOftenFor) soon_at_ = now + kSoon;
  }

  /// Forgets everything, as after Stop.
  void Reset() { *this = {}; }

  [[nodiscard]] bool Lost() const { return lost_; }
  /// An attempt has failed since the last one that was opened.
  [[nodiscard]] bool Failed() const { return failed_; }

 private:
  bool lost_ = false;
  Clock::time_point since_{};  ///< of the loss
  Clock::time_point last_attempt_{};
  std::optional<Clock::time_point> soon_at_;
  Clock::duration pause_ = kOften;
  bool attempted_ = false;
  bool failed_ = false;
};

inline ReconnectSchedule::Failure ReconnectSchedule::Weigh(PlaybackFailure failure, int http_status) {
  constexpr int kNotFound = 404;
  switch (failure) {
    case PlaybackFailure::kHttpStatus:
      // A mount that is not there yet is what a restarting station answers.
      return http_status == kNotFound ? Failure::kCheap : Failure::kRefusal;
    case PlaybackFailure::kTooManyRedirects:
    case PlaybackFailure::kWebPage:
    case PlaybackFailure::kNoDecoder:
    case PlaybackFailure::kUnreadable:
      return Failure::kRefusal;
    default:
      return Failure::kCheap;
  }
}

}  // namespace platform::live
