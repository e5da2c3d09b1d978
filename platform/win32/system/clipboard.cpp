#include "platform/win32/system/clipboard.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

/// The program that put the text there may have forgotten the NUL at its end.
Text TextIn(HANDLE memory) {
  const auto* const units = static_cast<const wchar_t*>(::GlobalLock(memory));
  if (units == nullptr) return {};
  const std::size_t most = ::GlobalSize(memory) / sizeof(wchar_t);
  Text text = FromWide(
      std::wstring_view(units, static_cast<std::size_t>(std::find(units, units + most, L'\0') - units)));
  ::GlobalUnlock(memory);
  return text;
}

/// Memory as the clipboard takes it, with the NUL at the text's end; null when there is none.
HANDLE MemoryWith(const Text& text) {
  HANDLE const memory = ::GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  if (memory == nullptr) return nullptr;
  std::copy_n(Wide(text), text.size() + 1, static_cast<wchar_t*>(::GlobalLock(memory)));
  ::GlobalUnlock(memory);
  return memory;
}

}  // namespace

Win32Clipboard::~Win32Clipboard() {
  if (owner_ != nullptr) ::DestroyWindow(owner_);
}

bool Win32Clipboard::Open() {
  constexpr int kTries = 10;
  constexpr DWORD kPause = 20;
  // A window for messages alone needs no class of its own, for it is never shown.
  if (owner_ == nullptr) {
    owner_ = ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               ::GetModuleHandleW(nullptr), nullptr);
  }
  for (int tries = 0; tries < kTries; ++tries) {
    if (::OpenClipboard(owner_) != 0) return true;
    ::Sleep(kPause);
  }
  return false;
}

Text Win32Clipboard::GetText() {
  if (::IsClipboardFormatAvailable(CF_UNICODETEXT) == 0 || !Open()) return {};
  HANDLE const memory = ::GetClipboardData(CF_UNICODETEXT);
  Text text = memory == nullptr ? Text() : TextIn(memory);
  ::CloseClipboard();
  return text;
}

void Win32Clipboard::SetText(const Text& text) {
  HANDLE const memory = MemoryWith(text);
  if (memory == nullptr) return;
  // The memory belongs to the clipboard once that has taken it.
  const bool opened = Open();
  const bool taken =
      opened && ::EmptyClipboard() != 0 && ::SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
  if (opened) ::CloseClipboard();
  if (!taken) ::GlobalFree(memory);
}

}  // namespace platform::win32
