#pragma once
// Drives one timer of the program with Qt's clock. Not a means to wait.

#include <QTimer>

#include "controls/timer.h"
#include "platform/qt/message_loop.h"

namespace platform::qt {

/// Ticks that come while only painting is allowed are dropped unless the timer wants them; the next one comes
/// an interval later.
class TimerBinding final {
 public:
  TimerBinding(controls::Timer& timer, QtMessageLoop& loop);
  TimerBinding(const TimerBinding&) = delete;
  TimerBinding& operator=(const TimerBinding&) = delete;

 private:
  void Follow();

  controls::Timer& timer_;
  QtMessageLoop& loop_;
  QTimer clock_;
  controls::Subscription subscription_;
};

}  // namespace platform::qt
