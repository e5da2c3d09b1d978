#pragma once
// The program's windows: how each is opened and when it ends. Not what is in them.

#include "app/forms/form1.h"
#include "app/forms/form2.h"
#include "app/forms/record_form.h"
#include "platform/win32/ui/form_window.h"

namespace platform::win32 {

/// Opens a main window unless its form is closed already, and handles messages until the form is closed.
void RunWindow(FormWindow& window, const controls::Form& form, Win32MessageLoop& loop);

/// Shows the new-station dialog over its owner, which takes no input meanwhile, and returns when the form is
/// closed, or when the program ends.
void RunNewStationDialog(app::Form2& form, HWND owner, const Win32Icons& icons, Win32MessageLoop& loop);

}  // namespace platform::win32
