#pragma once
// One notification by the system, at the program's icon beside the clock. Not when there is something to say.

#include "platform/win32/base/handles.h"
#include "ports/notifications.h"

namespace platform::win32 {

/// The icon is there only while a notification is shown; the system ends both when the window ends.
class Win32Notifications final : public Notifications {
 public:
  ~Win32Notifications() override { Withdraw(); }

  /// The window to which the notification belongs; nothing is shown before it is known.
  void SetMainWindow(HWND window) { window_ = window; }

  void Show(const Text& heading, const Text& line) override;
  void Withdraw() override;

 private:
  HWND window_ = nullptr;
  bool is_shown_ = false;
};

}  // namespace platform::win32
