#include "app/settings/station_file_place.h"

#include "app/settings/ini_procedures.h"
#include "app/settings/settings.h"
#include "app/settings/settings_folder.h"

namespace app {

StationFilePlaces PlacesOfStationFile(platform::PrivateProfile& profile, platform::Files& files,
                                      platform::Environment& environment) {
  Settings settings;
  ChooseSettingsFolder(settings, IniProcedures(settings, profile, files, environment), files, environment);
  return {settings.SettingsFolder + settings.StationFileName, settings.SettingsFolder + u"Opt.ini"};
}

}  // namespace app
