#pragma once
// Why an item could not be opened, or broke off.
// Not the media framework's result for it (open_error.h), and not how it is determined (failure_notes.h).

#include "ports/playback_monitor.h"

namespace platform::gstreamer {

/// The HTTP status of a missing file, and of a station that is not on the air.
inline constexpr int kHttpNotFound = 404;

/// The fields are those of PlaybackStatus.
struct FailureCause {
  PlaybackFailure failure = PlaybackFailure::kNone;
  int http_status = 0;
  Text format = {};
  Text package = {};
};

}  // namespace platform::gstreamer
