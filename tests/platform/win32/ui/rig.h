#pragma once
// A window with controls that a test chooses, and the user's gestures on it. Not the program's forms.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "platform/win32/ui/form_window.h"
#include "platform/win32/ui/program_windows.h"
#include "platform/win32/ui/timer_binding.h"

namespace platform::win32 {

/// Derive, fill `inventory`, then Open.
class Win32WindowTest : public testing::Test {
 protected:
  void Open() {
    RestPointer();
    form.Move({0, 0, 9000, 6000});
    int top = 0;
    for (const app::FormControl& entry : inventory) {
      // A button without a size cannot be clicked.
      auto* control = app::As<controls::Control>(entry);
      if (control == nullptr || control->GetPlace().width > 0) continue;
      control->Move({0, top, 3000, 450});
      top += 500;
    }
    window = std::make_unique<FormWindow>(form, inventory, nullptr, icons, loop);
    window->Show();
    loop.ProcessPendingMessages();
  }
  HWND Of(const controls::Control& control) const { return window->Controls().Of(control)->Handle(); }
  /// Handles messages until the condition holds; false after twenty seconds.
  bool Until(const std::function<bool()>& holds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!holds()) {
      if (std::chrono::steady_clock::now() > end) return false;
      loop.ProcessPendingMessages();
      ::Sleep(1);
    }
    return true;
  }
  /// Takes the pointer off the windows, into the screen's last corner. A window that ends under the pointer
  /// keeps Wine from noticing the pointer over the windows after it.
  static void RestPointer() { ::SetCursorPos(32'767, 32'767); }
  static void PressKey(HWND target, WPARAM key) {
    ::PostMessageW(target, WM_KEYDOWN, key, 1);
    ::PostMessageW(target, WM_KEYUP, key, 0xC0000001);
  }

  /// While it lives: does something once a condition holds, in whatever loop of the system runs then.
  class Once {
   public:
    Once(Win32WindowTest& test, const std::function<bool()>& holds, const std::function<void()>& act)
        : binding_(timer_, test.window->Handle(), test.loop) {
      timer_.SetInterval(10);
      timer_.SetEnabled(true);
      tick_ = timer_.Ticked.Subscribe([this, holds, act] {
        if (done_ || !holds()) return;
        done_ = true;
        timer_.SetEnabled(false);
        act();
      });
    }
    [[nodiscard]] bool Done() const { return done_; }

   private:
    controls::Timer timer_;
    TimerBinding binding_;
    controls::Subscription tick_;
    bool done_ = false;
  };
  /// The dialog or box of the system's that is open over the window; null for none.
  [[nodiscard]] HWND OpenDialog() const {
    HWND const front = ::GetLastActivePopup(window->Handle());
    return front != window->Handle() && ::IsWindowVisible(front) != 0 ? front : nullptr;
  }
  /// What the end of every loop leaves behind would end the next test's loops, too.
  static void ForgetLeaving() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != 0) {
    }
  }

  Win32MessageLoop loop;
  Win32Icons icons;
  controls::Form form;
  app::Inventory inventory;
  std::unique_ptr<FormWindow> window;
};

}  // namespace platform::win32
