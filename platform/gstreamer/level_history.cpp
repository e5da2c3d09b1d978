#include "platform/gstreamer/level_history.h"

#include <algorithm>
#include <utility>

namespace platform::gstreamer {
namespace {

/// Four seconds of intervals of 20 ms: more than any device holds between measuring and hearing.
constexpr std::size_t kMostIntervals = 200;
constexpr std::int64_t kMostLead = 3'000'000'000;
/// A device has settled long before this is over, and asks for more many times within each later span.
constexpr std::int64_t kFillingTime = 5'000'000'000;
constexpr std::int64_t kSpan = 5'000'000'000;
/// Rounding and a change of format leave small holes between intervals; they are bridged.
constexpr std::int64_t kBridgedHole = 40'000'000;

}  // namespace

std::int64_t LevelHistory::HeardAt(std::int64_t now) {
  const std::int64_t after_last = intervals_.empty() ? now : intervals_.back().end;
  if (intervals_.empty() || after_last < now) {
    filling_until_ = now + kFillingTime;
    full_lead_ = 0;
    BeginSpan(now);
    return now;
  }
  std::int64_t lead = std::min(after_last - now, kMostLead);
  if (now < filling_until_) {
    full_lead_ = std::max(full_lead_, lead);
    BeginSpan(now);
    return now + lead;
  }
  lead = std::min(lead, full_lead_);
  span_lead_ = std::max(span_lead_, lead);
  if (now >= span_until_) {
    lead += full_lead_ - span_lead_;
    BeginSpan(now);
  }
  return now + lead;
}

void LevelHistory::BeginSpan(std::int64_t now) {
  span_until_ = now + kSpan;
  span_lead_ = 0;
}

void LevelHistory::Add(std::int64_t now, std::int64_t duration, std::vector<float> peaks) {
  const std::lock_guard lock(mutex_);
  const std::int64_t start = HeardAt(now);
  intervals_.push_back({start, start + duration, std::move(peaks)});
  if (intervals_.size() > kMostIntervals) intervals_.pop_front();
}

std::int64_t LevelHistory::End() const {
  const std::lock_guard lock(mutex_);
  return intervals_.empty() ? 0 : intervals_.back().end;
}

std::vector<float> LevelHistory::At(std::int64_t running_time) const {
  const std::lock_guard lock(mutex_);
  const auto later = [running_time](const Interval& interval) { return interval.start <= running_time; };
  const auto found = std::find_if(intervals_.rbegin(), intervals_.rend(), later);
  if (found == intervals_.rend() || running_time >= found->end + kBridgedHole) return {};
  return found->peaks;
}

}  // namespace platform::gstreamer
