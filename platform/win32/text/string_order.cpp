#include "platform/win32/text/string_order.h"

#include "platform/win32/base/windows_api.h"

#include <shlwapi.h>

#include "platform/win32/base/wide.h"

namespace platform::win32 {

int Win32StringOrder::StrCmpLogicalW(const Text& first, const Text& second) {
  return ::StrCmpLogicalW(Wide(first), Wide(second));
}

}  // namespace platform::win32
