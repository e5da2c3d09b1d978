#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <ole2.h>

#include "tests/platform/win32/ui/chosen_mode.h"

namespace {

/// Wine confines the pointer, as for a maximised window, by a window of its desktop's process, which it names
/// in this property. That process may end while other programs are on the desktop; the X server then ends
/// each program that confines the pointer. Without the property nothing is confined. Windows knows no such
/// property.
void ForgetWinesPointerWindow() { ::RemovePropW(::GetDesktopWindow(), L"__wine_x11_clip_window"); }

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  ForgetWinesPointerWindow();
  ::OleInitialize(nullptr);
  // What the user of the machine has chosen decides nothing.
  const platform::win32::ChosenMode light(platform::win32::Brightness::kLight);
  const int result = RUN_ALL_TESTS();
  ::OleUninitialize();
  return result;
}
