#pragma once
// What the thread that looks after an item reports of it, for the monitor of playing.
// Not the words for the user, and not the decisions (media_supervisor.h).

#include <chrono>
#include <optional>

#include "platform/gstreamer/failure_cause.h"
#include "ports/playback_monitor.h"

namespace platform::gstreamer {

struct ItemReport {
  PlaybackState state = PlaybackState::kConnecting;
  FailureCause cause;  ///< with kFailed and kReconnecting
  int buffered_percent = 0;
  /// With kReconnecting; nothing while a try is under way.
  std::optional<std::chrono::steady_clock::time_point> next_try;
};

}  // namespace platform::gstreamer
