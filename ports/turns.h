#pragma once
// Port: lets a wish that comes from outside the window have its turn as user input has. Not for waiting or
// for periodic work (ports/message_loop.h, controls/timer.h).

#include <cstdint>
#include <functional>

namespace platform {

/// What a wish does to a wait of the program that is under way when it comes.
enum class TurnOnWait : std::uint8_t {
  kWaits,    ///< it has its turn when the wait is over, or is processing messages
  kEndsWait  ///< the wait gives up at once (MessageLoop::InputEndsWait)
};

/// What becomes of a wish whose turn comes while a message box or dialog blocks the window.
enum class TurnWhenBlocked : std::uint8_t {
  kIsDropped,  ///< as a click on a button is
  kRuns        ///< as a typed text is taken
};

class Turns {
 public:
  virtual ~Turns() = default;

  /// Runs `procedure` from the event loop, never inside this call, in the order of the input; not at all once
  /// the window is gone. May be called at any time on the user-interface thread.
  virtual void HandOver(std::function<void()> procedure, TurnOnWait on_wait,
                        TurnWhenBlocked when_blocked) = 0;
};

}  // namespace platform
