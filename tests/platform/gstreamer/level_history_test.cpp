#include "platform/gstreamer/level_history.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace gstreamer_test {
namespace {

using platform::gstreamer::LevelHistory;
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

/// A device with a buffer of 400 ms that asks for 100 ms at a time, by a clock of its own.
class Device {
 public:
  /// `rate`: seconds of the device's clock in one of the program's.
  Device(LevelHistory& history, double rate) : history_(history), rate_(rate) {}

  /// Lets one millisecond go by and measures what is asked for; each interval has its number for a peak.
  void Step() {
    now_ += kMillisecond;
    heard_ += rate_ * static_cast<double>(kMillisecond);
    if (Held() > 300.0 * kMillisecond) return;
    while (Held() < 400.0 * kMillisecond) history_.Add(now_, kInterval, {static_cast<float>(measured_++)});
  }
  /// How far what is shown lies behind what is heard, in milliseconds.
  [[nodiscard]] double ShownBehind() const {
    const double shown = static_cast<double>(history_.At(now_).at(0)) * kInterval;
    return (heard_ - shown - static_cast<double>(kInterval) / 2) / kMillisecond;
  }

 private:
  [[nodiscard]] double Held() const { return static_cast<double>(measured_ * kInterval) - heard_; }

  LevelHistory& history_;
  double rate_;
  std::int64_t now_ = 0;
  double heard_ = 0.0;
  std::int64_t measured_ = 0;
};

class LevelHistoryOverHours : public testing::TestWithParam<double> {};

TEST_P(LevelHistoryOverHours, TheLevelsFollowTheDevicesClock) {
  constexpr int kTwoHours = 2 * 3600 * 1000;
  LevelHistory history;
  Device device(history, GetParam());
  double furthest = 0.0;
  for (int at = 0; at < kTwoHours; ++at) {
    device.Step();
    if (at % 100 == 50) furthest = std::max(furthest, std::abs(device.ShownBehind()));
  }
  EXPECT_LT(furthest, 45.0);
}

// Good clocks differ by some 50 millionths: 360 ms after two hours.
INSTANTIATE_TEST_SUITE_P(Rates, LevelHistoryOverHours, testing::Values(1.0, 0.99995, 1.00005, 0.999, 1.001));

TEST(LevelHistoryTest, AnEmptyDeviceMayContainMoreFromThenOn) {
  LevelHistory history;
  // Fills by 100 ms at most, for longer than filling takes.
  std::int64_t now = 0;
  for (int at = 0; at < 5; ++at) history.Add(0, kInterval, {0.1F});
  for (; now < 10'000 * kMillisecond; now += kInterval) history.Add(now, kInterval, {0.1F});
  for (int at = 0; at < 20; ++at) history.Add(now, kInterval, {0.2F});
  EXPECT_THAT(history.At(now + 130 * kMillisecond), ElementsAre(0.2F)) << "no more than that is held";
  EXPECT_THAT(history.At(now + 200 * kMillisecond), IsEmpty());
  now += 1000 * kMillisecond;
  for (int at = 0; at < 20; ++at) history.Add(now, kInterval, {0.3F});
  EXPECT_THAT(history.At(now + 390 * kMillisecond), ElementsAre(0.3F));
}

TEST(LevelHistoryTest, AnEmptyDeviceMayContainLessFromThenOn) {
  LevelHistory history;
  for (int at = 0; at < 20; ++at) history.Add(0, kInterval, {0.1F});
  std::int64_t now = 1000 * kMillisecond;
  for (int at = 0; at < 5; ++at) history.Add(now, kInterval, {0.2F});
  for (; now < 20'000 * kMillisecond; now += kInterval) history.Add(now, kInterval, {0.2F});
  EXPECT_THAT(history.At(now + 60 * kMillisecond), ElementsAre(0.2F));
  EXPECT_THAT(history.At(now + 200 * kMillisecond), IsEmpty());
}

TEST(LevelHistoryTest, WhatIsMeasuredInOneGoIsNotKeptWithoutEnd) {
  LevelHistory history;
  for (int at = 0; at < 1000; ++at) history.Add(0, kInterval, {0.5F});
  EXPECT_THAT(history.At(3010 * kMillisecond), ElementsAre(0.5F)) << "three seconds ahead at most";
  EXPECT_THAT(history.At(3100 * kMillisecond), IsEmpty());
}

TEST(LevelHistoryTest, SilenceFollowsTheLastMeasurement) {
  LevelHistory history;
  history.Add(0, kInterval, {0.1F, 0.2F});
  EXPECT_THAT(history.At(15 * kMillisecond), ElementsAre(0.1F, 0.2F));
  EXPECT_THAT(history.At(100 * kMillisecond), IsEmpty());
}

}  // namespace
}  // namespace gstreamer_test
