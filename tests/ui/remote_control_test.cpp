// The desktop's commands on a whole window of doubles: what they press.
#include "ui/remote_control.h"

#include <utility>
#include <vector>

#include "tests/ui/desktop_fixture.h"

namespace app {
namespace {

using platform::MediaCommand;
using platform::MediaPlayback;
using platform::TurnOnWait;

using RemoteControlTest = DesktopTest;

TEST_F(RemoteControlTest, PlayerAppearsWithTheLoadedWindowAndGoesWithIt) {
  Construct();
  EXPECT_EQ(desktop.media_controls.receiver, nullptr);
  window->Load();
  ASSERT_NE(desktop.media_controls.receiver, nullptr);
  ASSERT_EQ(desktop.media_controls.published.size(), 1U);
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
  EXPECT_EQ(Shown().track, platform::MediaTrack());
  EXPECT_TRUE(Shown().can_play);
  EXPECT_TRUE(Shown().can_go_next);
  Form().form.Close();
  EXPECT_EQ(desktop.media_controls.receiver, nullptr);
  window.reset();
  EXPECT_EQ(desktop.media_controls.withdrawn, 1);
}

TEST_F(RemoteControlTest, PlayerGoesWithAWindowThatWasNeverClosed) {
  Start();
  window.reset();
  EXPECT_EQ(desktop.media_controls.receiver, nullptr);
  EXPECT_EQ(desktop.media_controls.withdrawn, 1);
}

TEST_F(RemoteControlTest, CommandsPressNothingBeforeTheirTurn) {
  Start();
  Select(u"a");
  desktop.media_controls.receiver->Receive(MediaCommand::kPlay);
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
  desktop.turns.Run();
  EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying);
}

TEST_F(RemoteControlTest, PlayStartsTheMarkedStationAndStopStopsIt) {
  Start();
  Select(u"b");
  Command(MediaCommand::kPlay);
  Sound();
  EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying);
  EXPECT_EQ(Shown().track.station, u"b");
  EXPECT_EQ(Shown().track.address, u"http://b/s");
  const auto number = Shown().track.number;
  EXPECT_NE(number, 0U);
  Command(MediaCommand::kPlay);
  EXPECT_EQ(Shown().track.number, number) << "what plays is not started again";
  Command(MediaCommand::kStop);
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
  EXPECT_EQ(Shown().track, platform::MediaTrack());
  EXPECT_FALSE(Form().tmPlay.Enabled());
}

TEST_F(RemoteControlTest, PlayWithoutAMarkedStationStartsTheFirstRow) {
  Start();
  Command(MediaCommand::kPlay);
  EXPECT_EQ(Selected(), u"a");
  EXPECT_EQ(Shown().track.station, u"a");
  EXPECT_TRUE(BoxTexts().empty());
}

TEST_F(RemoteControlTest, WithoutStationsNothingCanBePlayed) {
  profile = {};
  Start();
  EXPECT_FALSE(Shown().can_play);
  EXPECT_FALSE(Shown().can_go_next);
  EXPECT_FALSE(Shown().can_go_previous);
  for (const auto command : {MediaCommand::kPlay, MediaCommand::kNext, MediaCommand::kPrevious})
    Command(command);
  EXPECT_TRUE(BoxTexts().empty());
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
}

TEST_F(RemoteControlTest, MarkedStationWithoutAnAddressCannotBePlayed) {
  AddStation(u"d", u"");
  Start();
  Select(u"d");
  EXPECT_FALSE(Shown().can_play);
  Command(MediaCommand::kPlay);
  EXPECT_TRUE(BoxTexts().empty());
  Select(u"a");
  EXPECT_TRUE(Shown().can_play);
}

TEST_F(RemoteControlTest, PlayPauseAndPauseStopWhatPlaysAndOnlyPlayPauseStartsIt) {
  Start();
  Select(u"a");
  Command(MediaCommand::kPause);
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
  Command(MediaCommand::kPlayPause);
  Sound();
  EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying);
  Command(MediaCommand::kPlayPause);
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
  Play(u"a");
  Command(MediaCommand::kPause);
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
}

TEST_F(RemoteControlTest, NextAndPreviousOnlySelectWhileNothingPlays) {
  Start();
  Command(MediaCommand::kNext);
  EXPECT_EQ(Selected(), u"a");
  EXPECT_FALSE(Shown().can_go_previous);
  Command(MediaCommand::kPrevious);
  EXPECT_EQ(Selected(), u"a");
  Command(MediaCommand::kNext);
  Command(MediaCommand::kNext);
  EXPECT_EQ(Selected(), u"c");
  EXPECT_FALSE(Shown().can_go_next);
  EXPECT_TRUE(Shown().can_go_previous);
  Command(MediaCommand::kNext);
  EXPECT_EQ(Selected(), u"c") << "the list has an end";
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
}

TEST_F(RemoteControlTest, PreviousWithoutASelectionIsTheLastRow) {
  Start();
  Command(MediaCommand::kPrevious);
  EXPECT_EQ(Selected(), u"c");
}

TEST_F(RemoteControlTest, NextAndPreviousPlayTheRowBesideTheOneThatPlays) {
  Start();
  Play(u"b");
  Select(u"c");
  EXPECT_TRUE(Shown().can_go_next) << "counted from what plays";
  Command(MediaCommand::kPrevious);
  EXPECT_EQ(Selected(), u"a");
  EXPECT_EQ(Shown().track.station, u"a");
  EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying);
  Sound();
  Command(MediaCommand::kNext);
  EXPECT_EQ(Shown().track.station, u"b");
}

TEST_F(RemoteControlTest, TwoStepsBeforeTheFirstOneHasComeToPlayLeadTwoRowsOn) {
  Start();
  Play(u"a");
  desktop.media_controls.receiver->Receive(MediaCommand::kNext);
  desktop.media_controls.receiver->Receive(MediaCommand::kNext);
  desktop.turns.Run();
  EXPECT_EQ(Selected(), u"c");
  EXPECT_EQ(Shown().track.station, u"c");
}

TEST_F(RemoteControlTest, StartOfAStepComesBeforeItsTitle) {
  Start();
  Play(u"a");
  Text while_fetching;
  message_loop.on_pump = [&] {
    if (!desktop.turns.turns.empty()) desktop.turns.RunNext();
    if (while_fetching.empty()) while_fetching = Shown().track.station;
  };
  Command(MediaCommand::kNext);
  EXPECT_EQ(while_fetching, u"b");
}

TEST_F(RemoteControlTest, AnotherSelectionBeforeTheStartOfAStepIsNotOverruled) {
  Start();
  Play(u"a");
  desktop.media_controls.receiver->Receive(MediaCommand::kNext);
  desktop.turns.RunNext();
  Select(u"c");
  desktop.turns.Run();
  EXPECT_EQ(Selected(), u"c");
  EXPECT_EQ(Shown().track.station, u"a");
}

TEST_F(RemoteControlTest, StepsWalkTheVisibleList) {
  AddStation(u"z", u"http://z/", u"Rock", u"1");
  AddStation(u"y", u"http://y/", u"Rock", u"1");
  Start();
  Play(u"b");
  Form().Check3.Click();
  Command(MediaCommand::kNext);
  EXPECT_EQ(Shown().track.station, u"y");
  Sound();
  Command(MediaCommand::kNext);
  EXPECT_EQ(Shown().track.station, u"z");
  EXPECT_FALSE(Shown().can_go_next);
}

TEST_F(RemoteControlTest, StopAndStepsEndAWaitAndPlayDoesNot) {
  Start();
  Select(u"b");
  const auto on_wait = [this](MediaCommand command) {
    desktop.media_controls.receiver->Receive(command);
    const TurnOnWait wait = desktop.turns.turns.back().on_wait;
    desktop.turns.turns.clear();
    return wait;
  };
  EXPECT_EQ(on_wait(MediaCommand::kStop), TurnOnWait::kEndsWait);
  EXPECT_EQ(on_wait(MediaCommand::kNext), TurnOnWait::kEndsWait);
  EXPECT_EQ(on_wait(MediaCommand::kPrevious), TurnOnWait::kEndsWait);
  EXPECT_EQ(on_wait(MediaCommand::kQuit), TurnOnWait::kEndsWait);
  EXPECT_EQ(on_wait(MediaCommand::kPlay), TurnOnWait::kWaits);
  EXPECT_EQ(on_wait(MediaCommand::kRaise), TurnOnWait::kWaits);
}

TEST_F(RemoteControlTest, PlayPauseDuringAnOpeningStopsItAlthoughTheWaitEndsForIt) {
  Start();
  Select(u"a");
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    message_loop.on_sleep = [this](std::uint32_t more) { clock.seconds_since_midnight += more / 1000.0; };
    desktop.media_controls.receiver->Receive(MediaCommand::kPlayPause);
    // As the wait that is given up for it does: nothing plays any more when the command has its turn.
    Form().Command6.Click();
  };
  Form().Command1.Click();
  ASSERT_EQ(Shown().playback, MediaPlayback::kStopped);
  ASSERT_EQ(desktop.turns.turns.size(), 1U);
  desktop.turns.Run();
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped) << "it was not started again";
}

TEST_F(RemoteControlTest, StepDuringAnOpeningContinuesToPlay) {
  Start();
  Select(u"a");
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    message_loop.on_sleep = [this](std::uint32_t more) { clock.seconds_since_midnight += more / 1000.0; };
    desktop.media_controls.receiver->Receive(MediaCommand::kNext);
    Form().Command6.Click();
  };
  Form().Command1.Click();
  ASSERT_EQ(Shown().playback, MediaPlayback::kStopped);
  desktop.turns.Run();
  EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying);
  EXPECT_EQ(Shown().track.station, u"b");
}

TEST_F(RemoteControlTest, VolumeMovesTheSliderAndFollowsIt) {
  Start();
  desktop.media_controls.receiver->ReceiveVolume(30);
  desktop.media_controls.receiver->ReceiveVolume(40);
  EXPECT_EQ(desktop.turns.turns.size(), 1U) << "one turn for all that came before it";
  desktop.turns.RunBlocked();
  EXPECT_EQ(Form().hscSavVolume.Value(), 40) << "a dialog does not delay it";
  EXPECT_EQ(Shown().volume, 40);
  desktop.media_controls.receiver->ReceiveVolume(1000);
  desktop.turns.Run();
  EXPECT_EQ(Shown().volume, 100);
  Form().hscSavVolume.SetValue(7);
  EXPECT_EQ(Shown().volume, 7);
}

TEST_F(RemoteControlTest, QuitAsksAboutUnsavedChangesAsTheCloseButtonDoes) {
  Start();
  Select(u"a");
  window->Controls().TextBox1[0].SetText(u"neu");
  auto& settings = const_cast<app::Settings&>(window->GetSettings());
  settings.CatalogueChanged = true;
  dialogs.answers = {platform::MessageBoxAnswer::kNo};
  Command(MediaCommand::kQuit);
  EXPECT_EQ(BoxTexts(), std::vector<Text>{u"Sollen die Änderungen gespeichert werden?"});
  EXPECT_TRUE(Form().form.IsClosed());
}

TEST_F(RemoteControlTest, RaiseBringsTheWindowToTheFrontEvenUnderADialog) {
  Start();
  int wanted = 0;
  const auto subscription = Form().form.FocusWanted.Subscribe([&] { ++wanted; });
  desktop.media_controls.receiver->Receive(MediaCommand::kRaise);
  desktop.turns.RunBlocked();
  EXPECT_EQ(wanted, 1);
}

TEST_F(RemoteControlTest, DialogDropsWhatAButtonWouldDo) {
  Start();
  Select(u"a");
  for (const auto command : {MediaCommand::kPlay, MediaCommand::kNext, MediaCommand::kQuit}) {
    desktop.media_controls.receiver->Receive(command);
  }
  desktop.turns.RunBlocked();
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
  EXPECT_EQ(Selected(), u"a");
  EXPECT_FALSE(Form().form.Closing());
}

TEST_F(RemoteControlTest, CommandsDoNothingWhileTheWindowCloses) {
  Start();
  Select(u"a");
  desktop.media_controls.receiver->Receive(MediaCommand::kPlay);
  desktop.media_controls.receiver->ReceiveVolume(33);
  Form().form.Close();
  desktop.turns.Run();
  EXPECT_NE(Form().hscSavVolume.Value(), 33);
  EXPECT_FALSE(Form().tmPlay.Enabled());
}

TEST_F(RemoteControlTest, StopDuringAStartIsOverForTheNextPlayPause) {
  Start();
  Select(u"a");
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    message_loop.on_sleep = [this](std::uint32_t more) { clock.seconds_since_midnight += more / 1000.0; };
    Command(MediaCommand::kStop);
    desktop.media_controls.receiver->Receive(MediaCommand::kPlayPause);
  };
  desktop.media_controls.receiver->Receive(MediaCommand::kPlay);
  desktop.turns.RunNext();
  ASSERT_EQ(Shown().playback, MediaPlayback::kStopped);
  desktop.turns.Run();
  EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying);
}

TEST_F(RemoteControlTest, PlayPauseWhileAStartResolvesItsStationStopsIt) {
  Start();
  Play(u"a");
  Stop();
  Form().SymbolListview.ClickHeader(0);
  ASSERT_TRUE(window->State().details_are_stale);
  bool received = false;
  message_loop.on_pump = [&] {
    if (std::exchange(received, true)) return;
    ASSERT_EQ(Shown().playback, MediaPlayback::kStopped);
    Command(MediaCommand::kPlayPause);
  };
  Command(MediaCommand::kPlay);
  ASSERT_TRUE(received);
  EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
}

TEST_F(RemoteControlTest, PlayPauseAfterAStartThatFailedStartsAgain) {
  media.open_result = platform::kErrorFileNotFound;
  Start();
  Select(u"a");
  Command(MediaCommand::kPlay);
  ASSERT_EQ(Shown().playback, MediaPlayback::kStopped);
  media.open_result = platform::kSOk;
  Command(MediaCommand::kPlayPause);
  EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying);
}

TEST_F(RemoteControlTest, StationThatWasStartedByHandIsWhereTheNextStepBegins) {
  Start();
  Play(u"a");
  Command(MediaCommand::kNext);
  ASSERT_EQ(Shown().track.station, u"b");
  Play(u"c");
  Select(u"b");
  EXPECT_FALSE(Shown().can_go_next) << "the last one plays";
  Command(MediaCommand::kNext);
  EXPECT_EQ(Shown().track.station, u"c");
}

TEST_F(RemoteControlTest, StepScrollsToItsRow) {
  Start();
  std::vector<controls::RowId> scrolled_to;
  const auto scrolling =
      Form().SymbolListview.ScrollWanted.Subscribe([&](controls::RowId row) { scrolled_to.push_back(row); });
  Command(MediaCommand::kPrevious);
  EXPECT_EQ(scrolled_to, std::vector{RowNamed(Form().SymbolListview, u"c")});
}

TEST_F(RemoteControlTest, FloodOfCommandsIsBounded) {
  Start();
  for (int command = 0; command < 1000; ++command) {
    desktop.media_controls.receiver->Receive(MediaCommand::kStop);
    desktop.media_controls.receiver->Receive(MediaCommand::kRaise);
  }
  EXPECT_EQ(desktop.turns.turns.size(), static_cast<std::size_t>(ui::RemoteControl::kMostWaiting));
  desktop.turns.turns.clear();
  Select(u"a");
  Command(MediaCommand::kPlay);
  EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying) << "commands are taken again";
}
}  // namespace
}  // namespace app
