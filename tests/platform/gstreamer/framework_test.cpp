#include "platform/gstreamer/framework.h"

#include <gst/gst.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
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
  EXPECT_FALSE(framework.WasStarted());
  result.set_value(true);
  EXPECT_TRUE(needed.get());
  EXPECT_TRUE(framework.WasStarted());
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

/// GStreamer's start, held up until `release` gets its value.
std::function<bool()> HeldUpBy(std::promise<void>& release) {
  return [released = release.get_future().share()] {
    released.wait();
    return gst_init_check(nullptr, nullptr, nullptr) != FALSE;
  };
}

TEST(FrameworkTest, ItsStartDoesNotCountAsTimeOfAnOpening) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds kLimit{500};
  const test_support::TempFolder folder;
  const std::string file = test_support::MakeTone(folder, "t.wav", "pcm_s16le");
  std::promise<void> release;
  GstMediaOptions options = Unheard();
  options.open_deadline = kLimit;
  options.start_framework = HeldUpBy(release);
  SessionDriver driver(std::move(options));
  const auto begun = Clock::now();
  bool held_up = true;
  driver.loop.on_paint = [&] {
    if (!held_up || Clock::now() - begun < kLimit * 3 / 2) return;
    held_up = false;
    release.set_value();
  };
  EXPECT_EQ(driver.Open(file), platform::kSOk);
  EXPECT_FALSE(held_up);
}

TEST(FrameworkTest, InputEndsAnOpeningThatWaitsForItsStart) {
  const test_support::TempFolder folder;
  const std::string file = test_support::MakeTone(folder, "t.wav", "pcm_s16le");
  std::promise<void> release;
  GstMediaOptions options = Unheard();
  options.start_framework = HeldUpBy(release);
  SessionDriver driver(std::move(options));
  driver.loop.on_paint = [&driver] { driver.loop.input_ends_wait = driver.loop.paints == 5; };
  EXPECT_EQ(driver.Open(file), platform::kErrorCancelled);
  release.set_value();
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
