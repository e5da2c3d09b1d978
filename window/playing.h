#pragma once
// Builds the path from a selected row to sound, and connects its features. Not any feature's behaviour, and
// not the catalogue (window/catalogue.h).

#include <memory>

#include "catalogue/station_details.h"
#include "player/mf_player.h"
#include "stream/cls_funkhaus.h"
#include "ui/information_panel.h"
#include "ui/now_playing.h"
#include "ui/playback_control.h"
#include "ui/playing_mark.h"
#include "ui/recorder_launch.h"
#include "ui/status_line.h"
#include "window/foundation.h"

namespace window {

/// Each feature is given only features declared above it.
struct Playing {
  /// The two pointers are the owner's; both are empty while the window is not loaded.
  Playing(const Foundation& base, const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus,
          const std::shared_ptr<player::clsMFPlayer>& cPlayer);

  ui::StatusLine status_line;
  ui::PlayingMark mark;
  ui::InformationPanel panel;
  ui::NowPlaying now_playing;
  catalogue::StationDetails details;
  ui::PlaybackControl playback;
  ui::RecorderLaunch recorder_launch;
};

}  // namespace window
