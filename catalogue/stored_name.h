#pragma once
// Station names as the station file distinguishes them. Not the names that the lists show.

#include "ports/text.h"
#include "ports/text_conversion.h"

namespace catalogue {

/// Two names are the same section of the station file when this gives the same text for both: whatever
/// follows a NUL, line ends, and blanks and tabs at the ends are dropped, what code page 1252 lacks becomes
/// "?", and letter case makes no difference. The file lists no section for the empty text.
[[nodiscard]] platform::Text StoredName(platform::TextConversion& conversion, platform::TextView name);

}  // namespace catalogue
