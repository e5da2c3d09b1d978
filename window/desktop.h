#pragma once
// Builds the player's places outside its window, the desktop's controls, its sleep and its notifications, and
// connects them to what plays. Not any feature's behaviour.

#include "ui/current_track.h"
#include "ui/remote_control.h"
#include "ui/sleep_guard.h"
#include "ui/title_notice.h"
#include "window/foundation.h"
#include "window/playing.h"

namespace window {

/// Each is given only features that stand above it.
struct Desktop {
  Desktop(const Foundation& base, Playing& playing);

  /// When the window has loaded.
  void Appear(const Foundation& base);

  ui::CurrentTrack track;
  ui::RemoteControl remote_control;
  ui::SleepGuard sleep_guard;
  ui::TitleNotice title_notice;
};

}  // namespace window
