#pragma once
// Paints a command button as the system does, with a glyph before its caption or in place of it. Not what a
// click does.

#include "controls/captioned.h"
#include "platform/win32/base/handles.h"
#include "platform/win32/ui/scale.h"

namespace platform::win32 {

/// The button shows its glyph and no caption.
[[nodiscard]] bool ShowsGlyphAlone(const controls::CommandButton& button);

/// The caption has room in the button's window.
[[nodiscard]] bool ShowsWholeCaption(const controls::CommandButton& button, HWND window, const Scale& scale);

/// By the parts of the system's theme, or as the system draws buttons without one.
void PaintButton(const controls::CommandButton& button, HWND window, HDC context, const Scale& scale);

/// For a button without a border, on the ground of a panel.
void PaintFlatButton(const controls::CommandButton& button, HWND window, HDC context, const Scale& scale);

}  // namespace platform::win32
