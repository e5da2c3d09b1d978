#include "platform/win32/ui/tab_stops.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/win32/ui/control_binding.h"

namespace platform::win32 {
namespace {

constexpr wchar_t kKeptFocus[] = L"FunkhausFocus";

bool IsInside(HWND window, HWND control) {
  return window != nullptr && (window == control || ::IsChild(window, control) != 0);
}

}  // namespace

ControlBinding* TabStops::Next(int step, HWND leaving) const {
  const int count = static_cast<int>(order_.size());
  const auto now = std::ranges::find_if(
      order_, [](const ControlBinding* binding) { return HasKeyboard(binding->Handle()); });
  int at = now == order_.end() ? (step > 0 ? -1 : count) : static_cast<int>(now - order_.begin());
  for (int tried = 0; tried < count; ++tried) {
    at = (at + step + count) % count;
    ControlBinding* const next = order_[static_cast<std::size_t>(at)];
    if (next->IsReady() && !IsInside(leaving, next->Handle())) return next;
  }
  return nullptr;
}

bool TabStops::Leave(HWND leaving) const {
  if (!HasKeyboard(leaving)) return true;
  const ControlBinding* const next = Next(1, leaving);
  if (next == nullptr) return false;
  ::SetFocus(next->Handle());
  return true;
}

bool HasKeyboard(HWND window) {
  HWND const focus = ::GetFocus();
  return focus != nullptr && IsInside(window, focus);
}

void KeepFocus() {
  HWND const focus = ::GetFocus();
  HWND const window = focus == nullptr ? nullptr : ::GetAncestor(focus, GA_ROOT);
  if (window != nullptr && window != focus) ::SetPropW(window, kKeptFocus, focus);
}

HWND KeptFocus(HWND window) {
  const auto kept = static_cast<HWND>(::GetPropW(window, kKeptFocus));
  const bool ready = kept != nullptr && ::IsChild(window, kept) != 0 && ::IsWindowVisible(kept) != 0 &&
                     ::IsWindowEnabled(kept) != 0;
  return ready ? kept : nullptr;
}

void ForgetFocus(HWND window) { ::RemovePropW(window, kKeptFocus); }

}  // namespace platform::win32
