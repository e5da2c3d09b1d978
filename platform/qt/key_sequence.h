#pragma once
// Converts the keys of the program's controls to the toolkit's. Not what they do.

#include <QKeySequence>

#include "controls/key.h"

namespace platform::qt {

[[nodiscard]] QKeySequence ToQt(const controls::Key& key);

/// " (Ctrl+S)" in the desktop's language; empty for no key.
[[nodiscard]] QString InBrackets(const controls::Key& key);

}  // namespace platform::qt
