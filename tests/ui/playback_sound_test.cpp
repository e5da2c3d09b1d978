// The peak bars, the volume slider and the mute box.
#include <limits>
#include <utility>

#include "tests/ui/playback_fixture.h"

namespace ui {
namespace {

TEST_F(PlaybackControlTest, SliderAndMuteBoxTakeTheSessionsValuesAndWriteThemBack) {
  media.volume = 0.25F;
  media.mute = 1;
  Select(u"A");
  Form().Command1.Click();
  EXPECT_EQ(Form().hscSavVolume.Value(), 25);
  EXPECT_TRUE(Form().ckSavMute.Checked());
  EXPECT_EQ(CountCalls("SetMasterVolume(0.25"), 1U);
  EXPECT_EQ(CountCalls("SetMute(1)"), 1U);
}

TEST_F(PlaybackControlTest, WithoutServicesSliderAndBoxStayAndPlayingContinues) {
  media.has_volume = false;
  media.has_metadata = false;
  Form().hscSavVolume.SetValue(40);
  Select(u"A");
  Form().Command1.Click();
  EXPECT_EQ(Form().hscSavVolume.Value(), 40);
  EXPECT_EQ(Form().Label3.Caption(), u"");
  EXPECT_TRUE(Form().tmPlay.Enabled());
}

TEST_F(PlaybackControlTest, StereoShowsTwoBarsWithTheirOwnPeaksAndPumps) {
  media.channel_peaks = {0.5F, 0.12345F};
  StartAndPlay();
  const int pumps = message_loop.pumps;
  Form().Timer1.Fire();
  EXPECT_TRUE(Form().ProgressBar1[0].Visible() && Form().ProgressBar1[1].Visible());
  EXPECT_EQ(Form().ProgressBar1[0].Value(), 5000);
  EXPECT_EQ(Form().ProgressBar1[1].Value(), 1234);
  EXPECT_EQ(message_loop.pumps, pumps + 1);
}

TEST_F(PlaybackControlTest, MonoShowsOneBarAlsoAfterStereoAndDoesNotPump) {
  media.channel_peaks = {0.5F, 0.25F};
  media.peak = 0.12347F;
  StartAndPlay();
  Form().Timer1.Fire();
  ASSERT_TRUE(Form().ProgressBar1[1].Visible());
  media.channel_peaks = {0.5F};
  const int pumps = message_loop.pumps;
  Form().Timer1.Fire();
  EXPECT_TRUE(Form().ProgressBar1[0].Visible());
  EXPECT_FALSE(Form().ProgressBar1[1].Visible());
  EXPECT_EQ(Form().ProgressBar1[0].Value(), 1235) << "rounded, not cut";
  EXPECT_EQ(message_loop.pumps, pumps);
}

TEST_F(PlaybackControlTest, PeakThatIsRefusedLeavesTheBars) {
  media.channel_peaks = {0.5F, 0.25F};
  StartAndPlay();
  Form().Timer1.Fire();
  media.channel_peaks = {0.9F, 0.9F};
  media.faults["IAudioMeterInformation::GetChannelsPeakValues"] = platform::kEFail;
  Form().Timer1.Fire();
  EXPECT_EQ(Form().ProgressBar1[0].Value(), 5000);
  EXPECT_EQ(Form().ProgressBar1[1].Value(), 2500);

  media.channel_peaks = {0.9F};
  media.peak = 0.9F;
  media.faults["IAudioMeterInformation::GetPeakValue"] = platform::kEFail;
  Form().Timer1.Fire();
  EXPECT_EQ(Form().ProgressBar1[0].Value(), 5000);
}

TEST_F(PlaybackControlTest, MoreThanTwoChannelsAreAskedForByTheirOwnNumberAndTheFirstTwoAreShown) {
  media.channel_peaks = {0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F};
  StartAndPlay();
  Form().Timer1.Fire();
  EXPECT_EQ(CountCalls("GetChannelsPeakValues(6,"), 1U);
  EXPECT_EQ(Form().ProgressBar1[0].Value(), 1000);
  EXPECT_EQ(Form().ProgressBar1[1].Value(), 2000);
}

TEST_F(PlaybackControlTest, WithoutAMeterOneBarStandsAtRest) {
  media.audio_sessions.clear();
  StartAndPlay();
  Form().Timer1.Fire();
  EXPECT_TRUE(Form().ProgressBar1[0].Visible());
  EXPECT_FALSE(Form().ProgressBar1[1].Visible());
  EXPECT_EQ(Form().ProgressBar1[0].Value(), 0);
}

TEST_F(PlaybackControlTest, SliderSetsTheVolumeWhenItChangesAndWhileItIsDragged) {
  StartAndPlay();
  Form().hscSavVolume.SetValue(0);
  Form().hscSavVolume.Scroll(50);
  Form().hscSavVolume.SetValue(100);
  EXPECT_EQ(CountCalls("SetMasterVolume(0.00"), 1U);
  EXPECT_EQ(CountCalls("SetMasterVolume(0.5"), 1U);
  EXPECT_GE(CountCalls("SetMasterVolume(1.0"), 1U);
  EXPECT_EQ(Form().hscSavVolume.Maximum(), 100);
}

TEST_F(PlaybackControlTest, SliderBeyondItsRangeSetsTheNearerEnd) {
  StartAndPlay();
  Form().hscSavVolume.SetRange(-100, 300);
  Form().hscSavVolume.SetValue(300);
  Form().hscSavVolume.Scroll(-100);
  EXPECT_EQ(CountCalls("SetMasterVolume"), 2U);
  EXPECT_EQ(CountCalls("SetMasterVolume(1.0"), 1U);
  EXPECT_EQ(CountCalls("SetMasterVolume(0.0"), 1U);
}

TEST_F(PlaybackControlTest, SliderAndMuteBoxFollowTheMixerAndWriteNothingBack) {
  StartAndPlay();
  media.volume = 0.424F;
  media.mute = 1;
  Form().tmPlay.Fire();
  EXPECT_EQ(Form().hscSavVolume.Value(), 42);
  EXPECT_TRUE(Form().ckSavMute.Checked());
  EXPECT_EQ(CountCalls("SetMasterVolume"), 0U);
  EXPECT_EQ(CountCalls("SetMute"), 0U);
}

TEST_F(PlaybackControlTest, SliderAndMuteBoxStayWithoutAnAnswerOfTheMixer) {
  StartAndPlay();
  media.volume = 0.7F;
  media.mute = 1;
  Form().tmPlay.Fire();
  media.faults["IMFSimpleAudioVolume::GetMasterVolume"] = platform::kEFail;
  media.faults["IMFSimpleAudioVolume::GetMute"] = platform::kEFail;
  Form().tmPlay.Fire();
  EXPECT_EQ(Form().hscSavVolume.Value(), 70);
  EXPECT_TRUE(Form().ckSavMute.Checked());
  media.faults.clear();
  media.volume = std::numeric_limits<float>::quiet_NaN();
  media.mute = 0;
  Form().tmPlay.Fire();
  EXPECT_EQ(Form().hscSavVolume.Value(), 70) << "this is no volume";
  EXPECT_FALSE(Form().ckSavMute.Checked()) << "each is an answer of its own";
}

TEST_F(PlaybackControlTest, SliderFollowsNothingWithoutServices) {
  media.has_volume = false;
  media.has_metadata = false;
  StartAndPlay();
  Form().hscSavVolume.SetValue(40);
  const std::size_t asked = CountCalls("GetMasterVolume");
  Form().tmPlay.Fire();
  EXPECT_EQ(Form().hscSavVolume.Value(), 40);
  EXPECT_EQ(CountCalls("GetMasterVolume"), asked);
}

TEST_F(PlaybackControlTest, SliderFollowsNothingFromTheMomentTheNextStationIsOpened) {
  StartAndPlay();
  Form().hscSavVolume.SetValue(40);
  media.volume = 0.7F;
  // The item before still has its volume when the opening begins.
  bool ticked = false;
  cPlayer->MediaFileIsReady = [&](bool) {
    if (std::exchange(ticked, true)) return;
    Form().tmPlay.Fire();
    EXPECT_EQ(Form().hscSavVolume.Value(), 40);
  };
  message_loop.on_pump = [this] {
    Form().tmPlay.Fire();
    EXPECT_EQ(Form().hscSavVolume.Value(), 40) << "nor while the half second before its services passes";
  };
  Form().Command1.Click();
  EXPECT_TRUE(ticked);
}

TEST_F(PlaybackControlTest, MuteBoxMutes) {
  StartAndPlay();
  Form().ckSavMute.Click();
  Form().ckSavMute.Click();
  EXPECT_EQ(CountCalls("SetMute(1)"), 1U);
  EXPECT_GE(CountCalls("SetMute(0)"), 1U);
}

}  // namespace
}  // namespace ui
