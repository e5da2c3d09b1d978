#pragma once
// What several features of the main window share while it runs. Not settings, and not a feature's own state.

#include <cstdint>

#include "ports/text.h"

namespace app {

/// One object per main window, handed to the features that write or read a field.
struct WindowState {
  /// What the player is given on Start; empty: no station was marked yet. Written by the station details
  /// and by PlayStation, read by playback, titles and details.
  platform::Text current_stream_address;

  /// Names the station's picture. Written by the station details, read by PlayStation.
  platform::Text current_station_name;

  /// The result last received through cPlayer_IsCreateOK, which alone writes it; read by PlayStation.
  std::int32_t last_create_result = 0;

  /// The details may not be those of the selected row. Set by whatever replaces, sorts or edits rows and by
  /// a selection that is still being worked out; cleared when the address is known; read by Start.
  bool reselect = false;

  /// True while the details fill the editor's fields. Written by the details, read by the favourite mark,
  /// which is written to the station file for the user's hand only.
  bool filling_fields = false;
};

}  // namespace app
