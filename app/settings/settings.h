#pragma once
// The settings that the whole program shares while it runs. Not the files that keep them
// (app/settings/ini_procedures.h), nor how their folder is chosen (app/settings/settings_folder.h).

#include "app/text/text.h"

namespace app {

struct Settings {
  /// The folder of both INI files, normally with its trailing "\".
  /// Written by ChooseSettingsFolder; read by the INI procedures and the station store.
  Text SettingsFolder;

  /// The file name of the station file.
  /// Written by ChooseSettingsFolder; read by the INI procedures and the station store.
  Text StationFileName;

  /// The name of the language file without ".lng"; "default" or empty for the built-in German texts.
  /// Written by Language::ChooseLanguage; read by Language and by the program, which gives the
  /// toolkit's own texts the same language.
  Text LanguageName;

  /// The catalogue holds edits that are not in the station file yet. Set by the new-station dialog, and by
  /// the catalogue for what could not be written or was brought back unsaved; cleared by a save and by a Yes
  /// to the closing question. Read by that question, by the editor, which offers to save after the dialog,
  /// and by the keepers of unsaved rows and deleted entries.
  bool CatalogueChanged = false;

  /// The program's own folder takes the place of the family's folder in every path rule.
  /// Written by ChooseSettingsFolder (false in this build); read by it and the INI procedures.
  bool UseProgramFolder = false;
};

}  // namespace app
