#include "platform/qt/timer_binding.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

TEST(TimerBindingTest, TicksWhileEnabledOnly) {
  QtMessageLoop loop;
  controls::Timer timer;
  const TimerBinding binding(timer, loop);
  const Counter ticks(timer.Ticked);
  timer.SetInterval(5);
  EXPECT_FALSE(QTest::qWaitFor([&] { return ticks.Count() > 0; }, 100));
  timer.SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticks.Count() >= 3; }));
  timer.SetEnabled(false);
  const int before = ticks.Count();
  EXPECT_FALSE(QTest::qWaitFor([&] { return ticks.Count() > before; }, 100));
}

TEST(TimerBindingTest, IntervalOfZeroNeverTicks) {
  QtMessageLoop loop;
  controls::Timer timer;
  const TimerBinding binding(timer, loop);
  const Counter ticks(timer.Ticked);
  timer.SetEnabled(true);
  EXPECT_FALSE(QTest::qWaitFor([&] { return ticks.Count() > 0; }, 100));
}

TEST(TimerBindingTest, TwentyMillisecondTimerKeepsItsPace) {
  QtMessageLoop loop;
  controls::Timer timer;
  timer.SetInterval(20);
  timer.SetEnabled(true);
  const TimerBinding binding(timer, loop);
  const Counter ticks(timer.Ticked);
  QElapsedTimer clock;
  clock.start();
  ASSERT_TRUE(WaitFor([&] { return ticks.Count() >= 25; }));
  EXPECT_GE(clock.elapsed(), 25 * 20 - 20);
}

TEST(TimerBindingTest, TickInsideItsOwnHandlerIsDroppedAndTheTimerContinues) {
  QtMessageLoop loop;
  controls::Timer timer;
  timer.SetInterval(5);
  const TimerBinding binding(timer, loop);
  int depth = 0;
  int deepest = 0;
  int ticks = 0;
  const auto subscription = timer.Ticked.Subscribe([&] {
    deepest = std::max(deepest, ++depth);
    ++ticks;
    for (int round = 0; round < 3; ++round) {
      loop.Sleep(6);
      loop.ProcessPendingMessages();
    }
    --depth;
  });
  timer.SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticks >= 3; }));
  EXPECT_EQ(deepest, 1);
}

TEST(TimerBindingTest, OtherTimersTickInsideAHandlerThatPumps) {
  QtMessageLoop loop;
  controls::Timer slow;
  controls::Timer quick;
  const TimerBinding slow_binding(slow, loop);
  const TimerBinding quick_binding(quick, loop);
  const Counter ticks(quick.Ticked);
  bool ticked_inside = false;
  const auto subscription = slow.Ticked.Subscribe([&] {
    const int before = ticks.Count();
    ticked_inside = WaitFor([&] { return ticks.Count() > before; });
  });
  slow.SetInterval(10);
  quick.SetInterval(5);
  slow.SetEnabled(true);
  quick.SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticked_inside; }));
}

}  // namespace
}  // namespace platform::qt
