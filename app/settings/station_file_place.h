#pragma once
// Where the station file of this start is, for use before there is a window. Not the file itself.

#include "app/text/text.h"
#include "ports/environment.h"
#include "ports/files.h"
#include "ports/private_profile.h"

namespace app {

struct StationFilePlaces {
  Text station_file;
  Text option_file;  ///< in the same folder
};

/// The files that a main window over the same ports would use. Makes the settings folder, as that window
/// does.
StationFilePlaces PlacesOfStationFile(platform::PrivateProfile& profile, platform::Files& files,
                                      platform::Environment& environment);

}  // namespace app
