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
  wait.Looked(kStart + 5s);
  EXPECT_FALSE(wait.IsDue(kStart + 5999ms));
  EXPECT_TRUE(wait.IsDue(kStart + 6s));
}

TEST(DeviceWait, LooksRarelyForADeviceThatFailsAtOnce) {
  DeviceWait wait;
  wait.Started(kStart);
  wait.Lost(kStart + 9999ms);
  EXPECT_FALSE(wait.IsDue(kStart + 39998ms));
  EXPECT_TRUE(wait.IsDue(kStart + 39999ms));
}

TEST(DeviceWait, ADeviceThatPlayedForTenSecondsWorks) {
  DeviceWait wait;
  wait.Started(kStart);
  wait.Lost(kStart + 10s);
  EXPECT_TRUE(wait.IsDue(kStart + 11s));
}

}  // namespace
}  // namespace platform::win32
