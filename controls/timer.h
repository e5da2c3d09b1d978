#pragma once
// A periodic tick as the program sees it. Not a clock, and not a means to wait.

#include <utility>

#include "controls/event.h"

namespace controls {

/// Disabled at first. Its driver (a window, a test) calls Fire once per interval while it is enabled. A tick
/// inside its own handler is dropped.
class Timer {
 public:
  Timer() = default;
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  [[nodiscard]] bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) {
    if (std::exchange(enabled_, enabled) != enabled) Changed.Raise();
  }

  /// Milliseconds between two ticks; 0 means never.
  [[nodiscard]] int Interval() const { return interval_; }
  void SetInterval(int milliseconds) {
    if (std::exchange(interval_, milliseconds) != milliseconds) Changed.Raise();
  }

  /// Whether ticks come inside waits that allow painting only, as they do anywhere else: for a handler that
  /// touches nothing that a wait relies on. False at first.
  [[nodiscard]] bool TicksWhilePainting() const { return ticks_while_painting_; }
  void SetTicksWhilePainting(bool ticks) { ticks_while_painting_ = ticks; }

  /// One tick. Nothing happens when the timer is disabled or its handler is still running.
  void Fire() {
    if (!enabled_ || firing_) return;
    firing_ = true;
    Ticked.Raise();
    firing_ = false;
  }

  Event<> Ticked;
  Event<> Changed;

 private:
  bool enabled_ = false;
  bool firing_ = false;
  bool ticks_while_painting_ = false;
  int interval_ = 0;
};

}  // namespace controls
