#include "controls/timer.h"

#include <gtest/gtest.h>

namespace controls {
namespace {

class TimerTest : public testing::Test {
 protected:
  TimerTest() {
    ticked_ = timer_.Ticked.Subscribe([this] { ++ticks_; });
  }

  Timer timer_;
  int ticks_ = 0;
  Subscription ticked_;
};

TEST_F(TimerTest, IsDisabledAtFirstAndThenDropsItsTicks) {
  EXPECT_FALSE(timer_.Enabled());
  timer_.Fire();
  EXPECT_EQ(ticks_, 0);
}

TEST_F(TimerTest, TicksWhileItIsEnabled) {
  timer_.SetEnabled(true);
  timer_.Fire();
  timer_.Fire();
  timer_.SetEnabled(false);
  timer_.Fire();
  EXPECT_EQ(ticks_, 2);
}

TEST_F(TimerTest, DoesNotTickWhilePaintingUnlessItIsAskedTo) {
  EXPECT_FALSE(timer_.TicksWhilePainting());
  timer_.SetTicksWhilePainting(true);
  EXPECT_TRUE(timer_.TicksWhilePainting());
}

TEST_F(TimerTest, ATickInsideItsOwnHandlerIsDropped) {
  timer_.SetEnabled(true);
  const auto nested = timer_.Ticked.Subscribe([this] { timer_.Fire(); });
  timer_.Fire();
  EXPECT_EQ(ticks_, 1);
  timer_.Fire();
  EXPECT_EQ(ticks_, 2) << "the next tick after the handler counts again";
}

TEST_F(TimerTest, SwitchingAndIntervalAreAnnouncedWhenTheyChange) {
  int changes = 0;
  const auto changed = timer_.Changed.Subscribe([&] { ++changes; });
  timer_.SetEnabled(false);
  timer_.SetInterval(0);
  EXPECT_EQ(changes, 0);
  timer_.SetEnabled(true);
  timer_.SetInterval(500);
  timer_.SetInterval(500);
  EXPECT_EQ(timer_.Interval(), 500);
  EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace controls
