// The desktop's commands on a whole window of doubles: what they press, and what the desktop is shown.
#include "ui/remote_control.h"

#include "tests/ui/desktop_fixture.h"

namespace app {
namespace {

using platform::MediaCommand;
using platform::MediaPlayback;
using platform::PlaybackState;
using platform::TurnOnWait;

class RemoteControlTest : public DesktopTest {};

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

TEST_F(RemoteControlTest, SelectingAStationNeverClaimsThatItCannotBePlayed) {
  Start();
  Select(u"a");
  for (const auto& state : desktop.media_controls.published) EXPECT_TRUE(state.can_play);
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

TEST_F(RemoteControlTest, EveryStateOfPlayingIsOneOfTheDesktopsThree) {
  Start();
  Play(u"a");
  for (const auto state :
       {PlaybackState::kBuffering, PlaybackState::kReconnecting, PlaybackState::kNoDevice}) {
    Reach(state);
    EXPECT_EQ(Shown().playback, MediaPlayback::kPlaying);
  }
  Reach(PlaybackState::kPaused);
  EXPECT_EQ(Shown().playback, MediaPlayback::kPaused);
  EXPECT_EQ(Shown().track.station, u"a");
  for (const auto state : {PlaybackState::kEnded, PlaybackState::kFailed, PlaybackState::kStopped}) {
    Reach(PlaybackState::kPlaying);
    Reach(state);
    EXPECT_EQ(Shown().playback, MediaPlayback::kStopped);
    EXPECT_EQ(Shown().track.number, 0U);
  }
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

TEST_F(RemoteControlTest, TitleOfWhatPlaysIsSplit) {
  Start();
  Play(u"b");
  EXPECT_EQ(Shown().track.artist, u"Zwei");
  EXPECT_EQ(Shown().track.title, u"Lied B");
  SendTitle(u"b", "Drei - Lied C");
  Form().Timer2.Fire();
  EXPECT_EQ(Shown().track.artist, u"Drei");
  EXPECT_EQ(Shown().track.title, u"Lied C");
}

TEST_F(RemoteControlTest, TitleOfAStationThatIsOnlySelectedIsNotShown) {
  Start();
  Play(u"b");
  Select(u"a");
  ASSERT_EQ(Form().Label4.Caption(), u"Eins - Lied A");
  EXPECT_EQ(Shown().track.title, u"Lied B");
}

TEST_F(RemoteControlTest, WordsOfTheWindowAreNoTitle) {
  Start();
  Play(u"b");
  internet.answers[u"http://b/s"].reads.clear();
  Form().Timer2.Fire();
  ASSERT_EQ(Form().Label4.Caption(), u"TimeOut");
  EXPECT_EQ(Shown().track.title, u"Lied B") << "it is not known to have changed";
  SendTitle(u"b", "");
  Form().Timer2.Fire();
  ASSERT_EQ(Form().Label4.Caption(), u"Keine Info!");
  EXPECT_EQ(Shown().track.title, u"");
}

TEST_F(RemoteControlTest, PictureOfTheStationIsNamed) {
  const Text picture = u"C:\\Programme\\Funkhaus\\RadioJPG\\a.jpg";
  files.files[picture] = "";
  Start();
  Play(u"a");
  EXPECT_EQ(Shown().track.picture, picture);
  Play(u"b");
  EXPECT_EQ(Shown().track.picture, u"");
}

TEST_F(RemoteControlTest, TicksAndChangesOfOtherThingsPublishNothing) {
  Start();
  Play(u"a");
  const auto published = desktop.media_controls.published.size();
  for (int tick = 0; tick < 5; ++tick) {
    Form().tmPlay.Fire();
    Form().Timer1.Fire();
    Form().Timer2.Fire();
  }
  Form().SymbolListview.SetToolTip(u"neu");
  Form().hscSavVolume.SetVisible(false);
  EXPECT_EQ(desktop.media_controls.published.size(), published);
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
