#pragma once
// Builds the player's places outside its window, the desktop's controls, its sleep, its notifications and the
// user's guide, and connects them to what plays. Not any feature's behaviour.

#include "ui/current_track.h"
#include "ui/remote_control.h"
#include "ui/sleep_guard.h"
#include "ui/title_notice.h"
#include "ui/users_guide.h"
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
  ui::UsersGuide users_guide;
};

}  // namespace window
