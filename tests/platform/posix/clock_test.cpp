#include "platform/posix/clock.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

namespace platform::posix {
namespace {

void SetZone(const char* zone) {
  ::setenv("TZ", zone, 1);
  ::tzset();
}

/// Seconds since midnight of the calendar time `offset` seconds east of Greenwich.
std::int64_t SecondsOfDay(std::int64_t utc, std::int64_t offset) { return (utc + offset) % 86400; }

TEST(PosixClock, SecondsSinceMidnightAreLocal) {
  PosixClock clock;
  for (const auto& [zone, offset] :
       {std::pair("EAST-5:30", 19800), std::pair("WEST+8", -28800), std::pair("UTC0", 0)}) {
    SetZone(zone);
    const std::int64_t before = ::time(nullptr);
    const double seconds = clock.SecondsSinceMidnight();
    const std::int64_t after = ::time(nullptr) + 1;
    EXPECT_GE(seconds, 0.0);
    EXPECT_LT(seconds, 86400.0);
    if (SecondsOfDay(before, offset) > SecondsOfDay(after, offset)) continue;  // midnight passed just now
    EXPECT_GE(seconds, static_cast<double>(SecondsOfDay(before, offset)));
    EXPECT_LE(seconds, static_cast<double>(SecondsOfDay(after, offset)));
  }
}

TEST(PosixClock, SecondsSinceMidnightHaveAFraction) {
  PosixClock clock;
  const double start = clock.SecondsSinceMidnight();
  int distinct = 0;
  double last = start;
  while (distinct < 3) {
    const double now = clock.SecondsSinceMidnight();
    if (now != last) ++distinct;
    last = now;
  }
  EXPECT_LT(last - start, 1.0);
}

TEST(PosixClock, LocalTimeIsTheCalendarTimeOfTheZone) {
  PosixClock clock;
  SetZone("EAST-5:30");
  const time_t before = ::time(nullptr);
  const DateTime local = clock.LocalTime();
  const time_t after = ::time(nullptr);
  tm fields{};
  fields.tm_year = local.year - 1900;
  fields.tm_mon = local.month - 1;
  fields.tm_mday = local.day;
  fields.tm_hour = local.hour;
  fields.tm_min = local.minute;
  fields.tm_sec = local.second;
  const time_t shown = ::timegm(&fields) - 19800;
  EXPECT_GE(shown, before - 1);
  EXPECT_LE(shown, after + 1);
}

TEST(PosixClock, WholeSecondsAreThoseSinceTheSystemsStartWhateverTheTimeIsSetTo) {
  PosixClock clock;
  const auto since_start = [] {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::int64_t{now.tv_sec};
  };
  const std::int64_t before = since_start();
  const std::int64_t seconds = clock.WholeSeconds();
  EXPECT_GE(seconds, before);
  EXPECT_LE(seconds, since_start());
}

}  // namespace
}  // namespace platform::posix
