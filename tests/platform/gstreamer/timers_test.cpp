#include "platform/gstreamer/timers.h"

#include <gtest/gtest.h>

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::gstreamer::Earliest;
using platform::gstreamer::IsDue;
using platform::gstreamer::Timer;

const std::chrono::steady_clock::time_point kTea{4h};

TEST(TimersTest, TheEarliestIsTheFirstOfThoseThatAreSet) {
  EXPECT_EQ(Earliest({}), std::nullopt);
  EXPECT_EQ(Earliest({std::nullopt, std::nullopt}), std::nullopt);
  EXPECT_EQ(Earliest({std::nullopt, kTea + 2s, kTea + 1s, std::nullopt, kTea + 3s}), kTea + 1s);
}

TEST(TimersTest, ATimerIsDueFromItsTimeOnIfItIsSet) {
  EXPECT_FALSE(IsDue(std::nullopt, kTea));
  EXPECT_FALSE(IsDue(kTea, kTea - 1ns));
  EXPECT_TRUE(IsDue(kTea, kTea));
  EXPECT_TRUE(IsDue(kTea, kTea + 1h));
}

}  // namespace
}  // namespace gstreamer_test
