#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/loudness.h"
#include "tests/support/media_files.h"
#include "tests/support/pulse_server.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using test_support::Loudness;
using test_support::PulseServer;
using test_support::TempFolder;
using test_support::WaitUntil;

class PlayingTest : public testing::Test {
 protected:
  platform::gstreamer::GstMediaOptions Options() {
    platform::gstreamer::GstMediaOptions options;
    options.sound_server = pulse.Address();
    return options;
  }
  PulseServer pulse;
  TempFolder folder;
};

TEST_F(PlayingTest, AnOpenedFileIsSilentUntilItIsStarted) {
  const std::string file = MakeTone(folder, "t.mp3", "libmp3lame");
  Loudness loudness(pulse);
  SessionDriver driver(Options());
  ASSERT_EQ(driver.Open(file), platform::kSOk);
  EXPECT_EQ(driver.State(), 2);
  EXPECT_EQ(driver.Seconds(), 0.0);
  EXPECT_TRUE(loudness.WaitForSilence(200ms, 1s));
  ASSERT_EQ(driver.Start(), platform::kSOk);
  EXPECT_EQ(driver.State(), 1);
  EXPECT_TRUE(loudness.WaitForSound(300ms, 3s));
  EXPECT_TRUE(WaitUntil([&] { return std::abs(loudness.Frequency(200ms) - 440) < 10; }, 2s));
  EXPECT_NEAR(driver.DurationSeconds().value_or(0), 5.0, 0.1);
}

}  // namespace
}  // namespace gstreamer_test
