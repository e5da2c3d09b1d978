#pragma once
// Gives a window the keyboard focus on an X11 display on behalf of a user's action in another process.
// Not needed on other displays, where it does nothing.

#include <QWidget>
#include <cstdint>
#include <optional>
#include <string>

namespace platform::qt {

/// The X server's time of the user's action, which is at the end of a startup id ("..._TIME4711"). Public
/// reference, here and below: the startup notification protocol and the window manager hints of
/// freedesktop.org.
std::optional<std::uint32_t> TimeOfStartupId(const std::string& startup_id);

/// Asks the window manager for the keyboard focus as of the action that `startup_id` names: without its time,
/// a request of a program in the background counts as older than the user's latest action and only makes its
/// taskbar entry blink. Then reports that this start is complete, which ends the busy pointer.
void ActivateOnX11(const QWidget& window, const std::string& startup_id);

}  // namespace platform::qt
