#pragma once
// Which adapters the tests of the disk's contracts have before them on Windows. Not for tests of one adapter.

#include "platform/win32/base/windows_api.h"

#include "platform/win32/system/files.h"
#include "platform/win32/system/record_files.h"

namespace under_test {

struct Disk {
  platform::win32::Win32Files files;
  platform::win32::Win32RecordFiles record_files;
};

/// Whether an open file shows that it has been removed. In Wine it does not, and can even be opened again.
inline bool ShowsRemoval() {
  return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr;
}

}  // namespace under_test
