#include "platform/gstreamer/item_report.h"

namespace platform::gstreamer {
namespace {

PlaybackState StateOf(const Situation& now) {
  if (now.phase == Phase::kFailed) return PlaybackState::kFailed;
  if (now.phase == Phase::kEnded) {
    const bool broke_off = now.cause.failure != PlaybackFailure::kNone;
    return broke_off ? PlaybackState::kFailed : PlaybackState::kEnded;
  }
  if (now.phase == Phase::kOpening || now.wanted == Wanted::kOpened) return PlaybackState::kConnecting;
  if (now.wanted == Wanted::kPaused) return PlaybackState::kPaused;
  if (now.phase == Phase::kSounding) return now.plays ? PlaybackState::kPlaying : PlaybackState::kBuffering;
  if (now.plays && !now.attempt_failed) return PlaybackState::kPlaying;
  if (now.device_is_away) return PlaybackState::kNoDevice;
  return now.is_lost ? PlaybackState::kReconnecting : PlaybackState::kConnecting;
}

}  // namespace

ItemReport ReportOf(const Situation& situation) {
  ItemReport report{StateOf(situation), {}, situation.buffered_percent, situation.next_attempt};
  const bool is_in_trouble =
      report.state == PlaybackState::kFailed || report.state == PlaybackState::kReconnecting;
  if (is_in_trouble) report.cause = situation.cause;
  return report;
}

}  // namespace platform::gstreamer
