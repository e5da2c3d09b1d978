#pragma once
// Port: the times that the program's rules need. Not for timers or waiting.

#include <cstdint>

namespace platform {

/// Local calendar time in whole seconds.
struct DateTime {
  std::int32_t year = 0;
  std::int32_t month = 0;  ///< 1 to 12
  std::int32_t day = 0;    ///< 1 to 31
  std::int32_t hour = 0;
  std::int32_t minute = 0;
  std::int32_t second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;

  /// Seconds since local midnight with their fraction, 0 up to 86400; starts again at midnight.
  virtual double SecondsSinceMidnight() = 0;

  /// Whole seconds from a fixed point, for how long something takes; they pass while the system sleeps, too.
  /// Where the system has such a clock, setting the time moves them neither forward nor back.
  virtual std::int64_t WholeSeconds() = 0;

  virtual DateTime LocalTime() = 0;
};

}  // namespace platform
