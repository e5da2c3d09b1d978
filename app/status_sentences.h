#pragma once
// The sentences of the status line, in German. Not the message boxes' texts, which their features own.

#include <array>

#include "app/text.h"

// Each sentence is the key of its translation in the language files, so it holds no "=" and begins with
// neither "[" nor ";". "%1", "%2" stand for arguments. A new sentence goes into kAll as well, by which a
// test checks that the English language file is complete.
namespace app::sentences {

inline constexpr TextView kStopped = u"Gestoppt.";
inline constexpr TextView kNoAddress = u"Zu „%1“ gibt es keine Adresse.";
inline constexpr TextView kNoMixer = u"Es ließ sich kein Lautstärkemixer öffnen.";
inline constexpr TextView kNoDirectory = u"Das Senderverzeichnis ließ sich nicht öffnen: %1";
inline constexpr TextView kNoRecorder = u"Das Aufnahme-Tool OZRecordFunkhaus ließ sich nicht starten.";

inline constexpr std::array kAll = {kStopped, kNoAddress, kNoMixer, kNoDirectory, kNoRecorder};

}  // namespace app::sentences
