#pragma once
// What several features of the main window share while it runs. Not settings, and not a feature's own state.

#include <cstdint>

#include "ports/text.h"

namespace app {

/// One object per main window, passed to the features that write or read a field.
struct WindowState {
  /// What the player is given on Start; empty: no station was marked yet, or the marked one has no address.
  /// Written by StationDetails and by PlayStation; read by PlaybackControl and NowPlaying.
  platform::Text current_stream_address;

  /// Names the station's picture, and the station in the status line. Written by StationDetails, read by
  /// PlaybackControl.
  platform::Text current_station_name;

  /// The result last received through cPlayer_IsCreateOK, which alone writes it; read by PlayStation.
  std::int32_t last_create_result = 0;

  /// The address and name above may be stale, so Start resolves the selected row again first. Set when rows
  /// were loaded (StationStore) or sorted (StationLists), when name, link or number were edited
  /// (StationEditor, RecorderLaunch), and while a selection is being resolved (StationDetails). Cleared by
  /// StationDetails when the address is known, and by Start just before it resolves the full list's row
  /// again.
  bool details_are_stale = false;

  /// True while the program fills the editor's fields. Written by StationDetails and, for the favourite box
  /// alone, by RowCommands; read by StationViews:
  /// the favourite box writes to the station file for user input only.
  bool filling_fields = false;
};

}  // namespace app
