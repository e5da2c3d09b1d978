#include "app/window/station_file_place.h"

#include "app/ini_procedures.h"
#include "app/settings.h"
#include "app/settings_folder.h"

namespace app {

Text StationFilePlace(platform::PrivateProfile& profile, platform::Files& files,
                      platform::Environment& environment) {
  Settings settings;
  ChooseSettingsFolder(settings, IniProcedures(settings, profile, files, environment), files, environment);
  return settings.SettingsFolder + settings.StationFileName;
}

}  // namespace app
