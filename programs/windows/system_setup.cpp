#include "programs/windows/system_setup.h"

#include "platform/win32/base/windows_api.h"

#include <ole2.h>

SystemSetup::SystemSetup() {
  ::SetErrorMode(::GetErrorMode() | SEM_FAILCRITICALERRORS);
  ::SetDllDirectoryW(L"");
  ::SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
  const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
  ::InitCommonControlsEx(&controls);
  ::OleInitialize(nullptr);
}

SystemSetup::~SystemSetup() { ::OleUninitialize(); }
