#include "platform/win32/ui/turns.h"

#include "platform/win32/base/windows_api.h"

#include <utility>

#include "platform/win32/ui/window.h"

namespace platform::win32 {

void Win32Turns::HandOver(std::function<void()> procedure, TurnOnWait on_wait, TurnWhenBlocked when_blocked) {
  if (window_ == nullptr) return;
  loop_.HandOver(
      lifetime_,
      [this, procedure = std::move(procedure), when_blocked] {
        if (::IsWindow(window_) == 0) return;
        if (when_blocked == TurnWhenBlocked::kRuns || !IsBlockedByDialog(window_)) procedure();
      },
      on_wait == TurnOnWait::kEndsWait ? OnWait::kEndsWait : OnWait::kKeepsWaiting);
}

}  // namespace platform::win32
