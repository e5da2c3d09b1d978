#pragma once
// What the thread that supervises an item reports about it, for the playback monitor.
// Not the words for the user, and not what is done about it (item_phases.h).

#include <chrono>
#include <optional>

#include "platform/gstreamer/failure_cause.h"
#include "platform/gstreamer/item_phases.h"
#include "ports/playback_monitor.h"

namespace platform::gstreamer {

struct ItemReport {
  PlaybackState state = PlaybackState::kConnecting;
  FailureCause cause;  ///< with kFailed and kReconnecting
  int buffered_percent = 0;
  /// With kReconnecting; nothing during an attempt.
  std::optional<std::chrono::steady_clock::time_point> next_try;
};

/// The state of an item.
struct Situation {
  Phase phase = Phase::kOpening;
  Wanted wanted = Wanted::kOpened;
  bool plays = false;           ///< what is heard hands its sound to the device
  bool is_lost = false;         ///< a loss has not been followed by steady sound yet
  bool attempt_failed = false;  ///< since the last attempt that was opened
  bool device_is_away = false;
  FailureCause cause = {};  ///< of the failure or the loss; none while all is well
  int buffered_percent = 0;
  std::optional<std::chrono::steady_clock::time_point> next_attempt = {};
};

/// A loss that is bridged by what is buffered is not reported before an attempt has failed: until then
/// nothing was missed.
ItemReport ReportOf(const Situation& situation);

}  // namespace platform::gstreamer
