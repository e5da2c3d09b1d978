#pragma once
// The controls of a window that the keyboard can reach, in their order, and where it goes when one of them is
// left. Not the keys (form_keys.h).

#include <vector>

#include "platform/win32/base/handles.h"

namespace platform::win32 {

class ControlBinding;

class TabStops {
 public:
  void Add(ControlBinding& binding) { order_.push_back(&binding); }
  void Clear() { order_.clear(); }
  [[nodiscard]] const std::vector<ControlBinding*>& Order() const { return order_; }

  /// The next control that is ready, from the one that has the keyboard: 1 forward, -1 back; what is inside
  /// `leaving` is passed over. Null for none.
  [[nodiscard]] ControlBinding* Next(int step, HWND leaving = nullptr) const;

  /// To be called before a window is disabled or hidden: the system would leave the thread without a focus,
  /// and the keys without a receiver. The next control that is ready takes it. False: there is none, and the
  /// top-level window is to have it afterwards.
  [[nodiscard]] bool Leave(HWND leaving) const;

 private:
  std::vector<ControlBinding*> order_;
};

/// The window or a part of it has the keyboard.
[[nodiscard]] bool HasKeyboard(HWND window);

/// Remembers which control of its window has the keyboard; to be called before that window is disabled or
/// becomes inactive, because the system then takes it away.
void KeepFocus();
/// The control of the top-level window that was remembered, if it can be seen and used now; null otherwise.
[[nodiscard]] HWND KeptFocus(HWND window);
/// Before the window is gone.
void ForgetFocus(HWND window);

}  // namespace platform::win32
