#pragma once
// The program's own icon. Not the station icons.

#include <QIcon>

namespace platform::qt {

/// The same picture as the installed icon, drawn here: to look in the desktop's theme for that one would load
/// the toolkit's readers for every picture format, for one that desktops find by the program's name anyway.
QIcon ApplicationIcon();

}  // namespace platform::qt
