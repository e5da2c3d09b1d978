// What the desktop is shown of a whole window of doubles.
#include "tests/ui/desktop_fixture.h"

namespace app {
namespace {

using platform::MediaCommand;
using platform::MediaPlayback;
using platform::PlaybackState;
using RemoteControlTest = DesktopTest;

TEST_F(RemoteControlTest, ClosedWindowPublishesNothingMore) {
  Start();
  Form().form.Close();
  const auto published = desktop.media_controls.published.size();
  Form().hscSavVolume.SetValue(7);
  EXPECT_EQ(desktop.media_controls.published.size(), published);
}

TEST_F(RemoteControlTest, SelectingAStationNeverClaimsThatItCannotBePlayed) {
  Start();
  Select(u"a");
  for (const auto& state : desktop.media_controls.published) EXPECT_TRUE(state.can_play);
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

TEST_F(RemoteControlTest, StartingAgainIsAnotherTrack) {
  Start();
  Select(u"a");
  Form().Command1.Click();
  const auto number = Shown().track.number;
  Form().Command1.Click();
  EXPECT_NE(Shown().track.number, number);
}

TEST_F(RemoteControlTest, KnownAddressCanBePlayedWithoutARow) {
  Start();
  Play(u"a");
  Command(MediaCommand::kStop);
  Form().SymbolListview.Clear();
  EXPECT_TRUE(Shown().can_play);
}

TEST_F(RemoteControlTest, EveryChangeOfTheVisibleListIsShown) {
  Start();
  controls::ListView* const lists[] = {&Form().SymbolListview, &Form().ExplorerListFilter};
  Form().SymbolListview.Clear();
  for (controls::ListView* list : lists) {
    for (controls::ListView* other : lists) other->SetVisible(other == list);
    EXPECT_FALSE(Shown().can_go_next);
    const controls::RowId a = list->AddRow({});
    EXPECT_TRUE(Shown().can_go_next);
    list->RemoveRow(a);
    EXPECT_FALSE(Shown().can_go_next);
    list->AddRow({});
    list->Clear();
    EXPECT_FALSE(Shown().can_go_next);
  }
}

TEST_F(RemoteControlTest, ListThatIsShownInsteadCounts) {
  Start();
  ASSERT_TRUE(Shown().can_go_next);
  Form().SymbolListview.SetVisible(false);
  Form().ExplorerListFilter.SetVisible(true);
  EXPECT_FALSE(Shown().can_go_next) << "it is empty";
}

TEST_F(RemoteControlTest, SelectionAtTheEndOfTheListIsShownAtOnce) {
  Start();
  Command(MediaCommand::kPrevious);
  EXPECT_FALSE(Shown().can_go_next);
  Form().SymbolListview.Select(controls::RowId::kNone);
  EXPECT_TRUE(Shown().can_go_next);
}
}  // namespace
}  // namespace app
