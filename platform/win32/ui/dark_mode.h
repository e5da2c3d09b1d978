#pragma once
// Whether the program's windows are dark: what the user has asked the system for, and what follows from it.
// Not the colours (palette.h), nor what the system's controls need to have them (dark_controls.h).

#include "platform/win32/base/handles.h"

namespace platform::win32 {

enum class Brightness { kLight, kDark };
/// With high contrast all colours are the user's own, unmixed.
enum class Contrast { kUsual, kHigh };

/// The system's part in it, which tests replace.
class SystemMode {
 public:
  SystemMode() = default;
  virtual ~SystemMode() = default;
  SystemMode(const SystemMode&) = delete;
  SystemMode& operator=(const SystemMode&) = delete;

  /// What the user wants programs to be; light where the system does not say.
  /// Public reference: Microsoft's "Personalize" settings (AppsUseLightTheme), Windows 10 1809 and later.
  [[nodiscard]] virtual Brightness WantedBrightness() const;
  [[nodiscard]] virtual Contrast WantedContrast() const;
  /// A system that knows no dark title bars leaves it as it is.
  /// Public reference: the documentation of DWMWINDOWATTRIBUTE (DWMWA_USE_IMMERSIVE_DARK_MODE).
  virtual void ColorTitleBar(HWND window, Brightness brightness) const;
};

/// What all windows of the program are. With high contrast never dark: the user's own colours come first.
[[nodiscard]] Brightness ShownBrightness();
/// Asks the system again; to be called before the first window is filled, and when the system reports other
/// settings. Windows that are open follow only a report.
void FollowWantedBrightness();
/// What the user has asked the system for.
[[nodiscard]] Contrast UsersContrast();
void ColorTitleBar(HWND window);

/// From now on this one is asked, which outlives its use; null: the system again. Returns what was asked
/// before, null for the system. For tests.
const SystemMode* ReplaceSystemMode(const SystemMode* mode);

}  // namespace platform::win32
