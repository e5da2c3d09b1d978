#include "platform/posix/clock.h"

#include <time.h>

namespace platform::posix {
namespace {

timespec Now(clockid_t clock = CLOCK_REALTIME) {
  timespec now{};
  ::clock_gettime(clock, &now);
  return now;
}

tm Local(time_t seconds) {
  tm local{};
  ::localtime_r(&seconds, &local);
  return local;
}

}  // namespace

double PosixClock::SecondsSinceMidnight() {
  const timespec now = Now();
  const tm local = Local(now.tv_sec);
  const int whole = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
  return whole + static_cast<double>(now.tv_nsec) / 1e9;
}

std::int64_t PosixClock::WholeSeconds() { return Now(CLOCK_BOOTTIME).tv_sec; }

DateTime PosixClock::LocalTime() {
  const tm local = Local(Now().tv_sec);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

}  // namespace platform::posix
