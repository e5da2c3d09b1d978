#include "platform/win32/ui/dark_controls.h"

#include "platform/win32/base/windows_api.h"

#include <uxtheme.h>
#include <windowsx.h>

#include <utility>

namespace platform::win32 {
namespace {

constexpr UINT_PTR kPaintedWhenDark = 4;
constexpr UINT_PTR kPointedPart = 5;

LRESULT CALLBACK PaintedInTheDark(HWND control, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                                  DWORD_PTR reference) {
  const auto& painted = *reinterpret_cast<const PaintedWhenDark*>(reference);
  if (ShownBrightness() == Brightness::kLight) return ::DefSubclassProc(control, message, w, l);
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      painted.Paint();
      return 0;
    case WM_PRINTCLIENT:
      painted.Paint(reinterpret_cast<HDC>(w));
      return 0;
    default:
      return ::DefSubclassProc(control, message, w, l);
  }
}

LRESULT CALLBACK FollowPointer(HWND control, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                               DWORD_PTR reference) {
  auto& pointed = *reinterpret_cast<PointedPart*>(reference);
  if (message == WM_MOUSEMOVE || message == WM_LBUTTONDOWN)
    pointed.PointerMoved({GET_X_LPARAM(l), GET_Y_LPARAM(l)});
  if (message == WM_MOUSELEAVE) pointed.PointerLeft();
  const LRESULT handled = ::DefSubclassProc(control, message, w, l);
  // Whether a part is pressed depends on them.
  if (message == WM_LBUTTONDOWN || message == WM_CAPTURECHANGED) pointed.PaintAgain();
  return handled;
}

}  // namespace

bool ThemeWhenDark::Follow() {
  const Brightness before = std::exchange(shown_, ShownBrightness());
  if (before == shown_) return false;
  if (shown_ == Brightness::kLight) {
    ::SetWindowTheme(control_, nullptr, nullptr);
  } else if (kind_ == Kind::kDarkScrollBars) {
    ::SetWindowTheme(control_, L"DarkMode_Explorer", nullptr);
  } else {
    // Public reference: the documentation of SetWindowTheme.
    ::SetWindowTheme(control_, L" ", L" ");
  }
  return true;
}

PaintedWhenDark::PaintedWhenDark(HWND control, Painter painter)
    : control_(control), painter_(std::move(painter)) {
  ::SetWindowSubclass(control_, PaintedInTheDark, kPaintedWhenDark, reinterpret_cast<DWORD_PTR>(this));
}

PaintedWhenDark::~PaintedWhenDark() { ::RemoveWindowSubclass(control_, PaintedInTheDark, kPaintedWhenDark); }

void PaintedWhenDark::Paint() const {
  PAINTSTRUCT paint{};
  HDC context = ::BeginPaint(control_, &paint);
  painter_(context);
  ::EndPaint(control_, &paint);
}

PointedPart::PointedPart(HWND control, PartAt part_at) : control_(control), part_at_(std::move(part_at)) {
  ::SetWindowSubclass(control_, FollowPointer, kPointedPart, reinterpret_cast<DWORD_PTR>(this));
}

PointedPart::~PointedPart() { ::RemoveWindowSubclass(control_, FollowPointer, kPointedPart); }

void PointedPart::PointerMoved(const tagPOINT& pointer) {
  TRACKMOUSEEVENT leaving{};
  leaving.cbSize = sizeof leaving;
  leaving.dwFlags = TME_LEAVE;
  leaving.hwndTrack = control_;
  if (shown_ == 0) ::TrackMouseEvent(&leaving);
  Show(part_at_(pointer));
}

void PointedPart::Show(int part) {
  if (std::exchange(shown_, part) != part) PaintAgain();
}

void PointedPart::PaintAgain() const {
  if (ShownBrightness() == Brightness::kDark) ::InvalidateRect(control_, nullptr, FALSE);
}

}  // namespace platform::win32
