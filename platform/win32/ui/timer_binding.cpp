#include "platform/win32/ui/timer_binding.h"

#include "platform/win32/base/windows_api.h"

namespace platform::win32 {
namespace {

void CALLBACK OnTimer(HWND /*window*/, UINT /*message*/, UINT_PTR binding, DWORD /*time*/) {
  reinterpret_cast<TimerBinding*>(binding)->Tick();
}

}  // namespace

TimerBinding::TimerBinding(controls::Timer& timer, HWND window, Win32MessageLoop& loop)
    : timer_(timer), window_(window), loop_(loop) {
  subscription_ = timer.Changed.Subscribe([this] { Follow(); });
  Follow();
}

TimerBinding::~TimerBinding() {
  if (running_interval_ > 0) ::KillTimer(window_, reinterpret_cast<UINT_PTR>(this));
}

void TimerBinding::Tick() {
  // A message that was on its way when the timer was stopped.
  if (running_interval_ == 0) return;
  if (timer_.TicksWhilePainting() && loop_.PaintingOnly()) return timer_.Fire();
  loop_.Tick([this] { timer_.Fire(); });
}

void TimerBinding::Follow() {
  const int interval = timer_.Enabled() && timer_.Interval() > 0 ? timer_.Interval() : 0;
  if (interval == running_interval_) return;
  running_interval_ = interval;
  const auto id = reinterpret_cast<UINT_PTR>(this);
  if (interval == 0) {
    ::KillTimer(window_, id);
  } else {
    ::SetTimer(window_, id, static_cast<UINT>(interval), OnTimer);
  }
}

}  // namespace platform::win32
