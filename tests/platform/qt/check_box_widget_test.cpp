// Whether an empty check box can be seen, by the pixels that are painted.
#include "platform/qt/check_box_widget.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QProxyStyle>
#include <QStyleOptionButton>

#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// Another look of the toolkit for the time of a test.
class WithStyle {
 public:
  explicit WithStyle(const QString& name) { QApplication::setStyle(name); }
  ~WithStyle() { QApplication::setStyle(usual_); }
  WithStyle(const WithStyle&) = delete;
  WithStyle& operator=(const WithStyle&) = delete;

 private:
  const QString usual_ = QApplication::style()->name();
};

QRect BoxOf(const QCheckBox& widget) {
  QStyleOptionButton option;
  option.initFrom(&widget);
  return widget.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &widget);
}

/// All four sides count: the weakest of them.
double ContrastOfFrame(const QImage& picture, const QRect& box, const QColor& ground) {
  double weakest = 21.0;
  const QPoint middle = box.center();
  const int reach = box.width() / 4;
  for (const QRect& side :
       {QRect(box.left(), middle.y(), reach, 1), QRect(box.right() - reach + 1, middle.y(), reach, 1),
        QRect(middle.x(), box.top(), 1, reach), QRect(middle.x(), box.bottom() - reach + 1, 1, reach)}) {
    weakest = std::min(weakest, StrongestContrast(picture, side, ground));
  }
  return weakest;
}

TEST(CheckBoxWidgetTest, EmptyBoxStandsOutFromItsGroundInEveryColoursAndStyle) {
  // The default style is the one for a desktop without a preference; the other one is always there too.
  for (const QString& style :
       {QApplication::style()->name(), QStringLiteral("fusion"), QStringLiteral("windows")}) {
    const WithStyle look(style);
    for (const QPalette& palette : DesktopPalettes()) {
      const WithPalette colors(palette);
      WindowFixture fixture;
      auto& widget = fixture.Find<QCheckBox>("Check1");
      const QColor ground = palette.color(QPalette::Window);
      EXPECT_GE(ContrastOfFrame(widget.grab().toImage(), BoxOf(widget), ground), 3.0)
          << style.toStdString() << " on " << ground.name().toStdString();
    }
  }
}

/// How many pixels of a colour follow each other from a place on.
int ThicknessOf(const QImage& picture, QPoint place, const QPoint& step, const QColor& color) {
  int count = 0;
  for (; picture.valid(place) && picture.pixelColor(place) == color; place += step) ++count;
  return count;
}

TEST(CheckBoxWidgetTest, ItsOwnFrameIsEvenAtEveryScaleAndPlace) {
  const WithPalette colors(DesktopColors::DarkPalette());
  QWidget window;
  CheckBoxWidget widget(&window);
  widget.resize(40, 30);
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
    for (int place = 0; place < 4; ++place) {
      QImage picture(QSize(100, 100), QImage::Format_RGB32);
      picture.setDevicePixelRatio(scale);
      widget.render(&picture, QPoint(place, place));
      const QRectF box = QRectF(BoxOf(widget)).translated(place, place);
      const QRect seen = QRectF(box.topLeft() * scale, box.size() * scale).toRect();
      const QPoint middle = seen.center();
      const QColor frame = picture.pixelColor(seen.left(), middle.y());
      const int width = ThicknessOf(picture, {seen.left(), middle.y()}, {1, 0}, frame);
      EXPECT_EQ(width, static_cast<int>(scale)) << scale << ", " << place;
      EXPECT_EQ(ThicknessOf(picture, {seen.right(), middle.y()}, {-1, 0}, frame), width)
          << scale << ", " << place;
      EXPECT_EQ(ThicknessOf(picture, {middle.x(), seen.top()}, {0, 1}, frame), width)
          << scale << ", " << place;
      EXPECT_EQ(ThicknessOf(picture, {middle.x(), seen.bottom()}, {0, -1}, frame), width)
          << scale << ", " << place;
    }
  }
}

TEST(CheckBoxWidgetTest, OpenWindowFollowsOtherColours) {
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  auto& widget = fixture.Find<QCheckBox>("ckSavMute");
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    QApplication::processEvents();
    EXPECT_GE(ContrastOfFrame(widget.grab().toImage(), BoxOf(widget), palette.color(QPalette::Window)), 3.0);
  }
}

TEST(CheckBoxWidgetTest, CheckedAndEmptyBoxDiffer) {
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    WindowFixture fixture;
    auto& widget = fixture.Find<QCheckBox>("Check1");
    const QImage empty = widget.grab().toImage();
    widget.setChecked(true);
    EXPECT_NE(widget.grab().toImage(), empty);
  }
}

/// Draws an empty box that nobody can overlook.
class StyleWithABox final : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element != PE_IndicatorCheckBox) return QProxyStyle::drawPrimitive(element, option, painter, widget);
    painter->fillRect(option->rect, Qt::darkGreen);
  }
};

TEST(CheckBoxWidgetTest, BoxThatTheStyleMakesVisibleIsLeftToTheStyle) {
  StyleWithABox style;
  QWidget window;
  CheckBoxWidget widget(&window);
  widget.resize(100, 30);
  widget.grab();
  widget.setStyle(&style);
  const QImage picture = widget.grab().toImage();
  const QRect box = BoxOf(widget);
  for (const QPoint& place : {box.topLeft(), box.center(), box.bottomRight()}) {
    EXPECT_EQ(picture.pixelColor(place), QColor(Qt::darkGreen))
        << "what was measured of another style is void";
  }
  QPalette green = widget.palette();
  green.setColor(QPalette::Window, Qt::darkGreen);
  green.setColor(QPalette::WindowText, Qt::white);
  widget.setPalette(green);
  EXPECT_GE(ContrastOfFrame(widget.grab().toImage(), box, Qt::darkGreen), 3.0) << "as with other colours";
  widget.setStyle(nullptr);
}

}  // namespace
}  // namespace platform::qt
