#include "platform/win32/system/clipboard.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

bool Open() {
  constexpr int kTries = 10;
  constexpr DWORD kPause = 20;
  for (int tries = 0; tries < kTries; ++tries) {
    if (::OpenClipboard(nullptr) != 0) return true;
    ::Sleep(kPause);
  }
  return false;
}

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

}  // namespace

Text Win32Clipboard::GetText() {
  if (::IsClipboardFormatAvailable(CF_UNICODETEXT) == 0 || !Open()) return {};
  HANDLE const memory = ::GetClipboardData(CF_UNICODETEXT);
  Text text = memory == nullptr ? Text() : TextIn(memory);
  ::CloseClipboard();
  return text;
}

}  // namespace platform::win32
