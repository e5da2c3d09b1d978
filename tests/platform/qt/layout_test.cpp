// The main window at several sizes and with several fonts: nothing is cut and nothing covers anything else.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyleOptionButton>
#include <ostream>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// Another application font for the time of a test.
class WithFontSize {
 public:
  explicit WithFontSize(int points) : former_(QApplication::font()) {
    QFont font = former_;
    font.setPointSize(points);
    QApplication::setFont(font);
  }
  ~WithFontSize() { QApplication::setFont(former_); }

 private:
  const QFont former_;
};

QRect InWindow(const QWidget& widget, const QWidget& window) {
  return {widget.mapTo(&window, QPoint(0, 0)), widget.size()};
}

/// The controls' widgets directly in `parent`.
std::vector<QWidget*> Siblings(const QWidget& parent) {
  std::vector<QWidget*> result;
  for (QWidget* child : parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (!child->objectName().isEmpty() && !child->objectName().startsWith("qt_")) result.push_back(child);
  }
  return result;
}

void ExpectNoOverlap(const QWidget& parent) {
  const auto siblings = Siblings(parent);
  ASSERT_FALSE(siblings.empty());
  for (std::size_t first = 0; first < siblings.size(); ++first) {
    EXPECT_TRUE(parent.rect().contains(siblings[first]->geometry()))
        << siblings[first]->objectName().toStdString() << " lies outside";
    for (std::size_t second = first + 1; second < siblings.size(); ++second) {
      EXPECT_FALSE(siblings[first]->geometry().intersects(siblings[second]->geometry()))
          << siblings[first]->objectName().toStdString() << " and "
          << siblings[second]->objectName().toStdString();
    }
  }
}

void ExpectButtonTextFits(const QPushButton& button) {
  if (button.text().size() <= 1) return;  // drawn as a glyph
  QStyleOptionButton option;
  option.initFrom(&button);
  const QRect inside = button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button);
  const QString name = button.objectName();
  EXPECT_LE(button.fontMetrics().horizontalAdvance(button.text()), inside.width()) << name.toStdString();
  EXPECT_LE(button.fontMetrics().height(), inside.height()) << name.toStdString();
}

void ExpectTextsFit(const QWidget& parent) {
  for (const auto* button : parent.findChildren<QPushButton*>()) ExpectButtonTextFits(*button);
  for (const auto* box : parent.findChildren<QCheckBox*>()) {
    EXPECT_LE(box->sizeHint().width(), box->width()) << box->objectName().toStdString();
    EXPECT_LE(box->sizeHint().height(), box->height()) << box->objectName().toStdString();
  }
  for (auto* label : parent.findChildren<QLabel*>()) {
    if (auto* fitted = dynamic_cast<FittedLabel*>(label)) {
      EXPECT_TRUE(fitted->ShowsAll()) << label->objectName().toStdString();
      continue;
    }
    EXPECT_LE(label->sizeHint().width(), label->width()) << label->objectName().toStdString();
    EXPECT_LE(label->sizeHint().height(), label->height()) << label->objectName().toStdString();
  }
  for (const auto* edit : parent.findChildren<QLineEdit*>()) {
    EXPECT_LE(edit->fontMetrics().height(), edit->height() - 4) << edit->objectName().toStdString();
  }
}

void ExpectWellLaidOut(const WindowFixture& fixture) {
  const PlayerWindow& window = *fixture.window;
  const QRect list = InWindow(fixture.Find("SymbolListview"), window);
  const QRect panel = InWindow(fixture.Find("Frame1"), window);
  const QRect first_bar = InWindow(fixture.Find("ProgressBar1_0"), window);
  const QRect second_bar = InWindow(fixture.Find("ProgressBar1_1"), window);
  const QRect information = InWindow(fixture.Find("Frame3"), window);
  const QRect whole = InWindow(fixture.Find("Frame2"), window);
  const QRect strip = InWindow(fixture.Find("StatusLine"), window);
  EXPECT_LT(whole.bottom(), strip.top());
  EXPECT_EQ(strip.bottom(), window.height() - 1);
  EXPECT_LT(list.bottom(), panel.top());
  EXPECT_LT(panel.right(), first_bar.left());
  EXPECT_LT(first_bar.right(), second_bar.left());
  for (const QRect& part : {list, panel, first_bar, second_bar, information}) {
    EXPECT_TRUE(whole.contains(part));
  }
  EXPECT_GT(list.height(), 100);
  const bool beside = fixture.form.form.GetPlace().width >= 13600;
  EXPECT_EQ(information.left() > second_bar.right(), beside);
  EXPECT_EQ(information.intersects(list), !beside);
  EXPECT_FALSE(information.intersects(panel));
  for (const char* name : {"Frame1", "frSav", "Frame3"}) ExpectNoOverlap(fixture.Find(name));
  ExpectTextsFit(window);
}

struct Case {
  int width, height, points;
};

/// What a case is called in the list of tests.
std::string NameOf(const ::testing::TestParamInfo<Case>& info) {
  const Case& one = info.param;
  return std::to_string(one.width) + "x" + std::to_string(one.height) + "_at_" + std::to_string(one.points) +
         "_points";
}

void PrintTo(const Case& one, std::ostream* stream) {
  *stream << one.width << " x " << one.height << " at " << one.points << " points";
}

class Layout : public ::testing::TestWithParam<Case> {};

TEST_P(Layout, NothingIsCutAndNothingCoversAnything) {
  const WithFontSize font(GetParam().points);
  WindowFixture fixture;
  fixture.form.Image1.Move({2100, 2700, 1200, 1200});
  fixture.form.Label3.Move({120, 960, 3210, 1700});
  fixture.form.Frame3.SetVisible(true);
  fixture.form.Label1.SetCaption(u"Pos: 00:12:34 Dauer: 00:03:45");
  fixture.form.StatusLine.SetCaption(u"Gestoppt.");
  fixture.window->resize(GetParam().width, GetParam().height);
  ASSERT_TRUE(fixture.window->width() == GetParam().width);
  fixture.window->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(fixture.window.get()));
  ExpectWellLaidOut(fixture);
}

INSTANTIATE_TEST_SUITE_P(Sizes, Layout,
                         ::testing::Values(Case{1000, 700, 9}, Case{1400, 900, 9}, Case{2000, 1200, 9},
                                           Case{906, 700, 9}, Case{907, 700, 9}, Case{672, 636, 9},
                                           Case{1400, 900, 10}, Case{1400, 900, 11}, Case{2000, 1200, 14},
                                           Case{1000, 700, 8}, Case{1400, 900, 12}, Case{1500, 1000, 13},
                                           Case{2000, 1200, 15}, Case{2200, 1300, 16}, Case{2400, 1500, 18},
                                           Case{3000, 2000, 24}),
                         NameOf);

TEST(LayoutOfPlaces, PanelStandsBesideTheBarsFromTheWidthOn) {
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  fixture.form.form.Resize(13600, 10500);
  const auto& panel = fixture.Find("Frame3");
  EXPECT_GT(panel.x(), fixture.Find("ProgressBar1_1").geometry().right());
  EXPECT_LE(panel.geometry().right(), fixture.Find("Frame2").geometry().right());
  fixture.form.form.Resize(13599, 10500);
  EXPECT_LT(panel.y(), fixture.Find("Frame1").y());
}

TEST(LayoutOfPlaces, CaptionsInEnglishFit) {
  WindowFixture fixture;
  app::Form1& form = fixture.form;
  form.Command3.SetCaption(u"Show all titles");
  form.Command2.SetCaption(u"Search for stations");
  form.lblSav.SetCaption(u"Volume");
  form.Check1.SetCaption(u"Genre filter view");
  form.Check3.SetCaption(u"Favourites view");
  form.Check2.SetCaption(u"Favourite");
  form.CommandButton1.SetCaption(u"Save station list");
  form.CommandButton2.SetCaption(u"Add new station");
  form.Command8[3].SetCaption(u"Delete this entry");
  form.Command8[5].SetCaption(u"Record stream...");
  form.Command4.SetCaption(u"Create M3U file...");
  form.Command5.SetCaption(u"Load M3U file...");
  form.Label2.SetCaption(u"M3U no.:");
  ASSERT_TRUE(fixture.Open());
  ExpectTextsFit(*fixture.window);
}

TEST(LayoutOfPlaces, PlacesFollowAFontThatChangesWhileTheWindowIsOpen) {
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  const int before = fixture.Find("Command1").width();
  const WithFontSize font(18);
  ASSERT_TRUE(WaitFor([&] { return fixture.Find("Command1").width() > before; }));
  fixture.window->resize(2400, 1500);
  ASSERT_TRUE(WaitFor([&] { return fixture.window->width() == 2400; }));
  ExpectTextsFit(*fixture.window);
  EXPECT_GT(fixture.Find<ReportView>("SymbolListview").header()->sectionSize(0), 300);
}

TEST(LayoutOfPlaces, PlaceOfAControlIsThePlaceOfItsWidget) {
  WindowFixture fixture;
  fixture.form.Command1.Move({150, 300, 1500, 450});
  EXPECT_EQ(fixture.Find("Command1").geometry(), QRect(10, 20, 100, 30));
}

TEST(LayoutOfPlaces, PanelThatWouldBeginAboveTheWindowIsShownFromItsBeginning) {
  WindowFixture fixture;
  controls::Frame& panel = fixture.form.Frame3;
  panel.SetVisible(true);
  ASSERT_TRUE(fixture.Open());
  // As on a screen that is too low and too narrow for the smallest window.
  fixture.window->setMinimumSize(0, 0);
  fixture.window->resize(800, 480);
  ASSERT_TRUE(WaitFor([&] { return fixture.window->height() == 480; }));
  ASSERT_LT(panel.GetPlace().top, 0) << "the layout's rule";
  EXPECT_EQ(fixture.Find("Frame3").y(), 0);
  panel.Move({1500, -450, 3000, 3000});
  EXPECT_EQ(fixture.Find("Frame3").geometry(), QRect(100, 0, 200, 170)) << "no lower than its place";
  panel.Move({1500, 450, 3000, 3000});
  EXPECT_EQ(fixture.Find("Frame3").geometry(), QRect(100, 30, 200, 200));
}

TEST(LayoutOfPlaces, OnAScreenThatIsTooLowTheSmallestWidthIsAnother) {
  PlainPaths paths;
  const QtIcons icons(paths);
  QtMessageLoop loop;
  app::Form1 form;
  form.form.SetSmallestSize(3000, 6000);
  form.form.SetSmallestWidthIfLower(6000);
  EXPECT_EQ(PlayerWindow(form, icons, loop).minimumWidth(), 200);
  form.form.SetSmallestSize(3000, 60'000);
  const PlayerWindow low(form, icons, loop);
  EXPECT_EQ(low.minimumSize(), QSize(400, low.screen()->availableSize().height()));
}

TEST(LayoutOfPlaces, DarkPaletteReachesGlyphsAndPanels) {
  const QPalette former = QApplication::palette();
  QPalette dark(QColor(50, 50, 50), QColor(30, 30, 30));
  dark.setColor(QPalette::ButtonText, QColor(250, 250, 250));
  dark.setColor(QPalette::Base, QColor(20, 20, 20));
  QApplication::setPalette(dark);
  {
    WindowFixture fixture;
    fixture.form.Frame3.SetVisible(true);
    const QImage panel = fixture.Find("Frame3").grab().toImage();
    EXPECT_EQ(panel.pixelColor(panel.width() / 2, panel.height() / 2), QColor(20, 20, 20));
    const QImage button = fixture.Find("Command8_1").grab().toImage();
    bool bright = false;
    for (int x = 0; x < button.width() && !bright; ++x) {
      for (int y = 0; y < button.height() && !bright; ++y) bright = button.pixelColor(x, y).lightness() > 220;
    }
    EXPECT_TRUE(bright) << "the check mark is drawn in the palette's bright text colour";
  }
  QApplication::setPalette(former);
}

}  // namespace
}  // namespace platform::qt
