#include "platform/win32/ui/notifications.h"

#include "platform/win32/base/windows_api.h"

#include <shellapi.h>

#include <iterator>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

constexpr UINT kReport = WM_APP + 1;

NOTIFYICONDATAW IconOf(HWND window) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = window;
  icon.uID = 1;
  return icon;
}

bool AskShell(std::uint32_t wish, NOTIFYICONDATAW& icon) { return ::Shell_NotifyIconW(wish, &icon) != 0; }

}  // namespace

Win32Notifications::Win32Notifications() : Win32Notifications(AskShell) {}

bool IsClickOnNotification(const Message& message) {
  if (message.id != kReport) return false;
  const UINT event = LOWORD(message.l);
  return event == NIN_BALLOONUSERCLICK || event == NIN_SELECT || event == NIN_KEYSELECT;
}

void Win32Notifications::Show(const Text& heading, const Text& line) {
  if (window_ == nullptr) return;
  NOTIFYICONDATAW icon = IconOf(window_);
  icon.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP | NIF_SHOWTIP | NIF_INFO;
  icon.uCallbackMessage = kReport;
  icon.dwInfoFlags = NIIF_USER | NIIF_LARGE_ICON | NIIF_NOSOUND;
  icon.hIcon = reinterpret_cast<HICON>(::GetClassLongPtrW(window_, GCLP_HICON));
  icon.hBalloonIcon = icon.hIcon;
  ::lstrcpynW(icon.szTip, L"Funkhausplayer", static_cast<int>(std::size(icon.szTip)));
  ::lstrcpynW(icon.szInfoTitle, Wide(OnOneLine(heading)), static_cast<int>(std::size(icon.szInfoTitle)));
  // Without a text the system would show nothing.
  const Text text = line.empty() ? Text(u" ") : OnOneLine(line);
  ::lstrcpynW(icon.szInfo, Wide(text), static_cast<int>(std::size(icon.szInfo)));
  // A desktop that is slow may show the icon although the call fails.
  if (!shell_(NIM_MODIFY, icon)) Add(icon);
  is_shown_ = true;
}

void Win32Notifications::Add(NOTIFYICONDATAW& icon) const {
  if (!shell_(NIM_ADD, icon)) return;
  // Public reference: the documentation of Shell_NotifyIcon. Clicks are reported as version 4 has them, which
  // is asked for after each NIM_ADD.
  NOTIFYICONDATAW version = IconOf(window_);
  version.uVersion = NOTIFYICON_VERSION_4;
  shell_(NIM_SETVERSION, version);
}

void Win32Notifications::Withdraw() {
  if (!std::exchange(is_shown_, false)) return;
  NOTIFYICONDATAW icon = IconOf(window_);
  shell_(NIM_DELETE, icon);
}

}  // namespace platform::win32
