#include "platform/win32/ui/button_face.h"

#include "platform/win32/base/windows_api.h"

#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>

#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/text_drawing.h"

namespace platform::win32 {
namespace {

using controls::CommandButton;

constexpr int kSmallestGlyph = 16;
// At 100 %.
constexpr int kMargin = 6;
constexpr int kGap = 4;

int GlyphSide(const Scale& scale) { return std::max(scale.Scaled(kSmallestGlyph), scale.FontHeight()); }

bool HasGlyphBeforeCaption(const CommandButton& button) {
  return button.GetGlyph() != controls::Glyph::kNone && !ShowsGlyphAlone(button);
}

int RoomForCaption(const CommandButton& button, int width, const Scale& scale) {
  const int glyph = HasGlyphBeforeCaption(button) ? GlyphSide(scale) + scale.Scaled(kGap) : 0;
  return std::max(0, width - 2 * scale.Scaled(kMargin) - glyph);
}

LRESULT StateOf(HWND window) { return ::SendMessageW(window, BM_GETSTATE, 0, 0); }

bool IsPointedAt(HWND window) { return ::IsWindowEnabled(window) != 0 && (StateOf(window) & BST_HOT) != 0; }

int ThemeState(HWND window) {
  if (::IsWindowEnabled(window) == 0) return PBS_DISABLED;
  if ((StateOf(window) & BST_PUSHED) != 0) return PBS_PRESSED;
  if (IsPointedAt(window)) return PBS_HOT;
  const bool is_default = (::GetWindowLongPtrW(window, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
  return is_default ? PBS_DEFAULTED : PBS_NORMAL;
}

PartState StateOfPart(HWND window) {
  switch (ThemeState(window)) {
    case PBS_DISABLED:
      return PartState::kDisabled;
    case PBS_PRESSED:
      return PartState::kPressed;
    case PBS_HOT:
      return PartState::kPointedAt;
    default:
      return PartState::kUsual;
  }
}

/// In the dark the face is the program's own; the system's theme has none for it.
Ink InkOf(const CommandButton& button, HWND window, HTHEME theme) {
  Ink ink{::GetSysColor(COLOR_BTNFACE),
          ::GetSysColor(::IsWindowEnabled(window) != 0 ? COLOR_BTNTEXT : COLOR_GRAYTEXT)};
  if (ShownBrightness() == Brightness::kDark) {
    const Face face = FaceOf(StateOfPart(window));
    ink = {face.ground, face.text};
  } else if (theme != nullptr) {
    COLORREF text = ink.text;
    ::GetThemeColor(theme, BP_PUSHBUTTON, ThemeState(window), TMT_TEXTCOLOR, &text);
    ink.text = text;
  }
  const bool warns = button.Role() == controls::ButtonRole::kDeleting && IsPointedAt(window);
  if (warns) ink.text = WarningColor(ink.ground, ink.text, UsersContrast());
  return ink;
}

void PaintDarkGround(HWND window, HDC context, const RECT& all) {
  // Its corners are those of the window, so nothing of the parent is seen.
  const Face face = FaceOf(StateOfPart(window));
  FillArea(context, all, face.ground);
  FrameArea(context, all, ThemeState(window) == PBS_DEFAULTED ? ShownColor(COLOR_HOTLIGHT) : face.frame);
}

void PaintThemedGround(HWND window, HDC context, RECT all, HTHEME theme) {
  const int state = ThemeState(window);
  if (::IsThemeBackgroundPartiallyTransparent(theme, BP_PUSHBUTTON, state) != 0) {
    ::DrawThemeParentBackground(window, context, &all);
  }
  ::DrawThemeBackground(theme, context, BP_PUSHBUTTON, state, &all, nullptr);
}

/// As the system draws buttons that no theme has a picture of.
void PaintClassicGround(HWND window, HDC context, RECT area) {
  const int state = ThemeState(window);
  if (state == PBS_DEFAULTED) {
    ::FrameRect(context, &area, ::GetSysColorBrush(COLOR_WINDOWFRAME));
    ::InflateRect(&area, -1, -1);
  }
  ::DrawFrameControl(context, &area, DFC_BUTTON, DFCS_BUTTONPUSH | (state == PBS_PRESSED ? DFCS_PUSHED : 0U));
}

void PaintContents(const CommandButton& button, HDC context, const RECT& all, const Scale& scale, Color ink) {
  const PixelPlace area{0, 0, static_cast<int>(all.right), static_cast<int>(all.bottom)};
  const int side = GlyphSide(scale);
  if (ShowsGlyphAlone(button)) {
    return DrawGlyph(context, button.GetGlyph(),
                     {(area.width - side) / 2, (area.height - side) / 2, side, side}, ink);
  }
  const SelectedFont font(context, scale.Get(Scale::Font::kPlain));
  const int caption = std::min(WidthOf(context, button.Caption()), RoomForCaption(button, area.width, scale));
  const int glyph = HasGlyphBeforeCaption(button) ? side + scale.Scaled(kGap) : 0;
  const int left = (area.width - glyph - caption) / 2;
  DrawGlyph(context, button.GetGlyph(), {left, (area.height - side) / 2, side, side}, ink);
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, ink);
  DrawOnOneLine(context, button.Caption(), {left + glyph, 0, caption, area.height});
}

void PaintFocus(HWND window, HDC context, RECT area, int inset) {
  const bool shown = (::SendMessageW(window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
  if (::GetFocus() != window || !shown) return;
  ::InflateRect(&area, -inset, -inset);
  DrawFocus(context, area);
}

}  // namespace

bool ShowsGlyphAlone(const CommandButton& button) {
  return button.GetGlyph() != controls::Glyph::kNone &&
         button.PlaceOfGlyph() == controls::GlyphPlace::kInsteadOfCaption;
}

bool ShowsWholeCaption(const CommandButton& button, HWND window, const Scale& scale) {
  if (ShowsGlyphAlone(button)) return true;
  RECT all{};
  ::GetClientRect(window, &all);
  const WindowContext context(window);
  const SelectedFont font(context.Get(), scale.Get(Scale::Font::kPlain));
  return WidthOf(context.Get(), button.Caption()) <=
         RoomForCaption(button, static_cast<int>(all.right), scale);
}

void PaintButton(const CommandButton& button, HWND window, HDC context, const Scale& scale) {
  RECT all{};
  ::GetClientRect(window, &all);
  const bool dark = ShownBrightness() == Brightness::kDark;
  HTHEME theme = dark ? nullptr : ::OpenThemeData(window, L"BUTTON");
  const Color ink = InkOf(button, window, theme).text;
  if (dark) {
    PaintDarkGround(window, context, all);
  } else if (theme != nullptr) {
    PaintThemedGround(window, context, all, theme);
    ::CloseThemeData(theme);
  } else {
    PaintClassicGround(window, context, all);
  }
  PaintContents(button, context, all, scale, ink);
  PaintFocus(window, context, all, scale.Scaled(3));
}

void PaintFlatButton(const CommandButton& button, HWND window, HDC context, const Scale& scale) {
  RECT all{};
  ::GetClientRect(window, &all);
  const bool pressed = (StateOf(window) & BST_PUSHED) != 0;
  ::FillRect(context, &all, ShownBrush(pressed ? COLOR_BTNFACE : COLOR_WINDOW));
  const int ink = ::IsWindowEnabled(window) == 0 ? COLOR_GRAYTEXT
                  : pressed                      ? COLOR_BTNTEXT
                                                 : COLOR_WINDOWTEXT;
  PaintContents(button, context, all, scale, ShownColor(ink));
  PaintFocus(window, context, all, 0);
}

}  // namespace platform::win32
