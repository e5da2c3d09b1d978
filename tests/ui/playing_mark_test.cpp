// The mark of the playing row on bare lists, with a double of the playback monitor.
#include "ui/playing_mark.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/state/station.h"

namespace ui {
namespace {

using controls::ListRow;
using controls::ListView;
using controls::RowId;
using controls::RowMark;
using platform::PlaybackState;
using platform::Text;

/// Says what the test wants.
class Monitor final : public platform::PlaybackMonitor {
 public:
  Monitor() { status.state = PlaybackState::kPlaying; }
  [[nodiscard]] platform::PlaybackStatus Status() const override {
    ++asked;
    return status;
  }
  platform::PlaybackStatus status;
  mutable int asked = 0;
};

ListRow Row(const Text& name, const Text& link) {
  ListRow row;
  row.cells.Set(app::kNameCell, name);
  row.cells.Set(app::kLinkCell, link);
  return row;
}

class PlayingMarkTest : public ::testing::Test {
 protected:
  PlayingMarkTest() {
    for (ListView* list : {&full_, &filtered_}) {
      for (std::size_t cell = 0; cell < app::kStationCells; ++cell) list->AddColumn({});
    }
    a_ = full_.AddRow(Row(u"A", u"http://a/"));
    b_ = full_.AddRow(Row(u"B", u"http://b/"));
  }

  void Play(const ListView& list, RowId row) {
    mark_.Choose(list, row);
    mark_.Opening();
    mark_.Playing();
  }
  void Follow(PlaybackState state) {
    monitor_.status.state = state;
    mark_.Follow();
  }
  void Load(ListView& list, std::vector<ListRow> rows) {
    list.Clear();
    list.AddRows(std::move(rows));
  }
  /// The full list still has the old name of `shown`; a title that comes into its row does not bring that
  /// back.
  void RenameInFilteredListAndStart(RowId shown) {
    filtered_.SetCell(shown, app::kNameCell, u"Neu");
    full_.SetCell(a_, app::kTitleCell, u"Lied");
    Load(filtered_, {Row(u"A", u"http://a/"), Row(u"Neu", u"http://a/")});
    mark_.Opening();
  }
  /// The marks in display order: "-", "p" or "w" per row.
  static std::string Marks(const ListView& list) {
    std::string marks;
    for (const ListRow& row : list.Rows()) marks += "-pw"[static_cast<std::size_t>(row.mark)];
    return marks;
  }

  ListView full_;
  ListView filtered_;
  Monitor monitor_;
  PlayingMark mark_{{full_, filtered_}, monitor_};
  RowId a_{}, b_{};
};

TEST_F(PlayingMarkTest, ChoosingARowMarksNothing) {
  mark_.Choose(full_, b_);
  mark_.Follow();
  EXPECT_EQ(Marks(full_), "--");
  EXPECT_EQ(monitor_.asked, 0) << "nothing plays";
}

TEST_F(PlayingMarkTest, RowWaitsWhileItsAddressIsOpenedAndPlaysThen) {
  mark_.Choose(full_, b_);
  mark_.Opening();
  EXPECT_EQ(Marks(full_), "-w");
  mark_.Follow();
  EXPECT_EQ(Marks(full_), "-w") << "the state may be that of the item before";
  mark_.Playing();
  EXPECT_EQ(Marks(full_), "-p");
}

TEST_F(PlayingMarkTest, EachStateHasItsMark) {
  Play(full_, a_);
  using State = PlaybackState;
  for (const State waiting :
       {State::kConnecting, State::kBuffering, State::kPaused, State::kReconnecting, State::kNoDevice}) {
    Follow(waiting);
    EXPECT_EQ(Marks(full_), "w-") << static_cast<int>(waiting);
    Follow(State::kPlaying);
    EXPECT_EQ(Marks(full_), "p-");
  }
  for (const State over : {State::kStopped, State::kEnded, State::kFailed}) {
    Follow(over);
    EXPECT_EQ(Marks(full_), "--") << static_cast<int>(over);
    Follow(State::kPlaying);
    EXPECT_EQ(Marks(full_), "p-");
  }
}

TEST_F(PlayingMarkTest, StateThatStaysTheSameAnnouncesNothing) {
  Play(full_, a_);
  int changes = 0;
  const auto subscription = full_.RowChanged.Subscribe([&](std::size_t) { ++changes; });
  for (int tick = 0; tick < 5; ++tick) mark_.Follow();
  EXPECT_EQ(changes, 0);
  Follow(PlaybackState::kBuffering);
  EXPECT_EQ(changes, 1);
}

TEST_F(PlayingMarkTest, StopTakesTheMarkAwayForGood) {
  Play(full_, a_);
  mark_.Stopped();
  EXPECT_EQ(Marks(full_), "--");
  mark_.Follow();
  Load(full_, {Row(u"A", u"http://a/")});
  EXPECT_EQ(Marks(full_), "-");
}

TEST_F(PlayingMarkTest, StartThatIsGivenUpLeavesNoMarkAndOneThatPlaysKeepsIt) {
  mark_.Choose(full_, a_);
  mark_.Opening();
  mark_.GivenUp();
  EXPECT_EQ(Marks(full_), "--");
  Play(full_, b_);
  mark_.GivenUp();
  EXPECT_EQ(Marks(full_), "-p");
}

TEST_F(PlayingMarkTest, AnotherStartMovesTheMarkAndAnotherChoiceDoesNot) {
  Play(full_, a_);
  mark_.Choose(full_, b_);
  mark_.Follow();
  EXPECT_EQ(Marks(full_), "p-");
  mark_.Opening();
  EXPECT_EQ(Marks(full_), "-w");
  mark_.Playing();
  EXPECT_EQ(Marks(full_), "-p");
}

TEST_F(PlayingMarkTest, BothListsShowIt) {
  filtered_.AddRows({Row(u"B", u"http://b/"), Row(u"A", u"http://a/")});
  Play(full_, a_);
  EXPECT_EQ(Marks(full_), "p-");
  EXPECT_EQ(Marks(filtered_), "-p");
  mark_.Stopped();
  EXPECT_EQ(Marks(full_) + Marks(filtered_), "----");
}

TEST_F(PlayingMarkTest, SortingAndLoadingAnewKeepIt) {
  Play(full_, a_);
  full_.Sort(0, controls::SortDirection::kDescending, [this](std::size_t first, std::size_t second) {
    return full_.Rows()[second].cells[0].compare(full_.Rows()[first].cells[0]);
  });
  EXPECT_EQ(Marks(full_), "-p");
  Load(full_, {Row(u"0", u"http://0/"), Row(u"A", u"http://a/"), Row(u"B", u"http://b/")});
  EXPECT_EQ(Marks(full_), "-p-");
}

TEST_F(PlayingMarkTest, RowThatIsMissingInOneViewIsMarkedInTheNext) {
  Play(full_, a_);
  Load(filtered_, {Row(u"B", u"http://b/")});
  EXPECT_EQ(Marks(filtered_), "-");
  Load(filtered_, {Row(u"B", u"http://b/"), Row(u"A", u"http://a/")});
  EXPECT_EQ(Marks(filtered_), "-p");
  Load(filtered_, {});
  filtered_.AddRow(Row(u"B", u"http://b/"));
  filtered_.AddRow(Row(u"A", u"http://a/"));
  EXPECT_EQ(Marks(filtered_), "-p");
}

TEST_F(PlayingMarkTest, OfTwoRowsOfOneNameOnlyTheStartedOneIsMarked) {
  const RowId twin = full_.AddRow(Row(u"A", u"http://a/zwei"));
  Play(full_, twin);
  EXPECT_EQ(Marks(full_), "--p");
  Load(full_, {Row(u"A", u"http://a/"), Row(u"A", u"http://a/zwei"), Row(u"A", u"http://a/zwei")});
  EXPECT_EQ(Marks(full_), "-p-");
}

TEST_F(PlayingMarkTest, OfTwoEqualRowsTheStartedOneIsMarked) {
  Play(full_, full_.AddRow(Row(u"A", u"http://a/")));
  EXPECT_EQ(Marks(full_), "--p");
}

TEST_F(PlayingMarkTest, RowsThatComeLaterAndSortingLeaveTheMarkWithTheStartedOne) {
  const RowId twin = full_.AddRow(Row(u"A", u"http://a/"));
  Play(full_, twin);
  full_.AddRow(Row(u"C", u"http://c/"));
  full_.AddRow(Row(u"A", u"http://a/"));
  EXPECT_EQ(Marks(full_), "--p--");
  full_.Sort(0, controls::SortDirection::kAscending, [this](std::size_t first, std::size_t second) {
    return full_.Rows()[first].cells[0].compare(full_.Rows()[second].cells[0]);
  });
  EXPECT_EQ(Marks(full_), "-p---");
}

TEST_F(PlayingMarkTest, DeletedRowLeavesItsMarkToNoEqualOne) {
  const RowId twin = full_.AddRow(Row(u"A", u"http://a/"));
  Play(full_, twin);
  full_.RemoveRow(twin);
  full_.AddRow(Row(u"C", u"http://c/"));
  Follow(PlaybackState::kBuffering);
  EXPECT_EQ(Marks(full_), "---");
}

TEST_F(PlayingMarkTest, NameAndLinkMayBeEditedWhileItPlays) {
  Play(full_, a_);
  full_.SetCell(a_, app::kNameCell, u"Neu");
  full_.SetCell(a_, app::kLinkCell, u"http://neu/");
  EXPECT_EQ(Marks(full_), "p-");
  Load(full_, {Row(u"A", u"http://a/"), Row(u"Neu", u"http://neu/")});
  EXPECT_EQ(Marks(full_), "-p");
}

TEST_F(PlayingMarkTest, RowMayBeEditedInTheOtherListWhileItPlays) {
  Play(full_, a_);
  const RowId shown = filtered_.AddRow(Row(u"A", u"http://a/"));
  filtered_.SetCell(shown, app::kNameCell, u"Neu");
  // The hidden list still has the old name; a title that comes into its row does not bring that back.
  full_.SetCell(a_, app::kTitleCell, u"Lied");
  EXPECT_EQ(Marks(full_), "p-");
  Load(full_, {Row(u"A", u"http://a/"), Row(u"Neu", u"http://a/")});
  EXPECT_EQ(Marks(full_), "-p");
}

TEST_F(PlayingMarkTest, ChosenRowMayBeEditedInTheOtherListBeforeTheStart) {
  const RowId shown = filtered_.AddRow(Row(u"A", u"http://a/"));
  mark_.Choose(full_, a_);
  RenameInFilteredListAndStart(shown);
  EXPECT_EQ(Marks(filtered_), "-w");
}

TEST_F(PlayingMarkTest, RowChosenInTheOtherListMayBeEditedThereBeforeTheStart) {
  const RowId shown = filtered_.AddRow(Row(u"A", u"http://a/"));
  mark_.Choose(filtered_, shown);
  RenameInFilteredListAndStart(shown);
  EXPECT_EQ(Marks(filtered_), "-w");
}

TEST_F(PlayingMarkTest, RowMayBeEditedAndLoadedAnewBetweenChoiceAndStart) {
  mark_.Choose(full_, a_);
  full_.SetCell(a_, app::kNameCell, u"Neu");
  Load(full_, {Row(u"B", u"http://b/"), Row(u"Neu", u"http://a/")});
  mark_.Opening();
  EXPECT_EQ(Marks(full_), "-w");
}

TEST_F(PlayingMarkTest, DeletedRowTakesItsMarkAlong) {
  Play(full_, a_);
  full_.RemoveRow(a_);
  Follow(PlaybackState::kBuffering);
  EXPECT_EQ(Marks(full_), "-");
  filtered_.AddRow(Row(u"B", u"http://b/"));
  mark_.Choose(full_, a_);
  mark_.Opening();
  EXPECT_EQ(Marks(full_) + Marks(filtered_), "--") << "a row that is gone cannot be chosen";
}

TEST_F(PlayingMarkTest, DeletedRowThatComesBackToItsPlaceIsMarkedAgain) {
  full_.AddRow(Row(u"A", u"http://a/"));
  Play(full_, a_);
  full_.RemoveRow(a_);
  full_.InsertRow(0, Row(u"0", u"http://0/"));
  EXPECT_EQ(Marks(full_), "---");
  full_.InsertRow(1, Row(u"A", u"http://a/"));
  EXPECT_EQ(Marks(full_), "-p--");
}

TEST_F(PlayingMarkTest, StopInTheMiddleOfMarkingLeavesNoMark) {
  filtered_.AddRow(Row(u"A", u"http://a/"));
  mark_.Choose(full_, a_);
  const auto subscription = full_.RowChanged.Subscribe([this](std::size_t position) {
    if (full_.Rows()[position].mark != RowMark::kNone) mark_.Stopped();
  });
  mark_.Opening();
  EXPECT_EQ(Marks(full_) + Marks(filtered_), "---");
}

TEST_F(PlayingMarkTest, RowsMayGoInTheMiddleOfMarking) {
  filtered_.AddRow(Row(u"A", u"http://a/"));
  mark_.Choose(full_, a_);
  const auto subscription = full_.RowChanged.Subscribe([this](std::size_t) {
    filtered_.Clear();
    filtered_.AddRow(Row(u"C", u"http://c/"));
  });
  mark_.Opening();
  EXPECT_EQ(Marks(full_) + Marks(filtered_), "w--");
}

}  // namespace
}  // namespace ui
