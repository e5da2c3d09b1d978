#pragma once
// Why an item could not be opened, or broke off.
// Not the media framework's result for it; open_error.h gives both.

#include "ports/playback_monitor.h"

namespace platform::gstreamer {

/// The fields are those of PlaybackStatus.
struct FailureCause {
  PlaybackFailure failure = PlaybackFailure::kNone;
  int http_status = 0;
  Text format = {};
  Text package = {};
};

}  // namespace platform::gstreamer
