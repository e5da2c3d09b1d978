#include "platform/win32/ui/frame_window.h"

#include "platform/win32/base/windows_api.h"

#include <uxtheme.h>
#include <vssym32.h>

#include <utility>

#include "platform/front/shown_place.h"
#include "platform/win32/base/wide.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

/// By the system's theme where there is one, except in the dark, for which it has none.
void PaintBorder(HWND window, HDC context, RECT border) {
  if (ShownBrightness() == Brightness::kDark) {
    ::FrameRect(context, &border, ShownBrush(COLOR_BTNSHADOW));
    return;
  }
  HTHEME theme = ::OpenThemeData(window, L"BUTTON");
  if (theme == nullptr) {
    ::DrawEdge(context, &border, EDGE_ETCHED, BF_RECT);
    return;
  }
  ::DrawThemeBackground(theme, context, BP_GROUPBOX, GBS_NORMAL, &border, nullptr);
  ::CloseThemeData(theme);
}

}  // namespace

using controls::FrameLook;

FrameWindow::FrameWindow(controls::Frame& frame, HWND parent, const Scale& scale)
    : Window(parent, {WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT}, frame.Caption()),
      frame_(frame),
      scale_(scale) {}

int FrameWindow::Ground() const { return frame_.Look() == FrameLook::kPanel ? COLOR_WINDOW : COLOR_BTNFACE; }

std::optional<std::intptr_t> FrameWindow::OnMessage(const Message& message) {
  if (message.id == WM_SETTEXT) ::InvalidateRect(Handle(), nullptr, TRUE);
  if (message.id == WM_SIZE) ::InvalidateRect(Handle(), nullptr, TRUE);
  if (message.id != WM_PAINT) return std::nullopt;
  Paint();
  return 0;
}

void FrameWindow::Paint() const {
  PAINTSTRUCT paint{};
  HWND window = Handle();
  HDC context = ::BeginPaint(window, &paint);
  if (frame_.Look() == FrameLook::kTitled) PaintTitled(context);
  if (frame_.Look() == FrameLook::kPanel) {
    RECT all{};
    ::GetClientRect(window, &all);
    ::FrameRect(context, &all, ShownBrush(COLOR_BTNSHADOW));
  }
  ::EndPaint(window, &paint);
}

void FrameWindow::PaintTitled(HDC context) const {
  HWND window = Handle();
  RECT all{};
  ::GetClientRect(window, &all);
  const HGDIOBJ before = ::SelectObject(context, scale_.Get(Scale::Font::kPlain));
  const Text title = OnOneLine(frame_.Caption());
  SIZE size{};
  ::GetTextExtentPoint32W(context, WideData(title), static_cast<int>(title.size()), &size);
  const int indent = scale_.Scaled(8);
  const int gap = scale_.Scaled(3);
  RECT text{indent, 0, indent + size.cx, size.cy};
  ::SaveDC(context);
  ::ExcludeClipRect(context, text.left - gap, text.top, text.right + gap, text.bottom);
  RECT border{all.left, all.top + size.cy / 2, all.right, all.bottom};
  PaintBorder(window, context, border);
  ::RestoreDC(context, -1);
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, ShownColor(COLOR_BTNTEXT));
  ::DrawTextW(context, WideData(title), static_cast<int>(title.size()), &text,
              DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
  ::SelectObject(context, before);
}

FrameBinding::FrameBinding(controls::Frame& frame, HWND parent, const Surroundings& around)
    : FrameBinding(frame, std::make_unique<FrameWindow>(frame, parent, around.scale), around) {}

FrameBinding::FrameBinding(controls::Frame& frame, std::unique_ptr<FrameWindow> window,
                           const Surroundings& around)
    : ControlBinding(frame, window->Handle(), around), frame_(frame), window_(std::move(window)) {
  subscriptions_ += frame.Changed.Subscribe([this] { Follow(); });
  FollowControl();
  Follow();
}

PixelPlace FrameBinding::Fitted(const PixelPlace& place) const {
  const controls::Place shown = front::BelowUpperEdge({place.left, place.top, place.width, place.height});
  return {shown.left, shown.top, shown.width, shown.height};
}

void FrameBinding::Follow() { ShowTitle(frame_.Caption()); }

}  // namespace platform::win32
