#include "platform/win32/system/owned_handle.h"

#include "platform/win32/base/windows_api.h"

namespace platform::win32 {

OwnedHandle::OwnedHandle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}

void OwnedHandle::Close() {
  if (HANDLE const handle = std::exchange(handle_, nullptr); handle != nullptr) ::CloseHandle(handle);
}

}  // namespace platform::win32
