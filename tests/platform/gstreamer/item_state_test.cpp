// What the two threads of an item share, when their calls cross.
#include "platform/gstreamer/item_state.h"

#include <gtest/gtest.h>

namespace gstreamer_test {
namespace {

using platform::gstreamer::HeardTime;
using platform::gstreamer::ItemState;
using platform::gstreamer::Wanted;

ItemState::Work TakeWork(ItemState& state) { return state.WaitForWork(std::nullopt); }

TEST(ItemStateTest, AnEndEndsTheItemUntilTheNextRequest) {
  ItemState state;
  state.Request(Wanted::kRunning);
  state.SetEnded(TakeWork(state).request);
  EXPECT_TRUE(state.Ended());
  state.Request(Wanted::kRunning);
  EXPECT_FALSE(state.Ended());
}

TEST(ItemStateTest, AStartInTheMomentInWhichTheItemEndsCounts) {
  ItemState state;
  state.Request(Wanted::kRunning);
  const auto before = TakeWork(state).request;
  state.Request(Wanted::kRunning);
  state.SetEnded(before);
  EXPECT_FALSE(state.Ended()) << "it is about to play again";
}

TEST(ItemStateTest, AStopIsSeenThoughAStartFollowsAtOnce) {
  ItemState state;
  state.Request(Wanted::kRunning);
  EXPECT_FALSE(TakeWork(state).stop_first);
  state.Request(Wanted::kStopped);
  state.Request(Wanted::kRunning);
  const ItemState::Work work = TakeWork(state);
  EXPECT_TRUE(work.stop_first);
  EXPECT_EQ(work.wanted, Wanted::kRunning);
  state.CarriedOut(work.request);
  state.Request(Wanted::kPaused);
  EXPECT_FALSE(TakeWork(state).stop_first) << "once is enough";
}

TEST(ItemStateTest, AfterAShutdownNothingElseIsWanted) {
  ItemState state;
  state.Request(Wanted::kShutDown);
  state.Request(Wanted::kRunning);
  EXPECT_EQ(state.Requested(), Wanted::kShutDown);
  EXPECT_EQ(TakeWork(state).wanted, Wanted::kShutDown);
}

TEST(HeardTimeTest, TheTimeAddsUpOverPipelinesAndNeverRunsBackwards) {
  HeardTime played;
  EXPECT_EQ(played.Reach(played.Read(), 0), 0);
  EXPECT_EQ(played.Reach(played.Read(), 50), 50);
  EXPECT_EQ(played.Reach(played.Read(), 40), 50);
  played.Add(60);
  EXPECT_EQ(played.Reach(played.Read(), 0), 60);
  EXPECT_EQ(played.Reach(played.Read(), 5), 65);
}

TEST(HeardTimeTest, WhatWasAskedBeforeARestartDoesNotCountAfterIt) {
  HeardTime played;
  played.Add(100);
  const HeardTime::Base stale = played.Read();
  played.Restart();
  EXPECT_EQ(played.Reach(stale, 30), 0) << "the item has ended while its pipeline was asked";
  EXPECT_EQ(played.Reach(played.Read(), 0), 0);
  EXPECT_EQ(played.Reach(played.Read(), 7), 7);
}

}  // namespace
}  // namespace gstreamer_test
