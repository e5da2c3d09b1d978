#pragma once
// The measured levels of the last seconds by the time at which they are heard, so that what is shown is what
// is heard. Not the measuring (peak_meter.h), which happens somewhat ahead of the sound.

#include <cstdint>
#include <deque>
#include <mutex>
#include <vector>

namespace platform::gstreamer {

/// A device starts with the first sound that it is given. From then on the lead of measuring over hearing
/// follows from how much was measured; it is largest whenever the device's buffer is full. That largest lead
/// stays the same. When it does not, the device's clock and the one of the running times have drifted apart,
/// and the levels follow the device.
///
/// Times are running times in nanoseconds, which stop while paused. Safe to use from any thread; no call
/// blocks for longer than it takes to copy a few numbers.
class LevelHistory {
 public:
  /// The levels of the next `duration` of sound, measured at `now`, one linear peak of 0 to 1 per channel.
  /// It is heard after what was measured before it, and at once when nothing of that is left.
  void Add(std::int64_t now, std::int64_t duration, std::vector<float> peaks);

  /// When all that was measured has been heard; 0 at first.
  [[nodiscard]] std::int64_t End() const;

  /// The peaks of the interval that `running_time` falls into; empty when there is none, because nothing is
  /// heard then.
  [[nodiscard]] std::vector<float> At(std::int64_t running_time) const;

 private:
  struct Interval {
    std::int64_t start;
    std::int64_t end;
    std::vector<float> peaks;
  };
  /// When the sound that is measured at `now` is heard.
  std::int64_t HeardAt(std::int64_t now);
  void BeginSpan(std::int64_t now);

  mutable std::mutex mutex_;
  std::deque<Interval> intervals_;
  std::int64_t filling_until_ = 0;
  std::int64_t full_lead_ = 0;  ///< the largest lead while the device was being filled
  std::int64_t span_until_ = 0;
  std::int64_t span_lead_ = 0;  ///< the largest lead within the present span
};

}  // namespace platform::gstreamer
