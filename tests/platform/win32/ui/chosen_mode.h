#pragma once
// A user's choice of dark or light that a test makes for its own process, and pictures of what is on the
// screen then. Not the system's settings.

#include "platform/win32/base/windows_api.h"

#include <map>

#include "platform/win32/ui/dark_mode.h"
#include "tests/platform/win32/ui/canvas.h"

namespace platform::win32 {

/// While it lives the system's settings are not asked; then what was chosen before is chosen again.
class ChosenMode final : public SystemMode {
 public:
  explicit ChosenMode(Brightness brightness, Contrast high = Contrast::kUsual)
      : wanted(brightness), contrast(high) {
    before_ = ReplaceSystemMode(this);
    FollowWantedBrightness();
  }
  ~ChosenMode() override {
    ReplaceSystemMode(before_);
    FollowWantedBrightness();
  }
  ChosenMode(const ChosenMode&) = delete;
  ChosenMode& operator=(const ChosenMode&) = delete;

  [[nodiscard]] Brightness WantedBrightness() const override { return wanted; }
  [[nodiscard]] Contrast WantedContrast() const override { return contrast; }
  void ColorTitleBar(HWND window, Brightness brightness) const override { title_bars[window] = brightness; }

  /// As the system reports the user's choice to every window.
  void Choose(Brightness brightness, HWND window) {
    wanted = brightness;
    ::SendMessageW(window, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
  }

  Brightness wanted;
  Contrast contrast;
  mutable std::map<HWND, Brightness> title_bars;

 private:
  const SystemMode* before_ = nullptr;
};

/// The size of a window with its edge.
inline SIZE SizeOf(HWND window) {
  RECT outer{};
  ::GetWindowRect(window, &outer);
  return {outer.right - outer.left, outer.bottom - outer.top};
}

/// What the screen shows of a window, its edge included, once all of it is painted.
class Picture : public Canvas {
 public:
  explicit Picture(HWND window)
      : Canvas(static_cast<int>(SizeOf(window).cx), static_cast<int>(SizeOf(window).cy)) {
    ::RedrawWindow(window, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    Take(window);
  }
  /// Without painting.
  enum class AsItIs { kYes };
  Picture(HWND window, AsItIs /*yes*/)
      : Canvas(static_cast<int>(SizeOf(window).cx), static_cast<int>(SizeOf(window).cy)) {
    Take(window);
  }

 private:
  void Take(HWND window) {
    HDC shown = ::GetWindowDC(window);
    ::BitBlt(Context(), 0, 0, Width(), Height(), shown, 0, 0, SRCCOPY);
    ::ReleaseDC(window, shown);
  }
};

}  // namespace platform::win32
