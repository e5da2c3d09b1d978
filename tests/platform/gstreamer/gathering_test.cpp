#include "platform/gstreamer/gathering.h"

#include <gtest/gtest.h>

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::gstreamer::Gathering;

const Gathering::Clock::time_point kAsked = Gathering::Clock::time_point(1h);

TEST(GatheringTest, APieceThatWasWaitedForIsFollowedByAPause) {
  Gathering gathering;
  gathering.Asked(kAsked);
  EXPECT_EQ(gathering.Arrived(kAsked + 24ms, 2s), Gathering::kPause);
}

TEST(GatheringTest, WhatHadArrivedBeforeIsReadWithoutAPause) {
  Gathering gathering;
  gathering.Asked(kAsked);
  EXPECT_EQ(gathering.Arrived(kAsked + 1ms, 2s), 0s) << "there may be more behind it";
}

TEST(GatheringTest, NothingIsPutOffWhileLittleIsBuffered) {
  Gathering gathering;
  gathering.Asked(kAsked);
  EXPECT_EQ(gathering.Arrived(kAsked + 24ms, Gathering::kEnough - 1ms), 0s);
  EXPECT_EQ(gathering.Arrived(kAsked + 24ms, Gathering::kEnough), Gathering::kPause);
}

TEST(GatheringTest, TheFirstPieceIsFollowedByNoPause) {
  const Gathering gathering;
  EXPECT_EQ(gathering.Arrived(kAsked, 2s), 0s);
}

/// The sound that is buffered stays where it is, whatever the size of the pieces: all that comes is read.
TEST(GatheringTest, AStationIsReadAsFastAsItSends) {
  constexpr auto kEvery = 24ms;
  Gathering gathering;
  auto now = kAsked;
  auto next_sent = kAsked + kEvery;
  int waiting = 0;
  int reads = 0;
  for (int sent = 0; now < kAsked + 1min;) {
    gathering.Asked(now);
    if (waiting == 0) now = next_sent;
    for (; next_sent <= now; next_sent += kEvery) ++sent, ++waiting;
    waiting = 0;  // one read takes all of it
    ++reads;
    now += gathering.Arrived(now, 3s);
    for (; next_sent <= now; next_sent += kEvery) ++sent, ++waiting;
    EXPECT_LE(waiting, Gathering::kPause / kEvery + 1);
  }
  EXPECT_LT(reads, 60s / kEvery / 4);
}

}  // namespace
}  // namespace gstreamer_test
