#pragma once
// When a live stream's sound pauses, because nothing is left of it, and when there is enough to continue. Not
// the buffer (media/stream_buffer.h); what is in it and times are passed in.

#include <chrono>

#include "platform/live/reserve.h"
#include "platform/win32/media/played_time.h"
#include "platform/win32/media/stream_buffer.h"

namespace platform::win32 {

/// Whoever plays the stream holds some of it that has not been heard yet, so a read that waits does not mean
/// silence: that comes when as much time has been played as there was sound in what was read.
class SoundGate {
 public:
  using Clock = std::chrono::steady_clock;
  enum class Link : std::uint8_t { kUp, kDown };

  /// A stream whose sound cannot be measured pauses when nothing has come for so long.
  static constexpr Clock::duration kUsualPause = std::chrono::seconds(1);
  /// The sound pauses this long before nothing is left of it.
  static constexpr Clock::duration kMargin = std::chrono::milliseconds(200);

  /// Playing starts or continues by the caller's wish, or pauses by it.
  void Run(Clock::time_point now);
  void Rest(Clock::time_point now);
  /// A new connection has brought its first sound: it begins with the smallest reserve.
  void Connected();

  /// Decides anew; `bit_rate` is that of a stream whose sound cannot be measured.
  StreamBuffer::Gate Look(const StreamBuffer::Level& level, Link link, int bit_rate, Clock::time_point now);

  [[nodiscard]] bool IsShut() const { return gate_ == StreamBuffer::Gate::kShut; }
  /// How much of what the sound waits for is there.
  [[nodiscard]] int Percent() const { return percent_; }

 private:
  [[nodiscard]] bool IsDry(const StreamBuffer::Level& level, Link link, Clock::time_point now) const;
  void Shut(Link link, Clock::time_point now);
  void Open(Clock::time_point now);

  StreamBuffer::Gate gate_ = StreamBuffer::Gate::kOpen;
  bool running_ = false;
  int percent_ = 0;
  live::Reserve reserve_;
  PlayedTime played_;
};

}  // namespace platform::win32
