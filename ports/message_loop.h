#pragma once
// Port: the one pump of the user-interface thread: processing what is pending, waiting, key state.
// Not for periodic work; that is a controls::Timer.

#include <cstdint>

namespace platform {

inline constexpr std::int32_t kVkEscape = 27;  ///< VK_ESCAPE

class MessageLoop {
 public:
  virtual ~MessageLoop() = default;

  /// Handles everything that is pending (input, timers, painting), once, without waiting. Any event
  /// procedure of the program can run inside, closing the window included.
  virtual void ProcessPendingMessages() = 0;

  /// Paints what needs painting; for waits that must not be interrupted. Runs no event procedure of the
  /// program: ticks are dropped, and user input is kept, in its order, until messages are processed again.
  /// Returns at once.
  virtual void ProcessPaintMessages() = 0;

  /// True when input that ends a wait is pending: the waiting code gives up at once, as if the wait had
  /// failed, and leaves the input to be processed afterwards. Such input is an Escape that was pressed since
  /// the running event procedure began, a request to close the window or end the program, and the use of a
  /// control that is marked for it (controls::Control::EndsWaiting). Asking processes nothing and changes
  /// nothing.
  [[nodiscard]] virtual bool InputEndsWait() const = 0;

  /// Suspends the thread.
  virtual void Sleep(std::uint32_t milliseconds) = 0;

  /// Non-zero when the key is down, or was pressed since the previous call for this key. A press while the
  /// program was only waiting for the user does not count.
  virtual std::int16_t GetAsyncKeyState(std::int32_t virtual_key) = 0;
};

}  // namespace platform
