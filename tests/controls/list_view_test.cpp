#include "controls/list_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace controls {
namespace {

ListRow Row(const Text& name) {
  ListRow row;
  row.cells.Set(0, name);
  return row;
}

class ListViewTest : public testing::Test {
 protected:
  ListViewTest() {
    b_ = list_.AddRow(Row(u"b"));
    a_ = list_.AddRow(Row(u"a"));
    c_ = list_.AddRow(Row(u"c"));
    subscriptions_ += list_.SelectionChanged.Subscribe([this] { log_.push_back("selection"); });
    subscriptions_ += list_.RowsReset.Subscribe([this] { log_.push_back("reset"); });
    subscriptions_ += list_.RowsAdded.Subscribe([this](std::size_t first, std::size_t count) {
      log_.push_back("added " + std::to_string(first) + "+" + std::to_string(count));
    });
    subscriptions_ += list_.RowRemoved.Subscribe(
        [this](std::size_t index) { log_.push_back("removed " + std::to_string(index)); });
    subscriptions_ += list_.RowChanged.Subscribe(
        [this](std::size_t index) { log_.push_back("changed " + std::to_string(index)); });
  }

  [[nodiscard]] Text Names() const {
    Text names;
    for (const ListRow& row : list_.Rows()) names += row.cells[0];
    return names;
  }
  ListView::Comparison ByName() {
    return [this](std::size_t first, std::size_t second) {
      return list_.Rows()[first].cells[0].compare(list_.Rows()[second].cells[0]);
    };
  }
  /// Every id leads to its row's position.
  void ExpectPositionsToAgree() const {
    for (std::size_t index = 0; index < list_.Count(); ++index) {
      EXPECT_EQ(list_.IndexOf(list_.RowAt(index)), index);
    }
  }

  ListView list_;
  RowId a_{}, b_{}, c_{};
  std::vector<std::string> log_;
  Subscriptions subscriptions_;
};

using Log = std::vector<std::string>;

TEST_F(ListViewTest, AppendsRowsAndAnnouncesThem) {
  const RowId d = list_.AddRow(Row(u"d"));
  EXPECT_EQ(Names(), u"bacd");
  EXPECT_EQ(list_.IndexOf(d), 3U);
  EXPECT_EQ(log_, Log{"added 3+1"});
}

TEST_F(ListViewTest, AnnouncesManyRowsOnceAndNoneNotAtAll) {
  list_.AddRows({Row(u"x"), Row(u"y")});
  list_.AddRows({});
  EXPECT_EQ(Names(), u"bacxy");
  EXPECT_EQ(log_, Log{"added 3+2"});
  ExpectPositionsToAgree();
}

TEST_F(ListViewTest, InsertsARowAtItsPlaceAndAnnouncesIt) {
  const RowId x = list_.InsertRow(1, Row(u"x"));
  EXPECT_EQ(Names(), u"bxac");
  EXPECT_EQ(list_.IndexOf(x), 1U);
  ExpectPositionsToAgree();
  list_.InsertRow(0, Row(u"y"));
  list_.InsertRow(99, Row(u"z"));
  EXPECT_EQ(Names(), u"ybxacz");
  EXPECT_EQ(log_, (Log{"added 1+1", "added 0+1", "added 5+1"}));
  ExpectPositionsToAgree();
}

TEST_F(ListViewTest, InsertedRowLeavesTheSelectionAndHasNoMark) {
  list_.Select(a_);
  ListRow row = Row(u"x");
  row.mark = RowMark::kPlaying;
  EXPECT_EQ(list_.Mark(list_.InsertRow(0, row)), RowMark::kNone);
  EXPECT_EQ(list_.SelectedRow(), a_);
}

TEST_F(ListViewTest, MarkIsAnnouncedOnceAndLeavesTheCells) {
  const std::vector<ListRow> before = list_.Rows();
  list_.SetMark(a_, RowMark::kPlaying);
  list_.SetMark(a_, RowMark::kPlaying);
  EXPECT_EQ(log_, Log{"changed 1"});
  EXPECT_EQ(list_.Mark(a_), RowMark::kPlaying);
  EXPECT_EQ(list_.Mark(b_), RowMark::kNone);
  EXPECT_EQ(list_.Rows()[1].cells, before[1].cells);
  list_.SetMark(a_, RowMark::kNone);
  EXPECT_EQ(list_.Mark(a_), RowMark::kNone);
}

TEST_F(ListViewTest, MarkGoesWithItsRowAndNotWithACopyOfIt) {
  list_.SetMark(a_, RowMark::kWaiting);
  const ListRow copy = list_.Rows()[1];
  list_.Sort(0, SortDirection::kAscending, ByName());
  EXPECT_EQ(list_.Mark(a_), RowMark::kWaiting);
  EXPECT_EQ(list_.Mark(list_.AddRow(copy)), RowMark::kNone);
  list_.AddRows({copy});
  EXPECT_EQ(list_.Rows().back().mark, RowMark::kNone);
  list_.RemoveRow(a_);
  log_.clear();
  list_.SetMark(a_, RowMark::kPlaying);
  EXPECT_EQ(list_.Mark(a_), RowMark::kNone);
  EXPECT_EQ(log_, Log{});
}

TEST_F(ListViewTest, WordsAreKeptAndAnnouncedAsAProperty) {
  int changes = 0;
  subscriptions_ += list_.Changed.Subscribe([&] { ++changes; });
  list_.SetEmptyText(u"leer");
  list_.SetMarkText(RowMark::kPlaying, u"spielt");
  list_.SetMarkText(RowMark::kWaiting, u"wartet");
  EXPECT_EQ(changes, 3);
  EXPECT_EQ(list_.EmptyText(), u"leer");
  EXPECT_EQ(list_.MarkText(RowMark::kNone), u"");
  EXPECT_EQ(list_.MarkText(RowMark::kPlaying), u"spielt");
  EXPECT_EQ(list_.MarkText(RowMark::kWaiting), u"wartet");
}

TEST_F(ListViewTest, IdsOfAddedRowsAreIgnored) {
  ListRow row = Row(u"d");
  row.id = a_;
  const RowId d = list_.AddRow(row);
  EXPECT_NE(d, a_);
  EXPECT_EQ(list_.Cell(a_, 0), u"a");
  EXPECT_EQ(list_.Cell(d, 0), u"d");
}

TEST_F(ListViewTest, IdsAreNeverUsedTwice) {
  list_.Clear();
  const RowId next = list_.AddRow(Row(u"neu"));
  EXPECT_NE(next, a_);
  EXPECT_NE(next, b_);
  EXPECT_NE(next, c_);
  EXPECT_NE(next, RowId::kNone);
}

TEST_F(ListViewTest, RemovingARowMovesTheOthersUp) {
  EXPECT_TRUE(list_.RemoveRow(a_));
  EXPECT_EQ(Names(), u"bc");
  EXPECT_EQ(list_.IndexOf(c_), 1U);
  EXPECT_FALSE(list_.Contains(a_));
  EXPECT_EQ(log_, Log{"removed 1"});
  ExpectPositionsToAgree();
}

TEST_F(ListViewTest, AnUnknownIdReadsAsEmptyAndTakesNothing) {
  list_.RemoveRow(a_);
  log_.clear();
  list_.SetCell(a_, 0, u"z");
  EXPECT_EQ(list_.Cell(a_, 0), u"");
  EXPECT_FALSE(list_.RemoveRow(a_));
  EXPECT_FALSE(list_.Select(a_));
  EXPECT_FALSE(list_.RemoveRow(RowId::kNone));
  EXPECT_EQ(list_.IndexOf(RowId::kNone), std::nullopt);
  EXPECT_EQ(list_.RowAt(2), RowId::kNone);
  EXPECT_EQ(log_, Log{});
}

TEST_F(ListViewTest, CellsBehindTheLastColumnReadAsEmptyAndTakeNothing) {
  list_.AddColumn({u"Station", 300});
  list_.AddColumn({u"Genre", 120});
  list_.SetCell(a_, 2, u"z");
  EXPECT_EQ(list_.Cell(a_, 2), u"");
  EXPECT_EQ(log_, Log{});
  list_.SetCell(a_, 1, u"z");
  EXPECT_EQ(list_.Cell(a_, 1), u"z");
}

TEST_F(ListViewTest, CellsOfARowAreThoseThatWereSetAndEmptyOnes) {
  ListCells cells{u"a"};
  EXPECT_EQ(cells[7], u"");
  EXPECT_EQ(cells, (ListCells{u"a", u"", u""}));
  cells.Set(2, u"c");
  EXPECT_EQ(cells, (ListCells{u"a", u"", u"c"}));
  EXPECT_NE(cells, (ListCells{u"a", u"", u"c", u"d"}));
  EXPECT_NE(cells, (ListCells{u"a"}));
}

TEST_F(ListViewTest, AChangedCellIsAnnouncedAnUnchangedOneIsNot) {
  list_.AddColumn({u"Station", 300});
  list_.SetCell(c_, 0, u"Titel");
  list_.SetCell(c_, 0, u"Titel");
  EXPECT_EQ(list_.Cell(c_, 0), u"Titel");
  EXPECT_EQ(log_, Log{"changed 2"});
}

TEST_F(ListViewTest, SelectingAnotherRowRaisesSelectionChangedOnce) {
  EXPECT_TRUE(list_.Select(a_));
  EXPECT_TRUE(list_.Select(a_));
  EXPECT_EQ(list_.SelectedRow(), a_);
  EXPECT_TRUE(list_.Select(RowId::kNone));
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
  EXPECT_EQ(log_, (Log{"selection", "selection"}));
}

TEST_F(ListViewTest, RemovingTheSelectedRowEndsTheSelection) {
  list_.Select(a_);
  log_.clear();
  list_.RemoveRow(b_);
  EXPECT_EQ(list_.SelectedRow(), a_);
  list_.RemoveRow(a_);
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
  EXPECT_EQ(log_, (Log{"removed 0", "removed 0", "selection"}));
}

TEST_F(ListViewTest, ClearingRemovesRowsAndSelection) {
  list_.Select(a_);
  log_.clear();
  list_.Clear();
  EXPECT_EQ(list_.Count(), 0U);
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
  EXPECT_FALSE(list_.Contains(a_));
  list_.Clear();
  EXPECT_EQ(log_, (Log{"reset", "selection"}));
}

TEST_F(ListViewTest, SortingKeepsIdsAndSelectionWithTheirRows) {
  list_.Select(b_);
  log_.clear();
  list_.Sort(0, SortDirection::kAscending, ByName());
  EXPECT_EQ(Names(), u"abc");
  EXPECT_EQ(list_.RowAt(0), a_);
  EXPECT_EQ(list_.SelectedRow(), b_);
  EXPECT_EQ(list_.SortColumn(), 0);
  EXPECT_EQ(list_.GetSortDirection(), SortDirection::kAscending);
  EXPECT_EQ(log_, Log{"reset"});
  ExpectPositionsToAgree();
}

TEST_F(ListViewTest, RowsThatCompareEqualKeepTheirOrder) {
  list_.Sort(0, SortDirection::kDescending, [](std::size_t, std::size_t) { return 0; });
  EXPECT_EQ(Names(), u"bac");
}

TEST_F(ListViewTest, ComparisonsSeeTheRowsAsTheyWereBeforeTheSorting) {
  for (int number = 40; number > 0; --number) list_.AddRow(Row(Text(static_cast<std::size_t>(number), u'x')));
  const Text before = Names();
  bool always = true;
  const auto by_name = ByName();
  list_.Sort(0, SortDirection::kAscending, [&](std::size_t first, std::size_t second) {
    always = always && Names() == before;
    return by_name(first, second);
  });
  EXPECT_TRUE(always);
  EXPECT_NE(Names(), before);
}

TEST_F(ListViewTest, AComparisonThatContradictsItselfLosesNoRow) {
  for (int count = 0; count < 500; ++count) list_.AddRow(Row(u"x"));
  // The first of three comes before the second, that before the third, and that before the first.
  list_.Sort(0, SortDirection::kAscending,
             [](std::size_t first, std::size_t second) { return (first + 1) % 3 == second % 3 ? -1 : 1; });
  EXPECT_EQ(list_.Count(), 503U);
  Text names = Names();
  std::ranges::sort(names);
  EXPECT_EQ(names, u"abc" + Text(500, u'x'));
  ExpectPositionsToAgree();
}

TEST_F(ListViewTest, IsNotSortedAtFirst) { EXPECT_EQ(list_.SortColumn(), -1); }

TEST_F(ListViewTest, ColumnsKeepTheirOrderAndTakeNewCaptions) {
  list_.AddColumn({u"Station", 300});
  list_.AddColumn({u"Genre", 120, SortKind::kNumbers});
  list_.SetColumnCaption(1, u"Kind");
  list_.SetColumnCaption(2, u"fehlt");
  ASSERT_EQ(list_.Columns().size(), 2U);
  EXPECT_EQ(list_.Columns()[0].caption, u"Station");
  EXPECT_EQ(list_.Columns()[1].caption, u"Kind");
  EXPECT_EQ(list_.Columns()[1].width, 120);
}

TEST_F(ListViewTest, OnlyHeadersOfColumnsTakeClicks) {
  list_.AddColumn({u"Station", 300});
  std::vector<int> clicks;
  const auto subscription = list_.HeaderClicked.Subscribe([&](int column) { clicks.push_back(column); });
  for (const int column : {-1, 0, 1}) list_.ClickHeader(column);
  EXPECT_EQ(clicks, std::vector<int>{0});
}

TEST_F(ListViewTest, OnlyExistingRowsTakeDoubleClicksAndScrolling) {
  std::vector<RowId> seen;
  const auto double_clicks = list_.DoubleClicked.Subscribe([&](RowId row) { seen.push_back(row); });
  const auto scrolls = list_.ScrollWanted.Subscribe([&](RowId row) { seen.push_back(row); });
  list_.RemoveRow(b_);
  list_.DoubleClick(a_);
  list_.DoubleClick(b_);
  list_.EnsureVisible(c_);
  list_.EnsureVisible(b_);
  EXPECT_EQ(seen, (std::vector<RowId>{a_, c_}));
}

TEST_F(ListViewTest, AClickSelectsARowOrReportsThatTheSelectedOneWasClickedOnceMore) {
  const auto again = list_.SelectedRowClicked.Subscribe([this] { log_.push_back("again"); });
  list_.RemoveRow(b_);
  log_.clear();
  list_.ClickRow(a_);
  list_.ClickRow(a_);
  list_.ClickRow(b_);
  EXPECT_EQ(log_, (Log{"selection", "again"}));
  EXPECT_EQ(list_.SelectedRow(), a_);
  list_.ClickRow(RowId::kNone);
  list_.ClickRow(RowId::kNone);
  EXPECT_EQ(log_, (Log{"selection", "again", "selection"}));
}

TEST_F(ListViewTest, AHandlerMayEmptyTheListThatNotifiesIt) {
  const auto subscription = list_.SelectionChanged.Subscribe([this] { list_.Clear(); });
  EXPECT_TRUE(list_.Select(a_));
  EXPECT_EQ(list_.Count(), 0U);
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
}

TEST_F(ListViewTest, DraggedWidthIsTheColumnsAndIsToldWhenItIsAnother) {
  list_.AddColumn({u"Name", 300});
  list_.AddColumn({u"Genre", 120});
  int changes = 0;
  std::vector<std::size_t> dragged;
  subscriptions_ += list_.Changed.Subscribe([&] { ++changes; });
  subscriptions_ += list_.ColumnDragged.Subscribe([&](std::size_t column) { dragged.push_back(column); });
  list_.DragColumn(1, 200);
  list_.DragColumn(1, 200);
  EXPECT_EQ(list_.Columns()[1].users_width, 200);
  EXPECT_EQ(list_.Columns()[1].width, 120);
  EXPECT_EQ(list_.Columns()[0].users_width, std::nullopt);
  EXPECT_EQ(dragged, std::vector<std::size_t>{1});
  EXPECT_EQ(changes, 1);
}

TEST_F(ListViewTest, DraggedWidthStaysWithinItsBounds) {
  list_.AddColumn({u"Name", 300});
  list_.DragColumn(0, -2000000000);
  EXPECT_EQ(list_.Columns()[0].users_width, kNarrowestColumn);
  list_.DragColumn(0, 2000000000);
  EXPECT_EQ(list_.Columns()[0].users_width, kWidestColumn);
  list_.DragColumn(1, 100);
  EXPECT_EQ(list_.Columns().size(), 1U);
}

TEST_F(ListViewTest, TwentyThousandRowsAreAddedFoundAndSorted) {
  list_.Clear();
  std::vector<ListRow> rows;
  for (int number = 20000; number > 0; --number) {
    const std::string digits = std::to_string(1000000 + number);
    rows.push_back(Row(Text(digits.begin(), digits.end())));
  }
  list_.AddRows(std::move(rows));
  const RowId last = list_.RowAt(19999);
  list_.Sort(0, SortDirection::kAscending, ByName());
  EXPECT_EQ(list_.IndexOf(last), 0U);
}

}  // namespace
}  // namespace controls
