#include "platform/win32/ui/dark_mode.h"

#include "platform/win32/base/windows_api.h"

#include <dwmapi.h>

#include <utility>

namespace platform::win32 {
namespace {

constexpr wchar_t kSettings[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
constexpr wchar_t kLightPrograms[] = L"AppsUseLightTheme";
/// DWMWA_USE_IMMERSIVE_DARK_MODE, which the compiler's headers lack.
constexpr DWORD kDarkTitleBar = 20;

const SystemMode& TheSystem() {
  static const SystemMode system;
  return system;
}

// There is one choice of the user's for all windows, as there is one of the system's colours.
const SystemMode* asked = nullptr;
Brightness shown = Brightness::kLight;

const SystemMode& Asked() { return asked == nullptr ? TheSystem() : *asked; }

}  // namespace

Brightness SystemMode::WantedBrightness() const {
  DWORD light = 1;
  DWORD size = sizeof light;
  const LSTATUS result =
      ::RegGetValueW(HKEY_CURRENT_USER, kSettings, kLightPrograms, RRF_RT_REG_DWORD, nullptr, &light, &size);
  return result == ERROR_SUCCESS && light == 0 ? Brightness::kDark : Brightness::kLight;
}

Contrast SystemMode::WantedContrast() const {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
  return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 ? Contrast::kHigh : Contrast::kUsual;
}

void SystemMode::ColorTitleBar(HWND window, Brightness brightness) const {
  const BOOL dark = brightness == Brightness::kDark ? TRUE : FALSE;
  if (FAILED(::DwmSetWindowAttribute(window, kDarkTitleBar, &dark, sizeof dark))) return;
  if (::IsWindowVisible(window) == 0) return;
  // A title bar that is on the screen has its new colour when it is painted next: as if the window had left
  // the front, or come to it, and back.
  const WPARAM active = ::GetActiveWindow() == window ? TRUE : FALSE;
  ::SendMessageW(window, WM_NCACTIVATE, active == 0 ? TRUE : FALSE, 0);
  ::SendMessageW(window, WM_NCACTIVATE, active, 0);
}

Brightness ShownBrightness() { return shown; }

void FollowWantedBrightness() {
  shown = UsersContrast() == Contrast::kHigh ? Brightness::kLight : Asked().WantedBrightness();
}

Contrast UsersContrast() { return Asked().WantedContrast(); }

void ColorTitleBar(HWND window) { Asked().ColorTitleBar(window, shown); }

const SystemMode* ReplaceSystemMode(const SystemMode* mode) { return std::exchange(asked, mode); }

}  // namespace platform::win32
