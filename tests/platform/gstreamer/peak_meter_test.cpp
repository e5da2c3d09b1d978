#include "platform/gstreamer/peak_meter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <utility>
#include <vector>

namespace gstreamer_test {
namespace {

using platform::gstreamer::PeakMeter;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;

/// 100 frames a second, so an interval is two frames.
constexpr std::size_t kSlow = 100;
constexpr std::int64_t kMeteredInterval = 20'000'000;

class PeakMeterTest : public testing::Test {
 protected:
  template <typename Sample>
  void Measure(const std::vector<Sample>& samples) {
    meter_.Measure(std::as_bytes(std::span(samples)), report_);
  }
  void Finish() { meter_.Finish(report_); }

  PeakMeter meter_;
  PeakMeter::Report report_ = [this](std::int64_t duration, std::vector<float> peaks) {
    durations_.push_back(duration);
    peaks_.push_back(std::move(peaks));
  };
  std::vector<std::int64_t> durations_;
  std::vector<std::vector<float>> peaks_;
};

TEST_F(PeakMeterTest, EachIntervalHasThePeakOfEachChannel) {
  meter_.SetFormat({PeakMeter::Sample::kInt16, 2, kSlow});
  Measure<std::int16_t>({16384, 0, 8192, -4096, 0, 0, 100, 32767});
  EXPECT_THAT(durations_, ElementsAre(kMeteredInterval, kMeteredInterval));
  EXPECT_THAT(peaks_, ElementsAre(ElementsAre(0.5F, 0.125F),
                                  ElementsAre(FloatNear(0.003F, 0.001F), FloatNear(1.0F, 0.0001F))));
}

TEST_F(PeakMeterTest, AnIntervalContinuesInTheNextPiece) {
  meter_.SetFormat({PeakMeter::Sample::kInt16, 1, kSlow});
  Measure<std::int16_t>({16384});
  EXPECT_THAT(peaks_, IsEmpty());
  Measure<std::int16_t>({8192, 0, 0, 4096});
  EXPECT_THAT(peaks_, ElementsAre(ElementsAre(0.5F), ElementsAre(0.0F)));
  Measure<std::int16_t>({0});
  EXPECT_THAT(peaks_.back(), ElementsAre(0.125F));
}

TEST_F(PeakMeterTest, TheSmallestNumberIsFullScale) {
  meter_.SetFormat({PeakMeter::Sample::kInt16, 1, kSlow});
  Measure<std::int16_t>({0, std::numeric_limits<std::int16_t>::min()});
  meter_.SetFormat({PeakMeter::Sample::kInt32, 1, kSlow});
  Measure<std::int32_t>({0, std::numeric_limits<std::int32_t>::min()});
  EXPECT_THAT(peaks_, ElementsAre(ElementsAre(1.0F), ElementsAre(1.0F)));
}

TEST_F(PeakMeterTest, LongNumbersAndFractionsCountAlike) {
  meter_.SetFormat({PeakMeter::Sample::kInt32, 1, kSlow});
  Measure<std::int32_t>({0, 1 << 30});
  meter_.SetFormat({PeakMeter::Sample::kFloat32, 1, kSlow});
  Measure<float>({0.0F, -0.5F});
  EXPECT_THAT(peaks_, ElementsAre(ElementsAre(0.5F), ElementsAre(0.5F)));
}

TEST_F(PeakMeterTest, NoFractionIsMoreThanFullScaleOrNoNumber) {
  meter_.SetFormat({PeakMeter::Sample::kFloat32, 1, kSlow});
  Measure<float>({0.0F, 3.0F, NAN, 0.25F, -INFINITY, 0.0F});
  EXPECT_THAT(peaks_, ElementsAre(ElementsAre(1.0F), ElementsAre(0.25F), ElementsAre(1.0F)));
}

TEST_F(PeakMeterTest, AnotherFormatBeginsAnew) {
  meter_.SetFormat({PeakMeter::Sample::kInt16, 1, kSlow});
  Measure<std::int16_t>({32767});
  meter_.SetFormat({PeakMeter::Sample::kInt16, 2, kSlow});
  Measure<std::int16_t>({0, 0, 16384, 0});
  EXPECT_THAT(peaks_, ElementsAre(ElementsAre(0.5F, 0.0F)));
}

TEST_F(PeakMeterTest, WhatIsLeftAfterTheLastFrameIsIgnored) {
  meter_.SetFormat({PeakMeter::Sample::kInt16, 2, kSlow});
  Measure<std::int16_t>({0, 0, 16384, 0, 32767});
  EXPECT_THAT(peaks_, ElementsAre(ElementsAre(0.5F, 0.0F)));
  Measure<std::int16_t>({0, 0, 0, 0});
  EXPECT_THAT(peaks_.back(), ElementsAre(0.0F, 0.0F));
}

TEST_F(PeakMeterTest, ARateThatIntervalsDoNotDivideHasShorterOnes) {
  meter_.SetFormat({PeakMeter::Sample::kInt16, 1, 11025});
  Measure(std::vector<std::int16_t>(11025));
  EXPECT_EQ(peaks_.size(), 50U);
  EXPECT_EQ(durations_.at(0), 220 * std::int64_t{1'000'000'000} / 11025);
}

TEST_F(PeakMeterTest, TheLastIntervalEndsWithTheSound) {
  meter_.SetFormat({PeakMeter::Sample::kInt16, 1, kSlow});
  Measure<std::int16_t>({0, 0, 16384});
  Finish();
  EXPECT_THAT(durations_, ElementsAre(kMeteredInterval, kMeteredInterval / 2));
  EXPECT_THAT(peaks_, ElementsAre(ElementsAre(0.0F), ElementsAre(0.5F)));
  Finish();
  EXPECT_EQ(peaks_.size(), 2U) << "it has ended";
  Measure<std::int16_t>({0, 0});
  EXPECT_THAT(peaks_.back(), ElementsAre(0.0F));
}

TEST_F(PeakMeterTest, EachFrameIsAnIntervalWhenThereAreFewInASecond) {
  meter_.SetFormat({PeakMeter::Sample::kInt16, 1, 40});
  Measure<std::int16_t>({16384, 0});
  EXPECT_THAT(durations_, ElementsAre(25'000'000, 25'000'000));
}

TEST_F(PeakMeterTest, NothingIsMeasuredWithoutAFormat) {
  Measure<std::int16_t>({1, 2, 3});
  for (const PeakMeter::Format& format : {PeakMeter::Format{PeakMeter::Sample::kInt16, 0, kSlow},
                                          PeakMeter::Format{PeakMeter::Sample::kInt16, 1, 0}}) {
    meter_.SetFormat(format);
    Measure<std::int16_t>({1, 2, 3});
  }
  EXPECT_THAT(peaks_, IsEmpty());
}

}  // namespace
}  // namespace gstreamer_test
