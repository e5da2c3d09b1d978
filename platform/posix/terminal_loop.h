#pragma once
// The message loop of a program without windows, through which it is notified of requests to end.
// Not for windows; those have the toolkit's own.

#include <functional>

#include "ports/message_loop.h"

namespace platform::posix {

/// SIGINT, SIGTERM and SIGHUP are passed on when messages are next processed; the same signal a second time
/// ends the process at once. One at a time; the signals' former handling is back when it ends.
class TerminalLoop final : public MessageLoop {
 public:
  TerminalLoop();
  ~TerminalLoop() override;
  TerminalLoop(const TerminalLoop&) = delete;
  TerminalLoop& operator=(const TerminalLoop&) = delete;

  /// Called while messages are processed, once for each request to end.
  std::function<void()> EndAsked;

  void ProcessPendingMessages() override;
  void ProcessPaintMessages() override {}
  /// A request to end that has not been passed on yet.
  [[nodiscard]] bool InputEndsWait() const override;
  /// A signal ends it early.
  void Sleep(std::uint32_t milliseconds) override;
  /// No key is ever down.
  std::int16_t GetAsyncKeyState(std::int32_t /*virtual_key*/) override { return 0; }
};

}  // namespace platform::posix
