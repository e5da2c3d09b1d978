#pragma once
// The program's words on the toolkit's standard dialogs, in German, which are the keys of the language file.
// Not what a message box says.

#include <array>

namespace platform::qt::dialog_texts {

inline constexpr const char16_t* kOk = u"OK";
inline constexpr const char16_t* kCancel = u"Abbrechen";
inline constexpr const char16_t* kYes = u"&Ja";
inline constexpr const char16_t* kNo = u"&Nein";
inline constexpr const char16_t* kOpen = u"&Öffnen";
inline constexpr const char16_t* kOpenTitle = u"Öffnen";
inline constexpr const char16_t* kSave = u"&Speichern";
inline constexpr const char16_t* kSaveTitle = u"Speichern unter";
inline constexpr const char16_t* kLookIn = u"Suchen in:";
inline constexpr const char16_t* kFileName = u"Datei&name:";
inline constexpr const char16_t* kFileType = u"Dateityp:";

inline constexpr std::array kAll = {kOk,   kCancel,    kYes,    kNo,       kOpen,    kOpenTitle,
                                    kSave, kSaveTitle, kLookIn, kFileName, kFileType};

}  // namespace platform::qt::dialog_texts
