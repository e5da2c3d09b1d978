#include "platform/win32/ui/palette.h"

#include "platform/win32/base/windows_api.h"

#include <map>
#include <optional>

namespace platform::win32 {
namespace {

/// How far the stripes' colour is from the list's towards the text's.
constexpr double kStripe = 0.04;
/// How far the names' colour is from the text's towards the ground's.
constexpr double kFaded = 0.35;
/// How far the selection without the keyboard is from the list's ground towards the selection's own colour.
constexpr double kPaleSelection = 0.3;
/// Between two dark colours less of a difference is seen.
constexpr double kPaleSelectionInTheDark = 0.55;
/// How far a handle's colour is from its usual one towards that of one that is dragged.
constexpr double kHandlePointedAt = 0.5;
/// What usual texts have in the dark, where thin letters are harder to read (WCAG 2.1, criterion 1.4.6).
constexpr double kContrastInTheDark = 7.0;
constexpr front::Rgb kWarningOnLight{0xd0, 0x20, 0x20};
constexpr front::Rgb kWarningOnDark{0xff, 0x50, 0x50};
constexpr Color kQuietColor = RGB(0x2f, 0xa8, 0x4f);
constexpr Color kLoudColor = RGB(0xe0, 0xb0, 0x20);
constexpr Color kVeryLoudColor = RGB(0xd8, 0x40, 0x30);

/// Of the numbers that the program uses; every other colour remains the system's.
std::optional<Color> DarkColor(int number) {
  switch (number) {
    case COLOR_WINDOW:
      return RGB(0x1f, 0x1f, 0x1f);
    case COLOR_BTNFACE:
      return RGB(0x2b, 0x2b, 0x2b);
    case COLOR_WINDOWTEXT:
    case COLOR_BTNTEXT:
    case COLOR_INFOTEXT:
      return RGB(0xf0, 0xf0, 0xf0);
    case COLOR_GRAYTEXT:
      return RGB(0x94, 0x94, 0x94);
    // Lines that only divide, and those by which a field or a button is seen.
    case COLOR_BTNSHADOW:
      return RGB(0x5a, 0x5a, 0x5a);
    case COLOR_WINDOWFRAME:
      return RGB(0x88, 0x88, 0x88);
    case COLOR_HIGHLIGHT:
      return RGB(0x1c, 0x58, 0x94);
    case COLOR_HIGHLIGHTTEXT:
      return RGB(0xff, 0xff, 0xff);
    // What has the keyboard, or is to be dragged.
    case COLOR_HOTLIGHT:
      return RGB(0x5a, 0xb0, 0xff);
    case COLOR_INFOBK:
      return RGB(0x38, 0x38, 0x38);
    default:
      return std::nullopt;
  }
}

Ink ShownInk(int ground, int text) { return {ShownColor(ground), ShownColor(text)}; }

}  // namespace

Color ShownColor(int number) {
  const bool dark = ShownBrightness() == Brightness::kDark;
  return (dark ? DarkColor(number) : std::nullopt).value_or(::GetSysColor(number));
}

HBRUSH ShownBrush(int number) {
  const auto color = ShownBrightness() == Brightness::kDark ? DarkColor(number) : std::nullopt;
  if (!color) return ::GetSysColorBrush(number);
  // Windows may keep a brush that they were given, so these stay, as the system's do.
  static std::map<Color, HBRUSH> brushes;
  HBRUSH& brush = brushes[*color];
  if (brush == nullptr) brush = ::CreateSolidBrush(*color);
  return brush;
}

SystemColors UsersColors() {
  SystemColors colors{static_cast<Color>(UsersContrast() == Contrast::kHigh ? 1 : 0)};
  for (int number = 0; number <= COLOR_MENUBAR; ++number) colors.push_back(ShownColor(number));
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
  const double wanted = ShownBrightness() == Brightness::kDark ? kContrastInTheDark : front::kContrastOfTexts;
  return ToSystem(front::Readable(front::Mixed(whole, below, kFaded), below, whole, wanted));
}

Color WarningColor(Color ground, Color text, Contrast contrast) {
  if (contrast == Contrast::kHigh) return text;
  const front::Rgb below = FromSystem(ground);
  const bool dark = front::ContrastOf(below, {255, 255, 255}) > front::ContrastOf(below, {0, 0, 0});
  return ToSystem(front::Readable(dark ? kWarningOnDark : kWarningOnLight, below, FromSystem(text),
                                  front::kContrastOfTexts));
}

Color ColorOf(Loudness loudness, Contrast contrast) {
  if (contrast == Contrast::kHigh) return ShownColor(COLOR_HIGHLIGHT);
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
  const Ink full = ShownInk(COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT);
  if (list == SelectionOf::kListWithKeyboard || contrast == Contrast::kHigh) return full;
  // A button's face, which the system takes here, is hardly another colour than every second row's.
  const Ink row = ShownInk(COLOR_WINDOW, COLOR_WINDOWTEXT);
  const double part = ShownBrightness() == Brightness::kDark ? kPaleSelectionInTheDark : kPaleSelection;
  return {ToSystem(front::Mixed(FromSystem(row.ground), FromSystem(full.ground), part)), row.text};
}

Face FaceOf(PartState state) {
  const Color window = ShownColor(COLOR_BTNFACE);
  const Color text = ShownColor(COLOR_BTNTEXT);
  const auto ground = [&](double part) {
    return ToSystem(front::Mixed(FromSystem(window), FromSystem(text), part));
  };
  switch (state) {
    case PartState::kPointedAt:
      return {ground(0.15), text, text};
    case PartState::kPressed:
      return {ground(0.03), text, text};
    case PartState::kDisabled:
      return {window, ShownColor(COLOR_BTNSHADOW), ShownColor(COLOR_GRAYTEXT)};
    case PartState::kUsual:
      break;
  }
  return {ground(0.09), ShownColor(COLOR_WINDOWFRAME), text};
}

Color HandleColor(PartState state) {
  const Color usual = ShownColor(COLOR_HOTLIGHT);
  const Color pressed = ShownColor(COLOR_WINDOWTEXT);
  switch (state) {
    case PartState::kPointedAt:
      return ToSystem(front::Mixed(FromSystem(usual), FromSystem(pressed), kHandlePointedAt));
    case PartState::kPressed:
      return pressed;
    case PartState::kDisabled:
      return ShownColor(COLOR_GRAYTEXT);
    case PartState::kUsual:
      break;
  }
  return usual;
}

}  // namespace platform::win32
