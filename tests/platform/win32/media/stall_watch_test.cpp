#include "platform/win32/media/stall_watch.h"

#include <gtest/gtest.h>

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

struct StallWatchTest : testing::Test {
  using Source = StallWatch::Source;
  bool After(std::chrono::milliseconds time, std::optional<std::int64_t> played,
             Source source = Source::kSends) {
    now += time;
    return watch.Look(played, source, now);
  }
  StallWatch watch{15s};
  StallWatch::Clock::time_point now{};
};

TEST_F(StallWatchTest, ClockThatStandsStillIsAStall) {
  EXPECT_FALSE(After(0s, 7));
  for (int second = 1; second <= 15; ++second) EXPECT_FALSE(After(1s, 7)) << second;
  EXPECT_TRUE(After(1ms, 7));
}

TEST_F(StallWatchTest, ClockThatMovesIsNone) {
  for (int second = 0; second < 40; ++second) EXPECT_FALSE(After(1s, second / 14)) << second;
}

TEST_F(StallWatchTest, ClockThatSaysNothingIsNone) {
  for (int second = 0; second < 40; ++second) EXPECT_FALSE(After(1s, std::nullopt)) << second;
}

TEST_F(StallWatchTest, SourceThatBuffersTooLongIsAStallWhateverTheClockSays) {
  for (int second = 0; second <= 15; ++second) EXPECT_FALSE(After(1s, second, Source::kBuffers)) << second;
  EXPECT_TRUE(After(1s, 16, Source::kBuffers));
}

TEST_F(StallWatchTest, SourceThatHasDataInTimeIsNone) {
  for (int second = 0; second < 40; ++second) {
    EXPECT_FALSE(After(1s, second, second % 10 == 0 ? Source::kSends : Source::kBuffers)) << second;
  }
}

TEST_F(StallWatchTest, TimeThatNobodyLooksCountsForLittle) {
  EXPECT_FALSE(After(0s, 7));
  EXPECT_FALSE(After(8h, 7));
  for (int second = 0; second < 12; ++second) EXPECT_FALSE(After(1s, 7)) << second;
  EXPECT_TRUE(After(1s, 7));
}

TEST_F(StallWatchTest, BeginsAnewWithWhatNeedNotBeHeard) {
  for (int second = 0; second <= 15; ++second) EXPECT_FALSE(After(1s, 7)) << second;
  watch.Reset();
  for (int second = 0; second <= 15; ++second) EXPECT_FALSE(After(1s, 7)) << second;
  EXPECT_TRUE(After(1s, 7));
}

}  // namespace
}  // namespace platform::win32
