#pragma once
// Adapter: the system's clock in the user's time zone. Not for timers or waiting.

#include "ports/clock.h"

namespace platform::posix {

/// WholeSeconds counts from the system's start.
class PosixClock final : public Clock {
 public:
  double SecondsSinceMidnight() override;
  std::int64_t WholeSeconds() override;
  DateTime LocalTime() override;
};

}  // namespace platform::posix
