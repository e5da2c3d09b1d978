#include "platform/gstreamer/framework.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <string>
#include <utility>

#include "platform/gstreamer/results.h"
#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/media_files.h"
#include "tests/support/temp_folder.h"

namespace gstreamer_test {
namespace {

using platform::gstreamer::Framework;
using platform::gstreamer::GstMediaOptions;

TEST(FrameworkTest, LoadingAheadReturnsAtOnceAndWhoNeedsItWaits) {
  std::promise<bool> result;
  Framework framework([waiting = result.get_future().share()] { return waiting.get(); });
  framework.LoadAhead();
  auto needed = std::async(std::launch::async, [&framework] { return framework.Ready(); });
  EXPECT_EQ(needed.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
  result.set_value(true);
  EXPECT_TRUE(needed.get());
}

TEST(FrameworkTest, IsStartedOnceHoweverOftenItIsNeeded) {
  std::atomic<int> starts{0};
  {
    Framework framework([&starts] { return ++starts > 0; });
    framework.LoadAhead();
    framework.LoadAhead();
    EXPECT_TRUE(framework.Ready());
    EXPECT_TRUE(framework.Ready());
  }
  EXPECT_EQ(starts, 1);
}

TEST(FrameworkTest, WhatCannotBeStartedIsNotReady) {
  Framework framework([] { return false; });
  EXPECT_FALSE(framework.Ready());
}

TEST(FrameworkTest, StartingTheAdapterDoesNotWaitForIt) {
  std::atomic<int> starts{0};
  GstMediaOptions options = Unheard();
  options.start_framework = [&starts] { return ++starts > 0; };
  SessionDriver driver(std::move(options));
  platform::InterfaceHandle topology{};
  EXPECT_EQ(driver.Media().MFCreateTopology(topology), platform::kSOk);
  EXPECT_EQ(starts, 0);
}

TEST(FrameworkTest, NothingCanBeOpenedWithoutIt) {
  const test_support::TempFolder folder;
  const std::string file = test_support::MakeTone(folder, "t.wav", "pcm_s16le");
  GstMediaOptions options = Unheard();
  options.start_framework = [] { return false; };
  SessionDriver driver(std::move(options));
  EXPECT_EQ(driver.Open(file), platform::kEFail);
  EXPECT_EQ(driver.Media().Status().state, platform::PlaybackState::kFailed);
}

}  // namespace
}  // namespace gstreamer_test
