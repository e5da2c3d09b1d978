#include "platform/win32/media/sound_gate.h"

#include <gtest/gtest.h>

#include <vector>

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;
using Gate = StreamBuffer::Gate;
using Link = SoundGate::Link;
using Time = SoundGate::Clock::time_point;

constexpr int kBitRate = 128000;
const Time kStart = Time(1h);

struct SoundGateTest : testing::Test {
  SoundGateTest() {
    level.format = live::SoundFormat::kMp3;
    level.read_waits = true;
    level.appended_at = kStart;
    gate.Run(kStart);
  }
  Gate Look(Time now, Link link = Link::kUp) { return gate.Look(level, link, kBitRate, now); }

  StreamBuffer::Level level;
  SoundGate gate;
};

TEST_F(SoundGateTest, AReadThatWaitsIsNoSilenceWhileSoundIsLeft) {
  level.given = 4s;
  EXPECT_EQ(Look(kStart + 3700ms), Gate::kOpen);
  EXPECT_EQ(Look(kStart + 3900ms), Gate::kShut);
  EXPECT_TRUE(gate.IsShut());
}

TEST_F(SoundGateTest, WithoutAReadThatWaitsNothingIsMissing) {
  level.read_waits = false;
  EXPECT_EQ(Look(kStart + 1h, Link::kDown), Gate::kOpen);
}

TEST_F(SoundGateTest, ThePauseLastsUntilTheReserveIsThere) {
  ASSERT_EQ(Look(kStart), Gate::kShut);
  level.ahead = 750ms;
  EXPECT_EQ(Look(kStart + 1s), Gate::kShut);
  EXPECT_EQ(gate.Percent(), 50);
  level.ahead = 1500ms;
  EXPECT_EQ(Look(kStart + 1100ms), Gate::kOpen);
  EXPECT_FALSE(gate.IsShut());
}

TEST_F(SoundGateTest, ThePauseItselfIsNotPlayed) {
  level.given = 1s;
  ASSERT_EQ(Look(kStart + 900ms), Gate::kShut);
  level.ahead = 8s;
  ASSERT_EQ(Look(kStart + 10s), Gate::kOpen);
  level.given = 2s;
  EXPECT_EQ(Look(kStart + 10800ms), Gate::kOpen);
  EXPECT_EQ(Look(kStart + 11s), Gate::kShut);
}

TEST_F(SoundGateTest, NeitherIsTheTimeForWhichTheUserPauses) {
  level.given = 2s;
  gate.Rest(kStart + 1s);
  EXPECT_EQ(Look(kStart + 1h), Gate::kOpen);
  gate.Run(kStart + 1h);
  EXPECT_EQ(Look(kStart + 1h + 700ms), Gate::kOpen);
  EXPECT_EQ(Look(kStart + 1h + 900ms), Gate::kShut);
}

TEST_F(SoundGateTest, WhileTheUserPausesNothingIsDecided) {
  level.format = live::SoundFormat::kUnknown;
  gate.Rest(kStart);
  EXPECT_EQ(Look(kStart + 1h, Link::kDown), Gate::kOpen);
  gate.Run(kStart + 1h);
  EXPECT_EQ(Look(kStart + 1h, Link::kDown), Gate::kShut);
}

TEST_F(SoundGateTest, ALossInItselfNeedsNoReserve) {
  level.format = live::SoundFormat::kUnknown;
  ASSERT_EQ(Look(kStart, Link::kDown), Gate::kShut);
  level.bytes_ahead = 600 * kBitRate / 8000;
  EXPECT_EQ(Look(kStart + 1h), Gate::kOpen);
}

TEST_F(SoundGateTest, StartingInThePauseDoesNotPlayIt) {
  ASSERT_EQ(Look(kStart), Gate::kShut);
  gate.Rest(kStart + 1s);
  gate.Run(kStart + 2s);
  level.given = 1s;
  level.ahead = 8s;
  ASSERT_EQ(Look(kStart + 3s), Gate::kOpen);
  EXPECT_EQ(Look(kStart + 3700ms), Gate::kOpen);
}

TEST_F(SoundGateTest, FurtherPausesOfAConnectionWaitForMore) {
  ASSERT_EQ(Look(kStart), Gate::kShut);
  level.ahead = 1500ms;
  ASSERT_EQ(Look(kStart + 1s), Gate::kOpen);
  ASSERT_EQ(Look(kStart + 2s), Gate::kShut);
  EXPECT_EQ(gate.Percent(), 0);
  EXPECT_EQ(Look(kStart + 3s), Gate::kShut);
  level.ahead = 3750ms;
  EXPECT_EQ(Look(kStart + 4s), Gate::kOpen);
}

TEST_F(SoundGateTest, AfterSteadySoundTheyStartSmallAgain) {
  ASSERT_EQ(Look(kStart), Gate::kShut);
  level.ahead = 1500ms;
  ASSERT_EQ(Look(kStart + 1s), Gate::kOpen);
  level.given = 4min;
  ASSERT_EQ(Look(kStart + 4min), Gate::kOpen);
  ASSERT_EQ(Look(kStart + 5min), Gate::kShut);
  EXPECT_EQ(Look(kStart + 5min + 1s), Gate::kShut);
  level.ahead = 3750ms;
  ASSERT_EQ(Look(kStart + 5min + 2s), Gate::kOpen);
  level.given = 20min;
  ASSERT_EQ(Look(kStart + 30min), Gate::kShut);
  level.ahead = 1500ms;
  EXPECT_EQ(Look(kStart + 30min + 1s), Gate::kOpen);
}

TEST_F(SoundGateTest, ANewConnectionIsHeardSoon) {
  ASSERT_EQ(Look(kStart, Link::kUp), Gate::kShut);
  gate.Connected();
  level.ahead = 500ms;
  EXPECT_EQ(Look(kStart + 20s), Gate::kShut);
  level.ahead = 600ms;
  EXPECT_EQ(Look(kStart + 20s), Gate::kOpen);
}

TEST_F(SoundGateTest, SoundThatCannotBeMeasuredPausesWhenNothingComes) {
  level.format = live::SoundFormat::kUnknown;
  EXPECT_EQ(Look(kStart + 900ms), Gate::kOpen);
  EXPECT_EQ(Look(kStart + 1100ms), Gate::kShut);
  level.bytes_ahead = 1500 * kBitRate / 8000 - 200;
  EXPECT_EQ(Look(kStart + 2s), Gate::kShut);
  level.bytes_ahead += 200;
  level.appended_at = kStart + 2s;
  EXPECT_EQ(Look(kStart + 2s), Gate::kOpen);
  EXPECT_EQ(Look(kStart + 2100ms), Gate::kOpen);
  EXPECT_EQ(Look(kStart + 2100ms, Link::kDown), Gate::kShut);
}

}  // namespace
}  // namespace platform::win32
