#include "ui/sleep_guard.h"

#include <utility>

namespace ui {

using platform::PlaybackState;

SleepGuard::SleepGuard(Ports ports, PlayingMark& mark, controls::Timer& tick, controls::Form& form)
    : ports_(ports), mark_(mark) {
  subscriptions_ += mark.Changed.Subscribe([this] { Follow(); });
  subscriptions_ += tick.Ticked.Subscribe([this] { Follow(); });
  subscriptions_ += form.Unloaded.Subscribe([this] {
    subscriptions_.Clear();
    Release();
  });
}

SleepGuard::~SleepGuard() { Release(); }

void SleepGuard::Follow() {
  switch (mark_.State()) {
    case PlaybackState::kPlaying:
      return Hold();
    case PlaybackState::kConnecting:
    case PlaybackState::kBuffering:
    case PlaybackState::kReconnecting:
    case PlaybackState::kNoDevice: {
      const std::int64_t silent = ports_.clock.WholeSeconds() - heard_at_;
      // A clock that was set back must not hold for hours.
      if (silent < 0 || silent >= kPatienceSeconds) Release();
      return;
    }
    case PlaybackState::kStopped:
    case PlaybackState::kPaused:
    case PlaybackState::kEnded:
    case PlaybackState::kFailed:
      return Release();
  }
}

void SleepGuard::Hold() {
  heard_at_ = ports_.clock.WholeSeconds();
  if (!std::exchange(holds_, true)) ports_.inhibitor.Hold();
}

void SleepGuard::Release() {
  if (std::exchange(holds_, false)) ports_.inhibitor.Release();
}

}  // namespace ui
