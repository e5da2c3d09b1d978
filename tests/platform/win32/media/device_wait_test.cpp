#include "platform/win32/media/device_wait.h"

#include <gtest/gtest.h>

#include <chrono>

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

const DeviceWait::Clock::time_point kStart{1h};

TEST(DeviceWait, LooksASecondAfterTheLossAndAfterEachLook) {
  DeviceWait wait;
  wait.Lost(kStart);
  EXPECT_FALSE(wait.IsDue(kStart + 999ms));
  EXPECT_TRUE(wait.IsDue(kStart + 1s));
  wait.FoundNone(kStart + 5s);
  EXPECT_FALSE(wait.IsDue(kStart + 5999ms));
  EXPECT_TRUE(wait.IsDue(kStart + 6s));
  wait.Found(kStart + 6s);
  EXPECT_FALSE(wait.IsDue(kStart + 6999ms));
  EXPECT_TRUE(wait.IsDue(kStart + 7s));
}

TEST(DeviceWait, TriesWhatItFinds) {
  DeviceWait wait;
  wait.Lost(kStart);
  EXPECT_TRUE(wait.Found(kStart + 1s));
}

TEST(DeviceWait, TriesADeviceRarelyThatFailsSoonAndIsThereAllTheWhile) {
  DeviceWait wait;
  wait.Started(kStart);
  wait.Lost(kStart + 9999ms);
  EXPECT_FALSE(wait.Found(kStart + 39998ms));
  EXPECT_TRUE(wait.Found(kStart + 39999ms));
}

TEST(DeviceWait, LooksRarelyAtADeviceThatIsNotToBeTriedYet) {
  DeviceWait wait;
  wait.Started(kStart);
  wait.Lost(kStart + 5s);
  EXPECT_TRUE(wait.IsDue(kStart + 6s));
  EXPECT_FALSE(wait.Found(kStart + 6s));
  EXPECT_FALSE(wait.IsDue(kStart + 15999ms));
  EXPECT_TRUE(wait.IsDue(kStart + 16s));
  EXPECT_FALSE(wait.Found(kStart + 26s));
  EXPECT_FALSE(wait.IsDue(kStart + 34999ms));
  EXPECT_TRUE(wait.IsDue(kStart + 35s));
  EXPECT_TRUE(wait.Found(kStart + 35s));
}

TEST(DeviceWait, TriesADeviceThatWasAwayAsSoonAsItIsBack) {
  DeviceWait wait;
  wait.Started(kStart);
  wait.Lost(kStart + 1s);
  wait.FoundNone(kStart + 2s);
  EXPECT_TRUE(wait.Found(kStart + 3s));
}

TEST(DeviceWait, ADeviceThatPlayedForTenSecondsWorks) {
  DeviceWait wait;
  wait.Started(kStart);
  wait.Lost(kStart + 10s);
  EXPECT_TRUE(wait.Found(kStart + 11s));
}

}  // namespace
}  // namespace platform::win32
