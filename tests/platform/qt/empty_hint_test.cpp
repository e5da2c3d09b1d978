// What a list without rows says in its middle.
#include "platform/qt/empty_hint.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QHeaderView>
#include <QScrollBar>

#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class EmptyHintTest : public ::testing::Test {
 protected:
  EmptyHintTest() {
    opened_ = fixture_.Open() && WaitFor([this] { return Hint().isVisible(); });
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  QWidget& Hint(const char* list = "SymbolListview") const {
    return *fixture_.Find(list).findChild<QWidget*>(QStringLiteral("empty_hint"));
  }
  static QString Description(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Description);
  }
  controls::RowId AddRow() { return list_.AddRow({}); }
  /// What is painted in the viewport, as the smallest rectangle around it.
  QRect Painted() const {
    const QImage picture = view_.grab(view_.viewport()->geometry()).toImage();
    const QColor ground = picture.pixelColor(2, 2);
    QRect painted;
    for (int y = 2; y < picture.height() - 2; ++y) {
      for (int x = 2; x < picture.width() - 2; ++x) {
        if (picture.pixelColor(x, y) != ground) painted |= QRect(x, y, 1, 1);
      }
    }
    return painted;
  }

  WindowFixture fixture_;
  controls::ListView& list_ = fixture_.form.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");

 private:
  bool opened_ = false;
};

TEST_F(EmptyHintTest, EmptyListSaysInItsMiddleHowToBegin) {
  const QRect painted = Painted();
  const QRect viewport = view_.viewport()->rect();
  EXPECT_GT(painted.width(), 200);
  EXPECT_LE((painted.center() - viewport.center()).manhattanLength(), 8);
  EXPECT_EQ(Description(view_), ToQt(list_.EmptyText()));
  EXPECT_FALSE(Description(view_).isEmpty());
}

TEST_F(EmptyHintTest, GoesAtOnceWhenARowComesAndComesBackWhenTheLastOneGoes) {
  const controls::RowId row = AddRow();
  EXPECT_FALSE(Hint().isVisible());
  EXPECT_EQ(Description(view_), "");
  list_.RemoveRow(row);
  EXPECT_TRUE(WaitFor([&] { return Hint().isVisible(); }));
  EXPECT_NE(Description(view_), "");
}

TEST_F(EmptyHintTest, ListThatIsLoadedAnewNeverSaysThatItIsEmpty) {
  AddRow();
  list_.Clear();
  EXPECT_FALSE(Hint().isVisible());
  EXPECT_EQ(Description(view_), "");
  AddRow();
  for (int round = 0; round < 5; ++round) QTest::qWait(5);
  EXPECT_FALSE(Hint().isVisible());
  EXPECT_EQ(Description(view_), "");
}

TEST_F(EmptyHintTest, WakesNobodyOnceItIsShownOrGone) {
  const auto timers = [this] {
    return QAbstractEventDispatcher::instance()->registeredTimers(&Hint()).size();
  };
  EXPECT_EQ(timers(), 0);
  AddRow();
  EXPECT_EQ(timers(), 0);
  list_.Clear();
  EXPECT_EQ(timers(), 1);
  AddRow();
  EXPECT_EQ(timers(), 0);
}

TEST_F(EmptyHintTest, FilteredListHasASentenceOfItsOwn) {
  list_.SetVisible(false);
  fixture_.form.ExplorerListFilter.SetVisible(true);
  ASSERT_TRUE(WaitFor([&] { return Hint("ExplorerListFilter").isVisible(); }));
  EXPECT_EQ(Description(fixture_.Find("ExplorerListFilter")),
            ToQt(fixture_.form.ExplorerListFilter.EmptyText()));
}

TEST_F(EmptyHintTest, OtherWordsAreFollowed) {
  list_.SetEmptyText(u"The list is empty.");
  EXPECT_TRUE(WaitFor([&] { return Description(view_) == "The list is empty."; }));
  list_.SetEmptyText(u"");
  EXPECT_FALSE(Hint().isVisible());
}

TEST_F(EmptyHintTest, WrapsAndIsWholeInTheSmallestWindowAndDoesNotScrollWithTheColumns) {
  fixture_.window->resize(fixture_.window->minimumSize());
  ASSERT_TRUE(WaitFor([&] { return Hint().geometry() == view_.viewport()->geometry(); }));
  const QRect painted = Painted();
  EXPECT_GT(painted.height(), 2 * view_.fontMetrics().height()) << "several lines";
  EXPECT_TRUE(view_.viewport()->rect().adjusted(4, 4, -4, -4).contains(painted));
  view_.header()->resizeSection(0, 2000);
  view_.horizontalScrollBar()->setValue(view_.horizontalScrollBar()->maximum());
  ASSERT_GT(view_.horizontalScrollBar()->value(), 0);
  QApplication::processEvents();
  EXPECT_EQ(Painted(), painted);
}

TEST_F(EmptyHintTest, StandsOutFromItsGroundInEveryColours) {
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    QApplication::processEvents();
    const QImage picture = view_.grab(view_.viewport()->geometry()).toImage();
    const QColor ground = picture.pixelColor(2, 2);
    EXPECT_EQ(ground, palette.color(QPalette::Base));
    EXPECT_GE(StrongestContrast(picture, picture.rect().adjusted(4, 4, -4, -4), ground), 4.5);
  }
}

TEST_F(EmptyHintTest, MouseReachesTheListAllTheSame) {
  EXPECT_EQ(view_.childAt(view_.viewport()->geometry().center()), view_.viewport());
  EXPECT_EQ(Hint().focusPolicy(), Qt::NoFocus);
}

}  // namespace
}  // namespace platform::qt
