#include "platform/win32/ui/notifications.h"

#include "platform/win32/base/windows_api.h"

#include <shellapi.h>

#include <iterator>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

NOTIFYICONDATAW IconOf(HWND window) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = window;
  icon.uID = 1;
  return icon;
}

}  // namespace

void Win32Notifications::Show(const Text& heading, const Text& line) {
  if (window_ == nullptr) return;
  NOTIFYICONDATAW icon = IconOf(window_);
  icon.uFlags = NIF_ICON | NIF_TIP | NIF_INFO;
  icon.dwInfoFlags = NIIF_USER | NIIF_NOSOUND;
  icon.hIcon = reinterpret_cast<HICON>(::GetClassLongPtrW(window_, GCLP_HICON));
  ::lstrcpynW(icon.szTip, L"Funkhausplayer", static_cast<int>(std::size(icon.szTip)));
  ::lstrcpynW(icon.szInfoTitle, Wide(OnOneLine(heading)), static_cast<int>(std::size(icon.szInfoTitle)));
  // Without a text the system would show nothing.
  const Text text = line.empty() ? Text(u" ") : OnOneLine(line);
  ::lstrcpynW(icon.szInfo, Wide(text), static_cast<int>(std::size(icon.szInfo)));
  ::Shell_NotifyIconW(std::exchange(is_shown_, true) ? NIM_MODIFY : NIM_ADD, &icon);
}

void Win32Notifications::Withdraw() {
  if (!std::exchange(is_shown_, false)) return;
  NOTIFYICONDATAW icon = IconOf(window_);
  ::Shell_NotifyIconW(NIM_DELETE, &icon);
}

}  // namespace platform::win32
