#pragma once
// The program's own icon. Not the station icons.

#include <QIcon>

namespace platform::qt {

/// The installed icon of the desktop theme, or the same one drawn here.
QIcon ApplicationIcon();

}  // namespace platform::qt
