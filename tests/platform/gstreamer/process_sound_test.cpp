#include "platform/gstreamer/process_sound.h"

#include <gtest/gtest.h>

namespace gstreamer_test {
namespace {

using platform::gstreamer::ProcessSound;

/// A volume as the mixer shows it, in hundredths.
double Linear(double percent) { return percent * percent * percent / 1e6; }

class ProcessSoundTest : public testing::Test {
 protected:
  bool MixerShows(double percent, bool mute = false) {
    return sound.Observe({Linear(percent), mute}, sound.Get().version);
  }
  ProcessSound sound;
};

TEST_F(ProcessSoundTest, EveryStepOfTheMixerIsFollowedAlsoNearSilence) {
  sound.SetVolume(0.0);
  for (const double percent : {1.0, 2.0, 1.0, 12.0, 11.0, 99.0, 100.0, 0.0}) {
    MixerShows(percent);
    EXPECT_DOUBLE_EQ(sound.Current().volume, Linear(percent)) << percent;
  }
}

TEST_F(ProcessSoundTest, WhatTheMixerRoundsStaysAsItWasSet) {
  for (const double percent : {3.0, 50.0, 100.0}) {
    sound.SetVolume(Linear(percent));
    MixerShows(percent - 0.05);
    EXPECT_DOUBLE_EQ(sound.Current().volume, Linear(percent)) << percent;
  }
}

TEST_F(ProcessSoundTest, WhatChangesIsReported) {
  EXPECT_TRUE(MixerShows(50)) << "nothing was known";
  EXPECT_FALSE(MixerShows(50));
  EXPECT_FALSE(MixerShows(49.95));
  EXPECT_TRUE(MixerShows(49));
  EXPECT_TRUE(MixerShows(49, true));
  EXPECT_FALSE(MixerShows(49, true));
  EXPECT_TRUE(MixerShows(49, false));
}

TEST_F(ProcessSoundTest, ANewerSettingIsNotOverwritten) {
  const auto before = sound.Get().version;
  sound.SetVolume(0.5);
  sound.SetMute(true);
  EXPECT_FALSE(sound.Observe({0.125, false}, before));
  EXPECT_DOUBLE_EQ(sound.Current().volume, 0.5);
  EXPECT_TRUE(sound.Current().mute);
}

TEST_F(ProcessSoundTest, FullVolumeRepeatedBeforeAnythingIsKnownLeavesWhatTheServerRemembers) {
  EXPECT_DOUBLE_EQ(sound.Current().volume, 1.0);
  sound.SetVolume(1.0);
  EXPECT_EQ(sound.Get().volume, std::nullopt);
  MixerShows(40);
  EXPECT_DOUBLE_EQ(sound.Current().volume, Linear(40));
}

TEST_F(ProcessSoundTest, AnAmplificationEndsWithASettingBelowFullVolumeOnly) {
  MixerShows(130);
  EXPECT_DOUBLE_EQ(sound.Current().volume, Linear(130));
  sound.SetVolume(1.0);
  EXPECT_DOUBLE_EQ(*sound.Get().volume, Linear(130)) << "the slider only repeats what it shows";
  sound.SetVolume(0.5);
  EXPECT_DOUBLE_EQ(*sound.Get().volume, 0.5);
  sound.SetVolume(1.0);
  EXPECT_DOUBLE_EQ(*sound.Get().volume, 1.0);
}

}  // namespace
}  // namespace gstreamer_test
