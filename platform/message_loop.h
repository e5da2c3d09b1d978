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

  /// Paints what needs painting, without input and without timer events; for waits that the user may not
  /// enter. Returns at once.
  virtual void ProcessPaintMessages() = 0;

  /// Suspends the thread.
  virtual void Sleep(std::uint32_t milliseconds) = 0;

  /// Non-zero when the key is down, or was pressed since the previous call for this key. A press that came
  /// while the program did nothing but wait for the user does not count.
  virtual std::int16_t GetAsyncKeyState(std::int32_t virtual_key) = 0;
};

}  // namespace platform
