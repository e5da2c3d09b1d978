#include "app/settings/settings_folder.h"

#include "app/text/text_utilities.h"

namespace app {
namespace {

Text HomeFolder(const Settings& settings, platform::Environment& environment) {
  if (settings.UseProgramFolder) return AddBackslash(environment.ProgramFolder());
  return AddBackslash(environment.GetEnvironmentVariableW(u"APPDATA")) + kFamilyFolder;
}

}  // namespace

void ChooseSettingsFolder(Settings& settings, const IniProcedures& ini, platform::Files& files,
                          platform::Environment& environment, Layout layout) {
  settings.UseProgramFolder = layout == Layout::kProgramFolder;
  const Text home = HomeFolder(settings, environment);
  settings.SettingsFolder = home;

  if (ini.ReadIni(u"Pfad3", u"IsUserIniChange", u"0", kOptIni) == u"1") {
    settings.SettingsFolder = ini.ReadIni(u"Pfad3", u"UserIniPfad", u"", kOptIni, UseFamilyFolder::kYes);
    if (!files.PathFileExistsW(settings.SettingsFolder)) settings.SettingsFolder = home;
  }

  settings.StationFileName = kStationFileName;
  if (files.PathFileExistsW(settings.SettingsFolder)) return;
  // The next check, not this call's result, shows whether the folder could be created.
  files.CreateDirectoryW(settings.SettingsFolder);
  if (!files.PathFileExistsW(settings.SettingsFolder)) settings.SettingsFolder = environment.ProgramFolder();
}

}  // namespace app
