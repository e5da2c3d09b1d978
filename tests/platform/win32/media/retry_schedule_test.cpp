#include "platform/win32/media/retry_schedule.h"

#include <gtest/gtest.h>

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;
using Time = RetrySchedule::Clock::time_point;

TEST(RetrySchedule, TheFirstTryComesAtOnceAndFurtherOnesEverySecondForAMinute) {
  RetrySchedule schedule;
  const Time lost(100s);
  EXPECT_EQ(schedule.Lost(lost, lost - 60s, 60s), lost);
  for (Time begun = lost; begun < lost + 59s; begun += 1s) {
    ASSERT_EQ(schedule.Lost(begun + 10ms, begun, 0s), begun + 1s);
  }
}

TEST(RetrySchedule, AfterAMinuteTriesBecomeRarer) {
  RetrySchedule schedule;
  const Time lost(100s);
  schedule.Lost(lost, lost - 60s, 60s);
  const Time late = lost + 60s;
  EXPECT_EQ(schedule.Lost(late, late, 0s), late + 2s);
  EXPECT_EQ(schedule.Lost(late + 2s, late + 2s, 0s), late + 6s);
  for (int at = 0; at < 5; ++at) schedule.Lost(late + 90s, late + 90s, 0s);
  EXPECT_EQ(schedule.Lost(late + 90s, late + 90s, 0s), late + 90s + RetrySchedule::kRarest);
}

TEST(RetrySchedule, AServerThatHangsUpSoonIsNotAskedWithoutAPause) {
  RetrySchedule schedule;
  const Time lost(100s);
  schedule.Lost(lost, lost - 60s, 60s);
  EXPECT_EQ(schedule.Lost(lost + 100ms, lost, 90ms), lost + 1s);
}

TEST(RetrySchedule, SteadySoundBeginsTheScheduleAgain) {
  RetrySchedule schedule;
  const Time lost(100s);
  schedule.Lost(lost, lost - 60s, 60s);
  EXPECT_EQ(schedule.Lost(lost + 6s, lost, 6s), lost + 6s);
}

}  // namespace
}  // namespace platform::win32
