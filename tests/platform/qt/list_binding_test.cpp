#include "platform/qt/list_binding.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QScrollBar>

#include "tests/platform/qt/window_fixture.h"
#include "tests/support/processor_time.h"

namespace platform::qt {
namespace {

using controls::RowId;

controls::ListRow Row(const Text& name, const Text& genre = u"Rock") {
  controls::ListRow row;
  row.cells.Set(0, name);
  row.cells.Set(1, genre);
  return row;
}

class ListBindingTest : public ::testing::Test {
 protected:
  ListBindingTest() { opened_ = fixture_.Open(); }
  void SetUp() override { ASSERT_TRUE(opened_); }

  void Fill(int count) {
    std::vector<controls::ListRow> rows;
    for (int number = 0; number < count; ++number) {
      rows.push_back(Row(u"Radio " + FromQt(QString::number(number))));
    }
    list_.AddRows(std::move(rows));
  }
  QPoint At(int row) const { return view_.visualRect(view_.model()->index(row, 0)).center(); }
  void Click(int row, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, modifiers, At(row));
    Settle();
  }
  void SortByName(controls::SortDirection direction) {
    const int sign = direction == controls::SortDirection::kAscending ? 1 : -1;
    list_.Sort(0, direction, [this, sign](std::size_t first, std::size_t second) {
      return sign * list_.Rows()[first].cells[0].compare(list_.Rows()[second].cells[0]);
    });
  }

  WindowFixture fixture_;
  controls::ListView& list_ = fixture_.form.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");

 private:
  bool opened_ = false;
};

TEST_F(ListBindingTest, ShowsColumnsAndRows) {
  list_.AddRow(Row(u"Funkhaus Eins", u"Jazz"));
  ASSERT_EQ(view_.model()->columnCount(), 6);
  EXPECT_EQ(view_.model()->headerData(4, Qt::Horizontal).toString(), "Titel");
  EXPECT_EQ(view_.model()->index(0, 1).data().toString(), "Jazz");
  EXPECT_EQ(view_.header()->sectionSize(0), 300);
  EXPECT_EQ(view_.header()->sectionSize(4), 200);
}

TEST_F(ListBindingTest, FollowsChangedCellsAndCaptions) {
  const RowId id = list_.AddRow(Row(u"Funkhaus Eins"));
  int changed = 0;
  QObject::connect(view_.model(), &QAbstractItemModel::dataChanged, &view_, [&] { ++changed; });
  list_.SetCell(id, 4, u"Hole Info...");
  EXPECT_EQ(changed, 1);
  EXPECT_EQ(view_.model()->index(0, 4).data().toString(), "Hole Info...");
  list_.SetColumnCaption(0, u"Sender");
  EXPECT_EQ(view_.model()->headerData(0, Qt::Horizontal).toString(), "Sender");
}

TEST_F(ListBindingTest, ControlCharactersInCellsAreShownAsBlanks) {
  list_.AddRow(Row(u"Name\r\nzweite Zeile"));
  EXPECT_EQ(view_.model()->index(0, 0).data().toString(), "Name  zweite Zeile");
}

TEST_F(ListBindingTest, ClickSelectsOnce) {
  Fill(5);
  const Counter changes(list_.SelectionChanged);
  Click(2);
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(2));
  EXPECT_EQ(changes.Count(), 1);
  Click(2);
  EXPECT_EQ(changes.Count(), 1);
}

TEST_F(ListBindingTest, ClickOnTheSelectedRowIsReportedOnceMore) {
  Fill(5);
  const Counter again(list_.SelectedRowClicked);
  Click(2);
  EXPECT_EQ(again.Count(), 0);
  Click(2);
  EXPECT_EQ(again.Count(), 1);
  QTest::mouseClick(view_.viewport(), Qt::RightButton, {}, At(2));
  Click(2, Qt::ControlModifier);
  EXPECT_EQ(again.Count(), 1);
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
}

TEST_F(ListBindingTest, HeadersAndCellsStandOnTheLeft) {
  Fill(1);
  for (int column = 0; column < 6; ++column) {
    const auto header = view_.model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole);
    EXPECT_TRUE(Qt::Alignment(header.toInt()).testFlag(Qt::AlignLeft));
    EXPECT_FALSE(view_.model()->index(0, column).data(Qt::TextAlignmentRole).isValid());
  }
}

TEST_F(ListBindingTest, SelectingInTheProgramSelectsInTheViewOnce) {
  Fill(5);
  const Counter changes(list_.SelectionChanged);
  list_.Select(list_.RowAt(3));
  EXPECT_EQ(view_.SelectedRow(), 3);
  EXPECT_EQ(changes.Count(), 1);
  list_.Select(RowId::kNone);
  EXPECT_EQ(view_.SelectedRow(), std::nullopt);
}

TEST_F(ListBindingTest, ClickBesideTheRowsAndControlClickTakeTheSelectionAway) {
  Fill(3);
  Click(1);
  QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, QPoint(20, view_.viewport()->height() - 5));
  Settle();
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
  Click(1);
  Click(1, Qt::ControlModifier);
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
}

TEST_F(ListBindingTest, RemovingTheSelectedRowSelectsNoOther) {
  Fill(4);
  Click(1);
  list_.RemoveRow(list_.RowAt(1));
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
  EXPECT_EQ(view_.SelectedRow(), std::nullopt);
  EXPECT_EQ(view_.model()->rowCount(), 3);
}

TEST_F(ListBindingTest, RemovingAnotherRowKeepsTheSelection) {
  Fill(4);
  Click(2);
  const RowId selected = list_.SelectedRow();
  list_.RemoveRow(list_.RowAt(0));
  EXPECT_EQ(list_.SelectedRow(), selected);
  EXPECT_EQ(view_.SelectedRow(), 1);
}

TEST_F(ListBindingTest, SortingKeepsTheSelectedRowAndShowsTheArrow) {
  Fill(4);
  Click(0);
  const Counter changes(list_.SelectionChanged);
  SortByName(controls::SortDirection::kDescending);
  EXPECT_EQ(view_.SelectedRow(), 3);
  EXPECT_EQ(changes.Count(), 0);
  EXPECT_TRUE(view_.header()->isSortIndicatorShown());
  EXPECT_EQ(view_.header()->sortIndicatorSection(), 0);
  EXPECT_EQ(view_.header()->sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(ListBindingTest, HeaderClickReachesTheListAndTheArrowIsTheLists) {
  Fill(2);
  SortByName(controls::SortDirection::kAscending);
  int clicked = -1;
  const auto subscription = list_.HeaderClicked.Subscribe([&](int column) { clicked = column; });
  QHeaderView& header = *view_.header();
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                    QPoint(header.sectionViewportPosition(1) + 20, header.height() / 2));
  Settle();
  EXPECT_EQ(clicked, 1);
  // Nobody sorted, so the arrow stays where the list says.
  EXPECT_EQ(header.sortIndicatorSection(), 0);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(ListBindingTest, DoubleClickAndEnterRaiseDoubleClickedForTheRow) {
  Fill(4);
  std::vector<RowId> rows;
  const auto subscription = list_.DoubleClicked.Subscribe([&](RowId id) { rows.push_back(id); });
  Click(1);
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, At(1));
  QTest::keyClick(&view_, Qt::Key_Down);
  QTest::keyClick(&view_, Qt::Key_Return);
  Settle();
  EXPECT_EQ(rows, (std::vector<RowId>{list_.RowAt(1), list_.RowAt(2)}));
}

TEST_F(ListBindingTest, EnterInAnEmptyListDoesNothing) {
  const Counter clicks(list_.DoubleClicked);
  QTest::keyClick(&view_, Qt::Key_Return);
  Settle();
  EXPECT_EQ(clicks.Count(), 0);
}

TEST_F(ListBindingTest, DoubleClickMeansTheRowThatWasClickedEvenWhenSelectingSortsTheList) {
  Fill(3);
  const RowId clicked = list_.RowAt(2);
  RowId reported = RowId::kNone;
  const auto sorts =
      list_.SelectionChanged.Subscribe([&] { SortByName(controls::SortDirection::kDescending); });
  const auto subscription = list_.DoubleClicked.Subscribe([&](RowId id) { reported = id; });
  view_.selectionModel()->select(view_.model()->index(2, 0),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  QTest::keyClick(&view_, Qt::Key_Return);
  Settle();
  EXPECT_EQ(reported, clicked);
}

TEST_F(ListBindingTest, DeleteMeansTheRowThatIsShownSelectedThoughTheMovementHasNotComeToRest) {
  Fill(5);
  Click(0);
  RowId selected = RowId::kNone;
  const auto subscription = list_.DeletePressed.Subscribe([&] { selected = list_.SelectedRow(); });
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, {}, {}, true);
  QApplication::sendEvent(&view_, &press);
  ASSERT_EQ(list_.SelectedRow(), list_.RowAt(0));
  QTest::keyClick(&view_, Qt::Key_Delete);
  Settle();
  EXPECT_EQ(selected, list_.RowAt(1));
}

TEST_F(ListBindingTest, DeleteIsDroppedWhenAnotherRowIsSelectedMeanwhile) {
  Fill(5);
  Click(0);
  const Counter deletions(list_.DeletePressed);
  bool entered = false;
  const auto slow = list_.SelectionChanged.Subscribe([&] {
    if (!std::exchange(entered, true)) Click(3);
  });
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, {}, {}, true);
  QApplication::sendEvent(&view_, &press);
  QTest::keyClick(&view_, Qt::Key_Delete);
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(3));
  EXPECT_EQ(deletions.Count(), 0);
}

TEST_F(ListBindingTest, HeldDeleteDeletesOneRowOnly) {
  Fill(3);
  Click(0);
  const Counter deletions(list_.DeletePressed);
  QTest::keyPress(&view_, Qt::Key_Delete);
  QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Delete, {}, {}, true);
  QApplication::sendEvent(&view_, &repeated);
  Settle();
  EXPECT_EQ(deletions.Count(), 1);
}

TEST_F(ListBindingTest, BlankInsideANameIsALetterOfTheSearch) {
  for (const char16_t* name : {u"Radio 1", u"Radio 2", u"Radio X", u"Radiofon"}) list_.AddRow(Row(name));
  view_.setFocus();
  QTest::keyClicks(&view_, "radio x");
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(2));
}

TEST_F(ListBindingTest, LettersFindRowsByTheirNamesBeginning) {
  for (const char16_t* name : {u"Antenne", u"Berlin", u"Bremen", u"Ärzte", u"Zebra"}) list_.AddRow(Row(name));
  view_.setFocus();
  QTest::keyClicks(&view_, "br");
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(2));
  QTest::qWait(QApplication::keyboardInputInterval() + 50);  // a new word begins after this pause
  QTest::keyClicks(&view_, "b");
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(1));
  QTest::keyClicks(&view_, "b");
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(2));
  QTest::qWait(QApplication::keyboardInputInterval() + 50);
  QTest::keyClicks(&view_, "x");
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(2));
}

TEST_F(ListBindingTest, HeldKeyNotifiesTheListWhenItComesToRest) {
  Fill(10);
  Click(0);
  const Counter changes(list_.SelectionChanged);
  for (int repeat = 0; repeat < 4; ++repeat) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, {}, {}, true);
    QApplication::sendEvent(&view_, &press);
  }
  EXPECT_EQ(view_.SelectedRow(), 4);
  EXPECT_EQ(changes.Count(), 0);
  QKeyEvent release(QEvent::KeyRelease, Qt::Key_Down, {});
  QApplication::sendEvent(&view_, &release);
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(4));
  EXPECT_EQ(changes.Count(), 1);
}

TEST_F(ListBindingTest, HeldKeyThatNobodyReleasesComesToRestToo) {
  Fill(10);
  Click(0);
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, {}, {}, true);
  QApplication::sendEvent(&view_, &press);
  EXPECT_TRUE(WaitFor([&] { return list_.SelectedRow() == list_.RowAt(1); }));
}

TEST_F(ListBindingTest, SelectionByAScreenReaderReachesTheList) {
  Fill(3);
  view_.selectionModel()->select(view_.model()->index(1, 0),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  EXPECT_TRUE(WaitFor([&] { return list_.SelectedRow() == list_.RowAt(1); }));
}

TEST_F(ListBindingTest, WantedRowIsScrolledIntoViewAlsoInAListThatIsShownLater) {
  Fill(500);
  list_.EnsureVisible(list_.RowAt(400));
  EXPECT_TRUE(view_.viewport()->rect().contains(At(400)));
  list_.SetVisible(false);
  list_.EnsureVisible(list_.RowAt(100));
  list_.SetVisible(true);
  EXPECT_TRUE(WaitFor([&] { return view_.viewport()->rect().contains(At(100)); }));
}

TEST_F(ListBindingTest, ClearingEmptiesTheView) {
  Fill(5);
  Click(1);
  list_.Clear();
  EXPECT_EQ(view_.model()->rowCount(), 0);
  EXPECT_EQ(view_.SelectedRow(), std::nullopt);
}

TEST_F(ListBindingTest, RowsComeAndGoInsideASelectionHandler) {
  Fill(5);
  bool entered = false;
  const auto subscription = list_.SelectionChanged.Subscribe([&] {
    if (std::exchange(entered, true)) return;
    QApplication::processEvents();
    list_.Clear();
    Fill(2);
  });
  Click(3);
  EXPECT_EQ(view_.model()->rowCount(), 2);
}

TEST_F(ListBindingTest, NarrowListScrollsSideways) {
  Fill(3);
  fixture_.window->resize(fixture_.window->minimumSize());
  EXPECT_TRUE(WaitFor([&] { return view_.horizontalScrollBar()->maximum() > 0; }));
}

TEST_F(ListBindingTest, TwentyThousandRowsAreQuick) {
  const test_support::ProcessorTime time;
  Fill(20000);
  QApplication::processEvents();
  SortByName(controls::SortDirection::kDescending);
  list_.Select(list_.RowAt(19999));
  list_.EnsureVisible(list_.RowAt(19999));
  QApplication::processEvents();
  QTest::keyClick(&view_, Qt::Key_Home);
  QTest::keyClicks(&view_, "radio 1");
  list_.Clear();
  QApplication::processEvents();
  EXPECT_LT(time.Seconds(), 3 * test_support::kSlowness);
}

TEST_F(ListBindingTest, TwentyThousandRowsAddedOneByOneAreQuick) {
  const test_support::ProcessorTime time;
  for (int number = 0; number < 20000; ++number) list_.AddRow(Row(u"Radio"));
  QApplication::processEvents();
  EXPECT_EQ(view_.model()->rowCount(), 20000);
  EXPECT_LT(time.Seconds(), 5 * test_support::kSlowness);
}

TEST_F(ListBindingTest, RowsShowTheirIconsAndNamesStandBelowEachOther) {
  const ImageListHandle images = fixture_.icons.ImageList_Create(32, 32, kIlcColor32 | kIlcMask, 9, 0);
  list_.SetImageList(static_cast<std::uint32_t>(images));
  list_.AddRow(Row(u"ohne"));
  QImage picture(32, 32, QImage::Format_ARGB32);
  picture.fill(Qt::red);
  const QString file =
      QDir::tempPath() + QStringLiteral("/funkhaus_list_%1.ico").arg(QApplication::applicationPid());
  ASSERT_TRUE(picture.save(file, "ico"));
  const IconHandle icon = fixture_.icons.LoadImageW(FromQt(file), 32, 32);
  QFile::remove(file);
  auto row = Row(u"mit");
  row.icon = fixture_.icons.ImageList_AddIcon(images, icon);
  list_.AddRow(row);
  const auto shown = [&](int position) {
    return view_.model()->index(position, 0).data(Qt::DecorationRole).value<QPixmap>();
  };
  EXPECT_EQ(shown(1).toImage().pixelColor(16, 16), QColor(Qt::red));
  EXPECT_EQ(shown(0).size(), shown(1).size());
}

}  // namespace
}  // namespace platform::qt
