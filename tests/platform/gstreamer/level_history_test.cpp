#include "platform/gstreamer/level_history.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gstreamer_test {
namespace {

using platform::gstreamer::LevelHistory;
using platform::gstreamer::LinearFromDecibels;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kMillisecond = 1'000'000;
constexpr std::int64_t kInterval = 20 * kMillisecond;

TEST(LevelHistoryTest, KnowsNothingBeforeTheFirstMeasurement) {
  EXPECT_THAT(LevelHistory().At(0), IsEmpty());
}

TEST(LevelHistoryTest, WhatIsMeasuredInABurstIsHeardOneAfterTheOther) {
  LevelHistory history;
  for (const float peak : {0.1F, 0.2F, 0.3F}) history.Add(0, kInterval, {peak});
  EXPECT_THAT(history.At(10 * kMillisecond), ElementsAre(0.1F));
  EXPECT_THAT(history.At(30 * kMillisecond), ElementsAre(0.2F));
  EXPECT_THAT(history.At(59 * kMillisecond), ElementsAre(0.3F));
}

TEST(LevelHistoryTest, WhatIsMeasuredAfterAHoleIsHeardAtOnce) {
  LevelHistory history;
  history.Add(0, kInterval, {0.1F});
  history.Add(1000 * kMillisecond, kInterval, {0.2F});
  EXPECT_THAT(history.At(500 * kMillisecond), IsEmpty());
  EXPECT_THAT(history.At(1000 * kMillisecond), ElementsAre(0.2F));
}

TEST(LevelHistoryTest, AFastDeviceClockNeverPushesTheLevelsAheadOfItsBuffer) {
  LevelHistory history;
  // Five intervals are taken in the time of four.
  std::int64_t now = 0;
  for (int at = 0; at < 1000; ++at) history.Add(now = at * kInterval * 4 / 5, kInterval, {0.5F});
  history.Add(now, kInterval, {0.9F});
  EXPECT_THAT(history.At(now + 230 * kMillisecond), ElementsAre(0.9F));
}

TEST(LevelHistoryTest, SilenceFollowsTheLastMeasurement) {
  LevelHistory history;
  history.Add(0, kInterval, {0.1F, 0.2F});
  EXPECT_THAT(history.At(15 * kMillisecond), ElementsAre(0.1F, 0.2F));
  EXPECT_THAT(history.At(100 * kMillisecond), IsEmpty());
}

TEST(LevelHistoryTest, DecibelsBecomeLinear) {
  EXPECT_FLOAT_EQ(LinearFromDecibels(0), 1.0F);
  EXPECT_NEAR(LinearFromDecibels(-6.0206), 0.5F, 0.0001);
  EXPECT_FLOAT_EQ(LinearFromDecibels(3), 1.0F);
  EXPECT_FLOAT_EQ(LinearFromDecibels(-350), 0.0F);
}

}  // namespace
}  // namespace gstreamer_test
