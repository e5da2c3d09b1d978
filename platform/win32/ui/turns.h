#pragma once
// Wishes from outside the window, in the order of its input. Not the event procedures themselves
// (message_loop.h).

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/message_loop.h"
#include "ports/turns.h"

namespace platform::win32 {

/// Nothing runs before the main window is set and after it is gone.
class Win32Turns final : public Turns {
 public:
  explicit Win32Turns(Win32MessageLoop& loop) : loop_(loop) {}

  void SetMainWindow(HWND window) { window_ = window; }
  void HandOver(std::function<void()> procedure, TurnOnWait on_wait, TurnWhenBlocked when_blocked) override;

 private:
  Win32MessageLoop& loop_;
  HWND window_ = nullptr;
  Lifetime lifetime_;
};

}  // namespace platform::win32
