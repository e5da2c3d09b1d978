#pragma once
// Port: keeps the computer from falling asleep by itself. Not for the screen, which may go dark, nor against
// a user who sends it to sleep.

namespace platform {

class SleepInhibitor {
 public:
  virtual ~SleepInhibitor() = default;
  /// The computer stays awake until Release or the end of the process, where the system allows that to be
  /// asked for. Nothing happens when it stays awake already. Neither call waits.
  virtual void Hold() = 0;
  virtual void Release() = 0;
};

}  // namespace platform
