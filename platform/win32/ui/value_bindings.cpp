#include "platform/win32/ui/value_bindings.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "platform/win32/ui/dark_parts.h"
#include "platform/win32/ui/palette.h"

namespace platform::win32 {
namespace {

constexpr UINT_PTR kPainter = 1;
constexpr double kLoud = 0.7;
constexpr double kVeryLoud = 0.9;

LRESULT CALLBACK PaintedBar(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                            DWORD_PTR binding) {
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_PAINT) {
    reinterpret_cast<const ProgressBarBinding*>(binding)->Paint();
    return 0;
  }
  return ::DefSubclassProc(window, message, w, l);
}

}  // namespace

ProgressBarBinding::ProgressBarBinding(controls::ProgressBar& bar, HWND parent, const Surroundings& around)
    : ControlBinding(bar, parent, around, {PROGRESS_CLASSW, PBS_VERTICAL | PBS_SMOOTH}, ForKeyboard::kNo),
      bar_(bar) {
  ::SetWindowSubclass(Handle(), PaintedBar, kPainter, reinterpret_cast<DWORD_PTR>(this));
  subscriptions_ += bar.Changed.Subscribe([this] { Follow(); });
  FollowControl();
}

ProgressBarBinding::~ProgressBarBinding() { ::RemoveWindowSubclass(Handle(), PaintedBar, kPainter); }

double ProgressBarBinding::Level() const {
  const int range = bar_.Maximum() - bar_.Minimum();
  return range > 0 ? static_cast<double>(bar_.Value() - bar_.Minimum()) / range : 0.0;
}

int ProgressBarBinding::HeightOf(double level) const {
  RECT all{};
  ::GetClientRect(Handle(), &all);
  const int inside = std::max(0, static_cast<int>(all.bottom) - 2);
  return static_cast<int>(std::lround(std::clamp(level, 0.0, 1.0) * inside));
}

void ProgressBarBinding::Follow() {
  const int height = HeightOf(Level());
  if (height == shown_height_) return;
  shown_height_ = height;
  if (::IsWindowVisible(Handle()) != 0) ::InvalidateRect(Handle(), nullptr, FALSE);
}

void ProgressBarBinding::Paint() const {
  PAINTSTRUCT paint{};
  HDC context = ::BeginPaint(Handle(), &paint);
  RECT all{};
  ::GetClientRect(Handle(), &all);
  ::FrameRect(context, &all, ShownBrush(COLOR_BTNSHADOW));
  const RECT inside{all.left + 1, all.top + 1, all.right - 1, all.bottom - 1};
  struct Zone {
    double from;
    Loudness loudness;
  };
  constexpr std::array zones = {Zone{kVeryLoud, Loudness::kVeryLoud}, Zone{kLoud, Loudness::kLoud},
                                Zone{0.0, Loudness::kQuiet}};
  const Contrast contrast = UsersContrast();
  const auto fill = [&](int from, int to, COLORREF color) {
    if (to > from)
      FillArea(context, {inside.left, inside.bottom - to, inside.right, inside.bottom - from}, color);
  };
  int top = HeightOf(Level());
  fill(top, static_cast<int>(inside.bottom - inside.top), ShownColor(COLOR_WINDOW));
  for (const Zone& zone : zones) {
    const int from = std::min(HeightOf(zone.from), top);
    fill(from, top, ColorOf(zone.loudness, contrast));
    top = from;
  }
  ::EndPaint(Handle(), &paint);
}

ScrollBarBinding::ScrollBarBinding(controls::ScrollBar& bar, HWND parent, const Surroundings& around)
    : ControlBinding(bar, parent, around, {TRACKBAR_CLASSW, TBS_HORZ | TBS_BOTH | TBS_NOTICKS},
                     ForKeyboard::kYes),
      bar_(bar),
      pointed_(Handle(), [this](const tagPOINT& pointer) { return SliderPartAt(Handle(), pointer); }) {
  subscriptions_ += bar.Changed.Subscribe([this] { Follow(); });
  FollowControl();
  Follow();
  FollowControl();
}

PixelPlace ScrollBarBinding::Fitted(const PixelPlace& place) const {
  // The system puts the handle near the upper edge, as if there were marks below it.
  RECT handle{};
  ::SendMessageW(Handle(), TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&handle));
  const int middle = static_cast<int>(handle.top + handle.bottom) / 2;
  const int lower = std::clamp(place.height / 2 - middle, 0, place.height / 2);
  // As high as before, for the handle's place may depend on that.
  return {place.left, place.top + lower, place.width, place.height};
}

void ScrollBarBinding::FollowScale() {
  ControlBinding::FollowScale();
  // By now the handle has its new size.
  FollowControl();
}

void ScrollBarBinding::FollowColors() {
  // The system keeps a picture of the slider, which it makes again for another theme.
  if (std::exchange(shown_, ShownBrightness()) != ShownBrightness())
    ::SendMessageW(Handle(), WM_THEMECHANGED, 0, 0);
}

std::intptr_t ScrollBarBinding::Notice(tagNMHDR& notice) {
  const bool paints = notice.code == static_cast<UINT>(NM_CUSTOMDRAW);
  if (!paints || ShownBrightness() == Brightness::kLight) return CDRF_DODEFAULT;
  const auto& step = reinterpret_cast<const NMCUSTOMDRAW&>(notice);
  switch (step.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT:
      // By the system's documentation a slider's parts can be left out, but not the whole of it.
      return CDRF_SKIPDEFAULT;
    case CDDS_POSTPAINT:
      PaintSlider(Handle(), step.hdc, pointed_.Get());
      return CDRF_DODEFAULT;
    default:
      return CDRF_DODEFAULT;
  }
}

void ScrollBarBinding::Follow() {
  const auto send = [this](UINT message, WPARAM w, LPARAM l) {
    return ::SendMessageW(Handle(), message, w, l);
  };
  constexpr int kPages = 10;
  if (send(TBM_GETRANGEMIN, 0, 0) != bar_.Minimum() || send(TBM_GETRANGEMAX, 0, 0) != bar_.Maximum()) {
    send(TBM_SETRANGEMIN, FALSE, bar_.Minimum());
    send(TBM_SETRANGEMAX, TRUE, bar_.Maximum());
    send(TBM_SETPAGESIZE, 0, (bar_.Maximum() - bar_.Minimum()) / kPages);
  }
  // While the user drags, the handle stays under the pointer.
  if (dragging_ || values_to_come_ > 0 || send(TBM_GETPOS, 0, 0) == bar_.Value()) return;
  send(TBM_SETPOS, TRUE, bar_.Value());
}

void ScrollBarBinding::Scrolled(unsigned int code) {
  dragging_ = code == TB_THUMBTRACK;
  const auto value = static_cast<int>(::SendMessageW(Handle(), TBM_GETPOS, 0, 0));
  ++values_to_come_;
  HandOver([this, value, drags = dragging_] {
    --values_to_come_;
    if (drags) {
      bar_.Scroll(value);
    } else {
      bar_.SetValue(value);
    }
    Follow();
  });
}

ImageBinding::ImageBinding(controls::Image& image, HWND parent, const Surroundings& around,
                           const Win32Icons& icons)
    : ControlBinding(image, parent, around, {L"STATIC", SS_OWNERDRAW}, ForKeyboard::kNo),
      image_(image),
      icons_(icons) {
  subscriptions_ += image.Changed.Subscribe([this] {
    if (shown_ == image_.Picture()) return;
    shown_ = image_.Picture();
    ::InvalidateRect(Handle(), nullptr, TRUE);
  });
  shown_ = image.Picture();
  FollowControl();
}

void ImageBinding::Draw(const tagDRAWITEMSTRUCT& place) {
  const RECT& area = place.rcItem;
  ::FillRect(place.hDC, &area, ShownBrush(COLOR_WINDOW));
  const Pixels* picture = icons_.Picture(PictureHandle{image_.Picture()});
  if (picture == nullptr) return;
  DrawPicture(place.hDC, *picture, {area.left, area.top, area.right - area.left, area.bottom - area.top});
}

}  // namespace platform::win32
