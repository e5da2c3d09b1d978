#pragma once
// A window with controls that a test chooses, and the user's gestures on it. Not the program's forms.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "platform/win32/ui/form_window.h"
#include "platform/win32/ui/program_windows.h"

namespace platform::win32 {

/// Derive, fill `inventory`, then Open.
class Win32WindowTest : public testing::Test {
 protected:
  void Open() {
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
  /// Handles messages until the condition holds; false after five seconds.
  bool Until(const std::function<bool()>& holds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!holds()) {
      if (std::chrono::steady_clock::now() > end) return false;
      loop.ProcessPendingMessages();
      ::Sleep(1);
    }
    return true;
  }
  static void PressKey(HWND target, WPARAM key) {
    ::PostMessageW(target, WM_KEYDOWN, key, 1);
    ::PostMessageW(target, WM_KEYUP, key, 0xC0000001);
  }

  Win32MessageLoop loop;
  Win32Icons icons;
  controls::Form form;
  app::Inventory inventory;
  std::unique_ptr<FormWindow> window;
};

}  // namespace platform::win32
