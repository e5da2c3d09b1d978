#include "platform/qt/turns.h"

#include <utility>

#include "platform/qt/input_binding.h"

namespace platform::qt {

void QtTurns::HandOver(std::function<void()> procedure, TurnOnWait on_wait, TurnWhenBlocked when_blocked) {
  if (!window_) return;
  loop_.HandOver(
      *window_,
      [window = window_.data(), procedure = std::move(procedure), when_blocked] {
        if (when_blocked == TurnWhenBlocked::kRuns || !IsBlockedByDialog(*window)) procedure();
      },
      on_wait == TurnOnWait::kEndsWait ? OnWait::kEndsWait : OnWait::kKeepsWaiting);
}

}  // namespace platform::qt
