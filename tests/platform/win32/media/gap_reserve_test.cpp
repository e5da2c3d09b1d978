#include "platform/win32/media/gap_reserve.h"

#include <gtest/gtest.h>

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

TEST(GapReserve, GrowsWithEveryGapAndStartsSmallAfterSteadySound) {
  GapReserve reserve;
  const GapReserve::Clock::time_point start(100s);
  EXPECT_EQ(reserve.Next(start), 1500ms);
  EXPECT_EQ(reserve.Next(start + 10s), 3750ms);
  EXPECT_EQ(reserve.Next(start + 20s), 8000ms);
  EXPECT_EQ(reserve.Next(start + 30s), 8000ms);
  EXPECT_EQ(reserve.Next(start + 30s + 5min), 1500ms);
}

}  // namespace
}  // namespace platform::win32
