#pragma once
// The program's texts in the user's language: which language file is used, and the look-up in it.
// Not for walking through a window's controls; each window translates its own.

#include "app/settings/ini_procedures.h"
#include "app/settings/settings.h"
#include "app/text/text.h"
#include "ports/environment.h"
#include "ports/files.h"
#include "ports/private_profile.h"

namespace app {

/// A language file is an INI file in the program's folder "Languages"; its section "Common" maps a German
/// text, the key, to its translation.
class Language {
 public:
  /// `settings` is the object that `ini` reads; LanguageName is read in every call.
  Language(Settings& settings, const IniProcedures& ini, platform::PrivateProfile& profile,
           platform::Files& files, platform::Environment& environment);

  /// Sets LanguageName to the user's choice in "Opt.ini", or to "default" when its file does not exist.
  void ChooseLanguage();

  /// True when texts are to be translated: LanguageName names a language file.
  [[nodiscard]] bool Translates() const;

  /// The translation of `Key`, at most 799 characters; `Default` (when that is empty, `Key`) when there is
  /// none. No file is touched while the German texts are in use.
  [[nodiscard]] Text GetLangText(const Text& Key, const Text& Default) const;

 private:
  [[nodiscard]] Text LanguageFile() const;

  Settings& settings_;
  const IniProcedures& ini_;
  platform::PrivateProfile& profile_;
  platform::Files& files_;
  platform::Environment& environment_;
};

}  // namespace app
