#include "platform/win32/ui/dark_parts.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/win32/ui/text_drawing.h"

namespace platform::win32 {
namespace {

// At 100 %.
constexpr int kCheckSide = 13;
constexpr int kCheckGap = 5;
constexpr int kHeaderMargin = 6;
constexpr int kHeaderArrow = 16;

PixelPlace AsPlace(const RECT& area) {
  return {static_cast<int>(area.left), static_cast<int>(area.top), static_cast<int>(area.right - area.left),
          static_cast<int>(area.bottom - area.top)};
}

RECT InsideOf(HWND window) {
  RECT all{};
  ::GetClientRect(window, &all);
  return all;
}

/// What the control's container has behind it.
void FillLikeParent(HWND control, HDC context, const RECT& area) {
  const LRESULT ground = ::SendMessageW(::GetParent(control), WM_CTLCOLORSTATIC,
                                        reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(control));
  ::FillRect(context, &area, reinterpret_cast<HBRUSH>(ground));
}

bool ShowsFocus(HWND control) {
  return ::GetFocus() == control && (::SendMessageW(control, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
}

PartState ButtonState(HWND button) {
  if (::IsWindowEnabled(button) == 0) return PartState::kDisabled;
  const LRESULT state = ::SendMessageW(button, BM_GETSTATE, 0, 0);
  if ((state & BST_PUSHED) != 0) return PartState::kPressed;
  return (state & BST_HOT) != 0 ? PartState::kPointedAt : PartState::kUsual;
}

RECT HandleOf(HWND slider) {
  RECT handle{};
  ::SendMessageW(slider, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&handle));
  return handle;
}

/// A slider that is dragged keeps the mouse, wherever the pointer is.
PartState StateOfHandle(HWND slider, int pointed) {
  if (::IsWindowEnabled(slider) == 0) return PartState::kDisabled;
  if (::GetCapture() == slider) return PartState::kPressed;
  return pointed != 0 ? PartState::kPointedAt : PartState::kUsual;
}

/// An arrow is pressed only while the pointer is on it.
PartState StateOfArrow(HWND arrows, int arrow, int pointed) {
  if (::IsWindowEnabled(arrows) == 0) return PartState::kDisabled;
  if (arrow != pointed) return PartState::kUsual;
  return ::GetCapture() == arrows ? PartState::kPressed : PartState::kPointedAt;
}

COMBOBOXINFO ComboBoxPartsOf(HWND box) {
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  ::GetComboBoxInfo(box, &parts);
  return parts;
}

PartState StateOfButton(HWND box, int pointed) {
  if (::IsWindowEnabled(box) == 0) return PartState::kDisabled;
  if (::SendMessageW(box, CB_GETDROPPEDSTATE, 0, 0) != 0) return PartState::kPressed;
  return pointed != 0 ? PartState::kPointedAt : PartState::kUsual;
}

/// Where the field is now, which paints itself.
RECT FieldIn(HWND box, HWND field) {
  RECT place{};
  ::GetWindowRect(field, &place);
  ::MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

void PaintFace(HDC context, const RECT& area, const Face& face) {
  FillArea(context, area, face.ground);
  FrameArea(context, area, face.frame);
}

}  // namespace

void PaintEdge(HWND control) {
  RECT outer{};
  ::GetWindowRect(control, &outer);
  ::OffsetRect(&outer, -outer.left, -outer.top);
  HDC context = ::GetWindowDC(control);
  const bool enabled = ::IsWindowEnabled(control) != 0;
  const int line = !enabled ? COLOR_BTNSHADOW : ::GetFocus() == control ? COLOR_HOTLIGHT : COLOR_WINDOWFRAME;
  FrameArea(context, outer, ShownColor(line));
  ::InflateRect(&outer, -1, -1);
  FrameArea(context, outer, ShownColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
  ::ReleaseDC(control, context);
}

void PaintCheckBox(HWND box, HDC context, const Text& caption, const Scale& scale) {
  const RECT all = InsideOf(box);
  FillLikeParent(box, context, all);
  const int side = std::min(scale.Scaled(kCheckSide), static_cast<int>(all.bottom));
  const int top = (static_cast<int>(all.bottom) - side) / 2;
  const RECT square{0, top, side, top + side};
  Face face = FaceOf(ButtonState(box));
  PaintFace(context, square, face);
  if (::SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED) DrawTick(context, AsPlace(square), face.text);
  const SelectedFont font(context, scale.Get(Scale::Font::kPlain));
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, face.text);
  const int left = side + scale.Scaled(kCheckGap);
  const int room = std::max(0, static_cast<int>(all.right) - left);
  const int width = std::min(room, WidthOf(context, caption));
  DrawOnOneLine(context, caption, {left, 0, room, static_cast<int>(all.bottom)});
  const int above = std::max(0, (static_cast<int>(all.bottom) - scale.FontHeight()) / 2);
  if (!ShowsFocus(box)) return;
  DrawFocus(context, {left - 2, above, left + width + 2, static_cast<int>(all.bottom) - above});
}

int SliderPartAt(HWND slider, const tagPOINT& place) {
  const RECT handle = HandleOf(slider);
  return ::PtInRect(&handle, place) != 0 ? 1 : 0;
}

void PaintSlider(HWND slider, HDC context, int pointed) {
  const RECT all = InsideOf(slider);
  FillLikeParent(slider, context, all);
  RECT channel{};
  ::SendMessageW(slider, TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&channel));
  PaintFace(context, channel, {ShownColor(COLOR_WINDOW), ShownColor(COLOR_WINDOWFRAME), 0});
  FillArea(context, HandleOf(slider), HandleColor(StateOfHandle(slider, pointed)));
  if (ShowsFocus(slider)) DrawFocus(context, all);
}

int ComboBoxPartAt(HWND box, const tagPOINT& place) {
  return place.x >= ComboBoxPartsOf(box).rcButton.left ? 1 : 0;
}

void PaintComboBox(HWND box, HDC context, int pointed) {
  const COMBOBOXINFO parts = ComboBoxPartsOf(box);
  const RECT all = InsideOf(box);
  const bool enabled = ::IsWindowEnabled(box) != 0;
  const bool used = ::GetFocus() == box || ::GetFocus() == parts.hwndItem;
  const PartState state = StateOfButton(box, pointed);
  ::SaveDC(context);
  if (parts.hwndItem != nullptr && parts.hwndItem != box) {
    const RECT field = FieldIn(box, parts.hwndItem);
    ::ExcludeClipRect(context, field.left, field.top, field.right, field.bottom);
  }
  FillArea(context, all, ShownColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
  const Face face = FaceOf(state);
  RECT button = parts.rcButton;
  button.top = all.top;
  button.bottom = all.bottom;
  button.right = all.right;
  PaintFace(context, button, face);
  FrameArea(context, all,
            used ? ShownColor(COLOR_HOTLIGHT) : FaceOf(enabled ? PartState::kUsual : state).frame);
  DrawArrow(context, Pointing::kDown, AsPlace(button), face.text);
  ::RestoreDC(context, -1);
}

int ArrowAt(HWND arrows, const tagPOINT& place) {
  const RECT all = InsideOf(arrows);
  if (::PtInRect(&all, place) == 0) return 0;
  return place.y < all.bottom / 2 ? 1 : 2;
}

void PaintArrows(HWND arrows, HDC context, int pointed) {
  const RECT all = InsideOf(arrows);
  FillLikeParent(arrows, context, all);
  const LONG middle = all.bottom / 2;
  for (const Pointing pointing : {Pointing::kUp, Pointing::kDown}) {
    const bool upper = pointing == Pointing::kUp;
    const RECT half{all.left, upper ? all.top : middle, all.right, upper ? middle + 1 : all.bottom};
    const Face face = FaceOf(StateOfArrow(arrows, upper ? 1 : 2, pointed));
    PaintFace(context, half, face);
    DrawArrow(context, pointing, AsPlace(half), face.text);
  }
}

void PaintHeaderItem(HDC context, const tagRECT& area, const Text& caption, SortedBy sorted, PartState state,
                     const Scale& scale) {
  const Face face = FaceOf(state);
  FillArea(context, area, state == PartState::kUsual ? ShownColor(COLOR_BTNFACE) : face.ground);
  FillArea(context, {area.left, area.bottom - 1, area.right, area.bottom}, ShownColor(COLOR_BTNSHADOW));
  FillArea(context, {area.right - 1, area.top, area.right, area.bottom}, ShownColor(COLOR_BTNSHADOW));
  const SelectedFont font(context, scale.Get(Scale::Font::kPlain));
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, face.text);
  const int margin = scale.Scaled(kHeaderMargin);
  const int arrow = sorted == SortedBy::kNot ? 0 : scale.Scaled(kHeaderArrow);
  PixelPlace place = AsPlace(area);
  place.left += margin;
  place.width = std::max(0, place.width - 2 * margin - arrow);
  DrawOnOneLine(context, caption, place);
  if (sorted == SortedBy::kNot) return;
  place.left += std::min(place.width, WidthOf(context, caption));
  place.width = arrow;
  DrawArrow(context, sorted == SortedBy::kUpwards ? Pointing::kUp : Pointing::kDown, place, face.text);
}

void PaintHeaderRest(HWND header, HDC context) {
  RECT rest = InsideOf(header);
  const auto count = static_cast<int>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
  for (int item = 0; item < count; ++item) {
    RECT place{};
    ::SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&place));
    rest.left = std::max(rest.left, place.right);
  }
  if (rest.left >= rest.right) return;
  FillArea(context, rest, ShownColor(COLOR_BTNFACE));
  FillArea(context, {rest.left, rest.bottom - 1, rest.right, rest.bottom}, ShownColor(COLOR_BTNSHADOW));
}

}  // namespace platform::win32
