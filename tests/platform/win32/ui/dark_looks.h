#pragma once
// A window of controls that is dark, and what is to be seen of each of them. Not when windows are dark.

#include "platform/win32/base/windows_api.h"

#include <initializer_list>
#include <string>

#include "platform/win32/ui/palette.h"
#include "tests/platform/win32/ui/chosen_mode.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {

inline Canvas::Kind Is(int number) {
  return [color = ShownColor(number)](COLORREF one) { return one == color; };
}
inline bool IsLight(COLORREF color) { return GetRValue(color) + GetGValue(color) + GetBValue(color) > 480; }

class Win32DarkLooksTest : public Win32WindowTest {
 protected:
  void Show(std::initializer_list<app::FormControl> controls) {
    inventory = controls;
    Open();
    ::SetFocus(nullptr);
    loop.ProcessPendingMessages();
    // The pointer may still have been reported where it was in the window of the test before.
    ::EnumChildWindows(window->Handle(), EndPointing, 0);
  }
  static BOOL CALLBACK EndPointing(HWND control, LPARAM /*unused*/) {
    ::SendMessageW(control, WM_MOUSELEAVE, 0, 0);
    return TRUE;
  }
  /// A letter is light, and most of what is around it is not.
  static void ExpectLightOnDark(const Picture& picture, const std::string& what) {
    const int all = picture.Width() * picture.Height();
    EXPECT_GT(picture.Count(IsLight), 20) << what;
    EXPECT_LT(picture.Count(IsLight), all / 4) << what;
    const auto is_bright_ground = [](COLORREF one) { return one == ::GetSysColor(COLOR_WINDOW); };
    EXPECT_LT(picture.Count(is_bright_ground), all / 20) << what;
  }
  /// The brightest that is painted; of a text, its colour.
  static Color Brightest(const Picture& picture) {
    Color brightest = 0;
    for (int y = 0; y < picture.Height(); ++y) {
      for (int x = 0; x < picture.Width(); ++x) {
        const Color one = picture.At(x, y);
        if (GetGValue(one) > GetGValue(brightest)) brightest = one;
      }
    }
    return brightest;
  }

  ChosenMode mode{Brightness::kDark};
};

}  // namespace platform::win32
