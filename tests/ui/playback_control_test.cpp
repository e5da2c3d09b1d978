#include "ui/playback_control.h"

#include <functional>
#include <vector>

#include "tests/ui/playback_fixture.h"

namespace ui {
namespace {

using platform::kErrorFileNotFound;
using platform::kMfEUnsupportedByteStreamType;
using Box = test_support::FakeDialogs::Box;

TEST_F(PlaybackControlTest, StartWithoutAStationOnlySaysSo) {
  Form().Command1.Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Bitte zuerst eine Radiostation markieren!", u"", 64}}));
  EXPECT_FALSE(AnyTimerRuns());
  EXPECT_EQ(CountCalls("CreateObjectFromURL"), 0U);
}

TEST_F(PlaybackControlTest, StartOpensTheCurrentAddressAndPlays) {
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

TEST_F(PlaybackControlTest, ReportedFailureShowsThePlatformsTextAndLeavesPanelAndTimers) {
  for (const std::int32_t code : {kErrorFileNotFound, kMfEUnsupportedByteStreamType}) {
    dialogs.boxes.clear();
    Form().Timer2.SetEnabled(false);
    system_messages.messages[code] = u"Das ging nicht.\r\n";
    media.open_result = code;
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
  Select(u"A");
  Form().Command1.Click();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(state.last_create_result, 0);
  EXPECT_TRUE(Form().Frame3.Visible());
  EXPECT_FALSE(Form().tmPlay.Enabled());
}

TEST_F(PlaybackControlTest, AfterAReportedFailureAnUnreportedOneShowsTheEarlierText) {
  system_messages.messages[kErrorFileNotFound] = u"weg";
  Select(u"A");
  media.open_result = kErrorFileNotFound;
  Form().Command1.Click();
  media.open_result = platform::kEFail;
  Form().Command1.Click();
  EXPECT_EQ(BoxTexts(), (std::vector<Text>{u"weg", u"weg"}));
}

TEST_F(PlaybackControlTest, CancelledOpeningShowsNoMessageEvenAfterAReportedFailure) {
  Select(u"A");
  media.open_result = kErrorFileNotFound;
  Form().Command1.Click();
  dialogs.boxes.clear();
  media.open_result = platform::kErrorCancelled;
  Form().Command1.Click();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(state.last_create_result, kErrorFileNotFound) << "the result is that of the last report";
  EXPECT_FALSE(Form().Frame3.Visible()) << "nothing was opened that the panel could show";
  EXPECT_EQ(CountCalls(".Start("), 0U);
}

TEST_F(PlaybackControlTest, AfterACancelledOpeningNothingPlaysAndTheWindowSaysSo) {
  StartAndPlay();
  playback_monitor.status.state = platform::PlaybackState::kPlaying;
  Form().Timer1.Fire();
  ASSERT_TRUE(Form().tmPlay.Enabled() && Form().Timer1.Enabled() && Form().Timer2.Enabled());
  ASSERT_FALSE(Form().Label1.Caption().empty());
  media.open_result = platform::kErrorCancelled;
  media.play_state = player::kPlayStateInvalid;
  Form().Command1.Click();
  EXPECT_FALSE(AnyTimerRuns());
  EXPECT_EQ(Form().Label1.Caption(), u"");
  EXPECT_FALSE(Form().ProgressBar1[0].Visible() || Form().ProgressBar1[1].Visible());
  EXPECT_EQ(Form().StatusLine.Caption(), u"Gestoppt.");
}

TEST_F(PlaybackControlTest, NamesThatCannotBeReadEndTheRoutineBeforePanelTimerAndSound) {
  media.faults["IMFMetadata::GetAllPropertyNames"] = platform::kEFail;
  Select(u"A");
  Form().Command1.Click();
  EXPECT_FALSE(Form().Frame3.Visible());
  EXPECT_FALSE(Form().Timer1.Enabled());
  EXPECT_EQ(CountCalls(".Start("), 0U);
  EXPECT_TRUE(Form().Timer2.Enabled());
}

TEST_F(PlaybackControlTest, StopEndsARunningPlayerAndClearsTheDisplay) {
  media.channel_peaks = {0.5F, 0.25F};
  StartAndPlay();
  Form().Timer1.Fire();
  ASSERT_NE(Form().ProgressBar1[0].Value(), 0);
  ASSERT_NE(Form().ProgressBar1[1].Value(), 0);
  Form().Command6.Click();
  EXPECT_EQ(CountCalls(".Stop()"), 1U);
  EXPECT_FALSE(AnyTimerRuns());
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
      cFunkhaus->StopRecStream();
    };
    cFunkhaus->StartRecStream(u"audio/mpeg", u"");
    EXPECT_FALSE(given_up) << play_state;
    EXPECT_EQ(record_files.OpenFiles(), 0U);
  }
}

TEST_F(PlaybackControlTest, StationWithoutAnAddressIsNamedInTheStatusLineBesideTheUsualMessage) {
  AddStation(u"C", u"");
  Select(u"C");
  Form().Command1.Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Bitte zuerst eine Radiostation markieren!", u"", 64}}));
  EXPECT_EQ(Form().StatusLine.Caption(), u"Zu „C“ gibt es keine Adresse.");
  EXPECT_FALSE(Form().Timer2.Enabled());
}

TEST_F(PlaybackControlTest, StartWithoutAStationLeavesTheStatusLine) {
  Form().Command1.Click();
  EXPECT_EQ(Form().StatusLine.Caption(), u"");
}

TEST_F(PlaybackControlTest, StaleDetailsAreResolvedAfterAStopAndBeforeTheStart) {
  StartAndPlay();
  state.details_are_stale = true;
  on_details = [this] {
    EXPECT_EQ(CountCalls(".Stop()"), 1U);
    EXPECT_FALSE(state.details_are_stale) << "what becomes stale during the waits stays so";
    state.current_stream_address = u"http://neu/";
  };
  Form().Command1.Click();
  EXPECT_EQ(details_shown, 1);
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://neu/\""), 1U);
}

TEST_F(PlaybackControlTest, StaleDetailsOfARowInAViewAreResolvedThoughTheFullListHasNoSelection) {
  const controls::RowId row = AddStationTo(form.ExplorerListFilter, u"A", u"http://a/");
  ShowFilteredList();
  form.ExplorerListFilter.Select(row);
  state.current_stream_address = u"http://a/";
  state.details_are_stale = true;
  Form().Command1.Click();
  EXPECT_EQ(details_shown, 1);
}

TEST_F(PlaybackControlTest, StartWhileTheWindowClosesDoesNothing) {
  Select(u"A");
  life.End();
  Form().Command1.Click();
  EXPECT_EQ(CountCalls("CreateObjectFromURL"), 0U);
  EXPECT_FALSE(AnyTimerRuns());
}

TEST_F(PlaybackControlTest, WithoutAPlayerNothingIsPlayedAndNothingShown) {
  Select(u"A");
  cPlayer.reset();
  media.TakeCalls();
  Form().Command1.Click();
  for (controls::Timer* timer : {&Form().tmPlay, &Form().Timer1}) {
    timer->SetEnabled(true);
    timer->Fire();
  }
  Form().hscSavVolume.SetValue(7);
  Form().ckSavMute.Click();
  Form().Command6.Click();
  EXPECT_EQ(media.TakeCalls(), std::vector<std::string>{});
  EXPECT_EQ(Form().Label1.Caption(), u"");
  EXPECT_FALSE(Form().ProgressBar1[0].Visible());
}

TEST_F(PlaybackControlTest, StopEndsARecordingOfTheStreamClient) {
  cFunkhaus->StreamUrl(u"http://a/");
  int pumps = 0;
  message_loop.on_pump = [&] {
    if (++pumps == 1) Form().Command6.Click();
    if (pumps > 100) cFunkhaus->StopRecStream();
  };
  cFunkhaus->StartRecStream(u"audio/mpeg");
  EXPECT_EQ(pumps, 1);
}

TEST_F(PlaybackControlTest, KnownDetailsAndNoSelectedRowResolveNothing) {
  StartAndPlay();
  Form().Command1.Click();
  Form().SymbolListview.Select(controls::RowId::kNone);
  state.details_are_stale = true;
  Form().Command1.Click();
  EXPECT_EQ(details_shown, 0);
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://a/\""), 3U);
}

TEST_F(PlaybackControlTest, StartEndsWhenAnotherOneOrAStopOrTheWindowsEndComesWhileDetailsAreResolved) {
  const std::vector<std::function<void()>> endings = {[this] { Form().Command6.Click(); },
                                                      [this] { CloseWindow(); }};
  for (const auto& ending : endings) {
    Select(u"A");
    state.details_are_stale = true;
    on_details = ending;
    Form().Command1.Click();
    EXPECT_EQ(CountCalls("CreateObjectFromURL"), 0U);
    EXPECT_FALSE(AnyTimerRuns());
  }
}

TEST_F(PlaybackControlTest, StopInTheMiddleOfAStartEndsIt) {
  Select(u"A");
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    Form().Command6.Click();
  };
  Form().Command1.Click();
  EXPECT_EQ(CountCalls(".Start("), 0U);
  EXPECT_EQ(CountCalls(".Stop()"), 1U) << "what was opened is not downloaded any longer";
  EXPECT_FALSE(Form().Timer2.Enabled());
}

TEST_F(PlaybackControlTest, StartInTheMiddleOfAStartThatWasStoppedKeepsPlaying) {
  Select(u"A");
  bool stopped = false;
  message_loop.on_sleep = [&](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    if (std::exchange(stopped, true)) return;
    Form().Command6.Click();
    Form().Command1.Click();
  };
  Form().Command1.Click();
  EXPECT_EQ(CountCalls(".Start("), 1U);
  const auto last = [this](const char* call) {
    std::size_t place = 0;
    for (std::size_t index = 0; index < media.Calls().size(); ++index) {
      if (media.Calls()[index].find(call) != std::string::npos) place = index;
    }
    return place;
  };
  EXPECT_GT(last(".Start("), last(".Stop()"));
}

TEST_F(PlaybackControlTest, ReadyEventStartsOnlyAStoppedOrUnknownPlayer) {
  StartAndPlay();
  for (const auto& [play_state, starts] : std::vector<std::pair<std::int32_t, std::size_t>>{
           {player::kPlayStateRunning, 0}, {player::kPlayStatePaused, 0}, {player::kPlayStateStopped, 1}}) {
    media.on_call = [this, now = play_state](const std::string& call) {
      if (call.find(".GetState(") != std::string::npos) media.play_state = now;
    };
    const std::size_t before = CountCalls(".Start(");
    Form().Command1.Click();
    EXPECT_EQ(CountCalls(".Start(") - before, starts) << play_state;
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

TEST_F(PlaybackControlTest, PlayStationWithoutStartOpensItsOwnAddressAndShowsItSilently) {
  Select(u"A");
  playback.PlayStation(false, u"http://anders/");
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://anders/\""), 1U);
  EXPECT_EQ(state.current_stream_address, u"http://anders/");
  EXPECT_TRUE(Form().Frame3.Visible());
  EXPECT_EQ(Form().Label3.Caption(), u"Title: Lied\r\nGenre: Rock\r\n");
  EXPECT_EQ(CountCalls(".Start("), 0U);
  EXPECT_FALSE(AnyTimerRuns());
}

TEST_F(PlaybackControlTest, PeakTimerRunsAlthoughTheSessionRefusesToPlay) {
  media.faults["IMFMediaSession::Start"] = platform::kEFail;
  Select(u"A");
  Form().Command1.Click();
  EXPECT_EQ(CountCalls(".Start("), 1U);
  EXPECT_TRUE(Form().Timer1.Enabled());
  EXPECT_FALSE(Form().tmPlay.Enabled());
  EXPECT_EQ(Form().Label1.Caption(), u"");
}

TEST_F(PlaybackControlTest, MixerAndDirectoryAreOpenedWithoutAFolderAndShownNormally) {
  Form().Command7.Click();
  Form().Command2.Click();
  ASSERT_EQ(shell.launches.size(), 2U);
  EXPECT_EQ(shell.launches[0].file, u"sndvol.exe");
  EXPECT_TRUE(shell.launches[1].file.starts_with(u"https://"));
  for (const auto& launch : shell.launches) {
    EXPECT_EQ(launch.verb, u"open");
    EXPECT_EQ(launch.parameters, u"");
    EXPECT_EQ(launch.folder, u"");
    EXPECT_EQ(launch.show, 1);
  }
  EXPECT_EQ(Form().StatusLine.Caption(), u"");
}

TEST_F(PlaybackControlTest, MixerAndDirectoryThatCannotBeOpenedAreNamedInTheStatusLine) {
  shell.starts = false;
  Form().Command7.Click();
  EXPECT_EQ(Form().StatusLine.Caption(), u"Es ließ sich kein Lautstärkemixer öffnen.");
  Form().Command2.Click();
  EXPECT_EQ(Form().StatusLine.Caption(),
            u"Das Senderverzeichnis ließ sich nicht öffnen: " + shell.launches[1].file);
  EXPECT_TRUE(dialogs.boxes.empty());
}

}  // namespace
}  // namespace ui
