#include "platform/win32/ui/field_look.h"

#include "platform/win32/base/windows_api.h"

#include <windowsx.h>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/dark_parts.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_drawing.h"

namespace platform::win32 {
namespace {

constexpr UINT_PTR kCentering = 3;

/// The system shows a field's text at its upper edge: so its inside is made as high as the text.
void Center(RECT& inner, const Scale& scale) {
  const int surplus = static_cast<int>(inner.bottom - inner.top) - scale.FontHeight() - 2;
  if (surplus < 2) return;
  inner.top += surplus / 2;
  inner.bottom -= surplus - surplus / 2;
}

LRESULT CALLBACK CenteredText(HWND field, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                              DWORD_PTR reference) {
  const auto& look = *reinterpret_cast<const FieldLook*>(reference);
  const bool dark = ShownBrightness() == Brightness::kDark;
  const bool dark_disabled = dark && ::IsWindowEnabled(field) == 0;
  if (dark_disabled && message == WM_PAINT) {
    look.PaintDisabled();
    return 0;
  }
  if (dark_disabled && message == WM_PRINTCLIENT) {
    look.PaintDisabled(reinterpret_cast<HDC>(w));
    return 0;
  }
  // There is nothing around a field of one line but its edge.
  const bool own_edge = dark && message == WM_NCPAINT;
  const LRESULT handled = own_edge ? 0 : ::DefSubclassProc(field, message, w, l);
  // The system paints what these change at once, without asking for it.
  const bool painted = message == WM_SETTEXT || message == EM_SETSEL || message == WM_KILLFOCUS;
  if (dark_disabled && painted) ::InvalidateRect(field, nullptr, FALSE);
  switch (message) {
    case WM_NCCALCSIZE:
      // The first rectangle, in either of the message's forms.
      Center(*reinterpret_cast<RECT*>(l), look.GetScale());
      return handled;
    case WM_NCPAINT:
    case WM_ENABLE:
      look.PaintOutside();
      return handled;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      if (dark) look.PaintOutside();
      return handled;
    case WM_NCHITTEST:
      return handled == HTNOWHERE || handled == HTBORDER ? HTCLIENT : handled;
    default:
      return handled;
  }
}

int GroundOf(HWND field) { return ::IsWindowEnabled(field) != 0 ? COLOR_WINDOW : COLOR_BTNFACE; }

}  // namespace

FieldLook::FieldLook(HWND field, const Scale& scale)
    : field_(field), scale_(scale), theme_(field, ThemeWhenDark::Kind::kNone) {
  ::SetWindowSubclass(field_, CenteredText, kCentering, reinterpret_cast<DWORD_PTR>(this));
  theme_.Follow();
}

FieldLook::~FieldLook() { ::RemoveWindowSubclass(field_, CenteredText, kCentering); }

void FieldLook::FollowScale() const {
  ::SetWindowPos(field_, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void FieldLook::FollowColors() {
  if (theme_.Follow()) FollowScale();
}

bool FieldLook::HasEdge() const { return (::GetWindowLongPtrW(field_, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0; }

void FieldLook::PaintOutside() const {
  if (ShownBrightness() == Brightness::kDark && HasEdge()) PaintEdge(field_);
  FillStrips();
}

void FieldLook::FillStrips() const {
  RECT inner{};
  ::GetClientRect(field_, &inner);
  RECT outer{};
  ::GetWindowRect(field_, &outer);
  ::MapWindowPoints(field_, nullptr, reinterpret_cast<POINT*>(&inner), 2);
  ::OffsetRect(&inner, -outer.left, -outer.top);
  const int edge = static_cast<int>(inner.left);
  const int height = static_cast<int>(outer.bottom - outer.top);
  HDC context = ::GetWindowDC(field_);
  const RECT above{inner.left, edge, inner.right, inner.top};
  const RECT below{inner.left, inner.bottom, inner.right, height - edge};
  ::FillRect(context, &above, ShownBrush(GroundOf(field_)));
  ::FillRect(context, &below, ShownBrush(GroundOf(field_)));
  ::ReleaseDC(field_, context);
}

void FieldLook::PaintDisabled() const {
  PAINTSTRUCT paint{};
  PaintDisabled(::BeginPaint(field_, &paint));
  ::EndPaint(field_, &paint);
}

void FieldLook::PaintDisabled(HDC context) const {
  RECT all{};
  ::GetClientRect(field_, &all);
  ::FillRect(context, &all, ShownBrush(GroundOf(field_)));
  RECT room{};
  ::SendMessageW(field_, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&room));
  const Text text = TextOf(field_);
  if (text.empty()) return;
  ::SaveDC(context);
  ::IntersectClipRect(context, room.left, room.top, room.right, room.bottom);
  // A long text may have been scrolled: then its beginning is left of the field.
  room.left = GET_X_LPARAM(::SendMessageW(field_, EM_POSFROMCHAR, 0, 0));
  const SelectedFont font(context, scale_.Get(Scale::Font::kPlain));
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, ShownColor(COLOR_GRAYTEXT));
  ::DrawTextW(context, WideData(text), static_cast<int>(text.size()), &room, DT_SINGLELINE | DT_NOPREFIX);
  ::RestoreDC(context, -1);
}

}  // namespace platform::win32
