#include "platform/win32/ui/busy_pointer.h"

#include "platform/win32/base/windows_api.h"

#include <utility>

namespace platform::win32 {
namespace {

thread_local bool is_busy = false;

}  // namespace

void BusyPointer::Show() {
  if (!std::exchange(is_busy, true)) Apply();
}

void BusyPointer::Hide() {
  if (std::exchange(is_busy, false)) ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
}

bool BusyPointer::Apply() {
  if (is_busy) ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
  return is_busy;
}

}  // namespace platform::win32
