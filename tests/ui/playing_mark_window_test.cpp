// The playing row's mark in the window: what Start, Stop, the views and the editor do to it.
#include "tests/ui/playing_window_fixture.h"

namespace app {
namespace {

using controls::ListView;
using controls::RowMark;

class PlayingMarkWindowTest : public PlayingWindowTest {
 protected:
  /// The names of the marked rows, with "?" behind one that waits.
  static std::vector<Text> Marked(const ListView& list) {
    std::vector<Text> names;
    for (const controls::ListRow& row : list.Rows()) {
      if (row.mark == RowMark::kNone) continue;
      names.push_back(row.cells[kNameCell] + (row.mark == RowMark::kWaiting ? u"?" : u""));
    }
    return names;
  }
  std::vector<Text> InFullList() { return Marked(Form().SymbolListview); }
  std::vector<Text> InFilteredList() { return Marked(Form().ExplorerListFilter); }

  /// The next look at the player, which is in this state then.
  void Reach(platform::PlaybackState state) {
    playback_monitor.status.state = state;
    Form().tmPlay.Fire();
  }
  /// Starts the selected station, which plays.
  void Play() {
    Form().Command1.Click();
    media.play_state = player::kPlayStateRunning;
    Reach(platform::PlaybackState::kPlaying);
  }
};

using Rows = std::vector<Text>;

TEST_F(PlayingMarkWindowTest, StartMarksTheRowAndStopUnmarksIt) {
  Start();
  Select(u"A");
  Play();
  EXPECT_EQ(InFullList(), Rows{u"A"});
  Select(u"B");
  EXPECT_EQ(InFullList(), Rows{u"A"}) << "selecting another one does not play it";
  Form().Command6.Click();
  EXPECT_EQ(InFullList(), Rows{});
}

TEST_F(PlayingMarkWindowTest, RowWaitsWhileItsAddressIsOpened) {
  Start();
  Select(u"A");
  Rows while_opening;
  message_loop.on_sleep = [&](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    while_opening = InFullList();
  };
  Form().Command1.Click();
  EXPECT_EQ(while_opening, Rows{u"A?"});
}

TEST_F(PlayingMarkWindowTest, BrokenLineWaitsUntilItIsHeardAgain) {
  Start();
  Select(u"A");
  Play();
  Reach(platform::PlaybackState::kReconnecting);
  EXPECT_EQ(InFullList(), Rows{u"A?"});
  Reach(platform::PlaybackState::kPlaying);
  EXPECT_EQ(InFullList(), Rows{u"A"});
  Reach(platform::PlaybackState::kEnded);
  EXPECT_EQ(InFullList(), Rows{});
}

TEST_F(PlayingMarkWindowTest, PlayingThatPausesWaits) {
  Start();
  Select(u"A");
  Play();
  media.play_state = player::kPlayStatePaused;
  Reach(platform::PlaybackState::kPaused);
  EXPECT_EQ(InFullList(), Rows{u"A?"});
  Form().Command6.Click();
  EXPECT_EQ(InFullList(), Rows{u"A?"}) << "Stop does not end what is paused";
}

TEST_F(PlayingMarkWindowTest, AddressThatCannotBeOpenedLeavesNoMarkNotEvenWhileTheMessageStands) {
  media.open_result = platform::kErrorFileNotFound;
  Start();
  Select(u"A");
  Rows in_box = {u"not seen"};
  dialogs.on_box = [&] { in_box = InFullList(); };
  Form().Command1.Click();
  EXPECT_EQ(in_box, Rows{});
  EXPECT_EQ(InFullList(), Rows{});
}

TEST_F(PlayingMarkWindowTest, FailureThatIsNotReportedLeavesNoMark) {
  media.open_result = platform::kEFail;
  Start();
  Select(u"A");
  Form().Command1.Click();
  EXPECT_EQ(InFullList(), Rows{});
}

TEST_F(PlayingMarkWindowTest, StopInTheMiddleOfAStartLeavesNoMark) {
  Start();
  Select(u"A");
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    Form().Command6.Click();
    EXPECT_EQ(InFullList(), Rows{});
  };
  Form().Command1.Click();
  EXPECT_EQ(InFullList(), Rows{});
}

TEST_F(PlayingMarkWindowTest, AnotherStartInTheMiddleOfAStartIsTheOneThatIsMarked) {
  Start();
  Select(u"A");
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    message_loop.on_sleep = [this](std::uint32_t more) { clock.seconds_since_midnight += more / 1000.0; };
    Select(u"B");
    Play();
  };
  Form().Command1.Click();
  EXPECT_EQ(InFullList(), Rows{u"B"});
}

TEST_F(PlayingMarkWindowTest, ViewsAndTheirReloadsKeepTheMark) {
  AddStation(u"C", u"http://c/", u"Jazz", u"1");
  Start();
  Select(u"C");
  Play();
  Form().Check3.Click();
  EXPECT_EQ(InFilteredList(), Rows{u"C"});
  Form().Combo1.SetText(u"Rock");
  Form().Check1.Click();
  EXPECT_EQ(InFilteredList(), Rows{}) << "the genre is not that of the station";
  Form().Check1.Click();
  EXPECT_EQ(InFullList(), Rows{u"C"});
}

TEST_F(PlayingMarkWindowTest, StationThatIsStartedInAFilterViewIsMarkedInTheFullListToo) {
  AddStation(u"C", u"http://c/", u"Jazz", u"1");
  Start();
  Form().Check3.Click();
  SelectIn(Form().ExplorerListFilter, u"C");
  Play();
  EXPECT_EQ(InFilteredList(), Rows{u"C"});
  EXPECT_EQ(InFullList(), Rows{u"C"});
}

TEST_F(PlayingMarkWindowTest, RenamedStationKeepsTheMarkOverAReload) {
  Start();
  Select(u"A");
  Play();
  Form().TextBox1[0].SetText(u"Neu");
  Form().Command8[1].Click();
  EXPECT_EQ(InFullList(), Rows{u"Neu"});
  Form().Check3.Click();
  Form().Check3.Click();
  EXPECT_EQ(InFullList(), Rows{u"Neu"});
}

TEST_F(PlayingMarkWindowTest, StationThatIsRenamedInAFilterViewKeepsTheMarkInTheFullList) {
  AddStation(u"C", u"http://c/", u"Jazz", u"1");
  Start();
  Select(u"C");
  Play();
  Form().Check3.Click();
  SelectIn(Form().ExplorerListFilter, u"C");
  Form().TextBox1[0].SetText(u"Neu");
  Form().Command8[1].Click();
  EXPECT_EQ(InFilteredList(), Rows{u"Neu"});
  Form().Check3.Click();
  EXPECT_EQ(InFullList(), Rows{u"Neu"});
}

TEST_F(PlayingMarkWindowTest, DeletedStationTakesItsMarkAlong) {
  Start();
  Select(u"A");
  Play();
  Form().Command8[3].Click();
  Reach(platform::PlaybackState::kBuffering);
  EXPECT_EQ(InFullList(), Rows{});
}

TEST_F(PlayingMarkWindowTest, StationPlayedWithoutASelectionIsTheOneMarked) {
  Start();
  Select(u"B");
  Form().SymbolListview.Select(controls::RowId::kNone);
  Play();
  EXPECT_EQ(InFullList(), Rows{u"B"});
}

TEST_F(PlayingMarkWindowTest, TicksWithoutAChangeAnnounceNoRow) {
  Start();
  Select(u"A");
  Play();
  int changes = 0;
  const auto subscription = Form().SymbolListview.RowChanged.Subscribe([&](std::size_t) { ++changes; });
  for (int tick = 0; tick < 5; ++tick) Form().tmPlay.Fire();
  EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace app
