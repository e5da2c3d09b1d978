#include "platform/win32/system/sleep_inhibitor.h"

#include "platform/win32/base/windows_api.h"

namespace platform::win32 {

void Win32SleepInhibitor::Hold() { ::SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED); }

void Win32SleepInhibitor::Release() { ::SetThreadExecutionState(ES_CONTINUOUS); }

}  // namespace platform::win32
