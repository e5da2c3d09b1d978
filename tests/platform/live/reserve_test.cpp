#include "platform/live/reserve.h"

#include <gtest/gtest.h>

#include <vector>

namespace live_test {
namespace {

using namespace std::chrono_literals;
using platform::live::Reserve;
using Time = Reserve::Clock::time_point;
using Milliseconds = std::chrono::milliseconds;

const Time kOpened = Time(1h);

/// The lengths of the holes in a connection that delivers `percent` of what is played, with `buffered` at its
/// start.
std::vector<Milliseconds> HolesOf(int percent, Milliseconds buffered, Milliseconds length) {
  constexpr Milliseconds kStep = 10ms;
  Reserve reserve;
  reserve.Resume(kOpened);
  std::vector<Milliseconds> holes;
  bool sounds = true;
  Reserve::Sound sound = buffered;
  for (Time now = kOpened; now < kOpened + length; now += kStep) {
    sound += kStep * percent / 100;
    if (sounds) {
      sound -= kStep;
      if (sound > 0ms) continue;
      reserve.RunDry(now);
      holes.push_back(0ms);
      sounds = false;
    } else {
      holes.back() += kStep;
      sounds = reserve.Percent(sound, now) == 100;
      if (sounds) reserve.Resume(now);
    }
  }
  return holes;
}

TEST(ReserveTest, HalfASpeedForEightySecondsMakesThreeHoles) { EXPECT_EQ(HolesOf(50, 4s, 80s).size(), 3U); }

TEST(ReserveTest, NothingIsWaitedForBeyondTheBoundThoughAConnectionHardlyDelivers) {
  for (const Milliseconds hole : HolesOf(10, 1s, 600s)) EXPECT_LE(hole, Reserve::kLargest * 10 + 100ms);
}

TEST(ReserveTest, TheFirstSoundWaitsForLittle) {
  const Reserve reserve;
  EXPECT_EQ(reserve.Most(), Reserve::kFirst);
  EXPECT_EQ(reserve.Percent(Reserve::kFirst - 1ms, kOpened), 99);
  EXPECT_EQ(reserve.Percent(Reserve::kFirst, kOpened), 100);
}

TEST(ReserveTest, TheReserveGrowsWithEveryHoleUpToABound) {
  Reserve reserve;
  reserve.Resume(kOpened);
  std::vector<Reserve::Sound> most;
  for (int hole = 0; hole < 5; ++hole) {
    reserve.RunDry(kOpened + 1s);
    most.push_back(reserve.Most());
  }
  EXPECT_EQ(most, (std::vector<Reserve::Sound>{3s, 7500ms, 8s, 8s, 8s}));
}

TEST(ReserveTest, AMomentsHoleAsksForTheReserveAndALongerOneForItsOwnLength) {
  Reserve reserve;
  reserve.Resume(kOpened);
  reserve.RunDry(kOpened);
  EXPECT_EQ(reserve.Percent(0ms, kOpened + 100ms), 0);
  EXPECT_EQ(reserve.Percent(750ms, kOpened + 100ms), 50);
  EXPECT_EQ(reserve.Percent(1499ms, kOpened + 100ms), 99);
  EXPECT_EQ(reserve.Percent(1500ms, kOpened + 100ms), 100);
  EXPECT_EQ(reserve.Percent(1999ms, kOpened + 2s), 99);
  EXPECT_EQ(reserve.Percent(2s, kOpened + 2s), 100);
  EXPECT_EQ(reserve.Percent(2999ms, kOpened + 60s), 99);
  EXPECT_EQ(reserve.Percent(3s, kOpened + 60s), 100) << "though it was waited longer";
}

TEST(ReserveTest, SteadySoundBeginsAnewWithSmallReserves) {
  Reserve reserve;
  reserve.Resume(kOpened);
  reserve.RunDry(kOpened + 10s);
  reserve.Resume(kOpened + 20s);
  reserve.RunDry(kOpened + 20s + Reserve::kSteady - 1ms);
  EXPECT_EQ(reserve.Most(), 7500ms);
  reserve.Resume(kOpened + 1h);
  reserve.RunDry(kOpened + 1h + Reserve::kSteady);
  EXPECT_EQ(reserve.Most(), 3s);
}

}  // namespace
}  // namespace live_test
