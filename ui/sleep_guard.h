#pragma once
// Keeps the computer awake while there is something to hear. Not how that is asked for
// (ports/sleep_inhibitor.h).

#include <cstdint>

#include "controls/captioned.h"
#include "controls/form.h"
#include "controls/timer.h"
#include "ports/clock.h"
#include "ports/sleep_inhibitor.h"
#include "ui/playing_mark.h"

namespace ui {

/// From the first sound until playing stops, pauses, ends or fails, or the window is unloaded. A station that
/// is lost keeps the computer awake for kPatienceSeconds more, so that a short break does not let it fall
/// asleep, and one that never comes back does not keep it awake all night.
class SleepGuard {
 public:
  static constexpr std::int64_t kPatienceSeconds = 300;

  struct Ports {
    platform::SleepInhibitor& inhibitor;
    platform::Clock& clock;
  };
  /// `tick` comes while something plays.
  SleepGuard(Ports ports, PlayingMark& mark, controls::Timer& tick, controls::Form& form);
  ~SleepGuard();
  SleepGuard(const SleepGuard&) = delete;
  SleepGuard& operator=(const SleepGuard&) = delete;

 private:
  void Follow();
  void Hold();
  void Release();

  Ports ports_;
  const PlayingMark& mark_;
  bool holds_ = false;
  std::int64_t heard_at_ = 0;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
