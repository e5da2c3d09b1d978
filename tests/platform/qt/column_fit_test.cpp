#include "platform/qt/column_fit.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class ColumnFitTest : public ::testing::Test {
 protected:
  ColumnFitTest() {
    opened_ = fixture_.Open();
    Resize(1200);
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  /// Until the list has `width` for its columns.
  void Resize(int width) {
    const int frame = fixture_.window->width() - view_.viewport()->width();
    fixture_.window->resize(width + frame, 800);
    EXPECT_TRUE(WaitFor([&] { return view_.viewport()->width() == width; }));
  }
  std::vector<int> Widths(const ReportView& view) const {
    std::vector<int> widths;
    for (int column = 0; column < view.header()->count(); ++column)
      widths.push_back(view.columnWidth(column));
    return widths;
  }
  std::vector<int> Widths() const { return Widths(view_); }
  int Edge(int column) const {
    return view_.header()->sectionViewportPosition(column) + view_.columnWidth(column) - 1;
  }
  void Send(QEvent::Type type, int across, Qt::MouseButton button, Qt::MouseButtons buttons) {
    QWidget* header = view_.header()->viewport();
    const QPointF place(across, header->height() / 2.0);
    QMouseEvent event(type, place, header->mapToGlobal(place), button, buttons, {});
    QApplication::sendEvent(header, &event);
  }
  void Press(int across) { Send(QEvent::MouseButtonPress, across, Qt::LeftButton, Qt::LeftButton); }
  void Move(int across) { Send(QEvent::MouseMove, across, Qt::NoButton, Qt::LeftButton); }
  void Release(int across) { Send(QEvent::MouseButtonRelease, across, Qt::LeftButton, Qt::NoButton); }
  /// Drags the right edge of a column.
  void Drag(int column, int by) {
    const int from = Edge(column);
    Press(from);
    Move(from + by / 2);
    Move(from + by);
    Release(from + by);
    Settle();
  }

  WindowFixture fixture_;
  controls::ListView& list_ = fixture_.form.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");

 private:
  bool opened_ = false;
};

using Pixels = std::vector<int>;

TEST_F(ColumnFitTest, LinkAndTitleShareTheRoomThatTheOthersLeave) {
  EXPECT_EQ(Widths(), (Pixels{300, 120, 230, 120, 310, 120}));
  Resize(1700);
  EXPECT_EQ(Widths(), (Pixels{300, 120, 480, 120, 560, 120}));
  Resize(900);
  EXPECT_EQ(Widths(), (Pixels{300, 120, 120, 120, 200, 120}));
  EXPECT_EQ(view_.horizontalScrollBar()->maximum(), 80);
}

TEST_F(ColumnFitTest, ScrollBarThatComesTakesItsRoomFromThem) {
  std::vector<controls::ListRow> rows(100);
  list_.AddRows(std::move(rows));
  QApplication::processEvents();
  EXPECT_TRUE(WaitFor([this] { return view_.viewport()->width() < 1200; }));
  EXPECT_EQ(view_.header()->length(), view_.viewport()->width());
  EXPECT_EQ(view_.horizontalScrollBar()->maximum(), 0);
}

TEST_F(ColumnFitTest, DraggedColumnKeepsTheUsersWidthAndTheOthersShareTheRest) {
  Drag(1, 80);
  EXPECT_EQ(list_.Columns()[1].users_width, 200);
  EXPECT_EQ(Widths(), (Pixels{300, 200, 190, 120, 270, 120}));
  Resize(1400);
  EXPECT_EQ(Widths(), (Pixels{300, 200, 290, 120, 370, 120}));
  Drag(2, -150);
  EXPECT_EQ(Widths(), (Pixels{300, 200, 140, 120, 520, 120}));
  EXPECT_EQ(list_.Columns()[2].users_width, 140);
  EXPECT_EQ(list_.Columns()[4].users_width, std::nullopt);
}

TEST_F(ColumnFitTest, HeaderReachesTheRightEdgeThoughTheUserHasDraggedEveryColumn) {
  for (const int column : {4, 2}) Drag(column, -60);
  EXPECT_EQ(view_.header()->length(), 1200);
  EXPECT_EQ(list_.Columns()[5].users_width, std::nullopt) << "only what the user has dragged is the user's";
  Resize(1500);
  EXPECT_EQ(view_.header()->length(), 1500);
  EXPECT_EQ(view_.columnWidth(2), 230);
  EXPECT_EQ(view_.columnWidth(4), *list_.Columns()[4].users_width);
}

TEST_F(ColumnFitTest, WhileAColumnIsDraggedItsEdgeStaysUnderThePointer) {
  const int from = Edge(4);
  Press(from);
  for (const int by : {10, 60, -40, 25}) {
    Move(from + by);
    EXPECT_EQ(Edge(4), from + by);
    EXPECT_EQ(view_.columnWidth(2), 230) << "what lies before it does not move";
    EXPECT_EQ(list_.Columns()[4].users_width, std::nullopt);
  }
  Release(from + 25);
  Settle();
  EXPECT_EQ(list_.Columns()[4].users_width, 335);
  EXPECT_EQ(view_.columnWidth(4), 335);
  EXPECT_EQ(view_.header()->length(), 1200);
}

TEST_F(ColumnFitTest, DoubleClickOnAnEdgeFitsTheColumnToItsTextsForGood) {
  controls::ListRow row;
  row.cells.Set(1, u"Ein Genre mit einem langen Namen, den niemand kennt");
  list_.AddRow(std::move(row));
  const int edge = Edge(1);
  Press(edge);
  Release(edge);
  Send(QEvent::MouseButtonDblClick, edge, Qt::LeftButton, Qt::LeftButton);
  Release(edge);
  Settle();
  EXPECT_GT(view_.columnWidth(1), 200);
  EXPECT_EQ(list_.Columns()[1].users_width, view_.columnWidth(1));
}

TEST_F(ColumnFitTest, OtherListHasTheSameWidthWhenItIsShown) {
  Drag(1, 80);
  EXPECT_EQ(fixture_.form.ExplorerListFilter.Columns()[1].users_width, 200);
  fixture_.form.SymbolListview.SetVisible(false);
  fixture_.form.ExplorerListFilter.SetVisible(true);
  QApplication::processEvents();
  const auto& other = fixture_.Find<ReportView>("ExplorerListFilter");
  EXPECT_EQ(Widths(other), (Pixels{300, 200, 190, 120, 270, 120}));
}

TEST_F(ColumnFitTest, WidthsGrowWithTheDesktopsFontTheUsersToo) {
  Drag(1, 80);
  const QFont font = QApplication::font();
  QFont large = font;
  large.setPointSizeF(font.pointSizeF() * 2);
  QApplication::setFont(large);
  QApplication::processEvents();
  EXPECT_NEAR(view_.columnWidth(1), view_.columnWidth(0) * 2 / 3, 1);
  EXPECT_GT(view_.columnWidth(1), 350);
  EXPECT_EQ(list_.Columns()[1].users_width, 200);
  QApplication::setFont(font);
  QApplication::processEvents();
  EXPECT_EQ(view_.columnWidth(1), 200);
}

TEST_F(ColumnFitTest, DragInsideAWaitIsShownAtOnceAndTheListKnowsItAfterwards) {
  QObject context;
  fixture_.loop.HandOver(context, [this] {
    const int from = Edge(1);
    Press(from);
    Move(from + 80);
    Release(from + 80);
    fixture_.loop.ProcessPaintMessages();
    EXPECT_EQ(list_.Columns()[1].users_width, std::nullopt);
    Resize(1300);
    EXPECT_EQ(view_.columnWidth(1), 200);
  });
  Settle();
  EXPECT_EQ(list_.Columns()[1].users_width, 200);
  EXPECT_EQ(view_.header()->length(), 1300);
}

TEST_F(ColumnFitTest, RowsAndColumnsThatChangeInTheMiddleOfADragHarmNothing) {
  const int from = Edge(1);
  Press(from);
  Move(from + 40);
  list_.AddRows(std::vector<controls::ListRow>(50));
  list_.Clear();
  list_.SetColumnCaption(1, u"Musik");
  list_.DragColumn(1, 90);
  Move(from + 80);
  EXPECT_EQ(view_.columnWidth(1), 200);
  Release(from + 80);
  Settle();
  EXPECT_EQ(list_.Columns()[1].users_width, 200);
}

TEST_F(ColumnFitTest, DragThatAWindowInterruptsEndsThere) {
  const int from = Edge(1);
  Press(from);
  Move(from + 80);
  list_.SetVisible(false);
  Settle();
  EXPECT_EQ(list_.Columns()[1].users_width, 200);
  list_.SetVisible(true);
  Send(QEvent::MouseMove, from + 300, Qt::NoButton, Qt::NoButton);
  Settle();
  EXPECT_EQ(list_.Columns()[1].users_width, 200);
}

TEST_F(ColumnFitTest, WindowThatClosesInTheMiddleOfADragHarmsNothing) {
  Press(Edge(1));
  Move(Edge(1) + 80);
  fixture_.window.reset();
  Settle();
  EXPECT_EQ(list_.Columns()[1].users_width, std::nullopt);
}

}  // namespace
}  // namespace platform::qt
