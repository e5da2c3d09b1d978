#include "platform/win32/ui/palette.h"

#include "platform/win32/base/windows_api.h"

namespace platform::win32 {
namespace {

/// How far the stripes' colour is from the list's towards the text's.
constexpr double kStripe = 0.04;
/// How far the names' colour is from the text's towards the ground's.
constexpr double kFaded = 0.35;
/// How far the selection without the keyboard is from the list's ground towards the selection's own colour.
constexpr double kPaleSelection = 0.3;
constexpr front::Rgb kWarningOnLight{0xd0, 0x20, 0x20};
constexpr front::Rgb kWarningOnDark{0xff, 0x50, 0x50};
constexpr Color kQuietColor = RGB(0x2f, 0xa8, 0x4f);
constexpr Color kLoudColor = RGB(0xe0, 0xb0, 0x20);
constexpr Color kVeryLoudColor = RGB(0xd8, 0x40, 0x30);

Ink SystemInk(int ground, int text) { return {::GetSysColor(ground), ::GetSysColor(text)}; }

}  // namespace

Contrast UsersContrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
  return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 ? Contrast::kHigh : Contrast::kUsual;
}

SystemColors UsersColors() {
  SystemColors colors{static_cast<Color>(UsersContrast() == Contrast::kHigh ? 1 : 0)};
  for (int number = 0; number <= COLOR_MENUBAR; ++number) colors.push_back(::GetSysColor(number));
  return colors;
}

Color StripeColor(Color ground, Color text, Contrast contrast) {
  if (contrast == Contrast::kHigh) return ground;
  return ToSystem(front::Mixed(FromSystem(ground), FromSystem(text), kStripe));
}

Color FadedColor(Color ground, Color text, Contrast contrast) {
  if (contrast == Contrast::kHigh) return text;
  const front::Rgb below = FromSystem(ground);
  const front::Rgb whole = FromSystem(text);
  return ToSystem(front::Readable(front::Mixed(whole, below, kFaded), below, whole, front::kContrastOfTexts));
}

Color WarningColor(Color ground, Color text, Contrast contrast) {
  if (contrast == Contrast::kHigh) return text;
  const front::Rgb below = FromSystem(ground);
  const bool dark = front::ContrastOf(below, {255, 255, 255}) > front::ContrastOf(below, {0, 0, 0});
  return ToSystem(front::Readable(dark ? kWarningOnDark : kWarningOnLight, below, FromSystem(text),
                                  front::kContrastOfTexts));
}

Color ColorOf(Loudness loudness, Contrast contrast) {
  if (contrast == Contrast::kHigh) return ::GetSysColor(COLOR_HIGHLIGHT);
  switch (loudness) {
    case Loudness::kVeryLoud:
      return kVeryLoudColor;
    case Loudness::kLoud:
      return kLoudColor;
    case Loudness::kQuiet:
      break;
  }
  return kQuietColor;
}

Ink SelectionInk(SelectionOf list, Contrast contrast) {
  const Ink full = SystemInk(COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT);
  if (list == SelectionOf::kListWithKeyboard || contrast == Contrast::kHigh) return full;
  // A button's face, which the system takes here, is hardly another colour than every second row's.
  const Ink row = SystemInk(COLOR_WINDOW, COLOR_WINDOWTEXT);
  return {ToSystem(front::Mixed(FromSystem(row.ground), FromSystem(full.ground), kPaleSelection)), row.text};
}

}  // namespace platform::win32
