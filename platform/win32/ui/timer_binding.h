#pragma once
// Drives one timer of the program with the system's timer. Not a means to wait.

#include "controls/timer.h"
#include "platform/win32/base/handles.h"
#include "platform/win32/ui/message_loop.h"

namespace platform::win32 {

/// Ticks that come while only painting is allowed are dropped unless the timer wants them; the next one comes
/// an interval later.
class TimerBinding final {
 public:
  /// The messages go to `window`, whose procedure leaves them alone.
  TimerBinding(controls::Timer& timer, HWND window, Win32MessageLoop& loop);
  ~TimerBinding();
  TimerBinding(const TimerBinding&) = delete;
  TimerBinding& operator=(const TimerBinding&) = delete;

  /// For the system's call.
  void Tick();

 private:
  void Follow();

  controls::Timer& timer_;
  HWND window_;
  Win32MessageLoop& loop_;
  int running_interval_ = 0;
  controls::Subscription subscription_;
};

}  // namespace platform::win32
