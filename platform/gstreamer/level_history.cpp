#include "platform/gstreamer/level_history.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/gstreamer/sound_output.h"

namespace platform::gstreamer {
namespace {

/// Four seconds of intervals of 20 ms: more than any sink holds between measuring and hearing.
constexpr std::size_t kMostIntervals = 200;
/// A device's clock and the system's drift apart; what is measured is never further ahead than this.
constexpr std::int64_t kMostAhead = kDeviceBufferMicroseconds * 1000 + 20'000'000;
/// Rounding and a change of format leave small holes between intervals; they are bridged.
constexpr std::int64_t kBridgedHole = 40'000'000;

}  // namespace

void LevelHistory::Add(std::int64_t now, std::int64_t duration, std::vector<float> peaks) {
  const std::lock_guard lock(mutex_);
  const std::int64_t after_last = intervals_.empty() ? now : intervals_.back().end;
  const std::int64_t start = std::clamp(after_last, now, now + kMostAhead);
  intervals_.push_back({start, start + duration, std::move(peaks)});
  if (intervals_.size() > kMostIntervals) intervals_.pop_front();
}

std::vector<float> LevelHistory::At(std::int64_t running_time) const {
  const std::lock_guard lock(mutex_);
  const auto later = [running_time](const Interval& interval) { return interval.start <= running_time; };
  const auto found = std::find_if(intervals_.rbegin(), intervals_.rend(), later);
  if (found == intervals_.rend() || running_time >= found->end + kBridgedHole) return {};
  return found->peaks;
}

float LinearFromDecibels(double decibels) {
  if (!(decibels > -120.0)) return 0.0F;
  return static_cast<float>(std::min(1.0, std::pow(10.0, decibels / 20.0)));
}

}  // namespace platform::gstreamer
