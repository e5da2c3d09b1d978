// How a marked row looks and what it says about itself.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QDir>

#include "platform/qt/row_delegate.h"
#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using controls::RowId;
using controls::RowMark;

class RowMarks : public ::testing::Test {
 protected:
  RowMarks() {
    opened_ = fixture_.Open();
    for (const char16_t* name : {u"Radio A", u"Radio B", u"Radio C"}) {
      controls::ListRow row;
      row.cells.Set(0, name);
      row.cells.Set(1, u"Genre");
      ids_.push_back(list_.AddRow(std::move(row)));
    }
    fixture_.Find("Command1").setFocus();
    QApplication::processEvents();
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  /// Gives the list an icon column; the second row gets a red icon.
  void AddIcons() {
    QImage picture(32, 32, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    const QString file =
        QDir::tempPath() + QString("/funkhaus_marks_%1.ico").arg(QApplication::applicationPid());
    ASSERT_TRUE(picture.save(file, "ico"));
    const ImageListHandle images = fixture_.icons.ImageList_Create(32, 32, kIlcColor32 | kIlcMask, 9, 0);
    controls::ListRow row = list_.Rows()[1];
    row.icon = fixture_.icons.ImageList_AddIcon(images, fixture_.icons.LoadImageW(FromQt(file), 32, 32));
    QFile::remove(file);
    list_.SetImageList(static_cast<std::uint32_t>(images));
    list_.RemoveRow(ids_[1]);
    ids_[1] = list_.AddRow(row);
    std::swap(ids_[1], ids_[2]);
    QApplication::processEvents();
  }
  QRect Cell(int row, int column = 0) const { return view_.visualRect(view_.model()->index(row, column)); }
  /// The first row's name, beside its icon.
  QRect NamePlace() const { return Cell(0).adjusted(view_.iconSize().width() + 6, 0, 0, 0); }
  QImage Picture(const QRect& place) const {
    QApplication::processEvents();
    // All of it is painted, so that a cell would be seen to spoil its neighbour.
    return view_.viewport()->grab().toImage().copy(place);
  }
  /// How many pixels of a cell's text are drawn; a bold text has more of them.
  int Ink(const QRect& place) const {
    const QImage picture = Picture(place);
    const QColor ground = picture.pixelColor(picture.width() - 2, 1);
    int ink = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) ink += Contrast(picture.pixelColor(x, y), ground) > 2 ? 1 : 0;
    }
    return ink;
  }
  /// A place of the symbol, whose square of 16 units is in the lower right corner of the red icon.
  static QPoint SignPlace(const QImage& plain, double across, double down) {
    QRect icon;
    for (int y = 0; y < plain.height(); ++y) {
      for (int x = 0; x < plain.width(); ++x) {
        if (plain.pixelColor(x, y) == QColor(Qt::red)) icon |= QRect(x, y, 1, 1);
      }
    }
    const double unit = icon.width() * 0.6 / 16;
    return {static_cast<int>(icon.right() + 1 - (16 - across) * unit),
            static_cast<int>(icon.bottom() + 1 - (16 - down) * unit)};
  }
  QString Name(int row, int column = 0) const {
    QAccessibleInterface* view = QAccessible::queryAccessibleInterface(&view_);
    return view->tableInterface()->cellAt(row, column)->text(QAccessible::Name);
  }

  WindowFixture fixture_;
  controls::ListView& list_ = fixture_.form.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");
  std::vector<RowId> ids_;

 private:
  bool opened_ = false;
};

TEST_F(RowMarks, PlayingRowIsBoldInEveryCellAndTheOthersAreNot) {
  const int name = Ink(NamePlace());
  const int genre = Ink(Cell(0, 1));
  const QImage other = Picture(Cell(1));
  list_.SetMark(ids_[0], RowMark::kPlaying);
  EXPECT_GT(Ink(NamePlace()), name + name / 8);
  EXPECT_GT(Ink(Cell(0, 1)), genre + genre / 8);
  EXPECT_EQ(Picture(Cell(1)), other);
  list_.SetMark(ids_[0], RowMark::kNone);
  EXPECT_EQ(Ink(NamePlace()), name);
}

TEST_F(RowMarks, WaitingRowLooksOtherwiseThanAPlayingOne) {
  list_.SetMark(ids_[0], RowMark::kPlaying);
  const QImage playing = Picture(Cell(0, 1));
  list_.SetMark(ids_[0], RowMark::kWaiting);
  EXPECT_NE(Picture(Cell(0, 1)), playing);
}

TEST_F(RowMarks, IconBearsASignThatSaysWhich) {
  AddIcons();
  const QRect icon = QRect(Cell(2).topLeft(), QSize(44, Cell(2).height()));
  const QImage plain = Picture(icon);
  const int genre = Ink(Cell(2, 1));
  list_.SetMark(list_.RowAt(2), RowMark::kPlaying);
  const QImage playing = Picture(icon);
  EXPECT_NE(playing, plain);
  EXPECT_GT(Ink(Cell(2, 1)), genre) << "the cells beside it are painted in their own places";
  // A place within the triangle that points on, but between the dots.
  const QPoint place = SignPlace(plain, 7, 6);
  EXPECT_EQ(playing.pixelColor(place), view_.palette().color(QPalette::Base));
  list_.SetMark(list_.RowAt(2), RowMark::kWaiting);
  EXPECT_EQ(Picture(icon).pixelColor(place), view_.palette().color(QPalette::Text));
  EXPECT_NE(Picture(icon), plain);
}

TEST_F(RowMarks, RowWithoutAnIconOfItsOwnBearsTheSignInTheIconsPlace) {
  AddIcons();
  const QRect icon = QRect(Cell(0).topLeft(), QSize(36, Cell(0).height()));
  const QImage plain = Picture(icon);
  list_.SetMark(list_.RowAt(0), RowMark::kPlaying);
  EXPECT_NE(Picture(icon), plain);
}

TEST_F(RowMarks, SignStandsOutFromIconAndSelectionInEveryColours) {
  AddIcons();
  list_.SetMark(list_.RowAt(0), RowMark::kPlaying);
  list_.Select(list_.RowAt(0));
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    // The row has no icon of its own, so the sign lies on the selection.
    const QImage picture = Picture(QRect(Cell(0).topLeft(), QSize(36, Cell(0).height())));
    const QColor ground = picture.pixelColor(2, 2);
    EXPECT_GE(StrongestContrast(picture, picture.rect(), ground), 3.0) << ground.name().toStdString();
  }
}

TEST_F(RowMarks, RowsKeepTheirHeightAlsoWhenTheFirstOneIsMarked) {
  const int height = Cell(0).height();
  const QModelIndex first = view_.model()->index(0, 0);
  for (const RowMark mark : {RowMark::kPlaying, RowMark::kWaiting}) {
    list_.SetMark(ids_[0], mark);
    view_.doItemsLayout();
    for (int row = 0; row < 3; ++row) EXPECT_EQ(Cell(row).height(), height);
    EXPECT_EQ(view_.itemDelegate()->sizeHint({}, first).height(),
              view_.itemDelegate()->sizeHint({}, view_.model()->index(1, 0)).height());
  }
}

TEST_F(RowMarks, CellsStayAsTheyAre) {
  list_.SetMark(ids_[0], RowMark::kPlaying);
  EXPECT_EQ(view_.model()->index(0, 0).data().toString(), "Radio A");
  QTest::keyClicks(&view_, "Radio A");
  EXPECT_EQ(view_.SelectedRow(), 0);
}

TEST_F(RowMarks, MarkedTextIsMeasuredInItsOwnFont) {
  const QModelIndex cell = view_.model()->index(0, 0);
  list_.SetMark(ids_[0], RowMark::kNone);
  const int plain = view_.sizeHintForIndex(cell).width();
  list_.SetMark(ids_[0], RowMark::kPlaying);
  EXPECT_GT(view_.sizeHintForIndex(cell).width(), plain);
}

TEST_F(RowMarks, MarkIsSaidInTheProgramsWords) {
  EXPECT_EQ(Name(0), "Radio A");
  list_.SetMark(ids_[0], RowMark::kPlaying);
  EXPECT_EQ(Name(0), "Radio A, wird abgespielt");
  EXPECT_EQ(Name(0, 1), "Genre");
  EXPECT_EQ(Name(1), "Radio B");
  list_.SetMark(ids_[0], RowMark::kWaiting);
  list_.SetMarkText(RowMark::kWaiting, u"is waiting");
  EXPECT_EQ(Name(0), "Radio A, is waiting");
}

TEST_F(RowMarks, RowMayBeMarkedBeforeTheViewKnowsIt) {
  // A subscriber from before the window marks rows in the middle of their arrival.
  WindowFixture fixture;
  app::Form1 form;
  const auto marks = form.SymbolListview.RowsAdded.Subscribe([&](std::size_t first, std::size_t /*count*/) {
    form.SymbolListview.SetMark(form.SymbolListview.RowAt(first), RowMark::kPlaying);
  });
  for (const auto& column : fixture.form.SymbolListview.Columns()) form.SymbolListview.AddColumn(column);
  const PlayerWindow window(form, fixture.icons, fixture.loop);
  auto* model = window.findChild<ReportView*>(QStringLiteral("SymbolListview"))->model();
  int unknown = 0;
  QObject::connect(model, &QAbstractItemModel::dataChanged, model, [&](const QModelIndex& changed) {
    unknown += changed.isValid() && changed.row() < model->rowCount() ? 0 : 1;
  });
  form.SymbolListview.AddRow(list_.Rows()[0]);
  EXPECT_EQ(unknown, 0);
  EXPECT_EQ(model->index(0, 0).data(RowDelegate::kMarkRole).toInt(), 1);
}

TEST_F(RowMarks, SameMarkAgainPaintsNothing) {
  list_.SetMark(ids_[0], RowMark::kPlaying);
  QApplication::processEvents();
  int changed = 0;
  QObject::connect(view_.model(), &QAbstractItemModel::dataChanged, &view_, [&] { ++changed; });
  for (int tick = 0; tick < 3; ++tick) list_.SetMark(ids_[0], RowMark::kPlaying);
  EXPECT_EQ(changed, 0);
  list_.SetMark(ids_[0], RowMark::kWaiting);
  EXPECT_EQ(changed, 1);
}

}  // namespace
}  // namespace platform::qt
