#include "platform/qt/timer_binding.h"

namespace platform::qt {
namespace {

// Below this a timer that may be five percent off is visibly uneven.
constexpr int kNeedsPrecision = 100;

}  // namespace

TimerBinding::TimerBinding(controls::Timer& timer, QtMessageLoop& loop) : timer_(timer), loop_(loop) {
  subscription_ = timer.Changed.Subscribe([this] { Follow(); });
  QObject::connect(&clock_, &QTimer::timeout, &clock_, [this] {
    if (timer_.TicksWhilePainting() && loop_.PaintingOnly()) return timer_.Fire();
    loop_.Tick([this] { timer_.Fire(); });
  });
  Follow();
}

void TimerBinding::Follow() {
  const int interval = timer_.Interval();
  if (!timer_.Enabled() || interval <= 0) {
    clock_.stop();
    return;
  }
  if (clock_.isActive() && clock_.interval() == interval) return;
  clock_.setTimerType(interval < kNeedsPrecision ? Qt::PreciseTimer : Qt::CoarseTimer);
  clock_.start(interval);
}

}  // namespace platform::qt
