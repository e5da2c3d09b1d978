#pragma once
// One notification by the system, at the program's icon beside the clock. Not when there is something to say.

#include <cstdint>
#include <functional>
#include <utility>

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/window.h"
#include "ports/notifications.h"

struct _NOTIFYICONDATAW;

namespace platform::win32 {

/// The icon is there only while a notification is shown; the system ends both when the window ends, and
/// forgets the icon when the desktop's own program starts anew.
class Win32Notifications final : public Notifications {
 public:
  /// The system's call for icons beside the clock, with the number of what is wanted (NIM_...); false: it
  /// failed.
  using Shell = std::function<bool(std::uint32_t wish, _NOTIFYICONDATAW& icon)>;

  Win32Notifications();
  explicit Win32Notifications(Shell shell) : shell_(std::move(shell)) {}
  ~Win32Notifications() override { Withdraw(); }

  /// The window to which the notification belongs; nothing is shown before it is known.
  void SetMainWindow(HWND window) { window_ = window; }

  void Show(const Text& heading, const Text& line) override;
  void Withdraw() override;

 private:
  void Add(_NOTIFYICONDATAW& icon) const;

  Shell shell_;
  HWND window_ = nullptr;
  bool is_shown_ = false;
};

/// For the window to which a notification belongs: the user has clicked it, or the icon.
[[nodiscard]] bool IsClickOnNotification(const Message& message);

}  // namespace platform::win32
