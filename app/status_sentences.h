#pragma once
// The sentences of the status line, in German. Not the message boxes' texts, which their features own.

#include <array>

#include "app/text.h"

// Each sentence is the key of its translation in the language files, so it holds no "=" and begins with
// neither "[" nor ";". "%1", "%2" stand for arguments. A new sentence goes into kAll as well, by which a
// test checks that the English language file is complete.
namespace app::sentences {

inline constexpr TextView kStopped = u"Gestoppt.";

inline constexpr std::array kAll = {kStopped};

}  // namespace app::sentences
