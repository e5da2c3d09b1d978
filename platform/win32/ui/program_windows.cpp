#include "platform/win32/ui/program_windows.h"

#include "platform/win32/base/windows_api.h"

namespace platform::win32 {

void RunWindow(FormWindow& window, const controls::Form& form, Win32MessageLoop& loop) {
  if (form.IsClosed()) return;
  window.Show();
  loop.RunWhile([&form] { return !form.IsClosed(); });
}

void RunNewStationDialog(app::Form2& form, HWND owner, const Win32Icons& icons, Win32MessageLoop& loop) {
  if (form.form.IsClosed()) return;
  FormWindow window(form.form, form.inventory, owner, icons, loop);
  // The owner has to take input again before the dialog is hidden; the system would activate another
  // program's window otherwise.
  const auto release = form.form.Unloaded.Subscribe([owner] { ::EnableWindow(owner, TRUE); });
  KeepFocus();
  ::EnableWindow(owner, FALSE);
  window.Show();
  loop.RunWhile([&form] { return !form.form.IsClosed(); });
  ::EnableWindow(owner, TRUE);
  ::SetActiveWindow(owner);
}

}  // namespace platform::win32
