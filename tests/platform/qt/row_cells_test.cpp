// How the cells of a list are painted: icons, stars, shortened addresses, one height for all rows.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QHeaderView>

#include "platform/qt/initial_icon.h"
#include "platform/qt/row_delegate.h"
#include "platform/qt/row_icons.h"
#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class RowCells : public ::testing::Test {
 protected:
  RowCells() { opened_ = fixture_.Open(); }
  void SetUp() override { ASSERT_TRUE(opened_); }

  void Add(const Text& name, const Text& link = u"", const Text& favourite = u"") {
    controls::ListRow row;
    row.cells = {name, u"Rock", link, favourite};
    list_.AddRow(std::move(row));
  }
  QModelIndex At(int row, std::size_t column) const {
    return view_.model()->index(row, static_cast<int>(column));
  }
  QImage Picture(int row, std::size_t column) const {
    QApplication::processEvents();
    return view_.viewport()->grab(view_.visualRect(At(row, column))).toImage();
  }
  /// Where something is drawn in a cell, seen against its upper left corner.
  static QRect Ink(const QImage& picture) {
    QRect ink;
    const QColor ground = picture.pixelColor(1, 1);
    for (int y = 1; y < picture.height() - 1; ++y) {
      for (int x = 1; x < picture.width() - 1; ++x) {
        if (Contrast(picture.pixelColor(x, y), ground) > 1.5) ink |= QRect(x, y, 1, 1);
      }
    }
    return ink;
  }
  /// A cell's text as it is cut for 100 pixels.
  QString Shown(std::size_t column) const {
    QStyleOptionViewItem cell;
    cell.textElideMode = view_.textElideMode();
    static_cast<const RowDelegate*>(view_.itemDelegate())->initStyleOption(&cell, At(0, column));
    return QFontMetrics(cell.font).elidedText(cell.text, cell.textElideMode, 100);
  }

  WindowFixture fixture_;
  controls::ListView& list_ = fixture_.form.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");

 private:
  bool opened_ = false;
};

TEST_F(RowCells, FavouriteIsAStarInTheColoursOfItsRow) {
  Add(u"A", u"", u"1");
  Add(u"B", u"", u"");
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    for (const controls::RowId selected : {controls::RowId::kNone, list_.RowAt(0)}) {
      list_.Select(selected);
      const QImage star = Picture(0, app::kFavouriteCell);
      EXPECT_GE(StrongestContrast(star, star.rect(), star.pixelColor(1, 1)), 3.0);
      const QRect ink = Ink(star);
      EXPECT_NEAR(ink.width(), ink.height(), 2);
      EXPECT_GE(ink.width(), 10);
    }
  }
  EXPECT_TRUE(Ink(Picture(1, app::kFavouriteCell)).isEmpty());
}

TEST_F(RowCells, FavouritesCellIsTheSameTextForSortingAndForAScreenReader) {
  Add(u"A", u"", u"1");
  EXPECT_EQ(At(0, app::kFavouriteCell).data().toString(), "1");
  QApplication::processEvents();
  QAccessibleInterface* view = QAccessible::queryAccessibleInterface(&view_);
  EXPECT_EQ(view->tableInterface()->cellAt(0, app::kFavouriteCell)->text(QAccessible::Name), "1");
}

TEST_F(RowCells, AnotherTextInTheFavouritesCellIsShownAsItStands) {
  Add(u"A", u"", u"1");
  Add(u"B", u"", u"11");
  Add(u"C", u"", u"ja");
  EXPECT_EQ(Shown(app::kFavouriteCell), "");
  list_.RemoveRow(list_.RowAt(0));
  EXPECT_EQ(Shown(app::kFavouriteCell), "11");
  list_.RemoveRow(list_.RowAt(0));
  EXPECT_EQ(Shown(app::kFavouriteCell), "ja");
}

TEST_F(RowCells, OneInAnotherColumnIsNoStar) {
  Add(u"1");
  EXPECT_EQ(Shown(app::kNameCell), "1");
}

TEST_F(RowCells, LinksAreCutInTheirMiddleAndNamesAtTheirEnd) {
  Add(u"Ein Sender mit einem langen Namen", u"http://radio.example/ganz/weit/unten/live.mp3");
  EXPECT_TRUE(Shown(app::kLinkCell).startsWith("http"));
  EXPECT_TRUE(Shown(app::kLinkCell).endsWith("mp3"));
  EXPECT_TRUE(Shown(app::kNameCell).startsWith("Ein Sender"));
  EXPECT_TRUE(Shown(app::kNameCell).endsWith(QChar(0x2026)));
}

TEST_F(RowCells, StationWithoutAnIconHasItsInitialOnItsColour) {
  Add(u"radio Lichtung");
  const QImage picture = Picture(0, app::kNameCell);
  const QRect icon = Ink(picture.copy(0, 0, 38, picture.height()));
  EXPECT_NEAR(icon.width(), 30, 2);
  EXPECT_EQ(picture.pixelColor(icon.left() + 3, icon.center().y()).name(),
            IconColorOf("Radio Lichtung").name());
}

TEST_F(RowCells, IconKeepsItsColoursInASelectedRow) {
  Add(u"Radio");
  fixture_.Find("Command1").setFocus();
  const QColor plain = Picture(0, app::kNameCell).pixelColor(6, 19);
  list_.Select(list_.RowAt(0));
  EXPECT_EQ(Picture(0, app::kNameCell).pixelColor(6, 19), plain);
}

TEST_F(RowCells, RowsHaveOneHeightWhateverTheirIconAndScript) {
  const char16_t* const names[] = {u"Radio", u"", u"日本放送", u"ཨོཾ་མ་ཎི", u"ﷺ", u"Z̸̢̛͎̘̓a̷̡̰͛l̵̨̳̿g̴̡͐o̸͚͝", u"🎵🎶"};
  for (const char16_t* first : names) {
    list_.Clear();
    Add(first);
    for (const char16_t* name : names) Add(name);
    for (int row = 0; row < static_cast<int>(list_.Count()); ++row) {
      EXPECT_EQ(view_.visualRect(At(row, 0)).height(), 38) << row;
    }
  }
}

TEST_F(RowCells, IconsGrowWithTheDesktopsFont) {
  Add(u"Radio");
  const QFont font = QApplication::font();
  QFont large = font;
  large.setPointSizeF(font.pointSizeF() * 2);
  QApplication::setFont(large);
  QApplication::processEvents();
  const int side = view_.iconSize().width();
  EXPECT_GE(side, 56);
  EXPECT_EQ(At(0, 0).data(Qt::DecorationRole).value<QPixmap>().deviceIndependentSize(), QSizeF(side, side));
  EXPECT_GE(view_.visualRect(At(0, 0)).height(), side + 6);
  QApplication::setFont(font);
  QApplication::processEvents();
  EXPECT_EQ(view_.iconSize().width(), 32);
  EXPECT_EQ(At(0, 0).data(Qt::DecorationRole).value<QPixmap>().width(), 32);
}

TEST_F(RowCells, IconsAreMadeForTheRowsThatAreSeenOnly) {
  const RowIcons icons(fixture_.icons);
  for (int number = 0; number < 3 * RowIcons::kMostKept; ++number) {
    controls::ListRow row;
    row.cells.Set(0, FromQt(QString("%1 Radio").arg(QChar(0x4e00 + number))));
    EXPECT_FALSE(icons.Of(list_, row).isNull());
    ASSERT_LE(icons.Kept(), RowIcons::kMostKept);
  }
  EXPECT_EQ(icons.Kept(), RowIcons::kMostKept);
}

TEST_F(RowCells, StationsOfOneInitialAndColourShareAnIcon) {
  const RowIcons icons(fixture_.icons);
  controls::ListRow row;
  row.cells.Set(0, u"Radio");
  const auto first = icons.Of(list_, row).cacheKey();
  row.cells.Set(0, u"RADIO");
  EXPECT_EQ(icons.Of(list_, row).cacheKey(), first);
}

}  // namespace
}  // namespace platform::qt
