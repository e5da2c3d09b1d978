#include "platform/win32/media/media_library.h"

#include "platform/win32/base/windows_api.h"

namespace platform::win32 {
namespace {

void* Find(HMODULE library, const char* name) {
  return library == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(library, name));
}

}  // namespace

void* MediaFunction(const char* name) {
  static const HMODULE platform_library =
      LoadLibraryExW(L"mfplat.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  static const HMODULE library = LoadLibraryExW(L"mf.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  // The rest is of no use without the platform.
  if (platform_library == nullptr) return nullptr;
  void* const found = Find(platform_library, name);
  return found != nullptr ? found : Find(library, name);
}

}  // namespace platform::win32
