#include "ui/playback_control.h"

#include <limits>

#include "tests/ui/playback_fixture.h"

namespace app {
namespace {

using controls::CheckValue;
using platform::kErrorFileNotFound;
using platform::kMfEUnsupportedByteStreamType;
using Box = test_support::FakeDialogs::Box;

TEST_F(PlaybackControlTest, StartWithoutAStationOnlyTellsSo) {
  Start();
  Form().Command1.Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Bitte zuerst eine Radiostation markieren!", u"", 64}}));
  EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled());
  EXPECT_EQ(CountCalls("CreateObjectFromURL"), 0U);
}

TEST_F(PlaybackControlTest, StartOpensTheCurrentAddressAndPlays) {
  Start();
  Select(u"A");
  Form().Command1.Click();
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://a/\""), 1U);
  EXPECT_EQ(CountCalls(".Start("), 1U);
  EXPECT_TRUE(Form().tmPlay.Enabled() && Form().Timer1.Enabled() && Form().Timer2.Enabled());
  EXPECT_TRUE(Form().Frame3.Visible());
  EXPECT_EQ(Form().Label3.Caption(), u"Title: Lied\r\nGenre: Rock\r\n");
  EXPECT_EQ(Form().Label1.Caption(), u"Pos: 00:00:00 Dauer: 00:00:00");
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(PlaybackControlTest, DoubleClickStartsExactlyAsTheStartButtonDoes) {
  Start();
  Select(u"B");
  Form().SymbolListview.DoubleClick(Form().SymbolListview.SelectedRow());
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://b/\""), 1U);
  EXPECT_EQ(CountCalls(".Start("), 1U);
}

TEST_F(PlaybackControlTest, ReportedFailureShowsThePlatformsTextAndLeavesPanelAndTimers) {
  for (const std::int32_t code : {kErrorFileNotFound, kMfEUnsupportedByteStreamType}) {
    dialogs.boxes.clear();
    system_messages.messages[code] = u"Das ging nicht.\r\n";
    media.open_result = code;
    Start();
    Select(u"A");
    Form().Command1.Click();
    EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Das ging nicht.\r\n", u"", 16}}));
    EXPECT_FALSE(Form().Frame3.Visible());
    EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled());
    EXPECT_TRUE(Form().Timer2.Enabled()) << "the title timer was started before";
    media.open_result = platform::kSOk;
  }
}

TEST_F(PlaybackControlTest, UnreportedFailureKeepsTheLastResultAndShowsThePanel) {
  media.open_result = platform::kEFail;
  Start();
  Select(u"A");
  Form().Command1.Click();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(window->State().last_create_result, 0);
  EXPECT_TRUE(Form().Frame3.Visible());
  EXPECT_FALSE(Form().tmPlay.Enabled());
}

TEST_F(PlaybackControlTest, AfterAReportedFailureAnUnreportedOneShowsTheEarlierText) {
  system_messages.messages[kErrorFileNotFound] = u"weg";
  Start();
  Select(u"A");
  media.open_result = kErrorFileNotFound;
  Form().Command1.Click();
  media.open_result = platform::kEFail;
  Form().Command1.Click();
  EXPECT_EQ(BoxTexts(), (std::vector<Text>{u"weg", u"weg"}));
}

TEST_F(PlaybackControlTest, CancelledOpeningShowsNoMessageEvenAfterAReportedFailure) {
  Start();
  Select(u"A");
  media.open_result = kErrorFileNotFound;
  Form().Command1.Click();
  dialogs.boxes.clear();
  media.open_result = platform::kErrorCancelled;
  Form().Command1.Click();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(window->State().last_create_result, kErrorFileNotFound)
      << "the result is that of the last report";
  EXPECT_FALSE(Form().Frame3.Visible()) << "nothing was opened that the panel could tell of";
  EXPECT_EQ(CountCalls(".Start("), 0U);
}

TEST_F(PlaybackControlTest, AfterACancelledOpeningNothingPlaysAndTheWindowSaysSo) {
  StartAndPlay();
  Form().Timer1.Fire();
  ASSERT_TRUE(Form().tmPlay.Enabled() && Form().Timer1.Enabled() && Form().Timer2.Enabled());
  ASSERT_FALSE(Form().Label1.Caption().empty());
  media.open_result = platform::kErrorCancelled;
  media.play_state = player::kPlayStateInvalid;
  Form().Command1.Click();
  EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled());
  EXPECT_EQ(Form().Label1.Caption(), u"");
  EXPECT_FALSE(Form().ProgressBar1[0].Visible() || Form().ProgressBar1[1].Visible());
}

TEST_F(PlaybackControlTest, SliderAndMuteBoxTakeTheSessionsValuesAndWriteThemBack) {
  media.volume = 0.25F;
  media.mute = 1;
  Start();
  Select(u"A");
  Form().Command1.Click();
  EXPECT_EQ(Form().hscSavVolume.Value(), 25);
  EXPECT_TRUE(Form().ckSavMute.Checked());
  EXPECT_EQ(CountCalls("SetMasterVolume(0.25"), 1U);
  EXPECT_EQ(CountCalls("SetMute(1)"), 1U);
}

TEST_F(PlaybackControlTest, WithoutServicesSliderAndBoxStayAndPlayingGoesOn) {
  media.has_volume = false;
  media.has_metadata = false;
  Start();
  Form().hscSavVolume.SetValue(40);
  Select(u"A");
  Form().Command1.Click();
  EXPECT_EQ(Form().hscSavVolume.Value(), 40);
  EXPECT_EQ(Form().Label3.Caption(), u"");
  EXPECT_TRUE(Form().tmPlay.Enabled());
}

TEST_F(PlaybackControlTest, NamesThatCannotBeReadEndTheRoutineBeforePanelTimerAndSound) {
  media.faults["IMFMetadata::GetAllPropertyNames"] = platform::kEFail;
  Start();
  Select(u"A");
  Form().Command1.Click();
  EXPECT_FALSE(Form().Frame3.Visible());
  EXPECT_FALSE(Form().Timer1.Enabled());
  EXPECT_EQ(CountCalls(".Start("), 0U);
  EXPECT_TRUE(Form().Timer2.Enabled());
}

TEST_F(PlaybackControlTest, PictureStandsInTheLowerRightOfThePanel) {
  files.files[u"C:\\Programme\\Funkhaus\\RadioJPG\\A.jpg"] = "jpg";
  Start();
  Select(u"A");
  Form().Image1.SetVisible(false);
  Form().Command1.Click();
  EXPECT_TRUE(Form().Image1.Visible());
  EXPECT_NE(Form().Image1.Picture(), 0U);
  const controls::Place picture = Form().Image1.GetPlace();
  const controls::Place panel = Form().Frame3.GetPlace();
  EXPECT_EQ(picture.left, panel.width - picture.width);
  EXPECT_EQ(picture.top, panel.height - picture.height - 30);
}

TEST_F(PlaybackControlTest, StationWithoutAPictureLeavesTheImageAsItWas) {
  Start();
  Select(u"A");
  Form().Image1.SetVisible(true);
  Form().Image1.SetPicture(99);
  Form().Command1.Click();
  EXPECT_TRUE(Form().Image1.Visible());
  EXPECT_EQ(Form().Image1.Picture(), 99U);
}

TEST_F(PlaybackControlTest, StopEndsARunningPlayerAndClearsTheDisplay) {
  StartAndPlay();
  Form().Timer1.Fire();
  Form().Command6.Click();
  EXPECT_EQ(CountCalls(".Stop()"), 1U);
  EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled());
  EXPECT_FALSE(Form().Frame3.Visible());
  EXPECT_EQ(Form().Label3.Caption(), u"");
  EXPECT_EQ(Form().Label1.Caption(), u"");
  for (const auto& bar : Form().ProgressBar1) {
    EXPECT_FALSE(bar.Visible());
    EXPECT_EQ(bar.Value(), 0);
  }
}

TEST_F(PlaybackControlTest, StopWhilePausedOnlyStopsTheTitleTimer) {
  StartAndPlay();
  media.play_state = player::kPlayStatePaused;
  Form().Command6.Click();
  EXPECT_EQ(CountCalls(".Stop()"), 0U);
  EXPECT_FALSE(Form().Timer2.Enabled());
  EXPECT_TRUE(Form().tmPlay.Enabled() && Form().Timer1.Enabled());
  EXPECT_TRUE(Form().Frame3.Visible());
  EXPECT_NE(Form().Label1.Caption(), u"");
}

TEST_F(PlaybackControlTest, StopOfAPlayerThatDoesNotRunLeavesTheDisplay) {
  StartAndPlay();
  for (const std::int32_t play_state : {player::kPlayStateStopped, player::kPlayStateInvalid}) {
    media.play_state = play_state;
    Form().Timer2.SetEnabled(true);
    Form().Command6.Click();
    EXPECT_EQ(CountCalls(".Stop()"), 0U);
    EXPECT_FALSE(Form().Timer2.Enabled());
    EXPECT_TRUE(Form().Frame3.Visible() && Form().tmPlay.Enabled() && Form().Timer1.Enabled());
  }
}

TEST_F(PlaybackControlTest, StopEndsARecordingAlsoWhilePaused) {
  StartAndPlay();
  for (const std::int32_t play_state : {player::kPlayStateRunning, player::kPlayStatePaused}) {
    media.play_state = play_state;
    int pumps = 0;
    bool given_up = false;
    message_loop.on_pump = [&] {
      ++pumps;
      if (pumps == 3) Form().Command6.Click();
      if (pumps < 100) return;
      given_up = true;
      window->StreamClient()->StopRecStream();
    };
    window->StreamClient()->StartRecStream(u"audio/mpeg", u"");
    EXPECT_FALSE(given_up) << play_state;
    EXPECT_EQ(record_files.OpenFiles(), 0U);
  }
}

TEST_F(PlaybackControlTest, AddressThatAPlaylistDoesNotHoldCountsAsNoStation) {
  AddStation(u"C", u"http://c/liste.m3u", u"Rock", u"", u"5");
  requests.requests[u"http://c/liste.m3u"].body = u"[playlist]\r\nNumberOfEntries=1\r\nFile1=http://eins/";
  Start();
  Select(u"C");
  Form().Command1.Click();
  EXPECT_EQ(BoxTexts(), std::vector<Text>{u"Bitte zuerst eine Radiostation markieren!"});
  EXPECT_FALSE(Form().Timer2.Enabled());
}

TEST_F(PlaybackControlTest, StationWithoutAnAddressIsNamedInTheStatusLineBesideTheUsualMessage) {
  AddStation(u"C", u"");
  Start();
  Select(u"C");
  Form().Command1.Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Bitte zuerst eine Radiostation markieren!", u"", 64}}));
  EXPECT_EQ(Form().StatusLine.Caption(), u"Zu „C“ gibt es keine Adresse.");
  EXPECT_FALSE(Form().Timer2.Enabled());
}

TEST_F(PlaybackControlTest, StartWithoutAStationLeavesTheStatusLine) {
  Start();
  Form().Command1.Click();
  EXPECT_EQ(Form().StatusLine.Caption(), u"");
}

TEST_F(PlaybackControlTest, StopInTheMiddleOfAStartEndsIt) {
  Start();
  Select(u"A");
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    Form().Command6.Click();
  };
  Form().Command1.Click();
  EXPECT_EQ(CountCalls(".Start("), 0U);
  EXPECT_FALSE(Form().Timer2.Enabled());
}

TEST_F(PlaybackControlTest, ReadyEventStartsOnlyAStoppedOrUnknownPlayer) {
  StartAndPlay();
  for (const auto& [state, starts] : std::vector<std::pair<std::int32_t, std::size_t>>{
           {player::kPlayStateRunning, 0}, {player::kPlayStatePaused, 0}, {player::kPlayStateStopped, 1}}) {
    media.on_call = [this, state = state](const std::string& call) {
      if (call.find(".GetState(") != std::string::npos) media.play_state = state;
    };
    const std::size_t before = CountCalls(".Start(");
    Form().Command1.Click();
    EXPECT_EQ(CountCalls(".Start(") - before, starts) << state;
  }
}

TEST_F(PlaybackControlTest, PositionTimerShowsTheDurationOnlyWhenThereIsOne) {
  StartAndPlay();
  media.position = 610'000'000;
  Form().tmPlay.Fire();
  EXPECT_EQ(Form().Label1.Caption(), u"Pos: 00:01:01");
  Form().Command6.Click();
  media.duration = 36'000'000'000;
  media.play_state = player::kPlayStateStopped;
  Form().Command1.Click();
  EXPECT_EQ(Form().Label1.Caption(), u"Pos: 00:01:01 Dauer: 01:00:00");
  media.position = 620'000'000;
  Form().tmPlay.Fire();
  EXPECT_EQ(Form().Label1.Caption(), u"Pos: 00:01:02 Dauer: 01:00:00");
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

TEST_F(PlaybackControlTest, MonoShowsOneBar) {
  media.channel_peaks = {0.5F};
  media.peak = 0.75F;
  StartAndPlay();
  Form().Timer1.Fire();
  EXPECT_TRUE(Form().ProgressBar1[0].Visible());
  EXPECT_FALSE(Form().ProgressBar1[1].Visible());
  EXPECT_EQ(Form().ProgressBar1[0].Value(), 7500);
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

TEST_F(PlaybackControlTest, SliderFollowsNothingWithoutServicesOrWhileTheNextStationOpens) {
  media.has_volume = false;
  media.has_metadata = false;
  StartAndPlay();
  Form().hscSavVolume.SetValue(40);
  Form().tmPlay.Fire();
  EXPECT_EQ(Form().hscSavVolume.Value(), 40) << "there is no volume to follow";

  media.has_volume = true;
  media.has_metadata = true;
  Form().Command1.Click();
  media.volume = 0.7F;
  Form().tmPlay.Fire();
  ASSERT_EQ(Form().hscSavVolume.Value(), 70);
  // The player has no item while the half second before its services passes.
  message_loop.on_pump = [this] { Form().tmPlay.Fire(); };
  Form().Command1.Click();
  EXPECT_EQ(Form().hscSavVolume.Value(), 70);
}

TEST_F(PlaybackControlTest, MuteBoxMutes) {
  StartAndPlay();
  Form().ckSavMute.Click();
  Form().ckSavMute.Click();
  EXPECT_EQ(CountCalls("SetMute(1)"), 1U);
  EXPECT_GE(CountCalls("SetMute(0)"), 1U);
}

TEST_F(PlaybackControlTest, MixerAndDirectoryButtonsOpenThem) {
  Start();
  Form().Command7.Click();
  Form().Command2.Click();
  ASSERT_EQ(shell.launches.size(), 2U);
  EXPECT_EQ(shell.launches[0].verb, u"open");
  EXPECT_EQ(shell.launches[0].file, u"sndvol.exe");
  EXPECT_EQ(shell.launches[0].parameters, u"");
  EXPECT_EQ(shell.launches[0].show, 1);
  EXPECT_EQ(shell.launches[1].verb, u"open");
  EXPECT_TRUE(shell.launches[1].file.starts_with(u"https://"));
  EXPECT_EQ(Form().StatusLine.Caption(), u"");
}

TEST_F(PlaybackControlTest, MixerAndDirectoryThatCannotBeOpenedAreNamedInTheStatusLine) {
  shell.starts = false;
  Start();
  Form().Command7.Click();
  EXPECT_EQ(Form().StatusLine.Caption(), u"Es ließ sich kein Lautstärkemixer öffnen.");
  Form().Command2.Click();
  EXPECT_EQ(Form().StatusLine.Caption(),
            u"Das Senderverzeichnis ließ sich nicht öffnen: " + shell.launches[1].file);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(PlaybackControlTest, InformationPanelCanBeClosed) {
  StartAndPlay();
  Form().CmdInfoClose.Click();
  EXPECT_FALSE(Form().Frame3.Visible());
}

TEST_F(PlaybackControlTest, RecordedTitleStandsInTheWindowsCaption) {
  Start();
  EXPECT_EQ(Form().form.Caption(), u"Funkhausplayer");
  window->StreamClient()->RecStreamCurrentPlaying(u"Lied", u"", u"");
  EXPECT_EQ(Form().form.Caption(), u"Playing: Lied");
}

}  // namespace
}  // namespace app
