#pragma once
// Points in time that may not be set: which comes first, and whether one has come.
// Not the waiting for them.

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <optional>

namespace platform::gstreamer {

/// Nothing: it does not come by itself.
using Timer = std::optional<std::chrono::steady_clock::time_point>;

inline Timer Earliest(std::initializer_list<Timer> timers) {
  Timer earliest;
  for (const Timer& timer : timers) {
    if (timer) earliest = std::min(earliest.value_or(*timer), *timer);
  }
  return earliest;
}

inline bool IsDue(const Timer& timer, std::chrono::steady_clock::time_point now) {
  return timer && now >= *timer;
}

}  // namespace platform::gstreamer
