#pragma once
// Adapter: the system's local time. Not for timers or waiting.

#include "ports/clock.h"

namespace platform::win32 {

class Win32Clock final : public Clock {
 public:
  double SecondsSinceMidnight() override;
  /// Counted from the system's start.
  std::int64_t WholeSeconds() override;
  DateTime LocalTime() override;
};

}  // namespace platform::win32
