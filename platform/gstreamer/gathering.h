#pragma once
// When to leave a station's connection alone for a moment: it sends some dozens of small pieces a second, and
// each wakes three threads, while there is sound for seconds. Not the buffer; amounts and times are passed
// in.

#include <chrono>
#include <optional>

namespace platform::gstreamer {

/// For one connection: Arrived for each piece, and Asked when the next one is asked for.
class Gathering {
 public:
  using Clock = std::chrono::steady_clock;

  /// Pieces are gathered in the system for this long and then read together.
  static constexpr std::chrono::milliseconds kPause{1000};
  /// Only while so much sound is buffered: what is left after a pause still bears a late server.
  static constexpr std::chrono::milliseconds kEnough{1750};
  static_assert(kEnough - kPause >= std::chrono::milliseconds(750));

  explicit Gathering(Clock::duration pause = kPause) : pause_(pause) {}

  /// How long to wait now before asking for the next piece.
  [[nodiscard]] Clock::duration Arrived(Clock::time_point now, Clock::duration buffered) const {
    // What had arrived before comes at once, and behind it there may be more.
    constexpr std::chrono::milliseconds kAtOnce{3};
    const bool was_empty = asked_ && now - *asked_ > kAtOnce;
    return was_empty && buffered >= kEnough ? pause_ : Clock::duration::zero();
  }

  void Asked(Clock::time_point now) { asked_ = now; }

 private:
  Clock::duration pause_;
  std::optional<Clock::time_point> asked_;
};

}  // namespace platform::gstreamer
