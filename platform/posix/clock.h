#pragma once
// Adapter: the system's clock in the user's time zone. Not for timers or waiting.

#include "ports/clock.h"

namespace platform::posix {

/// WholeSeconds counts from 1970-01-01 00:00:00 UTC.
class PosixClock final : public Clock {
 public:
  double SecondsSinceMidnight() override;
  std::int64_t WholeSeconds() override;
  DateTime LocalTime() override;
};

}  // namespace platform::posix
