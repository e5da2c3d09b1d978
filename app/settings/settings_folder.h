#pragma once
// Chooses, once at the program's start, the folder of its INI files.
// Not for reading their contents (app/settings/ini_procedures.h).

#include "app/settings/ini_procedures.h"
#include "app/settings/settings.h"
#include "ports/environment.h"
#include "ports/files.h"

namespace app {

/// Where a build keeps its settings: in the user's folder, or beside the program.
enum class Layout { kUserFolder, kProgramFolder };

/// The first thing that runs. Sets UseProgramFolder, SettingsFolder and StationFileName of `settings`, the
/// object that `ini` reads. The folder is, in this order, the one to which the user has moved the family's
/// settings, the family's folder in "APPDATA" (made when it is missing, one level only), or the program's
/// folder. That last one gets no "\", so that the files then lie beside the folder, with its last name as
/// their prefix.
void ChooseSettingsFolder(Settings& settings, const IniProcedures& ini, platform::Files& files,
                          platform::Environment& environment, Layout layout = Layout::kUserFolder);

}  // namespace app
