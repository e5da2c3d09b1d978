#include "platform/win32/ui/control_binding.h"

#include "platform/win32/base/windows_api.h"

#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

HWND MakeControl(HWND parent, const NativeKind& kind, ForKeyboard for_keyboard) {
  const DWORD tab_stop = for_keyboard == ForKeyboard::kYes ? WS_TABSTOP : 0;
  return ::CreateWindowExW(kind.extended, kind.class_name, L"",
                           kind.style | tab_stop | WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent, nullptr,
                           ::GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

ControlBinding::ControlBinding(controls::Control& control, HWND parent, const Surroundings& around,
                               const NativeKind& kind, ForKeyboard for_keyboard)
    : control_(control),
      around_(around),
      handle_(MakeControl(parent, kind, for_keyboard)),
      for_keyboard_(for_keyboard),
      owns_window_(true) {
  Subscribe();
}

ControlBinding::ControlBinding(controls::Control& control, HWND made, const Surroundings& around)
    : control_(control),
      around_(around),
      handle_(made),
      for_keyboard_(ForKeyboard::kNo),
      owns_window_(false) {
  Subscribe();
}

ControlBinding::~ControlBinding() {
  Attach(handle_, nullptr);
  if (owns_window_) ::DestroyWindow(handle_);
}

void ControlBinding::Subscribe() {
  Attach(handle_, this);
  SetFont(Scale::Font::kPlain);
  subscriptions_ += control_.Changed.Subscribe([this] { FollowControl(); });
  subscriptions_ += control_.FocusWanted.Subscribe([this] { ::SetFocus(handle_); });
}

bool ControlBinding::IsReady() const {
  return ::IsWindowVisible(handle_) != 0 && ::IsWindowEnabled(handle_) != 0;
}

void ControlBinding::SetHint(const Text& hint) {
  hint_ = hint;
  FollowControl();
}

void ControlBinding::FollowScale() {
  SetFont(font_);
  FollowControl();
}

void ControlBinding::SetFont(Scale::Font font) {
  font_ = font;
  ::SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(around_.scale.Get(font)), TRUE);
}

void ControlBinding::FollowControl() {
  FollowPlace();
  const bool shown = (::GetWindowLongPtrW(handle_, GWL_STYLE) & WS_VISIBLE) != 0;
  const bool enabled = ::IsWindowEnabled(handle_) != 0;
  const bool leaves = (shown && !control_.Visible()) || (enabled && !control_.Enabled());
  const bool left_to_window = leaves && !around_.tab_stops.Leave(handle_);
  if (shown != control_.Visible()) ::ShowWindow(handle_, control_.Visible() ? SW_SHOWNA : SW_HIDE);
  if (enabled != control_.Enabled()) ::EnableWindow(handle_, control_.Enabled() ? TRUE : FALSE);
  if (left_to_window) ::SetFocus(::GetAncestor(handle_, GA_ROOT));
  around_.tool_tips.Show(handle_, Tip());
  FollowWindow();
}

void ControlBinding::FollowPlace() {
  const PixelPlace place = Fitted(around_.scale.Pixels(control_.GetPlace()));
  RECT now{};
  ::GetWindowRect(handle_, &now);
  ::MapWindowPoints(nullptr, ::GetParent(handle_), reinterpret_cast<POINT*>(&now), 2);
  const PixelPlace before{now.left, now.top, now.right - now.left, now.bottom - now.top};
  if (before == place) return;
  ::SetWindowPos(handle_, nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlBinding::HandOver(std::function<void()> procedure, OnWait on_wait) {
  around_.loop.HandOver(lifetime_, std::move(procedure), on_wait);
}

void ControlBinding::ShowTitle(const Text& text) const {
  if (TextOf(handle_) != text) ::SetWindowTextW(handle_, Wide(text));
}

}  // namespace platform::win32
