#include "app/text/wait_seconds.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"

namespace app {
namespace {

class WaitSecondsTest : public testing::Test {
 protected:
  WaitSecondsTest() {
    messages_.on_sleep = [this](std::uint32_t milliseconds) {
      clock_.seconds_since_midnight += milliseconds / 1000.0;
      if (clock_.seconds_since_midnight >= 86400.0) clock_.seconds_since_midnight -= 86400.0;
    };
  }

  test_support::FakeClock clock_;
  test_support::FakeMessageLoop messages_;
};

TEST_F(WaitSecondsTest, SleepsAMillisecondAndPumpsUntilTheTimeHasPassed) {
  clock_.seconds_since_midnight = 1000.0;
  WaitSeconds(0.5F, clock_, messages_);
  EXPECT_GE(clock_.seconds_since_midnight, 1000.5);
  EXPECT_LT(clock_.seconds_since_midnight, 1000.502);
  EXPECT_EQ(static_cast<std::uint64_t>(messages_.pumps), messages_.slept);
}

TEST_F(WaitSecondsTest, ReturnsAtOnceWhenThereIsNothingToWaitFor) {
  WaitSeconds(0.0F, clock_, messages_);
  WaitSeconds(-1.0F, clock_, messages_);
  EXPECT_EQ(messages_.pumps, 0);
  EXPECT_EQ(messages_.slept, 0U);
}

TEST_F(WaitSecondsTest, AWaitPastMidnightTakesNoLonger) {
  clock_.seconds_since_midnight = 86399.75;
  WaitSeconds(0.5F, clock_, messages_);
  EXPECT_GE(clock_.seconds_since_midnight, 0.25);
  EXPECT_LT(clock_.seconds_since_midnight, 0.26);
  EXPECT_NEAR(static_cast<double>(messages_.slept), 500.0, 2.0);
}

TEST_F(WaitSecondsTest, AWaitThatEndsJustBeforeMidnightIsNotProlongedByIt) {
  clock_.seconds_since_midnight = 86399.0;
  // Processing messages takes long: the clock is past midnight when the wait looks at it again.
  messages_.on_pump = [this] { clock_.seconds_since_midnight = 3.0; };
  WaitSeconds(0.5F, clock_, messages_);
  EXPECT_EQ(messages_.pumps, 1);
}

TEST_F(WaitSecondsTest, APumpThatTakesLongerThanTheWaitEndsIt) {
  messages_.on_pump = [this] { clock_.seconds_since_midnight += 60.0; };
  WaitSeconds(0.5F, clock_, messages_);
  EXPECT_EQ(messages_.pumps, 1);
}

}  // namespace
}  // namespace app
