#pragma once
// Texts and addresses in the form in which the bus carries them. Not what they say.

#include <QString>
#include <string>

#include "ports/text.h"

namespace platform::desktop {

/// Ends at a zero character, which no text on the bus may hold, and at 4,096 units. Control characters become
/// blanks: who prints a title on a terminal is to see no escape sequence. The toolkit sends a half surrogate
/// as "?".
[[nodiscard]] QString ForBus(const Text& text);

/// "file://" and the bytes of a file's name, those that an address cannot hold in "%" form.
[[nodiscard]] QString FileAddress(const std::string& native_path);

}  // namespace platform::desktop
