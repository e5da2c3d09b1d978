#pragma once
// Brings the program's window to the front. Not who asks for it.

#include <QWidget>
#include <string>

namespace platform::qt {

/// The window leaves its minimised state and gets the keyboard, or the dialog `front` that stands open over
/// it does. `activation_token` names the user's action by which the desktop lets a window take the keyboard;
/// it may be empty.
void BringToFront(QWidget& window, QWidget& front, const std::string& activation_token);

/// The dialog that stands open, otherwise the window; null when neither is shown.
[[nodiscard]] QWidget* FrontOf(QWidget& window);

}  // namespace platform::qt
