#pragma once
// What several features of the main window share while it runs. Not settings, and not a feature's own state.

#include <cstdint>

#include "ports/text.h"

namespace app {

/// One object per main window, handed to the features that write or read a field.
struct WindowState {
  /// What the player is given on Start; empty: no station was marked yet, or the marked one has no address.
  /// Written by StationDetails and by PlayStation; read by PlaybackControl and NowPlaying.
  platform::Text current_stream_address;

  /// Names the station's picture, and the station in the status line. Written by StationDetails, read by
  /// PlaybackControl.
  platform::Text current_station_name;

  /// The result last received through cPlayer_IsCreateOK, which alone writes it; read by PlayStation.
  std::int32_t last_create_result = 0;

  /// Address and name above may not be those of the selected row, so Start works them out again first.
  /// Set by what can make them so: rows were loaded (StationStore) or sorted (StationLists), name, link or
  /// number were edited (StationEditor, RecorderLaunch), a selection is being worked out (StationDetails).
  /// Cleared by StationDetails when the address is known, and by Start just before it works the full list's
  /// row out again.
  bool details_are_stale = false;

  /// True while StationDetails fills the editor's fields. Written by it, read by StationViews: the favourite
  /// box writes to the station file for user input only.
  bool filling_fields = false;
};

}  // namespace app
